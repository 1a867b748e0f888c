#pragma once

#include "Typloom/TyploomApp/TLGlyphDrawing.h"
#include "Typloom/TyploomApp/TLLineEditView.h"

/// One glyph object where it stands in the view.
struct TLLineEditView::PlacedGlyph {
    std::size_t index { 0 };
    double x { 0 }; ///< Of its origin, in the view.
    double advance { 0 }; ///< Font units.
    TLGlyphShapeCache::Shape shape; ///< Null for a glyph that could not be read.
};
