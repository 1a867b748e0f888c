#pragma once

#include "Typloom/TyploomApp/TLTextLine.h"
#include "Typloom/TyploomCore/TLFont.h"
#include "Typloom/TyploomCore/TLInterpolationFontProxy.h"

#include <functional>
#include <set>

class TLNotificationObserver;

/// What one edit view shows: its text, the current master, the shown layers and the preview. View state:
/// nothing of it is saved or can be undone. What the document no longer has is given up before each
/// `TLUpdateInterface`: of a layer that is gone the current master's is shown in its place.
///
/// Every change leads to one `TLUpdateInterface`, however many come together.
class TYPLOOM_API TLEditState {
public:
    explicit TLEditState(std::shared_ptr<TLFont> font);
    ~TLEditState();
    TLEditState(TLEditState const&) = delete;

    std::shared_ptr<TLFont> const& font() const { return m_font; }
    TLTextLine const& line() const { return m_line; }
    /// Replaces the text. The current master and the preview stay.
    void setGlyphNames(std::vector<std::string> const& names, std::size_t cursor);
    /// Puts a glyph in the place of the edited one; at the cursor when none is edited.
    void showGlyphAtCursor(std::string const& name);
    /// Selects the first object of that glyph; where the line has none it is inserted at the cursor.
    void editGlyph(std::string const& name);
    /// Where another object becomes the edited one the view stays where it is in the design space:
    /// at the display location, at the master; from an intermediate layer it goes to the current master.
    /// An object that stands on an intermediate layer keeps it.
    void select(NSRange range);

    std::size_t masterIndex() const { return m_masterIndex; }
    std::shared_ptr<TLFontMaster> currentMaster() const; ///< Null in a font without masters.
    void setMasterIndex(std::size_t index);
    std::optional<TLLocation> const& axisLocation() const { return m_axisLocation; }
    void setAxisLocation(std::optional<TLLocation> location);
    void switchToLayer(std::string_view layerId, NSRange range);
    /// Onto the layer (with no glyph edited, the master) that stands there, otherwise to the preview. Axes
    /// that the location does not name stand at their default.
    void goToLocation(TLLocation const& location);

    std::shared_ptr<TLGlyph> const& editedGlyph() const { return m_editedGlyph; }
    /// The shown layer of the edited glyph, or the layer that stands for its preview.
    std::shared_ptr<TLLayer> const& activeLayer() const { return m_activeLayer; }
    /// The shown layer of the edited glyph if its drawing can be edited: null on an interpolation, and
    /// on a layer that could not be read.
    std::shared_ptr<TLLayer> editableLayer() const;
    /// Whether the edited glyph is drawn as an interpolation and not as one of its layers.
    bool showsInterpolation() const { return m_previewLayer != nullptr; }
    /// Where the edited glyph stands, on every axis that applies to it, in design coordinates.
    TLLocation place() const;
    /// The same on the font's axes alone: where the rest of the line is drawn.
    TLLocation fontPlace() const;

    /// Called after every change, before the interface update.
    void setObserver(std::function<void()> observer) { m_observer = std::move(observer); }

private:
    bool standsOnOwnLayer(TLGlyphObject const& object) const;
    void didChange();
    /// Follows the document, which may have changed in any way.
    void settleDocument();
    void settleMaster();
    void settleShownLayers();
    void settleAxisLocation();
    void settleView();
    void settleEditedGlyph();
    void settlePreviewMark();
    void settleActiveLayer();
    void ensurePreviewLayer();
    std::string const& currentMasterId() const { return m_masterId; }
    void rememberAxes();
    TLLocation previewPlace() const;
    /// Names the font axes that the place leaves open.
    void addCurrentMaster(TLLocation& place) const;

    std::shared_ptr<TLFont> m_font;
    TLTextLine m_line;
    std::size_t m_masterIndex { 0 };
    std::string m_masterId; ///< Masters can come and go before the current one. Empty without masters.
    std::optional<TLLocation> m_axisLocation;
    std::shared_ptr<TLInterpolationFontProxy> m_proxy;
    std::function<void()> m_observer;
    std::shared_ptr<TLNotificationObserver> m_documentObserver;

    // Worked out from what stands above, whenever that changes.
    std::shared_ptr<TLGlyph> m_editedGlyph;
    std::shared_ptr<TLLayer> m_activeLayer;
    std::shared_ptr<TLLayer> m_previewLayer; ///< Null while a layer of the glyph is shown.
    struct PreviewMark {
        std::shared_ptr<TLGlyph> glyph; ///< Null when no layer is marked.
        std::string layerId;
    };
    PreviewMark m_mark; ///< The layer that has been told to report the preview's place.
    std::set<std::string, std::less<>> m_knownAxes; ///< That the display location could name.
};
