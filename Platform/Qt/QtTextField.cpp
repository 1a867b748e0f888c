#include "Platform/Qt/QtTextField.h"

#include <utility>

#include <QFocusEvent>
#include <QKeyEvent>
#include <QPointer>
#include <QToolTip>

static std::string_view selectorForKey(QKeyEvent const& event)
{
    if (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) {
        return {};
    }
    bool const shift = event.modifiers() & Qt::ShiftModifier;
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return "insertNewline:";
    case Qt::Key_Escape:
        return "cancelOperation:";
    case Qt::Key_Tab:
        return "insertTab:";
    case Qt::Key_Backtab:
        return "insertBacktab:";
    case Qt::Key_Up:
        return shift ? "moveUpAndModifySelection:" : "moveUp:";
    case Qt::Key_Down:
        return shift ? "moveDownAndModifySelection:" : "moveDown:";
    default:
        return {};
    }
}

QSize QtTextField::sizeHint() const
{
    auto const hint = QLineEdit::sizeHint();
    if (property("formatter").toString() != "number") {
        return hint;
    }
    constexpr int frame = 16;
    return { fontMetrics().horizontalAdvance(QStringLiteral("00000")) + frame, hint.height() };
}

bool QtTextField::showsWholeText() const
{
    constexpr int frame = 8;
    return fontMetrics().horizontalAdvance(text()) <= width() - frame;
}

bool QtTextField::sendCommand(std::string_view selector)
{
    auto const command = hooks.command; // The hooks go when the command ends the field.
    return command && command(selector);
}

bool QtTextField::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty() && !showsWholeText()) {
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), text().toHtmlEscaped(), this);
        return true;
    }
    // The toolkit moves the focus at Tab before it asks the widget's key handler.
    if (event->type() == QEvent::KeyPress) {
        auto const selector = selectorForKey(static_cast<QKeyEvent&>(*event));
        bool const isTab = selector == "insertTab:" || selector == "insertBacktab:";
        if (isTab && sendCommand(selector)) {
            event->accept();
            return true;
        }
    }
    return QLineEdit::event(event);
}

void QtTextField::keyPressEvent(QKeyEvent* event)
{
    auto const selector = selectorForKey(*event);
    if (selector.empty()) {
        QLineEdit::keyPressEvent(event);
    } else if (sendCommand(selector)) {
        event->accept();
    } else {
        event->ignore();
    }
}

void QtTextField::focusInEvent(QFocusEvent* event)
{
    QLineEdit::focusInEvent(event);
    if (m_hasKeyboard) {
        return;
    }
    m_hasKeyboard = true;
    m_selectsAllOnRelease = event->reason() == Qt::MouseFocusReason;
    selectAll();
}

void QtTextField::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    if (!isVisible() || !isEnabled()) {
        takeAway();
        return;
    }
    // Another window in front, or a menu, does not end the editing.
    auto const reason = event->reason();
    if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason
        || reason == Qt::MenuBarFocusReason) {
        return;
    }
    m_hasKeyboard = false;
    deselect();
    QPointer<QtTextField> const stillThere = this;
    if (auto const left = hooks.left) {
        left();
    }
    if (stillThere) {
        home(false); // Of a long text the beginning is shown.
    }
}

void QtTextField::takeAway()
{
    m_hasKeyboard = false;
    if (auto const takenAway = hooks.takenAway) {
        takenAway();
    }
}

void QtTextField::hideEvent(QHideEvent* event)
{
    QLineEdit::hideEvent(event);
    if (!event->spontaneous()) { // Not with a window that is minimised.
        takeAway();
    }
}

void QtTextField::changeEvent(QEvent* event)
{
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::EnabledChange && !isEnabled()) {
        takeAway();
    }
}

void QtTextField::mouseReleaseEvent(QMouseEvent* event)
{
    QLineEdit::mouseReleaseEvent(event);
    // The press that brought the keyboard has put the cursor under the pointer.
    if (std::exchange(m_selectsAllOnRelease, false) && !hasSelectedText()) {
        selectAll();
    }
}
