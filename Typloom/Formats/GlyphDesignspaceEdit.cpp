#include "Typloom/Formats/GlyphDesignspaceEdit.h"

#include "Typloom/Formats/AxisSearch.h"

#include <algorithm>
#include <set>

namespace {

double fontCoordinate(TLLayerState const& layer, TLAxisState const& axis)
{
    auto const own = layer.coordinates.find(axis.axisId);
    return own == layer.coordinates.end() ? axis.defaultValue : own->second;
}

} // namespace

GlyphDesignspaceEdit::GlyphDesignspaceEdit(
    std::string glyphName, PlistValue entry, PlistValue identities, GlyphInFont before, GlyphInFont after)
    : m_glyphName(std::move(glyphName))
    , m_entry(std::move(entry))
    , m_identities(std::move(identities))
    , m_before(before)
    , m_after(after)
{
    readAxes();
    for (auto const& item : items(m_entry, "sources")) {
        m_sources.push_back(readSource(item.dictionary() ? *item.dictionary() : PlistValue::Dictionary {}));
    }
}

void GlyphDesignspaceEdit::readAxes()
{
    for (auto const& item : items(m_entry, "axes")) {
        auto const name = nameIn(item);
        auto const* axis = axisNamed(m_before.glyph.axes, name);
        axis = axis ? axis : axisNamed(m_before.glyph.axes, baseAxisName(name));
        if (axis) {
            m_parts.try_emplace(name, Part { axis->axisId, name.substr(axis->name.size()) });
        }
    }
    for (auto const& axis : m_after.glyph.axes) {
        bool const isInFile = std::any_of(m_parts.begin(), m_parts.end(),
            [&axis](auto const& entry) { return entry.second.axisId == axis.axisId; });
        for (auto const& partId : axis.partIds.empty() ? std::vector { axis.axisId } : axis.partIds) {
            if (!isInFile) {
                m_newParts.push_back({ axis.axisId, partId.substr(axis.axisId.size()) });
            }
        }
    }
}

GlyphDesignspaceEdit::Source GlyphDesignspaceEdit::readSource(PlistValue::Dictionary const& entries) const
{
    Source source { entries, {}, {} };
    readPlaces(source, "location");
    readPlaces(source, hiddenLocationKey);
    return source;
}

/// Takes the coordinates on known axes out of an entry.
void GlyphDesignspaceEdit::readPlaces(Source& source, std::string_view key) const
{
    auto const entry = source.entries.find(key);
    if (entry == source.entries.end() || !entry->second.dictionary()) {
        return;
    }
    auto rest = *entry->second.dictionary();
    for (auto const& [name, value] : *entry->second.dictionary()) {
        auto const part = m_parts.find(name);
        auto const* axis = axisNamed(m_before.font.axes, name);
        if (!value.number()) {
            continue;
        }
        if (key != hiddenLocationKey && part != m_parts.end()) {
            source.own.emplace(part->second, *value.number());
        } else if (axis) {
            source.font.emplace(axis->axisId, *value.number());
        } else {
            continue;
        }
        rest.erase(name);
    }
    entry->second.content = std::move(rest);
}

std::vector<GlyphDesignspaceEdit::Part> GlyphDesignspaceEdit::partsOf(std::string const& key) const
{
    std::vector<Part> parts;
    auto const take = [&](Part const& part) {
        if (key == part.axisId || key == part.axisId + part.suffix) {
            parts.push_back(part);
        }
    };
    for (auto const& [name, part] : m_parts) {
        take(part);
    }
    std::for_each(m_newParts.begin(), m_newParts.end(), take);
    return parts;
}

double GlyphDesignspaceEdit::coordinateOf(
    TLLayerState const& layer, Part const& part, TLAxisState const& axis) const
{
    auto entry = layer.coordinates.find(part.axisId + part.suffix);
    entry = entry == layer.coordinates.end() ? layer.coordinates.find(part.axisId) : entry;
    return entry == layer.coordinates.end() ? axis.defaultValue : entry->second;
}

