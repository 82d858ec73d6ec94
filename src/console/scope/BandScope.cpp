// SPDX-License-Identifier: GPL-3.0-or-later
#include "BandScope.h"

#include "CatPort.h"
#include "MeterDecoder.h"
#include "NumberFormat.h"
#include "PanBox.h"
#include "Procedures.h"
#include "RadioLink.h"
#include "ScopeHost.h"
#include "ScopeLists.h"
#include "ScopeRecord.h"
#include "ScopeSweep.h"
#include "SettingsStore.h"
#include "Twips.h"
#include "WaterfallView.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QFocusEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QVBoxLayout>

namespace {
QIcon swatch(quint32 bgr)
{
    QPixmap pm(10, 10);
    pm.fill(Qt::transparent);
    QPainter p(&pm);
    p.setPen(QColor(60, 60, 60));
    p.setBrush(fromBgr(bgr));
    p.drawRect(0, 0, 9, 9);
    return QIcon(pm);
}
}  // namespace

BandScope::BandScope(ScopeHost& host, QWidget* parent) : QWidget(parent), host_(host)
{
    setObjectName(QStringLiteral("BandScope"));
    buildControls();

    ScopeSweep::Choices choices;
    choices.receiver = [this] { return MainSub[0]->isChecked() ? 1 : 2; };
    choices.plan = [this] { return currentPlan(); };
    choices.anotherPass = [this] { return Scan[0]->isChecked(); };
    sweep_ = new ScopeSweep(host_, std::move(choices), this);
    connect(sweep_, &ScopeSweep::passStarted, this, &BandScope::onPassStarted);
    connect(sweep_, &ScopeSweep::sampleRead, this, &BandScope::onSample);
    connect(sweep_, &ScopeSweep::lastPassEnded, this, &BandScope::tuneBackToCentre);
    connect(sweep_, &ScopeSweep::finished, this, &BandScope::sweepFinished);
    connect(sweep_, &ScopeSweep::passFinished, this, &BandScope::onPassFinished);

    record_ = new ScopeRecord(
        host_, [this] { return receiver_; }, this);
    connect(record_, &ScopeRecord::labelDue, this, &BandScope::printRecordLabel);
    connect(record_, &ScopeRecord::reading, this, &BandScope::onRecordReading);
}

BandScope::~BandScope() = default;

