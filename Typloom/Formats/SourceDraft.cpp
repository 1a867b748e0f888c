#include "Typloom/Formats/SourceDraft.h"

#include "Typloom/Formats/Numbers.h"

#include <algorithm>

TLCoordinates coordinatesOf(TLMasterState const& master)
{
    return { master.values.begin(), master.values.end() };
}

SourceDraft::SourceDraft(FamilyDraft& draft, Family const& family, TLFontState const& after)
    : m_draft(draft)
    , m_after(after)
    , m_designspace(draft.designspace())
{
    for (std::size_t index = 0; index < family.sources.size(); ++index) {
        auto const& source = family.sources[index];
        auto const element
            = m_designspace.findSource(source.element, source.ufo->displayName(), source.layerAttribute);
        if (!element) {
            throw SaveProblem { "The source of " + source.ufo->displayName()
                + " is gone from the designspace, which another program has changed." };
        }
        auto const ufoLayer = source.ufo->layers()[source.layer].name;
        m_sources.push_back({ source.kind, source.id, source.ufo->displayName(), ufoLayer,
            fontPlace(source.coordinates), element });
        if (index == family.defaultSource) {
            m_defaultId = source.id;
        }
    }
}

PlannedSource const* SourceDraft::defaultSource() const
{
    return m_defaultId ? master(*m_defaultId) : nullptr;
}

PlannedSource const* SourceDraft::master(std::string_view id) const
{
    auto const found = std::find_if(m_sources.begin(), m_sources.end(),
        [id](auto const& source) { return source.kind == TLLayerKind::master && source.id == id; });
    return found == m_sources.end() ? nullptr : &*found;
}

PlannedSource const* SourceDraft::nearestMaster(TLCoordinates const& coordinates) const
{
    auto const place = fontPlace(coordinates);
    auto const distance = [&](PlannedSource const& source) {
        double sum = 0;
        for (auto const& axis : m_after.axes) {
            double const length = axis.maximum - axis.minimum;
            double const step
                = place.find(axis.axisId)->second - source.coordinates.find(axis.axisId)->second;
            sum += length > 0 ? step / length * (step / length) : 0;
        }
        return std::pair(source.kind != TLLayerKind::master, sum);
    };
    auto const nearest = std::min_element(m_sources.begin(), m_sources.end(),
        [&distance](auto const& one, auto const& other) { return distance(one) < distance(other); });
    return &*nearest;
}

void SourceDraft::moveMaster(std::string_view id, TLCoordinates const& coordinates)
{
    for (auto& source : m_sources) {
        if (source.kind == TLLayerKind::master && source.id == id) {
            source.coordinates = coordinates;
        }
    }
}

void SourceDraft::removeMaster(std::string_view id)
{
    if (auto const* source = master(id)) {
        m_designspace.removeSource(source->element);
    }
    std::erase_if(m_sources,
        [id](auto const& source) { return source.kind == TLLayerKind::master && source.id == id; });
}

TLCoordinates SourceDraft::fontPlace(TLCoordinates const& coordinates) const
{
    TLCoordinates place;
    for (auto const& axis : m_after.axes) {
        auto const given = coordinates.find(axis.axisId);
        place.emplace(axis.axisId, given == coordinates.end() ? axis.defaultValue : given->second);
    }
    return place;
}

std::vector<PlannedSource const*> SourceDraft::standingAt(TLCoordinates const& coordinates) const
{
    auto const place = fontPlace(coordinates);
    std::vector<PlannedSource const*> found;
    for (auto const& source : m_sources) {
        if (source.coordinates == place) {
            found.push_back(&source);
        }
    }
    std::stable_partition(
        found.begin(), found.end(), [](auto const* source) { return source->kind == TLLayerKind::master; });
    return found;
}

bool SourceDraft::isOfSource(std::string const& ufo, std::string_view ufoLayer) const
{
    return std::any_of(m_sources.begin(), m_sources.end(),
        [&](auto const& source) { return source.ufo == ufo && source.ufoLayer == ufoLayer; });
}

