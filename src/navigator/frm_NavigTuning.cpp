// SPDX-License-Identifier: GPL-3.0-or-later
// The navigator's press-and-hold steppers and its spring-back slider: both stop the poll while they
// tune and start it again afterwards.
#include "frm_Navig.h"

#include "ConsoleHost.h"
#include "NavigatorJobs.h"
#include "RadioLink.h"
#include "SliderTuning.h"

#include <QPointer>
#include <QSlider>
#include <QTimer>

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
