#include "Tests/TyploomApp/EditFamily.h"
#include "Typloom/TyploomApp/TLEditState.h"

#include <gtest/gtest.h>

namespace {

/// The text A B A C P X, with the first A edited.
struct TLEditStateTest : testing::Test {
    EditFamily family;
    TLEditState state { family.font() };
    std::shared_ptr<UpdateCounter> updates;

    TLEditStateTest()
    {
        state.setGlyphNames({ "A", "B", "A", "C", "P", "X" }, 0);
        updates = UpdateCounter::make();
    }
    void edit(std::size_t index) { state.select({ index, 0 }); }
    std::string shownLayer() const { return state.activeLayer() ? state.activeLayer()->layerId() : "none"; }
    std::optional<double> reportedWeight(TLLayer const& layer) const
    {
        return layer.axisInternalValueValue("wght");
    }
    bool activeLayerIsOfProxy() const
    {
        return dynamic_cast<TLInterpolationFontProxy*>(state.activeLayer()->valueForKey("font").get())
            != nullptr;
    }
};

TLLocation weight(double value)
{
    return { { "wght", value } };
}

} // namespace

TEST_F(TLEditStateTest, beginsOnTheDefaultMaster)
{
    FontBuilder builder;
    builder.addAxis("wght", "weight", { 100, 400, 700 });
    builder.addMaster("thin", { { "wght", 100 } });
    builder.addMaster("regular", { { "wght", 400 } });
    EXPECT_EQ(TLEditState(builder.font()).masterIndex(), 1U);
}

TEST_F(TLEditStateTest, showsThePreviewAsALayerOfAProxyInFrontOfTheRealFont)
{
    state.setAxisLocation(weight(300));
    auto const layer = state.activeLayer();
    auto const proxy = std::dynamic_pointer_cast<TLInterpolationFontProxy>(layer->valueForKey("font"));
    ASSERT_NE(proxy, nullptr);
    EXPECT_EQ(proxy->parentFont(), family.font());
    EXPECT_EQ(layer->font(), family.font());
    EXPECT_EQ(layer->glyph(), family.a);
    EXPECT_EQ(layer->layerId(), "light");
    EXPECT_EQ(reportedWeight(*layer), 300);
}

TEST_F(TLEditStateTest, keepsOnePreviewLayerWhileThePreviewMoves)
{
    state.setAxisLocation(weight(300));
    auto const layer = state.activeLayer();
    state.setAxisLocation(weight(310));
    EXPECT_EQ(state.activeLayer(), layer);
    EXPECT_EQ(reportedWeight(*layer), 310);
}

TEST_F(TLEditStateTest, letsTheLayerUnderThePreviewReportItsPlaceAndTheDictionaryTheTruth)
{
    auto const real = family.a->layerForId("light");
    state.setAxisLocation(weight(300));
    EXPECT_EQ(family.a->layerForId("light"), real) << "the table would scroll";
    EXPECT_EQ(reportedWeight(*real), 300);
    EXPECT_EQ(reportedWeight(*family.a->layers().find("light")), 0);
    EXPECT_EQ(reportedWeight(*family.a->layerForId("bold")), 1000);
    state.setAxisLocation(std::nullopt);
    EXPECT_EQ(reportedWeight(*real), 0);
    EXPECT_EQ(family.a->layers().find("light"), real);
}

TEST_F(TLEditStateTest, fillsThePreviewsOpenAxesFromTheCurrentMaster)
{
    state.setMasterIndex(1);
    state.setAxisLocation(TLLocation { { "unknown", 5.0 }, { "wght", std::string("text") } });
    EXPECT_EQ(reportedWeight(*state.activeLayer()), 1000);
    EXPECT_EQ(reportedWeight(*family.a->layerForId("bold")), 1000);
}

