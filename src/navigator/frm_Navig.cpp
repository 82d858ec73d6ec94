#include "frm_Navig.h"

#include "BandPlan.h"
#include "CatPort.h"
#include "ConsoleHost.h"
#include "ModeKeys.h"
#include "NavigatorJobs.h"
#include "NavigatorLook.h"
#include "NumberFormat.h"
#include "PressButton.h"
#include "QuickMemory.h"
#include "RadioLink.h"
#include "SettingsStore.h"
#include "SliderTuning.h"
#include "Twips.h"
#include "WindowPlacement.h"

#include <QCloseEvent>
#include <QFontDatabase>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QSlider>
#include <QTimer>
#include <QVBoxLayout>
#include <cmath>

namespace {
const QString Caption = QStringLiteral("Frequency Navigator");
const QString Section = QStringLiteral("Startup");
const QString TopKey = QStringLiteral("NavigTop");
const QString LeftKey = QStringLiteral("NavigLeft");

constexpr int FreqKey = 10;
constexpr int MainKey = 11;
constexpr int SubKey = 12;
constexpr int EnterKey = 13;
constexpr int BandKey = 14;
const char* const ControlCaptions[] = {"&Freq", "Main", "Sub", "Enter", "&Band"};

// Where each key of Band(0..14) sits on the pad: digits as on a telephone pad, "0" ("29") between
// "&Freq" and "&Band" on the bottom row, "Enter", "Main" and "Sub" in the column to the right.
struct Cell {
    int row, column;
};
constexpr Cell PadCells[15] = {{3, 1}, {0, 0}, {0, 1}, {0, 2}, {1, 0}, {1, 1}, {1, 2}, {2, 0},
                               {2, 1}, {2, 2}, {3, 0}, {1, 3}, {2, 3}, {0, 3}, {3, 2}};

void paintButton(QPushButton* b, std::optional<quint32> bgr)
{
    if (!bgr) {
        b->setPalette(QPalette());
        b->setAutoFillBackground(false);
        return;
    }
    QPalette p = b->palette();
    p.setColor(QPalette::Button, fromBgr(*bgr));
    b->setPalette(p);
    b->setAutoFillBackground(true);
}
}  // namespace

frm_Navig::frm_Navig(ConsoleHost& host, QWidget* parent) : QWidget(parent, Qt::Window), host_(host)
{
    setWindowTitle(Caption);
    buildControls();
    Form_Load();
}

// ---- building -------------------------------------------------------------------------------

