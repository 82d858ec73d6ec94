// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// A main window on a fake port and fake clock, run inline, with scripted prompts and a recording
// stand-in for the other windows.

#include "ConfigScrn.h"
#include "FakeClock.h"
#include "FakeSerialPort.h"
#include "Form1.h"
#include "MemorySettingsStore.h"
#include "Prompts.h"
#include "RadioLink.h"
#include "SecondaryWindows.h"

#include <QDialog>
#include <QSet>
#include <QStringList>
#include <deque>
#include <functional>
#include <memory>

class FakeWindows final : public SecondaryWindows {
public:
    void showMemory() override { calls << QStringLiteral("showMemory"); }
    void openMemoryFile() override { calls << QStringLiteral("openMemoryFile"); }
    void showNavigator() override { calls << QStringLiteral("showNavigator"); }
    void showFilters() override { calls << QStringLiteral("showFilters"); }
    void showAbout() override { calls << QStringLiteral("showAbout"); }
    void showEdsp(int tab) override { calls << QStringLiteral("showEdsp %1").arg(tab); }
    void selectEdspOption(int index) override
    {
        calls << QStringLiteral("selectEdspOption %1").arg(index);
        selected.insert(index);
    }
    bool edspOptionSelected(int index) override { return selected.contains(index); }
    void clearTxEdspOptions() override { calls << QStringLiteral("clearTxEdspOptions"); }
    void statusDecoded(const StatusView&) override { ++decodes; }
    int navigatorWidthTwips() override { return 2000; }
    bool confirmCloseAll() override
    {
        calls << QStringLiteral("confirmCloseAll");
        return mayClose;
    }
    void closeAll() override { calls << QStringLiteral("closeAll"); }

    QStringList calls;
    bool mayClose = true;
    QSet<int> selected;
    int decodes = 0;
};

class FakePrompts final : public Prompts {
public:
    struct Message {
        QMessageBox::Icon icon;
        QString title;
        QString text;
        QMessageBox::StandardButtons buttons;
    };
    QMessageBox::StandardButton message(QWidget*, QMessageBox::Icon icon, const QString& title, const QString& text,
                                        QMessageBox::StandardButtons buttons) override
    {
        messages.append({icon, title, text, buttons});
        if (answers.empty())
            return QMessageBox::Ok;
        const auto a = answers.front();
        answers.pop_front();
        return a;
    }
    std::optional<QString> input(QWidget*, const QString& title, const QString& label, const QString& initial,
                                 QPoint atTwips) override
    {
        inputs.append({title, label, initial});
        inputAt = atTwips;
        if (typed.empty())
            return std::nullopt;
        const auto t = typed.front();
        typed.pop_front();
        return t;
    }
    void execDialog(QDialog* dialog) override
    {
        ++modalDialogs;
        if (onDialog)
            onDialog(dialog);
    }

    QList<Message> messages;
    std::deque<QMessageBox::StandardButton> answers;
    QList<QStringList> inputs;
    QPoint inputAt;
    std::deque<std::optional<QString>> typed;
    int modalDialogs = 0;
    std::function<void(QDialog*)> onDialog;
};

struct ConsoleFixture {
    explicit ConsoleFixture(bool portOpen = true)
        : clock(std::make_shared<FakeClock>()),
          link(
              [this, portOpen] {
                  auto p = std::make_unique<FakeSerialPort>(clock.get());
                  port = p.get();
                  if (portOpen) {
                      p->setDevice(QStringLiteral("/dev/ttyS0"));
                      QString e;
                      p->open(&e);
                  }
                  return p;
              },
              clock, RadioLink::Mode::Inline),
          form(std::make_unique<Form1>(link, store, windows, prompts))
    {
    }

    // What went on the wire since the last call, as "write ...", "sleep ...", "read ..." lines.
    QStringList takeEvents()
    {
        QStringList e = clock->events;
        clock->events.clear();
        return e;
    }
    QStringList takeWrites()
    {
        QStringList w = port->writtenHex();
        port->writes.clear();
        clock->events.clear();
        return w;
    }

    std::shared_ptr<FakeClock> clock;
    FakeSerialPort* port = nullptr;
    MemorySettingsStore store;
    FakeWindows windows;
    FakePrompts prompts;
    RadioLink link;
    std::unique_ptr<Form1> form;
};
