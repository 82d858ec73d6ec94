#pragma once
// The band scope frame of the main window (Frame(1)): span and resolution lists, scan modes, the
// receiver choice, the centre frequency, the plot keys and the plot itself.

#include <QWidget>

class QPushButton;
class ScopeHost;

class BandScope : public QWidget {
    Q_OBJECT
public:
    explicit BandScope(ScopeHost& host, QWidget* parent = nullptr);
    ~BandScope() override;

    // Key(48) "Get Center" .. Key(53) "Cancel": the main window's key handler hands these indices on.
    void keyClick(int index);
    QPushButton* key(int index) const;  // the buttons of indices 48..53, created by the scope

    void startRedraw();   // the scope has just been shown: redraw the graticule
    void presetLists();   // start-up: preselect the span lists
    int selectedReceiver() const;  // 1 Main, 2 Sub

private:
    ScopeHost& host_;
};
