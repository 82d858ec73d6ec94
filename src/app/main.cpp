// SPDX-License-Identifier: GPL-3.0-or-later
// The program: the radio link on its thread, the main window, and what the command line asks for.
#include "AppIcon.h"
#include "AppOptions.h"
#include "AppWindows.h"
#include "FastLinkControl.h"
#include "Form1.h"
#include "IniSettingsStore.h"
#include "LinkRig.h"
#include "NativePort.h"
#include "NetworkControl.h"
#include "Prompts.h"
#include "QtSerialPort.h"
#include "RadioLink.h"
#include "RealClock.h"
#include "SharingControl.h"
#include "SimHost.h"
#include "TextPort.h"
#include "WebControl.h"

#include <QApplication>
#include <QLabel>
#include <QTimer>
#include <cstdio>
#include <memory>

namespace {
void dumpState(Form1& form)
{
    auto line = [](const QString& name, const QString& value) {
        std::printf("%s=%s\n", qPrintable(name), qPrintable(value));
    };
    line(QStringLiteral("title"), form.windowTitle());
    line(QStringLiteral("Label2(1)"), form.Label2[1]->text());
    line(QStringLiteral("Label2(2)"), form.Label2[2]->text());
    line(QStringLiteral("Label1(1)"), form.Label1[1]->text());
    line(QStringLiteral("Label1(2)"), form.Label1[2]->text());
    line(QStringLiteral("Label5"), form.Label5->text());
    std::fflush(stdout);
}
}  // namespace

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("ft1000cat"));
    QApplication::setApplicationVersion(QStringLiteral(FT_VERSION));
    QApplication::setWindowIcon(appIcon());
    QGuiApplication::setDesktopFileName(QStringLiteral(FT_APP_ID));  // the menu entry, for the desktop's icon
    const AppOptions options = parseAppOptions(QApplication::arguments());
    if (!options.error.isEmpty()) {
        std::fprintf(stderr, "ft1000cat: %s\n", qPrintable(options.error));
        return 2;
    }

    std::unique_ptr<SimHost> sim;
    QString device = options.port;
    if (options.simulate) {
        sim = std::make_unique<SimHost>(options.markV ? VirtualRadio::Model::MarkV : VirtualRadio::Model::MP);
        QString error;
        if (!sim->start(&error)) {
            std::fprintf(stderr, "ft1000cat: cannot start the virtual radio: %s\n", qPrintable(error));
            return 1;
        }
        device = sim->devicePath();
    }

    std::unique_ptr<SettingsStore> settings = options.settingsFile.isEmpty()
                                                  ? std::make_unique<IniSettingsStore>()
                                                  : std::make_unique<IniSettingsStore>(options.settingsFile);
    auto clock = std::make_shared<RealClock>();
    RadioLink link([] { return std::make_unique<QtSerialPort>(); }, clock);
    QtPrompts prompts;
    std::optional<NetworkSettings::Endpoint> rigctld;
    if (!options.rigctld.isEmpty()) {
        rigctld = NetworkSettings::parseEndpoint(options.rigctld);
        if (!rigctld) {
            std::fprintf(stderr, "ft1000cat: --rigctld takes [ADDRESS:]PORT, not \"%s\"\n",
                         qPrintable(options.rigctld));
            return 2;
        }
    }

    std::optional<SharingSettings> share;
    if (!options.share.isEmpty()) {
        share = SharingSettings::parseList(options.share);
        if (!share) {
            std::fprintf(stderr, "ft1000cat: --share takes native, text or native,text, not \"%s\"\n",
                         qPrintable(options.share));
            return 2;
        }
    }

    WebControl::RunOptions web{std::nullopt, options.webCert, options.webKey};
    if (!options.web.isEmpty()) {
        web.endpoint = WebSettings::parseEndpoint(options.web);
        if (!web.endpoint) {
            std::fprintf(stderr, "ft1000cat: --web takes [ADDRESS:]PORT, not \"%s\"\n", qPrintable(options.web));
            return 2;
        }
    }

    AppWindows windows;
    auto form = std::make_unique<Form1>(link, *settings, windows, prompts);
    windows.setHost(form.get());
    if (!device.isEmpty())
        form->setPortOverride(device);
    auto network = std::make_unique<NetworkControl>(*form, *settings);
    auto fastLink = std::make_unique<FastLinkControl>(*form, *settings, options.fastLink);
    // The ports serve from the server's backend: one snapshot, one set of holds, one transmit gate;
    // the native port answers the poll's reads from the main window's poll.
    auto sharing = std::make_unique<SharingControl>(
        *form, *settings,
        std::make_unique<SharingPortOf<NativePort>>(std::make_unique<NativePort>(network->backend(), form->pollCache()),
                                                    NativePort::LinkName),
        std::make_unique<SharingPortOf<TextPort>>(std::make_unique<TextPort>(network->backend()), TextPort::LinkName));
    // The panel through the same backend: one snapshot, one transmit gate.
    auto webPanel = std::make_unique<WebControl>(*form, *settings, network->backend());
    QObject::connect(sharing.get(), &SharingControl::portOpened, [](const QString& line) {
        std::printf("%s\n", qPrintable(line));
        std::fflush(stdout);
    });
    form->Form_Load();
    form->show();
    QString netError;
    if (!network->start(rigctld, &netError))
        std::fprintf(stderr, "ft1000cat: network control not started: %s\n", qPrintable(netError));
    QString shareError;
    if (!sharing->start(share, &shareError))
        std::fprintf(stderr, "ft1000cat: sharing port not opened: %s\n", qPrintable(shareError));
    QString webError;
    if (!webPanel->start(web, &webError))
        std::fprintf(stderr, "ft1000cat: web panel not started: %s\n", qPrintable(webError));
    else if (webPanel->listening())
        std::printf("web panel: %s\n", qPrintable(webPanel->address()));  // the codes are in Setup > Web Panel
    std::fflush(stdout);

    if (!options.screenshot.isEmpty()) {
        QTimer::singleShot(options.screenshotAfterMs, form.get(), [&] {
            if (!form->grab().save(options.screenshot))
                std::fprintf(stderr, "ft1000cat: cannot write %s\n", qPrintable(options.screenshot));
            form->close();
        });
    }
    const int rc = app.exec();
    if (options.dumpState) {
        dumpState(*form);
        std::printf("fastLink=%d\npollRate=%s\n", fastLink->on() ? 1 : 0, qPrintable(fastLink->rateText()));
        std::fflush(stdout);
    }
    webPanel.reset();  // before the backend it serves from
    sharing.reset();
    network.reset();
    fastLink.reset();
    windows.closeAll();  // they save their settings through the main window, so before it goes
    form.reset();
    link.waitForIdle();  // the last jobs (unkeying a networked transmitter) still go out
    link.shutdown();
    if (sim)
        sim->stop();
    return rc;
}
