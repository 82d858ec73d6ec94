#pragma once
// Stand-ins for the windows the main window opens, until the real ones are wired in: each opens an
// empty window with the real one's title, so the keys and menus can be tried.

#include "SecondaryWindows.h"

#include <QMap>
#include <QPointer>
#include <QSet>
#include <QString>
#include <QWidget>

class PlaceholderWindows final : public SecondaryWindows {
public:
    explicit PlaceholderWindows(QWidget* owner = nullptr) : owner_(owner) {}
    ~PlaceholderWindows() override;
    void setOwner(QWidget* owner) { owner_ = owner; }

    void showMemory() override { open(QStringLiteral("FT-1000 Memory")); }
    void openMemoryFile() override { open(QStringLiteral("FT-1000 Memory")); }
    void showNavigator() override { open(QStringLiteral("Frequency Navigator")); }
    void showFilters() override { open(QStringLiteral("Filter Selection")); }
    void showAbout() override;
    void showEdsp(int) override { open(QStringLiteral("EDSP Settings")); }
    void selectEdspOption(int index) override { selected_.insert(index); }
    bool edspOptionSelected(int index) override { return selected_.contains(index); }
    void clearTxEdspOptions() override {}
    void statusDecoded(const StatusView&) override {}
    int navigatorWidthTwips() override { return 3000; }
    void closeAll() override;

private:
    void open(const QString& title);
    QWidget* owner_;
    QMap<QString, QPointer<QWidget>> windows_;
    QSet<int> selected_;
};
