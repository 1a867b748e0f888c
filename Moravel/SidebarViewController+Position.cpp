#include "Moravel/SidebarViewController.h"

#include "Moravel/AxisCellView.h"
#include "Moravel/Model/Locations.h"
#include "Moravel/Model/Matching.h"
#include "Platform/Foundation/NSMainThread.h"

/// Where a row leads, and what is moved there.
struct SidebarViewController::AxisMove {
    std::shared_ptr<TLAxis> axis;
    double value; ///< Design coordinates.
    std::shared_ptr<TLEditViewController> editViewController;
    std::shared_ptr<TLGlyphEditView> editView;
};

void SidebarViewController::axisCellViewDidChangeValue(std::shared_ptr<AxisCellView> const& row, double value)
{
    NSAssertMainThread();
    applyAxisPosition(row, value);
}

/// The edit view is moved from inside its reflow, whenever the host does that; all that the move
/// needs is therefore held by its callback.
void SidebarViewController::applyAxisPosition(std::shared_ptr<AxisCellView> const& row, double value)
{
    auto const viewController = editViewController();
    auto const axis = row->axis();
    auto const editView = viewController ? viewController->graphicView() : nullptr;
    if (!axis || !editView) {
        return;
    }
    auto const self = sharedAs<SidebarViewController>();
    AxisMove const move { axis, roundedToTenths(value), viewController, editView };
    if (auto const layer = activeLayer()) {
        viewController->reflowKeepActiveContentCenteredWithCallback([self, layer, move](auto const&) {
            NSAssertMainThread();
            self->applyLayerAxisPosition(layer, move);
        });
        return;
    }
    auto const windowController = viewController->windowController();
    if (auto const font = windowController ? windowController->documentFont() : nullptr) {
        viewController->reflowKeepActiveContentCenteredWithCallback([self, font, move](auto const&) {
            NSAssertMainThread();
            self->applyFontAxisPosition(font, move);
        });
    }
}

/// Nothing happens for the master that is current already, or one that the font does not have.
void SidebarViewController::makeMasterCurrent(
    TLFont const& font, std::shared_ptr<TLFontMaster> const& master, AxisMove const& move)
{
    auto const index = font.indexOfObjectInAllMasters(master);
    auto const viewController = controller();
    if (index == NSNotFound || (viewController && viewController->masterIndex() == index)) {
        return;
    }
    if (auto const windowController = move.editViewController->windowController()) {
        windowController->setMasterIndex(index);
    }
}

void SidebarViewController::applyFontAxisPosition(std::shared_ptr<TLFont> const& font, AxisMove const& move)
{
    auto location = fontLocation(*font, currentMaster(*font).get(), move.editView->axisLocation());
    location[move.axis->axisId()] = move.value;
    if (auto const master = matchingMaster(*font, location)) {
        makeMasterCurrent(*font, master, move);
        move.editView->setAxisLocation(std::nullopt);
    } else {
        move.editView->setAxisLocation(std::move(location));
    }
}

void SidebarViewController::applyLayerAxisPosition(
    std::shared_ptr<TLLayer> const& layer, AxisMove const& move)
{
    auto location = layerLocation(*layer, move.editView->axisLocation());
    location[move.axis->axisId()] = move.value;
    auto const glyph = layer->glyph();
    auto const target = glyph ? matchingLayer(*glyph, location, layer->associatedMasterId()) : nullptr;
    if (!target) {
        move.editView->setAxisLocation(std::move(location));
        return;
    }
    auto const font = target->isMasterLayer() ? layer->font() : nullptr;
    if (auto const master = font ? font->fontMasterForId(target->layerId()) : nullptr) {
        makeMasterCurrent(*font, master, move);
    }
    auto range = move.editView->selectedRange();
    range.length = std::max<std::size_t>(range.length, 1);
    move.editView->switchToLayerWithId(target->layerId(), target->associatedMasterId(), range);
}
