#include "Mem_Frm.h"

#include "CatPort.h"
#include "ChannelNames.h"
#include "ConsoleHost.h"
#include "MemFile.h"
#include "MemoryDialogs.h"
#include "MemoryGridModel.h"
#include "MemoryLog.h"
#include "MemoryReadout.h"
#include "PressButton.h"
#include "RadioLink.h"
#include "SettingsStore.h"
#include "Twips.h"
#include "WindowPlacement.h"

#include <QAction>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>
#include <QStyle>
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

// Column widths of the table in twips; the mode code column is hidden.
constexpr int columnTwips[MemoryColumn::Count] = {820, 850, 850, 580, 480, 0};
constexpr int rowTwips = 240;

namespace Key {
constexpr int Close = 0;
constexpr int MemoryToA = 1;
constexpr int Mask = 2;
constexpr int VfoMem = 3;
constexpr int GetMem = 4;
constexpr int Upload = 5;
}  // namespace Key

constexpr int ReadoutTickMs = 100;
constexpr double MinGridPoints = 6.5;

// The display panel: dark, like the radio's own, so both channel colours read well.
const QColor panelColour(0x14, 0x16, 0x1a);
const QColor panelText(0xd8, 0xd8, 0xd8);
const QColor headingText(0x90, 0x98, 0xa0);

void darken(QWidget* w)
{
    QPalette p = w->palette();
    p.setColor(QPalette::Window, panelColour);
    p.setColor(QPalette::Base, panelColour);
    p.setColor(QPalette::WindowText, panelText);
    p.setColor(QPalette::Text, panelText);
    w->setPalette(p);
    w->setAutoFillBackground(true);
}

void setTextColour(QLabel* label, const QColor& c)
{
    QPalette p = label->palette();
    p.setColor(QPalette::WindowText, c);
    label->setPalette(p);
}
}  // namespace

Mem_Frm::Mem_Frm(ConsoleHost& host, MemoryDialogs* dialogs, QWidget* parent)
    : QWidget(parent, Qt::Window), host_(host), dialogs_(dialogs)
{
    if (!dialogs_) {
        ownDialogs_ = std::make_unique<QtMemoryDialogs>();
        dialogs_ = ownDialogs_.get();
    }
    setObjectName(QStringLiteral("Mem_Frm"));
    buildControls();
    buildGrid();
    Form_Load();
}

Mem_Frm::~Mem_Frm()
{
    cancelUpload();
}

QString Mem_Frm::defaultFile()
{
    return QCoreApplication::applicationDirPath() + u'/' + MemFile::DefaultName;
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
        QAction* a = mnuFileCaptions[i] == u'-' ? mnu_bar->addSeparator() : mnu_bar->addAction(mnuFileCaptions[i]);
        a->setText(mnuFileCaptions[i]);
        a->setObjectName(QStringLiteral("mnu_file(%1)").arg(i));
        connect(a, &QAction::triggered, this, [this, i] { mnu_file_Click(i); });
        mnu_file.append(a);
    }
    mnu_file[2]->setEnabled(false);
    mnu_file[3]->setEnabled(false);

    // The single-channel display: the channel's name, then headings over its fields.
    Frame1 = new QGroupBox(QStringLiteral(" Memory "), this);
    Frame1->setObjectName(QStringLiteral("Frame1"));
    auto* display = new QWidget(Frame1);
    darken(display);
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
        setTextColour(l, panelText);
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
        setTextColour(l, headingText);
        grid->addWidget(l, 1, i);
        Label5.append(l);
    }
    HScroll1 = new QScrollBar(Qt::Horizontal, Frame1);
    HScroll1->setObjectName(QStringLiteral("HScroll1"));
    HScroll1->setRange(Channels::First, Channels::Count);
    HScroll1->setPageStep(10);
    HScroll1->setAccessibleName(QStringLiteral("Channel"));
    connect(HScroll1, &QScrollBar::valueChanged, this, &Mem_Frm::HScroll1_Change);
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

    auto* left = new QVBoxLayout;
    left->setSpacing(4);
    left->addWidget(Frame1);
    left->addWidget(Progress);
    left->addWidget(MSFlexGrid1, 1);
    left->addStretch(0);

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
    keys->setRowStretch(5, 1);
    Bouton[Key::Upload]->setEnabled(false);
    Btn_Diag[1]->setEnabled(false);

    auto* main = new QHBoxLayout(this);
    main->setMenuBar(menuBar);
    main->setContentsMargins(6, 4, 6, 6);
    main->setSpacing(8);
    main->addLayout(left, 1);
    main->addLayout(keys);
}

