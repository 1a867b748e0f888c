#include "Moravel/Model/Locations.h"
#include "Moravel/Model/Matching.h"

#include "Tests/Support/FontBuilder.h"

#include <gtest/gtest.h>

TEST(Rounding, keepsOneDecimalPlaceWithHalvesAwayFromZero)
{
    for (auto const& [value, rounded] : std::vector<std::pair<double, double>> { { 0.25, 0.3 },
             { -0.25, -0.3 }, { 12.34, 12.3 }, { 550, 550 }, { 0.04, 0 }, { -12.36, -12.4 } }) {
        EXPECT_DOUBLE_EQ(roundedToTenths(value), rounded) << value;
    }
}

TEST(Locations, keepTheNumbersOfTheDisplayLocationAndFillWhatItLeavesOpen)
{
    FontBuilder builder;
    builder.addAxis("wght", "Weight", { 100, 400, 900 });
    builder.addAxis("wdth", "Width", { 50, 100, 200 });
    auto const master = builder.addMaster("bold", { { "wght", 900 }, { "wdth", 75 } });
    TLLocation const shown { { "elsewhere", 3.0 }, { "wdth", "wide" }, { "wght", 550.0 } };

    EXPECT_EQ(numericLocation(shown), (TLLocation { { "elsewhere", 3.0 }, { "wght", 550.0 } }));
    EXPECT_EQ(numericLocation(std::nullopt), TLLocation {});
    EXPECT_EQ(fontLocation(*builder.font(), master.get(), shown),
        (TLLocation { { "elsewhere", 3.0 }, { "wdth", 75.0 }, { "wght", 550.0 } }));
    EXPECT_EQ(fontLocation(*builder.font(), nullptr, std::nullopt),
        (TLLocation { { "wdth", 0.0 }, { "wght", 0.0 } }));
}

TEST(Locations, ofALayerNameEveryAxisOfItsGlyph)
{
    FontBuilder builder;
    builder.addAxis("wght", "Weight", { 100, 400, 900 });
    builder.addMaster("bold", { { "wght", 900 } });
    auto const glyph = builder.addGlyph("A");
    FontBuilder::addGlyphAxis(glyph, "bar", "Bar", { 0, 10, 100 });
    auto const layer = glyph->layerForId("bold");

    EXPECT_EQ(layerLocation(*layer, std::nullopt), (TLLocation { { "bar", 10.0 }, { "wght", 900.0 } }));
    EXPECT_EQ(layerLocation(*layer, TLLocation { { "bar", "high" }, { "wght", 500.0 } }),
        (TLLocation { { "bar", 10.0 }, { "wght", 500.0 } }));
}

class Matching : public testing::Test {
protected:
    Matching()
    {
        builder.addAxis("wght", "Weight", { 0, 400, 900 });
        builder.addAxis("wdth", "Width", { 50, 100, 200 });
        builder.addMaster("zero", { { "wght", 0 }, { "wdth", 100 } });
        builder.addMaster("regular", { { "wght", 400 }, { "wdth", 100 } });
        builder.addMaster("wide", { { "wght", 400 }, { "wdth", 200 } });
        builder.addMaster("second regular", { { "wght", 400 }, { "wdth", 100 } });
        glyph = builder.addGlyph("A");
    }
    std::string masterAt(TLLocation const& location) const
    {
        auto const master = matchingMaster(*builder.font(), location);
        return master ? master->id() : "none";
    }
    std::string layerAt(TLLocation const& location, std::optional<std::string> const& masterId = {}) const
    {
        auto const layer = matchingLayer(*glyph, location, masterId);
        return layer ? layer->layerId() : "none";
    }

    FontBuilder builder;
    std::shared_ptr<TLGlyph> glyph;
};

