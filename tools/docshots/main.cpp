// SPDX-License-Identifier: GPL-3.0-or-later
// ft-docshots: the pictures of the README, taken from the program's own windows on its virtual radio.
// Each picture gets a fresh program: the virtual radio on a pseudo-terminal, the radio link on its
// thread and the main window with its windows, wired as the program wires them; the windows are
// driven as an operator would (a sweep, a read-out of every memory channel) and then grabbed.
//
//   ft-docshots OUTPUT-FOLDER [NAME...]      names: main-large main-small scope memory navigator edsp

#include "AppIcon.h"
#include "AppWindows.h"
#include "BandScope.h"
#include "Form1.h"
#include "FrontPanel.h"
#include "Mem_Frm.h"
#include "MemorySettingsStore.h"
#include "Prompts.h"
#include "QtSerialPort.h"
#include "RadioLink.h"
#include "RealClock.h"
#include "SimHost.h"
#include "frmOptions.h"
#include "frm_Navig.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPixmap>
#include <QPushButton>
#include <QTextStream>
#include <QThread>
#include <functional>
#include <map>
#include <memory>

namespace {
constexpr int SettleMs = 2500;           // a few polls, so every display shows the radio
constexpr int LongJobTimeoutMs = 60000;  // a sweep or a read-out of all channels
constexpr int SmallWidthTwips = 7035;
const QString ScopeCentreKHz = QStringLiteral("14200");
const QString ScopeSpan = QStringLiteral("250 Khz");
const QString ScopeResolution = QStringLiteral("5 Khz");
constexpr int RedPlot = 49;
const QString GetMemCaption = QStringLiteral("Get Mem");

QTextStream& err()
{
    static QTextStream s(stderr);
    return s;
}

// Runs the event loop until `done` holds or the time is up; false on time-out.
bool waitUntil(const std::function<bool()>& done, int timeoutMs)
{
    QElapsedTimer t;
    t.start();
    while (!done()) {
        if (t.elapsed() > timeoutMs)
            return false;
        QApplication::processEvents(QEventLoop::AllEvents, 20);
        QThread::msleep(5);
    }
    return true;
}

void settle(int ms = SettleMs)
{
    waitUntil([] { return false; }, ms);
}

template <class W>
W* shownWindow()
{
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* t = qobject_cast<W*>(w); t && t->isVisible())
            return t;
    return nullptr;
}

bool selectEntry(QComboBox* box, const QString& text)
{
    const int i = box ? box->findText(text) : -1;
    if (i >= 0)
        box->setCurrentIndex(i);
    return i >= 0;
}

// One run of the program on a fresh virtual radio.
class Program {
public:
    Program() : link_([] { return std::make_unique<QtSerialPort>(); }, std::make_shared<RealClock>()) {}
    // Starts the virtual radio and the main window, and lets a few polls run.
    bool start(int widthTwips)
    {
        if (widthTwips > 0)
            settings_.setValue(QStringLiteral("Startup"), QStringLiteral("Width"), QString::number(widthTwips));
        QString error;
        if (!sim_.start(&error)) {
            err() << "ft-docshots: cannot start the virtual radio: " << error << Qt::endl;
            return false;
        }
        form_ = std::make_unique<Form1>(link_, settings_, windows_, prompts_);
        windows_.setHost(form_.get());
        form_->setPortOverride(sim_.devicePath());
        form_->Form_Load();
        form_->show();
        settle();
        return true;
    }
    ~Program()
    {
        windows_.closeAll();
        form_.reset();
        link_.waitForIdle();
        link_.shutdown();
        sim_.stop();
    }
    Form1& form() { return *form_; }

private:
    SimHost sim_;
    MemorySettingsStore settings_;
    RadioLink link_;
    AppWindows windows_;
    QtPrompts prompts_;
    std::unique_ptr<Form1> form_;
};

using Shot = std::function<QWidget*(Program&)>;

