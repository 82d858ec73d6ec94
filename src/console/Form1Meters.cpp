// SPDX-License-Identifier: GPL-3.0-or-later
// The meters: both S-meters, the chosen transmit meter and the CW pitch.
#include "Form1.h"
#include "LevelGauge.h"
#include "MeterDecoder.h"
#include "Procedures.h"

#include <QLabel>

void Form1::Mtr_Click(int index)
{
    meterSelector_ = MeterSelector::TransmitBase + index;
    if (const TransmitMeter* m = transmitMeter(index))
        Label[11]->setText(QString::fromLatin1(m->scale));
}

void Form1::showMeters(const MeterReplies& replies)
{
    // One missing reply leaves every meter as it was.
    if (!replies.complete())
        return;
    const MeterView v = decodeMeters(firstByte(replies.mainS), firstByte(replies.subS), firstByte(replies.transmit),
                                     firstByte(replies.pitch));
    mainSMeter_ = v.mainS;
    transmitMeterPercent_ = v.transmitPercent;
    Label5->setText(v.line);
    axPanel1->setLevel(v.mainPercent);
    axPanel3->setLevel(v.subPercent);
    axPanel2->setLevel(v.transmitPercent);
    Label1[12]->setText(v.pitchText);
}

void Form1::setMainSMeter(int percent)
{
    axPanel1->setLevel(percent);
}
