#pragma once

#include "Platform/AppKit/CGPath.h"
#include "Platform/AppKit/NSColor.h"
#include "Platform/AppKit/NSFont.h"

#include <string_view>

/// Where a view draws: the current graphics context while `drawRect` runs.
class PLATFORM_API CGContext final {
public:
    /// The context of the view that is being drawn; null outside `drawRect`.
    static CGContext* current();

    void saveState();
    void restoreState();

    /// x' = a x + c y + tx, y' = b x + d y + ty, before what is already in force.
    void concatenate(double a, double b, double c, double d, double tx, double ty);

    void setFillColor(NSColor color);
    void setStrokeColor(NSColor color);
    void setLineWidth(double points);
    /// Lines keep their width in device pixels, whatever the transform.
    void setCosmeticLine(bool cosmetic);

    void addPath(CGPath const& path);
    void strokePath(); ///< Draws and forgets what was added.
    void fillPath(); ///< Likewise.

    void drawText(std::string_view text, NSPoint baselineStart, NSFont const& font, NSColor color);

    struct Impl;
    explicit CGContext(Impl& impl)
        : m_impl(impl)
    {
    }

private:
    Impl& m_impl;
};
