// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The line settings text of a serial port, "speed,parity,data,stop" such as "4800,n,8,2".

#include <QString>
#include <optional>

struct LineSettings {
    enum class Parity { None, Even, Odd, Mark, Space };
    enum class StopBits { One, OneAndHalf, Two };

    int baud = 4800;
    Parity parity = Parity::None;
    int dataBits = 8;
    StopBits stopBits = StopBits::Two;

    // Parses the text; on failure returns nothing and, when asked, a description for the operator.
    static std::optional<LineSettings> parse(const QString& text, QString* error = nullptr);
    QString text() const;  // canonical form, parity letter in upper case ("4800,N,8,2")
};

inline constexpr const char* DefaultLineSettings = "4800,n,8,2";
