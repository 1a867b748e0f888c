#include "Typloom/TyploomCore/TLDocumentHistory.h"

#include "Platform/Foundation/NSMainQueue.h"
#include "Tests/Support/FontBuilder.h"

#include <gtest/gtest.h>

#include <random>

namespace {

/// Ends the turn in which changes were made.
void endTurn()
{
    NSMainQueue::runPending();
    NSMainQueue::runPending();
}

TLOutline triangle(double x)
{
    TLOutline outline;
    outline.advance = 500;
    outline.contours.push_back({ { { x, 0 }, { x + 100, 0 }, { x, 100 } } });
    return outline;
}

TLComponent variableComponent(std::string base, std::map<std::string, double> location)
{
    TLComponent component;
    component.base = std::move(base);
    component.location = std::move(location);
    component.isVariable = true;
    return component;
}

class TLDocumentHistoryTest : public testing::Test {
protected:
    TLDocumentHistoryTest()
    {
        builder.addAxis("w", "Weight", { 0, 100, 900 });
        builder.addMaster("regular", { { "w", 100 } });
        builder.addMaster("bold", { { "w", 900 } });
        font = builder.font();
        glyph = builder.addEmptyGlyph("a");
        FontBuilder::addMasterLayer(glyph, "regular", triangle(0));
        FontBuilder::addMasterLayer(glyph, "bold", triangle(50));
        axis = FontBuilder::addGlyphAxis(glyph, "x", "flip", { 0, 0, 100 });
        layer = FontBuilder::addBraceLayer(
            glyph, "flipped", "regular", { { "w", 100 }, { "x", 100 } }, triangle(9));
        endTurn();
        font->history().clear();
    }

    TLDocumentHistory& history() { return font->history(); }

    FontBuilder builder;
    std::shared_ptr<TLFont> font;
    std::shared_ptr<TLGlyph> glyph;
    std::shared_ptr<TLAxis> axis;
    std::shared_ptr<TLLayer> layer;
};

} // namespace

TEST_F(TLDocumentHistoryTest, whatFilesCannotHoldDoesNotGetIntoTheDocument)
{
    axis->setName("f\x01lo\xEF\xBF\xBFp\n");
    EXPECT_EQ(axis->name(), "flop\n");
    axis->setDefaultValue(2e15);
    EXPECT_EQ(axis->defaultValue(), 0);
    layer->setCoordinates({ { "w", 1e300 }, { "x", 7 } });
    EXPECT_EQ(layer->coordinates(), (TLCoordinates { { "x", 7 } }));
}

TEST_F(TLDocumentHistoryTest, everythingOfOneTurnIsOneStepNamedAfterItsWeightiestChange)
{
    auto const before = glyph->state();
    glyph->removeObjectFromAxesAtIndex(0);
    layer->setCoordinates({ { "w", 100 } });
    endTurn();
    auto const after = glyph->state();
    EXPECT_EQ(history().undoTitle(), "Delete Axis");

    history().undo();
    EXPECT_TRUE(glyph->state() == before);
    EXPECT_FALSE(history().canUndo());
    EXPECT_EQ(glyph->layerForId("flipped"), layer) << "a layer that stays keeps its object";
    EXPECT_EQ(layer->coordinates(), (TLCoordinates { { "w", 100 }, { "x", 100 } }));

    history().redo();
    EXPECT_TRUE(glyph->state() == after);
    EXPECT_FALSE(history().canRedo());
}

TEST_F(TLDocumentHistoryTest, renamingOneAxisIsOneStepUntilItIsEnded)
{
    for (auto const* name : { "f", "fl", "flo", "flop" }) {
        axis->setName(name);
        endTurn();
    }
    history().endStep();
    axis->setName("Flop");
    endTurn();

    history().undo();
    EXPECT_EQ(glyph->axes()[0]->name(), "flop");
    EXPECT_NE(glyph->axes()[0], axis) << "a row that compares axis objects has to see the change";
    EXPECT_EQ(glyph->axes()[0]->axisId(), "x");
    history().undo();
    EXPECT_EQ(glyph->axes()[0]->name(), "flip");
    EXPECT_FALSE(history().canUndo());
    EXPECT_FALSE(history().isModified());
}

TEST_F(TLDocumentHistoryTest, aRenameThatReturnsToItsBeginningIsNoStep)
{
    axis->setName("flop");
    endTurn();
    axis->setName("flip");
    endTurn();
    EXPECT_FALSE(history().canUndo());
}

