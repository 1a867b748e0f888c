#include "Typloom/Formats/XmlDocument.h"

#include "Typloom/Formats/Numbers.h"
#include "Typloom/Formats/XmlScan.h"

Result<XmlDocument> XmlDocument::parse(std::string text, std::string file)
{
    if (auto problem = findXmlProblem(text)) {
        return FormatError { std::move(file), lineOfOffset(text, problem->offset),
            std::move(problem->reason) };
    }
    XmlDocument document;
    document.m_text = std::move(text);
    document.m_file = std::move(file);
    auto const outcome = document.m_document->load_buffer(
        document.m_text.data(), document.m_text.size(), pugi::parse_default, pugi::encoding_utf8);
    if (!outcome) {
        auto const offset = static_cast<std::size_t>(outcome.offset < 0 ? 0 : outcome.offset);
        return FormatError { document.m_file, lineOfOffset(document.m_text, offset),
            std::string("its XML is broken (") + outcome.description() + ")" };
    }
    return document;
}

std::size_t XmlDocument::lineOf(pugi::xml_node node) const
{
    auto const found = node.offset_debug();
    if (found < 0) {
        return 0;
    }
    // A file can ask for the line of each of its elements, in their order.
    auto const offset = static_cast<std::size_t>(found);
    if (offset < m_lastOffset) {
        m_lastOffset = 0;
        m_lastLine = 1;
    }
    auto const since = std::string_view(m_text).substr(m_lastOffset, offset - m_lastOffset);
    m_lastLine += lineOfOffset(since, since.size()) - 1;
    m_lastOffset = offset;
    return m_lastLine;
}

FormatError XmlDocument::errorAt(pugi::xml_node node, std::string reason) const
{
    return { m_file, lineOf(node), std::move(reason) };
}

double XmlNumberReader::number(pugi::xml_node node, char const* attribute, double fallback)
{
    auto const found = node.attribute(attribute);
    if (!found) {
        return fallback;
    }
    if (auto const number = parseNumber(found.value())) {
        return *number;
    }
    fail(node,
        "the " + std::string(attribute) + " of <" + node.name() + "> is " + inQuotes(found.value())
            + ", which is no number");
    return fallback;
}

double XmlNumberReader::requiredNumber(pugi::xml_node node, char const* attribute)
{
    if (!node.attribute(attribute)) {
        fail(node, std::string("<") + node.name() + "> has no " + attribute);
    }
    return number(node, attribute, 0);
}

void XmlNumberReader::fail(pugi::xml_node node, std::string reason)
{
    if (!m_error) {
        m_error = m_document.errorAt(node, std::move(reason));
    }
}
