#pragma once

#include "Platform/AppKit/CGPath.h"
#include "Typloom/TyploomCore/TLInterpolation.h"

#include <functional>

/// Why the nearest source is drawn in the place of an interpolation.
struct TLDrawingProblem {
    std::string reason; ///< A clause.
    std::string nearestSource; ///< Its name; empty when what is drawn is none's.
    bool operator==(TLDrawingProblem const&) const = default;
};

/// A glyph ready to be drawn. Paths are in font units, y upwards.
struct TLGlyphShape {
    TLOutline outline; ///< As it is drawn.
    CGPath contours;
    CGPath components;
    std::optional<TLDrawingProblem> problem; ///< None for a layer, and for an interpolation that is one.
    double advance { 0 }; ///< For laying out: never negative.
};

/// The contours as a path. Numbers far beyond any font are brought to where the toolkit can draw them.
TYPLOOM_API CGPath TLPathForContours(std::vector<TLContour> const& contours);

/// Shapes of the glyphs of one line, kept while the glyph stands still.
class TYPLOOM_API TLGlyphShapeCache {
public:
    explicit TLGlyphShapeCache(std::shared_ptr<TLFont> font);

    using Shape = std::shared_ptr<TLGlyphShape const>;
    /// The glyph at a place of its design space. The last place asked for is kept.
    Shape interpolated(TLGlyph const& glyph, TLLocation const& place);
    /// A layer as it is; its components are drawn at the place.
    Shape ofLayer(TLLayer const& layer, TLLocation const& place);
    /// Forgets all shapes: the document may have changed.
    void clear() { m_entries.clear(); }

private:
    Shape shapeOf(std::string const& glyphName, TLInterpolatedOutline outline, TLLocation const& place) const;
    Shape kept(std::string key, TLLocation const& place, std::function<Shape()> const& make);

    struct Entry {
        TLLocation place;
        Shape shape;
    };
    std::shared_ptr<TLFont> m_font;
    std::map<std::string, Entry> m_entries;
};