TEST_F(TLEditStateTest, takesThePlaceThatItHasAsNoChange)
{
    state.setAxisLocation(weight(300));
    EXPECT_EQ(updates->take(), 1);
    state.setAxisLocation(weight(300));
    EXPECT_EQ(updates->take(), 0);
    state.setAxisLocation(
        TLLocation { { "wght", 300.0 }, { "other", std::numeric_limits<double>::quiet_NaN() } });
    EXPECT_EQ(updates->take(), 0) << "what is no number would differ from itself";
    state.setAxisLocation(std::nullopt);
    EXPECT_EQ(updates->take(), 1);
    state.setAxisLocation(std::nullopt);
    EXPECT_EQ(updates->take(), 0);
}

TEST_F(TLEditStateTest, asksForOneUpdateForChangesThatComeTogether)
{
    state.setMasterIndex(1);
    state.switchToLayer("A-700", { 0, 1 });
    state.setAxisLocation(weight(20));
    EXPECT_EQ(updates->take(), 1);
    state.setMasterIndex(0);
    EXPECT_EQ(updates->take(), 1);
}

TEST_F(TLEditStateTest, endsThePreviewByEveryOneOfItsEnds)
{
    struct Case {
        char const* name;
        std::function<void(TLEditState&)> end;
        std::string shown;
    };
    Case const cases[] = {
        { "the same master", [](auto& edited) { edited.setMasterIndex(0); }, "light" },
        { "another master", [](auto& edited) { edited.setMasterIndex(1); }, "bold" },
        { "a layer",
            [](auto& edited) {
                edited.switchToLayer("A-700", { 0, 1 });
            },
            "A-700" },
        { "the layer below",
            [](auto& edited) {
                edited.switchToLayer("light", { 0, 1 });
            },
            "light" },
        { "no location", [](auto& edited) { edited.setAxisLocation(std::nullopt); }, "light" },
    };
    for (auto const& [name, end, shown] : cases) {
        SCOPED_TRACE(name);
        state.setMasterIndex(0);
        state.setAxisLocation(weight(300));
        end(state);
        EXPECT_EQ(state.axisLocation(), std::nullopt);
        EXPECT_FALSE(activeLayerIsOfProxy());
        EXPECT_EQ(shownLayer(), shown);
        EXPECT_EQ(reportedWeight(*family.a->layerForId("light")), 0);
    }
}

TEST_F(TLEditStateTest, endsThePreviewWithNoGlyphEditedToo)
{
    edit(6);
    ASSERT_EQ(state.activeLayer(), nullptr);
    state.setAxisLocation(weight(300));
    EXPECT_EQ(state.activeLayer(), nullptr);
    EXPECT_EQ(state.fontPlace(), weight(300));
    state.setMasterIndex(0);
    EXPECT_EQ(state.axisLocation(), std::nullopt);
    state.setAxisLocation(weight(300));
    state.switchToLayer("light", { 0, 1 });
    EXPECT_EQ(state.axisLocation(), std::nullopt);
}

TEST_F(TLEditStateTest, ignoresAMasterBeyondTheMasters)
{
    state.setAxisLocation(weight(300));
    state.setMasterIndex(2);
    EXPECT_EQ(state.masterIndex(), 0U);
    EXPECT_EQ(state.axisLocation(), weight(300));
}

TEST_F(TLEditStateTest, switchesEveryObjectInTheRangeThatHasTheLayer)
{
    state.switchToLayer("A-700", { 0, 2 });
    std::vector<std::string> shown;
    for (auto const& object : state.line().objects()) {
        shown.push_back(object.layerId);
    }
    EXPECT_EQ(shown, (std::vector<std::string> { "A-700", "light", "light", "light", "light", "light" }));
    state.switchToLayer("A-700", { 1, std::size_t(-1) });
    EXPECT_EQ(state.line().objects()[1].layerId, "light") << "B has no such layer";
    EXPECT_EQ(state.line().objects()[2].layerId, "A-700");
}

TEST_F(TLEditStateTest, ignoresASwitchThatReachesNothing)
{
    state.setAxisLocation(weight(300));
    updates->take();
    state.switchToLayer("A-700", { 1, 1 });
    state.switchToLayer("unknown", { 0, 6 });
    state.switchToLayer("A-700", { 9, 1 });
    EXPECT_EQ(state.axisLocation(), weight(300));
    EXPECT_EQ(updates->take(), 0);
}

