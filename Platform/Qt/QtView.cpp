#include "Platform/Qt/QtView.h"

#include "Platform/Qt/ConstraintLayout.h"
#include "Platform/Qt/DrawingConversions.h"
#include "Platform/Qt/EventDispatch.h"
#include "Platform/Qt/NSViewBacking.h"
#include "Platform/Qt/Painting.h"

#include <QLayout>
#include <QMouseEvent>
#include <QPaintEvent>

#include <cmath>

QtView::QtView(QWidget* parent)
    : QWidget(parent)
{
    setMouseTracking(true);
}

QtView::~QtView() = default;

QSize QtView::sizeHint() const
{
    auto const* view = viewOfWidget(this);
    if (!view || layout()) {
        return QWidget::sizeHint();
    }
    auto const size = view->fittingSize();
    return size == NSSize {}
        ? QSize()
        : QSize(static_cast<int>(std::ceil(size.width)), static_cast<int>(std::ceil(size.height)));
}

QSize QtView::minimumSizeHint() const
{
    if (layout()) {
        return QWidget::minimumSizeHint();
    }
    return { 0, std::max(sizeHint().height(), 0) };
}

bool QtView::event(QEvent* event)
{
    bool const result = QWidget::event(event);
    if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::LayoutDirectionChange) {
        if (auto* view = viewOfWidget(this)) {
            applyConstraints(*view);
            if (!layout() && !view->backing().constraints.empty()) {
                updateGeometry(); // What its constraints need may have changed.
            }
        }
    }
    return result;
}

void QtView::paintEvent(QPaintEvent* event)
{
    auto* view = viewOfWidget(this);
    if (!view) {
        return;
    }
    auto const keep = view->sharedAs<NSView>();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    CGContext::Impl impl { .painter = painter };
    CGContext context(impl);
    CurrentContextScope const scope(context);
    view->drawRect(fromQRectF(event->rect()));
}

void QtView::geometryChanged()
{
    if (auto* view = viewOfWidget(this)) {
        auto const keep = view->sharedAs<NSView>();
        applyConstraints(*view);
        view->updateTrackingAreas();
    }
}

void QtView::showEvent(QShowEvent*)
{
    geometryChanged();
}

void QtView::resizeEvent(QResizeEvent*)
{
    geometryChanged();
}

void QtView::focusChanged()
{
    if (auto* view = viewOfWidget(this)) {
        auto const keep = view->sharedAs<NSView>();
        update();
        view->didChangeFirstResponder();
    }
}

void QtView::focusInEvent(QFocusEvent*)
{
    focusChanged();
}

void QtView::focusOutEvent(QFocusEvent*)
{
    focusChanged();
}

void QtView::deliver(QEvent& event, NSEvent const& converted, Handler handler)
{
    auto* view = viewOfWidget(this);
    // The chain of views has been gone through once; the toolkit's parents only get what is left.
    bool const wasOffered = EventScope::markOffered();
    if (!view || !handler || wasOffered) {
        event.ignore();
        return;
    }
    auto const keep = view->sharedAs<NSView>();
    EventScope const scope(converted);
    (view->*handler)(converted);
    event.setAccepted(scope.wasHandled());
}

void QtView::mousePressEvent(QMouseEvent* event)
{
    auto const converted = eventFromToolkit(*event, *this);
    Handler const handler = converted.type == NSEventType::leftMouseDown ? &NSView::mouseDown
        : converted.type == NSEventType::rightMouseDown                  ? &NSView::rightMouseDown
                                                                         : nullptr;
    deliver(*event, converted, handler);
}

void QtView::mouseDoubleClickEvent(QMouseEvent* event)
{
    mousePressEvent(event);
}

void QtView::mouseMoveEvent(QMouseEvent* event)
{
    auto const converted = eventFromToolkit(*event, *this);
    Handler const handler = converted.type == NSEventType::leftMouseDragged ? &NSView::mouseDragged
        : converted.type == NSEventType::mouseMoved                         ? &NSView::mouseMoved
                                                                            : nullptr;
    deliver(*event, converted, handler);
}

void QtView::mouseReleaseEvent(QMouseEvent* event)
{
    auto const converted = eventFromToolkit(*event, *this);
    deliver(*event, converted, converted.type == NSEventType::leftMouseUp ? &NSView::mouseUp : nullptr);
}

void QtView::wheelEvent(QWheelEvent* event)
{
    deliver(*event, eventFromToolkit(*event, *this), &NSView::scrollWheel);
}

void QtView::keyPressEvent(QKeyEvent* event)
{
    deliver(*event, eventFromToolkit(*event, *this), &NSView::keyDown);
}
