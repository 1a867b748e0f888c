#include "Typloom/TyploomApp/TLNumberField.h"

#include "Platform/AppKit/KeyStep.h"
#include "Platform/Foundation/NSNumberFormatter.h"
#include "Platform/Qt/Conversions.h"

#include <QKeyEvent>

#include <algorithm>
#include <cmath>

namespace {

NSNumberFormatter const& formatter()
{
    static NSNumberFormatter const& formatter = []() -> NSNumberFormatter const& {
        static NSNumberFormatter made;
        made.setMaximumFractionDigits(3);
        return made;
    }();
    return formatter;
}

QString textOf(std::optional<double> value)
{
    return value ? toQString(formatter().stringFromNumber(*value).value_or(std::string())) : QString();
}

} // namespace

TLNumberField::TLNumberField(QWidget* parent)
    : QLineEdit(parent)
{
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
}

TLNumberField::~TLNumberField()
{
    didChange = nullptr; // The toolkit takes the focus out of a dying field.
    didCancel = nullptr;
}

void TLNumberField::setRange(double minimum, double maximum)
{
    m_minimum = minimum;
    m_maximum = maximum;
}

void TLNumberField::setValue(std::optional<double> value)
{
    if (value == m_value) {
        return;
    }
    m_value = value;
    if (!isModified()) {
        showValue();
    }
}

void TLNumberField::showValue()
{
    auto const text = textOf(m_value);
    setModified(false);
    if (text != this->text() || isUndoAvailable()) { // What has been taken is no longer the field's to undo.
        bool const wasSelected = hasFocus() && selectedText() == this->text();
        setText(text);
        if (wasSelected) {
            selectAll();
        } else if (!hasFocus()) {
            home(false); // Of a long number the beginning is shown.
        }
    }
}

TLNumberField::Typed TLNumberField::typed() const
{
    if (m_allowsNone && text().trimmed().isEmpty()) {
        return { true };
    }
    auto const number = formatter().numberFromString(fromQString(text()));
    return { number.has_value(), number };
}

void TLNumberField::commit()
{
    if (!isModified()) {
        return;
    }
    auto const [isValue, value] = typed();
    bool const differs = isValue && text() != textOf(m_value);
    setModified(false);
    differs ? take(value) : showValue();
}

void TLNumberField::take(std::optional<double> value)
{
    if (value != m_value && didChange) {
        didChange(value); // The owner shows what became of it.
    }
    showValue();
}

void TLNumberField::revert()
{
    setModified(true);
    showValue();
}

void TLNumberField::step(double direction, bool big)
{
    auto const typedNumber = isModified() ? typed().value : m_value;
    auto const start = typedNumber ? typedNumber : m_value;
    if (!start) {
        return;
    }
    auto const span = std::isfinite(m_maximum - m_minimum) ? m_maximum - m_minimum
                                                           : std::numeric_limits<double>::infinity();
    // Sums of tenths gather noise in the last digits.
    auto const target = std::round((*start + direction * keyStep(span, big)) * 1e6) / 1e6;
    setModified(false);
    take(m_minimum <= m_maximum ? std::clamp(target, m_minimum, m_maximum) : target);
    selectAll();
}

void TLNumberField::keyPressEvent(QKeyEvent* event)
{
    bool const big = event->modifiers().testFlag(Qt::ShiftModifier);
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        commit();
        selectAll();
        return;
    case Qt::Key_Escape:
        if (isModified()) {
            revert();
            selectAll();
        } else if (didCancel) {
            didCancel();
        }
        return;
    case Qt::Key_Up:
        return step(1, big);
    case Qt::Key_Down:
        return step(-1, big);
    default:
        QLineEdit::keyPressEvent(event);
    }
}

void TLNumberField::focusInEvent(QFocusEvent* event)
{
    QLineEdit::focusInEvent(event);
    if (event->reason() == Qt::MouseFocusReason) {
        QMetaObject::invokeMethod(this, &QLineEdit::selectAll, Qt::QueuedConnection); // After the press.
    } else {
        selectAll();
    }
}

void TLNumberField::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason) {
        commit();
    }
}
