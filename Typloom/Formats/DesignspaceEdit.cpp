#include "Typloom/Formats/DesignspaceEdit.h"

#include "Typloom/Formats/Numbers.h"

#include <algorithm>
#include <array>

namespace {

std::string attributeText(std::string_view name, std::string_view value)
{
    return " " + std::string(name) + "=\"" + xmlEscaped(value) + "\"";
}

std::string dimensionText(std::string const& axisName, double value)
{
    return "<dimension" + attributeText("name", axisName) + attributeText("xvalue", describeNumber(value))
        + "/>";
}

XmlElement ensureChild(XmlEdit& edit, XmlElement parent, std::string const& name)
{
    auto const child = edit.child(parent, name);
    return child ? child : edit.appendChild(parent, "<" + name + ">\n</" + name + ">");
}

} // namespace

DesignspaceEdit::DesignspaceEdit(XmlEdit& edit)
    : m_edit(edit)
    , m_sources(edit.children(edit.child(edit.root(), "sources"), "source"))
{
}

XmlElement DesignspaceEdit::findSource(
    std::size_t number, std::string_view filename, std::optional<std::string> const& layer) const
{
    auto const isIt = [&](XmlElement source) {
        auto const named = m_edit.attribute(source, "layer");
        return m_edit.attribute(source, "filename") == filename
            && (named && !named->empty() ? named : std::nullopt) == layer;
    };
    if (number < m_sources.size() && isIt(m_sources[number])) {
        return m_sources[number];
    }
    auto const found = std::find_if(m_sources.begin(), m_sources.end(), isIt);
    return found == m_sources.end() ? XmlElement {} : *found;
}

XmlElement DesignspaceEdit::addSource(NewSource const& source, XmlElement behind)
{
    auto const family = m_sources.empty() ? std::nullopt : m_edit.attribute(m_sources.front(), "familyname");
    std::string text
        = "<source" + attributeText("filename", source.filename) + attributeText("name", source.name);
    text += family ? attributeText("familyname", *family) : "";
    text += source.styleName.empty() ? "" : attributeText("stylename", source.styleName);
    text += source.layer ? attributeText("layer", *source.layer) : "";
    text += ">\n\t<location>";
    for (auto const& [axisName, value] : source.location) {
        text += "\n\t\t" + dimensionText(axisName, value);
    }
    text += "\n\t</location>\n</source>";
    return behind ? m_edit.insertAfter(behind, text)
                  : m_edit.appendChild(ensureChild(m_edit, m_edit.root(), "sources"), text);
}

void DesignspaceEdit::removeSource(XmlElement source)
{
    m_edit.removeElement(source);
}

void DesignspaceEdit::setStyleName(XmlElement source, std::string const& styleName)
{
    m_edit.setAttribute(source, "stylename", styleName);
}

void DesignspaceEdit::setPlace(XmlElement source, std::string const& axisName, double value)
{
    auto const location = ensureChild(m_edit, source, "location");
    auto const dimensions = m_edit.children(location, "dimension");
    auto const isOnAxis = [&](XmlElement element) { return m_edit.attribute(element, "name") == axisName; };
    auto const last = std::find_if(dimensions.rbegin(), dimensions.rend(), isOnAxis); // The one that counts.
    if (last == dimensions.rend()) {
        m_edit.appendChild(location, dimensionText(axisName, value));
        return;
    }
    m_edit.removeAttribute(*last, "uservalue");
    m_edit.setAttribute(*last, "xvalue", describeNumber(value));
}

std::set<std::string> DesignspaceEdit::sourceNames() const
{
    std::set<std::string> names;
    for (auto const source : m_edit.children(m_edit.child(m_edit.root(), "sources"), "source")) {
        names.insert(m_edit.attribute(source, "name").value_or(""));
    }
    return names;
}

XmlElement DesignspaceEdit::axisNamed(std::string const& name) const
{
    for (auto const axis : m_edit.children(m_edit.child(m_edit.root(), "axes"), "axis")) {
        auto const own = m_edit.attribute(axis, "name").value_or("");
        if (own == name || (own.empty() && m_edit.attribute(axis, "tag") == name)) {
            return axis;
        }
    }
    return {};
}

