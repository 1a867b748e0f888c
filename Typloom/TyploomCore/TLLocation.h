#pragma once

#include <map>
#include <optional>
#include <string>
#include <variant>

/// The value of a location entry: a number in design coordinates. Text can be there when a
/// location comes from outside; it stands for no place.
using TLLocationValue = std::variant<double, std::string>;

/// A point of the design space: axis identifier to value. Axes that it does not name are open.
using TLLocation = std::map<std::string, TLLocationValue, std::less<>>;

/// The entry for an axis, none when it is absent or no number.
inline std::optional<double> TLLocationNumber(TLLocation const& location, std::string_view axisId)
{
    auto const entry = location.find(axisId);
    if (entry == location.end()) {
        return std::nullopt;
    }
    auto const* number = std::get_if<double>(&entry->second);
    return number ? std::optional(*number) : std::nullopt;
}

/// A layer's own place: axis identifier to design coordinate.
using TLCoordinates = std::map<std::string, double, std::less<>>;
