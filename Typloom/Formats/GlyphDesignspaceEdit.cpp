#include "Typloom/Formats/GlyphDesignspaceEdit.h"

#include <algorithm>
#include <set>

namespace {

TLAxisState const* axisWithId(std::vector<TLAxisState> const& axes, std::string_view axisId)
{
    auto const found = std::find_if(
        axes.begin(), axes.end(), [axisId](auto const& axis) { return axis.axisId == axisId; });
    return found == axes.end() ? nullptr : &*found;
}

TLAxisState const* axisNamed(std::vector<TLAxisState> const& axes, std::string_view name)
{
    auto const found
        = std::find_if(axes.begin(), axes.end(), [name](auto const& axis) { return axis.name == name; });
    return found == axes.end() ? nullptr : &*found;
}

/// How far the axis reaches: its bounds, where it has any, its default and all layers.
TLClosedRange reachOf(TLGlyphState const& glyph, TLAxisState const& axis)
{
    TLClosedRange reach { axis.defaultValue, axis.defaultValue };
    auto const widen = [&reach](double value) {
        reach = { std::min(reach.lower, value), std::max(reach.upper, value) };
    };
    if (axis.minimum != axis.maximum) {
        widen(axis.minimum);
        widen(axis.maximum);
    }
    for (auto const& layer : glyph.layers) {
        for (auto const& [key, value] : layer->coordinates) {
            if (key == axis.axisId
                || std::find(axis.partIds.begin(), axis.partIds.end(), key) != axis.partIds.end()) {
                widen(value);
            }
        }
    }
    return reach;
}

double fontCoordinate(TLLayerState const& layer, TLAxisState const& axis)
{
    auto const own = layer.coordinates.find(axis.axisId);
    return own == layer.coordinates.end() ? axis.defaultValue : own->second;
}

PlistValue::Array const& items(PlistValue const& entry, std::string_view key)
{
    static PlistValue::Array const none;
    auto const* value = entry.find(key);
    return value && value->array() ? *value->array() : none;
}

std::string nameIn(PlistValue const& item)
{
    auto const* name = item.find("name");
    return name && name->string() ? *name->string() : std::string {};
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

/// The names that hide axes of the font.
std::set<std::string> GlyphDesignspaceEdit::ownNames() const
{
    std::set<std::string> names;
    for (auto const& axis : m_after.glyph.axes) {
        names.insert(axis.name);
    }
    for (auto const& [name, part] : m_parts) {
        if (auto const* axis = axisWithId(m_after.glyph.axes, part.axisId)) {
            names.insert(axis->name + part.suffix);
        }
    }
    return names;
}

PlistValue GlyphDesignspaceEdit::written(Source const& source) const
{
    auto entries = source.entries;
    auto const put = [&entries](std::string_view key, std::string const& name, double value) {
        auto& entry = entries[std::string(key)];
        if (!entry.dictionary()) {
            entry.content = PlistValue::Dictionary {};
        }
        std::get<PlistValue::Dictionary>(entry.content).insert_or_assign(name, PlistValue { value });
    };
    for (auto const& [part, value] : source.own) {
        if (auto const* axis = axisWithId(m_after.glyph.axes, part.axisId)) {
            put("location", axis->name + part.suffix, value);
        }
    }
    auto const hiding = ownNames();
    for (auto const& [axisId, value] : source.font) {
        auto const* axis = axisWithId(m_after.font.axes, axisId);
        bool const isHidden = axis && hiding.contains(axis->name);
        if (axis && (!isHidden || value != axis->defaultValue)) {
            put(isHidden ? hiddenLocationKey : "location", axis->name, value);
        }
    }
    if (auto const hidden = entries.find(hiddenLocationKey);
        hidden != entries.end() && hidden->second.dictionary() && hidden->second.dictionary()->empty()) {
        entries.erase(hidden);
    }
    return { std::move(entries) };
}

PlistValue GlyphDesignspaceEdit::newAxis(TLAxisState const& axis, std::string const& suffix) const
{
    auto const reach = reachOf(m_after.glyph, axis);
    return { PlistValue::Dictionary { { "name", { axis.name + suffix } }, { "minimum", { reach.lower } },
        { "default", { axis.defaultValue } }, { "maximum", { reach.upper } } } };
}

void GlyphDesignspaceEdit::changeAxis(PlistValue& item, Part const& part) const
{
    auto const& before = *axisWithId(m_before.glyph.axes, part.axisId);
    auto const& after = *axisWithId(m_after.glyph.axes, part.axisId);
    auto& entries = std::get<PlistValue::Dictionary>(item.content);
    if (before.name != after.name) {
        entries.insert_or_assign("name", PlistValue { after.name + part.suffix });
    }
    auto const reach = reachOf(m_after.glyph, after);
    if (before.defaultValue != after.defaultValue) {
        entries.insert_or_assign("default", PlistValue { after.defaultValue });
    }
    if (reachOf(m_before.glyph, before) != reach) {
        entries.insert_or_assign("minimum", PlistValue { reach.lower });
        entries.insert_or_assign("maximum", PlistValue { reach.upper });
    }
}

PlistValue GlyphDesignspaceEdit::axesEntry() const
{
    PlistValue::Array list;
    std::vector<std::string> owners; ///< Of each item the axis identifier.
    for (auto item : items(m_entry, "axes")) {
        auto const part = m_parts.find(nameIn(item));
        if (part != m_parts.end() && !axisWithId(m_after.glyph.axes, part->second.axisId)) {
            continue;
        }
        if (part != m_parts.end()) {
            changeAxis(item, part->second);
        }
        list.push_back(std::move(item));
        owners.push_back(part == m_parts.end() ? std::string {} : part->second.axisId);
    }
    std::size_t position = 0;
    for (auto const& axis : m_after.glyph.axes) {
        auto const last = std::find(owners.rbegin(), owners.rend(), axis.axisId);
        if (last != owners.rend()) {
            position = static_cast<std::size_t>(owners.rend() - last);
            continue;
        }
        for (auto const& part : partsOf(axis.axisId)) {
            auto const at = static_cast<std::ptrdiff_t>(position++);
            list.insert(list.begin() + at, newAxis(axis, part.suffix));
            owners.insert(owners.begin() + at, axis.axisId);
        }
    }
    return { std::move(list) };
}

PlistValue GlyphDesignspaceEdit::entry()
{
    auto entries = m_entry.dictionary() ? *m_entry.dictionary() : PlistValue::Dictionary {};
    PlistValue::Array sources;
    for (auto const& source : m_sources) {
        if (!source.isRemoved) {
            sources.push_back(written(source));
        }
    }
    auto const set = [&](char const* key, PlistValue value) {
        if (!value.array()->empty()) {
            entries.insert_or_assign(key, std::move(value));
        } else if (!items(m_entry, key).empty()) {
            entries.erase(key);
        }
    };
    set("axes", axesEntry());
    set("sources", { std::move(sources) });
    return entries.empty() ? PlistValue {} : PlistValue { std::move(entries) };
}

PlistValue GlyphDesignspaceEdit::identities() const
{
    PlistValue::Dictionary entries;
    for (auto const& [name, value] : m_identities.dictionary() ? *m_identities.dictionary() : entries) {
        auto const* before = axisNamed(m_before.glyph.axes, name);
        auto const* after = before ? axisWithId(m_after.glyph.axes, before->axisId) : nullptr;
        if (!before || after) {
            entries.insert_or_assign(after ? after->name : name, value);
        }
    }
    for (auto const& axis : m_after.glyph.axes) {
        auto const* before = axisWithId(m_before.glyph.axes, axis.axisId);
        if (before && before->name == axis.name) {
            continue;
        }
        bool const isDerived = axis.axisId == derivedAxisId(m_glyphName, axis.name);
        bool const isPlain = baseAxisName(axis.name) == axis.name;
        auto& identity = entries[axis.name];
        if (!identity.dictionary()) {
            identity.content = PlistValue::Dictionary {};
        }
        auto& content = std::get<PlistValue::Dictionary>(identity.content);
        content.erase("id");
        if (!isDerived || !isPlain) {
            content.emplace("id", PlistValue { axis.axisId });
        }
        if (content.empty()) {
            entries.erase(axis.name);
        }
    }
    return entries.empty() ? PlistValue {} : PlistValue { std::move(entries) };
}