void frm_Navig::buildControls()
{
    // The display: a dark face with the frequency in the radio's colour and the mode beside it.
    auto* face = new QWidget(this);
    face->setObjectName(QStringLiteral("displayFace"));
    QPalette facePalette = face->palette();
    facePalette.setColor(QPalette::Window, fromBgr(NavigatorLook::DisplayBackground));
    face->setPalette(facePalette);
    face->setAutoFillBackground(true);
    Lbl_VFO = new QLabel(QString::fromLatin1(NavigatorLook::DesignedFrequency), face);
    Lbl_VFO->setObjectName(QStringLiteral("Lbl_VFO"));
    QFont big = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    big.setPointSize(20);
    big.setBold(true);
    Lbl_VFO->setFont(big);
    Lbl_VFO->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    modeLabel = new QLabel(face);
    modeLabel->setObjectName(QStringLiteral("modeLabel"));
    QFont small = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    small.setPointSize(11);
    small.setBold(true);
    modeLabel->setFont(small);
    modeLabel->setMinimumWidth(QFontMetrics(small).horizontalAdvance(QStringLiteral("PKT LSB")) + 8);
    QPalette modePalette = modeLabel->palette();
    modePalette.setColor(QPalette::WindowText, fromBgr(NavigatorLook::SentColour));
    modeLabel->setPalette(modePalette);
    auto* faceLayout = new QHBoxLayout(face);
    faceLayout->setContentsMargins(12, 0, 12, 0);
    faceLayout->addWidget(Lbl_VFO, 1);
    faceLayout->addWidget(modeLabel, 0, Qt::AlignBottom);
    setDisplayColour(NavigatorLook::SentColour);

    // The key pad.
    auto* pad = new QGroupBox(QStringLiteral("Bands / key pad"), this);
    auto* padGrid = new QGridLayout(pad);
    padGrid->setSpacing(3);
    Band.resize(15);
    for (int i = 0; i < 15; ++i) {
        const QString text =
            i < BandPlan::Count ? BandPlan::caption(i) : QString::fromLatin1(ControlCaptions[i - BandPlan::Count]);
        Band[i] = new QPushButton(text, pad);
        Band[i]->setObjectName(QStringLiteral("Band%1").arg(i));
        Band[i]->setMinimumSize(50, 24);
        padGrid->addWidget(Band[i], PadCells[i].row, PadCells[i].column);
        connect(Band[i], &QPushButton::clicked, this, [this, i] { Band_Click(i); });
    }
    Band[EnterKey]->setAutoDefault(true);  // the Return key presses "Enter" when it has the focus
    for (int i = MainKey; i <= BandKey; ++i)
        Band[i]->setEnabled(false);
    padGrid->setColumnMinimumWidth(3, 62);

    // Mode keys.
    auto* modes = new QGroupBox(QStringLiteral("Mode"), this);
    auto* modeGrid = new QGridLayout(modes);
    modeGrid->setSpacing(4);
    MD.resize(7);
    int placed = 0;
    for (int index : ModeKeys::Indices) {
        auto* b = new PressButton(QString::fromLatin1(ModeKeys::caption(index)), modes);
        b->setObjectName(QStringLiteral("MD%1").arg(index));
        b->setMinimumSize(56, 24);
        b->setToolTip(index == 6 ? QStringLiteral("FM")
                                 : QStringLiteral("Left button: %1, other button: its second variant")
                                       .arg(QString::fromLatin1(ModeKeys::caption(index))));
        MD[index] = b;
        modeGrid->addWidget(b, placed / 2, placed % 2);
        ++placed;
        connect(b, &PressButton::mouseDown, this, [this, index](Qt::MouseButton mb) { MD_MouseDown(index, mb); });
    }

    // Steppers.
    auto* steps = new QGroupBox(QStringLiteral("Step (hold)"), this);
    auto* stepLayout = new QGridLayout(steps);
    stepLayout->setSpacing(4);
    const QString stepCaptions[] = {QStringLiteral("100 K"), QStringLiteral("1 Mhz")};
    Stepper.resize(2);
    for (int i = 0; i < 2; ++i) {
        auto* b = new PressButton(stepCaptions[i], steps);
        b->setObjectName(QStringLiteral("Stepper%1").arg(i));
        b->setMinimumSize(56, 24);
        b->setToolTip(QStringLiteral("Hold: left button steps down, right button steps up"));
        Stepper[i] = b;
        stepLayout->addWidget(b, 0, i);
        connect(b, &PressButton::mouseDown, this, [this, i](Qt::MouseButton mb) { Stepper_MouseDown(i, mb); });
        connect(b, &PressButton::mouseUp, this, [this](Qt::MouseButton) { Stepper_MouseUp(); });
    }
    auto* stepHint = new QLabel(QStringLiteral("left: down   right: up"), steps);
    stepHint->setAlignment(Qt::AlignCenter);
    QFont hintFont = stepHint->font();
    hintFont.setPointSizeF(hintFont.pointSizeF() * 0.85);
    stepHint->setFont(hintFont);
    stepLayout->addWidget(stepHint, 1, 0, 1, 2);

    auto* rightColumn = new QVBoxLayout;
    rightColumn->addWidget(modes);
    rightColumn->addWidget(steps);
    rightColumn->addStretch(1);

    // The spring-back slider: up tunes up, down tunes down.
    auto* tune = new QGroupBox(QStringLiteral("Tune"), this);
    auto* tuneLayout = new QVBoxLayout(tune);
    tuneLayout->setSpacing(2);
    Slider1 = new QSlider(Qt::Vertical, tune);
    Slider1->setObjectName(QStringLiteral("Slider1"));
    Slider1->setRange(SliderTuning::Minimum, SliderTuning::Maximum);
    Slider1->setValue(0);
    Slider1->setInvertedAppearance(true);  // negative values (tuning up) at the top
    Slider1->setTickPosition(QSlider::TicksBothSides);
    Slider1->setTickInterval(25);
    Slider1->setPageStep(5);
    Slider1->setToolTip(QStringLiteral("Pull up to tune up, down to tune down; the further, the faster"));
    auto* up = new QLabel(QStringLiteral("Up"), tune);
    auto* down = new QLabel(QStringLiteral("Down"), tune);
    up->setAlignment(Qt::AlignHCenter);
    down->setAlignment(Qt::AlignHCenter);
    tuneLayout->addWidget(up);
    tuneLayout->addWidget(Slider1, 1, Qt::AlignHCenter);
    tuneLayout->addWidget(down);
    connect(Slider1, &QSlider::valueChanged, this, &frm_Navig::sliderMoved);
    Slider1->installEventFilter(this);

    auto* middle = new QHBoxLayout;
    middle->addWidget(pad, 1);
    middle->addLayout(rightColumn);
    middle->addWidget(tune);

    // Quick memories.
    auto* memories = new QGroupBox(QStringLiteral("Quick memories (right button stores, left recalls)"), this);
    auto* memoryGrid = new QGridLayout(memories);
    memoryGrid->setSpacing(3);
    memoryGrid->setContentsMargins(6, 4, 6, 4);
    QMB.resize(QuickMemory::Count);
    for (int i = 0; i < QuickMemory::Count; ++i) {
        auto* b = new PressButton(QuickMemory::Unused, memories);
        b->setObjectName(QStringLiteral("QMB%1").arg(i));
        b->setMinimumSize(78, 22);
        QMB[i] = b;
        memoryGrid->addWidget(b, i / 4, i % 4);
        connect(b, &PressButton::mouseDown, this, [this, i](Qt::MouseButton mb) { QMB_MouseDown(i, mb); });
    }

    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(6, 4, 6, 4);
    outer->setSpacing(4);
    outer->addWidget(face);
    outer->addLayout(middle, 1);
    outer->addWidget(memories);

    Timer3 = new QTimer(this);
    Timer3->setObjectName(QStringLiteral("Timer3"));
    Timer3->setInterval(SliderTuning::Interval);
    connect(Timer3, &QTimer::timeout, this, &frm_Navig::Timer3_Timer);
    Timer6 = new QTimer(this);
    Timer6->setObjectName(QStringLiteral("Timer6"));
    Timer6->setInterval(StepperTiming::FirstInterval);
    connect(Timer6, &QTimer::timeout, this, &frm_Navig::Timer6_Timer);

    // In key-pad mode the window sees key presses before its controls.
    for (QWidget* w : findChildren<QWidget*>())
        if (w != Slider1)
            w->installEventFilter(this);
    installEventFilter(this);
}

