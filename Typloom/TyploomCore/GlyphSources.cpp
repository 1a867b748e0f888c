#include "Typloom/TyploomCore/GlyphSources.h"

#include "Typloom/TyploomCore/OutlineNumbers.h"
#include "Typloom/TyploomCore/TLFont.h"

#include <algorithm>
#include <cmath>
#include <unordered_set>

std::variant<VariationSlices::Instance, VariationFault> const& SharedModel::instance(
    std::span<double const> place)
{
    if (!m_hasInstance || !std::ranges::equal(m_lastPlace, place)) {
        m_lastInstance = m_slices.instance(place);
        m_lastPlace.assign(place.begin(), place.end());
        m_hasInstance = true;
    }
    return m_lastInstance;
}

GlyphSources::GlyphSources(TLGlyph const& glyph)
{
    collectAxes(glyph);
    collectSources(glyph);
    widenGlyphAxes();
}

void GlyphSources::collectAxes(TLGlyph const& glyph)
{
    auto add = [this](TLAxis const& axis, bool isOfGlyph) {
        auto const partIds = axis.partIds().empty() ? std::vector { axis.axisId() } : axis.partIds();
        for (auto const& partId : partIds) {
            m_axes.push_back({ axis.axisId(), partId, axis.name(), isOfGlyph,
                { axis.minimum(), axis.defaultValue(), axis.maximum(), axis.isDiscrete() } });
        }
    };
    std::unordered_set<std::string_view> ownNames;
    for (auto const& axis : glyph.axes()) {
        ownNames.insert(axis->name());
        add(*axis, true);
    }
    if (auto const font = glyph.font()) {
        for (auto const& axis : font->canonicalAxes()) {
            if (!ownNames.contains(axis->name())) {
                add(*axis, false);
            }
        }
    }
    for (std::size_t column = 0; column < m_axes.size(); ++column) {
        m_columns.try_emplace(m_axes[column].axisId, column);
        m_columns.try_emplace(m_axes[column].partId, column);
    }
}

void GlyphSources::collectSources(TLGlyph const& glyph)
{
    auto const font = glyph.font();
    for (auto const& [layerId, layer] : glyph.layers()) {
        auto const& data = *layer->data();
        if (data.kind == TLLayerKind::other || data.problem) {
            continue;
        }
        auto const master
            = font && data.kind == TLLayerKind::master ? font->fontMasterForId(layerId) : nullptr;
        if (font && data.kind == TLLayerKind::master && !master) {
            continue;
        }
        auto const& name = master ? master->name() : data.name;
        m_sources.push_back({ &data, name.empty() ? layerId : name, {}, 0 });
        addPlace(data, master.get());
    }
}

void GlyphSources::addPlace(TLLayer::Data const& layer, TLFontMaster const* master)
{
    auto const start = m_places.size();
    for (auto const& axis : m_axes) {
        m_places.push_back(master && !axis.isOfGlyph ? master->axisInternalValueValueForId(axis.axisId)
                                                     : axis.values.fallback);
    }
    for (auto const& [axisId, value] : layer.coordinates) {
        auto const column = m_columns.find(axisId);
        bool const counts = column != m_columns.end() && (!master || m_axes[column->second].isOfGlyph);
        if (!counts || !std::isfinite(value)) {
            continue;
        }
        // The columns of an axis of several dimensions are neighbours.
        auto const& axis = m_axes[column->second].axisId;
        for (auto at = column->second; at < m_axes.size() && m_axes[at].axisId == axis; ++at) {
            if (m_axes[at].axisId == axisId || m_axes[at].partId == axisId) {
                m_places[start + at] = value;
            }
        }
    }
}

void GlyphSources::widenGlyphAxes()
{
    for (std::size_t column = 0; column < m_axes.size() && m_axes[column].isOfGlyph; ++column) {
        // An axis that was added by hand has no bounds yet: its layers are all that says how long it is.
        auto& values = m_axes[column].values;
        if (values.minimum == values.maximum) {
            values.minimum = values.maximum = values.fallback;
        }
        values.minimum = std::min(values.minimum, values.fallback);
        values.maximum = std::max(values.maximum, values.fallback);
        for (auto at = column; at < m_places.size(); at += m_axes.size()) {
            values.minimum = std::min(values.minimum, m_places[at]);
            values.maximum = std::max(values.maximum, m_places[at]);
        }
    }
}

std::vector<VariationAxis> GlyphSources::axisValues() const
{
    std::vector<VariationAxis> values;
    std::transform(m_axes.begin(), m_axes.end(), std::back_inserter(values),
        [](Axis const& axis) { return axis.values; });
    return values;
}

std::vector<double> GlyphSources::place(TLLocation const& location) const
{
    std::vector<double> place;
    place.reserve(m_axes.size());
    for (auto const& axis : m_axes) {
        auto const value = TLLocationNumber(location, axis.axisId);
        place.push_back(value && std::isfinite(*value) ? *value : axis.values.fallback);
    }
    return place;
}

GlyphSources::Source const& GlyphSources::source(std::size_t index)
{
    if (m_sources[index].numbers.empty()) {
        workOutShape(index);
    }
    return m_sources[index];
}

void GlyphSources::workOutShape(std::size_t index)
{
    auto& source = m_sources[index];
    source.numbers = outlineNumbers(source.layer->outline);
    auto const known = std::find_if(m_shapes.begin(), m_shapes.end(), [&](std::size_t first) {
        return !shapeDifference(m_sources[first].layer->outline, source.layer->outline);
    });
    source.shape = known == m_shapes.end() ? m_shapes.emplace_back(index) : *known;
}
