#include "Platform/AppKit/NSSlider.h"

#include "Platform/AppKit/KeyStep.h"
#include "Platform/Qt/EventDispatch.h"
#include "Platform/Qt/NSViewBacking.h"
#include "Platform/Qt/SliderAccessibility.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <QAccessible>
#include <QCoreApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QToolTip>

namespace {
constexpr double fineDragFactor = 0.1;
/// How far the pointer may shake after a double click before it drags, in points.
constexpr double stillDistance = 5;
/// A touch pad's small moves step together; a notch of a wheel is more than this and one step.
constexpr double pointsPerWheelStep = 16;
} // namespace

/// Sees, while a drag lasts, what does not come to the slider itself: Escape goes to the view with
/// the focus, which the mouse left where it was; and a slider that goes from the screen gets no release.
class NSSlider::DragWatch final : public QObject {
public:
    explicit DragWatch(NSSlider& slider)
        : m_slider(slider)
    {
        QCoreApplication::instance()->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (!m_slider.m_drag) {
            return false;
        }
        if (event->type() == QEvent::Hide && watched == qtWidget(m_slider)) {
            m_slider.m_drag.reset();
            return false;
        }
        bool const isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
        if (!isKey || static_cast<QKeyEvent*>(event)->key() != Qt::Key_Escape) {
            return false;
        }
        event->accept();
        if (event->type() == QEvent::KeyPress) {
            HandlingScope const scope;
            m_slider.cancelDrag();
        }
        return true;
    }

private:
    NSSlider& m_slider;
};

/// The tool tip of a slider that has none of its own: value and range, as they are then.
class NSSlider::PlaceTip final : public QObject {
public:
    explicit PlaceTip(NSSlider& slider)
        : QObject(qtWidget(slider))
    {
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        auto* const widget = static_cast<QWidget*>(watched);
        auto const* const slider = dynamic_cast<NSSlider const*>(viewOfWidget(widget));
        if (event->type() != QEvent::ToolTip || !slider || !widget->toolTip().isEmpty()) {
            return false;
        }
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), sliderRangeText(*slider), widget);
        return true;
    }
};

NSSlider::NSSlider()
{
    setAcceptsFirstResponder(true, false);
    qtWidget(*this)->installEventFilter(new PlaceTip(*this));
}

NSSlider::~NSSlider() = default;

double NSSlider::doubleValue() const
{
    return std::max(m_minValue, std::min(m_value, m_maxValue));
}

void NSSlider::setMinValue(double value)
{
    if (std::isfinite(value)) {
        m_minValue = value + 0.0; // A negative zero becomes a plain one.
        setNeedsDisplay(true);
    }
}

void NSSlider::setMaxValue(double value)
{
    if (std::isfinite(value)) {
        m_maxValue = value + 0.0;
        setNeedsDisplay(true);
    }
}

void NSSlider::setDoubleValue(double value)
{
    if (std::isfinite(value)) {
        m_value = value + 0.0;
        setNeedsDisplay(true);
        if (QAccessible::isActive()) {
            QAccessibleValueChangeEvent event(qtWidget(*this), doubleValue());
            QAccessible::updateAccessibility(&event);
            QAccessibleEvent description(qtWidget(*this), QAccessible::DescriptionChanged);
            QAccessible::updateAccessibility(&description);
        }
    }
}

void NSSlider::setEnabled(bool enabled)
{
    NSControl::setEnabled(enabled);
    setNeedsDisplay(true);
}

NSSize NSSlider::fittingSize() const
{
    return { 96, 2 * (knobRadius + focusRingWidth) + 4 };
}

void NSSlider::didChangeFirstResponder()
{
    setNeedsDisplay(true);
}

// Places.

double NSSlider::trackY() const
{
    return std::floor(bounds().midY());
}

double NSSlider::positionForValue(double value) const
{
    auto const inset = knobRadius + focusRingWidth;
    auto const length = std::max(0.0, bounds().size.width - 2 * inset);
    auto span = m_maxValue - m_minValue;
    auto distance = value - m_minValue;
    if (!std::isfinite(span)) { // ±1.7e308: the span is beyond what a double holds, its half is not.
        span = m_maxValue / 2 - m_minValue / 2;
        distance = value / 2 - m_minValue / 2;
    }
    auto const fraction = span > 0 ? std::clamp(distance / span, 0.0, 1.0) : 0.0;
    return inset + fraction * length;
}

double NSSlider::valueForPosition(double x) const
{
    auto const inset = knobRadius + focusRingWidth;
    auto const length = bounds().size.width - 2 * inset;
    if (length <= 0 || m_maxValue <= m_minValue) {
        return doubleValue();
    }
    return std::lerp(m_minValue, m_maxValue, std::clamp((x - inset) / length, 0.0, 1.0)) + 0.0;
}

bool NSSlider::isOnKnob(NSPoint point) const
{
    return std::hypot(point.x - positionForValue(doubleValue()), point.y - trackY()) <= knobRadius + 1;
}

// The hand.

/// How far the knob goes for a point of the pointer's way. Fine: a tenth, and no more than a key's
/// step, so that on a long range too every whole number can be reached.
double NSSlider::pointsPerPoint(bool fine) const
{
    if (!fine) {
        return 1;
    }
    auto const inset = knobRadius + focusRingWidth;
    auto const valuePerPoint = (m_maxValue / 2 - m_minValue / 2) / (bounds().size.width - 2 * inset) * 2;
    return valuePerPoint > 0 ? std::min(fineDragFactor, keyStep(false) / valuePerPoint) : fineDragFactor;
}

