// SPDX-License-Identifier: GPL-3.0-or-later
// The memory window: its controls, opening and closing.
#include "Mem_Frm.h"

#include "ChannelNames.h"
#include "ConsoleHost.h"
#include "MemFile.h"
#include "MemoryBackups.h"
#include "MemoryDialogs.h"
#include "MemoryGridModel.h"
#include "MemoryPanel.h"
#include "PressButton.h"
#include "RadioLink.h"
#include "SettingsStore.h"
#include "Twips.h"
#include "WindowPlacement.h"

#include <QAction>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>
#include <QStandardPaths>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

namespace {
using namespace MemoryWindow;

const QStringList boutonCaptions{QStringLiteral("&Close"),  QStringLiteral("M > A"),   QStringLiteral("Mask"),
                                 QStringLiteral("VFO/MEM"), QStringLiteral("Get Mem"), QStringLiteral("Upld Mem")};
const QStringList label1Captions{QStringLiteral("Ch"), QStringLiteral("Frq"), QStringLiteral("Mode"),
                                 QStringLiteral("RIT"), QStringLiteral("ant")};
const QStringList label5Captions{QStringLiteral("Frequency"), QStringLiteral("Mode"), QStringLiteral("Clar"),
                                 QStringLiteral("Ant")};
const QStringList btnDiagCaptions{QStringLiteral("Load File"), QStringLiteral("Save File")};
const QStringList mnuFileCaptions{QStringLiteral("&Open Mem File"), QStringLiteral("-"), QStringLiteral("&Save"),
                                  QStringLiteral("Save &As ..."),   QStringLiteral("-"), QStringLiteral("Close")};

constexpr int ReadoutTickMs = 100;
}  // namespace