void frm_Navig::Form_Load()
{
    SettingsStore& s = host_.settings();
    const QStringList captions = QuickMemory::decodeCaptions(
        s.value(QuickMemory::Section, QuickMemory::CaptionsKey, QuickMemory::DefaultCaptions));
    for (int i = 0; i < QuickMemory::Count; ++i)
        QMB[i]->setText(captions.value(i));
    QmbMode = QuickMemory::decodeModes(s.value(QuickMemory::Section, QuickMemory::ModesKey, QuickMemory::DefaultModes));

    adjustSize();
    resize(width(), Twips::toPixels(NavigatorLook::HeightTwips));

    // By default beside the main window, on its right, kept on the screen.
    const QRect main = host_.geometryTwips();
    int left = main.x() + main.width();
    const int screenWidth = WindowPlacement::screenSizeTwips().width();
    if (left + widthTwips() > screenWidth)
        left = std::max(0, screenWidth - widthTwips());
    WindowPlacement::restore(this, s, Section, TopKey, LeftKey, main.y(), left);
}

void frm_Navig::Form_QueryUnload()
{
    if (Timer6->isActive() || Timer3->isActive() || entryStoppedPoll_) {
        Timer6->stop();
        Timer3->stop();
        step_.release();
        entryStoppedPoll_ = false;
        host_.setPollEnabled(true);
    }
    SettingsStore& s = host_.settings();
    WindowPlacement::save(this, s, Section, TopKey, LeftKey);
    QStringList captions;
    for (auto* b : QMB)
        captions << b->text();
    s.setValue(QuickMemory::Section, QuickMemory::CaptionsKey, QuickMemory::encodeCaptions(captions));
    s.setValue(QuickMemory::Section, QuickMemory::ModesKey, QuickMemory::encodeModes(QmbMode));
    s.sync();
}

void frm_Navig::closeEvent(QCloseEvent* e)
{
    Form_QueryUnload();
    QWidget::closeEvent(e);
}

