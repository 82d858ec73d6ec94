// SPDX-License-Identifier: GPL-3.0-or-later
#include "EdspPages.h"

#include "AudioFilterSliders.h"
#include "CwCentre.h"
#include "PassbandPicture.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {

struct TabText {
    const char* caption;
    const char* key;
    const char* toolTip;
};
// The fourth tab's tool tip speaks of CW filters, which sit on the third: kept as users know it.
constexpr TabText Tabs[] = {
    {"RX EDSP", "Group1", "Set RX EDSP Functions"},
    {"TX EDSP", "Group2", "Set TX EDSP Functions"},
    {"AF Filters", "Group3", "Set Audio EDSP functions"},
    {"Special Filters", "Group4", "Set CW Filters"},
};

constexpr int SliderWidthPx = 200;

QString latin(const char* s)
{
    return QString::fromLatin1(s);
}

// Option buttons first..last as one exclusive group of `box`, added to `layout`.
void addOptions(EdspControls& c, QGroupBox* box, EdspGroup group, int first, int last, QBoxLayout* layout)
{
    auto* buttons = new QButtonGroup(box);
    buttons->setExclusive(true);
    c.groups.insert(group, buttons);
    for (int i = first; i <= last; ++i) {
        auto* o = new QRadioButton(edspOptionCaption(i));
        o->setObjectName(QStringLiteral("Option1_%1").arg(i));
        buttons->addButton(o, i);
        layout->addWidget(o);
        c.Option1[i] = o;
    }
}

// A frame holding option buttons first..last, stacked or in a row.
QGroupBox* optionFrame(EdspControls& c, const char* caption, EdspGroup group, int first, int last, bool inRow = false)
{
    auto* box = new QGroupBox(latin(caption));
    QBoxLayout* layout = inRow ? static_cast<QBoxLayout*>(new QHBoxLayout(box)) : new QVBoxLayout(box);
    addOptions(c, box, group, first, last, layout);
    if (!inRow)
        layout->addStretch(1);
    return box;
}

QGroupBox* tipFrame(EdspControls& c, int index)
{
    auto* box = new QGroupBox(QStringLiteral(" Tip "));
    box->setObjectName(QStringLiteral("fra1_%1").arg(index));
    auto* layout = new QVBoxLayout(box);
    auto* text = new QLabel(latin(EdspText::Tip));
    text->setWordWrap(true);
    layout->addWidget(text);
    c.fra1[index] = box;
    return box;
}

QPushButton* key(EdspControls& c, int index, const char* caption)
{
    auto* b = new QPushButton(latin(caption));
    b->setObjectName(QStringLiteral("Key_%1").arg(index));
    b->setAutoDefault(false);
    c.Key[index] = b;
    return b;
}

QScrollBar* slider(int maximum, int value, const QString& name)
{
    auto* s = new QScrollBar(Qt::Horizontal);
    s->setObjectName(name);
    s->setRange(0, maximum);
    s->setValue(value);
    s->setSingleStep(1);
    s->setPageStep(10);
    return s;
}

QLabel* caption(const QString& text, const QString& name)
{
    auto* l = new QLabel(text);
    l->setObjectName(name);
    return l;
}

// A right-aligned row holding one button.
QHBoxLayout* buttonRow(QPushButton* b)
{
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    row->addWidget(b);
    return row;
}

QWidget* rxPage(EdspControls& c)
{
    auto* page = new QWidget;
    auto* g = new QGridLayout(page);
    g->addWidget(optionFrame(c, " EDSP - Demodulation ", EdspGroup::Demodulation, 0, 5), 0, 0);
    g->addWidget(optionFrame(c, " EDSP - Contour ", EdspGroup::Contour, 17, 21), 0, 1);
    g->addWidget(tipFrame(c, 11), 1, 0, 1, 2);
    g->addLayout(buttonRow(key(c, 0, "Audio EDSP Filters Off")), 2, 0, 1, 2);
    g->setRowStretch(0, 1);
    return page;
}

QWidget* txPage(EdspControls& c)
{
    auto* page = new QWidget;
    auto* g = new QGridLayout(page);
    g->addWidget(optionFrame(c, " EDSP - USB ", EdspGroup::TxUsb, 6, 9), 0, 0);
    g->addWidget(optionFrame(c, " EDSP - LSB ", EdspGroup::TxLsb, 10, 13), 0, 1);
    g->addWidget(optionFrame(c, " Microphone Equalization ", EdspGroup::MicEqualization, 22, 26, true), 1, 0, 1, 2);
    g->addLayout(buttonRow(key(c, 2, "Tx EDSP Off")), 2, 0, 1, 2);
    g->setRowStretch(0, 1);
    return page;
}

