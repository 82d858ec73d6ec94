// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Port numbers of the settings ("Com:" 0 = none, 1-8 the numbered ports) and the devices they name on
// this platform, plus the serial devices present and a device path kept beside them.

#include <QString>
#include <QStringList>

class SettingsStore;

namespace PortKeys {
inline const QString Section = QStringLiteral("CommPort");
inline const QString Number = QStringLiteral("Com:");
inline const QString Settings = QStringLiteral("Set");
inline const QString Device = QStringLiteral("Device");  // the device of port number OtherDevice
inline const QString RadioSection = QStringLiteral("Radio");
inline const QString RadioType = QStringLiteral("Type");
}  // namespace PortKeys

namespace PortCatalog {
constexpr int None = 0;
constexpr int NumberedPorts = 8;
constexpr int OtherDevice = 9;  // a device that has no number: "/dev/ttyUSB0", a pseudo-terminal

QString numberedDevice(int number);  // 1 -> "/dev/ttyS0" (Linux), "COM1" (Windows)
QString deviceFor(int number, const QString& otherDevice);
QStringList presentDevices();  // serial devices the system reports now

// "Com:" read as a real number used as a whole number; garbage reads as 0.
int storedPortNumber(const SettingsStore& settings);
}  // namespace PortCatalog

// What the start-up does with the port: open it, or ask the operator for one.
struct StartupPortPlan {
    QString settings;  // line settings to apply in every case
    bool open = false;
    bool closeFirst = false;  // the port was open already: close it before asking
    bool ask = false;
    int number = 0;
    QString device;
};
StartupPortPlan planStartupPort(const SettingsStore& settings, int radioType, bool portAlreadyOpen);

inline const QString ConfigErrorTitle = QStringLiteral("Configuration Error !");
inline const QString ConfigErrorText =
    QStringLiteral("You need a Serial Port to control your Radio,\rWould you like to select one now ?");
