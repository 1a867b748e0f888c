#include "Typloom/Formats/Numbers.h"

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