bool GlyphDesignspaceEdit::standsAt(Source const& source, TLLayerState const& layer) const
{
    bool const ownAgrees = std::all_of(m_parts.begin(), m_parts.end(), [&](auto const& entry) {
        auto const& axis = *axisWithId(m_before.glyph.axes, entry.second.axisId);
        auto const given = source.own.find(entry.second);
        return (given == source.own.end() ? axis.defaultValue : given->second)
            == coordinateOf(layer, entry.second, axis);
    });
    auto const& axes = m_before.font.axes;
    return ownAgrees && std::all_of(axes.begin(), axes.end(), [&](TLAxisState const& axis) {
        auto const given = source.font.find(axis.axisId);
        return (given == source.font.end() ? axis.defaultValue : given->second)
            == fontCoordinate(layer, axis);
    });
}

std::optional<std::size_t> GlyphDesignspaceEdit::takeSource(
    TLLayerState const& layer, std::string const& ufoLayer, bool isDefaultLayer)
{
    for (std::size_t index = 0; index < m_sources.size(); ++index) {
        auto& source = m_sources[index];
        auto const name = source.entries.find("layername");
        bool const namesNone
            = name == source.entries.end() || !name->second.string() || name->second.string()->empty();
        bool const isOfLayer = namesNone ? isDefaultLayer : *name->second.string() == ufoLayer;
        if (!source.isTaken && isOfLayer && standsAt(source, layer)) {
            source.isTaken = true;
            return index;
        }
    }
    return std::nullopt;
}

void GlyphDesignspaceEdit::setCoordinates(
    Source& source, TLLayerState const* from, TLLayerState const& to) const
{
    auto const given = [](TLLayerState const* layer, std::string const& key) {
        auto const entry = layer ? layer->coordinates.find(key) : TLCoordinates::const_iterator {};
        return layer && entry != layer->coordinates.end() ? std::optional(entry->second) : std::nullopt;
    };
    std::erase_if(source.own, [&](auto const& entry) {
        auto const& key = entry.first.axisId;
        return !given(&to, key) && !given(&to, key + entry.first.suffix);
    });
    for (auto const& [key, value] : to.coordinates) {
        if (given(from, key) == value) {
            continue;
        }
        for (auto const& part : partsOf(key)) {
            source.own.insert_or_assign(part, value);
        }
    }
    for (auto const& axis : m_after.font.axes) {
        auto const value = fontCoordinate(to, axis);
        auto const* before = axisWithId(m_before.font.axes, axis.axisId);
        if (from && before && fontCoordinate(*from, *before) == value) {
            continue;
        }
        if (value == axis.defaultValue) {
            source.font.erase(axis.axisId);
        } else {
            source.font.insert_or_assign(axis.axisId, value);
        }
    }
    // What the file leaves out is at the default, which may be another now.
    for (auto const& [name, part] : m_parts) {
        auto const* axis = axisWithId(m_after.glyph.axes, part.axisId);
        if (axis && coordinateOf(to, part, *axis) != axis->defaultValue) {
            source.own.try_emplace(part, coordinateOf(to, part, *axis));
        }
    }
}

void GlyphDesignspaceEdit::moveSource(std::size_t source, TLLayerState const& from, TLLayerState const& to)
{
    setCoordinates(m_sources[source], &from, to);
}

void GlyphDesignspaceEdit::setLayerName(std::size_t source, std::string const& ufoLayer)
{
    m_sources[source].entries.insert_or_assign("layername", PlistValue { ufoLayer });
}

std::size_t GlyphDesignspaceEdit::addSource(
    TLLayerState const& layer, std::string const& name, std::string const& ufoLayer)
{
    Source source { { { "name", { name } }, { "layername", { ufoLayer } },
                        { "location", { PlistValue::Dictionary {} } } },
        {}, {}, true };
    setCoordinates(source, nullptr, layer);
    m_sources.push_back(std::move(source));
    return m_sources.size() - 1;
}

void GlyphDesignspaceEdit::removeSource(std::size_t source)
{
    m_sources[source].isRemoved = true;
}
