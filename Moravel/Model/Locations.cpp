#include "Moravel/Model/Locations.h"

#include <cmath>

double roundedToTenths(double value)
{
    return std::round(value * 10) / 10;
}

TLLocation numericLocation(std::optional<TLLocation> const& displayLocation)
{
    TLLocation numbers;
    if (displayLocation) {
        numbers = *displayLocation;
        std::erase_if(
            numbers, [](auto const& entry) { return !std::holds_alternative<double>(entry.second); });
    }
    return numbers;
}

TLLocation fontLocation(
    TLFont const& font, TLFontMaster const* currentMaster, std::optional<TLLocation> const& displayLocation)
{
    auto location = numericLocation(displayLocation);
    for (auto const& axis : font.canonicalAxes()) {
        if (!location.contains(axis->axisId())) {
            location[axis->axisId()]
                = currentMaster ? currentMaster->axisInternalValueValueForId(axis->axisId()) : 0;
        }
    }
    return location;
}

static std::vector<std::shared_ptr<TLAxis>> axesOfLayer(TLLayer const& layer)
{
    if (auto const glyph = layer.glyph()) {
        return glyph->allAxes();
    }
    auto const font = layer.font();
    return font ? font->axes() : std::vector<std::shared_ptr<TLAxis>> {};
}

TLLocation layerLocation(TLLayer const& layer, std::optional<TLLocation> const& displayLocation)
{
    auto location = numericLocation(displayLocation);
    for (auto const& axis : axesOfLayer(layer)) {
        if (!location.contains(axis->axisId())) {
            location[axis->axisId()]
                = layer.axisInternalValueValue(axis->axisId()).value_or(axis->defaultValue());
        }
    }
    return location;
}
