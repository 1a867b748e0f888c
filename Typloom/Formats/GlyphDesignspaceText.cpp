// What a GlyphDesignspaceEdit makes of the entries.

#include "Typloom/Formats/GlyphDesignspaceEdit.h"

#include "Typloom/Formats/AxisSearch.h"

#include <algorithm>

namespace {

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

} // namespace

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
