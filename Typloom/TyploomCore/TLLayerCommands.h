#pragma once

#include "Typloom/TyploomCore/TLFont.h"

/// What a command on layers does to a document. Each is one step of the history.

struct TLAddedLayer {
    std::shared_ptr<TLLayer> layer; ///< Null when none was added.
    std::string problem {}; ///< Why not, a sentence; otherwise empty.
};

/// Adds an intermediate layer at a place (design coordinates) that looks as the glyph does there. It has a
/// coordinate on every axis of the font, the default where the place names none, and on those axes of
/// the glyph's own on which the place is away from the default. It belongs to the master that stands there on
/// the font's axes, otherwise to the given one, and if there is no such master to the nearest.
///
/// Where an intermediate layer stands already none is added, but for a master's place: there a layer waits
/// for its coordinate on an axis of the glyph's own. None is added either where the master's files can't hold
/// it.
TYPLOOM_API TLAddedLayer TLAddIntermediateLayer(
    TLGlyph& glyph, TLLocation const& place, std::string_view masterId);

/// Why a layer cannot be deleted, a sentence; none when it can be.
TYPLOOM_API std::optional<std::string> TLReasonAgainstDeletingLayer(TLLayer const& layer);

/// Deletes a layer; one that can't be deleted stays.
TYPLOOM_API void TLDeleteLayer(TLLayer const& layer);

/// Moves an intermediate layer along one axis, on the font's axes no further than they reach. None takes
/// its coordinate on an axis of the glyph's own away. A name that says the layer's place follows
/// until it has been saved. False when nothing was done: for other layers, other axes, and what is no
/// finite number.
TYPLOOM_API bool TLSetLayerCoordinate(TLLayer& layer, std::string const& axisId, std::optional<double> value);
