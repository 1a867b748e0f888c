#include "Platform/Qt/HiddenState.h"

#include "Platform/Qt/EventDispatch.h"
#include "Platform/Qt/NSViewBacking.h"
#include "Platform/Qt/Tracking.h"

#include <QApplication>
#include <QWindow>

#include <utility>

namespace {

std::vector<QPointer<QWidget>>& putOff()
{
    static auto& widgets = *new std::vector<QPointer<QWidget>>;
    return widgets;
}

bool isExplicitlyHidden(QWidget const& widget)
{
    return widget.isHidden() && widget.testAttribute(Qt::WA_WState_ExplicitShowHide);
}

void settle(QWidget& widget)
{
    auto const* view = viewOfWidget(&widget);
    if (!view || isExplicitlyHidden(widget) == view->isHidden()) {
        return;
    }
    if (view->isHidden()) {
        widget.hide();
    } else if (widget.parentWidget() || widget.windowHandle()) {
        widget.show();
    } else {
        // Showing a view that is in no window would open one.
        widget.setAttribute(Qt::WA_WState_ExplicitShowHide, false);
    }
    scheduleTrackingCheck();
}

/// Whether hiding the widget now would disturb what the user is doing.
bool isInUse(QWidget const& widget)
{
    auto const holds
        = [&](QWidget const* inner) { return inner && (inner == &widget || widget.isAncestorOf(inner)); };
    return holds(pressedWidget()) || holds(QApplication::focusWidget());
}

} // namespace

void applyHidden(NSView& view)
{
    auto* widget = qtWidget(view);
    if (!widget) {
        return;
    }
    if (!HandlingScope::isHandling() && !(view.isHidden() && isInUse(*widget))) {
        settle(*widget);
        return;
    }
    putOff().emplace_back(widget);
    // For an event loop that is started while an event is handled, and for changes outside events.
    QMetaObject::invokeMethod(
        qApp,
        [] {
            if (!HandlingScope::isHandlingInThisLoop()) {
                settleHidden();
            }
        },
        Qt::QueuedConnection);
}

void settleHidden()
{
    for (auto const& widget : std::exchange(putOff(), {})) {
        if (widget) {
            settle(*widget);
        }
    }
}

void settleHiddenForLayout(NSView& root)
{
    auto const* rootWidget = qtWidget(root);
    std::vector<QPointer<QWidget>> later;
    for (auto const& widget : std::exchange(putOff(), {})) {
        bool const inside
            = widget && rootWidget && (rootWidget == widget || rootWidget->isAncestorOf(widget));
        if (!inside || isInUse(*widget)) {
            later.push_back(widget);
        } else {
            settle(*widget);
        }
    }
    putOff().insert(putOff().end(), later.begin(), later.end());
}