std::string SourceDraft::ufoFor(std::optional<std::string> const& masterId) const
{
    auto const* source = masterId ? master(*masterId) : nullptr;
    source = source ? source : defaultSource();
    return source ? source->ufo : m_sources.front().ufo;
}

std::string SourceDraft::nameFor(TLLayerState const& layer, std::vector<TLAxisState> const& ownAxes) const
{
    std::string name = layer.name;
    std::replace_if(
        name.begin(), name.end(), [](char character) { return character >= 0 && character < 0x20; }, ' ');
    auto const add = [&](TLAxisState const& axis) {
        auto const given = layer.coordinates.find(axis.axisId);
        if (given != layer.coordinates.end() && given->second != axis.defaultValue) {
            name += (name.empty() ? "" : ",") + axis.name + "=" + describeNumber(given->second);
        }
    };
    if (name.empty()) {
        std::for_each(m_after.axes.begin(), m_after.axes.end(), add);
        std::for_each(ownAxes.begin(), ownAxes.end(), add);
    }
    return name.empty() ? "layer" : name;
}

std::string SourceDraft::nameFor(TLCoordinates const& coordinates) const
{
    TLLayerState layer;
    layer.coordinates = coordinates;
    return nameFor(layer, {});
}

std::string SourceDraft::uniqueName(std::string const& wanted) const
{
    auto const used = m_designspace.sourceNames();
    std::string name = wanted;
    for (std::size_t number = 1; used.contains(name); ++number) {
        name = wanted + "#" + std::to_string(number);
    }
    return name;
}

std::vector<std::pair<std::string, double>> SourceDraft::location(TLCoordinates const& coordinates) const
{
    std::vector<std::pair<std::string, double>> location;
    auto const place = fontPlace(coordinates);
    for (auto const& axis : m_after.axes) {
        location.emplace_back(axis.name, place.find(axis.axisId)->second);
    }
    return location;
}

PlannedSource SourceDraft::addSparse(
    TLCoordinates const& coordinates, std::string const& ufo, std::string const& name)
{
    auto const ufoLayer = m_draft.addLayer(ufo, name);
    auto const element
        = m_designspace.addSource({ ufo, uniqueName(name), name, ufoLayer, location(coordinates) }, {});
    m_sources.push_back({ TLLayerKind::brace, {}, ufo, ufoLayer, fontPlace(coordinates), element });
    return m_sources.back();
}

void SourceDraft::leaveLayer(std::string const& ufo, std::string const& ufoLayer)
{
    m_leftLayers.emplace(ufo, ufoLayer);
    for (auto const& source : m_sources) {
        if (source.ufo == ufo && source.ufoLayer == ufoLayer) {
            m_left.push_back(source.coordinates);
        }
    }
}

void SourceDraft::removeUnused(std::function<bool(TLCoordinates const&)> const& isNeeded)
{
    auto const isUnused = [&](PlannedSource const& source) {
        return source.kind == TLLayerKind::brace && m_draft.isEmpty(source.ufo, source.ufoLayer)
            && std::find(m_left.begin(), m_left.end(), source.coordinates) != m_left.end()
            && !m_draft.hasLayerInformation(source.ufo, source.ufoLayer) && !isNeeded(source.coordinates);
    };
    for (auto const& source : m_sources) {
        if (isUnused(source)) {
            m_designspace.removeSource(source.element);
            m_leftLayers.emplace(source.ufo, source.ufoLayer);
        }
    }
    std::erase_if(m_sources, isUnused);
    for (auto const& [ufo, ufoLayer] : m_leftLayers) {
        bool const isThere = m_draft.layerNamed(ufo, ufoLayer) && ufoLayer != m_draft.defaultLayer(ufo);
        if (isThere && m_draft.isEmpty(ufo, ufoLayer) && !isOfSource(ufo, ufoLayer)
            && !m_draft.hasLayerInformation(ufo, ufoLayer)) {
            m_draft.removeLayer(ufo, ufoLayer);
        }
    }
}
