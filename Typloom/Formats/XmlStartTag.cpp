#include "Typloom/Formats/XmlStartTag.h"

#include "Typloom/Formats/XmlEscapes.h"

#include <algorithm>
#include <vector>

namespace {

constexpr std::string_view blanks = " \t\r\n";
constexpr auto npos = std::string_view::npos;

std::size_t behindBlanks(std::string_view text, std::size_t offset)
{
    return std::min(text.find_first_not_of(blanks, offset), text.size());
}

std::size_t nameStart(std::string_view tag)
{
    return tag.starts_with("</") ? 2 : std::min<std::size_t>(tag.size(), 1);
}

std::size_t behindName(std::string_view tag)
{
    std::size_t const start = nameStart(tag);
    return std::min(tag.find_first_of(" \t\r\n/>=\"'<", start), tag.size());
}

} // namespace

bool isXmlBlank(char character)
{
    return blanks.find(character) != npos;
}

bool isXmlBlank(std::string_view text)
{
    return text.find_first_not_of(blanks) == npos;
}

std::string_view nameInTag(std::string_view tag)
{
    std::size_t const start = nameStart(tag);
    return tag.substr(start, behindName(tag) - start);
}

std::optional<XmlAttributeRange> nextAttribute(std::string_view tag, std::size_t offset)
{
    XmlAttributeRange range;
    range.start = offset;
    range.nameStart = behindBlanks(tag, offset);
    range.nameEnd = std::min(tag.find_first_of(" \t\r\n/>=\"'<", range.nameStart), tag.size());
    auto const equals = behindBlanks(tag, range.nameEnd);
    bool const isNamed = range.nameStart > offset && range.nameEnd > range.nameStart;
    if (!isNamed || equals >= tag.size() || tag[equals] != '=') {
        return std::nullopt;
    }
    auto const opening = behindBlanks(tag, equals + 1);
    if (opening >= tag.size() || (tag[opening] != '"' && tag[opening] != '\'')) {
        return std::nullopt;
    }
    range.valueStart = opening + 1;
    range.valueEnd = tag.find(tag[opening], range.valueStart);
    return range.valueEnd == npos ? std::nullopt : std::optional(range);
}

std::optional<XmlAttributeRange> findAttribute(std::string_view tag, std::string_view name)
{
    auto range = nextAttribute(tag, behindName(tag));
    while (range && tag.substr(range->nameStart, range->nameEnd - range->nameStart) != name) {
        range = nextAttribute(tag, range->valueEnd + 1);
    }
    return range;
}

bool isSelfClosing(std::string_view tag)
{
    return tag.ends_with("/>");
}

std::string_view selfClosingEnding(std::string_view tag)
{
    auto const content = tag.find_last_not_of(blanks, tag.size() - 3);
    return tag.substr(content + 1);
}

bool isWholeStartTag(std::string_view tag)
{
    auto end = behindName(tag);
    std::vector<std::string_view> names;
    while (auto const range = nextAttribute(tag, end)) {
        auto const name = tag.substr(range->nameStart, range->nameEnd - range->nameStart);
        if (std::find(names.begin(), names.end(), name) != names.end()) {
            return false;
        }
        names.push_back(name);
        end = range->valueEnd + 1;
    }
    auto const rest = behindBlanks(tag, end);
    return !nameInTag(tag).empty() && tag.substr(rest) == (isSelfClosing(tag) ? "/>" : ">");
}

std::string tagWithAttribute(std::string_view tag, std::string_view name, std::string_view value, char quote)
{
    std::string result(tag);
    auto const escaped = xmlEscaped(value);
    if (auto const range = findAttribute(tag, name)) {
        return result.replace(range->valueStart, range->valueEnd - range->valueStart, escaped);
    }
    std::string_view separator = " ";
    auto end = behindName(tag);
    while (auto const range = nextAttribute(tag, end)) {
        separator = tag.substr(range->start, range->nameStart - range->start);
        end = range->valueEnd + 1;
        quote = tag[range->valueEnd];
    }
    return result.insert(end, std::string(separator) + std::string(name) + "=" + quote + escaped + quote);
}

std::string tagWithoutAttribute(std::string_view tag, std::string_view name)
{
    std::string result(tag);
    auto const range = findAttribute(tag, name);
    return range ? result.erase(range->start, range->valueEnd + 1 - range->start) : result;
}
