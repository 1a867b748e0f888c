#pragma once

#include "Typloom/TyploomCore/TLOutline.h"

/// What a .glif calls a point of that type; off-curve points are those without a type there.
constexpr char const* pointTypeName(TLPointType type)
{
    switch (type) {
    case TLPointType::move:
        return "move";
    case TLPointType::line:
        return "line";
    case TLPointType::curve:
        return "curve";
    case TLPointType::qcurve:
        return "qcurve";
    case TLPointType::offcurve:
        break;
    }
    return "offcurve";
}
