#pragma once

#include "Typloom/Formats/Result.h"

#include <memory>
#include <optional>

#include <pugixml.hpp>

/// A parsed XML text that knows its file and its lines.
class XmlDocument {
public:
    /// `file` is the name that errors give.
    static Result<XmlDocument> parse(std::string text, std::string file);

    pugi::xml_node root() const { return m_document->document_element(); }
    std::string const& file() const { return m_file; }
    std::size_t lineOf(pugi::xml_node node) const;
    FormatError errorAt(pugi::xml_node node, std::string reason) const;

private:
    std::unique_ptr<pugi::xml_document> m_document { std::make_unique<pugi::xml_document>() };
    std::string m_text;
    std::string m_file;
    mutable std::size_t m_lastOffset { 0 }; ///< Where the last line was asked for.
    mutable std::size_t m_lastLine { 1 };
};

/// Reads number attributes and remembers the first that is none.
class XmlNumberReader {
public:
    explicit XmlNumberReader(XmlDocument const& document)
        : m_document(document)
    {
    }
    /// `fallback` where the attribute is absent.
    double number(pugi::xml_node node, char const* attribute, double fallback);
    /// An absent attribute is an error.
    double requiredNumber(pugi::xml_node node, char const* attribute);

    std::optional<FormatError> const& error() const { return m_error; }
    void fail(pugi::xml_node node, std::string reason);

private:
    XmlDocument const& m_document;
    std::optional<FormatError> m_error;
};
