#include "Platform/AppKit/KeyStep.h"

#include <algorithm>

/// Below this span a step of 1 would leave too few places to stop at.
static constexpr double smallSpan = 10;

double keyStep(double span, bool big)
{
    if (span >= smallSpan) {
        return big ? 10 : 1;
    }
    return big ? std::max(0.1, span / 10) : 0.1;
}
