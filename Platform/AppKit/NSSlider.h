#pragma once

#include "Platform/AppKit/NSControl.h"

/// A horizontal slider over numbers. Sends its action for each change while it is dragged.
///
/// A press on the track moves the knob there and drags on; the action of a press is sent while the
/// press is the current event. A drag goes on when the slider is hidden and shown within one event,
/// or given a value meanwhile. Focused, it takes the keys for stepping and the wheel.
class PLATFORM_API NSSlider : public NSControl {
public:
    NSSlider();

    double minValue() const { return m_minValue; }
    double maxValue() const { return m_maxValue; }
    double doubleValue() const { return m_value; }
    void setMinValue(double value);
    void setMaxValue(double value);
    /// Shown within minimum and maximum; `doubleValue` gives it within them too.
    void setDoubleValue(double value);
    bool isTracking() const { return m_tracking; }

    void drawRect(NSRect dirty) override;
    void mouseDown(NSEvent const& event) override;
    void mouseDragged(NSEvent const& event) override;
    void mouseUp(NSEvent const& event) override;
    void scrollWheel(NSEvent const& event) override;
    void keyDown(NSEvent const& event) override;
    void didChangeFirstResponder() override;
    NSSize fittingSize() const override;

protected:
    /// Where on x the knob's centre stands for a value, and back. Points of this view.
    double positionForValue(double value) const;
    double valueForPosition(double x) const;
    /// The value that the user's hand means at a place; here the value itself. For sliders with stops.
    virtual double valueForDrag(double value, NSEvent const& event) const;
    /// Next stop in a direction for Page Up and Page Down; here the end of the range.
    virtual double nextStop(double value, bool up) const;
    /// Value for Backspace and Delete; none: nothing happens.
    virtual std::optional<double> resetValue() const { return {}; }
    virtual void drawBar();
    virtual void drawKnob();
    double knobRadius() const { return 7; }
    void changeByUser(double value);

private:
    double m_minValue { 0 };
    double m_maxValue { 1 };
    double m_value { 0 };
    bool m_tracking { false };
    double m_valueBeforeDrag { 0 };
    double m_dragOffset { 0 };
};
