#pragma once

#include "Typloom/TyploomApp/TLEditState.h"

class QWidget;

/// A field for the advance width of the layer that the edited glyph stands on. Empty on an interpolation.
class TLWidthField {
public:
    explicit TLWidthField(std::shared_ptr<TLEditState> state);
    ~TLWidthField();
    TLWidthField(TLWidthField const&) = delete;

    QWidget* widget() const;
    void update();
    /// Called when Escape leads back to the edit view.
    void setCancelHandler(std::function<void()> handler);

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};
