// SPDX-License-Identifier: GPL-3.0-or-later
#include "FilterSelection.h"

#include "SettingsStore.h"

namespace FilterSelection {

namespace {
bool firstColumn(int index)
{
    return index >= 0 && index <= 4;
}
bool secondColumn(int index)
{
    return index >= 10 && index <= 14;
}
int rowCode(int index)
{
    return firstColumn(index) ? index : index - 10;
}
}  // namespace

QList<int> buttonIndices()
{
    return {0, 1, 2, 3, 4, 10, 11, 12, 13, 14};
}

QString buttonCaption(int index)
{
    if (!firstColumn(index) && !secondColumn(index))
        return {};
    static const char* const rows[] = {"2.4 K", "2.0 K", "500 Hz", "250 Hz"};
    const int row = rowCode(index);
    if (row < 4)
        return QString::fromLatin1(rows[row]);
    return firstColumn(index) ? QStringLiteral("Thru") : QStringLiteral("6.0 K");
}

std::optional<CatCommand> filtACommand(int index)
{
    if (firstColumn(index))
        return CatCommand::make(Op::FilterSelect, index, 0, 0, MainFirstIf);
    if (secondColumn(index))
        return CatCommand::make(Op::FilterSelect, index - 10, 0, 0, MainSecondIf);
    return std::nullopt;
}

std::optional<CatCommand> filtBCommand(int index)
{
    if (firstColumn(index))
        return CatCommand::make(Op::FilterSelect, index + 128);
    if (secondColumn(index))
        return CatCommand::make(Op::FilterSelect, index + 118);
    return std::nullopt;
}

QList<Lamp> lamps(int b)
{
    const int low = (b & 1) + (b & 2);
    const int high = (b & 16) + (b & 32);
    return {
        {14, low + (b & 4) == 0},  // 455 kHz code 0
        {10, low == 1},
        {11, low == 2},
        {12, low == 3},
        {13, (b & 4) != 0},
        {4, high + (b & 64) == 0},  // 8.2 MHz code 0
        {0, high == 16},
        {1, high == 32},
        {2, high == 48},
        {3, (b & 64) != 0},
    };
}

bool isSeparator(int menuIndex)
{
    return menuIndex == 2 || menuIndex == 6;
}

QString menuCaption(int menuIndex)
{
    switch (menuIndex) {
        case 0:
            return QStringLiteral("2nd IF - 8.2 mHz - 2.0 kHz");
        case 1:
            return QStringLiteral("2nd IF - 8.2 mHz - 250 Hz");
        case 3:
            return QStringLiteral("3rd IF - 455 kHz - 2.0 kHz");
        case 4:
            return QStringLiteral("3rd IF - 455 kHz - 500 kHz");  // sic: the item everyone knows by this name
        case 5:
            return QStringLiteral("3rd IF - 455 kHz - 250 Hz");
        case 7:
            return QStringLiteral("Sub Filter 455 kHz - 500 Hz");
        case 2:
        case 6:
            return QStringLiteral("-");
        default:
            return {};
    }
}

std::optional<GatedButton> gatedButton(int menuIndex)
{
    switch (menuIndex) {
        case 0:
            return GatedButton{false, 1};
        case 1:
            return GatedButton{false, 3};
        case 3:
            return GatedButton{false, 11};
        case 4:
            return GatedButton{false, 12};
        case 5:
            return GatedButton{false, 13};
        case 7:
            return GatedButton{true, 12};
        default:
            return std::nullopt;
    }
}

QList<int> menuLoadOrder()
{
    QList<int> order;
    for (int i = 0; i <= 7; ++i) {
        if (i == 2 || i == 6)
            ++i;
        order.append(i);
    }
    return order;
}

QString settingsKey(int menuIndex)
{
    return QStringLiteral("Filter") + QString::number(menuIndex);
}

QString settingsValue(bool checked)
{
    return checked ? QStringLiteral("1") : QStringLiteral("0");
}

bool checkedFromSetting(const QString& stored)
{
    if (stored.trimmed().compare(QStringLiteral("true"), Qt::CaseInsensitive) == 0)
        return true;
    return leadingNumber(stored, 0.0) != 0.0;
}

}  // namespace FilterSelection
