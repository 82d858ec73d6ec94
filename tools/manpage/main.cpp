// SPDX-License-Identifier: GPL-3.0-or-later
// ft-manpage: writes a program's manual page from a template and the program's own --help, so the
// page's options are the ones the program accepts. Runs at build time.
//
//   ft-manpage PROGRAM TEMPLATE OUTPUT

#include "HelpPage.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QSaveFile>
#include <QTextStream>

namespace {
constexpr int HelpTimeoutMs = 30000;

int failWith(const QString& message)
{
    QTextStream(stderr) << "ft-manpage: " << message << '\n';
    return 1;
}
}  // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList args = QCoreApplication::arguments();
    if (args.size() != 4)
        return failWith(QStringLiteral("usage: ft-manpage PROGRAM TEMPLATE OUTPUT"));
    const QString program = args[1], templatePath = args[2], outputPath = args[3];

    QProcess run;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));  // no display at build time
    run.setProcessEnvironment(env);
    run.start(program, {QStringLiteral("--help")});
    if (!run.waitForFinished(HelpTimeoutMs) || run.exitStatus() != QProcess::NormalExit || run.exitCode() != 0)
        return failWith(
            QStringLiteral("%1 --help failed: %2").arg(program, QString::fromLocal8Bit(run.readAllStandardError())));

    QString error;
    const auto help = HelpPage::parse(QString::fromLocal8Bit(run.readAllStandardOutput()), &error);
    if (!help)
        return failWith(error);
    QFile in(templatePath);
    if (!in.open(QIODevice::ReadOnly))
        return failWith(QStringLiteral("cannot read %1").arg(templatePath));
    const auto page = HelpPage::fillTemplate(QString::fromUtf8(in.readAll()), *help, &error);
    if (!page)
        return failWith(QStringLiteral("%1: %2").arg(templatePath, error));
    QSaveFile out(outputPath);
    if (!out.open(QIODevice::WriteOnly) || out.write(page->toUtf8()) < 0 || !out.commit())
        return failWith(QStringLiteral("cannot write %1").arg(outputPath));
    return 0;
}
