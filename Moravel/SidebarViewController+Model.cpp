#include "Moravel/SidebarViewController.h"

#include "Moravel/Model/TableRows.h"
#include "Platform/Foundation/NSMainThread.h"
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
    auto const font = fontOfModel(layer.get());
    if (!font) {
        return {};
    }
    auto const master = currentMaster(*font);
    return tableRows({ .font = *font,
        .layer = layer.get(),
        .currentMaster = master.get(),
        .displayLocation = displayLocation(),
        .filterQuery = m_filterQuery });
}
