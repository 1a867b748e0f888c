#pragma once

#include <optional>
#include <string>
#include <string_view>

/// An attribute in the text of a start tag, as offsets into that text.
struct XmlAttributeRange {
    std::size_t start { 0 }; ///< Of the blanks before its name.
    std::size_t nameStart { 0 };
    std::size_t nameEnd { 0 };
    std::size_t valueStart { 0 }; ///< Behind the opening quote.
    std::size_t valueEnd { 0 }; ///< At the closing quote.
};

bool isXmlBlank(char character);
bool isXmlBlank(std::string_view text);

/// The name in a start tag, "<a b='c'/>", or an end tag.
std::string_view nameInTag(std::string_view tag);

/// The first attribute from an offset on; none at the tag's end, and where something else stands.
std::optional<XmlAttributeRange> nextAttribute(std::string_view tag, std::size_t offset);
std::optional<XmlAttributeRange> findAttribute(std::string_view tag, std::string_view name);

/// Whether it has a name and then nothing but attributes, each once.
bool isWholeStartTag(std::string_view tag);
bool isSelfClosing(std::string_view tag);
/// "/>" with the blanks before it, of a tag that closes itself.
std::string_view selfClosingEnding(std::string_view tag);

/// The tag with that value: in the quotes where it stood, or behind the other attributes,
/// set apart as they are. `quote` is for a tag without attributes.
std::string tagWithAttribute(std::string_view tag, std::string_view name, std::string_view value, char quote);
std::string tagWithoutAttribute(std::string_view tag, std::string_view name);
