#pragma once

#include "Platform/AppKit/NSGeometry.h"
#include "Typloom/TyploomCore/Export.h"
#include "Typloom/TyploomCore/TLOutline.h"

#include <compare>
#include <cstddef>
#include <set>

/// A point of an outline: an on-curve node or a handle.
struct TLNodeIndex {
    std::size_t contour { 0 };
    std::size_t point { 0 };
    auto operator<=>(TLNodeIndex const&) const = default;
};

using TLNodeSelection = std::set<TLNodeIndex>;

/// The point nearest to a place, no farther away than `reach` (font units); of a node and a handle at
/// nearly one place the node.
TYPLOOM_API std::optional<TLNodeIndex> TLNodeAtPlace(TLOutline const& outline, NSPoint place, double reach);

TYPLOOM_API TLNodeSelection TLNodesInRect(TLOutline const& outline, NSRect rect);

/// The part of a selection that the outline has.
TYPLOOM_API TLNodeSelection TLFittingNodes(TLNodeSelection selection, TLOutline const& outline);

/// The outline with the selected points moved. The handles beside a node go with it; where one handle of
/// a smooth node is moved the other turns, and keeps its length.
TYPLOOM_API TLOutline TLOutlineWithMovedNodes(
    TLOutline outline, TLNodeSelection const& selection, NSPoint delta);
