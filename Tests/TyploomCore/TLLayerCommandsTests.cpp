#include "Typloom/TyploomCore/TLLayerCommands.h"

#include "Platform/Foundation/NSMainQueue.h"
#include "Tests/Support/FontBuilder.h"
#include "Typloom/TyploomCore/TLDocumentHistory.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

/// A glyph that is 400 wide in "Regular" and 700 in "Bold", with the axis "flip" of its own.
struct TLLayerCommandsTest : testing::Test {
    FontBuilder builder;
    std::shared_ptr<TLGlyph> glyph;

    TLLayerCommandsTest()
    {
        builder.addAxis("w", "weight", { 100, 400, 700 });
        builder.addMaster("regular", { { "w", 400 } }, "Regular");
        builder.addMaster("bold", { { "w", 700 } }, "Bold");
        glyph = builder.addGlyph("A", [](TLFontMaster const& master) {
            TLOutline outline;
            outline.advance = master.axisInternalValueValueForId("w");
            return outline;
        });
        FontBuilder::addGlyphAxis(glyph, "x", "flip", { 0, 10, 100 });
        endTurn();
        history().clear();
    }
    TLDocumentHistory& history() const { return builder.font()->history(); }
    static void endTurn()
    {
        NSMainQueue::runPending();
        NSMainQueue::runPending();
    }
    std::shared_ptr<TLLayer> add(TLLocation const& place, std::string_view masterId = "regular") const
    {
        return TLAddIntermediateLayer(*glyph, place, masterId).layer;
    }
};

} // namespace

TEST_F(TLLayerCommandsTest, aLayerIsAddedAsTheGlyphLooksAtItsPlaceInOneStep)
{
    auto const layer = add({ { "w", 550.0 }, { "x", 10.0 }, { "unknown", 3.0 } });
    ASSERT_NE(layer, nullptr);
    EXPECT_EQ(layer, glyph->layerForId(layer->layerId()));
    EXPECT_TRUE(layer->isBraceLayer());
    EXPECT_EQ(layer->outline().advance, 550);
    EXPECT_EQ(layer->coordinates(), (TLCoordinates { { "w", 550 } })) << "10 is the default of \"flip\"";
    EXPECT_EQ(layer->name(), "weight=550");
    EXPECT_EQ(layer->associatedMasterId(), "regular");
    endTurn();
    EXPECT_EQ(history().undoTitle(), "Add Layer");
    history().undo();
    EXPECT_EQ(glyph->layers().size(), 2U);
    EXPECT_FALSE(history().isModified());
    history().redo();
    EXPECT_EQ(glyph->layerForId(layer->layerId())->outline().advance, 550);
}

TEST_F(TLLayerCommandsTest, aLayerHasTheGlyphAxesThatItsPlaceNamesAndTheMasterThatStandsThere)
{
    auto const layer = add({ { "w", 700.0 }, { "x", 50.0 } });
    EXPECT_EQ(layer->coordinates(), (TLCoordinates { { "w", 700 }, { "x", 50 } }));
    EXPECT_EQ(layer->name(), "weight=700,flip=50");
    EXPECT_EQ(layer->associatedMasterId(), "bold");
    EXPECT_EQ(add({ { "w", 300.5 } }, "bold")->associatedMasterId(), "bold");
    EXPECT_EQ(add({ { "w", 600.0 } }, "gone")->associatedMasterId(), "bold") << "the nearest";
    EXPECT_EQ(add({ { "w", 500.0 } }, "gone")->associatedMasterId(), "regular");
}

