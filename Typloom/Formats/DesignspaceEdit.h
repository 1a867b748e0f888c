#pragma once

#include "Typloom/Formats/XmlEdit.h"
#include "Typloom/TyploomCore/TLFont.h"

#include <set>

/// Edits of a designspace file where it stands.
class DesignspaceEdit {
public:
    explicit DesignspaceEdit(XmlEdit& edit);

    /// The `<source>` of that number, if it names that file and layer; else the first that does; else none.
    XmlElement findSource(
        std::size_t number, std::string_view filename, std::optional<std::string> const& layer) const;

    struct NewSource {
        std::string filename;
        std::string name;
        std::string styleName;
        std::optional<std::string> layer;
        std::vector<std::pair<std::string, double>> location; ///< Axis name and design coordinate.
    };
    /// Behind another source, or at the end when that is none. The family name is that of the first source.
    XmlElement addSource(NewSource const& source, XmlElement behind);
    void removeSource(XmlElement source);
    void setStyleName(XmlElement source, std::string const& styleName);
    /// The source's place on one axis, in design coordinates.
    void setPlace(XmlElement source, std::string const& axisName, double value);
    /// The names in use by sources.
    std::set<std::string> sourceNames() const;

    /// Everywhere that names axes: locations, conditions, mappings, instances, axis subsets.
    void renameAxes(std::map<std::string, std::string> const& newNames);
    /// `index`: its place among the axes. Without a map user and design coordinates are the same.
    void addAxis(TLAxisState const& axis, std::size_t index);
    /// With everything that names it.
    void removeAxis(std::string const& name);
    /// False when the axis has a map, which would have to change too.
    bool setValues(std::string const& name, TLAxisState const& axis);
    void setTag(std::string const& name, std::string const& tag);
    std::set<std::string> tags() const;

private:
    XmlElement axisNamed(std::string const& name) const;
    std::vector<XmlElement> namingElements() const;

    XmlEdit& m_edit;
    std::vector<XmlElement> m_sources; ///< Those that the file had.
};
