#include "PlaceholderWindows.h"

#include <QCoreApplication>
#include <QLabel>
#include <QMessageBox>
#include <QVBoxLayout>

PlaceholderWindows::~PlaceholderWindows()
{
    closeAll();
}

void PlaceholderWindows::open(const QString& title)
{
    QPointer<QWidget>& w = windows_[title];
    if (!w) {
        w = new QWidget(owner_, Qt::Tool);
        w->setAttribute(Qt::WA_DeleteOnClose);
        w->setWindowTitle(title);
        auto* layout = new QVBoxLayout(w);
        layout->addWidget(new QLabel(QObject::tr("This window is not available in this build."), w));
        w->resize(320, 120);
    }
    w->show();
    w->raise();
}

void PlaceholderWindows::showAbout()
{
    const QString title = QCoreApplication::applicationName();
    QMessageBox::about(owner_, QStringLiteral("About ") + title,
                       QStringLiteral("%1\nVersion %2").arg(title, QCoreApplication::applicationVersion()));
}

void PlaceholderWindows::closeAll()
{
    for (const QPointer<QWidget>& w : std::as_const(windows_))
        if (w)
            w->close();
    windows_.clear();
}
