// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Which sharing ports are open. Stored in section "Sharing": "Native" and "Text", each "1" or "0"
// (default "0": a port is a device other programs can open, so it is there only when asked for).
// The command line names the ports of one run as a list: "native", "text" or "native,text".

#include <QString>
#include <optional>

class SettingsStore;

struct SharingSettings {
    bool native = false;
    bool text = false;

    static SharingSettings load(const SettingsStore& store);
    void save(SettingsStore& store) const;

    // Port names separated by commas, in any order and case; nothing for an empty list or a name
    // that is not a port.
    static std::optional<SharingSettings> parseList(const QString& list);

    bool operator==(const SharingSettings&) const = default;
};

namespace SharingKey {
inline const QString Section = QStringLiteral("Sharing");
inline const QString Native = QStringLiteral("Native");
inline const QString Text = QStringLiteral("Text");
// The names of the command line's list.
inline const QString NativeName = QStringLiteral("native");
inline const QString TextName = QStringLiteral("text");
}  // namespace SharingKey
