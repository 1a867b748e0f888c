#include "Typloom/Formats/FamilySavePlan.h"

#include "Typloom/Formats/AxisSearch.h"
#include "Typloom/Formats/Numbers.h"
#include "Typloom/TyploomCore/TLDocumentHistory.h"

#include <algorithm>

namespace {

/// Four characters made of the name, which no other axis has: "Slant Width" gives "SLAN".
std::string makeTag(std::string const& name, std::set<std::string> const& used)
{
    std::string tag;
    for (char const character : name) {
        bool const isLower = character >= 'a' && character <= 'z';
        bool const isLetter = isLower || (character >= 'A' && character <= 'Z');
        if (isLetter && tag.size() < 4) {
            tag += isLower ? static_cast<char>(character - 'a' + 'A') : character;
        }
    }
    tag.resize(4, 'X');
    auto const letters = tag;
    for (std::size_t number = 1; used.contains(tag); ++number) {
        auto const digits = std::to_string(number);
        tag = letters.substr(0, 4 - std::min<std::size_t>(digits.size(), 3)) + digits;
    }
    return tag;
}

} // namespace

FamilySavePlan::FamilySavePlan(
    TLFont& font, std::filesystem::path const& designspace, FamilyGlyphSource& family, bool replacesLostFiles)
    : m_font(font)
    , m_family(family)
    , m_replacesLostFiles(replacesLostFiles)
    , m_before(font.history().savedFont())
    , m_after(font.state())
    , m_modified(font.history().modifiedGlyphs())
    , m_files(designspace, family.family())
    , m_sources(m_files, family.family(), m_after)
{
}

void FamilySavePlan::run()
{
    saveAxes();
    saveMasters();
    for (auto const& name : glyphsToSave()) {
        saveGlyph(name);
    }
    m_sources.removeUnused([this](TLCoordinates const& place) { return isNeeded(place); });
    for (auto const& ufo : m_family.madeUfos()) {
        removeMadeUfo(ufo);
    }
}

void FamilySavePlan::saveAxes()
{
    auto& designspace = m_sources.designspace();
    std::map<std::string, std::string> renamed;
    for (auto const& axis : m_before.axes) {
        auto const* after = axisWithId(m_after.axes, axis.axisId);
        if (!after) {
            designspace.removeAxis(axis.name);
        } else if (after->name != axis.name) {
            renamed.emplace(axis.name, after->name);
        }
    }
    designspace.renameAxes(renamed);
    std::set<std::string> names;
    for (std::size_t index = 0; index < m_after.axes.size(); ++index) {
        auto axis = m_after.axes[index];
        auto const* before = axisWithId(m_before.axes, axis.axisId);
        if (axis.name.empty() || !names.insert(axis.name).second) {
            throw SaveProblem { axis.name.empty()
                    ? "An axis of the font has no name."
                    : "Two axes of the font have the name " + inQuotes(axis.name) + "." };
        }
        if (!before) {
            axis.tag = axis.tag ? axis.tag : makeTag(axis.name, designspace.tags());
            designspace.addAxis(axis, index);
            continue;
        }
        bool const hasOtherValues = before->minimum != axis.minimum || before->maximum != axis.maximum
            || before->defaultValue != axis.defaultValue;
        if (hasOtherValues && !designspace.setValues(axis.name, axis)) {
            throw SaveProblem { "The axis " + inQuotes(axis.name)
                + " of the font has a map, which would have to follow its new values." };
        }
        if (before->tag != axis.tag) {
            designspace.setTag(axis.name, axis.tag.value_or(""));
        }
    }
}

/// The glyphs' own sources name axes of the font, and stand where masters stand; their own axes hide new ones
/// of the font that have the same name.
bool FamilySavePlan::concernsOwnSources() const
{
    auto const isOther = [](auto const* after, auto const& before, auto field) {
        return !after || after->*field != before.*field;
    };
    return std::any_of(m_before.axes.begin(), m_before.axes.end(), [&](TLAxisState const& axis) {
        return isOther(axisWithId(m_after.axes, axis.axisId), axis, &TLAxisState::name);
    }) || std::any_of(m_after.axes.begin(), m_after.axes.end(), [&](TLAxisState const& axis) {
        return !axisWithId(m_before.axes, axis.axisId);
    }) || std::any_of(m_before.masters.begin(), m_before.masters.end(), [&](TLMasterState const& master) {
        return isOther(masterWithId(m_after.masters, master.id), master, &TLMasterState::values);
    });
}

std::set<std::string> FamilySavePlan::glyphsToSave() const
{
    std::set<std::string> names;
    for (auto const& [name, before] : m_modified) {
        names.insert(name);
    }
    if (concernsOwnSources()) {
        auto const concerned = m_family.glyphNamesWithOwnDesignSpace();
        names.insert(concerned.begin(), concerned.end());
    }
    return names;
}

