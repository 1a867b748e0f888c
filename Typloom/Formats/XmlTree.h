#pragma once

#include "Typloom/Formats/XmlScan.h"

#include <cstdint>
#include <deque>
#include <vector>

/// An XML text as a tree of its pieces. Written one after the other they are the text again, byte by
/// byte; a piece that is not edited is a view of the text that was read.
class XmlTree {
public:
    using Index = std::uint32_t;
    enum class Kind : std::uint8_t {
        document, ///< Node 0, without text of its own.
        element,
        text,
        data, ///< A CDATA section.
        other ///< Comment, processing instruction, document type.
    };
    struct Node {
        Kind kind { Kind::text };
        std::string_view open; ///< The start tag; of what is no element, all of it.
        std::string_view close; ///< The end tag; empty after a tag that closes itself.
        Index parent { 0 }; ///< 0 in each of these: none, or the document.
        Index first { 0 };
        Index last { 0 };
        Index previous { 0 };
        Index next { 0 };
    };

    XmlTree();
    XmlTree(XmlTree&&) = default;
    XmlTree& operator=(XmlTree&&) = default;
    XmlTree(XmlTree const&) = delete; ///< The nodes of a copy would view the texts of the first.
    Node& operator[](Index node) { return m_nodes[node]; }
    Index size() const { return static_cast<Index>(m_nodes.size()); }
    Node const& operator[](Index node) const { return m_nodes[node]; }

    /// Keeps a text for as long as the tree lives.
    std::string_view keep(std::string text);
    /// Adds the pieces of a kept text at the end of a node.
    std::optional<XmlScanProblem> parseInto(Index parent, std::string_view text);

    Index make(Kind kind, std::string_view open);
    /// `before` 0: at the end. The node is nowhere in the tree.
    void link(Index node, Index parent, Index before);
    void unlink(Index node);
    /// Makes one text of the two at both sides of a place, and none of an empty one.
    void mergeTexts(Index previous, Index next);

    bool isBlankText(Index node) const;
    bool isElement(Index node) const { return m_nodes[node].kind == Kind::element; }
    /// The text of a node with all that is in it.
    std::string textOf(Index node) const;

private:
    std::deque<std::string> m_texts; ///< Never moved: the nodes view them.
    std::vector<Node> m_nodes;
};
