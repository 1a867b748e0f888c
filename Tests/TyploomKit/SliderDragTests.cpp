#include "Tests/TyploomKit/ShownSlider.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

using Values = std::vector<double>;

TEST(SliderDrag, aPressOnTheTrackJumpsThereAndDragsOn)
{
    ShownSlider shown;
    shown.press(shown.at(100));
    shown.drag(shown.at(150));
    shown.drag(shown.at(145));
    shown.release(shown.at(145));
    EXPECT_EQ(shown.recorder->values, (Values { 100, 150, 145 }));
    EXPECT_FALSE(shown.slider->isTracking());
}

TEST(SliderDrag, aPressOnTheKnobDragsFromWhereItIs)
{
    ShownSlider shown;
    shown.press(shown.at(520));
    EXPECT_THAT(shown.recorder->values, IsEmpty());
    shown.drag(shown.at(530));
    EXPECT_EQ(shown.recorder->values, (Values { 510 }));
}

TEST(SliderDrag, everyMoveIsReportedAndTheHandStaysInChargeOfTheValue)
{
    ShownSlider shown;
    // A refresh in the middle of a drag: the row hides the slider, sets it anew, rounded, and shows it.
    shown.recorder->answer = [](NSSlider& slider) {
        slider.setHidden(true);
        slider.setMinValue(0);
        slider.setMaxValue(1000);
        slider.setDoubleValue(std::round(slider.doubleValue() / 100) * 100);
        slider.setHidden(false);
    };
    shown.press(shown.at(105));
    for (auto const value : { 110, 160, 165, 205 }) {
        shown.drag(shown.at(value));
        QCoreApplication::processEvents();
    }
    shown.drag(shown.at(205, 60));
    EXPECT_EQ(shown.recorder->values, (Values { 105, 110, 160, 165, 205, 205 }));
    EXPECT_TRUE(shown.slider->isTracking());
    shown.release(shown.at(205));
    EXPECT_EQ(shown.slider->doubleValue(), 200);
}

TEST(SliderDrag, pastTheEndTheValueStaysUntilTheHandIsBack)
{
    ShownSlider shown;
    shown.press(shown.at(900));
    for (auto const value : { 1000, 1100, 1050, 995 }) {
        shown.drag(shown.at(value));
    }
    EXPECT_EQ(shown.recorder->values, (Values { 900, 1000, 1000, 1000, 995 }));
}

TEST(SliderDrag, thePressIsTheCurrentEventOfItsAction)
{
    ShownSlider shown;
    shown.doubleClick(shown.at(100));
    ASSERT_EQ(shown.recorder->events.size(), 2u);
    for (int click : { 1, 2 }) {
        auto const& event = shown.recorder->events[static_cast<std::size_t>(click - 1)];
        ASSERT_TRUE(event);
        EXPECT_EQ(event->type, NSEventType::leftMouseDown);
        EXPECT_EQ(event->clickCount, click);
    }
}

TEST(SliderDrag, aResetByDoubleClickIsNotUndoneByWhatFollows)
{
    for (auto const place : { ShownSlider::at(100), ShownSlider::at(500) }) {
        ShownSlider shown;
        shown.recorder->answer = [](NSSlider& slider) {
            auto const event = NSApplication::currentEvent();
            if (event && event->type == NSEventType::leftMouseDown && event->clickCount == 2) {
                slider.setDoubleValue(700);
            }
        };
        shown.doubleClick(place);
        EXPECT_EQ(shown.slider->doubleValue(), 700);
        shown.drag(place + QPoint(3, 2));
        shown.drag(place);
        shown.release(place + QPoint(1, 0));
        shown.pressSoonAfter(place + QPoint(1, 0)); // A third click out of habit.
        shown.release(place);
        EXPECT_EQ(shown.slider->doubleValue(), 700);
        EXPECT_THAT(shown.recorder->values, testing::Not(Contains(700)));
    }
}

TEST(SliderDrag, afterADoubleClickAClearMoveDragsFromTheReset)
{
    ShownSlider shown;
    shown.recorder->answer = [](NSSlider& slider) {
        if (NSApplication::currentEvent()->clickCount == 2 && !slider.isHidden()
            && NSApplication::currentEvent()->type == NSEventType::leftMouseDown) {
            slider.setDoubleValue(700);
        }
    };
    shown.doubleClick(shown.at(100));
    shown.drag(shown.at(150));
    EXPECT_EQ(shown.slider->doubleValue(), 750);
}

TEST(SliderDrag, withShiftGoesATenthOfTheWay)
{
    ShownSlider shown;
    shown.press(shown.at(500));
    shown.drag(shown.at(600), Qt::ShiftModifier);
    EXPECT_NEAR(shown.slider->doubleValue(), 510, 1e-9);
    shown.drag(shown.at(650));
    EXPECT_NEAR(shown.slider->doubleValue(), 560, 1e-9);
}

