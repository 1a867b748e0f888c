#pragma once

#include "Platform/AppKit/NSImage.h"
#include "Platform/Foundation/Export.h"

#include <QIcon>
#include <QPainterPath>

/// The shape of a system symbol in a square of 16 points, filled by the rule that it carries; empty
/// for a name that the platform does not know.
PLATFORM_API QPainterPath symbolShape(std::string_view name);

/// The side of the square in which a symbol is shown, in points.
PLATFORM_API double symbolSize(NSImageSymbolScale scale);

/// An icon in the palette's text colour, drawn anew for each size and pixel density; greyed when
/// disabled. Ask the button for `symbolSize` as its icon size.
PLATFORM_API QIcon symbolIcon(NSImage const& image);