TEST_F(Matching, findsTheFirstMasterThatStandsThereOnEveryAxis)
{
    EXPECT_EQ(masterAt({ { "wght", 400.0 }, { "wdth", 100.0 } }), "regular");
    EXPECT_EQ(masterAt({ { "wght", 400.0 }, { "wdth", 200.0 } }), "wide");
    EXPECT_EQ(masterAt({ { "wght", 550.0 }, { "wdth", 200.0 } }), "none");
    EXPECT_EQ(masterAt({ { "wdth", 200.0 } }), "wide") << "an axis left open counts as its default";
    EXPECT_EQ(masterAt({ { "wght", "bold" }, { "wdth", 200.0 } }), "wide") << "as does what is no number";
    EXPECT_EQ(masterAt({ { "wght", 400.0 }, { "wdth", 100.0 }, { "elsewhere", 5.0 } }), "regular");
}

TEST_F(Matching, takesPlacesForOneBelowTheTolerance)
{
    EXPECT_EQ(masterAt({ { "wght", 0.99e-5 } }), "zero");
    EXPECT_EQ(masterAt({ { "wght", -0.99e-5 } }), "zero");
    EXPECT_EQ(masterAt({ { "wght", 1e-5 } }), "none")
        << "a difference of the tolerance itself is another place";
    EXPECT_EQ(layerAt({ { "wght", 0.99e-5 } }), "zero");
    EXPECT_EQ(layerAt({ { "wght", 1e-5 } }), "none");
}

TEST_F(Matching, prefersLayersOfTheGivenMaster)
{
    FontBuilder::addBraceLayer(glyph, "orphan", std::nullopt, { { "wght", 550 }, { "wdth", 100 } });
    FontBuilder::addBraceLayer(glyph, "of regular", "regular", { { "wght", 550 }, { "wdth", 100 } });
    FontBuilder::addBraceLayer(glyph, "of wide", "wide", { { "wght", 550 }, { "wdth", 100 } });
    TLLocation const place { { "wght", 550.0 }, { "wdth", 100.0 } };
    EXPECT_EQ(layerAt(place, "wide"), "of wide");
    EXPECT_EQ(layerAt(place, "regular"), "of regular");
    EXPECT_EQ(layerAt(place, "zero"), "orphan") << "none is of that master: the first of any";
    EXPECT_EQ(layerAt(place), "orphan");
    EXPECT_EQ(layerAt({ { "wght", 400.0 }, { "wdth", 100.0 } }, "second regular"), "second regular");
}

TEST_F(Matching, looksAtMasterAndIntermediateLayersOnlyAndAtGlyphAxesToo)
{
    FontBuilder::addGlyphAxis(glyph, "bar", "Bar", { 0, 10, 100 });
    FontBuilder::addBraceLayer(
        glyph, "raised", "regular", { { "wght", 400 }, { "wdth", 100 }, { "bar", 50 } });
    FontBuilder::addOtherLayer(glyph, "sketch", "regular");
    EXPECT_EQ(layerAt({ { "bar", 50.0 } }, "regular"), "raised");
    EXPECT_EQ(layerAt({ { "bar", 10.0 } }, "regular"), "regular")
        << "a layer without a place stands at the default";
    EXPECT_EQ(layerAt({ { "bar", 30.0 } }, "regular"), "none");
    EXPECT_FALSE(layerMatchesLocation(*glyph->layerForId("raised"), *glyph, {}));
    EXPECT_TRUE(layerMatchesLocation(*glyph->layerForId("regular"), *glyph, {}));
    glyph->removeLayer("regular");
    glyph->removeLayer("second regular");
    EXPECT_EQ(layerAt({}, "regular"), "none") << "a sketch stands nowhere, not at the default";
}

TEST(MatchingWithoutAxes, everythingMatches)
{
    FontBuilder builder;
    auto const master = builder.addMaster("only", {});
    auto const glyph = builder.addGlyph("A");
    EXPECT_EQ(matchingMaster(*builder.font(), { { "wght", 5.0 } }), master);
    EXPECT_EQ(matchingLayer(*glyph, { { "wght", 5.0 } }, std::nullopt)->layerId(), "only");
}
