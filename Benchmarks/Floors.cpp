#include "Benchmarks/Floors.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

FlatPass::FlatPass(FamilySize const& size)
    : m_axes(size.axes)
    , m_masters(size.masters)
{
    for (std::size_t axis = 0; axis < m_axes; ++axis) {
        m_axisIds.push_back(axisName(axis));
    }
    for (std::size_t master = 0; master < m_masters; ++master) {
        auto const place = masterPlace(size, master);
        for (auto const& axisId : m_axisIds) {
            auto const entry = place.find(axisId);
            m_values.push_back(entry == place.end() ? 0 : entry->second);
        }
    }
    run();
}

std::size_t FlatPass::run()
{
    std::vector<FlatRow> rows(m_axes);
    for (std::size_t axis = 0; axis < m_axes; ++axis) {
        rows[axis].axisId = m_axisIds[axis];
    }
    auto const* value = m_values.data();
    for (std::size_t master = 0; master < m_masters; ++master) {
        for (std::size_t axis = 0; axis < m_axes; ++axis, ++value) {
            auto& distinct = rows[axis].distinct;
            if (distinct.empty() || distinct.back() != *value) {
                distinct.push_back(*value);
            }
        }
    }
    std::size_t changed = 0;
    for (std::size_t axis = 0; axis < m_axes; ++axis) {
        auto& distinct = rows[axis].distinct;
        std::sort(distinct.begin(), distinct.end());
        distinct.erase(std::unique(distinct.begin(), distinct.end()), distinct.end());
        changed += axis >= m_shown.size() || rows[axis] != m_shown[axis];
    }
    m_shown = std::move(rows);
    return changed;
}

std::vector<double> FlatPass::placeOf(std::size_t master) const
{
    auto const start = m_values.begin() + std::ptrdiff_t(master * m_axes);
    return { start, start + std::ptrdiff_t(m_axes) };
}

std::size_t FlatPass::find(std::vector<double> const& place) const
{
    for (std::size_t master = 0; master < m_masters; ++master) {
        auto const* values = &m_values[master * m_axes];
        std::size_t axis = 0;
        while (axis < m_axes && std::abs(values[axis] - place[axis]) < 1e-5) {
            ++axis;
        }
        if (axis == m_axes) {
            return master;
        }
    }
    return m_masters;
}

std::size_t FlatPass::findByFullPass(std::vector<double> const& place) const
{
    std::size_t found = m_masters;
    for (std::size_t master = m_masters; master-- > 0;) {
        auto const* values = &m_values[master * m_axes];
        bool isSame = true;
        for (std::size_t axis = 0; axis < m_axes; ++axis) {
            isSame &= std::abs(values[axis] - place[axis]) < 1e-5;
        }
        found = isSame ? master : found;
    }
    return found;
}

using Tokens = std::vector<std::uint64_t>;
constexpr std::size_t most = 32;

/// Rows of either side that stand alone; false when there are too many.
static bool walk(Tokens const& before, Tokens const& after, FloorDifference& alone)
{
    std::size_t i = 0, j = 0;
    while (i < before.size() || j < after.size()) {
        if (i < before.size() && j < after.size() && before[i] == after[j]) {
            ++i, ++j;
            continue;
        }
        std::size_t skip = 1;
        while (skip <= most && !(i + skip < before.size() && j < after.size() && before[i + skip] == after[j])
            && !(j + skip < after.size() && i < before.size() && after[j + skip] == before[i])) {
            ++skip;
        }
        bool const isRemoved = skip <= most && i + skip < before.size() && before[i + skip] == after[j];
        auto const steps = skip <= most ? skip : 1;
        for (std::size_t step = 0; step < steps; ++step) {
            if ((isRemoved || skip > most) && i < before.size()) {
                alone.removed.push_back(i++);
            }
            if ((!isRemoved || skip > most) && j < after.size()) {
                alone.inserted.push_back(j++);
            }
        }
        if (alone.removed.size() + alone.inserted.size() > 2 * most) {
            return false;
        }
    }
    return true;
}

static FloorDifference byHashing(Tokens const& before, Tokens const& after)
{
    FloorDifference difference;
    std::unordered_map<std::uint64_t, std::size_t> places;
    places.reserve(before.size());
    for (std::size_t index = 0; index < before.size(); ++index) {
        places.emplace(before[index], index);
    }
    std::vector<std::size_t> run;
    std::vector<bool> stays(before.size());
    for (std::size_t index = 0; index < after.size(); ++index) {
        auto const place = places.find(after[index]);
        if (place == places.end()) {
            difference.inserted.push_back(index);
            continue;
        }
        stays[place->second] = true;
        auto const at = std::lower_bound(run.begin(), run.end(), place->second);
        if (at == run.end()) {
            run.push_back(place->second);
        } else {
            *at = place->second;
            difference.moved.emplace_back(place->second, index);
        }
    }
    for (std::size_t index = 0; index < stays.size(); ++index) {
        if (!stays[index]) {
            difference.removed.push_back(index);
        }
    }
    return difference;
}

FloorDifference floorDifference(Tokens const& before, Tokens const& after)
{
    FloorDifference difference;
    if (!walk(before, after, difference)) {
        return byHashing(before, after);
    }
    std::erase_if(difference.removed, [&](std::size_t from) {
        auto const to = std::find_if(difference.inserted.begin(), difference.inserted.end(),
            [&](std::size_t index) { return after[index] == before[from]; });
        if (to == difference.inserted.end()) {
            return false;
        }
        difference.moved.emplace_back(from, *to);
        difference.inserted.erase(to);
        return true;
    });
    return difference;
}

void multiplyAdd(std::vector<double>& sum, std::vector<std::vector<double>> const& sources,
    std::vector<double> const& factors)
{
    std::fill(sum.begin(), sum.end(), 0);
    for (std::size_t source = 0; source < sources.size(); ++source) {
        auto const* numbers = sources[source].data();
        for (std::size_t index = 0; index < sum.size(); ++index) {
            sum[index] += factors[source] * numbers[index];
        }
    }
}
