#include "Typloom/Interpolation/NormalizedLocation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

using testing::ElementsAre;
using testing::IsEmpty;

TEST(NormalizedValue, measuresEachSideOfTheDefaultByItsOwnLength)
{
    VariationAxis const weight { 100, 400, 900 };
    struct Case {
        double design;
        double normalized;
    };
    for (auto const [design, normalized] :
        { Case { 100, -1 }, { 250, -0.5 }, { 400, 0 }, { 525, 0.25 }, { 900, 1 } }) {
        EXPECT_EQ(normalizedValue(design, weight), normalized) << design;
    }
}

TEST(NormalizedValue, staysOnTheAxis)
{
    VariationAxis const weight { 100, 400, 900 };
    EXPECT_EQ(normalizedValue(-1e300, weight), -1);
    EXPECT_EQ(normalizedValue(901, weight), 1);
    EXPECT_EQ(normalizedValue(HUGE_VAL, weight), 1);
    EXPECT_EQ(normalizedValue(std::nan(""), weight), 0);
}

TEST(NormalizedValue, isZeroOnASideWithoutLength)
{
    EXPECT_EQ(normalizedValue(50, { 100, 100, 900 }), 0);
    EXPECT_EQ(normalizedValue(500, { 100, 100, 900 }), 0.5);
    EXPECT_EQ(normalizedValue(950, { 100, 900, 900 }), 0);
    EXPECT_EQ(normalizedValue(950, { 400, 400, 400 }), 0);
}

TEST(NormalizedValue, isRightAtTheEdgesOfTheNumbers)
{
    double const huge = 1.7e308;
    EXPECT_EQ(normalizedValue(huge, { -huge, -huge, huge }), 1);
    EXPECT_EQ(normalizedValue(0, { -huge, -huge, huge }), 0.5);
    EXPECT_EQ(normalizedValue(5e-324, { 0, 0, 5e-324 }), 1);
}

TEST(VariationAxis, isInOrderWhenItsDefaultLiesBetweenFiniteEnds)
{
    EXPECT_TRUE((VariationAxis { 0, 0, 0 }.isInOrder()));
    EXPECT_TRUE((VariationAxis { 1, 5, 0, true }.isInOrder()));
    EXPECT_FALSE((VariationAxis { 100, 50, 900 }.isInOrder()));
    EXPECT_FALSE((VariationAxis { 900, 900, 100 }.isInOrder()));
    EXPECT_FALSE((VariationAxis { 0, std::nan(""), 1 }.isInOrder()));
    EXPECT_FALSE((VariationAxis { 0, 0, HUGE_VAL }.isInOrder()));
}

TEST(NormalizedLocation, leavesOutZerosOfBothSigns)
{
    std::vector<double> const coordinates { 0, -0.5, -0.0, 1 };
    EXPECT_THAT(normalizedLocation(coordinates),
        ElementsAre(NormalizedCoordinate { 1, -0.5 }, NormalizedCoordinate { 3, 1 }));
    EXPECT_THAT(normalizedLocation(std::vector<double>(3)), IsEmpty());
}
