#include "Moravel/Model/NumberText.h"

#include <algorithm>
#include <charconv>
#include <limits>

/// Whether a number that has no place among the doubles is too great for them rather than too small.
static bool isTooGreat(std::string_view text, bool isHexadecimal)
{
    auto const marker = text.find_first_of(isHexadecimal ? "pP" : "eE");
    auto const digits = text.substr(0, marker);
    auto const point = std::min(digits.find('.'), digits.size());
    auto const firstDigit = std::min(digits.find_first_not_of("0."), digits.size());
    auto const places = static_cast<long long>(point) - static_cast<long long>(firstDigit);
    auto exponentText = marker == std::string_view::npos ? std::string_view("0") : text.substr(marker + 1);
    if (exponentText.starts_with('+')) {
        exponentText.remove_prefix(1);
    }
    // Beyond this no number of digits makes up for the exponent.
    constexpr long long limit = 1LL << 60;
    long long exponent = exponentText.starts_with('-') ? -limit : limit; // Stays where it is too long.
    std::from_chars(exponentText.data(), exponentText.data() + exponentText.size(), exponent);
    return places * (isHexadecimal ? 4 : 1) + std::clamp(exponent, -limit, limit) > 0;
}

std::optional<double> numberInCLocale(std::string_view text)
{
    bool const isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    bool const isHexadecimal = text.size() > 2 && (text.starts_with("0x") || text.starts_with("0X"));
    if (isHexadecimal) {
        text.remove_prefix(2);
    }
    // Signs and names are read in front of hexadecimal digits too, and a second sign is.
    auto const refused = std::string_view(isHexadecimal ? "-iInN" : "-");
    if (text.empty() || refused.find(text.front()) != std::string_view::npos) {
        return std::nullopt;
    }
    double number = 0;
    auto const end = text.data() + text.size();
    auto const format = isHexadecimal ? std::chars_format::hex : std::chars_format::general;
    auto const [read, error] = std::from_chars(text.data(), end, number, format);
    if (error == std::errc::invalid_argument || read != end) {
        return std::nullopt;
    }
    if (error == std::errc::result_out_of_range) {
        number = isTooGreat(text, isHexadecimal) ? std::numeric_limits<double>::infinity() : 0;
    }
    return isNegative ? -number : number;
}
