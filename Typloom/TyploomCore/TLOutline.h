#pragma once

#include <array>
#include <map>
#include <optional>
#include <string>
#include <vector>

enum class TLPointType { move, line, curve, qcurve, offcurve };

/// A point of a contour, in font units.
struct TLPoint {
    double x { 0 };
    double y { 0 };
    TLPointType type { TLPointType::line };
    bool smooth { false };
    std::string name {}; ///< Usually empty.
    bool operator==(TLPoint const&) const = default;
};

/// Points in file order. A first point of type `move` makes the contour open; otherwise it is
/// closed, and may start with off-curve points, which belong to its last segment.
struct TLContour {
    std::vector<TLPoint> points;
    bool operator==(TLContour const&) const = default;
};

/// Another glyph, set into this one.
/// transform: xScale, xyScale, yxScale, yScale, xOffset, yOffset;
/// x' = xScale x + yxScale y + xOffset, y' = xyScale x + yScale y + yOffset.
struct TLComponent {
    std::string base;
    std::array<double, 6> transform { 1, 0, 0, 1, 0, 0 };
    /// Of a variable component: axis name to design coordinate, for the base's axes.
    std::map<std::string, double> location {};
    bool isVariable { false };
    bool operator==(TLComponent const&) const = default;
};

struct TLAnchor {
    std::string name;
    double x { 0 };
    double y { 0 };
    bool operator==(TLAnchor const&) const = default;
};

/// What a layer draws, in font units.
struct TLOutline {
    double advance { 0 };
    double height { 0 };
    std::vector<TLContour> contours;
    std::vector<TLComponent> components;
    std::vector<TLAnchor> anchors;
    bool operator==(TLOutline const&) const = default;
};