TEST_F(TLEditStateTest, keepsTheDisplayLocationWhenAnotherGlyphBecomesEdited)
{
    state.setAxisLocation(weight(300));
    auto const before = state.activeLayer();
    edit(1);
    EXPECT_EQ(state.axisLocation(), weight(300));
    EXPECT_NE(state.activeLayer(), before);
    EXPECT_EQ(state.activeLayer()->glyph(), family.b);
    EXPECT_EQ(reportedWeight(*family.a->layerForId("light")), 0) << "the mark goes with the edited glyph";
    EXPECT_EQ(reportedWeight(*family.b->layerForId("light")), 300);
}

TEST_F(TLEditStateTest, staysAtTheMasterWhenAnotherGlyphBecomesEdited)
{
    state.switchToLayer("bold", { 0, 1 });
    edit(1);
    EXPECT_EQ(shownLayer(), "bold");
}

TEST_F(TLEditStateTest, goesFromAnIntermediateLayerToTheCurrentMasterWhenAnotherGlyphBecomesEdited)
{
    state.setMasterIndex(1);
    state.switchToLayer("A-700", { 0, 1 });
    edit(1);
    EXPECT_EQ(shownLayer(), "bold");
    edit(2);
    EXPECT_EQ(shownLayer(), "bold");
    edit(0);
    EXPECT_EQ(shownLayer(), "A-700") << "where this object was left";
}

TEST_F(TLEditStateTest, editsAGlyphInTheLineAsItIs)
{
    edit(1);
    state.editGlyph("C");
    EXPECT_EQ(state.line().selectedRange(), (NSRange { 3, 0 }));
    EXPECT_EQ(state.line().objects().size(), 6U);
    state.setGlyphNames({ "B", "B" }, 1);
    state.editGlyph("A");
    EXPECT_EQ(state.editedGlyph(), family.a);
    EXPECT_EQ(state.line().objects().size(), 3U);
    EXPECT_EQ(state.line().objects()[1].glyphName, "A");
}

TEST_F(TLEditStateTest, keepsALayerThatAnotherObjectWasSwitchedToTogether)
{
    state.switchToLayer("A-700", { 0, 3 });
    edit(2);
    EXPECT_EQ(shownLayer(), "A-700");
}

TEST_F(TLEditStateTest, showsAProxysLayerWhereTheGlyphHasNoneOfTheCurrentMaster)
{
    state.setMasterIndex(1);
    edit(4);
    EXPECT_TRUE(state.showsInterpolation());
    ASSERT_TRUE(activeLayerIsOfProxy());
    EXPECT_EQ(reportedWeight(*state.activeLayer()), 1000);
    auto const layer = state.activeLayer();
    state.setAxisLocation(weight(300));
    EXPECT_EQ(state.activeLayer(), layer) << "one object while it is shown";
    state.setAxisLocation(std::nullopt);
    EXPECT_EQ(state.activeLayer(), layer);
    EXPECT_EQ(reportedWeight(*layer), 1000);
}

TEST_F(TLEditStateTest, drawsTheLineWhereTheEditedGlyphStands)
{
    EXPECT_EQ(state.fontPlace(), weight(0));
    state.switchToLayer("A-700", { 0, 1 });
    EXPECT_EQ(state.fontPlace(), weight(700));
    edit(3);
    state.switchToLayer("C-arm", { 3, 1 });
    EXPECT_EQ(state.place(), (TLLocation { { "wght", 0.0 }, { "arm", 100.0 } }));
    EXPECT_EQ(state.fontPlace(), weight(0));
}

TEST_F(TLEditStateTest, standsAtTheMasterOnALayerThatStandsNowhere)
{
    auto const sketch = family.builder.addOtherLayer(family.c, "sketch", "light");
    sketch->setCoordinates({ { "arm", 50 }, { "wght", std::numeric_limits<double>::quiet_NaN() } });
    EXPECT_EQ(sketch->coordinates(), (TLCoordinates { { "arm", 50 } }));
    edit(3);
    state.switchToLayer("sketch", { 3, 1 });
    EXPECT_EQ(state.place(), weight(0));
}

