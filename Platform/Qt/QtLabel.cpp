#include "Platform/Qt/QtLabel.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>

/// A line is laid out as a whole, which for millions of characters takes seconds.
static QString clipped(QString const& text)
{
    constexpr qsizetype longest = 2000;
    return text.size() <= longest ? text : text.left(longest) + QChar(0x2026);
}

QtLabel::QtLabel(bool wraps)
{
    setTextFormat(Qt::PlainText);
    setWordWrap(wraps);
}

void QtLabel::show(QString const& text)
{
    m_wholeText = text;
    setText(clipped(text));
    textDidChange();
}

/// An interface description sets the text of any label.
QString QtLabel::wholeText() const
{
    return text() == clipped(m_wholeText) ? m_wholeText : text();
}

QString QtLabel::shownText() const
{
    return fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
}

void QtLabel::updateElision()
{
    QString const wanted = wordWrap() || shownText() == text() ? QString() : text();
    bool const hasAnother = !toolTip().isEmpty() && toolTip() != m_ownToolTip;
    if (wanted == m_ownToolTip || hasAnother) {
        return;
    }
    m_ownToolTip = wanted;
    setToolTip(wanted);
}

static QString nameInText(QString const& text)
{
    auto name = text.trimmed();
    if (name.endsWith(QLatin1Char(':'))
        || name.endsWith(QChar(0xff1a))) { // Chinese and Japanese have their own.
        name.chop(1);
    }
    return name.trimmed();
}

void QtLabel::name(QWidget& widget)
{
    m_named.append(&widget);
    widget.setAccessibleName(nameInText(text()));
}

void QtLabel::textDidChange()
{
    updateElision();
    for (auto const& widget : m_named) {
        if (widget) {
            widget->setAccessibleName(nameInText(text()));
        }
    }
}

QSize QtLabel::minimumSizeHint() const
{
    if (wordWrap()) {
        return QLabel::minimumSizeHint();
    }
    int const shortest = fontMetrics().horizontalAdvance(QStringLiteral("xx…"));
    return { qMin(shortest, QLabel::sizeHint().width()), QLabel::sizeHint().height() };
}

bool QtLabel::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip || event->type() == QEvent::FontChange) {
        updateElision();
    }
    return QLabel::event(event);
}

void QtLabel::paintEvent(QPaintEvent* event)
{
    if (wordWrap()) {
        QLabel::paintEvent(event);
        return;
    }
    QPainter painter(this);
    auto const flags = static_cast<int>(QStyle::visualAlignment(layoutDirection(), alignment()));
    style()->drawItemText(
        &painter, contentsRect(), flags, palette(), isEnabled(), shownText(), foregroundRole());
}

void QtLabel::resizeEvent(QResizeEvent* event)
{
    QLabel::resizeEvent(event);
    updateElision();
}
