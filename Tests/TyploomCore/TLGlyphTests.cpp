#include "Tests/Support/FontBuilder.h"
#include "Typloom/TyploomCore/TLInterpolation.h"

#include <gtest/gtest.h>

namespace {

std::vector<std::string> identifiers(TLLayerDictionary const& layers)
{
    std::vector<std::string> found;
    for (auto const& [identifier, layer] : layers) {
        EXPECT_EQ(layer->layerId(), identifier);
        EXPECT_EQ(layers.find(identifier), layer);
        found.push_back(identifier);
    }
    return found;
}

using Identifiers = std::vector<std::string>;

} // namespace

TEST(TLGlyph, keepsMastersInFontOrderThenIntermediateLayersThenOthers)
{
    FontBuilder builder;
    builder.addMaster("light", {});
    builder.addMaster("bold", {});
    auto const glyph = builder.addEmptyGlyph("A");

    FontBuilder::addOtherLayer(glyph, "sketch");
    FontBuilder::addBraceLayer(glyph, "z", "light", {});
    FontBuilder::addMasterLayer(glyph, "bold");
    FontBuilder::addBraceLayer(glyph, "a", "bold", {});
    FontBuilder::addMasterLayer(glyph, "light");

    EXPECT_EQ(identifiers(glyph->layers()), (Identifiers { "light", "bold", "z", "a", "sketch" }));

    glyph->removeLayer("bold");
    glyph->removeLayer("not there");
    EXPECT_EQ(identifiers(glyph->layers()), (Identifiers { "light", "z", "a", "sketch" }));
    EXPECT_EQ(glyph->layerForId("bold"), nullptr);
}

TEST(TLGlyph, aLayerReplacesTheOneOfItsIdentifier)
{
    FontBuilder builder;
    builder.addMaster("light", {});
    auto const glyph = builder.addGlyph("A");
    auto const other = FontBuilder::addMasterLayer(glyph, "light");

    EXPECT_EQ(identifiers(glyph->layers()), (Identifiers { "light" }));
    EXPECT_EQ(glyph->layerForId("light"), other);
    EXPECT_EQ(glyph->layers().find("light"), other);
}

TEST(TLGlyph, itsAxesComeBeforeTheFonts)
{
    FontBuilder builder;
    auto const weight = builder.addAxis("wght", "Weight");
    auto const glyph = builder.addGlyph("A");
    auto const flip = FontBuilder::addGlyphAxis(glyph, "flip", "Flip");
    auto const flop = FontBuilder::makeAxis("flop", "Flop", {});
    glyph->insertObjectInAxesAtIndex(flop, 0);

    EXPECT_EQ(glyph->allAxes(), (std::vector { flop, flip, weight }));
    glyph->removeObjectFromAxesAtIndex(0);
    glyph->removeObjectFromAxesAtIndex(9);
    EXPECT_EQ(glyph->axes(), (std::vector { flip }));
}

TEST(TLGlyph, rangesSpanTheDefaultAndTheTrueValuesOfAllLayers)
{
    FontBuilder builder;
    builder.addAxis("wght", "Weight");
    builder.addMaster("light", {});
    builder.addMaster("bold", {});
    auto const glyph = builder.addGlyph("A");
    auto const flip = FontBuilder::addGlyphAxis(glyph, "flip", "Flip", { 0, 10, 1000 });
    auto const idle = FontBuilder::addGlyphAxis(glyph, "idle", "Idle", { 0, 5, 1000 });
    FontBuilder::addBraceLayer(glyph, "one", "light", { { "flip", 60 }, { "wght", 900 } });
    FontBuilder::addBraceLayer(glyph, "two", "bold", { { "flip", -20 } });
    glyph->setPreviewLocation("one", TLLocation { { "flip", 500.0 } });

    using Ranges = std::unordered_map<std::shared_ptr<TLAxis>, TLClosedRange>;
    EXPECT_EQ(
        glyph->internalAxisRanges(std::nullopt), (Ranges { { flip, { -20, 60 } }, { idle, { 5, 5 } } }));
    EXPECT_EQ(glyph->internalAxisRanges("light"), (Ranges { { flip, { 10, 60 } }, { idle, { 5, 5 } } }));
}

/// Layers with one dimension at its end and the other at rest bend the way between the ends of the axis.
/// At half: 0 + 10/2 + 10/2 + (100 - 10 - 10)/4 = 30.
TEST(TLGlyph, anAxisOfTwoDimensionsMovesBoth)
{
    FontBuilder builder;
    builder.addMaster("light", {});
    auto const glyph = builder.addGlyph("A");
    FontBuilder::addGlyphAxis(glyph, "turn", "Turn", { 0, 0, 100 })->setPartIds({ "turn*1", "turn*2" });
    auto const addLayer = [&glyph](std::string const& name, TLCoordinates coordinates, double advance) {
        FontBuilder::addBraceLayer(glyph, name, "light", std::move(coordinates))
            ->setOutline(
                { .advance = advance, .height = 0, .contours = {}, .components = {}, .anchors = {} });
    };
    addLayer("first", { { "turn*1", 100 } }, 10);
    addLayer("second", { { "turn*2", 100 } }, 10);
    addLayer("end", { { "turn", 100 } }, 100);

    std::vector<double> advances;
    for (double const place : { 0.0, 50.0, 100.0 }) {
        advances.push_back(TLInterpolateGlyph(*glyph, { { "turn", place } }).outline.advance);
    }
    EXPECT_EQ(advances, (std::vector<double> { 0, 30, 100 }));
    EXPECT_EQ(glyph->layerForId("first")->axisInternalValueValue("turn"), std::nullopt);
}
