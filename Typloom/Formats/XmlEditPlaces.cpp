// Where an XmlEdit puts elements, and what it leaves where it takes them away.

#include "Typloom/Formats/XmlEdit.h"

#include "Typloom/Formats/XmlStartTag.h"

#include <algorithm>
#include <array>

namespace {

constexpr auto npos = std::string_view::npos;

std::string_view leadingBlanks(std::string_view text)
{
    return text.substr(0, text.find_first_not_of(" \t"));
}

/// Where the last line of a text begins with its line end; npos when there is only one.
std::size_t lastLineEnd(std::string_view text)
{
    auto const found = text.find_last_of("\r\n");
    bool const isPair = found != npos && found > 0 && text.substr(found - 1, 2) == "\r\n";
    return isPair ? found - 1 : found;
}

} // namespace

XmlEdit::Indentation XmlEdit::lineIndentation(Index node) const
{
    Indentation const outermost = m_tree[node].parent == 0 ? Indentation("") : std::nullopt;
    for (node = m_tree[node].previous; node != 0; node = m_tree[node].previous) {
        auto const text = m_tree[node].open;
        auto const lineEnd = text.find_last_of("\r\n");
        if (m_tree[node].kind == XmlTree::Kind::text && lineEnd != npos) {
            return std::string(leadingBlanks(text.substr(lineEnd + 1)));
        }
    }
    return outermost;
}

bool XmlEdit::beginsLine(Index node) const
{
    auto const previous = m_tree[node].previous;
    if (m_tree[node].parent == 0) {
        return true;
    }
    auto const text = previous == 0 ? std::string_view {} : m_tree[previous].open;
    auto const lineEnd = text.find_last_of("\r\n");
    return m_tree[previous].kind == XmlTree::Kind::text && lineEnd != npos
        && isXmlBlank(text.substr(lineEnd));
}

bool XmlEdit::endsLine(Index node) const
{
    auto const next = m_tree[node].next;
    auto const text = m_tree[next].open;
    auto const lineEnd = text.find_first_of("\r\n");
    return next == 0
        || (m_tree[next].kind == XmlTree::Kind::text && lineEnd != npos
            && isXmlBlank(text.substr(0, lineEnd)));
}

std::string XmlEdit::laidOut(std::string_view fragment, Indentation const& indentation) const
{
    std::string result;
    while (!fragment.empty()) {
        auto const lineEnd = std::min(fragment.find('\n'), fragment.size());
        auto const line = fragment.substr(0, lineEnd);
        auto const depth = std::min(line.find_first_not_of('\t'), line.size());
        if (indentation && !result.empty()) {
            result += m_lineEnd + *indentation;
            for (std::size_t level = 0; level < depth; ++level) {
                result += m_unit;
            }
        }
        result += line.substr(depth);
        fragment.remove_prefix(std::min(lineEnd + 1, fragment.size()));
    }
    return result;
}

std::vector<XmlTree::Index> XmlEdit::readFragment(std::string_view fragment, Indentation const& indentation)
{
    auto const holder = m_tree.make(XmlTree::Kind::document, {});
    std::vector<Index> pieces;
    if (m_tree.parseInto(holder, m_tree.keep(laidOut(fragment, indentation)))) {
        return pieces;
    }
    for (Index node = holder + 1; node < m_tree.size(); ++node) {
        auto& tag = m_tree[node].open;
        if (m_tree.isElement(node) && isSelfClosing(tag)) {
            tag = m_tree.keep(
                std::string(tag.substr(0, tag.size() - selfClosingEnding(tag).size())) + m_ending);
        }
    }
    while (m_tree[holder].first != 0) {
        pieces.push_back(m_tree[holder].first);
        m_tree.unlink(pieces.back());
    }
    return pieces;
}

XmlElement XmlEdit::place(std::vector<Index> const& pieces, Index parent, Index before)
{
    for (auto const piece : pieces) {
        m_tree.link(piece, parent, before);
    }
    return { pieces.empty() ? 0 : elementAt(pieces.front()) };
}

void XmlEdit::placeText(std::string text, Index parent, Index before)
{
    auto const node = m_tree.make(XmlTree::Kind::text, m_tree.keep(std::move(text)));
    m_tree.link(node, parent, before);
}

void XmlEdit::openUp(Index element)
{
    auto& [kind, open, close, parent, first, last, previous, next] = m_tree[element];
    auto const ending = isSelfClosing(open) ? selfClosingEnding(open) : std::string_view(">");
    bool const isEmpty = first == 0 || (first == last && m_tree.isBlankText(first));
    if (!isEmpty) {
        return;
    }
    auto const content = first == 0 ? std::string {} : std::string(m_tree[first].open);
    m_opened.try_emplace(element, Emptiness { std::string(ending), close, content });
    if (isSelfClosing(open)) {
        close = m_tree.keep("</" + std::string(nameInTag(open)) + ">");
        open = m_tree.keep(std::string(open.substr(0, open.size() - ending.size())) + ">");
    }
    if (first != 0) {
        m_tree.unlink(first);
    }
}

