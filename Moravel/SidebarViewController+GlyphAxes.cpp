#include "Moravel/SidebarViewController.h"

#include "Moravel/AxisCellView.h"
#include "Moravel/EditGlyphAxisViewController.h"
#include "Moravel/MoravelBundle.h"
#include "Platform/Foundation/NSMainQueue.h"
#include "Platform/Foundation/NSMainThread.h"

#include <algorithm>

static std::shared_ptr<TLAxis> makeUnnamedAxis()
{
    auto const axis = std::make_shared<TLAxis>();
    axis->setName(NSLocalizedString("Unnamed", NSBundle::mainBundle(), "Unnamed",
        "Temporary name for a thing that is yet to receive a name"));
    return axis;
}

void SidebarViewController::addGlyphAxis(std::shared_ptr<NSObject> const&)
{
    NSAssertMainThread();
    auto const glyph = currentGlyph();
    if (!glyph) {
        return;
    }
    auto const axis = makeUnnamedAxis();
    glyph->insertObjectInAxesAtIndex(axis, glyph->countOfAxes());
    applyTableModel(makeTableModel(), nullptr,
        [weakSelf = std::weak_ptr(sharedAs<SidebarViewController>()), axis, glyph] {
            if (auto const self = weakSelf.lock()) {
                self->revealAddedGlyphAxis(axis, glyph);
            }
        });
}

/// A row that is hidden by the filter stays hidden, and no editor opens.
void SidebarViewController::revealAddedGlyphAxis(
    std::shared_ptr<TLAxis> const& axis, std::shared_ptr<TLGlyph> const& glyph)
{
    NSAssertMainThread();
    auto const item = m_dataSource ? m_tableState->itemForAxis(axis) : std::nullopt;
    auto const row = item ? m_dataSource->rowForItem(*item) : std::nullopt;
    if (!row) {
        return;
    }
    requiredTableView()->scrollRowToVisible(*row);
    NSMainQueue::async(
        [weakSelf = std::weak_ptr(sharedAs<SidebarViewController>()), row = *row, axis, glyph] {
            if (auto const self = weakSelf.lock()) {
                self->editAddedGlyphAxis(row, axis, glyph);
            }
        });
}

void SidebarViewController::editAddedGlyphAxis(
    std::size_t row, std::shared_ptr<TLAxis> const& axis, std::shared_ptr<TLGlyph> const& glyph)
{
    NSAssertMainThread();
    auto const table = tableView();
    if (!table) {
        return;
    }
    table->scrollRowToVisible(row);
    table->layoutSubtreeIfNeeded();
    if (auto const anchor = table->viewAtColumnRow(0, row, true)) {
        showGlyphAxisEditor(axis, { Section::glyph, axis->axisId() }, glyph, anchor);
    }
}

void SidebarViewController::axisCellViewDidRequestAxisEditor(std::shared_ptr<AxisCellView> const& row)
{
    NSAssertMainThread();
    openAxisEditor(row);
}

/// Axes of the font are not edited here.
void SidebarViewController::openAxisEditor(std::shared_ptr<AxisCellView> const& row)
{
    auto const item = row->item();
    auto const glyph = item && item->section == Section::glyph ? currentGlyph() : nullptr;
    if (!glyph) {
        return;
    }
    auto const axes = glyph->axes();
    auto const axis = std::ranges::find(axes, item->axisId, &TLAxis::axisId);
    if (axis != axes.end()) {
        showGlyphAxisEditor(*axis, *item, glyph, row);
    }
}

std::shared_ptr<EditGlyphAxisViewController> SidebarViewController::makeGlyphAxisEditor(
    std::shared_ptr<TLAxis> const& axis, std::shared_ptr<TLGlyph> const& glyph)
{
    auto const editor = std::make_shared<EditGlyphAxisViewController>();
    editor->initWithNibName("EditGlyphAxisViewController", MoravelBundle());
    editor->setGlyph(glyph);
    editor->setAxis(axis);
    auto const refresh = [weakSelf = std::weak_ptr(sharedAs<SidebarViewController>())](
                             std::shared_ptr<TLAxis> const& changed) {
        if (auto const self = weakSelf.lock()) {
            self->applyTableModel(self->makeTableModel(), changed, {});
        }
    };
    editor->setAxisContentDidChange(refresh);
    editor->setAxisWasDeleted([refresh](auto const&) { refresh(nullptr); });
    return editor;
}

void SidebarViewController::showGlyphAxisEditor(std::shared_ptr<TLAxis> const& axis, SidebarItem const& item,
    std::shared_ptr<TLGlyph> const& glyph, std::shared_ptr<NSView> const& anchor)
{
    NSAssertMainThread();
    if (m_editGlyphAxisPopover) {
        auto const open = std::dynamic_pointer_cast<EditGlyphAxisViewController>(
            m_editGlyphAxisPopover->contentViewController());
        if (open && open->axis() == axis) {
            return;
        }
        m_editGlyphAxisPopover->close();
    }
    auto const editor = makeGlyphAxisEditor(axis, glyph);
    auto const popover = std::make_shared<NSPopover>();
    popover->setBehavior(NSPopoverBehavior::transient);
    popover->setDelegate(sharedAs<SidebarViewController>());
    popover->setContentViewController(editor);
    editor->setDidAccept([weakPopover = std::weak_ptr(popover)] {
        if (auto const accepted = weakPopover.lock()) {
            accepted->close();
        }
    });
    m_editGlyphAxisPopover = popover;
    m_tableState->setEditingItem(item);
    popover->showRelativeToRect(anchor->bounds(), anchor, NSRectEdge::maxX);
    if (!popover->isShown() && m_editGlyphAxisPopover == popover) {
        // The anchor is not on screen, so nobody will ever close it.
        m_tableState->setEditingItem(std::nullopt);
        m_editGlyphAxisPopover = nullptr;
    }
}

static std::shared_ptr<NSPopover> popoverOf(std::shared_ptr<NSNotification> const& notification)
{
    return notification ? notification->object<NSPopover>() : nullptr;
}

void SidebarViewController::popoverWillClose(std::shared_ptr<NSNotification> const& notification)
{
    NSAssertMainThread();
    if (popoverOf(notification) == m_editGlyphAxisPopover) {
        m_tableState->setEditingItem(std::nullopt);
    }
}

void SidebarViewController::popoverDidClose(std::shared_ptr<NSNotification> const& notification)
{
    NSAssertMainThread();
    if (popoverOf(notification) == m_editGlyphAxisPopover) {
        m_editGlyphAxisPopover = nullptr;
    }
}
