#pragma once

#include "Platform/Foundation/NSObject.h"
#include "Typloom/TyploomCore/TLAxisValues.h"

#include <functional>

/// An axis as it is at one moment. Values are design coordinates.
struct TLAxisState {
    std::string axisId;
    std::string name {};
    std::optional<std::string> tag {};
    double defaultValue { 0 };
    double minimum { 0 };
    double maximum { 0 };
    bool isHidden { false };
    std::vector<double> discreteValues {};
    std::vector<std::string> partIds {};
    bool operator==(TLAxisState const&) const = default;
};

/// One dimension of a design space: of a font, or of a single glyph. Values are design coordinates.
class TYPLOOM_API TLAxis final : public NSObject {
public:
    /// A new axis has a fresh identifier, an empty name, and 0 for all values.
    TLAxis();
    /// An axis read from a file.
    TLAxis(std::string axisId, std::string name);
    explicit TLAxis(TLAxisState state);

    TLAxisState const& state() const { return m_state; }
    std::string const& axisId() const { return m_state.axisId; }
    TLAxisKey key() const { return m_key; }
    std::string const& name() const { return m_state.name; }
    void setName(std::string name);
    /// Four characters; none on an axis of a glyph.
    std::optional<std::string> const& axisTag() const { return m_state.tag; }
    void setAxisTag(std::optional<std::string> tag) { m_state.tag = std::move(tag); }

    double defaultValue() const { return m_state.defaultValue; }
    /// What is not finite, or beyond 1e15 either way, is ignored.
    void setDefaultValue(double value);
    /// Bounds as the file gives them, minimum <= default <= maximum after reading.
    double minimum() const { return m_state.minimum; }
    double maximum() const { return m_state.maximum; }
    void setBounds(double minimum, double maximum);

    bool isHidden() const { return m_state.isHidden; }
    void setHidden(bool hidden) { m_state.isHidden = hidden; }
    /// The only values of a discrete axis, ascending; empty on a continuous one.
    std::vector<double> const& discreteValues() const { return m_state.discreteValues; }
    void setDiscreteValues(std::vector<double> values) { m_state.discreteValues = std::move(values); }
    bool isDiscrete() const { return !m_state.discreteValues.empty(); }

    /// Of an axis that moves several dimensions at once: their identifiers. A layer that stands off
    /// the axis has coordinates under them, and none under the axis. Usually empty.
    std::vector<std::string> const& partIds() const { return m_state.partIds; }
    void setPartIds(std::vector<std::string> partIds) { m_state.partIds = std::move(partIds); }

    /// Set by the font or glyph that the axis belongs to; called before each change.
    void setChangeObserver(std::function<void()> observer) { m_observer = std::move(observer); }

private:
    void willChange() const;

    TLAxisState m_state;
    TLAxisKey m_key;
    std::function<void()> m_observer;
};
