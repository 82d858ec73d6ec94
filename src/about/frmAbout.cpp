// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmAbout.h"

#include "AboutText.h"
#include "AppIcon.h"

#include <QFont>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
constexpr int TextWidthPx = 340;
constexpr int IconPx = 64;

QLabel* label(const QString& text, const QString& name)
{
    auto* l = new QLabel(text);
    l->setObjectName(name);
    l->setTextFormat(Qt::PlainText);
    return l;
}
}  // namespace

frmAbout::frmAbout(const QString& title, QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmAbout"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(AboutText::caption(title));

    lblIcon = new QLabel;
    lblIcon->setObjectName(QStringLiteral("lblIcon"));
    lblIcon->setPixmap(appIcon().pixmap(IconPx, IconPx));
    lblIcon->setAccessibleName(title);
    lblTitle = label(title, QStringLiteral("lblTitle"));
    QFont big = lblTitle->font();
    big.setPointSizeF(big.pointSizeF() * 1.5);
    big.setBold(true);
    lblTitle->setFont(big);
    lblVersion = label(AboutText::versionLine(AboutText::buildVersion()), QStringLiteral("lblVersion"));
    lblDescription = label(AboutText::description(), QStringLiteral("lblDescription"));
    lblDescription->setWordWrap(true);
    lblDescription->setFixedWidth(TextWidthPx);
    lblNotice = label(AboutText::notice(), QStringLiteral("lblNotice"));

    auto* line = new QFrame;
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);

    cmdOK = new QPushButton(tr("OK"));
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdOK->setDefault(true);
    connect(cmdOK, &QPushButton::clicked, this, &QWidget::close);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdOK);

    auto* heading = new QVBoxLayout;
    heading->addWidget(lblTitle);
    heading->addWidget(lblVersion);
    auto* top = new QHBoxLayout;
    top->addWidget(lblIcon, 0, Qt::AlignTop);
    top->addSpacing(8);
    top->addLayout(heading, 1);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addSpacing(8);
    layout->addWidget(lblDescription);
    layout->addSpacing(8);
    layout->addWidget(line);
    layout->addWidget(lblNotice);
    layout->addLayout(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}