TEST(SliderDrag, onALongRangeShiftReachesEveryWholeNumber)
{
    ShownSlider shown;
    shown.slider->setMaxValue(100'000); // 500 units a point, of which a tenth is 50.
    shown.slider->setDoubleValue(50'000);
    shown.press(shown.at(500));
    shown.drag(shown.at(505), Qt::ShiftModifier);
    EXPECT_NEAR(shown.slider->doubleValue(), 50'001, 1e-6);
}

TEST(SliderDrag, escapeGivesBackTheValueFromBeforeAndEndsTheDrag)
{
    ShownSlider shown;
    shown.press(shown.at(100));
    shown.drag(shown.at(200));
    shown.key(Qt::Key_Escape);
    EXPECT_EQ(shown.slider->doubleValue(), 500);
    shown.drag(shown.at(300));
    shown.release(shown.at(300));
    EXPECT_EQ(shown.recorder->values, (Values { 100, 200, 500 }));
    shown.key(Qt::Key_Escape);
    EXPECT_EQ(shown.recorder->values.size(), 3u);
}

TEST(SliderDrag, endsWhenTheSliderGoesFromTheScreen)
{
    ShownSlider shown;
    shown.press(shown.at(100));
    qtWidget(*shown.window)->hide();
    EXPECT_FALSE(shown.slider->isTracking());
    EXPECT_EQ(shown.recorder->values, (Values { 100 }));
    shown.release(shown.at(100));
}

TEST(SliderDrag, leavesTheKeyboardWhereItIsAndADisabledSliderDoesNothing)
{
    ShownSlider shown;
    shown.press(shown.at(100));
    shown.release(shown.at(100));
    EXPECT_FALSE(shown.slider->isFirstResponder());
    shown.recorder->values.clear();
    shown.slider->setEnabled(false);
    shown.press(shown.at(800));
    shown.drag(shown.at(900));
    shown.release(shown.at(900));
    EXPECT_THAT(shown.recorder->values, IsEmpty());
    EXPECT_EQ(shown.slider->doubleValue(), 100);
}

TEST(SliderDrag, anActionThatTakesTheSliderAwayIsSurvived)
{
    ShownSlider shown;
    shown.recorder->answer = [&](NSSlider& slider) {
        slider.removeFromSuperview();
        shown.slider.reset();
    };
    shown.press(shown.at(100));
    QCoreApplication::processEvents();
    shown.release(shown.at(100));
    EXPECT_EQ(shown.recorder->values, (Values { 100 }));
}

TEST(SliderValues, settingIsSilentAndStaysWithinTheRange)
{
    ShownSlider shown;
    shown.slider->setDoubleValue(2000);
    EXPECT_EQ(shown.slider->doubleValue(), 1000);
    shown.slider->setMaxValue(300);
    EXPECT_EQ(shown.slider->doubleValue(), 300);
    shown.slider->setMinValue(400); // Until the maximum follows they are out of order.
    EXPECT_EQ(shown.slider->doubleValue(), 400);
    EXPECT_THAT(shown.recorder->values, IsEmpty());
}

TEST(SliderValues, whatIsNoFiniteNumberIsIgnoredAndZeroHasNoSign)
{
    ShownSlider shown;
    for (auto const bad : { std::nan(""), std::numeric_limits<double>::infinity() }) {
        shown.slider->setMinValue(bad);
        shown.slider->setMaxValue(-bad);
        shown.slider->setDoubleValue(bad);
    }
    EXPECT_EQ(shown.slider->minValue(), 0);
    EXPECT_EQ(shown.slider->maxValue(), 1000);
    EXPECT_EQ(shown.slider->doubleValue(), 500);
    shown.slider->setDoubleValue(-0.0);
    EXPECT_FALSE(std::signbit(shown.slider->doubleValue()));
}

TEST(SliderValues, theLargestAndTheEmptyRangeCanBeUsed)
{
    ShownSlider shown;
    auto const largest = std::numeric_limits<double>::max();
    shown.slider->setMinValue(-largest);
    shown.slider->setMaxValue(largest);
    shown.slider->setDoubleValue(0);
    for (auto const place : { 750, 0, 1000 }) {
        shown.press(shown.at(place));
        shown.release(shown.at(place));
    }
    EXPECT_THAT(shown.recorder->values, ElementsAre(testing::DoubleEq(largest / 2), -largest, largest));

    shown.recorder->values.clear();
    shown.slider->setMinValue(7);
    shown.slider->setMaxValue(7);
    shown.press(shown.at(750));
    shown.drag(shown.at(900), Qt::ShiftModifier);
    shown.release(shown.at(900));
    EXPECT_THAT(shown.recorder->values, testing::Each(7));
}