void NSSlider::mouseDown(NSEvent const& event)
{
    if (!isEnabled()) {
        return;
    }
    auto const keptAlive = weak_from_this().lock(); // An action may take the slider from its window.
    auto const x = event.locationInView.x;
    Drag drag { .startX = x, .lastX = x, .valueAtPress = doubleValue() };
    drag.pressedKnob = isOnKnob(event.locationInView) || event.clickCount > 1;
    drag.isHeldStill = event.clickCount > 1;
    drag.handX = drag.pressedKnob ? positionForValue(doubleValue()) : x;
    drag.handValue = doubleValue();
    m_drag = drag;
    m_dragWatch = std::make_unique<DragWatch>(*this);
    setNeedsDisplay(true);

    if (!drag.pressedKnob) {
        moveHandTo(x, event.modifiers.shift);
    } else if (event.clickCount == 2) {
        // The target may take it for a reset and set another value: the hand then holds the knob there.
        sendAction();
        if (m_drag) {
            m_drag->handX = positionForValue(doubleValue());
            m_drag->handValue = doubleValue();
            m_drag->valueAtPress = doubleValue();
        }
    }
}

void NSSlider::mouseDragged(NSEvent const& event)
{
    if (!m_drag || !isEnabled()) {
        return;
    }
    auto const x = event.locationInView.x;
    if (m_drag->isHeldStill) {
        if (std::abs(x - m_drag->startX) < stillDistance) {
            return;
        }
        m_drag->isHeldStill = false;
    }
    auto const way = x - m_drag->lastX;
    m_drag->lastX = x;
    moveHandTo(m_drag->handX + way * pointsPerPoint(event.modifiers.shift), event.modifiers.shift);
}

/// Reports where the hand is, also when it has not moved: the value may have been set meanwhile.
void NSSlider::moveHandTo(double x, bool fine)
{
    bool const hasMoved = x != m_drag->handX || !m_drag->pressedKnob;
    m_drag->handX = x;
    if (hasMoved) {
        m_drag->handValue = valueForHand({ .value = valueForPosition(x),
            .valueAtPress = m_drag->valueAtPress,
            .pressedKnob = m_drag->pressedKnob,
            .isFine = fine });
    }
    changeByUser(m_drag->handValue);
}

void NSSlider::mouseUp(NSEvent const&)
{
    m_drag.reset();
    m_dragWatch.reset();
    setNeedsDisplay(true);
}

void NSSlider::cancelDrag()
{
    auto const keptAlive = weak_from_this().lock();
    auto const before = m_drag->valueAtPress;
    m_drag.reset();
    changeByUser(before);
}

void NSSlider::changeByUser(double value)
{
    setDoubleValue(value);
    sendAction();
}

void NSSlider::performChange(double value)
{
    auto const reached = std::max(m_minValue, std::min(value, m_maxValue));
    if (std::isfinite(value) && reached != doubleValue()) {
        changeByUser(reached);
    }
}

// Keys and wheel.

double NSSlider::keyStep(bool coarse) const
{
    return ::keyStep(m_maxValue - m_minValue, coarse); // Infinite for the largest ranges, which is fine here.
}

double NSSlider::nextStop(double, bool up) const
{
    return up ? m_maxValue : m_minValue;
}

/// None for a key that is not the slider's.
std::optional<double> NSSlider::valueForKey(NSEvent const& event) const
{
    auto const value = doubleValue();
    // Ten steps of 0.1 are 1 and not 0.9999999999999999.
    auto const stepped = [&](double step) {
        auto const sum = value + step;
        return std::abs(sum) < 1e9 ? std::round(sum * 1e6) / 1e6 : sum;
    };
    switch (event.key) {
    case NSKey::left:
    case NSKey::down:
        return stepped(-keyStep(event.modifiers.shift));
    case NSKey::right:
    case NSKey::up:
        return stepped(keyStep(event.modifiers.shift));
    case NSKey::pageUp:
        return nextStop(value, true);
    case NSKey::pageDown:
        return nextStop(value, false);
    case NSKey::home:
        return m_minValue;
    case NSKey::end:
        return m_maxValue;
    case NSKey::backspace:
    case NSKey::deleteForward:
        return resetValue();
    default:
        return std::nullopt;
    }
}

void NSSlider::keyDown(NSEvent const& event)
{
    auto const wanted = event.modifiers.control || event.modifiers.alt ? std::nullopt : valueForKey(event);
    if (!isEnabled() || !wanted) {
        NSControl::keyDown(event);
        return;
    }
    performChange(*wanted);
}

void NSSlider::scrollWheel(NSEvent const& event)
{
    if (!isFirstResponder() || !isEnabled()) {
        NSControl::scrollWheel(event);
        return;
    }
    m_wheelTurn += event.scrollingDelta.y != 0 ? event.scrollingDelta.y : event.scrollingDelta.x;
    if (std::abs(m_wheelTurn) < pointsPerWheelStep) {
        return;
    }
    auto const step = std::copysign(keyStep(event.modifiers.shift), std::exchange(m_wheelTurn, 0));
    performChange(doubleValue() + step);
}
