#include "Platform/Qt/QtButton.h"

#include "Platform/Qt/DrawingConversions.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyleOptionButton>

#include <algorithm>

QtButton::QtButton()
{
    setFocusPolicy(Qt::TabFocus);
    setAutoDefault(false);
    setAttribute(Qt::WA_Hover);
}

void QtButton::setBezel(NSBezelStyle bezel)
{
    m_bezel = bezel;
    updateGeometry();
    update();
}

void QtButton::setDestructive(bool destructive)
{
    m_isDestructive = destructive;
    update();
}

void QtButton::setControlSize(int size)
{
    m_controlSize = static_cast<NSControlSize>(size);
    updateGeometry();
    update();
}

int QtButton::sideLength() const
{
    bool const isHelp = m_bezel == NSBezelStyle::helpButton;
    switch (m_controlSize) {
    case NSControlSize::mini:
        return isHelp ? 15 : 16;
    case NSControlSize::small:
        return isHelp ? 18 : 20;
    case NSControlSize::regular:
        break;
    }
    return isHelp ? 21 : 24;
}

QSize QtButton::sizeHint() const
{
    int const side = sideLength();
    if (m_bezel == NSBezelStyle::helpButton || (!icon().isNull() && text().isEmpty())) {
        return { side, side };
    }
    if (m_bezel == NSBezelStyle::borderless) {
        int const symbolWidth = icon().isNull() ? 0 : side;
        return { fontMetrics().horizontalAdvance(text()) + symbolWidth + 12,
            std::max(side, fontMetrics().height() + 4) };
    }
    auto hint = QPushButton::sizeHint();
    if (m_controlSize != NSControlSize::regular) {
        hint.setHeight(std::max(side, fontMetrics().height() + 4));
    }
    return hint;
}

bool QtButton::hitButton(QPoint const& place) const
{
    return rect().contains(place);
}

bool QtButton::event(QEvent* event)
{
    bool const hasOwnName = !text().isEmpty() || accessibleName() != m_nameFromToolTip;
    if (event->type() == QEvent::ToolTipChange && !hasOwnName) {
        m_nameFromToolTip = toolTip();
        setAccessibleName(m_nameFromToolTip);
    }
    return QPushButton::event(event);
}

void QtButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    switch (m_bezel) {
    case NSBezelStyle::helpButton:
        paintHelp(painter);
        break;
    case NSBezelStyle::borderless:
        paintBorderless(painter);
        break;
    case NSBezelStyle::rounded:
        paintRounded(painter);
        break;
    }
    if (hasFocus() && m_bezel != NSBezelStyle::rounded) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), 1.5));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 4, 4);
    }
}

void QtButton::paintRounded(QPainter& painter)
{
    QStyleOptionButton option;
    initStyleOption(&option);
    if (m_isDestructive) {
        for (auto const group : { QPalette::Active, QPalette::Inactive }) {
            option.palette.setColor(group, QPalette::ButtonText, toQColor(NSColor::systemRedColor()));
        }
    }
    style()->drawControl(QStyle::CE_PushButton, &option, &painter, this);
}

/// The text colour, made lighter: for what lies under a text or around it.
static QColor faintText(QWidget const& widget, double opacity)
{
    auto color = widget.palette().color(QPalette::WindowText);
    color.setAlphaF(static_cast<float>(opacity));
    return color;
}

void QtButton::paintHelp(QPainter& painter)
{
    double const side = std::min({ width(), height(), sideLength() }) - 1;
    QRectF const circle((width() - side) / 2, (height() - side) / 2, side, side);
    painter.setPen(QPen(faintText(*this, underMouse() && isEnabled() ? 0.6 : 0.35), 1));
    painter.setBrush(isDown() ? QBrush(faintText(*this, 0.2)) : palette().brush(QPalette::Button));
    painter.drawEllipse(circle);
    auto font = this->font();
    font.setPixelSize(std::max(8, static_cast<int>(side * 0.7)));
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(palette().color(QPalette::ButtonText));
    painter.drawText(circle, Qt::AlignCenter, QStringLiteral("?"));
}

void QtButton::paintBorderless(QPainter& painter)
{
    if (isEnabled() && (isDown() || underMouse())) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(faintText(*this, isDown() ? 0.22 : 0.1));
        painter.drawRoundedRect(QRectF(rect()), 4, 4);
    }
    paintContent(painter);
}

void QtButton::paintContent(QPainter& painter)
{
    QRectF textRect(rect());
    auto const color = palette().color(QPalette::ButtonText);
    if (!icon().isNull()) {
        int const side = std::min({ width(), height(), sideLength() });
        int const left = text().isEmpty() ? (width() - side) / 2 : 4;
        QRect const square(left, (height() - side) / 2, side, side);
        QRect symbol({}, iconSize().boundedTo(square.size()));
        symbol.moveCenter(square.center());
        icon().paint(&painter, symbol, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
        textRect.setLeft(left + side);
    }
    painter.setPen(color);
    painter.drawText(textRect, Qt::AlignCenter | Qt::TextShowMnemonic, text());
}

void QtButton::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
        return;
    }
    QPushButton::keyPressEvent(event);
}
