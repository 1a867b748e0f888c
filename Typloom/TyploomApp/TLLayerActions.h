#pragma once

#include "Typloom/TyploomApp/TLEditState.h"

class QAction;
class QWidget;

/// The commands on the layers of the edited glyph as actions, for menus and buttons of its window.
class TLLayerActions {
public:
    /// The actions, and the dialogs in which they ask and tell, belong to that window.
    TLLayerActions(std::shared_ptr<TLEditState> state, QWidget& window);
    TLLayerActions(TLLayerActions const&) = delete;

    /// Adds an intermediate layer where the view stands, and shows it.
    QAction* addAction() const { return m_add; }
    /// Deletes the shown layer after a question.
    QAction* deleteAction() const { return m_delete; }
    /// Brings states and tool tips of the actions up to date.
    void update();

private:
    void addLayer();
    void askToDelete();
    std::shared_ptr<TLLayer> shownLayer() const; ///< Null when none is shown.

    std::shared_ptr<TLEditState> m_state;
    QWidget& m_window;
    QAction* m_add;
    QAction* m_delete;
};
