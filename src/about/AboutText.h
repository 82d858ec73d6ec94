// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The texts of the About box.

#include <QString>

namespace AboutText {
struct Version {
    int major = 0;
    int minor = 0;
    int patch = 0;
};
Version buildVersion();  // the version this program was built as

QString caption(const QString& title);  // "About " + title
QString versionLine(const Version& v);  // "Version 1.2.0"
QString description();
QString notice();
}  // namespace AboutText