TEST_F(TLDocumentHistoryTest, aGestureOfManyTurnsIsOneStep)
{
    history().beginGesture();
    for (double x : { 1, 2, 3 }) {
        layer->setOutline(triangle(x));
        endTurn();
    }
    history().endGesture();
    EXPECT_EQ(history().undoTitle(), "Move Nodes");
    history().undo();
    EXPECT_EQ(layer->outline(), triangle(9));
    EXPECT_FALSE(history().canUndo());
}

TEST_F(TLDocumentHistoryTest, theDocumentIsModifiedExactlyWhereItDiffersFromItsFiles)
{
    auto const asRead = glyph->state();
    axis->setDefaultValue(5);
    EXPECT_TRUE(history().isModified()) << "before the turn has ended, too";
    endTurn();
    ASSERT_EQ(history().modifiedGlyphs().size(), 1u);
    EXPECT_TRUE(history().modifiedGlyphs().begin()->second == asRead);

    history().didSave();
    EXPECT_FALSE(history().isModified());
    history().undo();
    EXPECT_TRUE(history().isModified()) << "undone behind the place that was saved";
    history().redo();
    EXPECT_FALSE(history().isModified());

    font->fontMasters()[1]->setAxisInternalValue(800, "w");
    endTurn();
    EXPECT_TRUE(history().isModified());
    EXPECT_EQ(history().savedFont().masters[1].values.at("w"), 900);
    history().undo();
    EXPECT_EQ(font->fontMasters()[1]->axisInternalValueValueForId("w"), 900);
    EXPECT_FALSE(history().isModified());
}

/// An earlier step of another glyph would lead to a state in which the reloaded one was another, too.
TEST_F(TLDocumentHistoryTest, aReloadedGlyphTakesItsStepsAlongAndThoseBeforeThem)
{
    auto const other = builder.addEmptyGlyph("b");
    auto const drawing = FontBuilder::addMasterLayer(other, "regular", triangle(0));
    endTurn();
    history().clear();
    drawing->setOutline(triangle(5));
    endTurn();
    axis->setName("flop");
    endTurn();
    drawing->setOutline(triangle(7));
    endTurn();
    history().didReload(*glyph);

    history().undo();
    EXPECT_EQ(drawing->outline(), triangle(5));
    EXPECT_FALSE(history().canUndo());
    EXPECT_EQ(glyph->axes()[0]->name(), "flop");
    ASSERT_EQ(history().modifiedGlyphs().size(), 1u) << "the reloaded glyph is as in its files";
    EXPECT_TRUE(history().modifiedGlyphs().contains("b"));
}

TEST_F(TLDocumentHistoryTest, componentsThatNameAnAxisFollowItsNameAndItsEnd)
{
    auto outline = triangle(0);
    auto const middle
        = builder.addEmptyGlyph("middle"); // Hands values on to "a" and has no axis of that name.
    outline.components = { variableComponent("a", {}) };
    FontBuilder::addMasterLayer(middle, "regular", outline);
    auto const top = builder.addEmptyGlyph("top");
    outline.components = { variableComponent("a", { { "flip", 1 }, { "other", 2 } }),
        variableComponent("middle", { { "flip", 3 } }), variableComponent("b", { { "flip", 4 } }) };
    auto const shown = FontBuilder::addMasterLayer(top, "regular", outline);
    FontBuilder::addGlyphAxis(builder.addEmptyGlyph("b"), "y", "flip", { 0, 0, 100 });
    endTurn();
    history().clear();
    auto const locations = [&shown] {
        std::vector<std::map<std::string, double>> all;
        for (auto const& component : shown->outline().components) {
            all.push_back(component.location);
        }
        return all;
    };
    using Locations = std::vector<std::map<std::string, double>>;
    Locations const asRead { { { "flip", 1 }, { "other", 2 } }, { { "flip", 3 } }, { { "flip", 4 } } };

    axis->setName("flop");
    endTurn();
    EXPECT_EQ(
        locations(), (Locations { { { "flop", 1 }, { "other", 2 } }, { { "flop", 3 } }, { { "flip", 4 } } }));
    history().undo();
    EXPECT_EQ(locations(), asRead);

    glyph->removeObjectFromAxesAtIndex(0);
    endTurn();
    EXPECT_EQ(locations(), (Locations { { { "other", 2 } }, {}, { { "flip", 4 } } }));
    history().undo();
    EXPECT_EQ(locations(), asRead);
}

