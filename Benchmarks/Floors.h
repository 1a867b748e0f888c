#pragma once

#include "Benchmarks/SyntheticFamily.h"

/// The least that a refresh can do, on flat arrays: values and identifiers out, each axis's distinct values
/// in ascending order, compared with those before, and a list of the rows that changed.
class FlatPass {
public:
    explicit FlatPass(FamilySize const& size);
    /// How many rows changed: none.
    std::size_t run();

    /// The first master that stands at the place on every axis, the search stopping at the first that
    /// differs.
    std::size_t find(std::vector<double> const& place) const;
    /// The same, looking at every axis of every master.
    std::size_t findByFullPass(std::vector<double> const& place) const;
    std::vector<double> placeOf(std::size_t master) const;
    std::size_t countOfMasters() const { return m_masters; }

private:
    struct FlatRow {
        std::string axisId;
        std::vector<double> distinct;
        bool operator==(FlatRow const&) const = default;
    };
    std::size_t m_axes;
    std::size_t m_masters;
    std::vector<std::string> m_axisIds;
    std::vector<double> m_values; ///< Master by master.
    std::vector<FlatRow> m_shown;
};

/// What turns one list into another: indices in the old list, in the new one, and pairs of both.
struct FloorDifference {
    std::vector<std::size_t> removed;
    std::vector<std::size_t> inserted;
    std::vector<std::pair<std::size_t, std::size_t>> moved;
};
/// A walk over equal runs that gives up after some differences, and then hashes.
FloorDifference floorDifference(
    std::vector<std::uint64_t> const& before, std::vector<std::uint64_t> const& after);

/// A weighted sum of the sources that count at a place: multiply and add, on numbers that lie side by side.
void multiplyAdd(std::vector<double>& sum, std::vector<std::vector<double>> const& sources,
    std::vector<double> const& factors);
