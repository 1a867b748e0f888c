#pragma once

#include "Platform/AppKit/NSGeometry.h"
#include "Platform/Foundation/Export.h"

#include <memory>

/// A shape made of lines and curves, filled with the non-zero winding rule. Copies share the
/// shape until one of them is changed.
class PLATFORM_API CGPath final {
public:
    CGPath();
    ~CGPath();
    CGPath(CGPath const&);
    CGPath(CGPath&&) noexcept;
    CGPath& operator=(CGPath const&);
    CGPath& operator=(CGPath&&) noexcept;

    void moveTo(NSPoint point);
    void lineTo(NSPoint point);
    void quadCurveTo(NSPoint control, NSPoint end);
    void curveTo(NSPoint control1, NSPoint control2, NSPoint end);
    void closeSubpath();
    void addRect(NSRect rect);
    void addEllipse(NSRect rect);
    void addPath(CGPath const& path);
    NSRect boundingBox() const; ///< Of the curves' control points.

    /// A rectangle whose corners blend smoothly into its edges (continuous curvature).
    static CGPath continuousRoundedRect(NSRect rect, NSSize cornerSize);

    struct Impl;
    Impl const& impl() const { return *m_impl; }

private:
    std::shared_ptr<Impl> m_impl;
    Impl& edit();
};
