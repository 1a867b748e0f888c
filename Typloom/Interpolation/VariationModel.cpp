#include "Typloom/Interpolation/VariationModel.h"

std::variant<VariationModel, VariationFault> VariationModel::make(
    std::span<NormalizedLocation const> locations, std::size_t axisCount)
{
    VariationModel model;
    model.m_order = sortedSources(locations);
    if (locations.empty() || !locations[model.m_order.front()].empty()) {
        return VariationFault { .kind = VariationFault::Kind::noSourceAtDefault };
    }
    std::vector<NormalizedLocation> sorted;
    sorted.reserve(locations.size());
    for (auto const source : model.m_order) {
        if (!sorted.empty() && sorted.back() == locations[source]) {
            return VariationFault { VariationFault::Kind::sourcesCoincide, model.m_order[sorted.size() - 1],
                source };
        }
        sorted.push_back(locations[source]);
    }
    for (auto const& support : supports(sorted)) {
        model.m_supports.insert(model.m_supports.end(), support.begin(), support.end());
        model.m_supportEnds.push_back(model.m_supports.size());
    }
    std::vector<double> place(axisCount);
    for (std::size_t index = 0; index < sorted.size(); ++index) {
        for (auto const& [axis, value] : sorted[index]) {
            place[axis] = value;
        }
        model.addWeights(place, index);
        for (auto const& coordinate : sorted[index]) {
            place[coordinate.axis] = 0;
        }
    }
    return model;
}

void VariationModel::addWeights(std::span<double const> place, std::size_t count)
{
    for (std::size_t earlier = 0; earlier < count; ++earlier) {
        if (double const weight = supportScalar(support(earlier), place); weight != 0) {
            m_weights.push_back({ earlier, weight });
        }
    }
    m_weightEnds.push_back(m_weights.size());
}

std::span<AxisSupport const> VariationModel::support(std::size_t index) const
{
    auto const begin = index == 0 ? 0 : m_supportEnds[index - 1];
    return { m_supports.data() + begin, m_supportEnds[index] - begin };
}

std::vector<SourceFactor> VariationModel::factors(std::span<double const> place) const
{
    // An instance is the sum of the deltas, scaled by their supports. A delta is its source less the
    // weighted deltas before it, so putting the sources in for the deltas, the last one first, gives
    // each source's own share. At a source's place the supports behind it are 0, its own is 1, and
    // the ones before it are the very numbers in its weights: what is left of those is exactly 0.
    std::vector<double> shares(m_order.size());
    for (std::size_t index = 0; index < shares.size(); ++index) {
        shares[index] = supportScalar(support(index), place);
    }
    std::vector<SourceFactor> result;
    result.reserve(shares.size());
    for (std::size_t index = shares.size(); index-- > 0;) {
        double const share = shares[index];
        if (share == 0) {
            continue;
        }
        result.push_back({ m_order[index], share });
        for (auto at = index == 0 ? 0 : m_weightEnds[index - 1]; at < m_weightEnds[index]; ++at) {
            shares[m_weights[at].source] -= share * m_weights[at].weight;
        }
    }
    return result;
}

void addScaled(std::span<double> sum, double factor, std::span<double const> numbers)
{
    double* const to = sum.data();
    double const* const from = numbers.data();
    for (std::size_t i = 0; i < sum.size(); ++i) {
        to[i] += factor * from[i];
    }
}