/// On the way to a longer name lies the name of the font's axis, which the location has, too.
TEST_F(TLDocumentHistoryTest, namesOnTheWayOfARenameLeaveNothingBehind)
{
    TLOutline outline = triangle(0);
    outline.components = { variableComponent("a", { { "flip", 50 }, { "Weight", 184 } }) };
    auto const shown = FontBuilder::addMasterLayer(builder.addEmptyGlyph("top"), "regular", outline);
    endTurn();
    history().clear();
    for (auto const* name : { "W", "Weight", "Weight s", "Weight shift" }) {
        axis->setName(name);
        endTurn();
    }
    EXPECT_EQ(shown->outline().components[0].location,
        (std::map<std::string, double> { { "Weight shift", 50 }, { "Weight", 184 } }));
    history().undo();
    EXPECT_EQ(shown->outline(), outline);
    EXPECT_FALSE(history().canUndo());
}

TEST_F(TLDocumentHistoryTest, anAxisOfSeveralDimensionsTakesTheirCoordinatesAlong)
{
    auto const turning = FontBuilder::addGlyphAxis(glyph, "r", "rotate", { 0, 0, 100 });
    turning->setPartIds({ "r1", "r2" });
    layer->setCoordinates({ { "w", 100 }, { "r1", 10 }, { "r2", 20 } });
    endTurn();
    glyph->removeObjectFromAxesAtIndex(1);
    endTurn();
    EXPECT_EQ(layer->coordinates(), (TLCoordinates { { "w", 100 } }));
    history().undo();
    EXPECT_EQ(layer->coordinates(), (TLCoordinates { { "w", 100 }, { "r1", 10 }, { "r2", 20 } }));
}

TEST_F(TLDocumentHistoryTest, aGlyphsOwnLayersOnAMastersPlaceMoveWithTheMaster)
{
    font->fontMasters()[0]->setAxisInternalValue(150, "w");
    endTurn();
    EXPECT_EQ(layer->coordinates(), (TLCoordinates { { "w", 150 }, { "x", 100 } }));
    history().undo();
    EXPECT_EQ(layer->coordinates(), (TLCoordinates { { "w", 100 }, { "x", 100 } }));
    EXPECT_FALSE(history().canUndo());
}

/// Whatever is done, undoing it all and doing it again leads over the same states.
TEST_F(TLDocumentHistoryTest, undoAndRedoLeadOverTheSameStatesAfterAnyChanges)
{
    std::mt19937 random(20261123);
    auto const pick = [&random](std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(random);
    };
    auto const changeSomething = [&] {
        auto const& axes = glyph->axes();
        auto const& layers = glyph->layers().entries();
        auto const someLayer = layers[pick(layers.size())].second;
        auto const number = static_cast<double>(pick(1000));
        switch (pick(8)) {
        case 0:
            return glyph->insertObjectInAxesAtIndex(std::make_shared<TLAxis>(), pick(axes.size() + 1));
        case 1:
            return axes.size() > 1 ? glyph->removeObjectFromAxesAtIndex(pick(axes.size()))
                                   : axes[0]->setName("q");
        case 2:
            return axes[pick(axes.size())]->setName("n" + std::to_string(pick(50)));
        case 3:
            return axes[pick(axes.size())]->setDefaultValue(number);
        case 4:
            return someLayer->setCoordinates({ { axes[pick(axes.size())]->axisId(), number } });
        case 5:
            return someLayer->setOutline(triangle(number));
        case 6:
            FontBuilder::addBraceLayer(glyph, "l" + std::to_string(pick(9)), "bold", { { "w", number } });
            return;
        default:
            return font->fontMasters()[pick(2)]->setAxisInternalValue(number, "w");
        }
    };
    using Both = std::pair<TLGlyphState, TLFontState>;
    auto const now = [this] { return Both { glyph->state(), font->state() }; };
    std::vector<Both> states { now() };
    for (int step = 0; step < 400; ++step) {
        changeSomething();
        history().endStep();
        if (!(states.back() == now())) {
            states.push_back(now());
        }
    }
    ASSERT_GT(states.size(), 300u);
    for (auto index = states.size() - 1; index-- > 0;) {
        history().undo();
        ASSERT_TRUE(now() == states[index]) << index;
    }
    EXPECT_FALSE(history().canUndo());
    EXPECT_FALSE(history().isModified());
    for (std::size_t index = 1; index < states.size(); ++index) {
        history().redo();
        ASSERT_TRUE(now() == states[index]) << index;
    }
    EXPECT_FALSE(history().canRedo());
}
