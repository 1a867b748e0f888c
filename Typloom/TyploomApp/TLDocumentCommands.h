#pragma once

#include "Typloom/TyploomCore/TLFont.h"

class QAction;
class QWidget;

/// The commands on a family's document as actions, for the menus of its windows.
///
/// They leave a drag alone that is going on, and text fields keep their keys for what is typed in them.
class TLDocumentCommands {
public:
    /// The actions belong to that window.
    TLDocumentCommands(std::shared_ptr<TLFont> font, QWidget& window);
    TLDocumentCommands(TLDocumentCommands const&) = delete;

    QAction* undoAction() const { return m_undo; }
    QAction* redoAction() const { return m_redo; }
    /// Called before a command, to take what is being typed in the windows on the document.
    void setFieldEditingEnder(std::function<void()> endFieldEditing)
    {
        m_endFieldEditing = std::move(endFieldEditing);
    }
    /// Ends what is being edited in popovers and fields, as a click outside does: what follows is a step
    /// of its own.
    void endEditing() const;
    /// Brings titles and states of the actions up to date.
    void update();

private:
    void perform(void (TLDocumentHistory::*operation)());

    std::shared_ptr<TLFont> m_font;
    QAction* m_undo;
    QAction* m_redo;
    std::function<void()> m_endFieldEditing;
    std::shared_ptr<NSObject> m_popoverObserver;
};
