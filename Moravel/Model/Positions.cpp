#include "Moravel/Model/Positions.h"

double fontAxisPosition(std::string_view axisId, TLLayer const* layer,
    std::optional<TLLocation> const& displayLocation, TLFontMaster const* currentMaster)
{
    if (auto const own = layer ? layer->axisInternalValueValue(axisId) : std::nullopt) {
        return *own;
    }
    if (auto const shown = displayLocation ? TLLocationNumber(*displayLocation, axisId) : std::nullopt) {
        return *shown;
    }
    return currentMaster ? currentMaster->axisInternalValueValueForId(axisId) : 0;
}

double glyphAxisPosition(TLAxis const& axis, TLLayer const& layer)
{
    return layer.axisInternalValueValue(axis.axisId()).value_or(axis.defaultValue());
}
