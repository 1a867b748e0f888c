#include "Moravel/AxisCellView.h"
#include "Moravel/SidebarViewController.h"

#include "Tests/Support/EditViewDouble.h"
#include "Tests/Support/FontBuilder.h"
#include "Tests/Support/RowBuilder.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

/// A sidebar over an edit view's double, on a font of two masters on one axis.
class AxisPositionTest : public testing::Test {
protected:
    AxisPositionTest()
    {
        weight = builder.addAxis("wght", "Weight", { 400, 400, 700 });
        builder.addMaster("regular", { { "wght", 400 } });
        builder.addMaster("bold", { { "wght", 700 } });
        editor = std::make_shared<EditViewControllerDouble>(builder.font());
        sidebar->setController(editor);
    }
    /// Goes on to edit a glyph with an intermediate layer at 550.
    std::shared_ptr<TLGlyph> editGlyph()
    {
        auto glyph = builder.addGlyph("A");
        FontBuilder::addBraceLayer(glyph, "middle", "regular", { { "wght", 550 } });
        editor->layer = glyph->layerForId("regular");
        return glyph;
    }
    /// What a row's new value makes the sidebar ask of the host, in order.
    std::vector<std::string> callsForValue(double value, std::shared_ptr<TLAxis> const& axis)
    {
        editor->log->clear();
        sidebar->applyTableModel(sidebar->makeTableModel(), nullptr, {});
        auto const row = RowBuilder::rowForAxis(axis, Section::font);
        sidebar->axisCellViewDidChangeValue(row, value);
        return *editor->log;
    }
    std::vector<std::string> callsForWeight(double value) { return callsForValue(value, weight); }

    FontBuilder builder;
    std::shared_ptr<TLAxis> weight;
    std::shared_ptr<EditViewControllerDouble> editor;
    std::shared_ptr<SidebarViewController> sidebar { std::make_shared<SidebarViewController>() };
};

TEST_F(AxisPositionTest, withNoLayerEditedAMasterBecomesCurrentAndThePreviewEnds)
{
    EXPECT_THAT(callsForWeight(700), ElementsAre("reflow", "setMasterIndex 1", "setAxisLocation none"));
    editor->master = 1;
    EXPECT_THAT(callsForWeight(700), ElementsAre("reflow", "setAxisLocation none"))
        << "it is current already";
}

TEST_F(AxisPositionTest, withNoLayerEditedAnyOtherPointBecomesThePreview)
{
    EXPECT_THAT(callsForWeight(550), ElementsAre("reflow", "setAxisLocation wght=550"));
    EXPECT_THAT(callsForWeight(550.04), ElementsAre("reflow", "setAxisLocation wght=550"));
    EXPECT_THAT(callsForWeight(550.25), ElementsAre("reflow", "setAxisLocation wght=550.3"));
}

TEST_F(AxisPositionTest, onAMasterLayersPointItsMasterComesFirst)
{
    editGlyph();
    EXPECT_THAT(
        callsForWeight(700), ElementsAre("reflow", "setMasterIndex 1", "switchToLayer bold of bold at 0+1"));
    editor->master = 1;
    EXPECT_THAT(callsForWeight(700), ElementsAre("reflow", "switchToLayer bold of bold at 0+1"));
}

TEST_F(AxisPositionTest, onAnIntermediateLayersPointThatLayerIsShown)
{
    editGlyph();
    editor->view->selection = { 3, 0 };
    EXPECT_THAT(callsForWeight(550), ElementsAre("reflow", "switchToLayer middle of regular at 3+1"));
    editor->view->selection = { 2, 4 };
    editor->view->location = TLLocation { { "wght", 500.0 } };
    EXPECT_THAT(callsForWeight(550), ElementsAre("reflow", "switchToLayer middle of regular at 2+4"));
}

TEST_F(AxisPositionTest, onNoLayersPointTheCompletedLocationBecomesThePreview)
{
    auto const glyph = editGlyph();
    EXPECT_THAT(callsForWeight(600), ElementsAre("reflow", "setAxisLocation wght=600"));
    FontBuilder::addGlyphAxis(glyph, "bar", "Bar", { 0, 10, 100 });
    EXPECT_THAT(callsForWeight(600), ElementsAre("reflow", "setAxisLocation bar=10,wght=600"));
}

