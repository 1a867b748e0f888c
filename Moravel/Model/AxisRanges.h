#pragma once

#include "Moravel/Model/MoravelTableModel.h"
#include "Typloom/TyploomCore/TLGlyph.h"

#include <span>

/// Design units. A landmark this near to a value stands at that value.
inline constexpr double landmarkTolerance = 0.001;
/// Design units. A font axis of a smaller span leads nowhere.
inline constexpr double minimumFontAxisSpan = 0.01;

/// What a row can be moved over, in design coordinates.
struct AxisRange {
    double lower { 0 };
    double fallback { 0 }; ///< The axis default; may lie outside the bounds.
    double upper { 0 };
    bool operator==(AxisRange const&) const = default;

    double span() const;
};

/// A font axis reaches from its lowest to its highest landmark; without landmarks it is the default alone.
/// The default stays as it is, even outside the landmarks.
AxisRange fontAxisRange(std::span<double const> landmarks, double defaultValue);

/// The default of a glyph axis: the default layer's own place where it has one, else the axis's default.
double glyphAxisDefault(TLAxis const& axis, TLLayer const* defaultLayer);

/// The list of three values that a row's content holds.
std::vector<double> rangeList(AxisRange const& range);

/// The range that a row's content stands for: its three values, otherwise the axis's default alone.
AxisRange rangeOfRowContent(RowContent const& content);

/// Whether a row can be moved at all. On a font axis the span decides, on a glyph axis whether any
/// landmark differs from the default.
bool isUsable(Section section, AxisRange const& range, std::optional<std::vector<double>> const& landmarks);

/// How many digits a value shows after the decimal separator, on an axis of that span.
int fractionDigitsForSpan(double span);