void XmlEdit::closeAgain(Index element)
{
    auto const opened = m_opened.find(element);
    auto const first = m_tree[element].first;
    bool const isEmpty = first == 0 || (first == m_tree[element].last && m_tree.isBlankText(first));
    if (opened == m_opened.end() || !isEmpty) {
        return;
    }
    auto const [ending, close, content] = opened->second;
    m_opened.erase(opened);
    if (first != 0) {
        m_tree.unlink(first);
    }
    if (!content.empty()) {
        placeText(content, element, 0);
    }
    auto& node = m_tree[element];
    node.open = m_tree.keep(std::string(node.open.substr(0, node.open.size() - 1)) + ending);
    node.close = close;
}

XmlElement XmlEdit::insertBehind(Index anchor, std::string_view fragment, bool onNewLine)
{
    auto const indentation = onNewLine ? lineIndentation(anchor) : std::nullopt;
    auto const pieces = readFragment(fragment, indentation);
    auto const parent = m_tree[anchor].parent;
    auto const before = m_tree[anchor].next;
    if (indentation && !pieces.empty()) {
        placeText(m_lineEnd + *indentation, parent, before);
    }
    return place(pieces, parent, before);
}

XmlElement XmlEdit::appendChild(XmlElement parent, std::string_view fragment)
{
    auto const element = parent.node;
    auto anchor = m_tree[element].last;
    while (anchor != 0 && m_tree.isBlankText(anchor)) {
        anchor = m_tree[anchor].previous;
    }
    if (!parent || anchor != 0) {
        return parent ? insertBehind(anchor, fragment, m_tree[anchor].kind != XmlTree::Kind::text) : parent;
    }
    auto const outer = lineIndentation(element);
    auto const inner = outer ? Indentation(*outer + m_unit) : std::nullopt;
    auto const pieces = readFragment(fragment, inner);
    if (pieces.empty()) {
        return {};
    }
    openUp(element);
    if (inner) {
        placeText(m_lineEnd + *inner, element, 0);
        placeText(m_lineEnd + *outer, element, 0);
    }
    return place(pieces, element, m_tree[element].last);
}

XmlElement XmlEdit::insertBefore(XmlElement sibling, std::string_view fragment)
{
    auto const parent = m_tree[sibling.node].parent;
    if (parent == 0) {
        return {};
    }
    auto const indentation = beginsLine(sibling) ? lineIndentation(sibling.node) : std::nullopt;
    auto const pieces = readFragment(fragment, indentation);
    auto const first = place(pieces, parent, sibling.node);
    if (indentation && !pieces.empty()) {
        placeText(m_lineEnd + *indentation, parent, sibling.node);
    }
    return first;
}

XmlElement XmlEdit::insertAfter(XmlElement sibling, std::string_view fragment)
{
    auto anchor = sibling.node;
    if (m_tree[anchor].parent == 0) {
        return {};
    }
    // A comment at the end of the element's line belongs to it.
    auto const blank = m_tree[anchor].next;
    auto const comment = m_tree.isBlankText(blank) ? m_tree[blank].next : blank;
    if (!endsLine(anchor) && m_tree[comment].kind == XmlTree::Kind::other && endsLine(comment)) {
        anchor = comment;
    }
    return insertBehind(anchor, fragment, endsLine(anchor));
}

XmlElement XmlEdit::replaceElement(XmlElement element, std::string_view fragment)
{
    auto const parent = m_tree[element.node].parent;
    if (parent == 0) {
        return {};
    }
    bool const hasLines = beginsLine(element) || m_tree.textOf(element.node).find_first_of("\r\n") != npos;
    auto const pieces = readFragment(fragment, hasLines ? lineIndentation(element.node) : std::nullopt);
    auto const first = place(pieces, parent, element.node);
    if (!pieces.empty()) {
        m_tree.unlink(element.node);
    }
    return first;
}

void XmlEdit::removeElement(XmlElement element)
{
    auto const [parent, previous, next] = std::array { m_tree[element.node].parent,
        m_tree[element.node].previous, m_tree[element.node].next };
    if (parent == 0) {
        return;
    }
    if (beginsLine(element) && endsLine(element.node)) {
        auto& text = m_tree[previous].open;
        text = text.substr(0, lastLineEnd(text));
    }
    m_tree.unlink(element.node);
    m_tree.mergeTexts(previous, next);
    closeAgain(parent);
}