TEST_F(AxisPositionTest, theOtherAxesStayWhereThePreviewStands)
{
    auto const width = builder.addAxis("wdth", "Width", { 50, 100, 200 });
    builder.font()->fontMasters()[0]->setAxisInternalValue(100, "wdth");
    editor->view->location = TLLocation { { "wght", 550.0 } };
    EXPECT_THAT(callsForValue(150, width), ElementsAre("reflow", "setAxisLocation wdth=150,wght=550"));
    editor->view->location = TLLocation { { "wght", "heavy" }, { "note", "x" } };
    EXPECT_THAT(callsForValue(150, width), ElementsAre("reflow", "setAxisLocation wdth=150,wght=400"))
        << "what is no number gives way to the current master";
    editGlyph();
    editor->view->location = TLLocation { { "wght", "heavy" }, { "wdth", 120.0 } };
    EXPECT_THAT(callsForWeight(600), ElementsAre("reflow", "setAxisLocation wdth=120,wght=600"));
}

TEST_F(AxisPositionTest, aLayerWithoutAGlyphOnlyPreviews)
{
    auto const data = std::make_shared<TLLayer::Data>();
    data->kind = TLLayerKind::other;
    editor->layer = std::make_shared<TLLayer>(data);
    EXPECT_THAT(callsForWeight(700), ElementsAre("reflow", "setAxisLocation wght=700"));
}

TEST_F(AxisPositionTest, nothingIsAskedOfTheHostWhenAnythingIsMissing)
{
    auto const row = RowBuilder::rowForAxis(nullptr, Section::font);
    sidebar->axisCellViewDidChangeValue(row, 550);
    EXPECT_THAT(*editor->log, IsEmpty()) << "the axis has gone";
    editor->window->font = nullptr;
    EXPECT_THAT(callsForWeight(550), IsEmpty());
    editor->window = nullptr;
    EXPECT_THAT(callsForWeight(550), IsEmpty());
    auto const other = std::make_shared<GlyphViewControllerDouble>();
    sidebar->setController(other);
    EXPECT_THAT(callsForWeight(550), IsEmpty());
    sidebar->setController({});
    EXPECT_THAT(callsForWeight(550), IsEmpty());
}

TEST_F(AxisPositionTest, theMoveDoesNotDependOnWhenTheHostReflows)
{
    editor->reflow = Reflow::never;
    EXPECT_THAT(callsForWeight(700), ElementsAre("reflow"));
    editor->reflow = Reflow::twice;
    EXPECT_THAT(
        callsForWeight(550), ElementsAre("reflow", "setAxisLocation wght=550", "setAxisLocation wght=550"));
    editor->reflow = Reflow::later;
    editor->view->location = std::nullopt;
    EXPECT_THAT(callsForWeight(700), ElementsAre("reflow"));
    sidebar->setController({});
    editor->master = 1;
    std::weak_ptr<SidebarViewController> const released = std::exchange(sidebar, nullptr);
    EXPECT_FALSE(released.expired()) << "the callback holds what it needs";
    editor->pendingReflow(nullptr);
    EXPECT_THAT(*editor->log, ElementsAre("reflow", "setMasterIndex 1", "setAxisLocation none"))
        << "with the controller gone the index is set in any case";
    editor->pendingReflow = nullptr;
    EXPECT_TRUE(released.expired());
}

TEST_F(AxisPositionTest, aMasterThatTheFontDoesNotHaveIsNotMadeCurrent)
{
    auto const glyph = editGlyph();
    FontBuilder::addMasterLayer(glyph, "gone master", {});
    FontBuilder::addGlyphAxis(glyph, "bar", "Bar", { 0, 0, 100 });
    glyph->layers().find("gone master")->setCoordinates({ { "bar", 50 }, { "wght", 400 } });
    editor->view->location = TLLocation { { "bar", 50.0 } };
    EXPECT_THAT(
        callsForWeight(400), ElementsAre("reflow", "switchToLayer gone master of gone master at 0+1"));
}
