#include "Typloom/Formats/SaveCheck.h"

#include "Typloom/Formats/GlyphLoader.h"

#include <algorithm>
#include <cmath>

namespace {

bool isNear(double one, double other)
{
    return std::abs(one - other) <= 1e-7 * std::max({ 1.0, std::abs(one), std::abs(other) });
}

/// Transformations of variable components are stored as angles and scales.
bool areAlike(TLComponent const& one, TLComponent const& other)
{
    return one.base == other.base && one.location == other.location && one.isVariable == other.isVariable
        && (one.isVariable
                ? std::equal(one.transform.begin(), one.transform.end(), other.transform.begin(), isNear)
                : one.transform == other.transform);
}

bool areAlike(TLOutline const& one, TLOutline const& other)
{
    return one.advance == other.advance && one.height == other.height && one.contours == other.contours
        && one.anchors == other.anchors
        && std::equal(one.components.begin(), one.components.end(), other.components.begin(),
            other.components.end(),
            [](TLComponent const& left, TLComponent const& right) { return areAlike(left, right); });
}

/// Where a layer stands on every axis; a master's place is its own matter.
TLCoordinates placeOf(TLLayerState const& layer, TLGlyphState const& glyph, TLFontState const& font)
{
    TLCoordinates place;
    if (layer.kind != TLLayerKind::brace) {
        return place;
    }
    auto const add = [&](TLAxisState const& axis, bool isPart) {
        auto const given = layer.coordinates.find(axis.axisId);
        auto const whole = given == layer.coordinates.end() ? axis.defaultValue : given->second;
        for (auto const& partId : axis.partIds) {
            auto const part = layer.coordinates.find(partId);
            place.emplace(partId, part == layer.coordinates.end() ? whole : part->second);
        }
        if (!isPart) {
            place.emplace(axis.axisId, whole);
        }
    };
    for (auto const& axis : glyph.axes) {
        add(axis, !axis.partIds.empty());
    }
    for (auto const& axis : font.axes) {
        add(axis, false);
    }
    return place;
}

LayerOrigin const* originOf(std::vector<LayerOrigin> const& origins, std::string const& layerId)
{
    auto const found = std::find_if(
        origins.begin(), origins.end(), [&layerId](auto const& origin) { return origin.layerId == layerId; });
    return found == origins.end() ? nullptr : &*found;
}

bool comeFromOneFile(LayerOrigin const& one, LayerOrigin const& other)
{
    return one.ufo == other.ufo && one.ufoLayer == other.ufoLayer
        && one.isOfLocalSource == other.isOfLocalSource;
}

bool areAlike(std::vector<TLAxisState> const& one, std::vector<TLAxisState> const& other)
{
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
        [](TLAxisState const& left, TLAxisState const& right) {
            return left.axisId == right.axisId && left.name == right.name
                && left.defaultValue == right.defaultValue && left.partIds == right.partIds;
        });
}

} // namespace

std::map<std::string, std::string> matchLayers(TLGlyphState const& one,
    std::vector<LayerOrigin> const& originsOfOne, TLGlyphState const& other,
    std::vector<LayerOrigin> const& originsOfOther, TLFontState const& font)
{
    std::map<std::string, std::string> matches;
    std::set<std::string> taken;
    for (auto const& layer : one.layers) {
        auto const* origin = originOf(originsOfOne, layer->layerId);
        auto const match = std::find_if(other.layers.begin(), other.layers.end(), [&](auto const& candidate) {
            auto const* itsOrigin = originOf(originsOfOther, candidate->layerId);
            bool const isOther = !origin || !itsOrigin || !comeFromOneFile(*origin, *itsOrigin)
                || candidate->kind != layer->kind || taken.contains(candidate->layerId);
            return !isOther && (layer->kind != TLLayerKind::master || layer->layerId == candidate->layerId)
                && placeOf(*layer, one, font) == placeOf(*candidate, other, font);
        });
        if (match != other.layers.end()) {
            taken.insert((*match)->layerId);
            matches.emplace(layer->layerId, (*match)->layerId);
        }
    }
    return matches;
}

SaveCheck::SaveCheck(TLFont& font, FamilyGlyphSource& family, FamilySavePlan const& plan)
    : m_font(font)
    , m_family(family)
    , m_plan(plan)
    , m_read(font.sharedAs<TLFont>())
{
}

