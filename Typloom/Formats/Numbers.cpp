#include "Typloom/Formats/Numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

std::optional<double> parseNumber(std::string_view text)
{
    double number = 0;
    auto const* const end = text.data() + text.size();
    auto const [rest, problem] = std::from_chars(text.data(), end, number);
    if (text.empty() || problem != std::errc {} || rest != end || !std::isfinite(number)) {
        return std::nullopt;
    }
    return number + 0.0; // -0 becomes 0.
}

std::optional<char32_t> parseCharacter(std::string_view hexadecimal)
{
    std::uint32_t number = 0;
    auto const* const end = hexadecimal.data() + hexadecimal.size();
    auto const [rest, problem] = std::from_chars(hexadecimal.data(), end, number, 16);
    if (hexadecimal.empty() || problem != std::errc {} || rest != end || number > 0x10FFFF) {
        return std::nullopt;
    }
    return static_cast<char32_t>(number);
}

std::string describeNumber(double number)
{
    std::array<char, 32> buffer {};
    auto* const end = buffer.data() + buffer.size();
    bool const isWhole = std::abs(number) < largestCoordinate && std::trunc(number) == number;
    auto const written = isWhole ? std::to_chars(buffer.data(), end, static_cast<std::int64_t>(number))
                                 : std::to_chars(buffer.data(), end, number);
    return { buffer.data(), written.ptr };
}

std::string describeCharacter(char32_t character)
{
    std::array<char, 16> buffer {};
    auto const written = std::to_chars(
        buffer.data(), buffer.data() + buffer.size(), static_cast<std::uint32_t>(character), 16);
    std::string digits(buffer.data(), written.ptr);
    std::transform(digits.begin(), digits.end(), digits.begin(),
        [](char digit) { return digit >= 'a' ? char(digit - 'a' + 'A') : digit; });
    return std::string(digits.size() < 4 ? 4 - digits.size() : 0, '0') + digits;
}