void frm_Navig::showEvent(QShowEvent* e)
{
    if (entry_.bandMode() && host_.vfoKHz(1) > 0)
        Lbl_VFO->setText(formatNumber(host_.vfoKHz(1), Pattern::Frequency));
    QWidget::showEvent(e);
}

int frm_Navig::widthTwips() const
{
    return Twips::fromPixels(width());
}

void frm_Navig::showPolled(const QString& freqText, const QString& modeCaption)
{
    modeLabel->setText(modeCaption);
    if (!entry_.digitsPending())
        Lbl_VFO->setText(freqText);
}

// ---- band keys and key pad ------------------------------------------------------------------

void frm_Navig::Band_Click(int index)
{
    if (index >= 0 && index < BandPlan::Count) {
        if (entry_.bandMode()) {
            const qint64 frq = BandPlan::frequencyTenHz(index);
            post([frq](CatPort& port) { sendFrequency(port, frq, 1); });
        } else {
            digitKey(index);
        }
        return;
    }
    switch (index) {
        case FreqKey:
            keyPadMode(true);
            break;
        case MainKey:
            sendEntry(1);
            break;
        case SubKey:
            sendEntry(2);
            break;
        case EnterKey:
            if (entry_.enter(host_.pollEnabled())) {
                host_.setPollEnabled(false);
                entryStoppedPoll_ = true;
                Lbl_VFO->setText(entry_.display());
                setDisplayColour(NavigatorLook::EntryColour);
            }
            break;
        case BandKey:
            keyPadMode(false);
            break;
        default:
            break;
    }
}

void frm_Navig::keyPadMode(bool on)
{
    for (int i = 0; i < BandPlan::Count; ++i) {
        Band[i]->setText(on ? BandPlan::digitCaption(i) : BandPlan::caption(i));
        paintButton(Band[i], on ? std::optional<quint32>(NavigatorLook::DigitKeyColour) : std::nullopt);
    }
    for (int i = MainKey; i <= BandKey; ++i)
        Band[i]->setEnabled(on);
    Band[FreqKey]->setEnabled(!on);
    if (on) {
        entry_.beginKeypad();
        Band[EnterKey]->setFocus();
        return;
    }
    entry_.backToBands();
    if (entryStoppedPoll_) {
        entryStoppedPoll_ = false;
        host_.setPollEnabled(true);
    }
}

void frm_Navig::digitKey(int d)
{
    if (entry_.digit(d))
        Lbl_VFO->setText(entry_.display());
}

void frm_Navig::sendEntry(int vfo)
{
    const std::optional<qint64> frq = entry_.commit();
    if (!frq)
        return;
    post([f = *frq, vfo](CatPort& port) { sendFrequency(port, f, vfo); });
    entryStoppedPoll_ = false;
    host_.setPollEnabled(true);
    setDisplayColour(NavigatorLook::SentColour);
    Band[EnterKey]->setFocus();
}

bool frm_Navig::Form_KeyPress(const QString& key)
{
    if (key.size() != 1)
        return false;
    const QChar c = key[0];
    if (c >= u'0' && c <= u'9') {
        Band_Click(c.digitValue());
        return true;
    }
    if (c == u'+') {
        Band_Click(MainKey);
        return true;
    }
    if (c == u'-') {
        Band_Click(SubKey);
        return true;
    }
    return false;
}

bool frm_Navig::eventFilter(QObject* watched, QEvent* e)
{
    if (watched == Slider1) {
        if (e->type() == QEvent::Wheel)
            return true;  // a wheel would move it with no release to spring it back
        const bool keyUp = e->type() == QEvent::KeyRelease && !static_cast<QKeyEvent*>(e)->isAutoRepeat();
        if (e->type() == QEvent::MouseButtonRelease || keyUp)
            sliderReleased();
    }
    if (e->type() == QEvent::KeyPress && !entry_.bandMode()) {
        const auto* k = static_cast<QKeyEvent*>(e);
        if (!(k->modifiers() & (Qt::AltModifier | Qt::ControlModifier)) && Form_KeyPress(k->text()))
            return true;
    }
    return QWidget::eventFilter(watched, e);
}

// ---- mode keys and quick memories -------------------------------------------------------------

void frm_Navig::MD_MouseDown(int index, Qt::MouseButton button)
{
    const int mode = ModeKeys::modeCode(index, button == Qt::LeftButton);
    if (mode < 0)
        return;
    post([mode](CatPort& port) { sendMode(port, mode); });
}

