// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// A stand-in for the main window around the band scope: a radio link (inline on a fake port and
// fake clock, or threaded on any port), and everything the scope shows or asks as plain fields.

#include "BandScope.h"
#include "FakeClock.h"
#include "FakeSerialPort.h"
#include "MemorySettingsStore.h"
#include "RadioLink.h"
#include "ScopeHost.h"
#include "ScopeLists.h"
#include "SyntheticBand.h"

#include <QList>
#include <QPair>
#include <QPushButton>
#include <memory>

class FakeScopeHost : public ScopeHost {
public:
    // Inline link on a fake port that answers meter reads from the synthetic band.
    FakeScopeHost()
        : clock(std::make_shared<FakeClock>()),
          link_(std::make_unique<RadioLink>(
              [this] {
                  auto p = std::make_unique<FakeSerialPort>(clock.get());
                  port = p.get();
                  QString e;
                  p->open(&e);
                  p->responder = [this](const QByteArray& c) { return band.answer(c); };
                  return p;
              },
              clock, RadioLink::Mode::Inline))
    {
    }

    // Any link, e.g. threaded on the real adapter.
    explicit FakeScopeHost(std::unique_ptr<RadioLink> link) : link_(std::move(link)) {}

    RadioLink& link() override { return *link_; }
    bool portOpen() const override { return port ? port->isOpen() : link_->portOpen(); }
    void setPollEnabled(bool on) override
    {
        pollOn = on;
        pollChanges.append(on);
    }
    double vfoKHz(int receiver) const override { return receiver == 2 ? vfoB : vfoA; }
    void setFrequencyDisplay(int receiver, const QString& caption) override { displays.append({receiver, caption}); }
    void setMainSMeter(int percent) override { mainSMeter.append(percent); }
    bool dualShown() const override { return dual; }
    // The main window's key handler: the scope's own keys go back to the scope, others are noted.
    void pressKey(int index) override
    {
        if (index >= ScopeKey::First && index <= ScopeKey::Last) {
            if (scope)
                scope->keyClick(index);
            return;
        }
        pressedKeys.append(index);
    }
    SettingsStore& settings() override { return store; }
    QString askPlotFile(const QString& suggested) override
    {
        plotFileQuestions.append(suggested);
        return plotFileAnswer;
    }
    bool confirmPlotFiles(const QString& title, const QString& text) override
    {
        plotQuestions.append({title, text});
        return plotQuestionAnswer;
    }
    void showScopeError(const QString& title, const QString& text) override { errors.append({title, text}); }

    // Fake-port helpers.
    QStringList meterWrites() const
    {
        QStringList l;
        for (const QString& w : port->writtenHex())
            if (w.endsWith(QStringLiteral("F7")))
                l << w;
        return l;
    }

    std::shared_ptr<FakeClock> clock;
    FakeSerialPort* port = nullptr;
    SyntheticBand band;
    bool pollOn = true;
    QList<bool> pollChanges;
    QList<QPair<int, QString>> displays;
    QList<int> mainSMeter;
    bool dual = false;
    QList<int> pressedKeys;  // other than the scope's
    BandScope* scope = nullptr;
    double vfoA = 14250.0, vfoB = 7050.0;
    MemorySettingsStore store;
    QStringList plotFileQuestions;
    QString plotFileAnswer;                        // empty: the file dialog was cancelled
    QList<QPair<QString, QString>> plotQuestions;  // before files are replaced: title, text
    bool plotQuestionAnswer = true;                // Save (false: Cancel)
    QList<QPair<QString, QString>> errors;         // message boxes: title, text

private:
    std::unique_ptr<RadioLink> link_;
};
