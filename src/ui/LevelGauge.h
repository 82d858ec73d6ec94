// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// A bar gauge filled to a percentage (the meters' gauge panels).

#include <QColor>
#include <QWidget>

class LevelGauge : public QWidget {
    Q_OBJECT
public:
    explicit LevelGauge(QWidget* parent = nullptr);
    int level() const { return level_; }
    void setBarColours(const QColor& low, const QColor& high);

public slots:
    void setLevel(int percent);  // 0..100, clamped

protected:
    void paintEvent(QPaintEvent* event) override;
    QSize sizeHint() const override { return {160, 9}; }
    QSize minimumSizeHint() const override { return {40, 6}; }

private:
    int level_ = 0;
    QColor low_{0x40, 0xd0, 0x60};
    QColor high_{0xf0, 0x50, 0x30};
};
