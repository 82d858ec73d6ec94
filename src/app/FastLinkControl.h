// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The fast link beside the main window: the Setup menu's "Fast Link" item and its stored choice, the
// run's own --fast-link, the "Follow Knob" item (only while the fast link is on), and the polls per
// second in the status bar, or the display's updates per second while the knob is followed.

#include "PollRate.h"

#include <QElapsedTimer>
#include <QObject>

class Form1;
class QAction;
class QLabel;
class QTimer;
class SettingsStore;

namespace FastLinkSetting {
inline const QString Section = QStringLiteral("Settings");
inline const QString Key = QStringLiteral("FastLink");
inline const QString FollowKey = QStringLiteral("FollowKnob");
}  // namespace FastLinkSetting

class FastLinkControl : public QObject {
    Q_OBJECT
public:
    // forRun: --fast-link, on for this run whatever is stored, and nothing stored by it.
    FastLinkControl(Form1& form, SettingsStore& settings, bool forRun, QObject* parent = nullptr);

    bool on() const;
    QAction* menuItem() const { return item_; }
    QAction* followItem() const { return follow_; }
    QString rateText() const;

private:
    void apply(bool on);
    void applyFollow(bool on);
    void showRate();

    Form1& form_;
    SettingsStore& settings_;
    QAction* item_ = nullptr;
    QAction* follow_ = nullptr;
    QLabel* status_ = nullptr;
    QTimer* refresh_ = nullptr;
    PollRate rate_;
    PollRate updates_;  // every display of the frequency while following: readings and polls
    QElapsedTimer since_;
};
