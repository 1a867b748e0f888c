#pragma once

#include "Typloom/TyploomCore/Export.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

class QAction;
class QWidget;
class TLEditState;

/// The window on what belongs to a family as a whole: its axes and its masters.
class TYPLOOM_API TLFontInfoWindow {
public:
    /// The window stands over its parent and goes with it. `commands` work in it too.
    TLFontInfoWindow(
        std::shared_ptr<TLEditState> state, QWidget& parent, std::vector<QAction*> const& commands);
    ~TLFontInfoWindow();
    TLFontInfoWindow(TLFontInfoWindow const&) = delete;

    QWidget* widget() const;
    /// Shows it in front of the others.
    void open();
    /// Takes what is being typed.
    void endEditing();
    /// Called with sentences on what a command could not do for every glyph.
    void setNoteHandler(std::function<void(std::vector<std::string> const&)> handler);

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};