void BandScope::buildControls()
{
    PanBox_ = new PanBox(this);
    Label0 = new QLabel(QString::fromLatin1(ScopeCaptions::Frame), PanBox_);
    Label0->setObjectName(QStringLiteral("Label(0)"));
    Label0->setStyleSheet(QStringLiteral("color: #c8d2d8; font-weight: bold; background: transparent;"));
    readout_ = new QLabel(PanBox_);
    readout_->setObjectName(QStringLiteral("readout"));
    readout_->setStyleSheet(QStringLiteral("color: #e8e8a0; background: transparent;"));
    PanBox_->setOverlays(Label0, readout_);
    connect(PanBox_, &PanBox::pointerMoved, this, &BandScope::PanBox_MouseMove);
    connect(PanBox_, &PanBox::doubleClicked, this, &BandScope::PanBox_DblClick);

    auto* controls = new QWidget(this);
    auto* grid = new QGridLayout(controls);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(6);
    grid->setVerticalSpacing(3);

    // The three lists, each with its caption, and the scan modes beside them.
    PanCombo.resize(4);
    PanLabel.resize(4);
    const QStringList entries[] = {ScopeLists::spans(), ScopeLists::resolutions(), ScopeLists::recordTimes()};
    const char* captions[] = {ScopeCaptions::SpanLabel, ScopeCaptions::ResolutionLabel, ScopeCaptions::RecordLabel};
    for (int i = 1; i <= 3; ++i) {
        PanLabel[i] = new QLabel(QString::fromLatin1(captions[i - 1]), controls);
        PanLabel[i]->setObjectName(QStringLiteral("PanLabel(%1)").arg(i));
        PanCombo[i] = new QComboBox(controls);
        PanCombo[i]->setObjectName(QStringLiteral("PanCombo(%1)").arg(i));
        PanCombo[i]->addItems(entries[i - 1]);
        PanLabel[i]->setBuddy(PanCombo[i]);
        connect(PanCombo[i], &QComboBox::activated, this, [this, i](int) { PanCombo_Click(i); });
        grid->addWidget(PanLabel[i], i - 1, 0);
        grid->addWidget(PanCombo[i], i - 1, 1);
    }

    const char* scanCaptions[] = {ScopeCaptions::Continuous, ScopeCaptions::OneShot, ScopeCaptions::SRecord};
    auto* scanGroup = new QButtonGroup(this);
    Scan.resize(3);
    for (int i = 0; i < 3; ++i) {
        Scan[i] = new QRadioButton(QString::fromLatin1(scanCaptions[i]), controls);
        Scan[i]->setObjectName(QStringLiteral("Scan(%1)").arg(i));
        scanGroup->addButton(Scan[i], i);
        connect(Scan[i], &QRadioButton::clicked, this, [this, i] { Scan_Click(i); });
        grid->addWidget(Scan[i], i, 2);
    }
    Scan[1]->setChecked(true);

    // Receiver choice and centre frequency.
    auto* receiverRow = new QHBoxLayout;
    receiverRow->setSpacing(6);
    auto* receiverGroup = new QButtonGroup(this);
    MainSub.resize(2);
    const char* receiverCaptions[] = {ScopeCaptions::Main, ScopeCaptions::Sub};
    for (int i = 0; i < 2; ++i) {
        MainSub[i] = new QRadioButton(QString::fromLatin1(receiverCaptions[i]), controls);
        MainSub[i]->setObjectName(QStringLiteral("MainSub(%1)").arg(i));
        receiverGroup->addButton(MainSub[i], i);
        connect(MainSub[i], &QRadioButton::clicked, this, [this, i] { MainSub_Click(i); });
        receiverRow->addWidget(MainSub[i]);
    }
    MainSub[0]->setChecked(true);
    receiverRow->addStretch(1);
    CFreq = new QLineEdit(controls);
    CFreq->setObjectName(QStringLiteral("CFreq"));
    CFreq->setAccessibleName(QStringLiteral("Centre frequency"));
    CFreq->setToolTip(QStringLiteral("Centre frequency in kHz"));
    CFreq->setAlignment(Qt::AlignRight);
    CFreq->setMaxLength(12);
    CFreq->setMinimumWidth(CFreq->fontMetrics().horizontalAdvance(QStringLiteral("00000.00 ")) + 14);
    CFreq->installEventFilter(this);
    auto* kHz = new QLabel(QStringLiteral("kHz"), controls);
    receiverRow->addWidget(CFreq, 1);
    receiverRow->addWidget(kHz);
    grid->addLayout(receiverRow, 3, 0, 1, 3);

    // The keys: actions on one row, plots on the next.
    auto* actionRow = new QHBoxLayout;
    auto* plotRow = new QHBoxLayout;
    actionRow->setSpacing(4);
    plotRow->setSpacing(4);
    for (int index = ScopeKey::First; index <= ScopeKey::Last; ++index) {
        auto* k = new QPushButton(QString::fromLatin1(ScopeKey::caption(index)), controls);
        k->setObjectName(QStringLiteral("Key(%1)").arg(index));
        k->setAutoDefault(false);
        // A click goes through the main window's key handler, as for every key of the front panel;
        // it hands the scope's indices back to keyClick().
        connect(k, &QPushButton::clicked, this, [this, index] { host_.pressKey(index); });
        if (const quint32 colour = ScopeColour::forKey(index)) {
            k->setIcon(swatch(colour));
            plotRow->addWidget(k);
        } else {
            actionRow->addWidget(k);
        }
        Key.insert(index, k);
    }
    grid->addLayout(actionRow, 4, 0, 1, 3);
    grid->addLayout(plotRow, 5, 0, 1, 3);
    grid->addLayout(buildResultControls(controls), 6, 0, 1, 3);
    grid->setRowStretch(7, 1);

    // The waterfall under the plot, in the same column so that their frequency axes line up.
    auto* pictures = new QVBoxLayout;
    pictures->setContentsMargins(0, 0, 0, 0);
    pictures->setSpacing(2);
    pictures->addWidget(PanBox_, 1);
    waterfallView_ = new WaterfallView(waterfall_, this);
    waterfallView_->setVisible(waterfallToggle_->isChecked());
    pictures->addWidget(waterfallView_, 0);

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    row->addLayout(pictures, 1);
    row->addWidget(controls, 0);
}

// ---- keys ----------------------------------------------------------------------------------------

QPushButton* BandScope::key(int index) const
{
    return Key.value(index);
}

