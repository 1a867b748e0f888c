#include "Typloom/TyploomCore/NamesCarried.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace {

/// Old name to new name; none for an axis that is gone.
using NameChanges = std::map<std::string, std::optional<std::string>, std::less<>>;

NameChanges changesOfNames(
    std::vector<TLAxisState> const& before, std::vector<std::shared_ptr<TLAxis>> const& now)
{
    NameChanges changes;
    for (auto const& old : before) {
        auto const axis = std::find_if(now.begin(), now.end(),
            [&old](auto const& candidate) { return candidate->axisId() == old.axisId; });
        if (axis == now.end()) {
            changes.emplace(old.name, std::nullopt);
        } else if ((*axis)->name() != old.name) {
            changes.emplace(old.name, (*axis)->name());
        }
    }
    return changes;
}

/// Names behind an asterisk are dimensions of one axis: "rotate*1" changes with "rotate".
struct NameParts {
    explicit NameParts(std::string const& name)
        : axis(name.substr(0, std::max<std::size_t>(name.find('*'), 1)))
        , dimension(name.substr(axis.size()))
    {
    }
    std::string axis;
    std::string dimension;
};

bool hasOwnAxis(TLGlyph const& glyph, std::string_view name)
{
    auto const& axes = glyph.axes();
    return std::any_of(axes.begin(), axes.end(), [name](auto const& axis) { return axis->name() == name; });
}

class Carriage {
public:
    Carriage(TLFont& font, std::map<std::string, TLGlyphState> const& glyphsBefore)
        : m_font(font)
    {
        for (auto const& [name, before] : glyphsBefore) {
            auto changes = changesOfNames(before.axes, m_font.loadedGlyphForName(name)->axes());
            if (!changes.empty()) {
                m_glyphChanges.emplace(name, std::move(changes));
            }
        }
    }

    void addFontChanges(TLFontState const& before)
    {
        m_fontChanges = changesOfNames(before.axes, m_font.canonicalAxes());
    }

    void run(std::optional<std::vector<std::string>>& glyphsWithLocations)
    {
        if (m_glyphChanges.empty() && m_fontChanges.empty()) {
            return;
        }
        if (!glyphsWithLocations) {
            auto const& source = m_font.glyphSource();
            glyphsWithLocations
                = source ? source->glyphNamesWithVariableComponents() : std::vector<std::string> {};
        }
        std::set<std::string> names(glyphsWithLocations->begin(), glyphsWithLocations->end());
        for (auto const& [name, glyph] : m_font.loadedGlyphs()) {
            names.insert(name);
        }
        for (auto const& name : names) {
            if (auto const glyph = m_font.glyphForName(name)) {
                carryInto(*glyph);
            }
        }
    }

private:
    void carryInto(TLGlyph& glyph)
    {
        for (auto const& [layerId, layer] : glyph.layers()) {
            auto const& components = layer->outline().components;
            auto const names = [](TLComponent const& component) { return !component.location.empty(); };
            if (std::none_of(components.begin(), components.end(), names)) {
                continue;
            }
            auto outline = layer->outline();
            for (auto& component : outline.components) {
                component.location = carried(component);
            }
            layer->setOutline(std::move(outline));
        }
    }

    std::map<std::string, double> carried(TLComponent const& component)
    {
        std::map<std::string, double> location;
        for (auto const& [name, value] : component.location) {
            NameParts const parts(name);
            m_visited.clear();
            m_newNames.clear();
            m_keepsName = false;
            follow(component.base, parts.axis);
            if (m_visited.empty() || m_keepsName || m_newNames.empty()) {
                location.emplace(name, value);
            }
            for (auto const& newName : m_newNames) {
                if (newName) {
                    location.insert_or_assign(*newName + parts.dimension, value);
                }
            }
        }
        return location;
    }

