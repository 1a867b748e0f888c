#pragma once

#include "Platform/Foundation/NSObject.h"
#include "Typloom/TyploomCore/TLAxisValues.h"
#include "Typloom/TyploomCore/TLStringHash.h"

#include <functional>

struct TLMasterState;

/// One full source of a font: a place in its design space at which every glyph may be drawn.
class TYPLOOM_API TLFontMaster final : public NSObject {
public:
    TLFontMaster(std::string id, std::string name);

    std::string const& id() const { return m_id; }
    std::string const& name() const { return m_name; }
    void setName(std::string name);

    /// The master's design coordinate on a font axis; 0 on an axis that it has no value for.
    double axisInternalValueValueForId(std::string_view axisId) const;
    /// The same by the axis's key. `hint`: its index in the font.
    double valueForKey(TLAxisKey key, std::size_t hint) const
    {
        auto const* value = m_values.find(key, hint);
        return value ? *value : 0;
    }
    /// What is not finite is ignored.
    void setAxisInternalValue(double value, std::string_view axisId);

    /// Vertical metrics in font units, for the lines of the edit view.
    struct Metrics {
        double unitsPerEm { 1000 };
        double ascender { 750 };
        double descender { -250 };
        double xHeight { 500 };
        double capHeight { 700 };
        bool operator==(Metrics const&) const = default;
    };
    Metrics const& metrics() const { return m_metrics; }
    void setMetrics(Metrics metrics) { m_metrics = metrics; }

    TLMasterState state() const;
    /// Becomes what it was then. Recorded nowhere.
    void restore(TLMasterState const& state);
    /// Set by the font that the master belongs to; called before each change, with the axis on which the
    /// master is moved, or none.
    using ChangeObserver = std::function<void(std::optional<TLAxisKey>)>;
    void setChangeObserver(ChangeObserver observer) { m_observer = std::move(observer); }

private:
    void willChange(std::optional<TLAxisKey> movedOnAxis = {}) const;

    std::string m_id;
    std::string m_name;
    TLAxisValues m_values;
    Metrics m_metrics;
    ChangeObserver m_observer;
};

/// A master as it is at one moment.
struct TLMasterState {
    std::string id;
    std::string name;
    TLStringMap<double> values; ///< Design coordinates by axis identifier.
    TLFontMaster::Metrics metrics;
    bool operator==(TLMasterState const&) const = default;
};
