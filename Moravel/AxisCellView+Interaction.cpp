#include "Moravel/AxisCellView.h"

#include "Moravel/Model/Landmarks.h"
#include "Platform/AppKit/CGContext.h"
#include "Platform/AppKit/NSApplication.h"
#include "Platform/Foundation/NSMainThread.h"

/// Whether the event that is being handled is the second press of a double click.
static bool isHandlingDoubleClick()
{
    auto const event = NSApplication::currentEvent();
    return event && event->type == NSEventType::leftMouseDown && event->clickCount == 2;
}

void AxisCellView::sliderChanged(std::shared_ptr<TLLandmarkSlider> const& sender)
{
    NSAssertMainThread();
    if (!sender) {
        return;
    }
    if (isHandlingDoubleClick()) {
        sender->setDoubleValue(m_axisDefaultValue);
        showInValueField(m_axisDefaultValue);
        report(m_axisDefaultValue);
        return;
    }
    showInValueField(sender->doubleValue());
    report(sender->doubleValue());
}

void AxisCellView::valueFieldChanged(std::shared_ptr<NSTextField> const& sender)
{
    NSAssertMainThread();
    if (!sender) {
        return;
    }
    auto const value = sender->doubleValue();
    if (auto const slider = this->slider()) {
        slider->setDoubleValue(value);
    }
    report(value);
}

void AxisCellView::stepDown(std::shared_ptr<NSObject> const&)
{
    NSAssertMainThread();
    step(false);
}

void AxisCellView::stepUp(std::shared_ptr<NSObject> const&)
{
    NSAssertMainThread();
    step(true);
}

void AxisCellView::step(bool up)
{
    auto const slider = this->slider();
    auto const target = slider ? nextStepPosition(m_stepPositions, slider->doubleValue(), up) : std::nullopt;
    if (!target) {
        return;
    }
    slider->setDoubleValue(*target);
    showInValueField(*target);
    report(*target);
}

/// What the user does to the row replaces what is being typed in it, even where the number was shown before.
void AxisCellView::showInValueField(double value)
{
    if (auto const field = valueField()) {
        field->abortEditing();
        field->setDoubleValue(value);
    }
}

void AxisCellView::report(double value)
{
    if (auto const delegate = m_delegate.lock()) {
        delegate->axisCellViewDidChangeValue(sharedAs<AxisCellView>(), value);
    }
}

void AxisCellView::showAxisInfo(std::shared_ptr<NSObject> const&)
{
    NSAssertMainThread();
    requestAxisEditor();
}

/// Not passed on, so that the table opens no menu of its own.
void AxisCellView::rightMouseDown(NSEvent const&)
{
    NSAssertMainThread();
    requestAxisEditor();
}

void AxisCellView::requestAxisEditor()
{
    if (auto const delegate = m_delegate.lock()) {
        delegate->axisCellViewDidRequestAxisEditor(sharedAs<AxisCellView>());
    }
}

void AxisCellView::updateTrackingAreas()
{
    NSAssertMainThread();
    NSTableCellView::updateTrackingAreas();
    if (m_rowTrackingArea) {
        removeTrackingArea(m_rowTrackingArea);
    }
    auto const options = NSTrackingMouseEnteredAndExited | NSTrackingActiveAlways | NSTrackingInVisibleRect;
    m_rowTrackingArea = std::make_shared<NSTrackingArea>(NSRect {}, options, sharedAs<NSView>());
    addTrackingArea(m_rowTrackingArea);
}

void AxisCellView::mouseEntered(NSEvent const&)
{
    setMouseInside(true);
}

void AxisCellView::mouseExited(NSEvent const&)
{
    setMouseInside(false);
}

void AxisCellView::setMouseInside(bool inside)
{
    NSAssertMainThread();
    m_isMouseInside = inside;
    updateAccessoryVisibility();
}

void AxisCellView::updateAccessoryVisibility()
{
    auto const isActive = m_isMouseInside || m_isHighlighted;
    auto const isGlyphRow = m_item && m_item->section == Section::glyph;
    auto const canStep = m_stepPositions.size() >= 2;
    if (auto const button = infoButton()) {
        button->setHidden(!(isGlyphRow && isActive));
    }
    for (auto const& button : { stepDownButton(), stepUpButton() }) {
        if (button) {
            button->setHidden(!(isActive && canStep));
        }
    }
}

void AxisCellView::drawRect(NSRect dirty)
{
    NSAssertMainThread();
    NSTableCellView::drawRect(dirty);
    auto* const context = CGContext::current();
    if (!context) {
        return;
    }
    context->saveState();
    if (m_isHighlighted) {
        context->setStrokeColor(NSColor::controlAccentColor());
        context->setLineWidth(2);
        context->addPath(CGPath::continuousRoundedRect(bounds().insetBy(1, 1), { 5, 5 }));
        context->strokePath();
    }
    context->restoreState();
}
