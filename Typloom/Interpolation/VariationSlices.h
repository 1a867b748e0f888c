#pragma once

#include "Typloom/Interpolation/VariationModel.h"

#include <optional>

/// Sources in design coordinates, on any axes. Along discrete axes nothing is interpolated: they cut
/// the space into slices, each of which has a model of its own over the other axes.
class VariationSlices {
public:
    /// `places` holds one design coordinate for each axis of the first source, then of the second ...
    VariationSlices(std::vector<VariationAxis> axes, std::size_t countOfSources, std::vector<double> places);

    std::vector<VariationAxis> const& axes() const { return m_axes; }
    std::vector<double> const& places() const { return m_places; }
    std::size_t countOfSources() const { return m_countOfSources; }
    std::span<double const> placeOfSource(std::size_t source) const;

    struct Instance {
        std::vector<SourceFactor> factors;
        /// The place's own slice has no source, or none at the default: this is of the nearest one.
        bool isOfNearestSlice { false };
        bool operator==(Instance const&) const = default;
    };
    /// The shares of the sources at a place: one design coordinate for each axis, clamped to it.
    std::variant<Instance, VariationFault> instance(std::span<double const> place) const;

    /// The source nearest to a place, each axis measured by its own length; the first of several.
    /// There must be a source.
    std::size_t nearestSource(std::span<double const> place) const;

private:
    struct Slice {
        std::vector<double> discreteValues;
        std::vector<std::size_t> sources;
        std::variant<VariationModel, VariationFault> model;
    };
    std::vector<double> discreteValues(std::span<double const> place) const;
    std::vector<double> normalized(std::span<double const> place) const;
    void sortIntoSlices();
    std::variant<VariationModel, VariationFault> makeModel(std::span<std::size_t const> sources) const;
    Slice const* findSlice(std::vector<double> const& discreteValues) const;
    Slice const* nearestSliceWithModel(std::vector<double> const& discreteValues) const;

    std::vector<VariationAxis> m_axes;
    std::size_t m_countOfSources;
    std::vector<double> m_places;
    std::vector<Slice> m_slices;
    std::optional<VariationFault> m_axisFault;
};
