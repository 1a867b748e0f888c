#include "Typloom/Formats/Numbers.h"

#include "Typloom/Formats/AxisMap.h"
#include "Typloom/Formats/VariableComponents.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <clocale>
#include <cmath>

TEST(Numbers, areReadWholeFiniteAndWithoutRegardToTheLocale)
{
    struct Case {
        char const* text;
        std::optional<double> number;
    };
    Case const cases[] { { "0", 0 }, { "-12.5", -12.5 }, { "1e3", 1000 }, { "569.078", 569.078 },
        { "5e-324", 5e-324 }, { "", {} }, { "12abc", {} }, { "1,5", {} }, { "0x10", {} }, { "+7", {} },
        { " 12", {} }, { "12 ", {} }, { "nan", {} }, { "-inf", {} }, { "1e400", {} }, { "-", {} } };
    // Absent on many machines; the numbers are read without it anyway.
    std::setlocale(LC_ALL, "de_DE.UTF-8");
    for (auto const& [text, number] : cases) {
        EXPECT_EQ(parseNumber(text), number) << text;
    }
    EXPECT_EQ(describeNumber(0.1), "0.1");
    std::setlocale(LC_ALL, "C");
    EXPECT_FALSE(std::signbit(*parseNumber("-0")));
}

TEST(Numbers, ofCharactersAreHexadecimal)
{
    EXPECT_EQ(parseCharacter("0041"), U'A');
    EXPECT_EQ(parseCharacter("1f600"), U'\U0001F600');
    for (char const* const bad : { "", "110000", "U+41", "41 ", "-1" }) {
        EXPECT_EQ(parseCharacter(bad), std::nullopt) << bad;
    }
}

TEST(AxisMap, isPiecewiseLinearAndShiftedBeyondItsEnds)
{
    bool hadRepeated = false;
    auto const map = makeAxisMap({ { 900, 850 }, { 100, 150 }, { 500, 250 } }, false, hadRepeated);
    EXPECT_FALSE(hadRepeated);
    std::pair<double, double> const cases[] { { 100, 150 }, { 300, 200 }, { 500, 250 }, { 700, 550 },
        { 900, 850 }, { 50, 100 }, { 1000, 950 } };
    for (auto const& [user, design] : cases) {
        EXPECT_DOUBLE_EQ(map.designFromUser(user), design) << user;
    }
    EXPECT_EQ(AxisMap {}.designFromUser(42), 42);
}

TEST(AxisMap, ofADiscreteAxisMovesExactCoordinatesOnly)
{
    bool hadRepeated = false;
    auto const map = makeAxisMap({ { 0, 10 }, { 1, 20 }, { 1, 30 } }, true, hadRepeated);
    EXPECT_TRUE(hadRepeated);
    EXPECT_EQ(map.designFromUser(1), 20) << "the first counts";
    EXPECT_EQ(map.designFromUser(0.5), 0.5);
}

namespace {

std::array<double, 2> applied(std::array<double, 6> const& matrix, double x, double y)
{
    auto const& [a, b, c, d, e, f] = matrix;
    return { a * x + c * y + e, b * x + d * y + f };
}

} // namespace

/// Worked out by hand for the point (110, 0), 10 to the right of the centre (100, 0).
TEST(DecomposedTransformation, skewsScalesAndRotatesAroundItsCentreThenMoves)
{
    struct Case {
        char const* what;
        DecomposedTransformation parts;
        double x;
        double y;
        std::array<double, 2> expected;
    };
    Case const cases[] {
        { "nothing", {}, 110, 0, { 110, 0 } },
        { "a quarter turn", { .rotation = 90, .tCenterX = 100 }, 110, 0, { 100, 10 } },
        { "twice as wide", { .scaleX = 2, .tCenterX = 100 }, 110, 0, { 120, 0 } },
        { "wide, then turned", { .rotation = 90, .scaleX = 2, .tCenterX = 100 }, 110, 0, { 100, 20 } },
        { "moved last", { .translateX = 5, .translateY = 7, .rotation = 90, .tCenterX = 100 }, 110, 0,
            { 105, 17 } },
        { "leaning to the right", { .skewX = 45 }, 0, 10, { 10, 10 } },
        { "rising to the right", { .skewY = 45 }, 10, 0, { 10, 10 } },
    };
    for (auto const& [what, parts, x, y, expected] : cases) {
        auto const place = applied(parts.matrix(), x, y);
        EXPECT_NEAR(place[0], expected[0], 1e-9) << what;
        EXPECT_NEAR(place[1], expected[1], 1e-9) << what;
    }
}
