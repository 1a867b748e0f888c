#pragma once

#include "Platform/AppKit/NSColor.h"

#include <QPalette>

class QWidget;

/// Gives a widget's text a colour, in the palette's role for it; disabled text keeps the palette's own grey.
/// One of the named colours stays what its name says when the desktop's palette changes.
void setTextColorOf(QWidget& widget, QPalette::ColorRole role, NSColor color);
