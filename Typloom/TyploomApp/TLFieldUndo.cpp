#include "Typloom/TyploomApp/TLFieldUndo.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>

namespace {

enum class Command { none, undo, redo };

Command commandOf(QKeyEvent const& event)
{
    if (event.modifiers() == Qt::ControlModifier && event.key() == Qt::Key_Z) {
        return Command::undo;
    }
    bool const isRedo = event.modifiers() == (Qt::ControlModifier | Qt::ShiftModifier)
        ? event.key() == Qt::Key_Z
        : event.modifiers() == Qt::ControlModifier && event.key() == Qt::Key_Y;
    return isRedo ? Command::redo : Command::none;
}

class FieldUndo final : public QObject {
public:
    using QObject::QObject;

    /// The toolkit's fields claim these keys always, and know one of the two for redo.
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::FocusIn) {
            forgetEarlierTyping(watched, static_cast<QFocusEvent&>(*event).reason());
            return false;
        }
        bool const asks = event->type() == QEvent::ShortcutOverride;
        auto* const field
            = asks || event->type() == QEvent::KeyPress ? qobject_cast<QLineEdit*>(watched) : nullptr;
        auto const command = field ? commandOf(static_cast<QKeyEvent&>(*event)) : Command::none;
        if (command == Command::none) {
            return false;
        }
        bool const isUndo = command == Command::undo;
        bool const isOfField = isUndo ? field->isUndoAvailable() : field->isRedoAvailable();
        event->setAccepted(isOfField);
        if (isOfField && !asks) {
            isUndo ? field->undo() : field->redo();
        }
        return true;
    }

private:
    /// What was typed before the user left the field has long been taken.
    static void forgetEarlierTyping(QObject* watched, Qt::FocusReason reason)
    {
        auto* const field = qobject_cast<QLineEdit*>(watched);
        bool const wasLeft = reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason
            && reason != Qt::MenuBarFocusReason;
        if (field && wasLeft && field->isUndoAvailable()) {
            field->setText(field->text());
        }
    }
};

} // namespace

void TLInstallFieldUndo()
{
    static QPointer<FieldUndo> installed;
    if (!installed) {
        installed = new FieldUndo(qApp);
        qApp->installEventFilter(installed);
    }
}