QWidget* afPage(EdspControls& c)
{
    auto* page = new QWidget;
    auto* g = new QGridLayout(page);

    // The passband picture with its position slider, the limits beneath.
    auto* band = new QGroupBox(QStringLiteral(" Passband "));
    auto* bandLayout = new QVBoxLayout(band);
    c.Picture1 = new PassbandPicture;
    c.HScroll1[3] = slider(AudioFilterSliders::PassbandMaxInitial, AudioFilterSliders::PassbandInitial,
                           QStringLiteral("HScroll1_3"));
    c.HScroll1[3]->setFixedWidth(c.Picture1->width());
    c.HScroll1[3]->setToolTip(QObject::tr("Move the passband"));
    c.Label3 = caption(QStringLiteral(" Band Limits = 300 to 3000 Hz"), QStringLiteral("Label3"));
    c.Label4 = caption(QStringLiteral(" Bandwidth = 2700 Hz"), QStringLiteral("Label4"));
    bandLayout->addWidget(c.Picture1, 0, Qt::AlignHCenter);
    bandLayout->addWidget(c.HScroll1[3], 0, Qt::AlignHCenter);
    bandLayout->addWidget(c.Label3);
    bandLayout->addWidget(c.Label4);
    bandLayout->addStretch(1);

    auto cutFrame = [&c](const char* title, int index, int value, const char* text) {
        auto* box = new QGroupBox(latin(title));
        auto* l = new QVBoxLayout(box);
        c.Label1[index] = caption(latin(text), QStringLiteral("Label1_%1").arg(index));
        c.HScroll1[index] = slider(AudioFilterSliders::CutMax, value, QStringLiteral("HScroll1_%1").arg(index));
        c.HScroll1[index]->setMinimumWidth(SliderWidthPx);
        l->addWidget(c.Label1[index]);
        l->addWidget(c.HScroll1[index]);
        return box;
    };
    QGroupBox* hpf = cutFrame(" HPF ", 1, AudioFilterSliders::HighPassInitial, " HP Cut = 300 Hz");
    QGroupBox* lpf = cutFrame(" LPF ", 0, AudioFilterSliders::LowPassInitial, " LP Cut = 3000 Hz");

    // The CW filters in a row above the centre slider.
    auto* cw = new QGroupBox(QStringLiteral(" CW Filters "));
    auto* cwLayout = new QVBoxLayout(cw);
    auto* cwOptions = new QHBoxLayout;
    addOptions(c, cw, EdspGroup::CwFilters, 14, 16, cwOptions);
    c.Label1[2] = caption(QStringLiteral(" Cent = 750 Hz"), QStringLiteral("Label1_2"));
    c.HScroll2 = slider(CwCentre::Max, CwCentre::Initial, QStringLiteral("HScroll2"));
    c.HScroll2->setMinimumWidth(SliderWidthPx);
    cwLayout->addLayout(cwOptions);
    cwLayout->addWidget(c.Label1[2]);
    cwLayout->addWidget(c.HScroll2);

    g->addWidget(band, 0, 0, 2, 1);
    g->addWidget(hpf, 0, 1);
    g->addWidget(lpf, 1, 1);
    g->addWidget(cw, 2, 0, 1, 2);
    g->addLayout(buttonRow(key(c, 1, "AF EDSP Off")), 3, 0, 1, 2);
    g->setRowStretch(1, 1);
    return page;
}

QWidget* specialPage(EdspControls& c)
{
    auto* page = new QWidget;
    auto* g = new QGridLayout(page);
    g->addWidget(optionFrame(c, " EDSP - Demodulation ", EdspGroup::DataDemodulation, 27, 31), 0, 0, 3, 1);
    g->addWidget(optionFrame(c, " EDSP - Notch", EdspGroup::Notch, 34, 35, true), 0, 1);
    g->addWidget(optionFrame(c, " EDSP - Noise ", EdspGroup::Noise, 32, 33, true), 1, 1);
    g->addWidget(tipFrame(c, 12), 3, 0, 1, 2);
    g->setRowStretch(2, 1);
    return page;
}

}  // namespace

void buildEdspPages(EdspControls& c, QWidget* parent)
{
    c.Option1.fill(nullptr, EdspOptionCount);
    c.Key.fill(nullptr, 3);
    c.HScroll1.fill(nullptr, 4);
    c.Label1.fill(nullptr, 3);
    c.fra1.fill(nullptr, 13);

    c.tbsOptions = new QTabWidget(parent);
    c.tbsOptions->setObjectName(QStringLiteral("tbsOptions"));
    c.picOptions = {rxPage(c), txPage(c), afPage(c), specialPage(c)};
    for (int i = 0; i < c.picOptions.size(); ++i) {
        c.picOptions[i]->setObjectName(QStringLiteral("picOptions_%1").arg(i));
        c.tbsOptions->addTab(c.picOptions[i], latin(Tabs[i].caption));
        c.tbsOptions->setTabToolTip(i, latin(Tabs[i].toolTip));
        c.tbsOptions->tabBar()->setTabData(i, latin(Tabs[i].key));
    }
}
