#pragma once

#include "Typloom/TyploomCore/TLFont.h"

/// What a glyph looks like at a place of the design space.
struct TLInterpolatedOutline {
    TLOutline outline;
    /// Why this is the nearest source and no interpolation, a sentence; none when all is well.
    std::optional<std::string> problem;
    std::string reason {}; ///< The clause of `problem` that says why; empty when all is well.
    std::string nearestSource {}; ///< Name of the source that is shown for that reason; can be empty.
    /// Where outlines do not fit together: a sentence on the glyph, the same at every place. Otherwise empty.
    std::string misfit {};
};

/// The glyph's own outline at a place (design coordinates; axes that the place does not name stand
/// at their default). On a source's place the source's outline bit by bit. Where the sources'
/// outlines do not fit together, or there is no source at the default: the nearest source and why.
TYPLOOM_API TLInterpolatedOutline TLInterpolateGlyph(TLGlyph const& glyph, TLLocation const& location);

/// An outline with every component, nested ones too, replaced by its contours at the same place.
/// A missing base or a cycle leaves the component out and adds a sentence to `problems`, and so does a
/// base whose outlines do not fit together. What is so at this place alone adds none.
TYPLOOM_API std::vector<TLContour> TLDecomposedContours(TLFont const& font, std::string_view glyphName,
    TLOutline const& outline, TLLocation const& location, std::vector<std::string>& problems);

/// Counts what interpolation did since the program started; for tests and benchmarks.
struct TLInterpolationCounters {
    std::size_t modelsBuilt { 0 };
    std::size_t glyphsInterpolated { 0 };
};
TYPLOOM_API TLInterpolationCounters const& TLInterpolationCountersNow();
