// SPDX-License-Identifier: GPL-3.0-or-later
// The navigator window's controls: the display, the key pad, the mode keys, the steppers, the
// slider and the quick memories, with their timers.
#include "frm_Navig.h"

#include "BandPlan.h"
#include "ModeKeys.h"
#include "NavigatorKey.h"
#include "NavigatorLook.h"
#include "PressButton.h"
#include "QuickMemory.h"
#include "SliderTuning.h"
#include "Stepper.h"
#include "Twips.h"

#include <QFontDatabase>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QTimer>
#include <QVBoxLayout>

namespace {
// Where each key of Band(0..14) sits on the pad: digits as on a telephone pad, "0" ("29") between
// "&Freq" and "&Band" on the bottom row, "Enter", "Main" and "Sub" in the column to the right.
struct Cell {
    int row, column;
};
constexpr Cell PadCells[15] = {{3, 1}, {0, 0}, {0, 1}, {0, 2}, {1, 0}, {1, 1}, {1, 2}, {2, 0},
                               {2, 1}, {2, 2}, {3, 0}, {1, 3}, {2, 3}, {0, 3}, {3, 2}};
}  // namespace

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
        const QString text = i < BandPlan::Count
                                 ? BandPlan::caption(i)
                                 : QString::fromLatin1(NavigatorKey::ControlCaptions[i - BandPlan::Count]);
        Band[i] = new QPushButton(text, pad);
        Band[i]->setObjectName(QStringLiteral("Band%1").arg(i));
        Band[i]->setMinimumSize(50, 24);
        padGrid->addWidget(Band[i], PadCells[i].row, PadCells[i].column);
        connect(Band[i], &QPushButton::clicked, this, [this, i] { Band_Click(i); });
    }
    Band[NavigatorKey::Enter]->setAutoDefault(true);  // the Return key presses "Enter" when it has the focus
    for (int i = NavigatorKey::Main; i <= NavigatorKey::Band; ++i)
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
