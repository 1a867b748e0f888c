#include "Platform/Qt/NSViewBacking.h"

#include "Platform/Qt/EventDispatch.h"
#include "Platform/Qt/Tracking.h"

#include <QCoreApplication>
#include <QHash>

namespace {

/// Never destroyed: views may outlive every other static object.
QHash<QObject const*, NSView*>& registry()
{
    static auto& views = *new QHash<QObject const*, NSView*>;
    return views;
}

/// Takes the widgets of other views out of a widget that is about to be deleted.
void takeOutWidgetsOfViews(QWidget* parent)
{
    auto const children = parent->children();
    for (auto* child : children) {
        auto* widget = qobject_cast<QWidget*>(child);
        if (!widget) {
            continue;
        }
        if (registry().contains(widget)) {
            widget->setParent(nullptr);
        } else {
            takeOutWidgetsOfViews(widget);
        }
    }
}

} // namespace

NSViewBacking::NSViewBacking(QWidget* ownedWidget)
    : widget(ownedWidget)
{
}

NSViewBacking::~NSViewBacking()
{
    forgetTracking(view);
    constraintWatcher.reset();
    // After the application object has gone the toolkit can no longer delete widgets.
    if (!widget || !QCoreApplication::instance()) {
        return;
    }
    registry().remove(widget);
    if (widget->isWindow()) {
        widget->hide();
    }
    takeOutWidgetsOfViews(widget);
    if (HandlingScope::isHandling()) {
        // The widget may be in the middle of handling the event that led here.
        widget->setParent(nullptr);
        widget->deleteLater();
    } else {
        delete widget.data();
    }
}

void NSViewBacking::attach(NSView& owner)
{
    view = &owner;
    registry().insert(widget, &owner);
    QObject::connect(widget, &QObject::destroyed, [key = widget.data()] { registry().remove(key); });
}

QWidget* qtWidget(NSView const& view)
{
    return view.backing().widget;
}

NSView* viewOfWidget(QWidget const* widget)
{
    return registry().value(widget, nullptr);
}

NSView* enclosingViewOfWidget(QWidget const* widget)
{
    for (; widget; widget = widget->parentWidget()) {
        if (auto* view = viewOfWidget(widget)) {
            return view;
        }
        if (widget->isWindow()) {
            break;
        }
    }
    return nullptr;
}
