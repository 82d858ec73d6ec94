// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The port dialog's reading of a line settings text into its choices, and the text it builds back.

#include <QString>
#include <QStringList>

namespace PortDialog {

// "300" .. "57600": the speed list, by index.
const QStringList& speeds();

// The choices the dialog preselects; -1 / a null character where the text gives none.
struct Selection {
    int speedIndex = -1;
    QChar parity;       // 'N', 'E' or 'O'
    int dataBits = -1;  // 7 or 8
    int stopBits = -1;  // 1 or 2
};

// Reads the text by the position of its first comma: the speed before it, then single characters
// at fixed offsets behind it for parity, data bits and stop bits ("1.5" stop bits reads as 1).
Selection readSettings(const QString& settings);

// "speed,parity,data,stop", each part as the dialog holds it (empty parts stay empty).
QString buildSettings(const QString& speed, const QString& parity, const QString& dataBits, const QString& stopBits);

// The port number a device stands for: 0 none, 1..8 the numbered ports, OtherDevice for any other path.
int portNumberForDevice(const QString& device);

inline const QString InvalidPortNumber = QStringLiteral("Invalid port number");

}  // namespace PortDialog
