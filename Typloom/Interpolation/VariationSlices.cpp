#include "Typloom/Interpolation/VariationSlices.h"

#include <algorithm>
#include <cmath>
#include <limits>

VariationSlices::VariationSlices(
    std::vector<VariationAxis> axes, std::size_t countOfSources, std::vector<double> places)
    : m_axes(std::move(axes))
    , m_countOfSources(countOfSources)
    , m_places(std::move(places))
{
    auto const outOfOrder
        = std::find_if_not(m_axes.begin(), m_axes.end(), [](auto const& axis) { return axis.isInOrder(); });
    if (outOfOrder != m_axes.end()) {
        m_axisFault = { VariationFault::Kind::axisOutOfOrder,
            static_cast<std::size_t>(outOfOrder - m_axes.begin()), 0 };
        return;
    }
    sortIntoSlices();
    for (auto& slice : m_slices) {
        slice.model = makeModel(slice.sources);
    }
}

std::span<double const> VariationSlices::placeOfSource(std::size_t source) const
{
    return std::span(m_places).subspan(source * m_axes.size(), m_axes.size());
}

std::vector<double> VariationSlices::discreteValues(std::span<double const> place) const
{
    std::vector<double> values;
    for (std::size_t axis = 0; axis < m_axes.size(); ++axis) {
        if (m_axes[axis].isDiscrete) {
            values.push_back(place[axis]);
        }
    }
    return values;
}

std::vector<double> VariationSlices::normalized(std::span<double const> place) const
{
    std::vector<double> values(m_axes.size());
    for (std::size_t axis = 0; axis < m_axes.size(); ++axis) {
        values[axis] = m_axes[axis].isDiscrete ? 0 : normalizedValue(place[axis], m_axes[axis]);
    }
    return values;
}

void VariationSlices::sortIntoSlices()
{
    for (std::size_t source = 0; source < m_countOfSources; ++source) {
        auto values = discreteValues(placeOfSource(source));
        auto const slice = std::find_if(m_slices.begin(), m_slices.end(),
            [&](Slice const& candidate) { return candidate.discreteValues == values; });
        if (slice != m_slices.end()) {
            slice->sources.push_back(source);
        } else {
            m_slices.push_back({ std::move(values), { source }, VariationFault {} });
        }
    }
}

std::variant<VariationModel, VariationFault> VariationSlices::makeModel(
    std::span<std::size_t const> sources) const
{
    std::vector<NormalizedLocation> locations;
    locations.reserve(sources.size());
    for (auto const source : sources) {
        locations.push_back(normalizedLocation(normalized(placeOfSource(source))));
    }
    auto model = VariationModel::make(locations, m_axes.size());
    if (auto* fault = std::get_if<VariationFault>(&model);
        fault && fault->kind == VariationFault::Kind::sourcesCoincide) {
        fault->first = sources[fault->first];
        fault->second = sources[fault->second];
    }
    return model;
}

VariationSlices::Slice const* VariationSlices::findSlice(std::vector<double> const& discreteValues) const
{
    auto const slice = std::find_if(m_slices.begin(), m_slices.end(),
        [&](Slice const& candidate) { return candidate.discreteValues == discreteValues; });
    return slice == m_slices.end() ? nullptr : &*slice;
}

VariationSlices::Slice const* VariationSlices::nearestSliceWithModel(
    std::vector<double> const& discreteValues) const
{
    Slice const* nearest = nullptr;
    double nearestDistance = std::numeric_limits<double>::infinity();
    for (auto const& slice : m_slices) {
        double distance = 0;
        for (std::size_t i = 0; i < discreteValues.size(); ++i) {
            distance += std::abs(discreteValues[i] - slice.discreteValues[i]);
        }
        if (std::holds_alternative<VariationModel>(slice.model) && (!nearest || distance < nearestDistance)) {
            nearest = &slice;
            nearestDistance = distance;
        }
    }
    return nearest;
}

std::variant<VariationSlices::Instance, VariationFault> VariationSlices::instance(
    std::span<double const> place) const
{
    if (m_axisFault) {
        return *m_axisFault;
    }
    auto const values = discreteValues(place);
    auto const* slice = findSlice(values);
    auto const* fault = slice ? std::get_if<VariationFault>(&slice->model) : nullptr;
    if (fault && fault->kind == VariationFault::Kind::sourcesCoincide) {
        return *fault;
    }
    bool const isOfNearestSlice = !slice || fault;
    if (isOfNearestSlice) {
        slice = nearestSliceWithModel(values);
    }
    if (!slice) {
        return VariationFault { .kind = VariationFault::Kind::noSourceAtDefault };
    }
    auto factors = std::get<VariationModel>(slice->model).factors(normalized(place));
    for (auto& factor : factors) {
        factor.source = slice->sources[factor.source];
    }
    return Instance { std::move(factors), isOfNearestSlice };
}

/// The distance on one axis, in lengths of the axis; in design units on an axis without length.
static double distanceOnAxis(double left, double right, VariationAxis const& axis)
{
    double const length = axis.maximum - axis.minimum;
    if (!std::isfinite(length)) {
        return std::abs(left / 2 - right / 2) / (axis.maximum / 2 - axis.minimum / 2);
    }
    return std::abs(left - right) / (length > 0 ? length : 1);
}

std::size_t VariationSlices::nearestSource(std::span<double const> place) const
{
    std::size_t nearest = 0;
    double nearestDistance = std::numeric_limits<double>::infinity();
    for (std::size_t source = 0; source < m_countOfSources; ++source) {
        auto const other = placeOfSource(source);
        double distance = 0;
        for (std::size_t axis = 0; axis < m_axes.size() && distance < nearestDistance; ++axis) {
            double const onAxis = distanceOnAxis(place[axis], other[axis], m_axes[axis]);
            distance += onAxis * onAxis;
        }
        if (distance < nearestDistance) {
            nearest = source;
            nearestDistance = distance;
        }
    }
    return nearest;
}