void BandScope::keyClick(int index)
{
    // As every front-panel key: silent while the port is closed.
    if (!host_.portOpen())
        return;
    switch (index) {
        case ScopeKey::GetCenter:
            CFreq->setText(formatNumber(host_.vfoKHz(receiver_), Pattern::Centre));
            drawGraticule(1);
            break;
        case ScopeKey::RedPlot:
        case ScopeKey::YellowPlot:
        case ScopeKey::GreenPlot:
            plotKey(index);
            break;
        case ScopeKey::Clear:
            drawGraticule(sRecordSelected() ? 0 : 1);
            break;
        case ScopeKey::Cancel:
            // One Shot, so that no further pass starts; the flag stops the pass under way after its
            // step (as a current frequency set past the end would); no line joins what comes next.
            sweep_->cancel();
            if (!Scan[1]->isChecked()) {
                // Selecting an option that was not selected runs its click handler, as an
                // operator's click on it does: the graticule redraw ends an S-record (hiding the
                // scope presses Cancel, and the poll must not stay off behind a hidden scope) and
                // turns the poll on. The step still under way is not drawn on the fresh graticule.
                Scan[1]->setChecked(true);
                drawingPass_ = false;
                Scan_Click(1);
            }
            previousX_ = CancelledLevel;
            previousLevel_ = CancelledLevel;
            break;
        default:
            break;
    }
}

void BandScope::plotKey(int index)
{
    // A plot key is not taken again while its sweep runs; Cancel ends it.
    if (busy())
        return;
    const quint32 colour = ScopeColour::forKey(index);
    if (sRecordSelected()) {
        startSRecord(colour);
        return;
    }
    sweep(colour);
}

// ---- sweep ---------------------------------------------------------------------------------------

bool BandScope::busy() const
{
    return sweep_->busy();
}

bool BandScope::sweeping() const
{
    return sweep_->passRunning();
}

void BandScope::sweep(quint32 colour)
{
    colour_ = colour;
    sweep_->start();
}

void BandScope::onPassStarted(const SweepPlan&, int receiver)
{
    receiver_ = receiver;
    PanBox_->setScale(sweepScale(spanKHz()));
    previousX_ = 0;
    previousLevel_ = 0;
    drawingPass_ = true;
}

void BandScope::onSample(const SweepPlan& plan, const SweepSample& s)
{
    if (!drawingPass_)
        return;
    const double x = SweepPlan::toKHz(s.freq10Hz - plan.start10Hz);
    if (!s.replied) {
        // Nothing to draw; the next sample joins from here at the last level.
        previousX_ = x;
        return;
    }
    host_.setMainSMeter(s.level);
    drawSample(x, s.level);
}

void BandScope::drawSample(double x, int level)
{
    const SampleDrawing d = sampleDrawing(x, level, previousX_, previousLevel_);
    const QColor c = fromBgr(colour_);
    PanBox_->drawLine(d.bar, c);
    if (d.joined)
        PanBox_->drawLine(d.join, c);
    previousX_ = x;
    previousLevel_ = level;
}

void BandScope::tuneBackToCentre()
{
    const double centre = centreKHz();
    const int r = receiver_;
    host_.link().post([centre, r](CatPort& port) { tuneToCentre(port, centre, r); });
}

// ---- S-record ------------------------------------------------------------------------------------

bool BandScope::recording() const
{
    return record_->active();
}

QTimer* BandScope::timer2() const
{
    return record_->timer();
}

void BandScope::Timer2_Timer()
{
    record_->Timer2_Timer();
}

void BandScope::startSRecord(quint32 colour)
{
    colour_ = colour;
    record_->start(recordMinutes());
    PanBox_->setScale(recordScale(recordMinutes()));
    previousX_ = 0;
    previousLevel_ = 0;
    PanBox_->drawText(QPointF(0, PlotY::TimeLabel), record_->startTime().toString(QStringLiteral("hh:mm")),
                      fromBgr(ScopeColour::TimeLabel), Qt::AlignHCenter | Qt::AlignTop);
}

void BandScope::printRecordLabel(double x, const QTime& at)
{
    PanBox_->drawText(QPointF(x, PlotY::TimeLabel), at.toString(QStringLiteral("hh:mm")),
                      fromBgr(ScopeColour::TimeLabel), Qt::AlignHCenter | Qt::AlignTop);
    PanBox_->drawLine(QLineF(x, PlotY::Base, x, PlotY::MajorTick), fromBgr(ScopeColour::TimeLabel));
}

void BandScope::onRecordReading(double x, const QByteArray& reply)
{
    if (reply.isEmpty())
        return;
    const int level = meterPercent(static_cast<quint8>(reply.at(0)));
    host_.setMainSMeter(level);
    drawSample(x, level);
}

// ---- graticule -----------------------------------------------------------------------------------

void BandScope::drawGraticule(int flag)
{
    record_->stop();
    paintGraticule(flag);
    host_.setPollEnabled(true);
}

