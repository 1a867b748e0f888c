#include "Typloom/Formats/XmlEscapes.h"

#include "Typloom/Formats/XmlScan.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <optional>

namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";

struct Named {
    std::string_view reference;
    char character;
};
constexpr std::array named { Named { "&amp;", '&' }, Named { "&lt;", '<' }, Named { "&gt;", '>' },
    Named { "&quot;", '"' }, Named { "&apos;", '\'' } };

std::string_view escapedByte(char const& character)
{
    switch (character) {
    case '\n':
        return "&#10;";
    case '\r':
        return "&#13;";
    case '\t':
        return "&#9;";
    default:
        break;
    }
    for (auto const& [reference, escaped] : named) {
        if (character == escaped) {
            return reference;
        }
    }
    return static_cast<unsigned char>(character) < 0x20 ? replacement : std::string_view(&character, 1);
}

void appendCharacter(std::string& text, std::uint32_t character)
{
    auto const byte = [](std::uint32_t bits) { return static_cast<char>(bits); };
    if (character < 0x80) {
        text += byte(character);
    } else if (character < 0x800) {
        text += { byte(0xC0 | character >> 6U), byte(0x80 | (character & 0x3FU)) };
    } else if (character < 0x10000) {
        text += { byte(0xE0 | character >> 12U), byte(0x80 | (character >> 6U & 0x3FU)),
            byte(0x80 | (character & 0x3FU)) };
    } else {
        text += { byte(0xF0 | character >> 18U), byte(0x80 | (character >> 12U & 0x3FU)),
            byte(0x80 | (character >> 6U & 0x3FU)), byte(0x80 | (character & 0x3FU)) };
    }
}

/// The character of "&#65;" or "&#x41;".
std::optional<std::uint32_t> numericReference(std::string_view reference)
{
    if (!reference.starts_with("&#")) {
        return std::nullopt;
    }
    bool const isHexadecimal = reference.starts_with("&#x");
    auto const digits = reference.substr(isHexadecimal ? 3 : 2, reference.size() - (isHexadecimal ? 4 : 3));
    std::uint32_t number = 0;
    auto const* const end = digits.data() + digits.size();
    auto const [rest, problem] = std::from_chars(digits.data(), end, number, isHexadecimal ? 16 : 10);
    bool const isCharacter = number > 0 && number <= 0x10FFFF && (number < 0xD800 || number > 0xDFFF);
    bool const isRead = !digits.empty() && problem == std::errc {} && rest == end;
    return isRead && isCharacter ? std::optional(number) : std::nullopt;
}

void appendReference(std::string& text, std::string_view reference)
{
    for (auto const& [name, character] : named) {
        if (reference == name) {
            text += character;
            return;
        }
    }
    if (auto const character = numericReference(reference)) {
        appendCharacter(text, *character);
    } else {
        text += reference;
    }
}

} // namespace

std::string xmlEscaped(std::string_view text)
{
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        auto const length = validSequenceLength(text);
        auto const sequence = text.substr(0, length);
        if (length == 1) {
            result += escapedByte(text.front());
        } else if (length == 0 || sequence == "\xEF\xBF\xBE" || sequence == "\xEF\xBF\xBF") {
            result += replacement;
        } else {
            result += sequence;
        }
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return result;
}

std::string xmlUnescaped(std::string_view raw)
{
    std::string result;
    result.reserve(raw.size());
    for (std::size_t offset = 0; offset < raw.size(); ++offset) {
        auto const end = raw[offset] == '&' ? raw.find(';', offset) : std::string_view::npos;
        if (end != std::string_view::npos) {
            appendReference(result, raw.substr(offset, end + 1 - offset));
            offset = end;
        } else if (raw[offset] == '\r') {
            result += raw.substr(offset + 1).starts_with('\n') ? "" : "\n";
        } else {
            result += raw[offset];
        }
    }
    return result;
}
