#pragma once

#include "Platform/AppKit/NSView.h"

/// The view of one table cell. Its outlets and actions are its own: an interface description
/// that the table loads without an owner connects them to the cell.
class PLATFORM_API NSTableCellView : public NSView { };
