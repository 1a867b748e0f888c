#include "Typloom/Formats/GlifEdit.h"

#include "Typloom/Formats/GlyphDesignspace.h"
#include "Typloom/Formats/Numbers.h"
#include "Typloom/Formats/PlistEdit.h"
#include "Typloom/Formats/PointTypeName.h"
#include "Typloom/Formats/VariableComponents.h"

#include <algorithm>
#include <span>

namespace {

using Elements = std::vector<XmlElement>;
using Components = std::vector<TLComponent>;

constexpr std::array matrixNames { "xScale", "xyScale", "yxScale", "yScale", "xOffset", "yOffset" };
constexpr std::array matrixDefaults { 1.0, 0.0, 0.0, 1.0, 0.0, 0.0 };

Components componentsOf(TLOutline const& outline, bool variable)
{
    Components found;
    std::copy_if(outline.components.begin(), outline.components.end(), std::back_inserter(found),
        [variable](TLComponent const& component) { return component.isVariable == variable; });
    return found;
}

template <class T, class Same>
bool allAlike(std::vector<T> const& one, std::vector<T> const& other, Same same)
{
    return std::equal(one.begin(), one.end(), other.begin(), other.end(), same);
}

bool haveSamePoints(TLContour const& one, TLContour const& other)
{
    return allAlike(one.points, other.points, [](TLPoint const& left, TLPoint const& right) {
        return left.type == right.type && left.smooth == right.smooth && left.name == right.name;
    });
}

bool haveSameBases(Components const& one, Components const& other)
{
    return allAlike(one, other, [](auto const& left, auto const& right) { return left.base == right.base; });
}

bool haveSameNames(TLOutline const& one, TLOutline const& other)
{
    return allAlike(one.anchors, other.anchors,
        [](TLAnchor const& left, TLAnchor const& right) { return left.name == right.name; });
}

std::string attributeText(std::string_view name, std::string_view value)
{
    return " " + std::string(name) + "=\"" + xmlEscaped(value) + "\"";
}

std::string placeText(double x, double y)
{
    return attributeText("x", describeNumber(x)) + attributeText("y", describeNumber(y));
}

std::string contourText(TLContour const& contour)
{
    std::string text = "<contour>";
    for (auto const& point : contour.points) {
        text += "\n\t<point" + placeText(point.x, point.y);
        text += point.type == TLPointType::offcurve ? "" : attributeText("type", pointTypeName(point.type));
        text += point.smooth ? " smooth=\"yes\"" : "";
        text += point.name.empty() ? "" : attributeText("name", point.name);
        text += "/>";
    }
    return text + "\n</contour>";
}

std::string componentText(TLComponent const& component)
{
    std::string text = "<component" + attributeText("base", component.base);
    for (std::size_t index = 0; index < matrixNames.size(); ++index) {
        if (component.transform[index] != matrixDefaults[index]) {
            text += attributeText(matrixNames[index], describeNumber(component.transform[index]));
        }
    }
    return text + "/>";
}

PlistValue variableComponent(TLComponent const& component)
{
    PlistValue::Dictionary entries { { "base", { component.base } } };
    if (!component.location.empty()) {
        auto& location = entries["location"].content.emplace<PlistValue::Dictionary>();
        for (auto const& [axisName, value] : component.location) {
            location.emplace(axisName, PlistValue { value });
        }
    }
    auto transformation = transformationEntry(component.transform);
    if (!transformation.dictionary()->empty()) {
        entries.emplace("transformation", std::move(transformation));
    }
    return { std::move(entries) };
}

class OutlineChange {
public:
    OutlineChange(XmlEdit& glif, TLOutline const& before, TLOutline const& wanted)
        : m_glif(glif)
        , m_before(before)
        , m_wanted(wanted)
        , m_isFormat1(glif.attribute(glif.root(), "format") == "1")
    {
    }

    void run()
    {
        changeAdvance("width", m_before.advance, m_wanted.advance);
        changeAdvance("height", m_before.height, m_wanted.height);
        bool const hasSameDrawing = allAlike(m_before.contours, m_wanted.contours, haveSamePoints)
            && haveSameBases(componentsOf(m_before, false), componentsOf(m_wanted, false))
            && (!m_isFormat1 || haveSameNames(m_before, m_wanted));
        if (hasSameDrawing) {
            changeNumbers();
        } else {
            rewriteOutline();
        }
        changeAnchors();
        changeVariableComponents();
    }

private:
    XmlElement outline() const { return m_glif.child(m_glif.root(), "outline"); }

    void setNumber(XmlElement element, std::string_view name, double before, double wanted)
    {
        if (before != wanted) {
            m_glif.setAttribute(element, name, describeNumber(wanted));
        }
    }

    void changeAdvance(char const* name, double before, double wanted)
    {
        if (before == wanted) {
            return;
        }
        auto advance = m_glif.child(m_glif.root(), "advance");
        if (!advance) {
            auto const children = m_glif.children(m_glif.root());
            advance = children.empty() ? m_glif.appendChild(m_glif.root(), "<advance/>")
                                       : m_glif.insertBefore(children.front(), "<advance/>");
        }
        m_glif.setAttribute(advance, name, describeNumber(wanted));
    }

