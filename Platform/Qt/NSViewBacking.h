#pragma once

#include "Platform/AppKit/NSView.h"
#include "Platform/Qt/Conversions.h"

#include <QPointer>
#include <QWidget>

/// The toolkit's side of a view. Owns the widget for as long as the view lives: the view's death
/// deletes it, after the widgets of its subviews have been taken out of it, since those belong to
/// their own views.
struct NSViewBacking {
    explicit NSViewBacking(QWidget* ownedWidget);
    virtual ~NSViewBacking();
    NSViewBacking(NSViewBacking const&) = delete;

    /// Called once by the view that it belongs to.
    virtual void attach(NSView& owner);

    QPointer<QWidget> widget;
    NSView* view { nullptr };
    std::weak_ptr<NSView> superview;
    std::vector<std::shared_ptr<NSView>> subviews;
    std::vector<std::shared_ptr<NSTrackingArea>> trackingAreas;
    std::vector<std::shared_ptr<NSLayoutConstraint>> constraints; ///< In force in this view.
    std::string identifier;
};

/// The widget of a view; never null while the view lives.
PLATFORM_API QWidget* qtWidget(NSView const& view);

/// The view whose widget this is, null for a widget that has none.
PLATFORM_API NSView* viewOfWidget(QWidget const* widget);
