// SPDX-License-Identifier: GPL-3.0-or-later
// The controls of the main window and its two layouts.
#include "BandScope.h"
#include "ClickFrame.h"
#include "Form1.h"
#include "LevelGauge.h"
#include "MeterDecoder.h"
#include "PanelLook.h"
#include "PressButton.h"
#include "Twips.h"
#include "WaterfallView.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QResizeEvent>
#include <QVBoxLayout>

namespace {
constexpr int IndicatorCount = 23;
constexpr int KeyButtons = 33;
constexpr int FrameCount = 8;
constexpr int MeterPanelWidth = 216;  // pixels: what the Small layout leaves out

// The radio panel's look, scoped to the panel and the status bar: the dialogs the main window owns
// (network, sharing, prompts, file choosers) inherit its style sheet and keep the desktop's look.
const char* const PanelStyle = R"(
Form1, QWidget#centralPanel { background: #2a2e33; }
#centralPanel QGroupBox { color: #c9d1d9; border: 1px solid #4a5158; border-radius: 4px; margin-top: 7px; font-size: 8pt; }
#centralPanel QGroupBox::title { subcontrol-origin: margin; left: 7px; padding: 0 2px; }
#centralPanel QGroupBox#mainFrame { border: 1px solid #5a6168; background: #30353b; margin-top: 0px; }
#centralPanel QLabel, QStatusBar QLabel { color: #d7dde3; font-size: 8pt; }
#centralPanel QLabel[role="lamp"] { color: #ffc84a; background: #1c2024; border: 1px solid #3b4248; border-radius: 2px;
    font-size: 7pt; font-weight: bold; padding: 0 2px; }
#centralPanel QLabel[role="mode"] { color: #ffc84a; background: #0b1410; font-weight: bold; font-size: 9pt; padding: 0 3px; }
#centralPanel QLabel[role="clar"] { color: #9cff6a; font-size: 7pt; font-weight: bold; }
#centralPanel QLabel[role="scale"] { color: #aab3bc; font-size: 8px; }
#centralPanel QLabel[role="small"] { color: #aab3bc; font-size: 7pt; }
#centralPanel QPushButton { color: #e6eaee; background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #5b636b, stop:1 #40474e);
    border: 1px solid #1d2125; border-radius: 3px; font-size: 8pt; padding: 1px 2px; min-height: 17px; }
#centralPanel QPushButton:pressed { background: #2c3136; }
#centralPanel QPushButton:disabled { color: #7b848c; background: #3a4046; }
#centralPanel QRadioButton { color: #d7dde3; font-size: 7pt; spacing: 2px; }
#centralPanel QCheckBox { color: #d7dde3; font-size: 7pt; spacing: 2px; }
)";
}  // namespace

QLabel* Form1::makeIndicator(int index, const QString& caption, QWidget* parent)
{
    auto* l = new QLabel(caption, parent);
    l->setObjectName(QStringLiteral("Label1(%1)").arg(index));
    l->setProperty("role", QStringLiteral("lamp"));
    l->setAlignment(Qt::AlignCenter);
    QSizePolicy sp = l->sizePolicy();
    sp.setRetainSizeWhenHidden(true);
    l->setSizePolicy(sp);
    Label1[index] = l;
    return l;
}

void Form1::buildControls()
{
    setStyleSheet(QLatin1String(PanelStyle));
    Label1.fill(nullptr, IndicatorCount);
    Label2.fill(nullptr, 3);
    Label3.fill(nullptr, 9);
    Frame.fill(nullptr, FrameCount);
    Key.fill(nullptr, KeyButtons);
    Mtr.fill(nullptr, TransmitMeterCount);
    Label.fill(nullptr, 12);

    auto* central = new QWidget(this);
    central->setObjectName(QStringLiteral("centralPanel"));
    setCentralWidget(central);

    auto* main = new QGroupBox(central);
    main->setObjectName(QStringLiteral("mainFrame"));
    Frame[2] = main;
    auto* row = new QHBoxLayout(main);
    row->setContentsMargins(5, 4, 5, 4);
    row->setSpacing(6);

    auto* left = new QWidget(main);
    auto* leftColumn = new QVBoxLayout(left);
    leftColumn->setContentsMargins(0, 0, 0, 0);
    leftColumn->setSpacing(3);
    leftColumn->addWidget(buildVfoRow());
    leftColumn->addWidget(buildIndicatorStrip());
    leftColumn->addWidget(buildKeyPad());
    leftColumn->addStretch(1);
    row->addWidget(left, 1);
    meterPanel_ = buildMeters();
    row->addWidget(meterPanel_, 0);

    auto* scopeFrame = new QGroupBox(central);
    scopeFrame->setObjectName(QStringLiteral("Frame(1)"));
    Frame[1] = scopeFrame;
    auto* scopeLayout = new QVBoxLayout(scopeFrame);
    scopeLayout->setContentsMargins(4, 4, 4, 4);
    scopeLayout->setSpacing(0);
    scope_ = new BandScope(*this, scopeFrame);
    scopeLayout->addWidget(scope_);
    connect(scope_, &BandScope::waterfallShownChanged, this, [this] {
        if (!Frame[1]->isHidden())
            fitScope();
    });
    scopeFrame->hide();

    // Diagnostic read-outs of the raw bytes: kept out of sight.
    Label15 = new QLabel(central);
    Label16 = new QLabel(central);
    Label4 = new QLabel(central);
    Label15->setObjectName(QStringLiteral("Label15"));
    Label16->setObjectName(QStringLiteral("Label16"));
    Label4->setObjectName(QStringLiteral("Label4"));
    Label15->hide();
    Label16->hide();
    Label4->hide();
}

