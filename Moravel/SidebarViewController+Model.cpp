#include "Moravel/SidebarViewController.h"

#include "Moravel/Model/AxisRanges.h"
#include "Moravel/Model/Landmarks.h"
#include "Moravel/Model/Positions.h"
#include "Platform/Foundation/NSMainThread.h"
#include "Platform/Foundation/NSString.h"
#include "Typloom/TyploomCore/TLInterpolationFontProxy.h"

std::shared_ptr<TLEditViewController> SidebarViewController::editViewController() const
{
    return std::dynamic_pointer_cast<TLEditViewController>(controller());
}

std::shared_ptr<TLFontMaster> SidebarViewController::currentMaster(TLFont const& font) const
{
    auto const viewController = controller();
    auto const master = font.fontMasterAtIndex(viewController ? viewController->masterIndex() : 0);
    return master ? master : font.defaultFontMaster(nullptr);
}

/// The real font's glyph that a preview's layer shows; none when the layer belongs to no preview or
/// has no glyph with a name. A null glyph: the real font has none of that name.
static std::optional<std::shared_ptr<TLGlyph>> realGlyphOfPreview(
    TLLayer const& layer, std::shared_ptr<TLInterpolationFontProxy> const& proxy)
{
    auto const glyph = layer.glyph();
    if (!proxy || !glyph || glyph->name().empty()) {
        return std::nullopt;
    }
    auto const font = proxy->parentFont();
    return font ? font->glyphForName(glyph->name()) : nullptr;
}

static std::shared_ptr<TLInterpolationFontProxy> previewFont(TLLayer const& layer)
{
    return std::dynamic_pointer_cast<TLInterpolationFontProxy>(layer.valueForKey("font"));
}

std::shared_ptr<TLLayer> SidebarViewController::currentActiveLayer() const
{
    NSAssertMainThread();
    auto const viewController = controller();
    auto const layer = viewController ? viewController->activeLayer() : nullptr;
    if (!layer) {
        return nullptr;
    }
    auto const proxy = previewFont(*layer);
    auto const glyph = realGlyphOfPreview(*layer, proxy).value_or(nullptr);
    if (!glyph) {
        return layer;
    }
    auto const master = proxy->parentFont()->fontMasterAtIndex(viewController->masterIndex());
    auto const realLayer = master ? glyph->layerForId(master->id()) : nullptr;
    return realLayer ? realLayer : layer;
}

std::shared_ptr<TLGlyph> SidebarViewController::currentGlyph() const
{
    NSAssertMainThread();
    auto const viewController = controller();
    auto const layer = viewController ? viewController->activeLayer() : nullptr;
    if (!layer) {
        return nullptr;
    }
    auto const realGlyph = realGlyphOfPreview(*layer, previewFont(*layer));
    return realGlyph ? *realGlyph : layer->glyph();
}

std::optional<TLLocation> SidebarViewController::displayLocation() const
{
    auto const viewController = editViewController();
    auto const editView = viewController ? viewController->graphicView() : nullptr;
    return editView ? editView->axisLocation() : std::nullopt;
}

std::shared_ptr<TLFont> SidebarViewController::fontOfModel(TLLayer const* layer) const
{
    auto font = layer ? layer->font() : nullptr;
    if (font) {
        return font;
    }
    auto const viewController = editViewController();
    auto const windowController = viewController ? viewController->windowController() : nullptr;
    return windowController ? windowController->documentFont() : nullptr;
}

MoravelTableModel SidebarViewController::makeTableModel()
{
    NSAssertMainThread();
    auto const layer = currentActiveLayer();
    m_activeLayer = layer;
    MoravelTableModel model;
    auto const font = fontOfModel(layer.get());
    if (!font) {
        return model;
    }
    appendFontRows(model, *font, layer.get());
    if (auto const glyph = layer ? layer->glyph() : nullptr; glyph && !glyph->axes().empty()) {
        appendGlyphRows(model, *glyph, *font, *layer);
    }
    return model;
}

bool SidebarViewController::matchesFilter(std::string_view text) const
{
    return m_filterQuery.empty() || NSLocalizedCaseInsensitiveContains(text, m_filterQuery);
}

/// Appends a section with its items, unless there are none.
static void appendSection(SidebarSnapshot& snapshot, Section section, std::vector<SidebarItem> items)
{
    if (!items.empty()) {
        snapshot.appendSection(section);
        snapshot.appendItems(std::move(items));
    }
}

void SidebarViewController::appendFontRows(
    MoravelTableModel& model, TLFont const& font, TLLayer const* layer) const
{
    auto const defaultMaster = font.defaultFontMaster(nullptr);
    auto const location = displayLocation();
    auto const master = currentMaster(font);
    std::vector<SidebarItem> items;
    items.reserve(font.canonicalAxes().size());
    for (auto const& axis : font.canonicalAxes()) {
        auto const& tag = axis->axisTag();
        if (!matchesFilter(axis->name()) && !(tag && matchesFilter(*tag))) {
            continue;
        }
        SidebarItem item { Section::font, axis->axisId() };
        auto const [entry, isNew] = model.rowContentByItem.try_emplace(item);
        if (!isNew) {
            continue; // A repeated identifier: the first axis has the row.
        }
        auto landmarks = fontAxisLandmarks(font.fontMasters(), axis->axisId());
        auto const fallback = defaultMaster ? defaultMaster->axisInternalValueValueForId(axis->axisId()) : 0;
        auto range = rangeList(fontAxisRange(landmarks, fallback));
        entry->second = { .axis = axis,
            .range = std::move(range),
            .landmarks = std::move(landmarks),
            .position = fontAxisPosition(axis->axisId(), layer, location, master.get()) };
        items.push_back(std::move(item));
    }
    appendSection(model.snapshot, Section::font, std::move(items));
}

void SidebarViewController::appendGlyphRows(
    MoravelTableModel& model, TLGlyph const& glyph, TLFont const& font, TLLayer const& layer) const
{
    auto const ranges = glyph.internalAxisRanges(std::nullopt);
    auto const defaultMaster = font.defaultFontMaster(nullptr);
    auto const defaultLayer = defaultMaster ? glyph.layers().find(defaultMaster->id()) : nullptr;
    auto landmarks = glyphAxisLandmarks(glyph.layers(), glyph.axes());
    std::vector<SidebarItem> items;
    for (std::size_t index = 0; index < glyph.axes().size(); ++index) {
        auto const& axis = glyph.axes()[index];
        auto const bounds = ranges.find(axis);
        if (!matchesFilter(axis->name()) || bounds == ranges.end()) {
            continue;
        }
        SidebarItem item { Section::glyph, axis->axisId() };
        auto const [entry, isNew] = model.rowContentByItem.try_emplace(item);
        if (!isNew) {
            continue; // A repeated identifier: the first axis has the row.
        }
        auto const fallback = glyphAxisDefault(*axis, defaultLayer.get());
        entry->second = { .axis = axis,
            .range = rangeList({ bounds->second.lower, fallback, bounds->second.upper }),
            .landmarks = std::move(landmarks[index]),
            .position = glyphAxisPosition(*axis, layer) };
        items.push_back(std::move(item));
    }
    appendSection(model.snapshot, Section::glyph, std::move(items));
}
