#include "Tests/TyploomApp/EditFamily.h"
#include "Typloom/TyploomApp/TLEditState.h"
#include "Typloom/TyploomCore/TLDocumentHistory.h"

#include <gtest/gtest.h>

namespace {

/// What the view shows after the document has changed under it. The text A B C, with A edited.
struct EditStateSettlingTest : testing::Test {
    EditFamily family;
    TLEditState state { family.font() };
    std::shared_ptr<UpdateCounter> updates;

    EditStateSettlingTest()
    {
        state.setGlyphNames({ "A", "B", "C" }, 0);
        updates = UpdateCounter::make();
        updates->take();
        history().clear();
    }
    TLDocumentHistory& history() const { return family.font()->history(); }
    void undo() const
    {
        history().undo();
        updates->take();
    }
    void redo() const
    {
        history().redo();
        updates->take();
    }
    std::string shownLayer() const { return state.activeLayer() ? state.activeLayer()->layerId() : "none"; }
    static std::optional<double> weightOf(std::shared_ptr<TLLayer> const& layer)
    {
        return layer->axisInternalValueValue("wght");
    }
    /// The layer under the preview reports the preview's place, its twin in the dictionary the truth.
    void expectMarkOnLight(std::optional<double> place) const
    {
        auto const light = family.a->layerForId("light");
        EXPECT_EQ(weightOf(light), place.value_or(0));
        EXPECT_EQ(weightOf(family.a->layers().find("light")), 0);
        EXPECT_EQ(family.a->layers().find("light") == light, !place);
    }
};

TLLocation weight(double value)
{
    return { { "wght", value } };
}

} // namespace

TEST_F(EditStateSettlingTest, aShownLayerThatIsGoneGivesWayToTheCurrentMasters)
{
    state.setMasterIndex(1);
    state.switchToLayer("A-700", { 0, 1 });
    updates->take();
    family.a->removeLayer("A-700");
    updates->take();
    EXPECT_EQ(state.activeLayer(), family.a->layerForId("bold"));
    EXPECT_EQ(state.line().objects()[0].layerId, "bold");
    EXPECT_FALSE(state.showsInterpolation());
    undo();
    EXPECT_EQ(shownLayer(), "bold") << "where it stands is no part of the document";

    history().clear();
    FontBuilder::addBraceLayer(family.a, "new", "light", { { "wght", 300 } });
    state.switchToLayer("new", { 0, 1 });
    updates->take();
    EXPECT_EQ(shownLayer(), "new");
    undo();
    EXPECT_EQ(state.activeLayer(), family.a->layerForId("bold"));
    redo();
    state.switchToLayer("new", { 0, 1 });
    EXPECT_EQ(state.activeLayer(), family.a->layerForId("new")) << "another object than before";
}

TEST_F(EditStateSettlingTest, aPreviewStaysWhileLayersComeAndGoUnderIt)
{
    state.switchToLayer("A-700", { 0, 1 });
    state.setAxisLocation(weight(300));
    updates->take();
    auto const preview = state.activeLayer();
    family.a->removeLayer("A-700");
    updates->take();
    EXPECT_EQ(state.axisLocation(), weight(300));
    EXPECT_EQ(state.activeLayer(), preview) << "one object for as long as it is shown";
    expectMarkOnLight(300);
    undo();
    EXPECT_EQ(state.activeLayer(), preview);
    state.setAxisLocation(std::nullopt);
    EXPECT_EQ(shownLayer(), "light") << "the layer that was shown before the preview has been away";
    expectMarkOnLight({});

    state.setAxisLocation(weight(300));
    auto const box = family.a->layerForId("light")->outline();
    family.a->removeLayer("light");
    updates->take();
    EXPECT_EQ(weightOf(state.activeLayer()), 300);
    FontBuilder::addMasterLayer(family.a, "light", box);
    updates->take();
    expectMarkOnLight(300);
    undo();
    undo();
    expectMarkOnLight(300);
    state.setMasterIndex(0);
    expectMarkOnLight({});
    EXPECT_EQ(state.activeLayer(), family.a->layerForId("light"));
}

TEST_F(EditStateSettlingTest, theCurrentMasterIsFollowedAndAGoneOneGivesWayToTheDefaultOne)
{
    state.setMasterIndex(1);
    updates->take();
    auto const medium = std::make_shared<TLFontMaster>("medium", "Medium");
    medium->setAxisInternalValue(500, "wght");
    family.font()->insertMaster(medium, 1);
    updates->take();
    EXPECT_EQ(state.masterIndex(), 2U);
    EXPECT_EQ(shownLayer(), "bold");
    undo();
    EXPECT_EQ(state.masterIndex(), 1U);

    redo();
    state.setMasterIndex(1);
    EXPECT_EQ(weightOf(state.activeLayer()), 500) << "where no glyph has a layer yet";
    undo();
    EXPECT_EQ(state.masterIndex(), 0U);
    EXPECT_EQ(state.activeLayer(), family.a->layerForId("light"));
    EXPECT_EQ(state.line().objects()[2].layerId, "light");
}

TEST_F(EditStateSettlingTest, aDisplayLocationLosesTheAxesThatAreGone)
{
    state.select({ 2, 0 });
    state.setAxisLocation(TLLocation { { "wght", 200.0 }, { "arm", 40.0 }, { "elsewhere", 1.0 } });
    updates->take();
    auto const preview = state.activeLayer();
    family.c->removeObjectFromAxesAtIndex(0);
    updates->take();
    EXPECT_EQ(state.axisLocation(), weight(200));
    EXPECT_EQ(state.activeLayer(), preview);
    EXPECT_EQ(preview->axisInternalValueValue("arm"), std::nullopt);
    undo();
    EXPECT_EQ(state.axisLocation(), weight(200));

    state.setAxisLocation(TLLocation { { "wght", 1000.0 }, { "arm", 40.0 } });
    updates->take();
    redo();
    EXPECT_EQ(state.axisLocation(), std::nullopt) << "what is left of the place is a master's";
    EXPECT_EQ(state.activeLayer(), family.c->layerForId("bold"));
    EXPECT_EQ(state.masterIndex(), 1U);
    EXPECT_EQ(updates->take(), 0);
}

TEST_F(EditStateSettlingTest, aDisplayLocationKeepsTheAxesOfAGlyphThatIsNotEditedNow)
{
    state.select({ 2, 0 });
    TLLocation const place { { "wght", 200.0 }, { "arm", 40.0 } };
    state.setAxisLocation(place);
    state.select({ 1, 0 });
    family.b->layerForId("light")->setOutline(boxOutline(410));
    updates->take();
    EXPECT_EQ(state.axisLocation(), place);
    EXPECT_EQ(updates->take(), 0) << "settling asks for no update of its own";
}
