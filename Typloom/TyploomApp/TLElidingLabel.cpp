#include "Typloom/TyploomApp/TLElidingLabel.h"

#include "Typloom/TyploomApp/TLAccessibleRoles.h"

#include <QPainter>
#include <QStyle>

TLElidingLabel::TLElidingLabel()
{
    setTextFormat(Qt::PlainText);
}

void TLElidingLabel::showText(QString const& shown)
{
    if (text() != shown) {
        TLSetTextOfNamedLine(*this, shown);
        setToolTip(shown.toHtmlEscaped());
    }
}

QSize TLElidingLabel::minimumSizeHint() const
{
    auto const shortest = fontMetrics().horizontalAdvance(QStringLiteral("xxxx…"));
    return { std::min(shortest, sizeHint().width()), QLabel::minimumSizeHint().height() };
}

void TLElidingLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    auto const flags = static_cast<int>(QStyle::visualAlignment(layoutDirection(), alignment()));
    auto const shown = fontMetrics().elidedText(text(), Qt::ElideRight, width());
    style()->drawItemText(&painter, rect(), flags, palette(), isEnabled(), shown, foregroundRole());
}
