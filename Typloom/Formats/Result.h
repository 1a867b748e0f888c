#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <variant>

/// Why something of a family could not be read or saved.
struct FormatError {
    std::string file; ///< As a person knows it: relative to the family where it lies in it.
    std::size_t line { 0 }; ///< From 1; 0 when no line can be named.
    std::string reason; ///< A clause without a full stop.
    std::string item {}; ///< What of the file, "glyph 'A'"; empty for the file as a whole.
    std::string_view verb { "read" }; ///< What could not be done: a literal.

    /// "Cannot read glyph 'A' in 'Bold.ufo/glyphs/A_.glif', line 12: the x of <point> is 'nan', which
    /// is no number."
    std::string sentence() const;
};

/// A value, or why there is none.
template <class T> class [[nodiscard]] Result {
public:
    Result(T value)
        : m_content(std::move(value))
    {
    }
    Result(FormatError error)
        : m_content(std::move(error))
    {
    }

    explicit operator bool() const { return std::holds_alternative<T>(m_content); }
    T& operator*() { return std::get<T>(m_content); }
    T const& operator*() const { return std::get<T>(m_content); }
    T* operator->() { return &std::get<T>(m_content); }
    T const* operator->() const { return &std::get<T>(m_content); }
    FormatError const& error() const { return std::get<FormatError>(m_content); }

private:
    std::variant<T, FormatError> m_content;
};

/// Text from a file, set into a sentence: in quotes, on one line, clipped when it is long.
std::string inQuotes(std::string_view text);
