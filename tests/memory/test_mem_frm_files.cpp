// SPDX-License-Identifier: GPL-3.0-or-later
// The memory window's file keys, menu and dialog: loading and saving memory files.
#include "GoldenFile.h"
#include "MemFrmScene.h"
#include "PressButton.h"
#include "Twips.h"
#include "WindowPlacement.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

using namespace MemFrmTest;

class TestMemFrmFiles : public QObject {
    Q_OBJECT
private slots:
    // --- Files ---

    void loadFile_leftButton_loadsTheCurrentFileIntoTheTable()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("golden.ymp"));
        QVERIFY(writeFile(path, Golden::file()));
        Scene s;
        auto w = s.open();
        w->setCurrentFile(path);
        const QString label = w->Label1[1]->text();
        w->show();
        QTest::mousePress(w->Btn_Diag[0], Qt::LeftButton);
        QCoreApplication::processEvents();
        QTest::mouseRelease(w->Btn_Diag[0], Qt::LeftButton);
        QVERIFY(s.dialogs.requests.isEmpty());
        QVERIFY(w->expanded());
        QVERIFY(w->Bouton[5]->isEnabled());
        QVERIFY(w->Btn_Diag[1]->isEnabled());
        QVERIFY(w->mnu_file[2]->isEnabled());
        QVERIFY(w->mnu_file[3]->isEnabled());
        for (int n = 1; n <= 113; ++n) {
            const Golden::Row e = Golden::expected(n);
            for (int c = 0; c < 6; ++c)
                QCOMPARE(cellText(*w, n, c), e.cells[c]);
            for (int c = 1; c <= 4; ++c)
                QCOMPARE(cellColour(*w, n, c), e.masked ? masked : unmasked);
        }
        QCOMPARE(w->Label1[1]->text(), label);  // loading leaves the labels alone
    }

    void loadFile_otherButton_opensTheDialog()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("chosen.ymp"));
        QVERIFY(writeFile(path, Golden::file()));
        Scene s;
        auto w = s.open();
        s.dialogs.fileAnswer = path;
        w->show();
        QTest::mousePress(w->Btn_Diag[0], Qt::RightButton);
        QCoreApplication::processEvents();
        QCOMPARE(s.dialogs.requests.size(), 1);
        const FileDialogRequest r = s.dialogs.requests[0];
        QCOMPARE(r.kind, FileDialogRequest::Kind::Open);
        QCOMPARE(r.title, QStringLiteral("Retrieve Memory Data from File"));
        QCOMPARE(r.filters, (QStringList{"All Files (*.*)", "Yaesu Mem Files (*.ymp)"}));
        QCOMPARE(r.selectedFilter, QStringLiteral("Yaesu Mem Files (*.ymp)"));
        QCOMPARE(r.defaultSuffix, QStringLiteral("ymp"));
        QCOMPARE(w->currentFile(), path);
        QCOMPARE(cellText(*w, 2, 1), QStringLiteral("7,025.00 "));
        QVERIFY(w->expanded());
    }

    void loadFile_dialogCancelled_stillExpandsButChangesNoFile()
    {
        Scene s;
        auto w = s.open();
        const QString file = w->currentFile();
        w->show();
        QTest::mousePress(w->Btn_Diag[0], Qt::MiddleButton);
        QCoreApplication::processEvents();
        QCOMPARE(s.dialogs.requests.size(), 1);
        QCOMPARE(w->currentFile(), file);
        QVERIFY(s.dialogs.errors.isEmpty());
        QVERIFY(w->expanded());
        QVERIFY(w->Bouton[5]->isEnabled());
        QCOMPARE(cellText(*w, 1, 0), QString());
    }

    void loadFile_spaceBarActsAsTheLeftButton()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("golden.ymp"));
        QVERIFY(writeFile(path, Golden::file()));
        Scene s;
        auto w = s.open();
        w->setCurrentFile(path);
        w->show();
        w->Btn_Diag[0]->setFocus();
        QTest::keyClick(w->Btn_Diag[0], Qt::Key_Space);
        QCOMPARE(cellText(*w, 1, 1), QStringLiteral("14,157.70 "));
        QVERIFY(s.dialogs.requests.isEmpty());
    }

    void loadFile_missingFileLoadsBlankRows()
    {
        QTemporaryDir dir;
        Scene s;
        auto w = s.open();
        w->setCurrentFile(dir.filePath(QStringLiteral("none.ymp")));
        QVERIFY(w->LoadMemFile());
        QCOMPARE(cellText(*w, 1, 1), QStringLiteral("0.00 "));
        QCOMPARE(cellText(*w, 1, 0), QStringLiteral(" "));
        QVERIFY(s.dialogs.errors.isEmpty());
    }

    void loadFile_failureNotFromTheDialog_namesTheFileAndKeepsTheTable()
    {
        QTemporaryDir dir;
        QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("folder.ymp")));
        Scene s;
        auto w = s.open();
        w->Bouton[4]->click();
        const QList<MemoryRow> before = w->table().rows();
        const QString path = dir.filePath(QStringLiteral("folder.ymp"));
        w->setCurrentFile(path);
        w->show();
        QTest::mousePress(w->Btn_Diag[0], Qt::LeftButton);
        QCoreApplication::processEvents();
        QCOMPARE(s.dialogs.errors.size(), 1);
        QVERIFY(s.dialogs.errors[0].text.contains(path));
        QCOMPARE(w->table().rows(), before);
    }

    void diag0_failureEndsQuietly()
    {
        QTemporaryDir dir;
        QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("folder.ymp")));
        Scene s;
        auto w = s.open();
        s.dialogs.fileAnswer = dir.filePath(QStringLiteral("folder.ymp"));
        w->Diag(0);
        QVERIFY(s.dialogs.errors.isEmpty());
        QCOMPARE(w->currentFile(), *s.dialogs.fileAnswer);
    }

    void diag0_onAWindowLoadedButNotShown_loadsAndStaysHidden()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("golden.ymp"));
        QVERIFY(writeFile(path, Golden::file()));
        Scene s;
        auto w = s.open();
        s.dialogs.fileAnswer = path;
        w->Diag(0);
        QVERIFY(!w->isVisible());
        QCOMPARE(cellText(*w, 100, 2), QStringLiteral("DataUSR"));
        QVERIFY(w->Bouton[5]->isEnabled());
    }

    void menuOpen_isDiag0_andSaveAs_isDiag1()
    {
        Scene s;
        auto w = s.open();
        w->mnu_file[0]->trigger();
        QCOMPARE(s.dialogs.requests.size(), 1);
        QCOMPARE(s.dialogs.requests[0].title, QStringLiteral("Retrieve Memory Data from File"));
        w->Bouton[4]->click();
        w->mnu_file[3]->trigger();
        QCOMPARE(s.dialogs.requests.size(), 2);
        const FileDialogRequest r = s.dialogs.requests[1];
        QCOMPARE(r.kind, FileDialogRequest::Kind::Save);
        QCOMPARE(r.title, QStringLiteral("Save Memory Data to File"));
        QCOMPARE(r.selectedFilter, QStringLiteral("Yaesu Mem Files (*.ymp)"));
        QCOMPARE(r.defaultSuffix, QStringLiteral("ymp"));
    }

    void saveFile_leftButtonAndMenuSave_writeTheCurrentFile()
    {
        QTemporaryDir dir;
        Scene s;
        auto w = s.open();
        w->Bouton[4]->click();
        w->setCurrentFile(dir.filePath(QStringLiteral("a.ymp")));
        w->show();
        QTest::mousePress(w->Btn_Diag[1], Qt::LeftButton);
        QCoreApplication::processEvents();
        QCOMPARE(readFile(dir.filePath(QStringLiteral("a.ymp"))).size(), 3277);
        w->setCurrentFile(dir.filePath(QStringLiteral("b.ymp")));
        w->mnu_file[2]->trigger();
        QCOMPARE(readFile(dir.filePath(QStringLiteral("b.ymp"))), readFile(dir.filePath(QStringLiteral("a.ymp"))));
        QVERIFY(s.dialogs.requests.isEmpty());
    }

    void saveFile_otherButton_savesToTheChosenFile()
    {
        QTemporaryDir dir;
        Scene s;
        auto w = s.open();
        w->Bouton[4]->click();
        s.dialogs.fileAnswer = dir.filePath(QStringLiteral("chosen.ymp"));
        w->show();
        QTest::mousePress(w->Btn_Diag[1], Qt::RightButton);
        QCoreApplication::processEvents();
        QCOMPARE(s.dialogs.requests.size(), 1);
        QCOMPARE(s.dialogs.requests[0].title, QStringLiteral("Save Memory Data to File"));
        QCOMPARE(readFile(*s.dialogs.fileAnswer).size(), 3277);
        QCOMPARE(w->currentFile(), *s.dialogs.fileAnswer);
    }

    void saveFile_failureNotFromTheDialog_namesTheFileAndKeepsTheOldFile()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("old.ymp"));
        QVERIFY(writeFile(path, Golden::file()));
        Scene s;
        s.fullReply = ChannelBytes::fullReadout().left(55 + 16 * 50);  // rows 51.. stay empty: not numbers
        auto w = s.open();
        w->Bouton[4]->click();
        w->setCurrentFile(path);
        w->SaveMemFile();
        QCOMPARE(s.dialogs.errors.size(), 1);
        QVERIFY(s.dialogs.errors[0].text.contains(path));
        QVERIFY(s.dialogs.errors[0].text.contains(QStringLiteral("Row 51")));
        QCOMPARE(readFile(path), Golden::file());
        QCOMPARE(cellText(*w, 50, 0), QStringLiteral(" Chan 50"));
    }

    void diag1_failureEndsQuietly()
    {
        QTemporaryDir dir;
        Scene s;
        auto w = s.open();  // an empty table cannot be saved
        s.dialogs.fileAnswer = dir.filePath(QStringLiteral("x.ymp"));
        w->Diag(1);
        QVERIFY(s.dialogs.errors.isEmpty());
        QVERIFY(!QFile::exists(*s.dialogs.fileAnswer));
    }

    void diag_cancelEndsQuietly()
    {
        Scene s;
        auto w = s.open();
        const QString file = w->currentFile();
        w->Diag(0);
        w->Diag(1);
        QCOMPARE(s.dialogs.requests.size(), 2);
        QVERIFY(s.dialogs.errors.isEmpty());
        QCOMPARE(w->currentFile(), file);
    }

    void getMem_save_load_reproducesEveryCellAndColour()
    {
        QTemporaryDir dir;
        Scene s;
        auto w = s.open();
        w->Bouton[4]->click();
        const QList<MemoryRow> fromRadio = w->table().rows();
        w->setCurrentFile(dir.filePath(QStringLiteral("round.ymp")));
        QVERIFY(w->SaveMemFile());
        w->table().setRows(QList<MemoryRow>(113));
        QVERIFY(w->LoadMemFile());
        for (int n = 1; n <= 113; ++n) {
            for (int c = 0; c < 6; ++c)
                QCOMPARE(cellText(*w, n, c), fromRadio[n - 1].cells[c]);
            for (int c = 1; c <= 4; ++c)
                QCOMPARE(cellColour(*w, n, c), fromBgr(fromRadio[n - 1].colour));
        }
    }
};

QTEST_MAIN(TestMemFrmFiles)
#include "test_mem_frm_files.moc"
