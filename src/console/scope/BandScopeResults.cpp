// SPDX-License-Identifier: GPL-3.0-or-later
// The band scope's results: the waterfall of the finished passes under the plot, and "Save Plot...",
// which writes the picture as PNG and the last sweep's and S-record's samples as CSV beside it.
#include "BandScope.h"

#include "PanBox.h"
#include "ScopeExport.h"
#include "ScopeHost.h"
#include "ScopeLog.h"
#include "ScopeRecord.h"
#include "ScopeSweep.h"
#include "SettingsStore.h"
#include "WaterfallView.h"

#include <QBuffer>
#include <QCheckBox>
#include <QDateTime>
#include <QDir>
#include <QHBoxLayout>
#include <QImage>
#include <QPainter>
#include <QPushButton>
#include <QStandardPaths>

namespace {
const QString Section = QStringLiteral("Scope");
const QString WaterfallKey = QStringLiteral("Waterfall");
const QString PlotFolderKey = QStringLiteral("PlotFolder");
const QString SaveErrorTitle = QStringLiteral("Save Plot");

QByteArray pngBytes(const QImage& image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}
}  // namespace

QLayout* BandScope::buildResultControls(QWidget* parent)
{
    auto* resultRow = new QHBoxLayout;
    resultRow->setSpacing(4);
    waterfallToggle_ = new QCheckBox(QStringLiteral("Waterfall"), parent);
    waterfallToggle_->setObjectName(QStringLiteral("WaterfallToggle"));
    waterfallToggle_->setToolTip(QStringLiteral("One line of colour under the plot for every finished sweep"));
    waterfallToggle_->setChecked(host_.settings().value(Section, WaterfallKey, QStringLiteral("0")) ==
                                 QLatin1String("1"));
    connect(waterfallToggle_, &QCheckBox::toggled, this, &BandScope::setWaterfallShown);
    savePlot_ = new QPushButton(QStringLiteral("Save Plot..."), parent);
    savePlot_->setObjectName(QStringLiteral("SavePlot"));
    savePlot_->setAutoDefault(false);
    connect(savePlot_, &QPushButton::clicked, this, &BandScope::SavePlot_Click);
    resultRow->addWidget(waterfallToggle_);
    resultRow->addWidget(savePlot_);
    return resultRow;
}

// ---- waterfall -----------------------------------------------------------------------------------

bool BandScope::waterfallShown() const
{
    return waterfallToggle_->isChecked();
}

void BandScope::setWaterfallShown(bool shown)
{
    if (waterfallToggle_->isChecked() != shown) {
        waterfallToggle_->setChecked(shown);  // comes back here through toggled()
        return;
    }
    host_.settings().setValue(Section, WaterfallKey, shown ? QStringLiteral("1") : QStringLiteral("0"));
    if (waterfallView_->isHidden() == !shown)
        return;
    waterfallView_->setVisible(shown);
    emit waterfallShownChanged(shown);
}

void BandScope::onPassFinished(const SweepPlan& plan, const QList<SweepSample>& samples)
{
    // Rows are kept while the waterfall is hidden too, so that showing it shows the history.
    if (waterfall_.add(plan, samples))
        waterfallView_->reset();
    else
        waterfallView_->rowAdded();
}

// ---- Save Plot... --------------------------------------------------------------------------------

const QList<SweepSample>& BandScope::lastSweep() const
{
    return sweep_->lastPass();
}

const QList<RecordReading>& BandScope::lastRecording() const
{
    return record_->readings();
}

QImage BandScope::plotImage() const
{
    const QImage plot = PanBox_->grab().toImage();
    if (!waterfallShown())
        return plot;
    const QImage fall = waterfallView_->grab().toImage();
    QImage both(std::max(plot.width(), fall.width()), plot.height() + fall.height(), QImage::Format_RGB32);
    both.setDevicePixelRatio(plot.devicePixelRatio());
    both.fill(PanBoxLook::Background);
    QPainter p(&both);
    p.drawImage(0, 0, plot);
    p.drawImage(0, plot.height() / plot.devicePixelRatio(), fall);
    return both;
}

ScopeExport::SweepKept BandScope::sweepKept() const
{
    if (!lastSweep().isEmpty())
        return ScopeExport::SweepKept::Whole;
    return sweep_->onlyCutShort() ? ScopeExport::SweepKept::CutShort : ScopeExport::SweepKept::None;
}

void BandScope::SavePlot_Click()
{
    QString folder = host_.settings().value(Section, PlotFolderKey);
    if (folder.isEmpty())
        folder = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    const QString name =
        QStringLiteral("band-scope-%1.png").arg(QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-hhmm")));
    const QString chosen = host_.askPlotFile(QDir(folder).filePath(name));
    if (chosen.isEmpty())
        return;
    host_.settings().setValue(Section, PlotFolderKey, QFileInfo(chosen).absolutePath());
    const ScopeExport::PlotFiles files =
        ScopeExport::planPlotFiles(chosen, sweepKept(), !lastRecording().isEmpty(),
                                   [](const QString& p) { return QFileInfo::exists(p) || QFileInfo(p).isSymLink(); });
    const QString question = files.question();
    if (!question.isEmpty() && !host_.confirmPlotFiles(SaveErrorTitle, question))
        return;
    savePlot(chosen);
}

bool BandScope::savePlot(const QString& chosen)
{
    const ScopeExport::PlotFiles files = ScopeExport::planPlotFiles(chosen, sweepKept(), !lastRecording().isEmpty(),
                                                                    [](const QString&) { return false; });
    QList<QPair<QString, QByteArray>> outputs{{files.png, pngBytes(plotImage())}};
    if (!files.sweep.isEmpty())
        outputs.append({files.sweep, ScopeExport::sweepCsv(lastSweep())});
    if (!files.record.isEmpty())
        outputs.append({files.record, ScopeExport::recordCsv(lastRecording())});
    const ScopeExport::PlotWrite written = ScopeExport::writePlotFiles(outputs);
    if (!written.ok) {
        // The scope goes on as it was; only the operator is told which file failed.
        qCWarning(lcScope) << "could not write" << written.failed;
        host_.showScopeError(SaveErrorTitle, written.message);
        return false;
    }
    return true;
}
