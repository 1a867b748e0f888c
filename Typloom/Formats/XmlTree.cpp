#include "Typloom/Formats/XmlTree.h"

#include "Typloom/Formats/XmlStartTag.h"

#include <algorithm>
#include <array>

namespace {

constexpr auto npos = std::string_view::npos;

/// Cuts a text into nodes. Depth costs no stack.
class PieceReader {
public:
    PieceReader(XmlTree& tree, XmlTree::Index parent, std::string_view text)
        : m_tree(tree)
        , m_outermost(parent)
        , m_parent(parent)
        , m_text(text)
    {
    }

    std::optional<XmlScanProblem> read()
    {
        while (m_offset < m_text.size() && !m_problem) {
            readPiece();
        }
        if (!m_problem && m_parent != m_outermost) {
            fail("<" + std::string(nameInTag(m_tree[m_parent].open)) + "> has no end");
        }
        return m_problem;
    }

private:
    void readPiece()
    {
        auto const rest = m_text.substr(m_offset);
        if (rest.front() != '<') {
            add(XmlTree::Kind::text, std::min(rest.find('<'), rest.size()));
        } else if (rest.starts_with("<!--")) {
            add(XmlTree::Kind::other, endOf(rest, "-->", 4));
        } else if (rest.starts_with("<![CDATA[")) {
            add(XmlTree::Kind::data, endOf(rest, "]]>", 9));
        } else if (rest.starts_with("<?")) {
            add(XmlTree::Kind::other, endOf(rest, "?>", 2));
        } else if (rest.starts_with("<!")) {
            add(XmlTree::Kind::other, endOfDeclaration(rest));
        } else if (rest.starts_with("</")) {
            closeElement(endOf(rest, ">", 2));
        } else {
            openElement(endOfTag(rest));
        }
    }

    /// 0 when there is no end.
    static std::size_t endOf(std::string_view rest, std::string_view end, std::size_t from)
    {
        auto const found = rest.find(end, from);
        return found == npos ? 0 : found + end.size();
    }

    static std::size_t endOfDeclaration(std::string_view rest)
    {
        std::size_t open = 0;
        for (std::size_t offset = 0; offset < rest.size(); ++offset) {
            open += rest[offset] == '<' ? 1 : 0;
            if (rest[offset] == '>' && --open == 0) {
                return offset + 1;
            }
        }
        return 0;
    }

    static std::size_t endOfTag(std::string_view rest)
    {
        std::size_t offset = 0;
        while ((offset = rest.find_first_of("\"'>", offset)) != npos && rest[offset] != '>') {
            auto const quote = rest.find(rest[offset], offset + 1);
            offset = quote == npos ? rest.size() : quote + 1;
        }
        return offset == npos ? 0 : offset + 1;
    }

    XmlTree::Index add(XmlTree::Kind kind, std::size_t length)
    {
        if (length == 0) {
            fail("what begins here has no end");
            return 0;
        }
        auto const node = m_tree.make(kind, m_text.substr(m_offset, length));
        m_tree.link(node, m_parent, 0);
        m_offset += length;
        return node;
    }

    void openElement(std::size_t length)
    {
        auto const tag = m_text.substr(m_offset, length);
        if (length != 0 && !isWholeStartTag(tag)) {
            return fail("this is no tag with attributes");
        }
        auto const element = add(XmlTree::Kind::element, length);
        m_parent = element == 0 || isSelfClosing(tag) ? m_parent : element;
    }

    void closeElement(std::size_t length)
    {
        auto const tag = m_text.substr(m_offset, length);
        auto const name = nameInTag(tag);
        bool const endsParent = m_parent != m_outermost && name == nameInTag(m_tree[m_parent].open);
        if (length == 0 || !endsParent
            || !isXmlBlank(tag.substr(2 + name.size(), length - 3 - name.size()))) {
            return fail("this end tag ends nothing");
        }
        m_tree[m_parent].close = tag;
        m_parent = m_tree[m_parent].parent;
        m_offset += length;
    }

    void fail(std::string reason) { m_problem = XmlScanProblem { m_offset, std::move(reason) }; }

    XmlTree& m_tree;
    XmlTree::Index m_outermost;
    XmlTree::Index m_parent;
    std::string_view m_text;
    std::size_t m_offset { 0 };
    std::optional<XmlScanProblem> m_problem;
};

} // namespace

XmlTree::XmlTree()
{
    make(Kind::document, {});
}

std::string_view XmlTree::keep(std::string text)
{
    return m_texts.emplace_back(std::move(text));
}

std::optional<XmlScanProblem> XmlTree::parseInto(Index parent, std::string_view text)
{
    return PieceReader(*this, parent, text).read();
}

XmlTree::Index XmlTree::make(Kind kind, std::string_view open)
{
    m_nodes.push_back(Node { .kind = kind, .open = open, .close = {} });
    return static_cast<Index>(m_nodes.size() - 1);
}

void XmlTree::link(Index node, Index parent, Index before)
{
    auto const previous = before == 0 ? m_nodes[parent].last : m_nodes[before].previous;
    m_nodes[node].parent = parent;
    m_nodes[node].previous = previous;
    m_nodes[node].next = before;
    (previous == 0 ? m_nodes[parent].first : m_nodes[previous].next) = node;
    (before == 0 ? m_nodes[parent].last : m_nodes[before].previous) = node;
}

void XmlTree::unlink(Index node)
{
    auto const [parent, previous, next]
        = std::array { m_nodes[node].parent, m_nodes[node].previous, m_nodes[node].next };
    (previous == 0 ? m_nodes[parent].first : m_nodes[previous].next) = next;
    (next == 0 ? m_nodes[parent].last : m_nodes[next].previous) = previous;
    m_nodes[node].parent = m_nodes[node].previous = m_nodes[node].next = 0;
}

void XmlTree::mergeTexts(Index previous, Index next)
{
    if (previous != 0 && next != 0 && m_nodes[previous].kind == Kind::text
        && m_nodes[next].kind == Kind::text) {
        m_nodes[next].open = keep(std::string(m_nodes[previous].open) + std::string(m_nodes[next].open));
        unlink(previous);
        previous = 0;
    }
    for (auto const node : { previous, next }) {
        if (node != 0 && m_nodes[node].kind == Kind::text && m_nodes[node].open.empty()) {
            unlink(node);
        }
    }
}

bool XmlTree::isBlankText(Index node) const
{
    return m_nodes[node].kind == Kind::text && isXmlBlank(m_nodes[node].open);
}

std::string XmlTree::textOf(Index outermost) const
{
    std::string text;
    for (Index node = outermost;;) {
        text += m_nodes[node].open;
        if (m_nodes[node].first != 0) {
            node = m_nodes[node].first;
            continue;
        }
        text += m_nodes[node].close;
        while (node != outermost && m_nodes[node].next == 0) {
            node = m_nodes[node].parent;
            text += m_nodes[node].close;
        }
        if (node == outermost) {
            return text;
        }
        node = m_nodes[node].next;
    }
}
