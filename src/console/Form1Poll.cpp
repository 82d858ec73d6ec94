// SPDX-License-Identifier: GPL-3.0-or-later
// Painting what the status poll brought back: frequencies, clarifiers, modes, shifts, flags.
#include "FlagsDecoder.h"
#include "Form1.h"
#include "Procedures.h"
#include "SecondaryWindows.h"

#include <QGroupBox>
#include <QLabel>

void Form1::showStatus(const QByteArray& record)
{
    const StatusView v = decodeStatus(record_, record);
    if (v.noLink) {
        Label2[1]->setText(NoLinkText);
        return;
    }
    vfoA_ = v.a.kHz;
    vfoB_ = v.b.kHz;
    if (record.size() == 2 * ReplySize::VfoRecord)
        lastRecord_ = record;
    Label15->setText(v.dumpA);
    Label16->setText(v.dumpB);
    Label2[1]->setText(v.a.freqText);
    Label2[2]->setText(v.b.freqText);

    Label1[6]->setVisible(v.rptrVisible);
    if (!v.rptrCaption.isEmpty())
        Label1[6]->setText(v.rptrCaption);
    Label1[7]->setText(v.antCaption);

    // Clarifiers: Label3(3) "Main CLAR", (7) "TX", (5) "RX"; (4), (8), (6) for VFO-B.
    Label3[3]->setVisible(v.a.txClar || v.a.rxClar);
    Label3[7]->setVisible(v.a.txClar);
    Label3[5]->setVisible(v.a.rxClar);
    Label3[4]->setVisible(v.b.txClar || v.b.rxClar);
    Label3[8]->setVisible(v.b.txClar);
    Label3[6]->setVisible(v.b.rxClar);
    Label3[1]->setText(v.a.clarText);
    Label3[2]->setText(v.b.clarText);

    // The shared mode code follows VFO-A, the one the mode keys and the EDSP dialog act on.
    if (v.a.mode) {
        Label1[1]->setText(v.a.mode->caption);
        modeCode_ = v.a.mode->code;
    }
    if (v.b.mode)
        Label1[2]->setText(v.b.mode->caption);

    windows_.statusDecoded(v);
    emit statusShown(v);
}

void Form1::showFlags(int arg, const FlagsReply& reply)
{
    const FlagsView v = decodeFlags(arg, reply.waiting, reply.bytes);
    if (!v.decoded)
        return;
    Label4->setText(v.dump);
    emit flagsShown(v);
    if (v.markV) {
        setWindowTitle(MarkVTitle);
        return;
    }
    Label1[3]->setVisible(v.split);
    Label1[0]->setVisible(v.dual);
    Label1[5]->setVisible(v.xmit);
    Label1[8]->setVisible(v.vfo);
    Label1[9]->setVisible(v.mem);
    Label1[10]->setVisible(v.mtun);
    Label1[11]->setVisible(v.qmb);
    Label1[4]->setVisible(v.tuner);
    Label1[13]->setVisible(v.lockVisible);
    if (!v.lockCaption.isEmpty())
        Label1[13]->setText(v.lockCaption);
    Frame[6]->setTitle(v.frameA);
    Frame[7]->setTitle(v.frameB);
    if (muted_[1] != v.vfoAMuted || muted_[2] != v.vfoBMuted) {
        muted_[1] = v.vfoAMuted;
        muted_[2] = v.vfoBMuted;
        applyDisplayLook(1);
        applyDisplayLook(2);
    }
}
