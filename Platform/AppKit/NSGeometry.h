#pragma once

/// Lengths and places are in points; y grows downwards in every view.
struct NSPoint {
    double x { 0 };
    double y { 0 };
    bool operator==(NSPoint const&) const = default;
};

struct NSSize {
    double width { 0 };
    double height { 0 };
    bool operator==(NSSize const&) const = default;
};

struct NSRect {
    NSPoint origin;
    NSSize size;
    bool operator==(NSRect const&) const = default;

    double maxX() const { return origin.x + size.width; }
    double maxY() const { return origin.y + size.height; }
    double midY() const { return origin.y + size.height / 2; }
    NSRect insetBy(double dx, double dy) const
    {
        return { { origin.x + dx, origin.y + dy }, { size.width - 2 * dx, size.height - 2 * dy } };
    }
    bool contains(NSPoint point) const
    {
        return point.x >= origin.x && point.x < maxX() && point.y >= origin.y && point.y < maxY();
    }
};

struct NSEdgeInsets {
    double top { 0 };
    double left { 0 };
    double bottom { 0 };
    double right { 0 };
    bool operator==(NSEdgeInsets const&) const = default;
};

enum class NSRectEdge { minX = 0, minY = 1, maxX = 2, maxY = 3 };
