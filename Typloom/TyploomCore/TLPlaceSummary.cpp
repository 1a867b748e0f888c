#include "Typloom/TyploomCore/TLPlaceSummary.h"

#include "Typloom/TyploomCore/TLFont.h"

std::vector<double> const& TLFont::masterValuesOnAxis(TLAxis const& axis) const
{
    auto const [entry, isNew] = m_masterValues.try_emplace(axis.key());
    auto& values = entry->second;
    if (!isNew) {
        return values;
    }
    auto const index = indexOfAxis(axis.key());
    for (auto const& master : m_masters) {
        auto const value = master->valueForKey(axis.key(), index);
        // Most masters stand where the one before them stands.
        if (values.empty() || values.back() != value) {
            values.push_back(value);
        }
    }
    TLMakeDistinctAscending(values);
    return values;
}

TLAxisSpread const& TLGlyph::spreadOnAxis(TLAxis const& axis) const
{
    if (auto const known = m_spreads.find(axis.key()); known != m_spreads.end()) {
        return known->second;
    }
    // Those of the other axes too: layers have few coordinates, and one pass over them is enough for all.
    TLAxisSummaries<TLAxisSpread> missing { { axis.key(), {} } };
    for (auto const& other : m_axes) {
        if (!m_spreads.contains(other->key())) {
            missing.try_emplace(other->key());
        }
    }
    collectSpreads(missing);
    m_spreads.merge(missing);
    return m_spreads.find(axis.key())->second;
}

void TLGlyph::collectSpreads(TLAxisSummaries<TLAxisSpread>& spreads) const
{
    for (auto const& [layerId, layer] : m_trueLayers) {
        auto const& places = layer->data()->values;
        for (std::size_t index = 0; index < places.keys().size(); ++index) {
            auto const entry = spreads.find(places.keys()[index]);
            if (entry == spreads.end()) {
                continue;
            }
            auto& spread = entry->second;
            auto const value = places.values()[index];
            spread.lowest = std::min(value, spread.lowest.value_or(value));
            spread.highest = std::max(value, spread.highest.value_or(value));
            if (layer->isBraceLayer()) {
                spread.intermediateValues.push_back(value);
            }
        }
    }
    for (auto& [key, spread] : spreads) {
        spread.countOfIntermediateValues = spread.intermediateValues.size();
        TLMakeDistinctAscending(spread.intermediateValues);
    }
}
