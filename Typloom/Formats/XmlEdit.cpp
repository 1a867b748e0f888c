#include "Typloom/Formats/XmlEdit.h"

#include "Typloom/Formats/XmlStartTag.h"

#include <algorithm>
#include <functional>
#include <utility>

Result<XmlEdit> XmlEdit::parse(std::string text, std::string displayName)
{
    XmlEdit edit;
    edit.m_file = std::move(displayName);
    edit.m_text = edit.m_tree.keep(std::move(text));
    auto problem = findXmlProblem(edit.m_text);
    problem = problem ? problem : edit.m_tree.parseInto(0, edit.m_text);
    auto const root = edit.root();
    if (!problem && (!root || edit.nextSibling(root))) {
        problem = XmlScanProblem { edit.m_text.size(), "it has not one root element" };
    }
    if (problem) {
        return FormatError { edit.m_file, lineOfOffset(edit.m_text, problem->offset),
            std::move(problem->reason) };
    }
    edit.findStyle(edit.m_text);
    return edit;
}

void XmlEdit::findStyle(std::string_view text)
{
    auto const lineEnd = text.find_first_of("\r\n");
    if (lineEnd != std::string_view::npos) {
        m_lineEnd = text.substr(lineEnd).starts_with("\r\n") ? "\r\n" : text.substr(lineEnd, 1);
    }
    bool hasUnit = false;
    bool hasEnding = false;
    for (Index node = 1; node < m_tree.size() && !(hasUnit && hasEnding); ++node) {
        if (!m_tree.isElement(node)) {
            continue;
        }
        if (!hasEnding && isSelfClosing(m_tree[node].open)) {
            m_ending = selfClosingEnding(m_tree[node].open) == "/>" ? "/>" : " />";
            hasEnding = true;
        }
        if (!hasUnit && m_tree[node].parent != 0 && beginsLine(node) && beginsLine(m_tree[node].parent)) {
            auto const outer = lineIndentation(m_tree[node].parent).value_or("");
            auto const inner = lineIndentation(node).value_or("");
            hasUnit = inner.size() > outer.size() && inner.starts_with(outer);
            m_unit = hasUnit ? inner.substr(outer.size()) : m_unit;
        }
    }
    if (auto const range = nextAttribute(m_tree[root().node].open, 1 + name(root()).size())) {
        m_quote = m_tree[root().node].open[range->valueEnd];
    }
}

XmlTree::Index XmlEdit::elementAt(Index node) const
{
    while (node != 0 && !m_tree.isElement(node)) {
        node = m_tree[node].next;
    }
    return node;
}

XmlElement XmlEdit::root() const
{
    return { elementAt(m_tree[0].first) };
}

XmlElement XmlEdit::parent(XmlElement element) const
{
    return { m_tree[element.node].parent };
}

XmlElement XmlEdit::nextSibling(XmlElement element) const
{
    return { elementAt(m_tree[element.node].next) };
}

std::string_view XmlEdit::name(XmlElement element) const
{
    return nameInTag(m_tree[element.node].open);
}

XmlElement XmlEdit::child(XmlElement element, std::string_view childName) const
{
    auto found = element ? XmlElement { elementAt(m_tree[element.node].first) } : element;
    while (found && name(found) != childName) {
        found = nextSibling(found);
    }
    return found;
}

std::vector<XmlElement> XmlEdit::children(XmlElement element, std::string_view childName) const
{
    std::vector<XmlElement> found;
    auto node = element ? XmlElement { elementAt(m_tree[element.node].first) } : element;
    for (; node; node = nextSibling(node)) {
        if (childName.empty() || name(node) == childName) {
            found.push_back(node);
        }
    }
    return found;
}

std::optional<std::string> XmlEdit::attribute(XmlElement element, std::string_view attributeName) const
{
    auto const tag = m_tree[element.node].open;
    auto const range = element ? findAttribute(tag, attributeName) : std::nullopt;
    if (!range) {
        return std::nullopt;
    }
    std::string raw;
    for (auto offset = range->valueStart; offset < range->valueEnd; ++offset) {
        bool const isHalfLineEnd = tag[offset] == '\r' && tag[offset + 1] == '\n';
        raw += isHalfLineEnd ? std::string_view {} : isXmlBlank(tag[offset]) ? " " : tag.substr(offset, 1);
    }
    return xmlUnescaped(raw);
}

std::string XmlEdit::text(XmlElement element) const
{
    constexpr std::size_t dataStart = 9; // <![CDATA[
    std::string text;
    for (auto node = element ? m_tree[element.node].first : 0; node != 0; node = m_tree[node].next) {
        auto const piece = m_tree[node].open;
        if (m_tree[node].kind == XmlTree::Kind::text) {
            text += xmlUnescaped(piece);
        } else if (m_tree[node].kind == XmlTree::Kind::data) {
            text += piece.substr(dataStart, piece.size() - dataStart - 3);
        }
    }
    return text;
}

FormatError XmlEdit::errorAt(XmlElement element, std::string reason) const
{
    auto const* const place = m_tree[element.node].open.data();
    auto const* const start = m_text.data();
    bool const wasRead = std::less_equal<>()(start, place) && std::less<>()(place, start + m_text.size());
    return { m_file, wasRead ? lineOfOffset(m_text, static_cast<std::size_t>(place - start)) : 0,
        std::move(reason) };
}

void XmlEdit::setAttribute(XmlElement element, std::string_view attributeName, std::string_view value)
{
    if (element && attribute(element, attributeName) != value) {
        auto& tag = m_tree[element.node].open;
        tag = m_tree.keep(tagWithAttribute(tag, attributeName, value, m_quote));
    }
}

void XmlEdit::removeAttribute(XmlElement element, std::string_view attributeName)
{
    if (element && attribute(element, attributeName)) {
        auto& tag = m_tree[element.node].open;
        tag = m_tree.keep(tagWithoutAttribute(tag, attributeName));
    }
}

void XmlEdit::setText(XmlElement element, std::string_view newText)
{
    if (!element || text(element) == newText) {
        return;
    }
    openUp(element.node);
    Index place = 0;
    bool hasPlace = false;
    for (Index next = m_tree[element.node].first; next != 0;) {
        auto const node = std::exchange(next, m_tree[next].next);
        if (m_tree[node].kind != XmlTree::Kind::other) {
            place = hasPlace && place != node ? place : next;
            hasPlace = true;
            m_tree.unlink(node);
        }
    }
    if (!newText.empty()) {
        placeText(xmlEscaped(newText), element.node, place);
    }
    closeAgain(element.node);
}