TEST_F(TLLayerCommandsTest, noLayerIsAddedOnAnotherButForAMastersPlace)
{
    add({ { "w", 550.0 } });
    auto const refused = TLAddIntermediateLayer(*glyph, { { "w", 550.000001 } }, "regular");
    EXPECT_EQ(refused.layer, nullptr);
    EXPECT_EQ(refused.problem, "The layer 'weight=550' stands at this place already.");

    EXPECT_EQ(add({})->name(), "Regular 2");
    EXPECT_EQ(add({})->name(), "Regular 3");
    EXPECT_EQ(add({ { "w", 700.0 } })->name(), "weight=700");
    EXPECT_EQ(add({ { "w", 700.0 } })->name(), "weight=700 2");

    auto const empty = builder.addEmptyGlyph("empty");
    EXPECT_EQ(TLAddIntermediateLayer(*empty, {}, "regular").problem,
        "The glyph 'empty' has no layer to begin with.");
}

TEST_F(TLLayerCommandsTest, aCoordinateIsTypedWithinTheFontsAxesAndFreelyOnTheGlyphsOwn)
{
    auto const layer = add({});
    endTurn();
    EXPECT_TRUE(TLSetLayerCoordinate(*layer, "x", -250));
    endTurn();
    EXPECT_EQ(layer->coordinates(), (TLCoordinates { { "w", 400 }, { "x", -250 } }));
    EXPECT_EQ(layer->name(), "flip=-250");
    EXPECT_EQ(history().undoTitle(), "Change Coordinates");
    EXPECT_TRUE(TLSetLayerCoordinate(*layer, "w", 9000));
    EXPECT_EQ(layer->coordinates().at("w"), 700);
    EXPECT_EQ(layer->name(), "weight=700,flip=-250");
    EXPECT_TRUE(TLSetLayerCoordinate(*layer, "x", std::nullopt));
    EXPECT_EQ(layer->coordinates(), (TLCoordinates { { "w", 700 } }));

    auto const before = glyph->state();
    for (double const bad : { std::numeric_limits<double>::infinity(), std::nan("") }) {
        EXPECT_FALSE(TLSetLayerCoordinate(*layer, "x", bad));
    }
    EXPECT_FALSE(TLSetLayerCoordinate(*layer, "w", std::nullopt)) << "it stands somewhere on every font axis";
    EXPECT_FALSE(TLSetLayerCoordinate(*layer, "gone", 1));
    EXPECT_FALSE(TLSetLayerCoordinate(*glyph->layerForId("bold"), "w", 1));
    EXPECT_TRUE(glyph->state() == before);

    endTurn();
    history().didSave();
    EXPECT_TRUE(TLSetLayerCoordinate(*layer, "w", 600));
    EXPECT_EQ(layer->name(), "weight=700") << "a name that is in a file stays";
    for (int steps = 0; steps < 4; ++steps) {
        history().undo();
    }
    EXPECT_EQ(layer->coordinates(), (TLCoordinates { { "w", 400 } }));
    EXPECT_EQ(layer->name(), "Regular 2");
}

TEST_F(TLLayerCommandsTest, aDiscreteAxisTakesTheNearestOfItsValues)
{
    builder.addAxis("i", "italic", { 0, 0, 1 })->setDiscreteValues({ 0, 1 });
    auto const layer = add({ { "w", 550.0 } });
    EXPECT_TRUE(TLSetLayerCoordinate(*layer, "i", 0.7));
    EXPECT_EQ(layer->coordinates().at("i"), 1);
}

TEST_F(TLLayerCommandsTest, everyLayerButAMastersCanBeDeleted)
{
    auto const sketch = FontBuilder::addOtherLayer(glyph, "sketch", "regular");
    auto const layer = add({ { "w", 550.0 } });
    endTurn();
    TLDeleteLayer(*layer);
    endTurn();
    EXPECT_EQ(history().undoTitle(), "Delete Layer");
    TLDeleteLayer(*sketch);
    EXPECT_EQ(glyph->layers().size(), 2U);
    EXPECT_TRUE(TLReasonAgainstDeletingLayer(*glyph->layerForId("bold")));
    TLDeleteLayer(*glyph->layerForId("bold"));
    EXPECT_EQ(glyph->layers().size(), 2U);
    history().undo();
    history().undo();
    EXPECT_EQ(glyph->layerForId(layer->layerId())->coordinates(), (TLCoordinates { { "w", 550 } }));
}
