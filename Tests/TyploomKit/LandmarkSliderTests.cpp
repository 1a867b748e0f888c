#include "Tests/TyploomKit/ShownSlider.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

using testing::ElementsAre;

using Values = std::vector<double>;

TEST(LandmarkSlider, aPressNearALandmarkLandsOnItExactly)
{
    ShownSlider shown;
    shown.slider->setLandmarks(Values { 400.3 });
    for (auto const place : { 385, 400, 420 }) { // Up to 4 points, which are 20 units.
        shown.slider->setDoubleValue(900);
        shown.press(shown.at(place));
        shown.release(shown.at(place));
        EXPECT_EQ(shown.recorder->values.back(), 400.3) << place;
    }
    for (auto const place : { 375, 430 }) {
        shown.slider->setDoubleValue(900);
        shown.press(shown.at(place));
        shown.release(shown.at(place));
        EXPECT_EQ(shown.recorder->values.back(), place);
    }
}

TEST(LandmarkSlider, aDragLandsOnTheNearestOfTwoAndLeavesThemAgain)
{
    ShownSlider shown;
    shown.slider->setLandmarks(Values { 400, 420 });
    shown.press(shown.at(100));
    for (auto const value : { 375, 385, 405, 415, 440, 450 }) {
        shown.drag(shown.at(value));
    }
    EXPECT_THAT(shown.recorder->values, ElementsAre(100, 375, 400, 400, 420, 420, 450));
}

TEST(LandmarkSlider, shiftPassesLandmarksByFromPressToRelease)
{
    ShownSlider shown;
    shown.slider->setLandmarks(Values { 400 });
    shown.press(shown.at(405), Qt::ShiftModifier);
    EXPECT_EQ(shown.slider->doubleValue(), 405);
    shown.drag(shown.at(395), Qt::ShiftModifier);
    EXPECT_NEAR(shown.slider->doubleValue(), 404, 1e-9);
}

TEST(LandmarkSlider, aDragThatBeginsBesideALandmarkIsNotPulledBack)
{
    ShownSlider shown;
    shown.slider->setLandmarks(Values { 500 });
    shown.slider->setDoubleValue(510);
    shown.press(shown.at(510));
    shown.drag(shown.at(515));
    EXPECT_EQ(shown.recorder->values.back(), 515); // Away from it, although still within its reach.
    shown.drag(shown.at(505));
    EXPECT_EQ(shown.recorder->values.back(), 500); // Towards it.
    shown.drag(shown.at(490));
    EXPECT_EQ(shown.recorder->values.back(), 500); // Across it.
}

TEST(LandmarkSlider, aClickOnTheMarkBelowTheKnobLandsOnTheLandmark)
{
    ShownSlider shown;
    shown.slider->setLandmarks(Values { 500 });
    shown.slider->setDoubleValue(510);
    shown.press(shown.at(500, 52));
    EXPECT_EQ(shown.slider->doubleValue(), 500);
}

TEST(LandmarkSlider, landmarksOutOfTheRangeAttractNothing)
{
    ShownSlider shown;
    shown.slider->setLandmarks(Values { -10, 1010 });
    shown.press(shown.at(5));
    shown.drag(shown.at(995));
    EXPECT_THAT(shown.recorder->values, ElementsAre(5, 995));
}

TEST(LandmarkSlider, keepsLandmarksSortedUniqueAndFinite)
{
    TLLandmarkSlider slider;
    EXPECT_EQ(slider.landmarks(), std::nullopt);
    slider.setLandmarks(Values { 700, 100, 700, std::nan(""), std::numeric_limits<double>::infinity() });
    EXPECT_EQ(slider.landmarks(), (Values { 100, 700 }));
    slider.setLandmarks(std::nullopt);
    EXPECT_EQ(slider.landmarks(), std::nullopt);
}
