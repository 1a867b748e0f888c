#include "Typloom/Formats/FileNames.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::size_t longestName = 255;

bool isAllowed(char character)
{
    auto const byte = static_cast<unsigned char>(character);
    return byte >= 0x20 && byte != 0x7F
        && std::string_view("\"*+/:<>?[\\]()|").find(character) == std::string_view::npos;
}

/// Names that some systems keep for devices.
bool isReserved(std::string_view part)
{
    static constexpr std::array devices { "con", "prn", "aux", "clock$", "nul" };
    auto const lower = lowerCased(part);
    bool const isPort = lower.size() == 4 && (lower.starts_with("com") || lower.starts_with("lpt"))
        && lower[3] >= '1' && lower[3] <= '9';
    return isPort || std::find(devices.begin(), devices.end(), lower) != devices.end();
}

std::string withoutReservedParts(std::string_view name)
{
    std::string result;
    for (std::size_t start = 0; start <= name.size();) {
        auto const end = std::min(name.find('.', start), name.size());
        auto const part = name.substr(start, end - start);
        result += (start == 0 ? "" : ".") + std::string(isReserved(part) ? "_" : "") + std::string(part);
        start = end + 1;
    }
    return result;
}

/// At most so many bytes, and no half of a character.
std::string_view clipped(std::string_view text, std::size_t length)
{
    if (text.size() <= length) {
        return text;
    }
    while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80) {
        --length;
    }
    return text.substr(0, length);
}

} // namespace

std::string lowerCased(std::string_view text)
{
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char character) {
        return character >= 'A' && character <= 'Z' ? char(character - 'A' + 'a') : character;
    });
    return lower;
}

std::string makeFileName(
    std::string_view name, std::string_view prefix, std::string_view suffix, UsedFileNames& used)
{
    std::string safe;
    for (char const character : name) {
        safe += isAllowed(character) ? character : '_';
        safe += character >= 'A' && character <= 'Z' ? "_" : "";
    }
    if (prefix.empty() && safe.starts_with('.')) {
        safe.front() = '_';
    }
    auto const length = longestName - prefix.size() - suffix.size();
    safe = withoutReservedParts(clipped(safe, length));
    safe = clipped(safe, length);
    auto const whole = [&](std::string_view middle) {
        return std::string(prefix) + std::string(middle) + std::string(suffix);
    };
    auto result = whole(safe);
    for (std::size_t number = 1; !used.insert(lowerCased(result)).second; ++number) {
        auto digits = std::to_string(number);
        digits.insert(0, 15 - std::min<std::size_t>(digits.size(), 15), '0');
        result = whole(std::string(clipped(safe, length - digits.size())) + digits);
    }
    return result;
}
