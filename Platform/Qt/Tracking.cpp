#include "Platform/Qt/Tracking.h"

#include "Platform/Qt/DrawingConversions.h"
#include "Platform/Qt/EventDispatch.h"
#include "Platform/Qt/NSViewBacking.h"

#include <QApplication>
#include <QWindow>

#include <algorithm>
#include <set>

namespace {

struct Pointer {
    QPointer<QWindow> window;
    QPointF place;
};

Pointer& pointer()
{
    static auto& state = *new Pointer;
    return state;
}

std::set<NSView*>& trackedViews()
{
    static auto& views = *new std::set<NSView*>;
    return views;
}

bool isScheduled = false;

QWidget* widgetUnderPointer(QWidget*& top)
{
    top = nullptr;
    for (auto* candidate : QApplication::topLevelWidgets()) {
        if (pointer().window && candidate->windowHandle() == pointer().window) {
            top = candidate;
        }
    }
    auto const place = pointer().place.toPoint();
    if (!top || !top->isVisible() || !top->rect().contains(place)) {
        return nullptr;
    }
    auto* child = top->childAt(place);
    return child ? child : top;
}

bool isInside(NSView const& view, NSTrackingArea const& area, QWidget* under, QWidget* top)
{
    auto* widget = qtWidget(view);
    if (!widget || !under || !widget->isVisible() || (widget != under && !widget->isAncestorOf(under))) {
        return false;
    }
    return (area.options() & NSTrackingInVisibleRect)
        || area.rect().contains(fromQPointF(widget->mapFrom(top, pointer().place)));
}

struct Change {
    std::shared_ptr<NSView> view;
    std::shared_ptr<NSTrackingArea> area;
    bool inside;
};

std::vector<Change> pendingChanges()
{
    QWidget* top = nullptr;
    auto* under = widgetUnderPointer(top);
    std::vector<Change> changes;
    for (auto* view : trackedViews()) {
        view->backing().wasInsideRemovedArea = false;
        for (auto const& area : view->trackingAreas()) {
            bool const inside = isInside(*view, *area, under, top);
            if (inside != area->isMouseInside && (area->options() & NSTrackingMouseEnteredAndExited)) {
                changes.push_back({ view->sharedAs<NSView>(), area, inside });
            }
        }
    }
    std::stable_partition(changes.begin(), changes.end(), [](auto const& change) { return !change.inside; });
    return changes;
}

void send(Change const& change)
{
    auto const owner = change.area->owner();
    if (change.view) {
        auto const& areas = change.view->trackingAreas();
        if (std::find(areas.begin(), areas.end(), change.area) == areas.end()) {
            return; // An event sent just before this one has removed it.
        }
    }
    change.area->isMouseInside = change.inside;
    if (!owner) {
        return;
    }
    NSEvent event;
    event.type = change.inside ? NSEventType::mouseEntered : NSEventType::mouseExited;
    auto* widget = qtWidget(*owner);
    if (widget && pointer().window && widget->window()->windowHandle() == pointer().window) {
        event.locationInView = fromQPointF(widget->mapFrom(widget->window(), pointer().place));
    }
    EventScope const scope(event);
    if (change.inside) {
        owner->mouseEntered(event);
    } else {
        owner->mouseExited(event);
    }
}

} // namespace

void setPointerPlace(QWindow* window, QPointF place)
{
    pointer() = { window, place };
    scheduleTrackingCheck();
}

void pointerLeft(QWindow* window)
{
    if (pointer().window == window) {
        pointer() = {};
        scheduleTrackingCheck();
    }
}

void NSRecheckTracking()
{
    isScheduled = false;
    if (QGuiApplication::mouseButtons() != Qt::NoButton) {
        return;
    }
    for (auto const& change : pendingChanges()) {
        send(change);
    }
}

void scheduleTrackingCheck()
{
    if (isScheduled || trackedViews().empty() || !QCoreApplication::instance()) {
        return;
    }
    isScheduled = true;
    QMetaObject::invokeMethod(
        qApp, [] { runScheduledTrackingCheck(); }, Qt::QueuedConnection);
}

void runScheduledTrackingCheck()
{
    if (isScheduled) {
        NSRecheckTracking();
    }
}

void rememberTracking(NSView& view)
{
    trackedViews().insert(&view);
    scheduleTrackingCheck();
}

void forgetTracking(NSView* view)
{
    trackedViews().erase(view);
}
