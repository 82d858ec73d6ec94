// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The EDSP settings dialog. Every choice goes to the radio at once, one job a click; nothing is
// applied on OK and nothing is stored. It keeps the main window's EDSP menu marks and the Notch and
// DSP-NB key colours in step, and pauses the status poll while the "AF Filters" tab is in front.
//
// Closing the dialog unloads it (it deletes itself); OK only hides it. Hold it in a QPointer and
// create it again when it is needed after a close: a new dialog starts from its load state.

#include "AudioFilterSliders.h"
#include "CwCentre.h"
#include "EdspPages.h"

#include <QDialog>

class ConsoleHost;
class QPushButton;

class frmOptions : public QDialog {
    Q_OBJECT
public:
    enum Tab { RxEdspTab = 1, TxEdspTab = 2, AfFiltersTab = 3, SpecialFiltersTab = 4 };
    static constexpr int TabCount = 4;

    explicit frmOptions(ConsoleHost& host, QWidget* parent = nullptr);

    // Selects tab 1..4 and runs the tab handler (also when that tab is already in front).
    void selectTab(int tab1Based);
    // Selects the tab (0: leaves it as it is), then shows the dialog modeless.
    void showOnTab(int tab1Based);
    // Option1(k) selected as by a click: its command goes out unless it was selected already.
    void selectOption(int k);
    bool isOptionSelected(int k) const;
    // Option1(6..13) unselected, nothing sent (the menu's "Tx EDSP Modulator Off").
    void clearTxOptions();

    const EdspControls& controls() const { return c_; }
    QPushButton* okButton() const { return cmdOK; }
    QPushButton* cancelButton() const { return cmdCancel; }
    int centreGuard() const { return cw_.guard(); }
    int cwFilterCode() const { return cw_.filterCode(); }

public slots:
    void reject() override;  // Escape: as Cancel

protected:
    void closeEvent(QCloseEvent* e) override;
    bool eventFilter(QObject* watched, QEvent* e) override;

private:
    void Option1_Click(int index);
    void Key_Click(int index);
    void HScroll1_Change(int index, int value);
    void HScroll2_Change(int value);
    void tbsOptions_Click();
    void cmdOK_Click();
    void cmdCancel_Click();
    void nextTab();

    void send(const QList<CatCommand>& commands);
    void showSliders();
    void setOptionUnselected(int k);
    void centreOnScreen();

    ConsoleHost& host_;
    EdspControls c_;
    QPushButton* cmdOK = nullptr;
    QPushButton* cmdCancel = nullptr;
    AudioFilterSliders sliders_;
    CwCentre cw_;
};
