#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The finite number that the whole text stands for, whatever the process's locale: digits, a full
/// stop, an exponent. None for anything else (a plus sign, blanks, hexadecimal, a comma, "nan"),
/// and never a negative zero.
std::optional<double> parseNumber(std::string_view text);

/// The number of hexadecimal digits only; none for other text and for what is no character.
std::optional<char32_t> parseCharacter(std::string_view hexadecimal);

/// The shortest text that reads back as the same number; a whole number that can be a coordinate has
/// no exponent, which many programs would not take, and no sign when it is zero.
std::string describeNumber(double number);

/// At least four hexadecimal digits, which `parseCharacter` reads.
std::string describeCharacter(char32_t character);

/// Coordinates beyond this cannot be told apart to a tenth any more and are not taken.
inline constexpr double largestCoordinate = 1e15;