void BandScope::paintGraticule(int flag)
{
    PanBox_->clear();
    const PlotScale scale = sweepScale(spanKHz());
    PanBox_->setScale(scale);
    const double right = scale.left + scale.width;
    const double span = spanKHz();
    for (const SUnitLine& s : sUnitLines()) {
        const double y = PlotY::Base - s.level;
        PanBox_->addGridLine(QLineF(0, y, right, y), PanBoxLook::GridLine, Qt::DashLine);
        PanBox_->addGridText(QPointF(scale.left, y), QString::fromLatin1(s.label), PanBoxLook::GridText,
                             Qt::AlignLeft | Qt::AlignVCenter);
    }
    if (!sRecordSelected()) {  // the span's edges mean nothing on a time axis
        PanBox_->addGridLine(QLineF(0, 0, 0, PlotY::Base), PanBoxLook::GridLine);
        PanBox_->addGridLine(QLineF(span, 0, span, PlotY::Base), PanBoxLook::GridLine);
    }
    PanBox_->addGridLine(QLineF(scale.left, PlotY::Base, right, PlotY::Base), PanBoxLook::BaseLine);
    if (flag == 0 || CFreq->text().trimmed().isEmpty())
        return;
    const FrequencyScale f = frequencyScale(currentPlan());
    for (const FrequencyTick& t : f.ticks) {
        PanBox_->addGridLine(QLineF(t.x, PlotY::Base, t.x, t.major ? PlotY::MajorTick : PlotY::MinorTick),
                             PanBoxLook::BaseLine);
        if (t.major)
            PanBox_->addGridText(QPointF(t.x, PlotY::MajorTick), t.label, PanBoxLook::GridText,
                                 Qt::AlignHCenter | Qt::AlignTop);
    }
}

void BandScope::startRedraw()
{
    drawGraticule(sRecordSelected() ? 0 : 1);
}

void BandScope::presetLists()
{
    const QSignalBlocker b1(PanCombo[1]), b2(PanCombo[2]), b3(PanCombo[3]);
    PanCombo[1]->setCurrentIndex(ScopeLists::DefaultSpanIndex);
    PanCombo[2]->setCurrentIndex(ScopeLists::DefaultResolutionIndex);
    PanCombo[3]->setCurrentIndex(ScopeLists::DefaultRecordIndex);
    paintGraticule(1);
}

// ---- other handlers ------------------------------------------------------------------------------

void BandScope::PanCombo_Click(int)
{
    drawGraticule(sRecordSelected() ? 1 : 0);
}

void BandScope::Scan_Click(int index)
{
    Label0->hide();
    drawGraticule(index == 2 ? 0 : 1);
}

void BandScope::MainSub_Click(int index)
{
    receiver_ = index + 1;
    MainSub[index]->setChecked(true);
    keyClick(ScopeKey::GetCenter);
    const bool dual = host_.dualShown();
    if ((index == 1 && !dual) || (index == 0 && dual))
        host_.pressKey(ScopeKey::Dual);
}

void BandScope::CFreq_LostFocus()
{
    drawGraticule(1);
}

void BandScope::PanBox_MouseMove(double x)
{
    if (sRecordSelected())
        return;
    // The frequency of the bar under the pointer: the sweep's start (the span's lower edge rounded
    // down to the resolution, as the sweep tunes it) plus x, not the unrounded edge. The bars stand
    // at the rounded frequencies, so a double click tunes to the bar the operator sees.
    mouseKHz_ = frequencyAt(currentPlan(), x);
    readout_->setText(readoutText(mouseKHz_));
    readout_->adjustSize();
    PanBox_->setOverlays(Label0, readout_);
}

void BandScope::PanBox_DblClick()
{
    if (mouseKHz_ <= 0)
        return;
    const qint64 arg = setFreqArgument(mouseKHz_);
    host_.link().post([arg](CatPort& port) { SetFreq(port, arg, 1); });
}

bool BandScope::eventFilter(QObject* watched, QEvent* event)
{
    // The focus going to another control, not the window losing it to another one or to a popup.
    if (watched == CFreq && event->type() == QEvent::FocusOut) {
        const Qt::FocusReason why = static_cast<QFocusEvent*>(event)->reason();
        if (why != Qt::ActiveWindowFocusReason && why != Qt::PopupFocusReason)
            CFreq_LostFocus();
    }
    return QWidget::eventFilter(watched, event);
}

// ---- values --------------------------------------------------------------------------------------

int BandScope::selectedReceiver() const
{
    return receiver_;
}
bool BandScope::sRecordSelected() const
{
    return Scan[2]->isChecked();
}
double BandScope::centreKHz() const
{
    return leadingNumber(CFreq->text());
}
double BandScope::spanKHz() const
{
    return leadingNumber(PanCombo[1]->currentText());
}
double BandScope::resolutionKHz() const
{
    return leadingNumber(PanCombo[2]->currentText());
}
double BandScope::recordMinutes() const
{
    return leadingNumber(PanCombo[3]->currentText(), 1);
}
SweepPlan BandScope::currentPlan() const
{
    return makeSweepPlan(centreKHz(), spanKHz(), resolutionKHz());
}
