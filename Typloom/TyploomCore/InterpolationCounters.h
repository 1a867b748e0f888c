#pragma once

#include "Typloom/TyploomCore/TLInterpolation.h"

/// The counters to count in.
TLInterpolationCounters& interpolationCounters();
