#pragma once

#include "Platform/AppKit/NSControl.h"

/// A horizontal slider over numbers. Sends its action for every move while it is dragged.
///
/// A press on the track moves the knob there and drags on; a press on the knob drags it from where
/// it is, with Shift finely. The action of a press is sent while the press is the current event; the
/// second press of a double click sends it without moving the knob. A drag goes on when the slider
/// is hidden and shown within one event, or given a value or other bounds meanwhile. Focused, the
/// slider takes the keys for stepping and the wheel.
class PLATFORM_API NSSlider : public NSControl {
public:
    NSSlider();
    ~NSSlider() override;

    double minValue() const { return m_minValue; }
    double maxValue() const { return m_maxValue; }
    /// Within minimum and maximum, whatever was set; the minimum when they are out of order.
    double doubleValue() const;
    /// Numbers that are not finite are ignored, here and below.
    void setMinValue(double value);
    void setMaxValue(double value);
    void setDoubleValue(double value);
    /// Changes the value as a person does: brings it into the range and sends the action if that is another
    /// value.
    void performChange(double value);
    /// Where the value stands among the stops of the slider.
    struct Place {
        double lower { 0 }; ///< The next stop below, or the end of the range.
        double upper { 0 };
        std::size_t stop { 0 }; ///< The stop that the value is on, counted from 1; 0 between stops.
        std::size_t stops { 0 };
    };
    /// Here without stops.
    virtual Place place() const { return { .lower = m_minValue, .upper = m_maxValue }; }
    bool isTracking() const { return m_drag.has_value(); }

    void setEnabled(bool enabled) override;
    void drawRect(NSRect dirty) override;
    void mouseDown(NSEvent const& event) override;
    void mouseDragged(NSEvent const& event) override;
    void mouseUp(NSEvent const& event) override;
    void scrollWheel(NSEvent const& event) override;
    void keyDown(NSEvent const& event) override;
    void didChangeFirstResponder() override;
    NSSize fittingSize() const override;

protected:
    /// What a subclass with stops may want to know of the hand.
    struct Hand {
        double value { 0 }; ///< What stands under the hand, within the range.
        double valueAtPress { 0 }; ///< The slider's value when the button went down.
        bool pressedKnob { false }; ///< Otherwise the press was on the track.
        bool isFine { false }; ///< Shift is held.
    };
    /// The value that the hand means; here what stands under it.
    virtual double valueForHand(Hand const& hand) const { return hand.value; }
    /// Next stop in a direction for Page Up and Page Down; here the end of the range.
    virtual double nextStop(double value, bool up) const;
    /// Value for Backspace and Delete; none: nothing happens.
    virtual std::optional<double> resetValue() const { return {}; }
    /// The track below the knob; here with a filled part from the minimum.
    virtual void drawBar();
    void drawTrack(double filledFromValue);

    /// Where on x the knob's centre stands for a value, and back. Points of this view.
    double positionForValue(double value) const;
    double valueForPosition(double x) const;
    /// The height of the track's centre line.
    double trackY() const;

private:
    struct Drag;
    class DragWatch;
    class PlaceTip;
    static constexpr double knobRadius = 7; ///< Points, as below.
    static constexpr double focusRingWidth = 2;
    bool isOnKnob(NSPoint point) const;
    double keyStep(bool coarse) const;
    double pointsPerPoint(bool fine) const;
    std::optional<double> valueForKey(NSEvent const& event) const;
    void moveHandTo(double x, bool fine);
    void cancelDrag();
    void changeByUser(double value);
    void drawKnob();

    double m_minValue { 0 };
    double m_maxValue { 1 };
    double m_value { 0 };
    double m_wheelTurn { 0 }; ///< Points that have not made a step yet.

    struct Drag {
        double startX { 0 };
        double lastX { 0 };
        double handX { 0 }; ///< Where the hand holds the knob's centre; beyond the ends too.
        double handValue { 0 };
        double valueAtPress { 0 };
        bool pressedKnob { false };
        bool isHeldStill { false }; ///< Until the pointer has clearly left the place of the press.
    };
    std::optional<Drag> m_drag;
    std::unique_ptr<DragWatch> m_dragWatch;
};
