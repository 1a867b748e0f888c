#pragma once

#include "Typloom/TyploomCore/TLFont.h"

/// An axis as those who ask many layers and masters about it need it.
struct TLAxisColumn {
    TLAxisColumn(TLAxisKey axisKey, TLFont const* font)
        : key(axisKey)
        , index(font ? font->indexOfAxis(key) : NSNotFound)
        , fontAxis(index == NSNotFound ? nullptr : font->canonicalAxes()[index].get())
    {
    }
    TLAxisKey key;
    std::size_t index; ///< Among the font's axes, or `NSNotFound`.
    TLAxis const* fontAxis; ///< The font's axis of that identifier; null when it is none of the font's.
};

/// Where one layer stands, for questions about many axes. Holds as long as the document is not changed.
class TYPLOOM_API TLLayerPlace {
public:
    /// `font` is the layer's, or null. `nextMaster`, of those who read layer after layer: which of the font's
    /// masters the layer may belong to; it becomes the one behind it.
    TLLayerPlace(TLLayer const& layer, TLFont const* font, std::size_t* nextMaster = nullptr);

    std::optional<double> valueForId(std::string_view axisId) const;
    std::optional<double> value(TLAxisColumn const& column) const
    {
        if (m_preview) {
            return valueInPreview(column);
        }
        return m_standsSomewhere ? ownValue(column) : std::nullopt;
    }

private:
    std::optional<double> ownValue(TLAxisColumn const& column) const
    {
        if (column.fontAxis && m_isMaster) {
            return m_master ? std::optional(m_master->valueForKey(column.key, column.index)) : std::nullopt;
        }
        if (auto const* own = m_values.find(column.key)) {
            return *own;
        }
        return column.fontAxis ? std::optional(column.fontAxis->defaultValue()) : std::nullopt;
    }
    std::optional<double> valueInPreview(TLAxisColumn const& column) const;

    TLAxisValues const& m_values;
    TLFontMaster const* m_master { nullptr };
    TLLocation const* m_preview { nullptr };
    TLFont const* m_font;
    bool m_isMaster;
    bool m_standsSomewhere;
};

/// A place that is looked for among many layers or masters: on every one of some axes, at their default
/// where the location names no number.
class TYPLOOM_API TLPlaceSearch {
public:
    /// Values that differ by less than `tolerance`, in design units, are one place. `font` or null.
    TLPlaceSearch(std::vector<std::shared_ptr<TLAxis>> const& axes, TLFont const* font,
        TLLocation const& location, double tolerance);

    /// Both stop at the first axis that differs. A layer that has no place on an axis counts as
    /// standing at its default.
    bool finds(TLFontMaster const& master) const;
    bool finds(TLLayer const& layer) const;

private:
    struct Target {
        TLAxisColumn column;
        double value;
        double axisDefault;
    };
    std::vector<Target> m_targets;
    TLFont const* m_font;
    double m_tolerance;
    mutable std::size_t m_nextMaster { 0 };
};
