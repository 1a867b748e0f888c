#include "Tests/Program/SidebarWindow.h"

#include "Tests/Support/FontBuilder.h"

#include <QApplication>
#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

TEST_F(SidebarInWindow, aDragReportsEachMoveAcrossMastersAndLayersAndLeavesThemAgain)
{
    auto const weight = row("Weight");
    auto const knob = slider("Weight");
    window->press(*knob, fraction(*knob, 80));
    log->clear();
    struct Stop {
        double value;
        std::string state;
    };
    auto moves = 0;
    for (auto const& [value, state] : std::vector<Stop> { { 60, "Interpolated" }, { 24, "Thin" },
             { 50, "Interpolated" }, { 150, "Interpolated" }, { 184, "Black" }, { 140, "Interpolated" },
             { 80, "Regular" }, { 100, "Interpolated" } }) {
        window->moveTo(*knob, fraction(*knob, value));
        EXPECT_EQ(countOf("reflow"), ++moves);
        EXPECT_EQ(countOf("update"), moves) << "the host refreshes in between";
        EXPECT_EQ(document->stateText(), state) << value;
        EXPECT_TRUE(knob->isTracking());
        EXPECT_EQ(row("Weight"), weight) << "its view stays";
        EXPECT_NEAR(knob->doubleValue(), value, 1);
    }
    window->release(*knob, fraction(*knob, 100));
    EXPECT_FALSE(knob->isTracking());
    EXPECT_EQ(countOf("reflow"), moves);
    EXPECT_EQ(document->stateText(), "Interpolated");
}

TEST_F(SidebarInWindow, aDragGoesOnWhenLandingScrollsItsRowAway)
{
    showAtSize({ 1100, 330 });
    window->moveTo(*table(), 0.5, 0.5);
    table()->scrollRowToVisible(table()->numberOfRows() - 1);
    settle();
    ASSERT_GT(scrolled(), 20);
    auto const bowl = row("Bowl");
    auto const knob = slider("Bowl");
    window->press(*knob, fraction(*knob, 0));
    auto const place = [&](double value) { return fraction(*knob, value); };
    window->moveTo(*knob, place(50));
    EXPECT_GT(scrolled(), 20) << "a preview over the master does not scroll";
    window->moveTo(*knob, place(100));
    EXPECT_EQ(document->stateText(), "a bowl high");
    EXPECT_EQ(scrolled(), 0) << "another layer does";
    ASSERT_EQ(row("Bowl"), bowl);
    EXPECT_TRUE(knob->isTracking());
    window->moveTo(*knob, place(40));
    EXPECT_EQ(document->stateText(), "Interpolated");
    EXPECT_NEAR(knob->doubleValue(), 40, 1);
    window->release(*knob, place(40));
    EXPECT_FALSE(knob->isTracking());
}

TEST_F(SidebarInWindow, aDoubleClickResetsAndStaysReset)
{
    auto const knob = slider("Weight");
    window->doubleClick(*knob, fraction(*knob, 160));
    settle();
    EXPECT_EQ(knob->doubleValue(), 80);
    EXPECT_EQ(text("Weight"), "80");
    EXPECT_EQ(document->stateText(), "Regular");
    window->moveTo(*knob, fraction(*knob, 120));
    settle();
    EXPECT_EQ(knob->doubleValue(), 80);
    EXPECT_EQ(countOf("reflow"), 2) << "the first press, then the reset";
}

TEST_F(SidebarInWindow, hoveringShowsTheButtonsThatARowHasAndSteppingWraps)
{
    EXPECT_EQ(buttons("Weight"), "");
    window->moveTo(*row("Weight"));
    EXPECT_EQ(buttons("Weight"), "steps");
    EXPECT_EQ(buttons("Width"), "");
    std::vector<std::string> states;
    for (auto step = 0; step < 4; ++step) {
        window->click(*in<NSButton>(row("Weight"), "stepUpButton"));
        settle();
        states.push_back(document->stateText() + " " + text("Weight"));
    }
    window->click(*in<NSButton>(row("Weight"), "stepDownButton"));
    states.push_back(document->stateText() + " " + text("Weight"));
    EXPECT_THAT(states, ElementsAre("Black 184", "Thin 24", "Regular 80", "Black 184", "Regular 80"));
    window->moveTo(*row("Terminal"), 0.3, 0.2);
    EXPECT_EQ(buttons("Weight"), "");
    EXPECT_EQ(buttons("Terminal"), "info steps");
    window->moveTo(*row("Spur"), 0.3, 0.2);
    EXPECT_EQ(buttons("Spur"), "info") << "nowhere to step to";
    window->moveAway();
    EXPECT_EQ(buttons("Spur"), "");
}

TEST_F(SidebarInWindow, aTypedValueIsCommittedAndOutlivesWhatTheHostDoesMeanwhile)
{
    auto const field = in<NSTextField>(row("Weight"), "valueField");
    window->click(*field);
    window->type("15");
    document->goToLocation({ { "wght", 80.0 }, { "wdth", 110.0 } });
    settle();
    EXPECT_EQ(field->stringValue(), "15");
    EXPECT_EQ(text("Width"), "110");
    EXPECT_EQ(slider("Weight")->doubleValue(), 80) << "not before it is committed";
    window->type("0");
    window->pressKey(Qt::Key_Return);
    settle();
    EXPECT_EQ(slider("Weight")->doubleValue(), 150);
    EXPECT_EQ(slider("Width")->doubleValue(), 110) << "the other axes stay";
    EXPECT_EQ(document->stateText(), "Interpolated");
    window->type("9999");
    window->pressKey(Qt::Key_Return);
    settle();
    EXPECT_EQ(text("Weight"), "184");
}