QWidget* scopeAfterSweep(Program& p)
{
    Form1& f = p.form();
    f.Key_Click(FrontPanel::KeyIndex::Scope);
    BandScope* scope = f.bandScope();
    if (!scope || !selectEntry(scope->panCombo(1), ScopeSpan) || !selectEntry(scope->panCombo(2), ScopeResolution))
        return nullptr;
    scope->centreEdit()->setText(ScopeCentreKHz);
    scope->CFreq_LostFocus();
    bool finished = false;
    QObject::connect(scope, &BandScope::sweepFinished, [&finished] { finished = true; });
    f.Key_Click(RedPlot);
    if (!waitUntil([&] { return finished; }, LongJobTimeoutMs))
        return nullptr;
    settle();
    return &f;
}

QWidget* memoryWithEveryChannel(Program& p)
{
    p.form().Key_Click(FrontPanel::KeyIndex::MemoryList);
    auto* memory = shownWindow<Mem_Frm>();
    if (!memory || !waitUntil([&] { return !memory->readingAll(); }, LongJobTimeoutMs))
        return nullptr;
    settle(1000);  // the opening read of the current channel
    QPushButton* getMem = nullptr;
    for (QPushButton* b : memory->Bouton)
        if (b && b->text().remove(u'&') == GetMemCaption)
            getMem = b;
    if (!getMem)
        return nullptr;
    getMem->click();
    if (!waitUntil([&] { return !memory->readingAll() && memory->expanded(); }, LongJobTimeoutMs))
        return nullptr;
    settle(500);
    return memory;
}

QWidget* navigator(Program& p)
{
    p.form().Key_Click(FrontPanel::KeyIndex::KeyPad);
    settle();
    return shownWindow<frm_Navig>();
}

QWidget* edspDialog(Program& p)
{
    p.form().Key_Click(FrontPanel::KeyIndex::Edsp);
    settle(1000);
    return shownWindow<frmOptions>();
}

bool take(const QString& name, const QString& folder)
{
    const std::map<QString, std::pair<int, Shot>> shots{
        {QStringLiteral("main-large"), {0, [](Program& p) { return &p.form(); }}},
        {QStringLiteral("main-small"), {SmallWidthTwips, [](Program& p) { return &p.form(); }}},
        {QStringLiteral("scope"), {0, scopeAfterSweep}},
        {QStringLiteral("memory"), {0, memoryWithEveryChannel}},
        {QStringLiteral("navigator"), {0, navigator}},
        {QStringLiteral("edsp"), {0, edspDialog}},
    };
    const auto it = shots.find(name);
    if (it == shots.end()) {
        err() << "ft-docshots: no picture named " << name << Qt::endl;
        return false;
    }
    Program program;
    if (!program.start(it->second.first))
        return false;
    QWidget* window = it->second.second(program);
    const QString file = QDir(folder).filePath(name + QStringLiteral(".png"));
    if (!window || !window->grab().save(file)) {
        err() << "ft-docshots: " << name << " not taken" << Qt::endl;
        return false;
    }
    err() << "ft-docshots: " << file << Qt::endl;
    return true;
}
}  // namespace

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("ft1000cat"));
    QApplication::setWindowIcon(appIcon());
    QStringList names = QApplication::arguments().mid(1);
    if (names.isEmpty()) {
        err() << "usage: ft-docshots OUTPUT-FOLDER [NAME...]" << Qt::endl;
        return 2;
    }
    const QString folder = names.takeFirst();
    if (names.isEmpty())
        names = {QStringLiteral("main-large"), QStringLiteral("main-small"), QStringLiteral("scope"),
                 QStringLiteral("memory"),     QStringLiteral("navigator"),  QStringLiteral("edsp")};
    QDir().mkpath(folder);
    bool ok = true;
    for (const QString& name : names)
        ok = take(name, folder) && ok;
    return ok ? 0 : 1;
}
