#pragma once

#include "Platform/AppKit/NSViewController.h"
#include "Platform/Foundation/NSNotificationCenter.h"

enum class NSPopoverBehavior { applicationDefined = 0, transient = 1 };

/// Posted with the popover as its sender when one has closed and its delegate has been told.
PLATFORM_API extern std::string const NSPopoverDidCloseNotification;

/// Told about a popover; the notification's object is the popover. Every operation is optional.
class NSPopoverDelegate {
public:
    virtual ~NSPopoverDelegate() = default;
    virtual void popoverWillClose(std::shared_ptr<NSNotification> const&) { }
    virtual void popoverDidClose(std::shared_ptr<NSNotification> const&) { }
};

/// A small window that points at a view and shows a controller's view. A transient one closes when
/// the user presses outside it or Escape, when its window or the view it points at is hidden or goes
/// with the views around it. A view that alone is taken out of its superview leaves the popover open in its
/// place. The platform holds a shown popover until it has closed.
class PLATFORM_API NSPopover final : public NSObject {
public:
    NSPopover();
    ~NSPopover() override;

    NSPopoverBehavior behavior() const { return m_behavior; }
    void setBehavior(NSPopoverBehavior behavior) { m_behavior = behavior; }
    void setDelegate(std::weak_ptr<NSPopoverDelegate> delegate) { m_delegate = std::move(delegate); }
    std::shared_ptr<NSViewController> const& contentViewController() const { return m_contentViewController; }
    void setContentViewController(std::shared_ptr<NSViewController> controller);

    bool isShown() const;
    /// Opens beside `edge` of the rectangle, in the view's coordinates; where the screen has no
    /// room there, on the opposite side. The content's `viewDidAppear` follows.
    void showRelativeToRect(NSRect rect, std::shared_ptr<NSView> const& view, NSRectEdge edge);
    /// Tells the delegate before and after. Nothing happens when it is not shown.
    void close();

    /// The popovers that are shown now, the oldest first.
    static std::vector<std::shared_ptr<NSPopover>> shownPopovers();

private:
    struct Window;
    NSPopoverBehavior m_behavior { NSPopoverBehavior::applicationDefined };
    std::weak_ptr<NSPopoverDelegate> m_delegate;
    std::shared_ptr<NSViewController> m_contentViewController;
    std::unique_ptr<Window> m_window;
};
