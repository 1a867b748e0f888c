#pragma once

#include "Typloom/Interpolation/Supports.h"

#include <variant>

/// Why no model can be built.
struct VariationFault {
    enum class Kind {
        axisOutOfOrder, ///< `first` is an axis whose default does not lie between its ends.
        noSourceAtDefault,
        sourcesCoincide, ///< The sources `first` and `second` stand at one place.
    };
    Kind kind { Kind::noSourceAtDefault };
    std::size_t first { 0 };
    std::size_t second { 0 };
    bool operator==(VariationFault const&) const = default;
};

/// The share that a source has in an instance. Shares of an instance sum to 1; some can be negative.
struct SourceFactor {
    std::size_t source { 0 };
    double factor { 0 };
    bool operator==(SourceFactor const&) const = default;
};

/// Interpolates between sources that stand anywhere in a space of normalised axes: the piecewise
/// linear model of variable fonts, in which each source adds to what the simpler ones predict.
class VariationModel {
public:
    /// `locations`: of each source. One must be empty, and no two equal.
    static std::variant<VariationModel, VariationFault> make(
        std::span<NormalizedLocation const> locations, std::size_t axisCount);

    /// The shares of the sources at a place, those of 0 left out. `place` holds a normalised value
    /// for each axis. At a source's own place: that source alone, with exactly 1.
    std::vector<SourceFactor> factors(std::span<double const> place) const;

private:
    struct Weight {
        std::size_t source; ///< Index in the model's order, like all indices in here.
        double weight;
    };
    VariationModel() = default;
    std::span<AxisSupport const> support(std::size_t index) const;
    void addWeights(std::span<double const> place, std::size_t count);

    std::vector<std::size_t> m_order; ///< The source at each index of the model's order.
    std::vector<AxisSupport> m_supports; ///< Of all sources, one after the other.
    std::vector<std::size_t> m_supportEnds;
    /// How much of the earlier sources' deltas each source's place already gets; zeros left out.
    std::vector<Weight> m_weights;
    std::vector<std::size_t> m_weightEnds;
};

/// Adds `factor` times `numbers` to `sum`, number by number; both are of the same length.
void addScaled(std::span<double> sum, double factor, std::span<double const> numbers);
