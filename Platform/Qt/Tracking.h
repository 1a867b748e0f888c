#pragma once

#include "Platform/Foundation/Export.h"

#include <QPointF>

class NSView;
class QWindow;

/// Where the pointer is: a window of this program and the place in it, or no window.
void setPointerPlace(QWindow* window, QPointF place);
/// The pointer has left the window.
void pointerLeft(QWindow* window);

/// Sends `mouseExited` and `mouseEntered` for what the last known place of the pointer is in now.
/// While a mouse button is held nothing changes.
PLATFORM_API void NSRecheckTracking();

/// The same, after what is being handled now, or on a later turn.
PLATFORM_API void scheduleTrackingCheck();
void runScheduledTrackingCheck();

/// Keeps the list of views that have tracking areas.
void rememberTracking(NSView& view);
void forgetTracking(NSView* view);
