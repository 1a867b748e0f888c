#pragma once

#include "Platform/Foundation/NSObject.h"
#include "Typloom/TyploomCore/Export.h"

#include <optional>
#include <vector>

/// One dimension of a design space: of a font, or of a single glyph. Values are design coordinates.
class TYPLOOM_API TLAxis final : public NSObject {
public:
    /// A new axis has a fresh identifier, an empty name, and 0 for all values.
    TLAxis();
    /// An axis read from a file.
    TLAxis(std::string axisId, std::string name);

    std::string const& axisId() const { return m_axisId; }
    std::string const& name() const { return m_name; }
    void setName(std::string name);
    /// Four characters; none on an axis of a glyph.
    std::optional<std::string> const& axisTag() const { return m_tag; }
    void setAxisTag(std::optional<std::string> tag) { m_tag = std::move(tag); }

    double defaultValue() const { return m_defaultValue; }
    /// What is not finite is ignored.
    void setDefaultValue(double value);
    /// Bounds as the file gives them, minimum <= default <= maximum after reading.
    double minimum() const { return m_minimum; }
    double maximum() const { return m_maximum; }
    void setBounds(double minimum, double maximum);

    bool isHidden() const { return m_hidden; }
    void setHidden(bool hidden) { m_hidden = hidden; }
    /// The only values of a discrete axis, ascending; empty on a continuous one.
    std::vector<double> const& discreteValues() const { return m_discreteValues; }
    void setDiscreteValues(std::vector<double> values) { m_discreteValues = std::move(values); }
    bool isDiscrete() const { return !m_discreteValues.empty(); }

    /// Of an axis that moves several dimensions at once: their identifiers. A layer that stands off
    /// the axis has coordinates under them, and none under the axis. Usually empty.
    std::vector<std::string> const& partIds() const { return m_partIds; }
    void setPartIds(std::vector<std::string> partIds) { m_partIds = std::move(partIds); }

private:
    std::string m_axisId;
    std::string m_name;
    std::optional<std::string> m_tag;
    double m_defaultValue { 0 };
    double m_minimum { 0 };
    double m_maximum { 0 };
    bool m_hidden { false };
    std::vector<double> m_discreteValues;
    std::vector<std::string> m_partIds;
};
