#pragma once

#include "Platform/AppKit/CGContext.h"
#include "Typloom/TyploomApp/TLGlyphShape.h"
#include "Typloom/TyploomApp/TLNodeSelection.h"
#include "Typloom/TyploomCore/TLFontMaster.h"

/// Where font units come to stand in a view: x to the right, y upwards from the baseline.
struct TLGlyphTransform {
    NSPoint origin; ///< The glyph's origin, in the view.
    double scale { 1 }; ///< Points for one font unit.

    NSPoint toView(double x, double y) const { return { origin.x + x * scale, origin.y - y * scale }; }
    NSPoint toUnits(NSPoint place) const
    {
        return { (place.x - origin.x) / scale, (origin.y - place.y) / scale };
    }
};

/// Whether a glyph's components are told from contours of its own.
enum class TLComponentFill { likeContours, tinted };

/// A glyph beside the edited one, or one that is an interpolation: filled.
void TLDrawFilledGlyph(CGContext& context, TLGlyphShape const& shape, TLGlyphTransform const& transform,
    TLComponentFill componentFill);

/// A glyph on a layer that can be edited: its outline lightly filled, with nodes and handles, those that
/// are selected standing out. Points out of `visible` (in the view) are left out.
void TLDrawEditableGlyph(CGContext& context, TLGlyphShape const& shape, TLGlyphTransform const& transform,
    NSRect visible, TLNodeSelection const& selection);

/// A box that is being drawn around points; in font units.
void TLDrawSelectionBox(CGContext& context, NSRect box, TLGlyphTransform const& transform);

/// The vertical metrics and the side bearings of the edited glyph, in thin lines.
void TLDrawMetrics(CGContext& context, TLFontMaster::Metrics const& metrics, double advance,
    TLGlyphTransform const& transform);

/// What stands for a glyph that could not be read.
void TLDrawMissingGlyph(CGContext& context, TLFontMaster::Metrics const& metrics, double advance,
    TLGlyphTransform const& transform);
