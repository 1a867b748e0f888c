#include "Moravel/SidebarViewController.h"

#include "Moravel/MoravelBundle.h"
#include "Platform/AppKit/NSAnimationContext.h"
#include "Platform/Foundation/NSMainThread.h"
#include "Platform/Foundation/NSString.h"

void SidebarViewController::viewDidAppear()
{
    NSAssertMainThread();
    NSViewController::viewDidAppear();
    applyTableModel(makeTableModel(), nullptr, {});
}

void SidebarViewController::didUpdateInterface(std::shared_ptr<NSNotification> const&)
{
    NSAssertMainThread();
    auto const previousLayer = activeLayer();
    applyTableModel(makeTableModel(), nullptr, [self = sharedAs<SidebarViewController>(), previousLayer] {
        self->scrollToTopIfActiveLayerChanged(previousLayer);
    });
}

void SidebarViewController::controlTextDidChange(std::shared_ptr<NSNotification> const& notification)
{
    NSAssertMainThread();
    auto const control = notification ? notification->object<NSObject>() : nullptr;
    auto const field = filterField();
    if (!control || control != field) {
        return;
    }
    m_filterQuery = NSStringByTrimming(field->stringValue(), NSCharacterSet::whitespace);
    applyTableModel(
        makeTableModel(), nullptr, [self = sharedAs<SidebarViewController>()] { self->scrollToTop(); });
}

void SidebarViewController::applyTableModel(MoravelTableModel model,
    std::shared_ptr<TLAxis> const& refreshingAxis, std::function<void()> const& completion)
{
    NSAssertMainThread();
    updateAccessories(model.snapshot.numberOfItems() == 0);
    if (!m_dataSource) {
        m_tableState->setRowContentByItem(std::move(model.rowContentByItem));
        if (completion) {
            completion();
        }
        return;
    }
    auto changed = m_tableState->changedItems(model.rowContentByItem, refreshingAxis);
    // Cells that the data source makes from here on read the new contents.
    m_tableState->setRowContentByItem(std::move(model.rowContentByItem));
    auto const finish = [self = sharedAs<SidebarViewController>(), changed = std::move(changed), completion] {
        NSAssertMainThread();
        self->m_tableState->postRowContentChanges(changed);
        if (completion) {
            completion();
        }
    };
    if (m_dataSource->snapshot() == model.snapshot) {
        finish();
    } else {
        applySnapshot(std::move(model.snapshot), finish);
    }
}

/// What stands around the rows: the placeholder for none, and the plus button.
void SidebarViewController::updateAccessories(bool isEmpty)
{
    if (isEmpty) {
        updatePlaceholderTexts(!m_filterQuery.empty());
    }
    if (auto const placeholder = placeholderView()) {
        placeholder->setHidden(!isEmpty);
    }
    if (auto const button = addButton()) {
        button->setEnabled(activeLayer() != nullptr);
    }
}

/// Row by row and without any movement.
void SidebarViewController::applySnapshot(SidebarSnapshot snapshot, std::function<void()> const& finish)
{
    NSAnimationContext::runAnimationGroup([&](NSAnimationContext& context) {
        NSAssertMainThread();
        context.setDuration(0);
        context.setAllowsImplicitAnimation(false);
        m_dataSource->setDefaultRowAnimation(NSTableViewAnimationOptions::none);
        m_dataSource->applySnapshot(std::move(snapshot), true, finish);
    });
}

void SidebarViewController::updatePlaceholderTexts(bool filtering)
{
    auto const title = filtering
        ? MoravelLocalizedString("variation.no-matches.title", "No Matches",
            "Placeholder title shown when no axis matches the filter")
        : MoravelLocalizedString("variation.no-axes.title", "No Axes",
            "Placeholder title shown when the font and glyph have no variation axes");
    if (auto const placeholder = placeholderView()) {
        placeholder->setTitle(title);
    }
    auto const body = filtering
        ? MoravelLocalizedString("variation.no-matches.message",
            "No axis matches the filter. Clear the filter to show all axes.",
            "Placeholder message shown when no axis matches the filter")
        : MoravelLocalizedString("variation.no-axes.message",
            "Add font axes in the Font tab in Font Info and glyph axes using the plus button below.",
            "Placeholder message shown when the font and glyph have no variation axes");
    if (auto const placeholder = placeholderView()) {
        placeholder->setBody(body);
    }
}

void SidebarViewController::scrollToTop()
{
    auto const scrollView = requiredTableView()->enclosingScrollView();
    if (!scrollView) {
        return;
    }
    auto const clipView = scrollView->contentView();
    clipView->scrollToPoint({ clipView->bounds().origin.x, -clipView->contentInsets().top });
    scrollView->reflectScrolledClipView(clipView);
}

void SidebarViewController::scrollToTopIfActiveLayerChanged(std::shared_ptr<TLLayer> const& previousLayer)
{
    if (activeLayer() != previousLayer) {
        scrollToTop();
    }
}