    /// Finds the axes that a value of that name reaches from a component down: the base's own, else
    /// those of the bases below it and the font's.
    void follow(std::string const& base, std::string const& axisName)
    {
        auto const glyph = m_font.glyphForName(base);
        if (!glyph || !m_visited.insert(base).second) {
            return;
        }
        if (auto const changes = m_glyphChanges.find(base); changes != m_glyphChanges.end()) {
            if (auto const change = changes->second.find(axisName); change != changes->second.end()) {
                m_newNames.insert(change->second);
                return;
            }
        }
        if (hasOwnAxis(*glyph, axisName)) {
            m_keepsName = true;
            return;
        }
        if (auto const change = m_fontChanges.find(axisName); change != m_fontChanges.end()) {
            m_newNames.insert(change->second);
        }
        for (auto const& [layerId, layer] : glyph->layers()) {
            for (auto const& component : layer->outline().components) {
                follow(component.base, axisName);
            }
        }
    }

    TLFont& m_font;
    std::map<std::string, NameChanges> m_glyphChanges;
    NameChanges m_fontChanges;
    std::set<std::string> m_visited;
    std::set<std::optional<std::string>> m_newNames;
    bool m_keepsName { false }; ///< Whether the value reaches an axis that has kept its name, too.
};

bool standsAt(TLLayer const& layer, TLStringMap<double> const& place)
{
    return std::all_of(place.begin(), place.end(), [&layer](auto const& entry) {
        auto const value = layer.axisInternalValueValue(entry.first);
        return value && std::abs(*value - entry.second) < 1e-5;
    });
}

bool namesOwnAxis(TLGlyph const& glyph, TLLayer const& layer)
{
    auto const& axes = glyph.axes();
    auto const named = [&layer](std::string const& id) { return layer.coordinates().contains(id); };
    return std::any_of(axes.begin(), axes.end(), [&named](auto const& axis) {
        auto const& partIds = axis->partIds();
        return named(axis->axisId()) || std::any_of(partIds.begin(), partIds.end(), named);
    });
}

/// A glyph's own layers on a master's place move with it.
void carryOwnLayers(TLGlyph& glyph, TLMasterState const& before, TLFontMaster const& master)
{
    for (auto const& [layerId, layer] : glyph.layers()) {
        if (!layer->isBraceLayer() || !namesOwnAxis(glyph, *layer) || !standsAt(*layer, before.values)) {
            continue;
        }
        auto coordinates = layer->coordinates();
        for (auto const& [axisId, value] : before.values) {
            coordinates.insert_or_assign(axisId, master.axisInternalValueValueForId(axisId));
        }
        layer->setCoordinates(std::move(coordinates));
    }
}

void carryOwnLayers(TLFont& font, TLFontState const& before)
{
    std::optional<std::set<std::string>> names;
    for (auto const& old : before.masters) {
        auto const master = font.fontMasterForId(old.id);
        if (!master || master->state().values == old.values) {
            continue;
        }
        if (!names) {
            names.emplace();
            for (auto const& [name, glyph] : font.loadedGlyphs()) {
                names->insert(name);
            }
            if (font.glyphSource()) {
                auto const found = font.glyphSource()->glyphNamesWithOwnDesignSpace();
                names->insert(found.begin(), found.end());
            }
        }
        for (auto const& name : *names) {
            if (auto const glyph = font.glyphForName(name)) {
                carryOwnLayers(*glyph, old, *master);
            }
        }
    }
}

} // namespace

void carryNames(TLFont& font, std::map<std::string, TLGlyphState> const& glyphsBefore,
    TLFontState const* fontBefore, std::optional<std::vector<std::string>>& glyphsWithLocations)
{
    // The glyphs to look at are copied: those that are taken along join the step while it is looked at.
    Carriage carriage(font, glyphsBefore);
    if (fontBefore) {
        carriage.addFontChanges(*fontBefore);
        carryOwnLayers(font, *fontBefore);
    }
    carriage.run(glyphsWithLocations);
}