void Mem_Frm::buildGrid()
{
    model_ = new MemoryGridModel(this);
    MSFlexGrid1->setModel(model_);
    MSFlexGrid1->setToolTip(GridTip);
    darken(MSFlexGrid1);
    MSFlexGrid1->verticalHeader()->setVisible(false);
    MSFlexGrid1->verticalHeader()->setMinimumSectionSize(1);
    MSFlexGrid1->verticalHeader()->setDefaultSectionSize(Twips::toPixels(rowTwips));
    MSFlexGrid1->horizontalHeader()->setDefaultAlignment(Qt::AlignCenter);
    MSFlexGrid1->horizontalHeader()->setHighlightSections(false);
    MSFlexGrid1->horizontalHeader()->setMinimumSectionSize(1);
    MSFlexGrid1->horizontalHeader()->setStretchLastSection(false);
    for (int c = 0; c < MemoryColumn::Count; ++c)
        MSFlexGrid1->setColumnWidth(c, Twips::toPixels(columnTwips[c]));
    fitGridFont();
    MSFlexGrid1->setColumnHidden(MemoryColumn::Mde, true);
    MSFlexGrid1->setTextElideMode(Qt::ElideNone);
    MSFlexGrid1->setWordWrap(false);
    MSFlexGrid1->setShowGrid(true);
    MSFlexGrid1->setSelectionBehavior(QAbstractItemView::SelectRows);
    MSFlexGrid1->setSelectionMode(QAbstractItemView::SingleSelection);
    MSFlexGrid1->setEditTriggers(QAbstractItemView::NoEditTriggers);
    QPalette p = MSFlexGrid1->palette();
    p.setColor(QPalette::Highlight, QColor(0x2c, 0x40, 0x5c));
    p.setColor(QPalette::HighlightedText, Qt::white);
    MSFlexGrid1->setPalette(p);
    // The table keeps the width of its columns.
    int width = 2 * MSFlexGrid1->frameWidth() + MSFlexGrid1->verticalScrollBar()->sizeHint().width();
    for (int c = 0; c < MemoryColumn::Mde; ++c)
        width += MSFlexGrid1->columnWidth(c);
    MSFlexGrid1->setFixedWidth(width);
    connect(MSFlexGrid1, &QTableView::doubleClicked, this, &Mem_Frm::MSFlexGrid1_DblClick);
}

// The columns keep their widths in twips; the font is the one that fits the widest texts in them.
void Mem_Frm::fitGridFont()
{
    static const QStringList widest[MemoryColumn::Mde] = {
        {QStringLiteral(" Chan 99"), QStringLiteral(" QMB 5")},
        {QStringLiteral("28,888.88")},
        {QStringLiteral("AM Sync"), QStringLiteral("PKT LSB"), QStringLiteral("DataUSR"), QStringLiteral("RTTY N")},
        {QStringLiteral("-20.48")},
        {QStringLiteral("Rx")}};
    const int padding = 2 * (MSFlexGrid1->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, MSFlexGrid1) + 1);
    // A narrow face where the system has one keeps the texts larger.
    QFont font = MSFlexGrid1->font();
    font.setFamilies({QStringLiteral("DejaVu Sans Condensed"), QStringLiteral("Arial Narrow"),
                      QStringLiteral("Liberation Sans Narrow"), font.family()});
    const auto fits = [&](const QFont& f) {
        QFont bold = f;
        bold.setBold(true);
        const QFontMetrics cell(f);
        const QFontMetrics heading(bold);
        for (int c = 0; c < MemoryColumn::Mde; ++c) {
            const int room = MSFlexGrid1->columnWidth(c) - padding;
            if (heading.horizontalAdvance(MemoryTableModel::headers()[c]) > room)
                return false;
            for (const QString& t : widest[c])
                if (cell.horizontalAdvance(t) > room)
                    return false;
        }
        return true;
    };
    while (!fits(font) && font.pointSizeF() > MinGridPoints)
        font.setPointSizeF(font.pointSizeF() - 0.5);
    MSFlexGrid1->setFont(font);
    QFont bold = font;
    bold.setBold(true);
    model_->setHeaderFont(bold);
    MSFlexGrid1->horizontalHeader()->setFont(bold);
}

