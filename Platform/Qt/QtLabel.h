#pragma once

#include <QLabel>

/// A label of plain text. One that does not wrap ends in an ellipsis where its text does not fit,
/// and tells the whole text in its tool tip then, unless it has been given another one.
class QtLabel final : public QLabel {
    Q_OBJECT
public:
    explicit QtLabel(bool wraps);

    /// Brings the tool tip up to date after a change of the text.
    void updateElision();

    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QString shownText() const;

    QString m_ownToolTip;
};