TEST_F(TLEditStateTest, goesOntoTheLayerThatStandsAtALocation)
{
    state.goToLocation(weight(700));
    EXPECT_EQ(shownLayer(), "A-700");
    EXPECT_EQ(state.masterIndex(), 0U);
    state.goToLocation(weight(1000.000009));
    EXPECT_EQ(shownLayer(), "bold");
    EXPECT_EQ(state.masterIndex(), 1U);
    EXPECT_EQ(state.axisLocation(), std::nullopt);
    state.goToLocation({});
    EXPECT_EQ(shownLayer(), "light") << "axes that are not named stand at their default";
}

TEST_F(TLEditStateTest, goesToThePreviewWhereNoLayerStands)
{
    state.goToLocation(weight(700.00002));
    EXPECT_EQ(state.axisLocation(), weight(700.00002));
    edit(3);
    state.goToLocation({ { "arm", 40.0 } });
    EXPECT_EQ(state.axisLocation(), (TLLocation { { "wght", 0.0 }, { "arm", 40.0 } }));
}

TEST_F(TLEditStateTest, findsTheLayerUnderThePreviewByItsTruePlace)
{
    state.setAxisLocation(weight(300));
    state.goToLocation(weight(0));
    EXPECT_EQ(state.axisLocation(), std::nullopt);
    EXPECT_EQ(shownLayer(), "light");
}

TEST_F(TLEditStateTest, goesToAMasterOrPreviewWithNoGlyphEdited)
{
    edit(6);
    state.goToLocation(weight(1000));
    EXPECT_EQ(state.masterIndex(), 1U);
    state.goToLocation(weight(700));
    EXPECT_EQ(state.axisLocation(), weight(700));
}

TEST_F(TLEditStateTest, prefersALayerOfTheMasterThatIsEdited)
{
    family.builder.addBraceLayer(family.b, "B-light", "light", { { "wght", 500 } });
    family.builder.addBraceLayer(family.b, "B-bold", "bold", { { "wght", 500 } });
    edit(1);
    state.setMasterIndex(1);
    state.goToLocation(weight(500));
    EXPECT_EQ(shownLayer(), "B-bold");
    state.setMasterIndex(0);
    state.goToLocation(weight(500));
    EXPECT_EQ(shownLayer(), "B-light");
}

TEST_F(TLEditStateTest, copesWithAnEmptyTextAndAFontWithoutMasters)
{
    state.setGlyphNames({}, 0);
    EXPECT_EQ(state.activeLayer(), nullptr);
    EXPECT_EQ(state.fontPlace(), weight(0));
    FontBuilder builder;
    builder.addAxis("wght", "weight");
    builder.addEmptyGlyph("A");
    TLEditState bare(builder.font());
    bare.setGlyphNames({ "A", "gone" }, 0);
    EXPECT_TRUE(bare.showsInterpolation());
    bare.setAxisLocation(weight(300));
    bare.select({ 1, 0 });
    EXPECT_EQ(bare.activeLayer(), nullptr) << "a glyph that the font does not have";
}

TEST_F(TLEditStateTest, leavesNoMarkOnTheGlyphWhenItsWindowGoes)
{
    {
        TLEditState other(family.font());
        other.setGlyphNames({ "B" }, 0);
        other.setAxisLocation(weight(300));
        ASSERT_EQ(reportedWeight(*family.b->layerForId("light")), 300);
    }
    EXPECT_EQ(reportedWeight(*family.b->layerForId("light")), 0);
}

TEST_F(TLEditStateTest, putsAGlyphInThePlaceOfTheEditedOneOrAtTheCursor)
{
    state.showGlyphAtCursor("B");
    EXPECT_EQ(state.line().objects().front().glyphName, "B");
    EXPECT_EQ(state.line().objects().size(), 6U);
    edit(6);
    state.showGlyphAtCursor("C");
    EXPECT_EQ(state.line().objects().size(), 7U);
    EXPECT_EQ(state.editedGlyph(), family.c);
}
