// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The memory window: one channel of the radio shown in a row of labels, all 113 in a table; reading
// them from the radio, saving and loading them as a file, and writing a file back into the radio.
//
// Its opening steps run in the constructor (the window may be loaded without being shown, for the
// main window's "Open M-File"); its closing steps run when it is closed. Every exchange with the radio
// is a job on the radio link; the results come back to the window, which never waits.

#include "ChannelDecoder.h"
#include "MemoryJobs.h"

#include <QElapsedTimer>
#include <QMap>
#include <QPointer>
#include <QVector>
#include <QWidget>
#include <atomic>
#include <memory>
#include <optional>

class ConsoleHost;
class MemoryDialogs;
class MemoryGridModel;
class MemoryTableModel;
class MemoryEditor;
class MemoryCellDelegate;
class PressButton;
class QAction;
class QGroupBox;
class QLabel;
class QMenu;
class QMenuBar;
class QModelIndex;
class QProgressBar;
class QPushButton;
class QScrollBar;
class QTableView;
class QTimer;

namespace MemoryWindow {
inline const QString Caption = QStringLiteral("FT-1000 Memory");
constexpr int CollapsedTwips = 2670;
constexpr int ExpandedTwips = 6720;
inline const QString Section = QStringLiteral("Startup");
inline const QString TopKey = QStringLiteral("MemTop");
inline const QString LeftKey = QStringLiteral("MemLeft");
inline const QString PathKey = QStringLiteral("MemPath");
inline const QString FileFilter = QStringLiteral("All Files (*.*)|*.*|Yaesu Mem Files (*.ymp)|*.ymp");
inline const QString OpenTitle = QStringLiteral("Retrieve Memory Data from File");
inline const QString SaveTitle = QStringLiteral("Save Memory Data to File");
inline const QString DefaultSuffix = QStringLiteral("ymp");
inline const QString UploadTitle = QStringLiteral("Upload ?");
inline const QString UploadText = QStringLiteral("You are about to upload this list to the tranceiver memory... ");
inline const QString GridTip = QStringLiteral("Double Click on a channel to activate on the Radio");
inline const QString MaskCaption = QStringLiteral("Mask");
inline const QString UnmaskCaption = QStringLiteral("Un-Mask");
inline const QString ErrorTitle = QStringLiteral("Error");
inline const QString StopUploadText = QStringLiteral("Stop the upload? The radio's memory will be partly written.");
inline const QString UploadStoppedTitle = QStringLiteral("Upload stopped");
inline const QString SaveAndUpload = QStringLiteral("Save and upload");
inline const QString ExportCsvCaption = QStringLiteral("Export CSV...");
inline const QString ImportCsvCaption = QStringLiteral("Import CSV...");
inline const QString CsvFilter = QStringLiteral("CSV Files (*.csv)|*.csv|All Files (*.*)|*.*");
inline const QString CsvSuffix = QStringLiteral("csv");
inline const QString ExportCsvTitle = QStringLiteral("Export Memory List as CSV");
inline const QString ImportCsvTitle = QStringLiteral("Import Memory List from CSV");
inline const QString ExportCsvErrorTitle = QStringLiteral("Export CSV");
inline const QString ImportCsvErrorTitle = QStringLiteral("Import CSV");
inline const QString WriteChangedCaption = QStringLiteral("Write Changed");
inline const QString WriteChangedMenuCaption = QStringLiteral("&Write Changed to Radio...");
inline const QString RestoreBackupMenuCaption = QStringLiteral("&Restore Backup...");
inline const QString WriteChangedTitle = QStringLiteral("Write Changed ?");
inline const QString RestoreBackupTitle = QStringLiteral("Restore Backup");
inline const QString TitleChangedMark = QStringLiteral(" *");
}  // namespace MemoryWindow

// Main window indicators the memory window looks at.
namespace MainIndicator {
constexpr int Vfo = 8;
constexpr int Mem = 9;
constexpr int MemoryTune = 10;
}  // namespace MainIndicator

