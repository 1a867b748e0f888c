#include "Platform/AppKit/NSScrollView.h"

#include "Platform/AppKit/NSTableView.h"
#include "Platform/Foundation/NSMainThread.h"
#include "Platform/Qt/NSTableViewBacking.h"

static NSTableViewBacking* backingOf(NSTableView* table)
{
    return table ? static_cast<NSTableViewBacking*>(&table->backing()) : nullptr;
}

NSRect NSClipView::bounds() const
{
    auto const* backing = backingOf(m_table);
    return backing ? backing->visibleRect() : NSRect {};
}

NSEdgeInsets NSClipView::contentInsets() const
{
    return m_insets;
}

void NSClipView::setContentInsets(NSEdgeInsets insets)
{
    NSAssertMainThread();
    m_insets = insets;
    if (auto* backing = backingOf(m_table)) {
        backing->setContentInsets(insets);
    }
}

void NSClipView::scrollToPoint(NSPoint point)
{
    NSAssertMainThread();
    if (auto* backing = backingOf(m_table)) {
        backing->scrollTo(point.y);
    }
}

void NSScrollView::reflectScrolledClipView(std::shared_ptr<NSClipView> const&)
{
    // Clip view and scroller share one position.
    NSAssertMainThread();
}
