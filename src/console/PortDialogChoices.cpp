// SPDX-License-Identifier: GPL-3.0-or-later
#include "PortDialogChoices.h"

#include "PortCatalog.h"
#include "SettingsStore.h"

namespace PortDialog {

const QStringList& speeds()
{
    static const QStringList list = {QStringLiteral("300"),   QStringLiteral("1200"), QStringLiteral("2400"),
                                     QStringLiteral("4800"),  QStringLiteral("9600"), QStringLiteral("19200"),
                                     QStringLiteral("38400"), QStringLiteral("57600")};
    return list;
}

namespace {
// The character at a 1-based position, empty past the end.
QString charAt(const QString& s, qsizetype position)
{
    return position >= 1 && position <= s.size() ? s.mid(position - 1, 1) : QString();
}
}  // namespace

Selection readSettings(const QString& s)
{
    Selection sel;
    const qsizetype p = s.indexOf(u',') + 1;  // 1-based, 0 when there is no comma
    if (p == 0)
        return sel;
    const double speed = leadingNumber(s.left(p - 1), 0.0);
    for (qsizetype i = 0; i < speeds().size(); ++i)
        if (speed == speeds()[i].toDouble())
            sel.speedIndex = static_cast<int>(i);
    const QString parity = charAt(s, p + 1).toUpper();
    if (parity == u"N" || parity == u"E" || parity == u"O")
        sel.parity = parity[0];
    const int data = static_cast<int>(leadingNumber(charAt(s, p + 3), 0.0));
    if (data == 7 || data == 8)
        sel.dataBits = data;
    const int stop = static_cast<int>(leadingNumber(charAt(s, p + 5), 0.0));
    if (stop == 1 || stop == 2)
        sel.stopBits = stop;
    return sel;
}

QString buildSettings(const QString& speed, const QString& parity, const QString& dataBits, const QString& stopBits)
{
    return speed + u',' + parity + u',' + dataBits + u',' + stopBits;
}

int portNumberForDevice(const QString& device)
{
    if (device.isEmpty())
        return PortCatalog::None;
    for (int n = 1; n <= PortCatalog::NumberedPorts; ++n)
        if (PortCatalog::numberedDevice(n) == device)
            return n;
    return PortCatalog::OtherDevice;
}

}  // namespace PortDialog