void SaveCheck::run(FamilyFiles::Pending const& pending, bool filesHaveChanged)
{
    bool const changesStructure = std::any_of(
        pending.begin(), pending.end(), [](auto const& entry) { return entry.first.extension() != ".glif"; });
    if (changesStructure) {
        readFamily(pending);
        compareFont(*m_read);
    }
    for (auto const& [name, origins] : m_plan.origins()) {
        compareGlyph(name, pending, filesHaveChanged);
    }
}

void SaveCheck::readFamily(FamilyFiles::Pending const& pending)
{
    auto known = m_plan.known();
    for (auto const& source : m_family.family().sources) {
        auto const folder = source.ufo->folder().lexically_normal();
        bool const changes = std::any_of(pending.begin(), pending.end(), [&folder](auto const& entry) {
            auto const ends
                = std::mismatch(folder.begin(), folder.end(), entry.first.begin(), entry.first.end());
            return entry.first.extension() != ".glif" && ends.first == folder.end();
        });
        if (!changes) {
            known.ufos.emplace(source.ufo->displayName(), source.ufo);
        }
    }
    auto opened = openFamily(m_font.path(), m_family.files(), known);
    if (!opened) {
        throw SaveProblem { opened.error().sentence() };
    }
    m_read = *opened;
    m_newFamily = std::static_pointer_cast<FamilyGlyphSource>(m_read->glyphSource())->family();
}

void SaveCheck::compareFont(TLFont const& read) const
{
    auto const wanted = m_font.state();
    auto const now = read.state();
    bool const sameMasters = std::equal(wanted.masters.begin(), wanted.masters.end(), now.masters.begin(),
        now.masters.end(), [](TLMasterState const& one, TLMasterState const& other) {
            return one.id == other.id && one.values == other.values
                && (one.name.empty() || one.name == other.name);
        });
    if (!areAlike(wanted.axes, now.axes) || !sameMasters) {
        throw SaveProblem { "The axes and masters would be read back differently from "
            + inQuotes(m_font.path().string()) + "." };
    }
}

TLOutline const& SaveCheck::wantedOutline(std::string const& glyph, TLLayerState const& layer) const
{
    auto const& followers = m_plan.followers();
    auto const follower = std::find_if(followers.begin(), followers.end(), [&](auto const& candidate) {
        return candidate.glyph == glyph && candidate.layerId == layer.layerId;
    });
    return follower == followers.end() ? layer.outline : follower->outline;
}

void SaveCheck::compareGlyph(
    std::string const& name, FamilyFiles::Pending const& pending, bool filesHaveChanged) const
{
    auto const& family = m_newFamily ? *m_newFamily : m_family.family();
    std::vector<std::string> report;
    GlyphLoader loader(family, m_read, name, report);
    auto const read = loader.load();
    auto const fail = [&](std::string const& what) {
        throw SaveProblem { what + " of glyph " + inQuotes(name) + " would be read back differently." };
    };
    if (!read) {
        return fail("The layers");
    }
    auto const now = read->state();
    auto const wanted = m_font.glyphForName(name)->state();
    auto const& origins = m_plan.origins().at(name);
    if (!areAlike(wanted.axes, now.axes) && !filesHaveChanged) {
        fail("The axes");
    }
    auto const matches = matchLayers(wanted, origins, now, loader.origins(), m_font.state());
    if (matches.size() != wanted.layers.size()
        || (now.layers.size() != matches.size() && !filesHaveChanged)) {
        fail("The layers");
    }
    for (auto const& layer : wanted.layers) {
        auto const* found = now.layer(matches.at(layer->layerId));
        auto const* origin = originOf(origins, layer->layerId);
        auto const ufo = std::find_if(family.sources.begin(), family.sources.end(),
            [origin](auto const& source) { return source.ufo->displayName() == origin->ufo; });
        auto const path
            = ufo->ufo->glifPath(*ufo->ufo->layerNamed(origin->ufoLayer), name).lexically_normal();
        bool const counts = !filesHaveChanged || pending.contains(path);
        if (counts && !areAlike(found->outline, wantedOutline(name, *layer))) {
            fail("The layer " + inQuotes(layer->name));
        }
    }
}
