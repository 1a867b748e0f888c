#pragma once

#include "Typloom/TyploomApp/TLEditState.h"

class QAction;
class QWidget;
class TLLayerActions;

/// The layers of the edited glyph: which there are, which is shown, and where it stands. A click on one
/// goes there.
class TLLayersPalette {
public:
    TLLayersPalette(std::shared_ptr<TLEditState> state, TLLayerActions const& actions);
    ~TLLayersPalette();
    TLLayersPalette(TLLayersPalette const&) = delete;

    QWidget* widget() const;
    /// Shows and hides the palette, for a menu; belongs to the widget.
    QAction* showAction() const;
    /// Brings rows and fields up to date. A hidden palette catches up when it is shown.
    void update();
    /// Called when Escape leads back to the edit view.
    void setCancelHandler(std::function<void()> handler);

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};
