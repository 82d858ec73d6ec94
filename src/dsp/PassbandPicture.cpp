// SPDX-License-Identifier: GPL-3.0-or-later
#include "PassbandPicture.h"

#include "AudioFilterSliders.h"
#include "Twips.h"

#include <QLabel>
#include <algorithm>

namespace {
constexpr int PictureWidthTwips = AudioFilterSliders::CutMax * AudioFilterSliders::TwipsPerStep;
constexpr int PictureHeightPx = 36;
constexpr quint32 PassbandColour = 0xC0FFC0;  // the audio that passes: light green
constexpr quint32 CutColour = 0x808080;       // the parts cut away: grey
}  // namespace

PassbandPicture::PassbandPicture(QWidget* parent) : QFrame(parent)
{
    setObjectName(QStringLiteral("Picture1"));
    setFrameShape(QFrame::NoFrame);
    setFixedSize(Twips::toPixels(PictureWidthTwips), PictureHeightPx);
    setAutoFillBackground(true);
    QPalette p = palette();
    p.setColor(QPalette::Window, fromBgr(PassbandColour));
    setPalette(p);
    setToolTip(tr("Audio passband"));
    for (int i = 0; i < 2; ++i) {
        auto* bar = new QLabel(this);
        bar->setObjectName(QStringLiteral("Label2_%1").arg(i));
        bar->setAutoFillBackground(true);
        QPalette bp = bar->palette();
        bp.setColor(QPalette::Window, fromBgr(CutColour));
        bar->setPalette(bp);
        Label2.append(bar);
    }
    hpWidthTwips_ = AudioFilterSliders::HighPassInitial * AudioFilterSliders::TwipsPerStep;
    lpLeftTwips_ = AudioFilterSliders::LowPassInitial * AudioFilterSliders::TwipsPerStep;
    place();
}

void PassbandPicture::setHighPassBarWidthTwips(int twips)
{
    hpWidthTwips_ = twips;
    place();
}

void PassbandPicture::setLowPassBarLeftTwips(int twips)
{
    lpLeftTwips_ = twips;
    place();
}

void PassbandPicture::resizeEvent(QResizeEvent* e)
{
    QFrame::resizeEvent(e);
    place();
}

void PassbandPicture::place()
{
    Label2[0]->setGeometry(0, 0, Twips::toPixels(hpWidthTwips_), height());
    const int left = Twips::toPixels(lpLeftTwips_);
    Label2[1]->setGeometry(left, 0, std::max(0, width() - left), height());
}