QWidget* Form1::buildVfoRow()
{
    auto* w = new QWidget;
    auto* row = new QHBoxLayout(w);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(5);
    const QString titles[] = {QString(), QStringLiteral(" VFO-A "), QStringLiteral(" VFO-B ")};
    const QString clarTitles[] = {QString(), QStringLiteral("Clar"), QStringLiteral("Clar")};
    for (int vfo = 1; vfo <= 2; ++vfo) {
        auto* frame = new QGroupBox(titles[vfo], w);
        frame->setObjectName(QStringLiteral("Frame(%1)").arg(vfo + 5));
        Frame[vfo + 5] = frame;
        auto* col = new QVBoxLayout(frame);
        col->setContentsMargins(5, 9, 5, 4);
        col->setSpacing(3);

        auto* display = new QWidget(frame);
        display->setAutoFillBackground(true);
        QPalette glass = display->palette();
        glass.setColor(QPalette::Window, PanelLook::DisplayGlass);
        display->setPalette(glass);
        display->setStyleSheet(QStringLiteral("border-radius: 3px;"));
        auto* line = new QHBoxLayout(display);
        line->setContentsMargins(4, 1, 2, 1);
        line->setSpacing(2);
        auto* digits = new QLabel(QStringLiteral("0.00 "), display);
        digits->setObjectName(QStringLiteral("Label2(%1)").arg(vfo));
        digits->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        digits->setMinimumWidth(124);
        Label2[vfo] = digits;
        auto* mode = new QLabel(display);
        mode->setObjectName(QStringLiteral("Label1(%1)").arg(vfo));
        mode->setProperty("role", QStringLiteral("mode"));
        mode->setAlignment(Qt::AlignCenter);
        mode->setFixedWidth(70);
        Label1[vfo] = mode;
        line->addWidget(digits, 1);
        line->addWidget(mode, 0);
        col->addWidget(display);

        // The clarifier: Frame(3) for the main receiver (a click clears it), Frame(4) for the sub.
        ClickFrame* clar = new ClickFrame(clarTitles[vfo], frame);
        const int clarFrame = vfo == 1 ? 3 : 4;
        clar->setObjectName(QStringLiteral("Frame(%1)").arg(clarFrame));
        clar->setFixedHeight(30);
        if (vfo == 1) {
            clar->setToolTip(tr("Click to clear the clarifier offset"));
            connect(clar, &ClickFrame::clicked, this, [this] { Frame_Click(3); });
        }
        Frame[clarFrame] = clar;
        auto* clarRow = new QHBoxLayout(clar);
        clarRow->setContentsMargins(5, 6, 5, 1);
        clarRow->setSpacing(6);
        // Label3(3)/(4) "Main CLAR"/"Sub CLAR", (5)/(6) "RX", (7)/(8) "TX", (1)/(2) the offset.
        const QString names[] = {vfo == 1 ? QStringLiteral("Main CLAR") : QStringLiteral("Sub CLAR"),
                                 QStringLiteral("RX"), QStringLiteral("TX")};
        const int indices[] = {vfo + 2, vfo + 4, vfo + 6};
        for (int k = 0; k < 3; ++k) {
            auto* l = new QLabel(names[k], clar);
            l->setObjectName(QStringLiteral("Label3(%1)").arg(indices[k]));
            l->setProperty("role", QStringLiteral("clar"));
            QSizePolicy sp = l->sizePolicy();
            sp.setRetainSizeWhenHidden(true);
            l->setSizePolicy(sp);
            l->hide();
            Label3[indices[k]] = l;
            clarRow->addWidget(l);
        }
        clarRow->addStretch(1);
        auto* offset = new QLabel(QStringLiteral("0.00 "), clar);
        offset->setObjectName(QStringLiteral("Label3(%1)").arg(vfo));
        offset->setProperty("role", QStringLiteral("clar"));
        Label3[vfo] = offset;
        clarRow->addWidget(offset);
        col->addWidget(clar);
        row->addWidget(frame, 1);
    }
    applyDisplayLook(1);
    applyDisplayLook(2);
    return w;
}

