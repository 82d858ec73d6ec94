// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The real main window on the real serial adapter, its link on its own thread, against the virtual
// radio served at a stable device path: the program as it runs, in-process.
#include "ConsoleFixture.h"
#include "Form1.h"
#include "MemorySettingsStore.h"
#include "QtSerialPort.h"
#include "RadioLink.h"
#include "RealClock.h"
#include "SimHost.h"

#include <QLabel>
#include <memory>

struct FormOnRadio {
    explicit FormOnRadio(const QString& linkPath)
    {
        host.setLinkPath(linkPath);
        started = host.start(&error);
        link = std::make_unique<RadioLink>([] { return std::make_unique<QtSerialPort>(); }, clock);
        form = std::make_unique<Form1>(*link, store, windows, prompts);
        form->setPortOverride(host.devicePath());
        form->Form_Load();
        form->show();
    }
    ~FormOnRadio()
    {
        if (form)
            form->close();
        form.reset();
        link->shutdown();
        link.reset();
        host.stop();
    }

    QString vfoA() const { return form->Label2[1]->text(); }

    SimHost host;
    QString error;
    bool started = false;
    std::shared_ptr<RealClock> clock = std::make_shared<RealClock>();
    std::unique_ptr<RadioLink> link;
    MemorySettingsStore store;
    FakeWindows windows;
    FakePrompts prompts;
    std::unique_ptr<Form1> form;
};
