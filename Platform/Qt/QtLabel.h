#pragma once

#include <QLabel>
#include <QPointer>

/// A label of plain text. One that does not wrap ends in an ellipsis where its text does not fit,
/// and tells the whole text in its tool tip then, unless it has been given another one.
class QtLabel final : public QLabel {
    Q_OBJECT
public:
    explicit QtLabel(bool wraps);

    /// Gives the widget this label's text as its accessible name, without a colon at its end, and again
    /// whenever the text changes.
    void name(QWidget& widget);
    /// Brings the tool tip and the names that hang on the text up to date after a change of it.
    void textDidChange();

    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QString shownText() const;
    void updateElision();

    QString m_ownToolTip;
    QList<QPointer<QWidget>> m_named;
};
