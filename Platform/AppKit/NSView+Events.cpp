#include "Platform/AppKit/NSView.h"

#include "Platform/Foundation/NSMainThread.h"
#include "Platform/Qt/DrawingConversions.h"
#include "Platform/Qt/EventDispatch.h"
#include "Platform/Qt/NSViewBacking.h"
#include "Platform/Qt/Tracking.h"

namespace {

/// Hands an event on to the superview, in its coordinates.
void passOn(NSView const& view, NSEvent const& event, void (NSView::*handler)(NSEvent const&))
{
    auto const superview = view.superview();
    if (!superview) {
        EventScope::markUnhandled();
        return;
    }
    NSEvent passed = event;
    auto const* inner = qtWidget(view);
    auto const* outer = qtWidget(*superview);
    if (inner && outer && outer->isAncestorOf(inner)) {
        passed.locationInView = fromQPointF(inner->mapTo(outer, toQPointF(event.locationInView)));
    }
    (superview.get()->*handler)(passed);
}

} // namespace

void NSView::mouseDown(NSEvent const& event)
{
    passOn(*this, event, &NSView::mouseDown);
}

void NSView::mouseDragged(NSEvent const& event)
{
    passOn(*this, event, &NSView::mouseDragged);
}

void NSView::mouseUp(NSEvent const& event)
{
    passOn(*this, event, &NSView::mouseUp);
}

void NSView::mouseMoved(NSEvent const& event)
{
    passOn(*this, event, &NSView::mouseMoved);
}

void NSView::rightMouseDown(NSEvent const& event)
{
    passOn(*this, event, &NSView::rightMouseDown);
}

void NSView::scrollWheel(NSEvent const& event)
{
    passOn(*this, event, &NSView::scrollWheel);
}

void NSView::keyDown(NSEvent const& event)
{
    passOn(*this, event, &NSView::keyDown);
}

void NSView::mouseEntered(NSEvent const&) { }

void NSView::mouseExited(NSEvent const&) { }

void NSView::setAcceptsFirstResponder(bool byTab, bool byMouse)
{
    if (auto* widget = qtWidget(*this)) {
        widget->setFocusPolicy(static_cast<Qt::FocusPolicy>(
            (byTab ? Qt::TabFocus : Qt::NoFocus) | (byMouse ? Qt::ClickFocus : Qt::NoFocus)));
    }
}

bool NSView::isFirstResponder() const
{
    auto const* widget = qtWidget(*this);
    return widget && widget->hasFocus();
}

void NSView::updateTrackingAreas() { }

void NSView::addTrackingArea(std::shared_ptr<NSTrackingArea> const& area)
{
    NSAssertMainThread();
    area->isMouseInside = area->isMouseInside || std::exchange(m_backing->wasInsideRemovedArea, false);
    m_backing->trackingAreas.push_back(area);
    rememberTracking(*this);
}

void NSView::removeTrackingArea(std::shared_ptr<NSTrackingArea> const& area)
{
    NSAssertMainThread();
    auto const removed = area; // The reference may be one of the list.
    if (std::erase(m_backing->trackingAreas, removed) > 0 && removed->isMouseInside) {
        m_backing->wasInsideRemovedArea = true;
        removed->isMouseInside = false;
    }
}

std::vector<std::shared_ptr<NSTrackingArea>> const& NSView::trackingAreas() const
{
    return m_backing->trackingAreas;
}
