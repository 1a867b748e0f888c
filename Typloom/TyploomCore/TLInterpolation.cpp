#include "Typloom/TyploomCore/TLInterpolation.h"

#include "Platform/Foundation/NSNumberFormatter.h"
#include "Typloom/TyploomCore/InterpolationCounters.h"
#include "Typloom/TyploomCore/OutlineNumbers.h"
#include "Typloom/TyploomCore/TLVariationCache.h"

#include <algorithm>
#include <set>

TLInterpolationCounters& interpolationCounters()
{
    static TLInterpolationCounters counters;
    return counters;
}

TLInterpolationCounters const& TLInterpolationCountersNow()
{
    return interpolationCounters();
}

static std::string quoted(std::string const& name)
{
    return '\'' + name + '\'';
}

namespace {

/// One glyph at one place.
class GlyphInstance {
public:
    GlyphInstance(TLGlyph const& glyph, GlyphSources& sources, TLLocation const& location)
        : m_glyph(glyph)
        , m_sources(sources)
        , m_place(sources.place(location))
    {
    }

    TLInterpolatedOutline outline()
    {
        if (m_sources.countOfSources() == 0) {
            return { {}, sentence("it has no layer that can be drawn") };
        }
        auto const& instance = m_sources.model->instance(m_place);
        if (auto const* fault = std::get_if<VariationFault>(&instance)) {
            return nearestSource(description(*fault));
        }
        auto const& [factors, isOfNearestSlice] = std::get<VariationSlices::Instance>(instance);
        auto result = sum(factors);
        if (isOfNearestSlice && !result.problem) {
            result.reason = "it has no source at the default where " + discretePlace();
            result.problem = sentence(result.reason);
        }
        return result;
    }

private:
    std::string sentence(std::string const& reason) const
    {
        return "Cannot interpolate glyph " + quoted(m_glyph.name()) + ": " + reason;
    }

    std::string description(VariationFault const& fault)
    {
        switch (fault.kind) {
        case VariationFault::Kind::axisOutOfOrder:
            return "the default of axis " + quoted(m_sources.axes()[fault.first].name)
                + " does not lie between its minimum and its maximum";
        case VariationFault::Kind::sourcesCoincide:
            return "the sources " + quoted(m_sources.source(fault.first).name) + " and "
                + quoted(m_sources.source(fault.second).name)
                + " stand at one place (one of them needs another coordinate)";
        case VariationFault::Kind::noSourceAtDefault:
            break;
        }
        return "it has no source at the default of every axis";
    }

    std::string discretePlace() const
    {
        std::string text;
        for (std::size_t column = 0; column < m_place.size(); ++column) {
            auto const& axis = m_sources.axes()[column];
            if (axis.values.isDiscrete) {
                text += (text.empty() ? "" : ", ") + quoted(axis.name) + " is "
                    + NSNumberDescription(m_place[column]);
            }
        }
        return text;
    }

    TLInterpolatedOutline nearestSource(std::string const& reason)
    {
        auto const& slices = m_sources.model->slices();
        auto const nearest = slices.nearestSource(m_place);
        auto const& source = m_sources.source(nearest);
        if (std::ranges::equal(slices.placeOfSource(nearest), m_place)) {
            return { source.layer->outline, std::nullopt };
        }
        return { source.layer->outline,
            sentence(reason + "; the nearest source, " + quoted(source.name) + ", is shown"), reason,
            source.name };
    }

    TLInterpolatedOutline nearestSourceForMisfit(std::string const& reason)
    {
        if (m_sources.misfit.empty()) {
            m_sources.misfit = sentence(reason); // Elsewhere another pair may be met first.
        }
        auto result = nearestSource(reason);
        result.misfit = m_sources.misfit;
        return result;
    }

    TLInterpolatedOutline sum(std::vector<SourceFactor> const& factors)
    {
        auto const& first = m_sources.source(firstSource(factors));
        if (factors.size() == 1) {
            return { first.layer->outline, std::nullopt };
        }
        bool anchorsFit = true;
        for (auto const& [index, factor] : factors) {
            auto const& source = m_sources.source(index);
            if (source.shape != first.shape) {
                auto const difference = shapeDifference(first.layer->outline, source.layer->outline);
                return nearestSourceForMisfit("the outlines of " + quoted(first.name) + " and "
                    + quoted(source.name) + " do not fit together, " + difference.value_or(""));
            }
            anchorsFit = anchorsFit && haveSameAnchors(first.layer->outline, source.layer->outline);
        }
        std::vector<double> numbers(
            first.numbers.size() - (anchorsFit ? 0 : countOfAnchorNumbers(first.layer->outline)));
        for (auto const& [index, factor] : factors) {
            addScaled(numbers, factor, m_sources.source(index).numbers);
        }
        TLInterpolatedOutline result { outlineWithNumbers(first.layer->outline, numbers), std::nullopt };
        setComponentLocations(result.outline, factors);
        return result;
    }

    static std::size_t firstSource(std::vector<SourceFactor> const& factors)
    {
        return std::ranges::min_element(factors, {}, &SourceFactor::source)->source;
    }

    void setComponentLocations(TLOutline& outline, std::vector<SourceFactor> const& factors)
    {
        for (std::size_t i = 0; i < outline.components.size(); ++i) {
            std::set<std::string, std::less<>> names;
            for (auto const& [index, factor] : factors) {
                for (auto const& [name, value] :
                    m_sources.source(index).layer->outline.components[i].location) {
                    names.insert(name);
                }
            }
            auto& component = outline.components[i];
            for (auto const& name : names) {
                double value = 0;
                for (auto const& [index, factor] : factors) {
                    value += factor * componentCoordinate(index, i, name);
                }
                component.location[name] = value;
                component.isVariable = true;
            }
        }
    }

    /// Where a source's component stands on an axis. One that does not say stands where its base
    /// rests on an axis of the base's own, and where the source itself stands on any other axis.
    double componentCoordinate(std::size_t sourceIndex, std::size_t componentIndex, std::string const& name)
    {
        auto const& component = m_sources.source(sourceIndex).layer->outline.components[componentIndex];
        if (auto const own = component.location.find(name); own != component.location.end()) {
            return own->second;
        }
        auto isNamed = [&](auto const& axis) { return axis.name == name; };
        auto const font = m_glyph.font();
        if (auto const base = font ? font->glyphForName(component.base) : nullptr) {
            for (auto const& axis : base->axes()) {
                if (axis->name() == name) {
                    return axis->defaultValue();
                }
            }
        }
        auto const axis = std::ranges::find_if(m_sources.axes(), isNamed);
        auto const column = static_cast<std::size_t>(axis - m_sources.axes().begin());
        return axis == m_sources.axes().end() ? 0
                                              : m_sources.model->slices().placeOfSource(sourceIndex)[column];
    }

    TLGlyph const& m_glyph;
    GlyphSources& m_sources;
    std::vector<double> m_place;
};

} // namespace

TLInterpolatedOutline TLInterpolateGlyph(TLGlyph const& glyph, TLLocation const& location)
{
    ++interpolationCounters().glyphsInterpolated;
    auto const font = glyph.font();
    TLVariationCache ownCache; // For a glyph that is in no font.
    auto& cache = font ? font->variationCache() : ownCache;
    return GlyphInstance(glyph, cache.sourcesOf(glyph), location).outline();
}