/// The elements that name an axis, wherever they stand outside of libraries.
std::vector<XmlElement> DesignspaceEdit::namingElements() const
{
    static constexpr std::array names { "dimension", "condition", "axis-subset" };
    std::vector<XmlElement> found;
    std::vector<XmlElement> open { m_edit.root() };
    while (!open.empty()) {
        auto const element = open.back();
        open.pop_back();
        auto const name = m_edit.name(element);
        if (std::find(names.begin(), names.end(), name) != names.end()) {
            found.push_back(element);
        } else if (name != "lib") {
            auto const children = m_edit.children(element);
            open.insert(open.end(), children.begin(), children.end());
        }
    }
    return found;
}

void DesignspaceEdit::renameAxes(std::map<std::string, std::string> const& newNames)
{
    std::vector<std::pair<XmlElement, std::string>> changes;
    for (auto const& [name, newName] : newNames) {
        changes.emplace_back(axisNamed(name), newName);
    }
    for (auto const element : namingElements()) {
        auto const change = newNames.find(m_edit.attribute(element, "name").value_or(""));
        if (change != newNames.end()) {
            changes.emplace_back(element, change->second);
        }
    }
    for (auto const& [element, newName] : changes) {
        m_edit.setAttribute(element, "name", newName);
    }
}

void DesignspaceEdit::addAxis(TLAxisState const& axis, std::size_t index)
{
    auto text = "<axis" + attributeText("tag", axis.tag.value_or("")) + attributeText("name", axis.name);
    if (axis.discreteValues.empty()) {
        text += attributeText("minimum", describeNumber(std::min(axis.minimum, axis.defaultValue)))
            + attributeText("maximum", describeNumber(std::max(axis.maximum, axis.defaultValue)));
    } else {
        std::string values;
        for (double const value : axis.discreteValues) {
            values += (values.empty() ? "" : " ") + describeNumber(value);
        }
        text += attributeText("values", values);
    }
    text += attributeText("default", describeNumber(axis.defaultValue))
        + (axis.isHidden ? " hidden=\"1\"" : "") + "/>";
    auto axesElement = m_edit.child(m_edit.root(), "axes");
    if (!axesElement) {
        auto const children = m_edit.children(m_edit.root());
        axesElement = children.empty() ? m_edit.appendChild(m_edit.root(), "<axes>\n</axes>")
                                       : m_edit.insertBefore(children.front(), "<axes>\n</axes>");
    }
    auto const axes = m_edit.children(axesElement, "axis");
    if (axes.empty()) {
        auto const children = m_edit.children(axesElement);
        children.empty() ? m_edit.appendChild(axesElement, text)
                         : m_edit.insertBefore(children.front(), text);
    } else if (index == 0) {
        m_edit.insertBefore(axes.front(), text);
    } else {
        m_edit.insertAfter(axes[std::min(index, axes.size()) - 1], text);
    }
}

void DesignspaceEdit::removeAxis(std::string const& name)
{
    if (auto const axis = axisNamed(name)) {
        m_edit.removeElement(axis);
    }
    for (auto const element : namingElements()) {
        if (m_edit.attribute(element, "name") == name) {
            m_edit.removeElement(element);
        }
    }
}

bool DesignspaceEdit::setValues(std::string const& name, TLAxisState const& axis)
{
    auto const element = axisNamed(name);
    if (!element || m_edit.child(element, "map") || m_edit.attribute(element, "values")) {
        return false;
    }
    m_edit.setAttribute(element, "minimum", describeNumber(std::min(axis.minimum, axis.defaultValue)));
    m_edit.setAttribute(element, "maximum", describeNumber(std::max(axis.maximum, axis.defaultValue)));
    m_edit.setAttribute(element, "default", describeNumber(axis.defaultValue));
    return true;
}

void DesignspaceEdit::setTag(std::string const& name, std::string const& tag)
{
    m_edit.setAttribute(axisNamed(name), "tag", tag);
}

std::set<std::string> DesignspaceEdit::tags() const
{
    std::set<std::string> tags;
    for (auto const axis : m_edit.children(m_edit.child(m_edit.root(), "axes"), "axis")) {
        tags.insert(m_edit.attribute(axis, "tag").value_or(""));
    }
    return tags;
}
