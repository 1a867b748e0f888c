#pragma once

#include "Platform/Foundation/NSNumberFormatter.h"

/// A design coordinate as a person reads and types it.
inline std::string TLNumberText(double value)
{
    NSNumberFormatter formatter;
    formatter.setMaximumFractionDigits(3);
    return formatter.stringFromNumber(value).value_or(std::string());
}

/// None for what is no finite number.
inline std::optional<double> TLNumberFromText(std::string_view text)
{
    return NSNumberFormatter().numberFromString(text);
}