Mem_Frm::Mem_Frm(ConsoleHost& host, MemoryDialogs* dialogs, QWidget* parent)
    : QWidget(parent, Qt::Window), host_(host), dialogs_(dialogs)
{
    if (!dialogs_) {
        ownDialogs_ = std::make_unique<QtMemoryDialogs>();
        dialogs_ = ownDialogs_.get();
    }
    setObjectName(QStringLiteral("Mem_Frm"));
    backupFolder_ = MemoryBackups::folderIn(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    buildControls();
    buildGrid();
    buildEditing();
    buildWriteBack();
    Form_Load();
}

Mem_Frm::~Mem_Frm()
{
    cancelUpload();
}

QString Mem_Frm::defaultFile()
{
    const QString path = MemFile::defaultPath(QCoreApplication::applicationDirPath(),
                                              QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    // The data folder may not exist yet; a save needs it.
    QDir().mkpath(QFileInfo(path).absolutePath());
    return path;
}

MemoryTableModel& Mem_Frm::table()
{
    return *model_;
}

bool Mem_Frm::expanded() const
{
    return MSFlexGrid1->isVisibleTo(this);
}

void Mem_Frm::buildControls()
{
    setWindowTitle(Caption);

    // Menu "&File".
    menuBar = new QMenuBar(this);
    mnu_bar = menuBar->addMenu(QStringLiteral("&File"));
    mnu_bar->setObjectName(QStringLiteral("mnu_bar"));
    for (int i = 0; i < mnuFileCaptions.size(); ++i) {
        // A "-" caption is a separator line; given as its text, some styles would draw the dash too.
        QAction* a = mnuFileCaptions[i] == u'-' ? mnu_bar->addSeparator() : mnu_bar->addAction(mnuFileCaptions[i]);
        a->setObjectName(QStringLiteral("mnu_file(%1)").arg(i));
        connect(a, &QAction::triggered, this, [this, i] { mnu_file_Click(i); });
        mnu_file.append(a);
    }
    mnu_file[2]->setEnabled(false);
    mnu_file[3]->setEnabled(false);
    // The CSV list of the table, for spreadsheets and other tools, above "Close".
    const QStringList csvCaptions{ExportCsvCaption, ImportCsvCaption};
    for (int i = 0; i < csvCaptions.size(); ++i) {
        auto* a = new QAction(csvCaptions[i], mnu_bar);
        a->setObjectName(QStringLiteral("mnu_csv(%1)").arg(i));
        connect(a, &QAction::triggered, this, [this, i] { mnu_csv_Click(i); });
        mnu_bar->insertAction(mnu_file[5], a);
        mnu_csv.append(a);
    }
    mnu_bar->insertSeparator(mnu_file[5]);
    mnu_csv[0]->setEnabled(false);

    // The single-channel display: the channel's name, then headings over its fields.
    Frame1 = new QGroupBox(QStringLiteral(" Memory "), this);
    Frame1->setObjectName(QStringLiteral("Frame1"));
    auto* display = new QWidget(Frame1);
    MemoryPanel::darken(display);
    auto* grid = new QGridLayout(display);
    grid->setContentsMargins(8, 3, 8, 4);
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(1);
    for (int i = 0; i < label1Captions.size(); ++i) {
        auto* l = new QLabel(label1Captions[i], display);
        l->setObjectName(QStringLiteral("Label1(%1)").arg(i));
        QFont f = l->font();
        f.setBold(true);
        l->setFont(f);
        MemoryPanel::setTextColour(l, MemoryPanel::Text);
        if (i == 0)
            grid->addWidget(l, 0, 0, 1, 4);
        else
            grid->addWidget(l, 2, i - 1);
        Label1.append(l);
    }
    Label1[1]->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    Label1[2]->setAlignment(Qt::AlignCenter);
    Label1[3]->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    Label1[4]->setAlignment(Qt::AlignCenter);
    Label1[1]->setMinimumWidth(Label1[1]->fontMetrics().horizontalAdvance(QStringLiteral("88,888.88 ")));
    Label1[2]->setMinimumWidth(Label1[2]->fontMetrics().horizontalAdvance(QStringLiteral("PKT LSB")));
    Label1[3]->setMinimumWidth(Label1[3]->fontMetrics().horizontalAdvance(QStringLiteral("-20.48 ")));
    for (int i = 0; i < label5Captions.size(); ++i) {
        auto* l = new QLabel(label5Captions[i], display);
        l->setObjectName(QStringLiteral("Label5(%1)").arg(i));
        l->setAlignment(Label1[i + 1]->alignment());
        MemoryPanel::setTextColour(l, MemoryPanel::HeadingText);
        grid->addWidget(l, 1, i);
        Label5.append(l);
    }
    HScroll1 = new QScrollBar(Qt::Horizontal, Frame1);
    HScroll1->setObjectName(QStringLiteral("HScroll1"));
    HScroll1->setRange(Channels::First, Channels::Count);
    HScroll1->setPageStep(10);
    HScroll1->setAccessibleName(QStringLiteral("Channel"));
    // The change comes once a drag ends, where it ends, as with an arrow or a click on the track: each
    // change reads a channel (250 ms on the wire) and may recall it, so the values a drag passes
    // through must not each send. While the thumb moves only the channel's name follows it.
    HScroll1->setTracking(false);
    connect(HScroll1, &QScrollBar::valueChanged, this, &Mem_Frm::HScroll1_Change);
    connect(HScroll1, &QScrollBar::sliderMoved, this, &Mem_Frm::HScroll1_Scroll);
    Frame1->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    auto* frameLayout = new QVBoxLayout(Frame1);
    frameLayout->setContentsMargins(6, 2, 6, 6);
    frameLayout->setSpacing(4);
    frameLayout->addWidget(display);
    frameLayout->addWidget(HScroll1);

    Progress = new QProgressBar(this);
    Progress->setObjectName(QStringLiteral("Progress"));
    Progress->setRange(0, 100);
    Progress->setMaximumHeight(14);
    Progress->setTextVisible(true);
    Progress->setVisible(false);
    readoutTimer_ = new QTimer(this);
    readoutTimer_->setInterval(ReadoutTickMs);
    connect(readoutTimer_, &QTimer::timeout, this, &Mem_Frm::readoutTick);

    MSFlexGrid1 = new QTableView(this);
    MSFlexGrid1->setObjectName(QStringLiteral("MSFlexGrid1"));
    MSFlexGrid1->setVisible(false);
    MSFlexGrid1->setMinimumHeight(60);

    // Stops a write of the changed channels between two channels.
    CancelWrite = new QPushButton(QStringLiteral("Cancel"), this);
    CancelWrite->setObjectName(QStringLiteral("CancelWrite"));
    CancelWrite->setAccessibleName(QStringLiteral("Cancel"));
    CancelWrite->setAutoDefault(false);
    CancelWrite->setVisible(false);
    auto* progressRow = new QHBoxLayout;
    progressRow->setSpacing(4);
    progressRow->addWidget(Progress, 1);
    progressRow->addWidget(CancelWrite);

    // Under the table, why an edit was refused; the key that writes the changed rows goes with the keys.
    EditReason = new QLabel(this);
    EditReason->setObjectName(QStringLiteral("EditReason"));
    EditReason->setWordWrap(true);
    EditReason->setAccessibleName(QStringLiteral("Edit refused"));
    EditReason->setVisible(false);
    WriteChanged = new QPushButton(WriteChangedCaption, this);
    WriteChanged->setObjectName(QStringLiteral("WriteChanged"));
    WriteChanged->setAccessibleName(WriteChangedCaption);
    WriteChanged->setAutoDefault(false);
    WriteChanged->setEnabled(false);
    WriteChanged->setVisible(false);

    auto* left = new QVBoxLayout;
    left->setSpacing(4);
    left->addWidget(Frame1);
    left->addLayout(progressRow);
    left->addWidget(MSFlexGrid1, 1);
    left->addWidget(EditReason);

    // The keys, in two columns beside the display.
    auto* keys = new QGridLayout;
    keys->setSpacing(4);
    for (int i = 0; i < boutonCaptions.size(); ++i) {
        auto* b = new QPushButton(boutonCaptions[i], this);
        b->setObjectName(QStringLiteral("Bouton(%1)").arg(i));
        b->setAutoDefault(false);
        connect(b, &QPushButton::clicked, this, [this, i] { Bouton_Click(i); });
        keys->addWidget(b, i / 2, i % 2);
        Bouton.append(b);
    }
    for (int i = 0; i < btnDiagCaptions.size(); ++i) {
        auto* b = new PressButton(btnDiagCaptions[i], this);
        b->setObjectName(QStringLiteral("Btn_Diag(%1)").arg(i));
        b->setAutoDefault(false);
        b->setToolTip(i == 0 ? QStringLiteral("Left button: load the current file; right button: choose a file")
                             : QStringLiteral("Left button: save to the current file; right button: choose a file"));
        // They act when a mouse button goes down; the keyboard's press counts as the left button.
        connect(b, &PressButton::mouseDown, this, [this, i](Qt::MouseButton button) {
            mouseDriven_[i] = true;
            QMetaObject::invokeMethod(
                this, [this, i, button] { Btn_Diag_MouseDown(i, button); }, Qt::QueuedConnection);
        });
        connect(b, &PressButton::mouseUp, this, [this, i](Qt::MouseButton) { mouseDriven_[i] = false; });
        connect(b, &QPushButton::pressed, this, [this, i] {
            if (!mouseDriven_[i])
                Btn_Diag_MouseDown(i, Qt::LeftButton);
        });
        keys->addWidget(b, 4, i);
        Btn_Diag.append(b);
    }
    keys->setRowMinimumHeight(3, 6);  // the file keys stand apart from the radio keys
    // Writing the edited rows back, across both columns under the file keys.
    keys->setRowMinimumHeight(5, 6);
    keys->addWidget(WriteChanged, 6, 0, 1, 2);
    keys->setRowStretch(7, 1);
    Bouton[MemoryKey::Upload]->setEnabled(false);
    Btn_Diag[1]->setEnabled(false);

    auto* main = new QHBoxLayout(this);
    main->setMenuBar(menuBar);
    main->setContentsMargins(6, 4, 6, 6);
    main->setSpacing(8);
    main->addLayout(left, 1);
    main->addLayout(keys);
}

void Mem_Frm::setHeightTwips(int twips)
{
    const bool expand = twips >= ExpandedTwips;
    MSFlexGrid1->setVisible(expand);
    WriteChanged->setVisible(expand);
    EditReason->setVisible(expand && !EditReason->text().isEmpty());
    updateEditState();
    resize(sizeHint().width(), Twips::toPixels(twips));
}

void Mem_Frm::Form_Load()
{
    const QRect main = host_.geometryTwips();
    WindowPlacement::restore(this, host_.settings(), Section, TopKey, LeftKey, main.y() + main.height(), main.x());
    setHeightTwips(CollapsedTwips);
    currentFile_ = host_.settings().value(Section, PathKey, defaultFile());

    QPointer<Mem_Frm> self(this);
    RadioLink* link = &host_.link();
    link->post([link, self](CatPort& port) {
        const std::optional<int> start = queryStartChannel(port);
        link->deliver(self.data(), [self, start] {
            if (self)
                self->finishLoad(start);
        });
    });
}

void Mem_Frm::finishLoad(std::optional<int> start)
{
    if (start) {
        StartChannel = *start;
        HScroll1->setValue(StartChannel);
    }
    MemState = host_.indicatorVisible(MainIndicator::Vfo) || host_.indicatorVisible(MainIndicator::MemoryTune) ? 0 : 1;
    ReadMemory(0);
}

void Mem_Frm::send(std::function<void(CatPort&)> job)
{
    host_.link().post(std::move(job));
}

QWidget* Mem_Frm::dialogParent()
{
    return isVisible() ? this : host_.window();
}

void Mem_Frm::closeEvent(QCloseEvent* event)
{
    if (!mayCloseNow()) {
        event->ignore();
        return;
    }
    if (!closeConfirmed_ && !confirmUnsaved()) {
        event->ignore();
        return;
    }
    closeConfirmed_ = false;
    readoutTimer_->stop();
    WindowPlacement::save(this, host_.settings(), Section, TopKey, LeftKey);
    host_.settings().setValue(Section, PathKey, currentFile_);
    event->accept();
}
