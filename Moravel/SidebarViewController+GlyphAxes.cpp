#include "Moravel/SidebarViewController.h"

#include "Platform/Foundation/NSMainThread.h"

/// Adding glyph axes is not possible yet.
void SidebarViewController::addGlyphAxis(std::shared_ptr<NSObject> const&)
{
    NSAssertMainThread();
}

void SidebarViewController::axisCellViewDidRequestAxisEditor(std::shared_ptr<AxisCellView> const& row)
{
    NSAssertMainThread();
    openAxisEditor(row);
}

/// Glyph axes cannot be edited yet, and font axes are not edited here at all.
void SidebarViewController::openAxisEditor(std::shared_ptr<AxisCellView> const&) { }

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
