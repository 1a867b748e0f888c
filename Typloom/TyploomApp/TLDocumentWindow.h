#pragma once

#include "Typloom/TyploomCore/Export.h"
#include "Typloom/TyploomCore/TLLocation.h"
#include "Typloom/TyploomCore/TLOutline.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

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
    TLDocumentWindow(TLDocumentWindow const&) = delete;

    QWidget* widget() const; ///< The top-level widget.
    std::shared_ptr<TLFont> font() const; ///< Null in a window that invites to open a family.
    /// Shows a family in a window that has none. Later calls are ignored.
    void setFont(std::shared_ptr<TLFont> font);
    std::shared_ptr<TLEditViewController> editViewController() const; ///< Null without a family.
    std::shared_ptr<TLSidebar> sidebar() const; ///< Null without a family.

    /// Puts characters into the line; the first one's glyph is edited. A character without a glyph is left
    /// out.
    void setText(std::string const& text);
    /// Shows the glyph of that name alone in the line, edited; a box for one that cannot be read. False
    /// when the font has none.
    bool showGlyph(std::string const& name);
    /// The same in the line as it is, where the glyph is inserted at the cursor unless it is there already.
    bool editGlyph(std::string const& name);
    /// Goes where the sliders would lead: onto a master or intermediate layer that stands there, otherwise
    /// to the interpolation. Axes that the location does not name stand at their default.
    void goToLocation(TLLocation const& location);
    /// The master's name, the layer's name, or "Interpolated", as the window shows it. Where neither is
    /// true a sentence that begins "Nearest source".
    std::string stateText() const;
    /// The outline of the edited glyph as it is drawn: the layer's, or the interpolated one. None when
    /// no glyph is edited.
    std::optional<TLOutline> editedOutline() const;
    /// What the window lists: what could not be read, its own sentences first, then the family's; then notes.
    std::vector<std::string> report() const;
    void addToReport(std::string sentence);
    /// Tells the user one sentence in a dialog of the window.
    void showError(std::string const& sentence);

    /// Called with the file that the user chose or dropped.
    void setOpenHandler(std::function<void(std::filesystem::path const&)> handler);
    /// Called when the user has closed the window.
    void setCloseHandler(std::function<void()> handler);
    /// Called when the user wants the program to end.
    void setQuitHandler(std::function<void()> handler);
    /// Whether nothing is to be asked before the window closes: there are no unsaved changes, or the user has
    /// given them up.
    bool mayClose() const;
    /// Asks what is to become of unsaved changes. `then` is told whether the window may close; it does not.
    void askBeforeClosing(std::function<void(bool mayClose)> const& then);
    /// The user has not given up any changes after all.
    void forgetAnswer();
    /// Asks nothing; nor does destroying the window.
    void close();

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};
