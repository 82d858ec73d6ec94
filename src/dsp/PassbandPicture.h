// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Picture1 of the EDSP dialog: the audio passband as a strip, with the two cut-away parts drawn as
// bars: Label2(0) from the left edge up to the high-pass cut, Label2(1) from the low-pass cut to the
// right edge. Geometry is set in twips, as the slider arithmetic gives it.

#include <QFrame>
#include <QVector>

class QLabel;

class PassbandPicture : public QFrame {
    Q_OBJECT
public:
    explicit PassbandPicture(QWidget* parent = nullptr);

    void setHighPassBarWidthTwips(int twips);  // Label2(0).Width
    void setLowPassBarLeftTwips(int twips);    // Label2(1).Left

    QVector<QLabel*> Label2;  // 0: below the high-pass cut, 1: above the low-pass cut

protected:
    void resizeEvent(QResizeEvent* e) override;

private:
    void place();
    int hpWidthTwips_ = 0;
    int lpLeftTwips_ = 0;
};
