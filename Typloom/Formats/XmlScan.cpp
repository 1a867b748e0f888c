#include "Typloom/Formats/XmlScan.h"

#include <algorithm>
#include <cstdint>

namespace {

constexpr auto npos = std::string_view::npos;

std::optional<std::size_t> firstInvalidByte(std::string_view text)
{
    for (std::size_t offset = 0; offset < text.size();) {
        auto const byte = static_cast<unsigned char>(text[offset]);
        auto const length = byte - 1U < 0x7FU ? 1 : validSequenceLength(text.substr(offset));
        if (length == 0) {
            return offset;
        }
        offset += length;
    }
    return std::nullopt;
}

/// Walks over the markup of a text and counts how deep its elements nest.
class MarkupWalker {
public:
    explicit MarkupWalker(std::string_view text)
        : m_text(text)
    {
    }

    std::optional<XmlScanProblem> walk()
    {
        while ((m_offset = m_text.find('<', m_offset)) != npos) {
            auto const start = m_offset;
            if (startsWith("<!--")) {
                skipBehind("-->", 4);
            } else if (startsWith("<![CDATA[")) {
                skipBehind("]]>", 9);
            } else if (startsWith("<?")) {
                skipBehind("?>", 2);
            } else if (startsWith("<!")) {
                if (declaresEntities()) {
                    return XmlScanProblem { start, "it declares entities, which are not read" };
                }
            } else if (startsWith("</")) {
                m_depth -= m_depth > 0 ? 1 : 0;
                m_size += sizeOfNode; // Of a text before it.
                skipBehind(">", 2);
            } else if (opensElement() && ++m_depth > xmlDepthLimit) {
                return XmlScanProblem { start, "its elements are nested too deeply" };
            }
            if (m_size > xmlTreeLimit) {
                return XmlScanProblem { start, "it has too many elements" };
            }
        }
        return std::nullopt;
    }

private:
    bool startsWith(std::string_view prefix) const { return m_text.substr(m_offset).starts_with(prefix); }

    /// The parser tells of what has no end.
    void skipBehind(std::string_view end, std::size_t from)
    {
        auto const found = m_text.find(end, m_offset + from);
        m_offset = found == npos ? m_text.size() : found + end.size();
    }

    /// Goes behind the tag; false for one without content.
    bool opensElement()
    {
        char quote = 0;
        m_size += sizeOfNode;
        for (++m_offset; m_offset < m_text.size(); ++m_offset) {
            char const character = m_text[m_offset];
            if (quote != 0) {
                quote = character == quote ? char(0) : quote;
            } else if (character == '"' || character == '\'') {
                quote = character;
                m_size += sizeOfAttribute;
            } else if (character == '>') {
                bool const isEmpty = m_text[m_offset - 1] == '/';
                ++m_offset;
                return !isEmpty;
            }
        }
        return true;
    }

    /// Goes behind a document type declaration.
    bool declaresEntities()
    {
        std::size_t open = 0;
        for (; m_offset < m_text.size(); ++m_offset) {
            if (startsWith("<!ENTITY")) {
                return true;
            }
            open += m_text[m_offset] == '<' ? 1 : 0;
            if (m_text[m_offset] == '>' && --open == 0) {
                break;
            }
        }
        return false;
    }

    /// Bytes that they take in a parsed tree.
    static constexpr std::size_t sizeOfNode = 64;
    static constexpr std::size_t sizeOfAttribute = 40;

    std::string_view m_text;
    std::size_t m_offset { 0 };
    std::size_t m_depth { 0 };
    std::size_t m_size { 0 }; ///< Of the tree that the parser will make.
};

} // namespace

std::size_t validSequenceLength(std::string_view text)
{
    auto const byteAt = [&text](std::size_t index) { return static_cast<unsigned char>(text[index]); };
    unsigned const first = byteAt(0);
    if (first < 0x80) {
        return first == 0 ? 0 : 1;
    }
    std::size_t const length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4 || text.size() < length) {
        return 0;
    }
    std::uint32_t character = first & (0xFFU >> (length + 1));
    for (std::size_t index = 1; index < length; ++index) {
        if ((byteAt(index) & 0xC0U) != 0x80U) {
            return 0;
        }
        character = (character << 6U) | (byteAt(index) & 0x3FU);
    }
    // Overlong forms, surrogates, and what lies beyond the last character.
    bool const isOverlong = (length == 3 && character < 0x800) || (length == 4 && character < 0x10000);
    bool const isNoCharacter = (character >= 0xD800 && character <= 0xDFFF) || character > 0x10FFFF;
    return isOverlong || isNoCharacter ? 0 : length;
}

std::optional<XmlScanProblem> findXmlProblem(std::string_view text)
{
    auto const body = text.starts_with("\xEF\xBB\xBF") ? text.substr(3) : text;
    auto const start = body.find_first_not_of(" \t\r\n");
    if (start == npos) {
        return XmlScanProblem { 0, "it is empty" };
    }
    if (body[start] != '<') {
        return XmlScanProblem { 0, "it is not XML" };
    }
    if (auto const invalid = firstInvalidByte(text)) {
        return XmlScanProblem { *invalid, "it is not UTF-8 text" };
    }
    return MarkupWalker(text).walk();
}

std::size_t lineOfOffset(std::string_view text, std::size_t offset)
{
    auto const before = text.substr(0, std::min(offset, text.size()));
    return 1 + static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
}