void frm_Navig::QMB_MouseDown(int index, Qt::MouseButton button)
{
    if (index < 0 || index >= QMB.size())
        return;
    if (button == Qt::RightButton) {
        QMB[index]->setText(QuickMemory::captionFor(host_.vfoKHz(1)));
        QmbMode[index] = host_.modeCode();
        return;
    }
    if (button != Qt::LeftButton)
        return;
    const QString caption = QMB[index]->text();
    if (!QuickMemory::recallable(caption))
        return;
    const std::optional<qint64> frq = QuickMemory::captionTenHz(caption);
    if (!frq)
        return;
    post([mode = QmbMode.value(index), f = *frq](CatPort& port) { recallQuickMemory(port, mode, f); });
}

// ---- steppers -----------------------------------------------------------------------------------

void frm_Navig::Stepper_MouseDown(int index, Qt::MouseButton button)
{
    host_.setPollEnabled(false);
    Timer6->start();
    step_.press(index, button == Qt::LeftButton);
}

void frm_Navig::Stepper_MouseUp()
{
    step_.release();
}

void frm_Navig::Timer6_Timer()
{
    // A step still on the wire, or whose result has not been painted yet, merges this tick: the
    // next step must start from the frequency the last one left.
    if (stepInFlight_)
        return;
    RadioLink& link = host_.link();
    const double kHz = host_.vfoKHz(1);
    stepInFlight_ = true;
    if (step_.held()) {
        const StepperState step = step_;
        const bool posted = link.postMerged(JobKind::Stepper, [&link, self = QPointer(this), step, kHz](CatPort& port) {
            const std::optional<double> now = stepperTick(port, step, kHz);
            deliverTo(link, self, [now](frm_Navig* w) {
                w->stepInFlight_ = false;
                if (now)
                    w->showNavigatorFreq(*now);
            });
        });
        if (!posted)
            stepInFlight_ = false;
        return;
    }
    const bool posted = link.postMerged(JobKind::Stepper, [&link, self = QPointer(this), kHz](CatPort& port) {
        const double now = releaseTick(port, kHz);
        deliverTo(link, self, [now](frm_Navig* w) {
            w->stepInFlight_ = false;
            w->host_.setVfoKHz(1, now);
            w->host_.setPollEnabled(true);
        });
    });
    if (!posted) {
        stepInFlight_ = false;
        return;
    }
    Timer6->stop();
    Timer6->setInterval(StepperTiming::AfterRelease);
}

// ---- slider -------------------------------------------------------------------------------------

void frm_Navig::sliderMoved(int value)
{
    if (value == 0 || Timer3->isActive())
        return;
    host_.setPollEnabled(false);
    Timer3->start();
}

void frm_Navig::sliderReleased()
{
    const bool wasTuning = Timer3->isActive();
    Slider1->setValue(0);
    Timer3->stop();
    if (wasTuning)
        host_.setPollEnabled(true);
}

void frm_Navig::Timer3_Timer()
{
    const int v = Slider1->value();
    const double kHz = host_.vfoKHz(1);
    RadioLink& link = host_.link();
    link.postMerged(JobKind::Slider, [&link, self = QPointer(this), v, kHz](CatPort& port) {
        if (const std::optional<SliderTick> t = sliderTick(port, v, kHz))
            deliverTo(link, self, [f = t->kHz](frm_Navig* w) { w->showNavigatorFreq(f); });
    });
}

// ---- display and link -------------------------------------------------------------------------

void frm_Navig::showNavigatorFreq(double kHz)
{
    host_.setVfoKHz(1, kHz);
    const QString text = formatNumber(kHz, Pattern::Frequency);
    Lbl_VFO->setText(text);
    host_.setVfoADisplay(text);
}

void frm_Navig::setDisplayColour(quint32 bgr)
{
    QPalette p = Lbl_VFO->palette();
    p.setColor(QPalette::WindowText, fromBgr(bgr));
    Lbl_VFO->setPalette(p);
}

void frm_Navig::post(std::function<void(CatPort&)> job)
{
    host_.link().post(std::move(job));
}

void frm_Navig::deliverTo(RadioLink& link, QPointer<frm_Navig> self, std::function<void(frm_Navig*)> fn)
{
    // Runs on the window's thread, and not at all once the window is gone.
    link.deliver(&link, [self, fn = std::move(fn)] {
        if (self)
            fn(self.data());
    });
}
