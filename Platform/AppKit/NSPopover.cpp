#include "Platform/AppKit/NSPopover.h"

#include "Platform/Foundation/NSMainThread.h"
#include "Platform/Qt/DrawingConversions.h"
#include "Platform/Qt/NSViewBacking.h"
#include "Platform/Qt/PopoverWindow.h"

#include <QPointer>

#include <algorithm>

std::string const NSPopoverDidCloseNotification = "NSPopoverDidCloseNotification";

struct NSPopover::Window {
    QPointer<PopoverWindow> widget;
    bool isClosing { false };
};

/// Holds what is shown; never destroyed, since a popover may be open when the program ends.
static std::vector<std::shared_ptr<NSPopover>>& shown()
{
    static auto& popovers = *new std::vector<std::shared_ptr<NSPopover>>;
    return popovers;
}

NSPopover::NSPopover() = default;

NSPopover::~NSPopover()
{
    if (m_window && m_window->widget) {
        m_window->widget->finish();
    }
}

void NSPopover::setContentViewController(std::shared_ptr<NSViewController> controller)
{
    NSAssertMainThread();
    m_contentViewController = std::move(controller);
}

bool NSPopover::isShown() const
{
    return m_window != nullptr;
}

void NSPopover::showRelativeToRect(NSRect rect, std::shared_ptr<NSView> const& view, NSRectEdge edge)
{
    NSAssertMainThread();
    auto* anchor = view ? qtWidget(*view) : nullptr;
    if (isShown() || !m_contentViewController || !anchor || !anchor->isVisible()) {
        return;
    }
    auto const keep = sharedAs<NSPopover>();
    auto const controller = m_contentViewController;
    auto const close = [weak = std::weak_ptr(keep)] {
        if (auto const popover = weak.lock()) {
            popover->close();
        }
    };
    m_window = std::make_unique<Window>();
    m_window->widget
        = new PopoverWindow(controller->view(), m_behavior == NSPopoverBehavior::transient, close);
    shown().push_back(keep);
    m_window->widget->open({ anchor, toQRectF(rect).toAlignedRect(), edge });
    if (isShown()) {
        controller->viewDidAppear();
    }
}

void NSPopover::close()
{
    NSAssertMainThread();
    if (!m_window || m_window->isClosing) {
        return;
    }
    auto const keep = sharedAs<NSPopover>();
    auto const controller = m_contentViewController;
    m_window->isClosing = true;
    if (auto const delegate = m_delegate.lock()) {
        delegate->popoverWillClose(std::make_shared<NSNotification>("NSPopoverWillCloseNotification", keep));
    }
    if (m_window->widget) {
        m_window->widget->finish();
    }
    m_window.reset();
    std::erase(shown(), keep);
    if (controller) {
        controller->viewDidDisappear();
    }
    if (auto const delegate = m_delegate.lock()) {
        delegate->popoverDidClose(std::make_shared<NSNotification>(NSPopoverDidCloseNotification, keep));
    }
    NSNotificationCenter::defaultCenter().post(NSPopoverDidCloseNotification, keep);
}

std::vector<std::shared_ptr<NSPopover>> NSPopover::shownPopovers()
{
    return shown();
}
