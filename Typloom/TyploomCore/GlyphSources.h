#pragma once

#include "Typloom/Interpolation/VariationSlices.h"
#include "Typloom/TyploomCore/TLGlyph.h"

/// A model together with the last instance that was asked of it: the glyphs of a line share their
/// model and stand at one place.
class SharedModel {
public:
    explicit SharedModel(VariationSlices slices)
        : m_slices(std::move(slices))
    {
    }
    VariationSlices const& slices() const { return m_slices; }
    std::variant<VariationSlices::Instance, VariationFault> const& instance(std::span<double const> place);

private:
    VariationSlices m_slices;
    bool m_hasInstance { false };
    std::vector<double> m_lastPlace;
    std::variant<VariationSlices::Instance, VariationFault> m_lastInstance;
};

/// A glyph as interpolation sees it: its axes, and its layers with their true places.
class GlyphSources {
public:
    /// An axis of the glyph's own, or one of the font's that none of those hides by its name. An axis
    /// of several dimensions is there once for each, all moved by its one value.
    struct Axis {
        std::string axisId;
        std::string partId; ///< Of the dimension; the axis identifier where it is the only one.
        std::string name;
        bool isOfGlyph { false };
        VariationAxis values;
    };

    /// A layer that stands somewhere.
    struct Source {
        TLLayer::Data const* layer; ///< Lives as long as the document is not changed.
        std::string name; ///< For people.
        std::vector<double> numbers; ///< Of the outline; empty until they are needed.
        std::size_t shape { 0 }; ///< The first source that this one's outline fits; with `numbers`.
    };

    explicit GlyphSources(TLGlyph const& glyph);

    std::vector<Axis> const& axes() const { return m_axes; }
    std::size_t countOfSources() const { return m_sources.size(); }
    /// With its numbers and shape worked out.
    Source const& source(std::size_t index);

    /// The coordinates of a location on the axes; the default where it has none.
    std::vector<double> place(TLLocation const& location) const;

    /// The design coordinates of every source on every axis, source after source.
    std::vector<double> const& places() const { return m_places; }
    std::vector<VariationAxis> axisValues() const;

    std::shared_ptr<SharedModel> model; ///< Set by the cache.
    std::string misfit; ///< The first sentence on outlines that do not fit together; empty before that.

private:
    void collectAxes(TLGlyph const& glyph);
    void collectSources(TLGlyph const& glyph);
    void addPlace(TLLayer::Data const& layer, TLFontMaster const* master);
    void widenGlyphAxes();
    void workOutShape(std::size_t index);

    std::vector<Axis> m_axes;
    std::vector<Source> m_sources;
    std::vector<double> m_places;
    /// First column of each axis, and that of each dimension, by identifier.
    std::unordered_map<std::string_view, std::size_t> m_columns;
    std::vector<std::size_t> m_shapes; ///< The first source of each shape met so far.
};