class Mem_Frm : public QWidget {
    Q_OBJECT
public:
    enum class Report { Quiet, Message };

    // dialogs: the operator's answers; the platform's message boxes and file dialog when null.
    explicit Mem_Frm(ConsoleHost& host, MemoryDialogs* dialogs = nullptr, QWidget* parent = nullptr);
    ~Mem_Frm() override;

    // 0: choose a file and load it; 1: choose a file and save to it. Cancel and failures end quietly.
    void Diag(int index);
    // From and to the current file. With Report::Message a failure is shown in a message box naming
    // the file; nothing in the table or on disk is lost by a failure.
    bool LoadMemFile(Report report = Report::Message);
    bool SaveMemFile(Report report = Report::Message);
    // The table as a CSV list, and a CSV list into the table as a file load would fill it. A failure
    // is shown in one message box naming the file (and, for a list, the line and the problem); the
    // table and the files are left as they were.
    bool ExportCsv(const QString& path);
    bool ImportCsv(const QString& path);
    // 0: the channel selected in HScroll1; 1: all channels into the table.
    void ReadMemory(int mode);
    void Bouton_Click(int index);
    void UploadMemory();
    // Asked before anything closes this window, or the program, while an upload or a write of the
    // changed channels runs: true when none runs or the operator chose to stop it (it stops after
    // the channel being written, and a message names what was written); false when it goes on.
    bool confirmStopUpload();
    void cancelUpload();
    // Asked before the program closes: the question above, then Save / Discard / Cancel when the table
    // has unsaved changes. True when the window may go.
    bool confirmClose();

    // Editing the table (the Edit menu's items): on the selected rows, the current one for a paste.
    MemoryEditor& editor() { return *editor_; }
    QList<int> selectedChannels() const;
    void editCopy();
    void editCut();
    void editPaste();
    void editClear();
    void editMoveUp();
    void editMoveDown();
    void editSortByFrequency();
    void editToggleMask();
    // The reason the last edit was refused, shown beside the table; empty after one is taken.
    QString editReason() const;

    // Writing the changed channels 1..108 of the table into the radio, a backup of them first.
    void WriteChangedClick();
    bool writingBack() const { return writing_; }
    void cancelWriteBack();
    // Loads a backup into the table as changes; a failure is shown in a message naming the file.
    bool RestoreBackup(const QString& path);
    QString backupFolder() const { return backupFolder_; }
    void setBackupFolder(const QString& folder) { backupFolder_ = folder; }
    QString lastBackup() const { return lastBackup_; }

    // Window state.
    int MemState = 0;      // 0 radio on a VFO, 1 on a memory channel, 2 follow mode
    int StartChannel = 0;  // the radio's channel when the window opened, counted from 1
    double ChannelFreq = 0;
    double ChannelClar = 0;
    int ChannelModeCode = 0;

    QString currentFile() const { return currentFile_; }
    void setCurrentFile(const QString& path) { currentFile_ = path; }
    int gridRow() const { return gridRow_; }
    bool expanded() const;
    bool uploading() const { return uploading_; }
    bool readingAll() const { return readingAll_; }
    MemoryTableModel& table();
    static QString defaultFile();

