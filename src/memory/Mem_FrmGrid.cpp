// SPDX-License-Identifier: GPL-3.0-or-later
// The memory window's channel display: the table, the scroll bar, the double click and the read-outs
// that fill them.
#include "Mem_Frm.h"

#include "CatPort.h"
#include "ChannelNames.h"
#include "ConsoleHost.h"
#include "MemoryEditor.h"
#include "MemoryGridModel.h"
#include "MemoryLog.h"
#include "MemoryPanel.h"
#include "MemoryReadout.h"
#include "RadioLink.h"
#include "Timing.h"
#include "Twips.h"

#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>
#include <QStyle>
#include <QTableView>
#include <QTimer>

namespace {
using namespace MemoryWindow;

// Column widths of the table in twips; the mode code column is hidden.
constexpr int columnTwips[MemoryColumn::Count] = {820, 850, 850, 580, 480, 0};
constexpr int rowTwips = 240;
constexpr double MinGridPoints = 6.5;
}  // namespace

void Mem_Frm::buildGrid()
{
    model_ = new MemoryGridModel(this);
    MSFlexGrid1->setModel(model_);
    MSFlexGrid1->setToolTip(GridTip);
    MemoryPanel::darken(MSFlexGrid1);
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

void Mem_Frm::ReadMemory(int mode)
{
    QPointer<Mem_Frm> self(this);
    RadioLink* link = &host_.link();
    if (mode == 0) {
        const int channel = HScroll1->value();
        maskCaptionFor_ = 0;  // the key waits for this read
        updateMaskKey();
        link->post([link, self, channel](CatPort& port) {
            const std::optional<QByteArray> reply = readOneChannel(port, channel);
            link->deliver(self.data(), [self, reply, channel] {
                if (self)
                    self->showOneChannel(reply, channel);
            });
        });
        return;
    }
    // The radio takes five seconds to send all channels: the bar shows the wait.
    readingAll_ = true;
    updateEditState();  // no edits while the table is about to be replaced
    Bouton[MemoryKey::GetMem]->setEnabled(false);
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
    const qint64 percent = readoutClock_.elapsed() * 100 / Wait::AllMemories;
    Progress->setValue(static_cast<int>(std::min<qint64>(percent, 99)));
}

void Mem_Frm::showOneChannel(const std::optional<QByteArray>& reply, int channel)
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
        editor_->radioShowsColour(gridRow_, MemoryColour::of(d.masked));
    maskCaptionFor_ = channel;
    updateMaskKey();
}

void Mem_Frm::updateMaskKey()
{
    Bouton[MemoryKey::Mask]->setEnabled(!uploading_ && maskCaptionFor_ == HScroll1->value());
}

void Mem_Frm::showAllChannels(const std::optional<QByteArray>& reply)
{
    readingAll_ = false;
    updateEditState();
    readoutTimer_->stop();
    if (!uploading_)
        Progress->setVisible(false);
    Bouton[MemoryKey::GetMem]->setEnabled(!uploading_);
    if (!reply)
        return;
    if (reply->isEmpty()) {
        Label1[1]->setText(MemoryText::NoLink);
        return;
    }
    ChannelMode mode = mode_;
    const QList<DecodedChannel> channels = decodeAllChannels(*reply, &mode);
    if (!channels.isEmpty()) {
        maskCaptionFor_ = 0;  // the caption is the last channel's now; the read that follows corrects it
        updateMaskKey();
    }
    for (const DecodedChannel& c : channels) {
        showDecode(c.decode);
        gridRow_ = c.channel;
        model_->setChannelRow(c.channel, channelRow(c.channel, c.decode));
    }
    // The table as read is where editing starts from.
    if (!channels.isEmpty())
        editor_->takeAsBaseline();
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
    Bouton[MemoryKey::Mask]->setText(d.masked ? UnmaskCaption : MaskCaption);
}

void Mem_Frm::colourLabels(quint32 bgr)
{
    for (int i = 1; i <= 4; ++i)
        MemoryPanel::setTextColour(Label1[i], fromBgr(bgr));
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

void Mem_Frm::HScroll1_Scroll(int value)
{
    Label1[0]->setText(labelChannelName(value));
}

void Mem_Frm::MSFlexGrid1_DblClick(const QModelIndex& index)
{
    if (!index.isValid() || uploading_ || writing_)
        return;
    const int row = index.row() + 1;
    if (row == HScroll1->value())
        send([row](CatPort& port) { recallChannel(port, row); });
    MemState = 2;
    HScroll1->setValue(row);
}
