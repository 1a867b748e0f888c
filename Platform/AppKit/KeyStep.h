#pragma once

#include "Platform/Foundation/Export.h"

/// How far a key takes a value within a range of this span: whole steps, and tenths where the range has
/// no room for them. A big step is ten times as long, if the range has room for that.
PLATFORM_API double keyStep(double span, bool big);