QWidget* Form1::buildIndicatorStrip()
{
    auto* w = new QWidget;
    auto* grid = new QGridLayout(w);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(3);
    grid->setVerticalSpacing(2);
    struct Lamp {
        int index;
        const char* caption;
        bool visible;
    };
    // Design captions; the poll shows, hides and recaptions them. Each lamp keeps its place when hidden.
    const Lamp lamps[2][7] = {{{0, "DUAL", false},
                               {3, "SPLIT", false},
                               {4, "TUNER", false},
                               {5, "XMIT", false},
                               {6, "  RPTR +", false},
                               {7, "  ANT A", true},
                               {22, "PTT", true}},
                              {{8, "VFO", false},
                               {9, "MEM", false},
                               {10, "M-TUN", false},
                               {11, "QMB", false},
                               {13, "A Lock", false},
                               {12, "CW Pitch", true},
                               {-1, "", false}}};
    for (int r = 0; r < 2; ++r) {
        for (int c = 0; c < 7; ++c) {
            const Lamp& lamp = lamps[r][c];
            if (lamp.index < 0)
                continue;
            QLabel* l = makeIndicator(lamp.index, QString::fromLatin1(lamp.caption), w);
            l->setVisible(lamp.visible);
            grid->addWidget(l, r, c);
        }
    }
    for (int c = 0; c < 7; ++c)
        grid->setColumnStretch(c, 1);
    Label1[12]->setToolTip(tr("CW pitch"));
    Label1[22]->setToolTip(tr("PTT: hold the right button to arm, then the left button to transmit"));
    Label1[22]->setStyleSheet(QStringLiteral("color: white; background: %1;").arg(PanelLook::PttIdle.name()));
    return w;
}

QWidget* Form1::buildKeyPad()
{
    auto* w = new QWidget;
    auto* grid = new QGridLayout(w);
    grid->setContentsMargins(0, 1, 0, 0);
    grid->setHorizontalSpacing(3);
    grid->setVerticalSpacing(3);
    // Four rows: modes; VFO and memory; receive/transmit functions; windows and DSP.
    const int rows[4][8] = {{4, 5, 6, 7, 8, 9, 10, 12},
                            {13, 14, 15, 16, 17, 18, 19, 23},
                            {20, 21, 2, 3, 0, 1, 29, 32},
                            {22, 24, 25, 26, 27, 28, 30, 31}};
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 8; ++c) {
            const int index = rows[r][c];
            auto* k = new PressButton(FrontPanel::keyCaption(index), w);
            k->setObjectName(QStringLiteral("Key(%1)").arg(index));
            k->setFocusPolicy(Qt::TabFocus);
            k->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
            Key[index] = k;
            grid->addWidget(k, r, c);
            if (index == FrontPanel::KeyIndex::Ptt) {
                connect(k, &PressButton::mouseDown, this, [this](Qt::MouseButton b) { Key_MouseDown(32, b); });
                connect(k, &PressButton::mouseUp, this, [this](Qt::MouseButton b) { Key_MouseUp(32, b); });
            } else {
                connect(k, &QPushButton::clicked, this, [this, index] { Key_Click(index); });
            }
        }
    }
    // Disabled in the design: transmitting needs "Authorize Tx"; the analyser key needs the program.
    Key[FrontPanel::KeyIndex::Start]->setEnabled(false);
    Key[FrontPanel::KeyIndex::Ptt]->setEnabled(false);
    Key[FrontPanel::KeyIndex::Analyser]->setEnabled(false);
    return w;
}

