#include "Typloom/Formats/SaveCheck.h"

#include "Typloom/Formats/GlyphLoader.h"
#include "Typloom/Formats/LayerMatch.h"

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

bool areAlike(std::vector<TLAxisState> const& one, std::vector<TLAxisState> const& other)
{
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
        [](TLAxisState const& left, TLAxisState const& right) {
            return left.axisId == right.axisId && left.name == right.name
                && left.defaultValue == right.defaultValue && left.partIds == right.partIds;
        });
}

/// Of the font's axes the files tell the bounds too, which hold the default.
bool haveSameBounds(std::vector<TLAxisState> const& wanted, std::vector<TLAxisState> const& read)
{
    return std::equal(wanted.begin(), wanted.end(), read.begin(), read.end(),
        [](TLAxisState const& left, TLAxisState const& right) {
            return std::min(left.minimum, left.defaultValue) == right.minimum
                && std::max(left.maximum, left.defaultValue) == right.maximum
                && (!left.tag || left.tag == right.tag);
        });
}

} // namespace

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
        if (!filesHaveChanged) {
            compareFont(*m_read);
        }
    }
    for (auto const& [name, origins] : m_plan.origins()) {
        compareGlyph(name, filesHaveChanged);
    }
}

void SaveCheck::readFamily(FamilyFiles::Pending const& pending)
{
    auto known = m_plan.known();
    std::set<std::filesystem::path> files;
    for (auto const& [path, text] : pending) {
        files.insert(path);
    }
    for (auto const* source : m_family.family().sourcesBeside(files)) {
        known.ufos.emplace(source->ufo->displayName(), source->ufo);
    }
    auto opened = openFamily(m_plan.designspace(), m_family.files(), known);
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
    if (!areAlike(wanted.axes, now.axes) || !haveSameBounds(wanted.axes, now.axes) || !sameMasters) {
        throw SaveProblem { "The axes and masters would be read back differently from "
            + inQuotes(m_plan.designspace().string()) + "." };
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

void SaveCheck::compareGlyph(std::string const& name, bool filesHaveChanged) const
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
        bool const counts = !filesHaveChanged || m_plan.changesOutline(name, *layer);
        if (counts && !areAlike(found->outline, wantedOutline(name, *layer))) {
            fail("The layer " + inQuotes(layer->name));
        }
    }
}
