#pragma once

#include "Platform/AppKit/NSView.h"
#include "Platform/Qt/Conversions.h"

#include <QPointer>
#include <QWidget>

/// The toolkit's side of a view. Owns the widget for as long as the view lives: the view's death
/// deletes it, after the widgets of its subviews have been taken out of it, since those belong to
/// their own views. A widget that the toolkit deletes first leaves a view that does nothing.
struct PLATFORM_API NSViewBacking {
    explicit NSViewBacking(QWidget* ownedWidget);
    virtual ~NSViewBacking();
    NSViewBacking(NSViewBacking const&) = delete;

    /// Called once by the view that it belongs to.
    virtual void attach(NSView& owner);
    /// Where the widgets of subviews go; for views whose widget has a part of its own for them.
    virtual QWidget* subviewParent() { return widget; }

    QPointer<QWidget> widget;
    NSView* view { nullptr };
    std::weak_ptr<NSView> superview;
    std::vector<std::shared_ptr<NSView>> subviews;
    std::vector<std::shared_ptr<NSTrackingArea>> trackingAreas;
    std::vector<std::shared_ptr<NSLayoutConstraint>> constraints; ///< In force in this view.
    std::unique_ptr<QObject> constraintWatcher; ///< Lays out again when a view of `constraints` moves.
    std::string identifier;
    bool hidden { false }; ///< As wanted; the widget follows when the event has been handled.
    bool placedByConstraints { false };
    /// The pointer was inside an area that was removed: the next area takes that over, so that
    /// replacing an area neither repeats nor loses an event.
    bool wasInsideRemovedArea { false };
};

/// The widget of a view; null only after the toolkit has deleted it before the view.
PLATFORM_API QWidget* qtWidget(NSView const& view);

/// The view whose widget this is, null for a widget that has none.
PLATFORM_API NSView* viewOfWidget(QWidget const* widget);

/// The view whose widget this is or that holds it, null for none. Does not leave the window.
PLATFORM_API NSView* enclosingViewOfWidget(QWidget const* widget);
