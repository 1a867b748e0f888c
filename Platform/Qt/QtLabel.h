#pragma once

#include <QLabel>
#include <QPointer>

/// A label of plain text. One that does not wrap ends in an ellipsis where its text does not fit,
/// and tells the whole text in its tool tip then, unless it has been given another one. Of a text longer than
/// any line, neither shows more than the beginning.
class QtLabel final : public QLabel {
    Q_OBJECT
public:
    explicit QtLabel(bool wraps);

    /// Gives the widget this label's text as its accessible name, without a colon at its end, and again
    /// whenever the text changes.
    void name(QWidget& widget);
    /// A text of any length; the tool tip and the names that hang on the text go with it.
    void show(QString const& text);
    QString wholeText() const;

    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QString shownText() const;
    void updateElision();
    void textDidChange();

    QString m_wholeText; ///< As it was given to `show`.
    QString m_ownToolTip;
    QList<QPointer<QWidget>> m_named;
};
