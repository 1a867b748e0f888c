#pragma once

#include "Platform/Foundation/NSObject.h"

#include <optional>

/// Turns numbers into text and back for the user's current locale: its decimal separator and
/// digits, no group separators. Rounds to `maximumFractionDigits`, halves to even, and never
/// shows a negative zero.
class PLATFORM_API NSNumberFormatter : public NSObject {
public:
    std::optional<double> minimum() const { return m_minimum; }
    std::optional<double> maximum() const { return m_maximum; }
    /// Limits of what `numberFromString` gives; absent: no limit.
    void setMinimum(std::optional<double> minimum) { m_minimum = minimum; }
    void setMaximum(std::optional<double> maximum) { m_maximum = maximum; }

    int maximumFractionDigits() const { return m_maximumFractionDigits; }
    void setMaximumFractionDigits(int digits) { m_maximumFractionDigits = digits; }

    /// None for a number that is not finite.
    std::optional<std::string> stringFromNumber(double number) const;

    /// The number that the whole text stands for, brought into minimum and maximum. Blanks around
    /// it are ignored; in every locale comma and full stop are both read as the decimal separator,
    /// and none that separates groups. None for text that is no finite number.
    std::optional<double> numberFromString(std::string_view text) const;

private:
    std::optional<double> m_minimum;
    std::optional<double> m_maximum;
    int m_maximumFractionDigits { 0 };
};

/// The shortest decimal text that reads back as the same number, independent of the locale.
PLATFORM_API std::string NSNumberDescription(double number);

/// The finite number that the whole text stands for, independent of the locale (full stop as
/// decimal separator, optional exponent, no blanks, no hexadecimal). None otherwise.
PLATFORM_API std::optional<double> NSNumberFromText(std::string_view text);