TEST_F(SidebarInWindow, theFilterKeepsWhatMatchesAndSaysWhenNothingDoes)
{
    auto const placeholder = part<TLPlaceholderView>("placeholderView");
    EXPECT_TRUE(placeholder->isHidden());
    window->click(*part<NSSearchField>("filterField"));
    window->type(" W");
    EXPECT_EQ(table()->numberOfRows(), 5U) << "Weight, Width and Bowl, and two headers";
    window->type("ei");
    EXPECT_EQ(table()->numberOfRows(), 2U);
    EXPECT_NE(row("Weight"), nullptr);
    EXPECT_EQ(row("Width"), nullptr);
    window->type("rd");
    settle();
    EXPECT_EQ(table()->numberOfRows(), 0U);
    EXPECT_FALSE(placeholder->isHidden());
    EXPECT_EQ(placeholder->title(), "No Matches");
    document->sidebar()->widget()->hide();
    document->sidebar()->widget()->show();
    settle();
    EXPECT_EQ(table()->numberOfRows(), 0U);
    EXPECT_EQ(part<NSSearchField>("filterField")->stringValue(), " Weird") << "while it filters, it is shown";
    window->click(*part<NSSearchField>("filterField"));
    EXPECT_TRUE(part<NSSearchField>("filterField")->isFirstResponder());
    window->pressKey(Qt::Key_Escape);
    settle();
    EXPECT_EQ(table()->numberOfRows(), 7U);
    EXPECT_TRUE(placeholder->isHidden());
    EXPECT_THAT(takeLog(), testing::Each("rows")) << "nothing is asked of the host";
}

TEST_F(SidebarInWindow, aRightClickMovesNothing)
{
    window->click(*row("Weight"), 0.3, 0.2, Qt::RightButton);
    window->click(*slider("Weight"), 0.9, 0.5, Qt::RightButton);
    settle();
    EXPECT_THAT(takeLog(), IsEmpty());
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr) << "no menu";
    EXPECT_EQ(document->stateText(), "Regular");
}

TEST_F(SidebarInWindow, hundredsOfRowsScrollWithAFewViewsThatShowTheirOwnAxis)
{
    constexpr std::size_t count = 400;
    auto const font = document->font();
    for (std::size_t index = 0; index < count; ++index) {
        font->insertAxis(FontBuilder::makeAxis("x" + std::to_string(index), "Axis " + std::to_string(index),
                             { 0, static_cast<double>(index % 100), 100 }),
            2 + index);
    }
    settle();
    ASSERT_EQ(table()->numberOfRows(), count + 7);
    window->moveTo(*table());
    for (auto turn = 0; turn < 60; ++turn) {
        window->wheel(*table(), -120);
        std::size_t views = 0, hovered = 0;
        for (std::size_t index = 0; index < table()->numberOfRows(); ++index) {
            auto const view = table()->viewAtColumnRow(0, index, false);
            auto const label = view ? in<NSTextField>(view, "nameLabel") : nullptr;
            if (!label) {
                continue;
            }
            ++views;
            if (index > 2 && index < count + 3) {
                EXPECT_EQ(label->stringValue(), "Axis " + std::to_string(index - 3));
            }
            hovered += in<NSButton>(view, "stepUpButton")->isHidden() ? 0 : 1;
        }
        EXPECT_LT(views, 60U);
        EXPECT_LE(hovered, 1U) << "rows that pass under the pointer are left again";
    }
    EXPECT_GT(scrolled(), 1000);
}

namespace {
/// One event on the road from a row to the host and back.
struct RoadCase {
    std::string name;
    std::string axis;
    double value; ///< Where its slider goes.
    bool isGlyphEdited;
    std::vector<std::string> calls; ///< Between the request for a reflow and its end.
};

class SidebarRoad : public SidebarInWindow, public testing::WithParamInterface<RoadCase> { };

std::string const previewOfA = "setAxisLocation a/Bowl=0,a/Spur=0,a/Terminal=0,wdth=100,wght=150";
} // namespace

TEST_P(SidebarRoad, asksTheHostInOrderAndIsRefreshedByOneUpdate)
{
    auto const& [name, axis, value, isGlyphEdited, wanted] = GetParam();
    if (!isGlyphEdited) {
        document->setText("");
        settle();
    }
    auto const knob = slider(axis);
    auto const field = in<NSTextField>(row(axis), "valueField");
    window->click(*field);
    window->type(NSNumberDescription(value));
    log->clear();
    window->pressKey(Qt::Key_Return);
    settle();
    auto calls = wanted;
    calls.insert(calls.begin(), "reflow");
    calls.insert(calls.end(), { "laid out", "update", "rows" });
    EXPECT_EQ(takeLog(), calls);
    EXPECT_EQ(knob->doubleValue(), value);
    window->click(*knob, fraction(*knob, value));
    settle();
    EXPECT_EQ(std::ranges::count(*log, "rows"), 0) << "to the same place: nothing changes";
}

INSTANTIATE_TEST_SUITE_P(Road, SidebarRoad,
    testing::Values(RoadCase { "Master", "Weight", 184, true,
                        { "setMasterIndex 2", "switchToLayer Skarvane Black of Skarvane Black at 0+1" } },
        RoadCase { "IntermediateLayer", "Weight", 122, true,
            { "switchToLayer Skarvane SemiBold of Skarvane Regular at 0+1" } },
        RoadCase { "Between", "Weight", 150, true, { previewOfA } },
        RoadCase {
            "MasterWithNoGlyph", "Weight", 184, false, { "setMasterIndex 2", "setAxisLocation none" } },
        RoadCase { "BetweenWithNoGlyph", "Weight", 150, false, { "setAxisLocation wdth=100,wght=150" } }),
    [](auto const& tested) { return tested.param.name; });
