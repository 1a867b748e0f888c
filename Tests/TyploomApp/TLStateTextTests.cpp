#include "Platform/Foundation/NSLocale.h"
#include "Tests/TyploomApp/EditFamily.h"
#include "Typloom/TyploomApp/TLStateText.h"

#include <gtest/gtest.h>

/// Coordinates are shown in the user's locale; here in one with a decimal point.
class TLCoordinatesTextTest : public testing::Test {
protected:
    void SetUp() override { NSSetCurrentLocale("en_US"); }
    void TearDown() override { NSSetCurrentLocale(""); }
};

TEST(TLStateText, saysWhereTheViewStands)
{
    EditFamily family;
    TLEditState state(family.font());
    state.setGlyphNames({ "A", "C" }, 0);
    EXPECT_EQ(TLStateText(state, {}), "Light");
    state.setMasterIndex(1);
    EXPECT_EQ(TLStateText(state, {}), "Bold");
    state.switchToLayer("A-700", { 0, 1 });
    EXPECT_EQ(TLStateText(state, {}), "A-700");
    state.setAxisLocation(TLLocation { { "wght", 550.25 } });
    EXPECT_EQ(TLStateText(state, {}), "Interpolated");
    state.select({ 2, 0 });
    EXPECT_EQ(TLStateText(state, {}), "Interpolated") << "no glyph is edited";
    state.setMasterIndex(0);
    EXPECT_EQ(TLStateText(state, {}), "Light");
}

TEST(TLStateAdvice, isGivenWhereALayerStandsOnAnothersPlace)
{
    EditFamily family;
    TLEditState state(family.font());
    state.setGlyphNames({ "A" }, 0);
    EXPECT_EQ(TLStateAdvice(state), std::nullopt);
    state.switchToLayer("A-700", { 0, 1 });
    EXPECT_EQ(TLStateAdvice(state), std::nullopt);
    auto const layer = family.a->layerForId("A-700");
    layer->setCoordinates({ { "wght", 1000 } });
    EXPECT_EQ(
        TLStateAdvice(state), "Stands where “Bold” does: type another coordinate in the Layers palette");
    state.setAxisLocation(TLLocation { { "wght", 500.0 } });
    EXPECT_EQ(TLStateAdvice(state), std::nullopt) << "the interpolation tells its own problem";
}

TEST_F(TLCoordinatesTextTest, namesThePlaceOnEveryAxis)
{
    EditFamily family;
    TLEditState state(family.font());
    state.setGlyphNames({ "A", "C" }, 0);
    EXPECT_EQ(TLCoordinatesText(state), "weight 0");
    state.switchToLayer("A-700", { 0, 1 });
    EXPECT_EQ(TLCoordinatesText(state), "weight 700");
    state.setAxisLocation(TLLocation { { "wght", 550.25 } });
    EXPECT_EQ(TLCoordinatesText(state), "weight 550.25");
    state.select({ 1, 0 });
    EXPECT_EQ(TLCoordinatesText(state), "weight 550.25, arm 0");
    state.select({ 2, 0 });
    EXPECT_EQ(TLCoordinatesText(state), "weight 550.25") << "no glyph is edited";
}

TEST_F(TLCoordinatesTextTest, tellsAGlyphsAxisFromTheFontsOfItsName)
{
    EditFamily family;
    FontBuilder::addGlyphAxis(family.b, "own", "weight", { 0, 3, 9 });
    family.font()->axes()[0]->setAxisTag("wght");
    TLEditState state(family.font());
    state.setGlyphNames({ "B" }, 0);
    EXPECT_EQ(TLCoordinatesText(state), "weight 0, weight (glyph) 3");
}

TEST(TLStateText, namesTheNearestSourceInsteadOfAnInterpolation)
{
    EditFamily family;
    TLEditState state(family.font());
    state.setGlyphNames({ "X" }, 0);
    TLDrawingProblem const problem { "the outlines do not fit", "Bold" };
    state.setAxisLocation(TLLocation { { "wght", 900.0 } });
    EXPECT_EQ(TLStateText(state, problem), "Nearest source: Bold (the outlines do not fit)");
    EXPECT_EQ(TLStateText(state, TLDrawingProblem { "no slice", "" }), "Nearest source (no slice)");
    state.setMasterIndex(1);
    EXPECT_EQ(TLStateText(state, problem), "Bold") << "a layer is what it is";
}

TEST_F(TLCoordinatesTextTest, namesOnlyAxesAwayFromTheirDefaultWhereThereAreMany)
{
    FontBuilder builder;
    TLLocation place;
    for (std::string const name : { "a", "b", "c", "d", "e", "f", "g", "h" }) {
        builder.addAxis(name, name);
        place[name] = 5.0;
    }
    builder.addMaster("light", {});
    TLEditState state(builder.font());
    state.setAxisLocation(TLLocation { { "b", 5.0 }, { "h", 0.5 } });
    EXPECT_EQ(TLCoordinatesText(state), "b 5, h 0.5");
    state.setAxisLocation(place);
    EXPECT_EQ(TLCoordinatesText(state), "a 5, b 5, c 5, d 5, e 5, f 5, …");
}

TEST(TLStateText, namesOtherLayersAndNoMaster)
{
    EditFamily family;
    family.builder.addOtherLayer(family.b, "sketch", "light");
    TLEditState state(family.font());
    state.setGlyphNames({ "B" }, 0);
    state.switchToLayer("sketch", { 0, 1 });
    EXPECT_EQ(TLStateText(state, {}), "sketch");
    EXPECT_EQ(TLStateText(TLEditState(std::make_shared<TLFont>()), {}), "No master");
}
