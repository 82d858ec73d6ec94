// SPDX-License-Identifier: GPL-3.0-or-later
#include "AboutText.h"

AboutText::Version AboutText::buildVersion()
{
    return {FT_VERSION_MAJOR, FT_VERSION_MINOR, FT_VERSION_PATCH};
}

QString AboutText::caption(const QString& title)
{
    return QStringLiteral("About ") + title;
}

QString AboutText::versionLine(const Version& v)
{
    return QStringLiteral("Version %1.%2.%3").arg(v.major).arg(v.minor).arg(v.patch);
}

QString AboutText::description()
{
    // One caption; the label wraps it.
    return QStringLiteral("This is a CAT program for the Yaesu FT-1000 MP family.") +
           QStringLiteral(" It provides a Scope function allowing you to") +
           QStringLiteral(" plot a spectrum analyser alike graph");
}

QString AboutText::notice()
{
    return QStringLiteral("This program is FreeWare .") + QChar(13);
}
