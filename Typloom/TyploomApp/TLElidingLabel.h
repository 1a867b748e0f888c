#pragma once

#include <QLabel>

/// A line of plain text that gives way: a long one ends in an ellipsis, and its tool tip tells the whole.
class TLElidingLabel final : public QLabel {
public:
    TLElidingLabel();

    void showText(QString const& shown);
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};
