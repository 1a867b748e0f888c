#pragma once

#include "Typloom/TyploomApp/TLEditState.h"
#include "Typloom/TyploomApp/TLGlyphShape.h"
#include "Typloom/TyploomApp/TLNodeEditor.h"

class CGContext;
struct TLGlyphTransform;

/// Draws the line of an edit view around the edited glyph, and takes mouse, wheel and keys. Where the edited
/// glyph stands on a layer, its nodes and its advance width can be dragged.
///
/// The line hangs on the edited glyph: its centre has a fixed place on screen, whatever its width
/// does, until the user scrolls or edits another glyph.
class TYPLOOM_API TLLineEditView final : public TLGlyphEditView {
public:
    explicit TLLineEditView(std::shared_ptr<TLEditState> state);

    std::optional<TLLocation> axisLocation() const override { return m_state->axisLocation(); }
    void setAxisLocation(std::optional<TLLocation> location) override;
    NSRange selectedRange() const override { return m_state->line().selectedRange(); }
    void switchToLayerWithId(std::string_view layerId, std::optional<std::string> const& associatedMasterId,
        NSRange range) override;

    /// Moves the selection. What becomes edited stays where it is on screen.
    void select(NSRange range);
    /// Brings the edited glyph to the middle of the view.
    void centreEditedGlyph();
    void zoomBy(double factor, NSPoint about);
    /// The scale at which the line fits the view's height; it follows the view's size until the next zoom.
    void zoomToFit();
    double scale() const; ///< Points for one font unit.

    /// The advance of that object, from ascender to descender, in the view; none for one out of sight.
    std::optional<NSRect> frameOfObject(std::size_t index) const;
    /// Null when no glyph is edited, and for one that could not be read on its layer. Interpolates, where
    /// that has not been done yet.
    TLGlyphShapeCache::Shape editedShape() const;
    /// Why the nearest source is drawn in the place of an interpolation, as far as it has been drawn.
    std::optional<TLDrawingProblem> knownProblem() const;
    /// Draws the edited glyph as far as that is needed to bring `knownProblem` up to date.
    void noticeProblem();
    /// Called on a later turn of the main queue after drawing found that `knownProblem` is another.
    void setProblemObserver(std::function<void()> observer) { m_problemObserver = std::move(observer); }
    /// Draws everything anew: the document may have changed.
    void documentDidChange();

    void drawRect(NSRect dirty) override;
    void mouseDown(NSEvent const& event) override;
    void mouseDragged(NSEvent const& event) override;
    void mouseUp(NSEvent const& event) override;
    void mouseMoved(NSEvent const& event) override;
    void scrollWheel(NSEvent const& event) override;
    void keyDown(NSEvent const& event) override;
    void didChangeFirstResponder() override { setNeedsDisplay(true); }

private:
    struct PlacedGlyph;
    std::vector<PlacedGlyph> placedGlyphs() const;
    PlacedGlyph placedGlyph(std::size_t index, TLLocation const& fontPlace) const;
    TLGlyphShapeCache::Shape shapeOfObject(std::size_t index, TLLocation const& fontPlace) const;
    bool hasUnreadableLayerHere(TLGlyph const& glyph) const;
    TLFontMaster::Metrics metrics() const;
    NSPoint baseline() const;
    NSRect frameOf(PlacedGlyph const& placed) const;

    void drawSelection(CGContext& context, std::vector<PlacedGlyph> const& placed) const;
    void drawEditedGlyph(CGContext& context, PlacedGlyph const& placed, NSRect dirty) const;
    void drawCursor(CGContext& context) const;

    TLGlyphTransform editedTransform() const;
    bool pressInEditedGlyph(NSEvent const& event, std::optional<std::size_t> indexThere);
    bool takeNodeKey(NSEvent const& event);
    /// Lets the node editor do something; the glyph's origin stays where it is on screen.
    void edit(std::function<void()> const& change);
    void showCursorFor(TLNodeEditor::Grip grip);

    void moveCursor(std::size_t location);
    void revealEditedGlyph();
    void scrollBy(NSPoint delta);

    std::shared_ptr<TLEditState> m_state;
    mutable TLGlyphShapeCache m_shapes;
    NSPoint m_anchor; ///< Of the edited glyph's centre, from the view's centre, in points.
    std::optional<double> m_zoom; ///< Points for one font unit; none: to fit.
    std::function<void()> m_problemObserver;
    TLNodeEditor m_nodes;
    NSPoint m_pressPlace; ///< In the view.
    bool m_isDrag { false }; ///< Whether the mouse has left the place of the press.
    struct DrawnGlyph {
        std::string name;
        std::optional<TLDrawingProblem> problem;
    };
    DrawnGlyph m_lastDrawn; ///< Of the edited glyphs.
};
