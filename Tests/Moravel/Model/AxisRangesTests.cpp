#include "Moravel/Model/AxisRanges.h"

#include "Tests/Support/FontBuilder.h"

#include <gtest/gtest.h>

using Values = std::vector<double>;

TEST(FontAxisRange, spansTheLandmarksAndKeepsTheDefaultAsItIs)
{
    EXPECT_EQ(fontAxisRange(Values { 100, 400 }, 400), (AxisRange { 100, 400, 400 }));
    EXPECT_EQ(fontAxisRange(Values { 400 }, 400), (AxisRange { 400, 400, 400 }));
    EXPECT_EQ(fontAxisRange(Values { 100, 400 }, 700), (AxisRange { 100, 700, 400 }));
    EXPECT_EQ(fontAxisRange(Values {}, 30), (AxisRange { 30, 30, 30 }));
}

TEST(GlyphAxisDefault, isTheDefaultLayersPlaceElseTheAxisDefault)
{
    FontBuilder builder;
    auto const glyph = builder.addEmptyGlyph("A");
    auto const axis = FontBuilder::addGlyphAxis(glyph, "bar", "Bar", { 0, 10, 100 });
    auto const without = FontBuilder::addMasterLayer(glyph, "regular");
    auto const with = FontBuilder::addMasterLayer(glyph, "bold", {}, { { "bar", 0 } });
    EXPECT_EQ(glyphAxisDefault(*axis, nullptr), 10);
    EXPECT_EQ(glyphAxisDefault(*axis, without.get()), 10);
    EXPECT_EQ(glyphAxisDefault(*axis, with.get()), 0);
}

TEST(RangeOfRowContent, isTheAxisDefaultAloneUnlessThereAreThreeValues)
{
    auto const axis = FontBuilder::makeAxis("wght", "Weight", { 0, 30, 100 });
    EXPECT_EQ(rangeOfRowContent({ axis, Values { 1, 2, 3 }, {}, 0 }), (AxisRange { 1, 2, 3 }));
    EXPECT_EQ(rangeOfRowContent({ axis, std::nullopt, {}, 0 }), (AxisRange { 30, 30, 30 }));
    EXPECT_EQ(rangeOfRowContent({ axis, Values { 1, 2 }, {}, 0 }), (AxisRange { 30, 30, 30 }));
    EXPECT_EQ(rangeOfRowContent({ axis, Values { 1, 2, 3, 4 }, {}, 0 }), (AxisRange { 30, 30, 30 }));
    EXPECT_EQ(rangeOfRowContent({}), (AxisRange { 0, 0, 0 }));
}

TEST(Usability, ofAFontAxisDependsOnItsSpanAlone)
{
    EXPECT_TRUE(isUsable(Section::font, { 100, 400, 900 }, Values {}));
    EXPECT_TRUE(isUsable(Section::font, { 0, 0, 0.01 }, Values { 0 }));
    EXPECT_TRUE(isUsable(Section::font, { 1, 0, 0 }, std::nullopt)) << "bounds the wrong way round";
    EXPECT_FALSE(isUsable(Section::font, { 0, 0, 0.005 }, Values { 0, 0.005 }));
    EXPECT_FALSE(isUsable(Section::font, { 400, 400, 400 }, Values { 400, 500 }));
}

TEST(Usability, ofAGlyphAxisNeedsALandmarkAwayFromTheDefault)
{
    EXPECT_TRUE(isUsable(Section::glyph, { 0, 0, 0 }, Values { 0, 100 }));
    EXPECT_TRUE(isUsable(Section::glyph, { 0, 0, 100 }, Values { -0.0011 }));
    EXPECT_FALSE(isUsable(Section::glyph, { 0, 0, 100 }, Values { 0 }));
    EXPECT_FALSE(isUsable(Section::glyph, { 0, 0, 100 }, Values { 0.0009 }));
    EXPECT_FALSE(isUsable(Section::glyph, { 0, 0, 100 }, Values {}));
    EXPECT_FALSE(isUsable(Section::glyph, { 0, 0, 100 }, std::nullopt));
}

TEST(FractionDigits, growFewerWithTheSpanRoundedUp)
{
    for (auto const& [span, digits] : std::vector<std::pair<double, int>> { { 0, 3 }, { 0.8, 3 }, { 1, 3 },
             { 1.5, 1 }, { 2, 1 }, { 9, 1 }, { 9.2, 0 }, { 9.5, 0 }, { 10, 0 }, { 800, 0 } }) {
        EXPECT_EQ(fractionDigitsForSpan(span), digits) << span;
    }
}