void FamilySavePlan::saveGlyph(std::string const& name)
{
    auto const glyph = m_font.glyphForName(name);
    if (!glyph) {
        return;
    }
    auto const after = glyph->state();
    auto const modified = m_modified.find(name);
    if (modified == m_modified.end() && !m_family.family().axisHolder(name)) {
        return; // Another program has taken it away, and nothing of it is changed here.
    }
    auto const& before = modified == m_modified.end() ? after : modified->second;
    GlyphSave save(name, glyph->unicodes(), { { before, m_before }, { after, m_after } }, m_sources, m_family,
        m_replacesLostFiles);
    save.run();
    m_origins.emplace(name, save.origins());
    m_removed.emplace(name, save.removed());
    for (auto const& [layerId, outline] : save.followers()) {
        m_followers.push_back({ name, layerId, outline });
    }
    m_notes.insert(m_notes.end(), save.notes().begin(), save.notes().end());
    addNotes(*glyph);
    tellOfLostValues(before, after, name);
}

namespace {

/// The value that gave way when an axis was renamed onto its name; none when none did.
std::optional<std::pair<std::string, double>> lostValue(TLComponent const& before, TLComponent const& after)
{
    for (auto const& [name, value] : before.location) {
        auto const now = after.location.find(name);
        bool const isOther = now != after.location.end() && now->second != value;
        bool const hasComeFromOther
            = isOther && std::any_of(before.location.begin(), before.location.end(), [&](auto const& entry) {
                  return entry.second == now->second && !after.location.contains(entry.first);
              });
        if (hasComeFromOther) {
            return std::pair(name, value);
        }
    }
    return std::nullopt;
}

} // namespace

/// A component can give one value of a name only.
void FamilySavePlan::tellOfLostValues(
    TLGlyphState const& before, TLGlyphState const& after, std::string const& glyph)
{
    for (auto const& layer : after.layers) {
        auto const* was = before.layer(layer->layerId);
        auto const& now = layer->outline.components;
        for (std::size_t index = 0; was && index < std::min(now.size(), was->outline.components.size());
             ++index) {
            if (auto const lost = lostValue(was->outline.components[index], now[index])) {
                m_notes.push_back("In the glyph " + inQuotes(glyph) + " the component "
                    + inQuotes(now[index].base) + " loses its value " + describeNumber(lost->second) + " on "
                    + inQuotes(lost->first) + ", since an axis that it gives a value too has that name now.");
            }
        }
    }
}

/// The names of a glyph's layers that do not stand at the default of an axis of the font.
std::string FamilySavePlan::layersOff(TLGlyph const& glyph, TLAxisState const& axis) const
{
    std::string names;
    for (auto const& layer : glyph.state().layers) {
        auto const* master = masterWithId(m_after.masters, layer->layerId);
        auto const place = m_sources.fontPlace(master ? coordinatesOf(*master) : layer->coordinates);
        if (layer->kind != TLLayerKind::other && place.find(axis.axisId)->second != axis.defaultValue) {
            auto const& name = master ? master->name : layer->name;
            names += (names.empty() ? "" : ", ") + inQuotes(name.empty() ? layer->layerId : name);
        }
    }
    return names;
}

void FamilySavePlan::addNotes(TLGlyph const& glyph)
{
    for (auto const& own : glyph.axes()) {
        auto const* axis = axisNamed(m_after.axes, own->name());
        if (!axis) {
            continue;
        }
        auto const moved = layersOff(glyph, *axis);
        m_notes.push_back("The axis " + inQuotes(own->name()) + " of glyph " + inQuotes(glyph.name())
            + " has the name of an axis of the font: "
            + (moved.empty() ? "other programs will not move this glyph on the font's axis."
                             : "in other programs its sources fall together on one place there, and it can't "
                               "be interpolated at all. Layers that change place: "
                        + moved + "."));
    }
}

/// Whether a source of some glyph's own stands at a place of the font.
bool FamilySavePlan::isNeeded(TLCoordinates const& place) const
{
    std::set<std::string> names;
    for (auto const& name : m_family.glyphNamesWithOwnDesignSpace()) {
        names.insert(name);
    }
    for (auto const& [name, origins] : m_origins) {
        names.insert(name);
    }
    return std::any_of(names.begin(), names.end(), [&](std::string const& name) {
        auto const glyph = m_font.glyphForName(name);
        auto const planned = m_origins.find(name);
        auto const origins = planned == m_origins.end() ? m_family.originsOf(name) : planned->second;
        return glyph && std::any_of(origins.begin(), origins.end(), [&](LayerOrigin const& origin) {
            auto const layer = origin.isOfLocalSource ? glyph->layers().find(origin.layerId) : nullptr;
            return layer && m_sources.fontPlace(layer->coordinates()) == place;
        });
    });
}

bool FamilySavePlan::changesOutline(std::string const& glyph, TLLayerState const& layer) const
{
    auto const before = m_modified.find(glyph);
    auto const* saved = before == m_modified.end() ? &layer : before->second.layer(layer.layerId);
    return !saved || saved->outline != layer.outline;
}

KnownFamily FamilySavePlan::known() const
{
    KnownFamily known;
    for (auto const& axis : m_after.axes) {
        known.axisIds.emplace(axis.name, axis.axisId);
    }
    for (auto const& master : m_after.masters) {
        known.masterIds[m_sources.master(master.id)->ufo].push_back(master.id);
    }
    return known;
}
