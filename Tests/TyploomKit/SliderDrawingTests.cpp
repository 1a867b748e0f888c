#include "Tests/TyploomKit/ShownSlider.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QPixmap>
#include <QStyle>

using testing::ElementsAre;

using Values = std::vector<double>;

namespace {
constexpr int markRow = 12 + 9; ///< Of the slider: below its knob, where only marks are.
constexpr int trackRow = 12;

QImage picture(ShownSlider const& shown)
{
    return qtWidget(*shown.slider)->grab().toImage();
}

/// Columns of a row that differ from the background, as first and last of each run.
std::vector<std::pair<int, int>> runs(QImage const& image, int row)
{
    std::vector<std::pair<int, int>> result;
    auto const background = image.pixel(0, 0);
    for (int x = 0; x < image.width(); ++x) {
        if (image.pixel(x, row) == background) {
            continue;
        }
        if (!result.empty() && result.back().second == x - 1) {
            result.back().second = x;
        } else {
            result.emplace_back(x, x);
        }
    }
    return result;
}

int contrast(QRgb left, QRgb right)
{
    return std::abs(qGray(left) - qGray(right));
}
} // namespace

TEST(SliderDrawing, marksAreCrispAndAsWideAsEachOther)
{
    ShownSlider shown;
    shown.slider->setLandmarks(Values { -50, 0, 401.3, 998.7, 1200 });
    auto const image = picture(shown);
    EXPECT_THAT(runs(image, markRow), ElementsAre(std::pair(8, 9), std::pair(88, 89), std::pair(208, 209)));
    for (auto const& [first, last] : runs(image, markRow)) {
        EXPECT_EQ(image.pixel(first, markRow), image.pixel(last, markRow));
        EXPECT_GT(contrast(image.pixel(first, markRow), image.pixel(0, 0)), 60);
    }
}

TEST(SliderDrawing, crowdedMarksKeepAGapBetweenThem)
{
    ShownSlider shown;
    Values crowd;
    for (int i = 0; i < 30; ++i) {
        crowd.push_back(200 + 10 * i); // Every 2 points.
    }
    shown.slider->setLandmarks(crowd);
    EXPECT_EQ(runs(picture(shown), markRow).size(), 30u);
}

TEST(SliderDrawing, theTrackIsFilledBetweenNeutralValueAndKnob)
{
    ShownSlider shown;
    shown.slider->setNeutralValue(200);
    shown.slider->setDoubleValue(800);
    auto const accent = QApplication::palette().color(QPalette::Highlight).rgb();
    auto const image = picture(shown);
    auto const isFilled
        = [&](double value) { return image.pixel(9 + static_cast<int>(value / 5), trackRow) == accent; };
    EXPECT_FALSE(isFilled(190));
    EXPECT_TRUE(isFilled(210));
    EXPECT_TRUE(isFilled(740));
    EXPECT_FALSE(isFilled(850));
    shown.slider->setDoubleValue(50);
    EXPECT_EQ(picture(shown).pixel(9 + 30, trackRow), accent);
}

TEST(SliderDrawing, focusDisablingAndValuesShow)
{
    ShownSlider shown;
    auto const plain = picture(shown);
    shown.slider->setDoubleValue(505);
    EXPECT_NE(picture(shown), plain);
    shown.slider->setDoubleValue(500);
    EXPECT_EQ(picture(shown), plain);
    shown.slider->setEnabled(false);
    auto const disabled = picture(shown);
    EXPECT_NE(disabled, plain);
    EXPECT_LT(contrast(disabled.pixel(50, trackRow), disabled.pixel(0, 0)),
        contrast(plain.pixel(50, trackRow), plain.pixel(0, 0)));
    shown.slider->setEnabled(true);
    shown.focus();
    EXPECT_NE(picture(shown), plain);
}

TEST(SliderDrawing, nothingBreaksWithoutRoom)
{
    ShownSlider shown;
    shown.slider->setLandmarks(Values { 0, 500, 1000 });
    for (auto const width : { 0.0, 1.0, 17.0, 18.0, 19.0 }) {
        shown.slider->setFrame({ { 20, 30 }, { width, 24 } });
        picture(shown);
        shown.press({ 20, 42 });
        shown.drag({ 25, 42 });
        shown.release({ 25, 42 });
        EXPECT_GE(shown.slider->doubleValue(), 0);
        EXPECT_LE(shown.slider->doubleValue(), 1000);
    }
}
