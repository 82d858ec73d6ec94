// SPDX-License-Identifier: GPL-3.0-or-later
#include "BandPlan.h"

qint64 BandPlan::frequencyTenHz(int index)
{
    if (index < 0 || index >= Count)
        return 0;
    return TenHz[index];
}

double BandPlan::frequencyMHz(int index)
{
    return frequencyTenHz(index) / 100000.0;
}

QString BandPlan::caption(int index)
{
    if (index < 0 || index >= Count)
        return {};
    return CaptionString.mid(CaptionWidth * index, CaptionWidth).trimmed();
}

QStringList BandPlan::captions()
{
    QStringList l;
    for (int i = 0; i < Count; ++i)
        l << caption(i);
    return l;
}

QString BandPlan::digitCaption(int index)
{
    return QString::number(index);
}