void Mem_Frm::setHeightTwips(int twips)
{
    const bool expand = twips >= ExpandedTwips;
    MSFlexGrid1->setVisible(expand);
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

void Mem_Frm::ReadMemory(int mode)
{
    QPointer<Mem_Frm> self(this);
    RadioLink* link = &host_.link();
    if (mode == 0) {
        const int channel = HScroll1->value();
        link->post([link, self, channel](CatPort& port) {
            const std::optional<QByteArray> reply = readOneChannel(port, channel);
            link->deliver(self.data(), [self, reply] {
                if (self)
                    self->showOneChannel(reply);
            });
        });
        return;
    }
    // The radio takes five seconds to send all channels: the bar shows the wait.
    readingAll_ = true;
    Bouton[Key::GetMem]->setEnabled(false);
    if (!uploading_) {
        Progress->setValue(0);
        Progress->setVisible(true);
    }
    readoutClock_.start();
    readoutTimer_->start();
    link->post([link, self](CatPort& port) {
        const std::optional<QByteArray> reply = readAllChannels(port);
        link->deliver(self.data(), [self, reply] {
            if (self)
                self->showAllChannels(reply);
        });
    });
}

void Mem_Frm::readoutTick()
{
    const qint64 percent = readoutClock_.elapsed() * 100 / MemoryWait::AllChannels;
    Progress->setValue(static_cast<int>(std::min<qint64>(percent, 99)));
}

void Mem_Frm::showOneChannel(const std::optional<QByteArray>& reply)
{
    if (!reply)
        return;  // the port is closed
    if (reply->isEmpty()) {
        Label1[1]->setText(MemoryText::NoLink);
        return;
    }
    // A reply too short for a record changes nothing.
    const std::optional<QByteArray> record = singleChannelRecord(*reply);
    if (!record)
        return;
    const ChannelDecode d = decodeChannel(*record, mode_);
    showDecode(d);
    if (gridRow_ >= 1)
        model_->setColour(gridRow_, MemoryColour::of(d.masked));
}

void Mem_Frm::showAllChannels(const std::optional<QByteArray>& reply)
{
    readingAll_ = false;
    readoutTimer_->stop();
    if (!uploading_)
        Progress->setVisible(false);
    Bouton[Key::GetMem]->setEnabled(!uploading_);
    if (!reply)
        return;
    if (reply->isEmpty()) {
        Label1[1]->setText(MemoryText::NoLink);
        return;
    }
    ChannelMode mode = mode_;
    const QList<DecodedChannel> channels = decodeAllChannels(*reply, &mode);
    for (const DecodedChannel& c : channels) {
        showDecode(c.decode);
        gridRow_ = c.channel;
        model_->setChannelRow(c.channel, channelRow(c.channel, c.decode));
    }
    qCDebug(lcMemory) << "read-out:" << reply->size() << "bytes," << channels.size() << "channels";
    // The table's current row goes back to the selected channel, so that the single read that follows
    // colours that channel's row rather than the last one read.
    selectGridRow(HScroll1->value());
}

void Mem_Frm::showDecode(const ChannelDecode& d)
{
    mode_ = d.mode;
    ChannelFreq = d.shownKHz;
    ChannelClar = d.clarKHz;
    ChannelModeCode = d.mode.code;
    Label1[0]->setText(labelChannelName(HScroll1->value()));
    Label1[1]->setText(d.freqText);
    Label1[2]->setText(d.mode.caption);
    Label1[3]->setText(d.clarText);
    Label1[4]->setText(d.antenna);
    colourLabels(MemoryColour::of(d.masked));
    Bouton[Key::Mask]->setText(d.masked ? UnmaskCaption : MaskCaption);
}

void Mem_Frm::colourLabels(quint32 bgr)
{
    for (int i = 1; i <= 4; ++i)
        setTextColour(Label1[i], fromBgr(bgr));
}

void Mem_Frm::selectGridRow(int row)
{
    gridRow_ = row;
    if (row >= 1) {
        MSFlexGrid1->selectRow(row - 1);
        MSFlexGrid1->scrollTo(model_->index(row - 1, 0));
    }
}

void Mem_Frm::HScroll1_Change(int value)
{
    selectGridRow(value);
    ReadMemory(0);
    if (host_.indicatorVisible(MainIndicator::Mem) || MemState == 2)
        send([value](CatPort& port) { recallChannel(port, value); });
}

void Mem_Frm::MSFlexGrid1_DblClick(const QModelIndex& index)
{
    if (!index.isValid() || uploading_)
        return;
    const int row = index.row() + 1;
    if (row == HScroll1->value())
        send([row](CatPort& port) { recallChannel(port, row); });
    MemState = 2;
    HScroll1->setValue(row);
}

void Mem_Frm::Bouton_Click(int index)
{
    const int channel = HScroll1->value();
    switch (index) {
        case Key::Close: {
            const int start = StartChannel;
            if (MemState == 0) {
                // Put the radio's memory pointer back where it was, then back to the VFO.
                send([start](CatPort& port) {
                    recallChannel(port, start);
                    backToVfo(port);
                });
            } else if (MemState == 1 && channel != start) {
                send([channel](CatPort& port) { recallChannel(port, channel); });
            }
            close();
            break;
        }
        case Key::MemoryToA:
            send([channel](CatPort& port) { memoryToVfoA(port, channel); });
            MemState = 0;
            break;
        case Key::Mask: {
            const bool mask = Bouton[Key::Mask]->text() == MaskCaption;
            send([channel, mask](CatPort& port) { setChannelMask(port, channel, mask); });
            selectGridRow(channel);
            ReadMemory(0);
            break;
        }
        case Key::VfoMem:
            if (host_.indicatorVisible(MainIndicator::Vfo) || host_.indicatorVisible(MainIndicator::MemoryTune)) {
                send([channel](CatPort& port) { recallChannel(port, channel); });
                MemState = 1;
                StartChannel = channel;
            } else {
                send([](CatPort& port) { backToVfo(port); });
                MemState = 0;
            }
            break;
        case Key::GetMem:
            ReadMemory(1);
            setHeightTwips(ExpandedTwips);
            enableUpload();
            enableSaveMenu();
            ReadMemory(0);
            break;
        case Key::Upload:
            if (dialogs_->confirm(this, UploadTitle, UploadText))
                UploadMemory();
            break;
        default:
            break;
    }
}

void Mem_Frm::enableUpload()
{
    Bouton[Key::Upload]->setEnabled(!uploading_);
    Btn_Diag[1]->setEnabled(true);
}

void Mem_Frm::enableSaveMenu()
{
    mnu_file[2]->setEnabled(true);
    mnu_file[3]->setEnabled(true);
}

void Mem_Frm::setRadioKeysEnabled(bool on)
{
    for (int i = Key::MemoryToA; i <= Key::Upload; ++i)
        Bouton[i]->setEnabled(on);
    if (on)
        Bouton[Key::GetMem]->setEnabled(!readingAll_);
    HScroll1->setEnabled(on);
}

void Mem_Frm::UploadMemory()
{
    if (uploading_)
        return;
    uploading_ = true;
    host_.setPollEnabled(false);
    Progress->setValue(0);
    Progress->setVisible(true);
    setRadioKeysEnabled(false);
    cancel_ = std::make_shared<std::atomic<bool>>(false);

    QPointer<Mem_Frm> self(this);
    RadioLink* link = &host_.link();
    ConsoleHost* host = &host_;
    QWidget* hostWindow = host_.window();
    const QString path = currentFile_;
    const std::shared_ptr<std::atomic<bool>> cancel = cancel_;
    link->post([link, self, host, hostWindow, path, cancel](CatPort& port) {
        const UploadResult result = ::UploadMemory(
            port, path,
            [link, self](int percent, int) {
                link->deliver(self.data(), [self, percent] {
                    if (self)
                        self->Progress->setValue(percent);
                });
            },
            cancel.get());
        // The poll comes back even when this window is gone by now.
        link->deliver(hostWindow, [host] { host->setPollEnabled(true); });
        link->deliver(self.data(), [self, result] {
            if (self)
                self->finishUpload(result);
        });
    });
}

void Mem_Frm::finishUpload(const UploadResult& result)
{
    uploading_ = false;
    Progress->setVisible(readingAll_);
    setRadioKeysEnabled(true);
    if (!result.fileError.isEmpty()) {
        dialogs_->error(this, ErrorTitle,
                        QStringLiteral("Could not read the memory file \"%1\".\n%2\nNo channel was written.")
                            .arg(currentFile_, result.fileError));
    }
}

void Mem_Frm::cancelUpload()
{
    if (cancel_)
        cancel_->store(true);
}

QWidget* Mem_Frm::dialogParent()
{
    return isVisible() ? this : host_.window();
}

void Mem_Frm::Diag(int index)
{
    FileDialogRequest request;
    request.filters = dialogFilters(FileFilter);
    request.selectedFilter = request.filters.value(1);
    request.defaultSuffix = DefaultSuffix;
    request.file = currentFile_;
    request.kind = index == 0 ? FileDialogRequest::Kind::Open : FileDialogRequest::Kind::Save;
    request.title = index == 0 ? OpenTitle : SaveTitle;
    const std::optional<QString> chosen = dialogs_->chooseFile(dialogParent(), request);
    if (!chosen)
        return;
    currentFile_ = *chosen;
    // Started from the dialog, a failure ends quietly.
    if (index == 0)
        LoadMemFile(Report::Quiet);
    else
        SaveMemFile(Report::Quiet);
}

bool Mem_Frm::LoadMemFile(Report report)
{
    QList<MemRecord> records;
    QString error;
    if (!MemFile::load(currentFile_, &records, &error)) {
        qCWarning(lcMemory) << "load failed:" << currentFile_ << error;
        if (report == Report::Message)
            dialogs_->error(dialogParent(), ErrorTitle,
                            QStringLiteral("Could not read the memory file \"%1\".\n%2").arg(currentFile_, error));
        return false;
    }
    QList<MemoryRow> rows;
    rows.reserve(records.size());
    for (const MemRecord& r : records)
        rows.append(rowFromRecord(r));
    model_->setRows(rows);
    if (gridRow_ >= 1)
        selectGridRow(gridRow_);
    setHeightTwips(ExpandedTwips);
    enableUpload();
    enableSaveMenu();
    return true;
}

bool Mem_Frm::SaveMemFile(Report report)
{
    QString error;
    if (!MemFile::save(currentFile_, model_->rows(), &error)) {
        qCWarning(lcMemory) << "save failed:" << currentFile_ << error;
        if (report == Report::Message)
            dialogs_->error(dialogParent(), ErrorTitle,
                            QStringLiteral("Could not save the memory file \"%1\".\n%2\nThe file was left as it was.")
                                .arg(currentFile_, error));
        return false;
    }
    return true;
}

void Mem_Frm::Btn_Diag_MouseDown(int index, Qt::MouseButton button)
{
    if (index == 0) {
        if (button == Qt::LeftButton)
            LoadMemFile(Report::Message);
        else
            Diag(0);
        setHeightTwips(ExpandedTwips);
        enableUpload();
        return;
    }
    if (button == Qt::LeftButton)
        SaveMemFile(Report::Message);
    else
        Diag(1);
}

void Mem_Frm::mnu_file_Click(int index)
{
    switch (index) {
        case 0:
            Diag(0);
            break;
        case 2:
            SaveMemFile(Report::Message);
            break;
        case 3:
            Diag(1);
            break;
        case 5:
            Bouton_Click(Key::Close);
            break;
        default:
            break;
    }
}

void Mem_Frm::closeEvent(QCloseEvent* event)
{
    cancelUpload();
    readoutTimer_->stop();
    WindowPlacement::save(this, host_.settings(), Section, TopKey, LeftKey);
    host_.settings().setValue(Section, PathKey, currentFile_);
    event->accept();
}