    /// The contours and the lone points that are anchors in format 1.
    void sortContours(Elements& contours, Elements& anchors) const
    {
        for (auto const contour : m_glif.children(outline(), "contour")) {
            auto const points = m_glif.children(contour, "point");
            bool const isAnchor = m_isFormat1 && points.size() == 1
                && m_glif.attribute(points.front(), "type") == "move"
                && !m_glif.attribute(points.front(), "name").value_or("").empty();
            if (isAnchor) {
                anchors.push_back(points.front());
            } else if (!points.empty()) {
                contours.push_back(contour);
            }
        }
    }

    void changeNumbers()
    {
        Elements contours;
        Elements anchors;
        sortContours(contours, anchors);
        for (std::size_t index = 0; index < contours.size(); ++index) {
            auto const points = m_glif.children(contours[index], "point");
            for (std::size_t at = 0; at < points.size(); ++at) {
                changePlace(
                    points[at], m_before.contours[index].points[at], m_wanted.contours[index].points[at]);
            }
        }
        for (std::size_t index = 0; index < anchors.size(); ++index) {
            changePlace(anchors[index], m_before.anchors[index], m_wanted.anchors[index]);
        }
        changeComponents();
    }

    template <class Place> void changePlace(XmlElement element, Place const& before, Place const& wanted)
    {
        setNumber(element, "x", before.x, wanted.x);
        setNumber(element, "y", before.y, wanted.y);
    }

    void changeComponents()
    {
        auto const before = componentsOf(m_before, false);
        auto const wanted = componentsOf(m_wanted, false);
        auto const elements = m_glif.children(outline(), "component");
        for (std::size_t index = 0; index < elements.size(); ++index) {
            for (std::size_t part = 0; part < matrixNames.size(); ++part) {
                setNumber(elements[index], matrixNames[part], before[index].transform[part],
                    wanted[index].transform[part]);
            }
        }
    }

    void rewriteOutline()
    {
        auto element = outline() ? outline() : m_glif.appendChild(m_glif.root(), "<outline/>");
        for (auto const child : m_glif.children(element)) {
            m_glif.removeElement(child);
        }
        for (auto const& contour : m_wanted.contours) {
            m_glif.appendChild(element, contourText(contour));
        }
        for (auto const& component : componentsOf(m_wanted, false)) {
            m_glif.appendChild(element, componentText(component));
        }
        for (auto const& anchor : m_isFormat1 ? m_wanted.anchors : std::vector<TLAnchor> {}) {
            m_glif.appendChild(
                element, contourText({ { { anchor.x, anchor.y, TLPointType::move, false, anchor.name } } }));
        }
    }

    void changeAnchors()
    {
        auto const anchors = m_glif.children(m_glif.root(), "anchor");
        if (m_isFormat1 || m_before.anchors == m_wanted.anchors) {
            return;
        }
        if (haveSameNames(m_before, m_wanted)) {
            for (std::size_t index = 0; index < anchors.size(); ++index) {
                changePlace(anchors[index], m_before.anchors[index], m_wanted.anchors[index]);
            }
            return;
        }
        for (auto const anchor : anchors) {
            m_glif.removeElement(anchor);
        }
        for (auto const& anchor : m_wanted.anchors) {
            auto const text
                = "<anchor" + placeText(anchor.x, anchor.y) + attributeText("name", anchor.name) + "/>";
            auto const next = outline();
            next ? m_glif.insertBefore(next, text) : m_glif.appendChild(m_glif.root(), text);
        }
    }

    void changeVariableComponents()
    {
        auto const before = componentsOf(m_before, true);
        auto const wanted = componentsOf(m_wanted, true);
        if (before == wanted) {
            return;
        }
        if (wanted.empty()) {
            removePlistEntry(m_glif, findLibrary(m_glif), variableComponentsKey);
            return removeEmptyLibrary(m_glif);
        }
        auto const library = ensureLibrary(m_glif);
        auto const entry = findPlistEntry(m_glif, library, variableComponentsKey);
        auto const items = m_glif.children(entry);
        if (!haveSameBases(before, wanted) || items.size() != wanted.size()) {
            PlistValue::Array values;
            std::transform(wanted.begin(), wanted.end(), std::back_inserter(values), variableComponent);
            setPlistEntry(m_glif, library, variableComponentsKey, { std::move(values) });
            return;
        }
        for (std::size_t index = 0; index < items.size(); ++index) {
            changeVariableComponent(items[index], before[index], wanted[index]);
        }
    }

    void changeVariableComponent(XmlElement item, TLComponent const& before, TLComponent const& wanted)
    {
        auto const value = variableComponent(wanted);
        for (std::string_view const key : { "location", "transformation" }) {
            bool const differs = key == "location" ? before.location != wanted.location
                                                   : before.transform != wanted.transform;
            if (!differs) {
                continue;
            }
            if (auto const* part = value.find(key)) {
                setPlistEntry(m_glif, item, key, *part);
            } else {
                removePlistEntry(m_glif, item, key);
            }
        }
    }

    XmlEdit& m_glif;
    TLOutline const& m_before;
    TLOutline const& m_wanted;
    bool m_isFormat1;
};

} // namespace

void changeOutline(XmlEdit& glif, TLOutline const& before, TLOutline const& wanted)
{
    OutlineChange(glif, before, wanted).run();
}
