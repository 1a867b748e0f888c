#pragma once

#include "Platform/Foundation/NSObject.h"
#include "Typloom/TyploomCore/Export.h"
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
    /// Set by the font that the master belongs to; called before each change.
    void setChangeObserver(std::function<void()> observer) { m_observer = std::move(observer); }

private:
    void willChange() const;

    std::string m_id;
    std::string m_name;
    TLStringMap<double> m_values;
    Metrics m_metrics;
    std::function<void()> m_observer;
};

/// A master as it is at one moment.
struct TLMasterState {
    std::string id;
    std::string name;
    TLStringMap<double> values; ///< Design coordinates by axis identifier.
    TLFontMaster::Metrics metrics;
    bool operator==(TLMasterState const&) const = default;
};
