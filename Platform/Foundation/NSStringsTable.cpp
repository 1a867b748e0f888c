#include "Platform/Foundation/NSBundle.h"

#include <charconv>
#include <cstdint>

namespace {

void appendUtf8(std::string& text, std::uint32_t character)
{
    auto continuation = [&](int shift) { text += static_cast<char>(0x80 | ((character >> shift) & 0x3F)); };
    if (character < 0x80) {
        text += static_cast<char>(character);
    } else if (character < 0x800) {
        text += static_cast<char>(0xC0 | (character >> 6));
        continuation(0);
    } else if (character < 0x10000) {
        text += static_cast<char>(0xE0 | (character >> 12));
        continuation(6);
        continuation(0);
    } else {
        text += static_cast<char>(0xF0 | (character >> 18));
        continuation(12);
        continuation(6);
        continuation(0);
    }
}

/// Reads from the front of a text; every operation says whether it found what it looks for.
class Scanner {
public:
    explicit Scanner(std::string_view text)
        : m_rest(text)
    {
        skip("\xEF\xBB\xBF");
    }

    bool isAtEnd() const { return m_rest.empty(); }

    bool skip(std::string_view token)
    {
        if (!m_rest.starts_with(token)) {
            return false;
        }
        m_rest.remove_prefix(token.size());
        return true;
    }

    /// False for a comment that does not end.
    bool skipBlanksAndComments()
    {
        for (;;) {
            m_rest.remove_prefix(std::min(m_rest.find_first_not_of(" \t\r\n\v\f"), m_rest.size()));
            if (skip("//")) {
                m_rest.remove_prefix(std::min(m_rest.find_first_of("\r\n"), m_rest.size()));
            } else if (skip("/*")) {
                auto const end = m_rest.find("*/");
                if (end == std::string_view::npos) {
                    return false;
                }
                m_rest.remove_prefix(end + 2);
            } else {
                return true;
            }
        }
    }

    std::optional<std::string> quoted()
    {
        if (!skip("\"")) {
            return std::nullopt;
        }
        std::string text;
        while (!m_rest.empty()) {
            char const next = m_rest.front();
            m_rest.remove_prefix(1);
            if (next == '"') {
                return text;
            }
            if (next != '\\') {
                text += next;
            } else if (!appendEscaped(text)) {
                return std::nullopt;
            }
        }
        return std::nullopt;
    }

private:
    bool appendEscaped(std::string& text)
    {
        static constexpr std::string_view codes = "\"\\ntr";
        static constexpr std::string_view characters = "\"\\\n\t\r";
        if (skip("u") || skip("U")) {
            return appendCodePoint(text);
        }
        auto const index = m_rest.empty() ? codes.npos : codes.find(m_rest.front());
        if (index == codes.npos) {
            return false;
        }
        text += characters[index];
        m_rest.remove_prefix(1);
        return true;
    }

    bool appendCodePoint(std::string& text)
    {
        auto const first = fourHexDigits();
        if (!first || (*first >= 0xDC00 && *first < 0xE000)) {
            return false;
        }
        if (*first < 0xD800 || *first >= 0xE000) {
            appendUtf8(text, *first);
            return true;
        }
        auto const second = skip("\\u") || skip("\\U") ? fourHexDigits() : std::nullopt;
        if (!second || *second < 0xDC00 || *second >= 0xE000) {
            return false;
        }
        appendUtf8(text, 0x10000 + ((*first - 0xD800) << 10) + (*second - 0xDC00));
        return true;
    }

    std::optional<std::uint32_t> fourHexDigits()
    {
        auto const digits = m_rest.substr(0, 4);
        std::uint32_t value = 0;
        auto const end = digits.data() + digits.size();
        auto const [read, error] = std::from_chars(digits.data(), end, value, 16);
        if (digits.size() < 4 || error != std::errc() || read != end) {
            return std::nullopt;
        }
        m_rest.remove_prefix(4);
        return value;
    }

    std::string_view m_rest;
};

} // namespace

std::optional<std::map<std::string, std::string, std::less<>>> NSParseStringsTable(std::string_view text)
{
    std::map<std::string, std::string, std::less<>> strings;
    Scanner scanner(text);
    while (scanner.skipBlanksAndComments()) {
        if (scanner.isAtEnd()) {
            return strings;
        }
        auto key = scanner.quoted();
        if (!key || !scanner.skipBlanksAndComments() || !scanner.skip("=")
            || !scanner.skipBlanksAndComments()) {
            return std::nullopt;
        }
        auto value = scanner.quoted();
        if (!value || !scanner.skipBlanksAndComments() || !scanner.skip(";")) {
            return std::nullopt;
        }
        strings.try_emplace(std::move(*key), std::move(*value));
    }
    return std::nullopt;
}
