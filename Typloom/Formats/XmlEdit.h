#pragma once

#include "Typloom/Formats/Result.h"
#include "Typloom/Formats/XmlEscapes.h"
#include "Typloom/Formats/XmlTree.h"

#include <map>
#include <optional>

/// An element of an `XmlEdit`, or none. Stays good through all edits; an edit of a removed one
/// changes nothing that is written.
struct XmlElement {
    XmlTree::Index node { 0 };
    explicit operator bool() const { return node != 0; }
    bool operator==(XmlElement const&) const = default;
};

/// Edits an XML text in place: every byte that no edit touches stays as it is.
///
/// A fragment is well-formed XML with lines ending in "\n" and one tab for each level of indentation,
/// "<location>\n\t<dimension/>\n</location>"; texts and values in it went through `xmlEscaped`. It gets
/// the file's own indentation, line ends and way of closing empty elements, and stays on one line
/// where its neighbours do. A fragment that is not well-formed changes nothing and gives no element.
class XmlEdit {
public:
    /// `displayName` is the name that errors give.
    static Result<XmlEdit> parse(std::string text, std::string displayName);

    XmlElement root() const;
    XmlElement parent(XmlElement element) const; ///< None for the root.
    XmlElement child(XmlElement element, std::string_view name) const; ///< The first of that name.
    /// All of that name; with an empty name all.
    std::vector<XmlElement> children(XmlElement element, std::string_view name = {}) const;
    XmlElement nextSibling(XmlElement element) const;
    std::string_view name(XmlElement element) const;
    std::optional<std::string> attribute(XmlElement element, std::string_view name) const;
    /// The texts and CDATA sections right in the element, as one.
    std::string text(XmlElement element) const;
    FormatError errorAt(XmlElement element, std::string reason) const;

    void setAttribute(XmlElement element, std::string_view name, std::string_view value);
    void removeAttribute(XmlElement element, std::string_view name);
    /// For an element that holds no elements.
    void setText(XmlElement element, std::string_view text);

    /// These give the first element of the fragment. Beside the root there is no place.
    XmlElement appendChild(XmlElement parent, std::string_view fragment);
    XmlElement insertBefore(XmlElement sibling, std::string_view fragment);
    XmlElement insertAfter(XmlElement sibling, std::string_view fragment);
    XmlElement replaceElement(XmlElement element, std::string_view fragment);
    /// With its line, when it stands there alone. Not for the root.
    void removeElement(XmlElement element);

    /// The whole text.
    std::string result() const { return m_tree.textOf(0); }

    /// Whether the element is the first thing on its line.
    bool beginsLine(XmlElement element) const { return beginsLine(element.node); }

private:
    using Index = XmlTree::Index;
    using Indentation = std::optional<std::string>; ///< None: no line breaks.
    struct Emptiness { ///< How an element without content was written.
        std::string ending; ///< Of the start tag.
        std::string_view close;
        std::string content;
    };

    void findStyle(std::string_view text);
    Index elementAt(Index node) const;
    Indentation lineIndentation(Index node) const;
    bool beginsLine(Index node) const;
    bool endsLine(Index node) const;
    std::string laidOut(std::string_view fragment, Indentation const& indentation) const;
    std::vector<Index> readFragment(std::string_view fragment, Indentation const& indentation);
    XmlElement place(std::vector<Index> const& pieces, Index parent, Index before);
    void placeText(std::string text, Index parent, Index before);
    void openUp(Index element);
    void closeAgain(Index element);
    XmlElement insertBehind(Index anchor, std::string_view fragment, bool onNewLine);

    XmlTree m_tree;
    std::string_view m_text;
    std::string m_file;
    std::string m_lineEnd { "\n" };
    std::string m_unit { "  " }; ///< One level of indentation.
    std::string m_ending { "/>" }; ///< Of an element without content.
    char m_quote { '"' };
    std::map<Index, Emptiness> m_opened;
};
