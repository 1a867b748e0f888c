#pragma once

#include "Platform/AppKit/NSApplication.h"
#include "Platform/Qt/NSViewBacking.h"
#include "Typloom/TyploomKit/TLLandmarkSlider.h"

#include <QStyleHints>
#include <QTest>
#include <QWheelEvent>

/// Notes every action and may answer it, as a row does.
class ActionRecorder final : public NSObject {
public:
    std::span<NSMethod const> methods() const override
    {
        static NSMethod const all[] = { NSMethodMake("sliderChanged:", &ActionRecorder::sliderChanged) };
        return all;
    }

    void sliderChanged(std::shared_ptr<NSSlider> const& slider)
    {
        values.push_back(slider->doubleValue());
        events.push_back(NSApplication::currentEvent());
        if (answer) {
            answer(*slider);
        }
    }

    std::vector<double> values;
    std::vector<std::optional<NSEvent>> events;
    std::function<void(NSSlider&)> answer;
};

/// A slider from 0 to 1000 in a window of its own, at 500. A point of the track is 5 units.
struct ShownSlider {
    static constexpr double unitsPerPoint = 5;
    std::shared_ptr<NSView> window = std::make_shared<NSView>();
    std::shared_ptr<TLLandmarkSlider> slider = std::make_shared<TLLandmarkSlider>();
    std::shared_ptr<ActionRecorder> recorder = std::make_shared<ActionRecorder>();

    ShownSlider()
    {
        qtWidget(*window)->resize(300, 100);
        window->addSubview(slider);
        slider->setFrame({ { 20, 30 }, { 218, 24 } });
        slider->setMaxValue(1000);
        slider->setDoubleValue(500);
        slider->setTarget(recorder);
        slider->setAction("sliderChanged:");
        window->setAcceptsFirstResponder(true, true);
        qtWidget(*window)->show();
        qtWidget(*window)->activateWindow();
        qtWidget(*window)->setFocus();
        QCoreApplication::processEvents();
        QTest::lastMouseTimestamp += 10'000; // No press of this test continues a click of the last one.
    }

    /// The place of a value in the window: the track is 200 points from x = 29.
    static QPoint at(double value, int y = 42) { return { 29 + static_cast<int>(value / unitsPerPoint), y }; }

    QWindow* handle() const { return qtWidget(*window)->windowHandle(); }
    void press(QPoint place, Qt::KeyboardModifiers modifiers = {}) const
    {
        QTest::mousePress(handle(), Qt::LeftButton, modifiers, place);
    }
    void release(QPoint place) const { QTest::mouseRelease(handle(), Qt::LeftButton, {}, place); }
    /// With the left button held.
    void drag(QPoint place, Qt::KeyboardModifiers modifiers = {}) const
    {
        QTest::mouseEvent(QTest::MouseMove, handle(), Qt::LeftButton, modifiers, place);
        QCoreApplication::processEvents();
    }
    /// Up to the second press, which is held.
    void doubleClick(QPoint place) const
    {
        press(place);
        release(place);
        pressSoonAfter(place);
    }
    /// The test library lets time pass after each release, so that clicks stay single.
    void pressSoonAfter(QPoint place) const
    {
        QTest::lastMouseTimestamp -= QGuiApplication::styleHints()->mouseDoubleClickInterval();
        press(place);
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const
    {
        QTest::keyClick(handle(), key, modifiers);
    }
    /// The focus, as Tab gives it.
    void focus() const
    {
        qtWidget(*window)->activateWindow();
        qtWidget(*slider)->setFocus(Qt::TabFocusReason);
        QCoreApplication::processEvents();
    }
    void wheel(int notches) const
    {
        auto const place = at(250);
        QWheelEvent event(place, handle()->mapToGlobal(place), {}, { 0, 120 * notches }, Qt::NoButton, {},
            Qt::NoScrollPhase, false);
        QSpontaneKeyEvent::setSpontaneous(&event);
        QCoreApplication::sendEvent(handle(), &event);
    }
};
