#pragma once

#include "Platform/AppKit/NSGeometry.h"

class NSView;

/// Places the views that the constraints in force in this view place.
void applyConstraints(NSView& container);

/// The size at which the constraints in force in this view all hold.
NSSize sizeFittingConstraints(NSView const& container);

/// Lays out again whenever one of the views that the constraints name is moved or resized from outside.
void watchConstrainedViews(NSView& container);
