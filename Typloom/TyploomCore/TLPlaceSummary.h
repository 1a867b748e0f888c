#pragma once

#include "Typloom/TyploomCore/TLAxisValues.h"

#include <unordered_map>

/// Where the layers of a glyph stand on one axis by their own coordinates.
struct TLAxisSpread {
    std::vector<double> intermediateValues; ///< Of intermediate layers; ascending, each once.
    std::size_t countOfIntermediateValues { 0 }; ///< Before equal ones became one.
    std::optional<double> lowest; ///< Of layers of every kind; none where no layer has a coordinate.
    std::optional<double> highest;
};

/// What was worked out for single axes and holds until something on that axis changes.
template <class Summary> using TLAxisSummaries = std::unordered_map<TLAxisKey, Summary>;

/// Calls `change` for each axis on which the two differ.
template <class Change>
void TLForEachDifference(TLAxisValues const& before, TLAxisValues const& after, Change const& change)
{
    auto const visit = [&change](TLAxisValues const& from, TLAxisValues const& to) {
        for (std::size_t index = 0; index < from.keys().size(); ++index) {
            auto const* other = to.find(from.keys()[index], index);
            if (!other || *other != from.values()[index]) {
                change(from.keys()[index]);
            }
        }
    };
    visit(before, after);
    visit(after, before);
}

inline void TLMakeDistinctAscending(std::vector<double>& values)
{
    std::sort(values.begin(), values.end());
    values.erase(std::unique(values.begin(), values.end()), values.end());
}
