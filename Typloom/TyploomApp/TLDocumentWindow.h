#pragma once

#include "Typloom/TyploomCore/Export.h"
#include "Typloom/TyploomCore/TLLocation.h"

#include <filesystem>
#include <memory>
#include <string>

class QWidget;
class TLFont;
class TLEditViewController;
class TLSidebar;

/// One window on one family: the sidebar on the left, the edit view in the centre, the pickers for
/// master, glyph and text above it, and the line that says where the view stands.
class TYPLOOM_API TLDocumentWindow {
public:
    /// A null font makes a window that invites to open one.
    explicit TLDocumentWindow(std::shared_ptr<TLFont> font);
    ~TLDocumentWindow();

    QWidget* widget() const; ///< The top-level widget.
    std::shared_ptr<TLFont> font() const;
    std::shared_ptr<TLEditViewController> editViewController() const;
    std::shared_ptr<TLSidebar> sidebar() const;

    /// Puts characters into the line; the first one's glyph is edited. A character without a glyph is left out.
    void setText(std::string const& text);
    /// Shows the glyph of that name alone in the line, edited. False when the font has none.
    bool showGlyph(std::string const& name);
    /// Goes where the sliders would lead: onto a master or intermediate layer that stands there, otherwise
    /// to the interpolation. Axes that the location does not name stand at their default.
    void goToLocation(TLLocation const& location);
    /// "Bold", "Intermediate layer …" or "Interpolated", as the window shows it.
    std::string stateText() const;

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};
