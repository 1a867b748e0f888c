#include "Typloom/Formats/GlifReader.h"

#include "Typloom/Formats/GlyphDesignspace.h"
#include "Typloom/Formats/Numbers.h"
#include "Typloom/Formats/VariableComponents.h"

namespace {

class GlifReader {
public:
    explicit GlifReader(XmlDocument const& document)
        : m_document(document)
        , m_numbers(document)
    {
    }

    Result<Glif> read()
    {
        auto const root = m_document.root();
        if (std::string_view(root.name()) != "glyph") {
            return m_document.errorAt(root, "it is no glyph, its root element is " + inQuotes(root.name()));
        }
        m_isFormat1 = std::string_view(root.attribute("format").value()) == "1";
        auto const advance = root.child("advance");
        m_glif.outline.advance = m_numbers.number(advance, "width", 0);
        m_glif.outline.height = m_numbers.number(advance, "height", 0);
        for (auto const node : root.children("unicode")) {
            if (auto const character = parseCharacter(node.attribute("hex").value())) {
                m_glif.unicodes.push_back(*character);
            }
        }
        if (!m_isFormat1) {
            for (auto const node : root.children("anchor")) {
                readAnchor(node);
            }
        }
        for (auto const node : root.child("outline").children()) {
            std::string_view const kind = node.name();
            if (kind == "contour") {
                readContour(node);
            } else if (kind == "component") {
                readComponent(node);
            }
        }
        readLibrary(root.child("lib").child("dict"));
        if (m_numbers.error()) {
            return *m_numbers.error();
        }
        return std::move(m_glif);
    }

private:
    void readAnchor(pugi::xml_node node)
    {
        m_glif.outline.anchors.push_back({ node.attribute("name").value(),
            m_numbers.requiredNumber(node, "x"), m_numbers.requiredNumber(node, "y") });
    }

    void readContour(pugi::xml_node node)
    {
        TLContour contour;
        for (auto const pointNode : node.children("point")) {
            contour.points.push_back(readPoint(pointNode));
            if (contour.points.size() > 1 && contour.points.back().type == TLPointType::move) {
                m_numbers.fail(pointNode, "a point of type 'move' is not the first of its contour");
            }
        }
        if (contour.points.empty()) {
            return;
        }
        auto const& first = contour.points.front();
        // GLIF 1 has no anchors; a lone named point to move to stands for one.
        if (m_isFormat1 && contour.points.size() == 1 && first.type == TLPointType::move
            && !first.name.empty()) {
            m_glif.outline.anchors.push_back({ first.name, first.x, first.y });
            return;
        }
        m_glif.outline.contours.push_back(std::move(contour));
    }

    TLPoint readPoint(pugi::xml_node node)
    {
        return { m_numbers.requiredNumber(node, "x"), m_numbers.requiredNumber(node, "y"),
            readPointType(node), std::string_view(node.attribute("smooth").value()) == "yes",
            node.attribute("name").value() };
    }

    TLPointType readPointType(pugi::xml_node node)
    {
        auto const attribute = node.attribute("type");
        std::string_view const type = attribute ? attribute.value() : "offcurve";
        if (type == "line") {
            return TLPointType::line;
        }
        if (type == "curve") {
            return TLPointType::curve;
        }
        if (type == "qcurve") {
            return TLPointType::qcurve;
        }
        if (type == "move") {
            return TLPointType::move;
        }
        if (type != "offcurve") {
            m_numbers.fail(node, inQuotes(type) + " is no type of point");
        }
        return TLPointType::offcurve;
    }

    void readComponent(pugi::xml_node node)
    {
        TLComponent component;
        component.base = node.attribute("base").value();
        component.transform = { m_numbers.number(node, "xScale", 1), m_numbers.number(node, "xyScale", 0),
            m_numbers.number(node, "yxScale", 0), m_numbers.number(node, "yScale", 1),
            m_numbers.number(node, "xOffset", 0), m_numbers.number(node, "yOffset", 0) };
        if (component.base.empty()) {
            return m_numbers.fail(node, "a component names no glyph");
        }
        m_glif.outline.components.push_back(std::move(component));
    }

    /// Reads the entries that matter here; a library may hold a great deal else.
    void readLibrary(pugi::xml_node dictionary)
    {
        for (auto const key : dictionary.children("key")) {
            std::string_view const name = key.child_value();
            bool const isOfComponents = name == variableComponentsKey;
            auto* const entry = name == glyphDesignspaceKey ? &m_glif.glyphDesignspace
                : name == glyphAxesKey                      ? &m_glif.glyphAxes
                                                            : nullptr;
            if (!isOfComponents && !entry) {
                continue;
            }
            auto const node = nextElement(key);
            auto value = readPlistValue(m_document, node);
            if (!value) {
                m_numbers.fail(node, value.error().reason);
            } else if (entry) {
                *entry = std::move(*value);
            } else if (auto const problem = appendVariableComponents(*value, m_glif.outline.components)) {
                m_numbers.fail(node, *problem);
            }
        }
    }

    static pugi::xml_node nextElement(pugi::xml_node node)
    {
        do {
            node = node.next_sibling();
        } while (node && node.type() != pugi::node_element);
        return node;
    }

    XmlDocument const& m_document;
    XmlNumberReader m_numbers;
    Glif m_glif;
    bool m_isFormat1 { false };
};

} // namespace

Result<Glif> readGlif(std::string text, std::string displayName)
{
    auto const document = XmlDocument::parse(std::move(text), std::move(displayName));
    if (!document) {
        return document.error();
    }
    return GlifReader(*document).read();
}

std::vector<char32_t> findUnicodes(std::string_view glifText)
{
    std::vector<char32_t> found;
    auto const npos = std::string_view::npos;
    for (std::size_t offset = 0; (offset = glifText.find('<', offset)) != npos;) {
        auto const rest = glifText.substr(offset);
        if (rest.starts_with("<!--")) {
            auto const end = glifText.find("-->", offset);
            offset = end == npos ? glifText.size() : end;
            continue;
        }
        auto const tag = rest.substr(0, rest.find('>'));
        offset += tag.size();
        auto const attribute = tag.find("hex");
        auto const start = attribute == npos ? npos : tag.find_first_of("\"'", attribute);
        if (!tag.starts_with("<unicode") || start == npos) {
            continue;
        }
        auto const end = tag.find(tag[start], start + 1);
        auto const text = end == npos ? std::string_view {} : tag.substr(start + 1, end - start - 1);
        if (auto const character = parseCharacter(text)) {
            found.push_back(*character);
        }
    }
    return found;
}
