// SPDX-License-Identifier: GPL-3.0-or-later
#include "PortCatalog.h"

#include "LineSettings.h"
#include "SettingsStore.h"

#include <QSerialPortInfo>
#include <cmath>

QString PortCatalog::numberedDevice(int number)
{
#ifdef Q_OS_WIN
    return QStringLiteral("COM%1").arg(number);
#else
    return QStringLiteral("/dev/ttyS%1").arg(number - 1);
#endif
}

QString PortCatalog::deviceFor(int number, const QString& otherDevice)
{
    if (number >= 1 && number <= NumberedPorts)
        return numberedDevice(number);
    if (number == OtherDevice)
        return otherDevice;
    return {};
}

QStringList PortCatalog::presentDevices()
{
    QStringList out;
    for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts())
        out << info.systemLocation();
    out.sort();
    return out;
}

int PortCatalog::storedPortNumber(const SettingsStore& settings)
{
    const double v = settings.number(PortKeys::Section, PortKeys::Number, 0.0);
    if (!std::isfinite(v) || v < -32768 || v > 32767)
        return 0;
    return static_cast<int>(std::lrint(v));
}

StartupPortPlan planStartupPort(const SettingsStore& settings, int radioType, bool portAlreadyOpen)
{
    StartupPortPlan p;
    p.settings = settings.value(PortKeys::Section, PortKeys::Settings, QLatin1String(DefaultLineSettings));
    p.number = PortCatalog::storedPortNumber(settings);
    p.device = PortCatalog::deviceFor(p.number, settings.value(PortKeys::Section, PortKeys::Device));
    if (p.number != 0 && radioType >= 1 && !portAlreadyOpen) {
        p.open = true;
        return p;
    }
    p.closeFirst = portAlreadyOpen;
    p.ask = true;
    return p;
}