    // The controls, by their names.
    QScrollBar* HScroll1 = nullptr;
    QVector<QLabel*> Label1;  // 0 channel, 1 frequency, 2 mode, 3 clarifier, 4 antenna
    QVector<QLabel*> Label5;  // headings
    QGroupBox* Frame1 = nullptr;
    QTableView* MSFlexGrid1 = nullptr;
    QVector<QPushButton*> Bouton;
    QVector<PressButton*> Btn_Diag;
    QProgressBar* Progress = nullptr;
    QMenuBar* menuBar = nullptr;
    QMenu* mnu_bar = nullptr;
    QVector<QAction*> mnu_file;
    QVector<QAction*> mnu_csv;  // 0 "Export CSV...", 1 "Import CSV..."
    QMenu* mnu_edit = nullptr;
    // The Edit menu's items, by name: "Undo", "Redo", "Cut", "Copy", "Paste", "Clear", "Move Up",
    // "Move Down", "Sort by Frequency", "Mask".
    QAction* editAction(const QString& name) const;
    QAction* mnuWriteChanged = nullptr;
    QAction* mnuRestoreBackup = nullptr;
    QPushButton* WriteChanged = nullptr;
    QPushButton* CancelWrite = nullptr;
    QLabel* EditReason = nullptr;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildControls();
    void buildGrid();
    void buildEditing();
    void buildWriteBack();
    void updateEditState();  // title, marks, menu items after any change
    void showEditReason(const QString& reason);
    void cellEntered(int channel, int column, const QString& text);
    bool confirmUnsaved();   // Save / Discard / Cancel; true when the window may go
    bool mayReplaceTable();  // the same before a read-out, a load or an import replaces the table
    bool askSaveChanges(const QString& question);
    void restoreBackupClick();
    struct WriteRun;
    bool writeRunFinished() const;  // true when no write runs or the link has ended it
    void finishWriteBack(const std::shared_ptr<WriteRun>& run);
    void afterStop();
    void fitGridFont();
    void Form_Load();
    void finishLoad(std::optional<int> start);
    void HScroll1_Change(int value);
    void HScroll1_Scroll(int value);  // the thumb being dragged
    void MSFlexGrid1_DblClick(const QModelIndex& index);
    void Btn_Diag_MouseDown(int index, Qt::MouseButton button);
    void mnu_file_Click(int index);
    void mnu_csv_Click(int index);
    void showRecords(const QList<MemRecord>& records);

    void showOneChannel(const std::optional<QByteArray>& reply, int channel);
    void updateMaskKey();
    bool tableDiffersFromFile() const;
    void showAllChannels(const std::optional<QByteArray>& reply);
    void showDecode(const ChannelDecode& d);
    void colourLabels(quint32 bgr);
    void selectGridRow(int row);
    void setHeightTwips(int twips);
    void enableUpload();
    void enableSaveMenu();
    void setRadioKeysEnabled(bool on);
    void readoutTick();
    struct UploadRun;
    void finishUpload(const std::shared_ptr<UploadRun>& run);
    bool mayCloseNow();  // false: the window stays (for now) because of an upload
    QWidget* dialogParent();

    // Posts a job whose results come back to this window (dropped once it is gone).
    void send(std::function<void(CatPort&)> job);

    ConsoleHost& host_;
    std::unique_ptr<MemoryDialogs> ownDialogs_;
    MemoryDialogs* dialogs_;
    MemoryGridModel* model_ = nullptr;
    QString currentFile_;
    int gridRow_ = 0;
    ChannelMode mode_;
    bool uploading_ = false;
    int maskCaptionFor_ = 0;  // the channel whose read set the Mask key's caption; 0 none
    bool readingAll_ = false;
    bool mouseDriven_[2] = {false, false};
    // What a close asked for during an upload happens once the upload has stopped.
    enum class AfterUpload { Stay, PressClose, Close };
    std::shared_ptr<UploadRun> run_;
    bool stopConfirmed_ = false;
    AfterUpload afterUpload_ = AfterUpload::Stay;
    QTimer* readoutTimer_ = nullptr;
    QElapsedTimer readoutClock_;
    MemoryEditor* editor_ = nullptr;
    MemoryCellDelegate* delegate_ = nullptr;
    QMap<QString, QAction*> editActions_;
    bool writing_ = false;
    std::shared_ptr<WriteRun> writeRun_;
    QString backupFolder_;
    QString lastBackup_;
    bool closeConfirmed_ = false;  // the unsaved changes were saved or discarded for this close
};
