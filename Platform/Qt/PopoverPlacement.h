#pragma once

#include "Platform/AppKit/NSGeometry.h"
#include "Platform/Foundation/Export.h"

#include <QPainterPath>
#include <QRect>

/// Where a popover stands, in screen coordinates, and how it points at its anchor.
struct PopoverPlacement {
    QRect window; ///< With the arrow.
    NSRectEdge edge { NSRectEdge::maxY }; ///< Of the anchor, at which it stands.
    int arrow { 0 }; ///< Of the arrow's tip along the window's side, from its top or left end.

    bool operator==(PopoverPlacement const&) const = default;
};

/// Puts content of that size beside the preferred edge of the anchor; on the opposite side where
/// only that has room; within the screen in any case.
PLATFORM_API PopoverPlacement placePopover(QSize content, QRect anchor, NSRectEdge preferred, QRect screen);

/// The content's rectangle within a window of that placement.
PLATFORM_API QRect popoverContentRect(PopoverPlacement const& placement);

/// The outline of the window: a rounded rectangle with an arrow at the anchor's side.
PLATFORM_API QPainterPath popoverOutline(PopoverPlacement const& placement);
