#include "Moravel/Model/TableRows.h"

#include "Moravel/Model/AxisRanges.h"
#include "Moravel/Model/Landmarks.h"
#include "Moravel/Model/Positions.h"
#include "Platform/Foundation/NSString.h"

static bool matchesFilter(std::string_view text, EditedState const& state)
{
    return state.filterQuery.empty() || NSLocalizedCaseInsensitiveContains(text, state.filterQuery);
}

static RowContent fontRow(
    std::shared_ptr<TLAxis> const& axis, TLFontMaster const* defaultMaster, EditedState const& state)
{
    auto const& axisId = axis->axisId();
    auto landmarks = state.font.masterValuesOnAxis(*axis);
    auto const fallback = defaultMaster ? defaultMaster->axisInternalValueValueForId(axisId) : 0;
    auto range = rangeList(fontAxisRange(landmarks, fallback));
    return { .axis = axis,
        .range = std::move(range),
        .landmarks = std::move(landmarks),
        .position = fontAxisPosition(axisId, state.layer, state.displayLocation, state.currentMaster) };
}

/// The items of one section on their way into a model. Of axes with the same identifier the first one
/// has the row, since a snapshot cannot hold an item twice.
struct SectionItems {
    MoravelTableModel& model;
    Section section;
    std::vector<SidebarItem> items;

    /// Where the row's content goes; null for an identifier that has been seen.
    RowContent* append(std::string const& axisId)
    {
        auto const [entry, isNew] = model.rowContentByItem.try_emplace({ section, axisId });
        if (!isNew) {
            return nullptr;
        }
        items.push_back(entry->first);
        return &entry->second;
    }

    void finish()
    {
        if (!items.empty()) {
            model.snapshot.appendSection(section);
            model.snapshot.appendItems(std::move(items));
        }
    }
};

static void appendFontRows(MoravelTableModel& model, EditedState const& state)
{
    auto const defaultMaster = state.font.defaultFontMaster(nullptr);
    SectionItems rows { model, Section::font, {} };
    for (auto const& axis : state.font.canonicalAxes()) {
        auto const& tag = axis->axisTag();
        if (!matchesFilter(axis->name(), state) && !(tag && matchesFilter(*tag, state))) {
            continue;
        }
        if (auto* const content = rows.append(axis->axisId())) {
            *content = fontRow(axis, defaultMaster.get(), state);
        }
    }
    rows.finish();
}

static void appendGlyphRows(MoravelTableModel& model, TLGlyph const& glyph, EditedState const& state)
{
    auto const bounds = glyph.internalAxisRanges(std::nullopt);
    auto const defaultMaster = state.font.defaultFontMaster(nullptr);
    auto const defaultLayer = defaultMaster ? glyph.layers().find(defaultMaster->id()) : nullptr;
    SectionItems rows { model, Section::glyph, {} };
    for (auto const& axis : glyph.axes()) {
        auto const span = bounds.find(axis);
        if (!matchesFilter(axis->name(), state) || span == bounds.end()) {
            continue;
        }
        if (auto* const content = rows.append(axis->axisId())) {
            auto const fallback = glyphAxisDefault(*axis, defaultLayer.get());
            *content = { .axis = axis,
                .range = rangeList({ span->second.lower, fallback, span->second.upper }),
                .landmarks = glyphAxisLandmarks(glyph, *axis),
                .position = glyphAxisPosition(*axis, *state.layer) };
        }
    }
    rows.finish();
}

MoravelTableModel tableRows(EditedState const& state)
{
    MoravelTableModel model;
    appendFontRows(model, state);
    auto const glyph = state.layer ? state.layer->glyph() : nullptr;
    if (glyph && !glyph->axes().empty()) {
        appendGlyphRows(model, *glyph, state);
    }
    return model;
}