QGroupBox* Form1::buildMeters()
{
    auto* box = new QGroupBox(tr("Meters"));
    box->setObjectName(QStringLiteral("Frame(5)"));
    Frame[5] = box;
    box->setFixedWidth(MeterPanelWidth);
    auto* col = new QVBoxLayout(box);
    col->setContentsMargins(5, 9, 5, 4);
    col->setSpacing(1);

    auto scaleLabel = [box](const QString& text) {
        auto* l = new QLabel(text, box);
        l->setProperty("role", QStringLiteral("scale"));
        return l;
    };
    auto gaugeRow = [box, col](const QString& name, LevelGauge*& gauge, const QString& objectName) {
        auto* line = new QHBoxLayout;
        line->setSpacing(4);
        auto* caption = new QLabel(name, box);
        caption->setProperty("role", QStringLiteral("small"));
        caption->setFixedWidth(24);
        gauge = new LevelGauge(box);
        gauge->setObjectName(objectName);
        line->addWidget(caption);
        line->addWidget(gauge, 1);
        col->addLayout(line);
    };
    col->addWidget(scaleLabel(PanelLook::SMeterScale));
    col->addWidget(scaleLabel(PanelLook::SMeterTicks));
    gaugeRow(tr("Main"), axPanel1, QStringLiteral("axPanel1"));
    col->addSpacing(2);
    gaugeRow(tr("Sub"), axPanel3, QStringLiteral("axPanel3"));
    col->addSpacing(4);
    Label[11] = scaleLabel(QString::fromLatin1(transmitMeter(0)->scale));
    Label[11]->setObjectName(QStringLiteral("Label(11)"));
    col->addWidget(Label[11]);
    gaugeRow(tr("Tx"), axPanel2, QStringLiteral("axPanel2"));
    axPanel2->setBarColours(QColor(0x4a, 0xa8, 0xff), QColor(0xff, 0x60, 0x40));

    auto* choices = new QGridLayout;
    choices->setHorizontalSpacing(2);
    choices->setVerticalSpacing(0);
    int slot = 0;
    for (int i = 0; i < TransmitMeterCount; ++i) {
        const TransmitMeter* m = transmitMeter(i);
        if (!m)
            continue;
        auto* b = new QRadioButton(QString::fromLatin1(m->caption), box);
        b->setObjectName(QStringLiteral("Mtr(%1)").arg(i));
        Mtr[i] = b;
        choices->addWidget(b, slot / 3, slot % 3);
        ++slot;
        connect(b, &QRadioButton::clicked, this, [this, i] { Mtr_Click(i); });
    }
    Mtr[0]->setChecked(true);
    col->addSpacing(2);
    col->addLayout(choices);
    Label5 = new QLabel(QStringLiteral("S-Meters 1-2 = "), box);
    Label5->setObjectName(QStringLiteral("Label5"));
    Label5->setProperty("role", QStringLiteral("small"));
    col->addWidget(Label5);
    col->addStretch(1);
    return box;
}

void Form1::applyDisplayLook(int vfo)
{
    QLabel* digits = Label2[vfo];
    if (!digits)
        return;
    QColor colour = muted_[vfo] ? PanelLook::DigitsMuted : PanelLook::Digits;
    if (vfo == 1 && transmitting_)
        colour = PanelLook::DigitsTransmit;
    // The panel's style sheet sets every label's font, so the display's own sheet names its font too.
    digits->setStyleSheet(QStringLiteral("color: %1; background: transparent; font-family: 'DejaVu Sans Mono', "
                                         "monospace; font-size: 20px; font-weight: bold; font-style: %2;")
                              .arg(colour.name(), muted_[vfo] ? QStringLiteral("italic") : QStringLiteral("normal")));
}

void Form1::applyLayout(const FrontPanel::Layout& layout)
{
    small_ = layout.small;
    frameWidthTwips_ = layout.frameWidth;
    meterPanel_->setVisible(!layout.small);
    Key[FrontPanel::KeyIndex::Scope]->setEnabled(layout.scopeKeyEnabled);
    if (mnu_Bar.size() > 4 && mnu_Bar[4])
        mnu_Bar[4]->setText(layout.menuCaption);
    resize(Twips::toPixels(layout.windowWidth), height());
    placeFrames();
}

void Form1::setWindowHeightTwips(int twips)
{
    resize(width(), Twips::toPixels(twips));
    placeFrames();
}

void Form1::placeFrames()
{
    // The frames keep the width of the arrangement; a window narrower than it clips them.
    const int frameWidth = Twips::toPixels(frameWidthTwips_);
    const int menu = menuBar() ? menuBar()->sizeHint().height() : 0;
    const int mainHeight = Twips::toPixels(FrontPanel::HeightScopeHidden) - menu - 6;
    Frame[2]->setGeometry(4, 3, frameWidth, mainHeight);
    const int scopeHeight =
        Twips::toPixels(FrontPanel::HeightScopeShown - FrontPanel::HeightScopeHidden) - 4 + waterfallHeight();
    Frame[1]->setGeometry(4, mainHeight + 5, frameWidth, scopeHeight);
}

int Form1::waterfallHeight() const
{
    constexpr int Gap = 2;  // between the plot and the waterfall
    return scope_ && scope_->waterfallShown() ? scope_->waterfallView()->height() + Gap : 0;
}

void Form1::fitScope()
{
    // The scope's own height, and the waterfall's under it when that is shown.
    resize(width(), Twips::toPixels(FrontPanel::HeightScopeShown) + waterfallHeight());
    placeFrames();
}

void Form1::resizeEvent(QResizeEvent* event)
{
    QMainWindow::resizeEvent(event);
    placeFrames();
}
