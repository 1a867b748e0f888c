#pragma once

#include "Typloom/TyploomCore/TLOutline.h"

#include <span>

/// What interpolation adds up of an outline: advance, height, coordinates of points, matrices of
/// components, and, last, coordinates of anchors.
std::vector<double> outlineNumbers(TLOutline const& outline);

/// An outline of the same shape with other numbers, in the order that `outlineNumbers` gives them. The
/// anchors' may be absent: then it has no anchors.
TLOutline outlineWithNumbers(TLOutline const& shape, std::span<double const> numbers);

/// How many of an outline's numbers belong to anchors.
std::size_t countOfAnchorNumbers(TLOutline const& outline);

/// Why two outlines do not fit together, as half a sentence; none when they do: when they have the
/// same contours, points of the same types, and components of the same bases. Anchors and
/// smoothness do not count.
std::optional<std::string> shapeDifference(TLOutline const& left, TLOutline const& right);

/// Whether both have anchors of the same names in the same order.
bool haveSameAnchors(TLOutline const& left, TLOutline const& right);
