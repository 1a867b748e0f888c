#include "Moravel/AxisCellView.h"

#include "Platform/Foundation/NSLocale.h"
#include "Tests/Support/FontBuilder.h"
#include "Tests/Support/RowBuilder.h"
#include "Tests/Support/RowDelegateDouble.h"
#include "Tests/Support/ViewWindow.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;
using Values = std::vector<double>;

/// A row in a window, under real events.
class AxisCellViewEvents : public testing::Test {
protected:
    AxisCellViewEvents()
    {
        NSSetCurrentLocale("en_US");
        show(Section::font, { 0, 0, 1000 }, { 0, 1000 }, 500);
    }
    ~AxisCellViewEvents() override { NSSetCurrentLocale(""); }

    void show(Section section, Values const& range, Values const& landmarks, double position)
    {
        window.reset();
        row = RowBuilder::row(state, { section, "wght" }, { axis, range, landmarks, position });
        row->setDelegate(delegate);
        window = std::make_unique<ViewWindow>(row, QSize { 280, 60 });
    }
    void refreshAt(double position)
    {
        SidebarItem const item { Section::font, "wght" };
        state->setRowContentByItem(
            { { item, { axis, Values { 0, 0, 1000 }, Values { 0, 1000 }, position } } });
        state->postRowContentChanges({ item });
    }

    std::shared_ptr<TableState> state { std::make_shared<TableState>() };
    std::shared_ptr<TLAxis> axis { FontBuilder::makeAxis("wght", "Weight", {}) };
    std::shared_ptr<RowDelegateDouble> delegate { std::make_shared<RowDelegateDouble>() };
    std::shared_ptr<AxisCellView> row;
    std::unique_ptr<ViewWindow> window;
};

TEST_F(AxisCellViewEvents, aDragReportsEveryMoveAndOutlivesTheRefreshesInBetween)
{
    delegate->onChange = [this](double value) { refreshAt(value); };
    auto const& slider = *row->slider();
    window->press(slider, 0.3);
    for (auto const x : { 0.4, 0.55, 0.7, 0.8 }) {
        window->moveTo(slider, x);
        EXPECT_TRUE(slider.isTracking());
        EXPECT_EQ(row->valueField()->stringValue(), NSNumberDescription(std::round(slider.doubleValue())));
    }
    window->release(slider, 0.8);
    EXPECT_FALSE(slider.isTracking());
    ASSERT_EQ(delegate->values.size(), 5U);
    EXPECT_TRUE(std::ranges::is_sorted(delegate->values));
    EXPECT_NEAR(delegate->values.front(), 300, 30);
    EXPECT_NEAR(delegate->values.back(), 800, 30);
    EXPECT_EQ(delegate->rows.front(), row);
}

TEST_F(AxisCellViewEvents, aDoubleClickGoesBackToTheDefaultAndStaysThere)
{
    delegate->onChange = [this](double value) { refreshAt(value); };
    window->doubleClick(*row->slider(), 0.7);
    EXPECT_EQ(row->slider()->doubleValue(), 0);
    EXPECT_EQ(row->valueField()->stringValue(), "0");
    ASSERT_EQ(delegate->values.size(), 2U) << "the first press, then the reset";
    EXPECT_NEAR(delegate->values.front(), 700, 30);
    EXPECT_EQ(delegate->values.back(), 0);
}

TEST_F(AxisCellViewEvents, steppingReportsLandmarksAndWrapsAround)
{
    show(Section::font, { 100, 400, 900 }, { 100, 900 }, 500);
    window->moveTo(*row);
    for (auto step = 0; step < 3; ++step) {
        window->click(*row->stepUpButton());
    }
    window->click(*row->stepDownButton());
    EXPECT_THAT(delegate->values, ElementsAre(900, 100, 400, 100));
    EXPECT_EQ(row->slider()->doubleValue(), 100);
    EXPECT_EQ(row->valueField()->stringValue(), "100");
}

TEST_F(AxisCellViewEvents, aTypedValueIsCommittedWithinTheRange)
{
    auto const& field = *row->valueField();
    window->click(field);
    window->type("250");
    EXPECT_THAT(delegate->values, IsEmpty()) << "not before it is committed";
    window->pressKey(Qt::Key_Return);
    EXPECT_THAT(delegate->values, ElementsAre(250));
    EXPECT_EQ(row->slider()->doubleValue(), 250);
    window->type("5000");
    window->pressKey(Qt::Key_Return);
    EXPECT_THAT(delegate->values, ElementsAre(250, 1000));
}

TEST_F(AxisCellViewEvents, whatIsNoNumberGivesTheOldValueBack)
{
    window->click(*row->valueField());
    window->type("heavy");
    window->pressKey(Qt::Key_Return);
    EXPECT_EQ(row->valueField()->stringValue(), "500");
    EXPECT_EQ(row->slider()->doubleValue(), 500);
    EXPECT_THAT(delegate->values, testing::Each(500));
}

TEST_F(AxisCellViewEvents, aRefreshWithTheSameValueLeavesTheTypingAlone)
{
    window->click(*row->valueField());
    window->type("25");
    refreshAt(500);
    EXPECT_EQ(row->valueField()->stringValue(), "25");
    EXPECT_TRUE(row->valueField()->isFirstResponder());
}

TEST_F(AxisCellViewEvents, whatTheRowsOwnActionsChooseTakesThePlaceOfTheTyping)
{
    auto const& field = *row->valueField();
    auto const typeThen = [&](double shown, auto const& act) {
        delegate->values.clear();
        refreshAt(shown);
        window->click(field);
        window->type("55");
        act();
        auto const chosen = row->slider()->doubleValue();
        EXPECT_EQ(field.stringValue(), NSNumberDescription(chosen));
        window->pressKey(Qt::Key_Return);
        EXPECT_EQ(delegate->values.back(), chosen) << "Return does not bring the typing back";
    };
    typeThen(0, [&] { window->doubleClick(*row->slider(), 0); });
    typeThen(1000, [&] {
        window->press(*row->slider(), 0.9);
        window->moveTo(*row->slider(), 1);
        window->release(*row->slider(), 1);
    });
    typeThen(1000, [&] { window->click(*row->stepUpButton()); });
}

TEST_F(AxisCellViewEvents, hoveringAFontRowShowsItsStepButtonsOnly)
{
    EXPECT_TRUE(row->stepDownButton()->isHidden() && row->stepUpButton()->isHidden());
    auto const sliderFrame = row->slider()->frame();
    auto const fieldFrame = row->valueField()->frame();
    window->moveTo(*row);
    EXPECT_FALSE(row->stepDownButton()->isHidden() || row->stepUpButton()->isHidden());
    EXPECT_TRUE(row->infoButton()->isHidden());
    EXPECT_EQ(row->slider()->frame(), sliderFrame) << "nothing moves";
    EXPECT_EQ(row->valueField()->frame(), fieldFrame);
    window->moveAway();
    EXPECT_TRUE(row->stepDownButton()->isHidden() && row->stepUpButton()->isHidden());
}

TEST_F(AxisCellViewEvents, hoveringAGlyphRowShowsItsInfoButtonToo)
{
    show(Section::glyph, { 0, 0, 100 }, { 100 }, 0);
    window->moveTo(*row);
    EXPECT_FALSE(row->stepUpButton()->isHidden() || row->infoButton()->isHidden());
    window->click(*row->infoButton());
    EXPECT_EQ(delegate->editorRequests, 1);
    show(Section::glyph, { 0, 0, 100 }, {}, 0);
    window->moveTo(*row, 0.5, 0.1);
    EXPECT_FALSE(row->infoButton()->isHidden());
    EXPECT_TRUE(row->stepUpButton()->isHidden()) << "nowhere to step to";
}

TEST_F(AxisCellViewEvents, oneTrackingAreaFollowsTheVisiblePartOfTheRow)
{
    row->updateTrackingAreas();
    row->updateTrackingAreas();
    ASSERT_EQ(row->trackingAreas().size(), 1U);
    EXPECT_EQ(row->trackingAreas()[0]->options(), 0x281U);
    EXPECT_EQ(row->trackingAreas()[0]->owner(), row);
}

TEST_F(AxisCellViewEvents, aRightClickAsksForTheEditorOnAnyRow)
{
    window->click(*row, 0.1, 0.2, Qt::RightButton);
    EXPECT_EQ(delegate->editorRequests, 1);
    EXPECT_EQ(delegate->rows.back(), row);
    window->click(*row->slider(), 0.5, 0.5, Qt::RightButton);
    EXPECT_EQ(delegate->editorRequests, 2) << "over the slider too";
    EXPECT_THAT(delegate->values, IsEmpty());
}

TEST_F(AxisCellViewEvents, withoutADelegateTheControlsStillFollow)
{
    row->setDelegate({});
    window->moveTo(*row);
    window->click(*row->stepUpButton());
    window->click(*row, 0.1, 0.2, Qt::RightButton);
    EXPECT_EQ(row->slider()->doubleValue(), 1000);
    EXPECT_EQ(row->valueField()->stringValue(), "1000");
    EXPECT_EQ(delegate->editorRequests, 0);
}

TEST_F(AxisCellViewEvents, showingAValueReportsNothing)
{
    refreshAt(700);
    refreshAt(100);
    EXPECT_EQ(row->slider()->doubleValue(), 100);
    EXPECT_THAT(delegate->values, IsEmpty());
}
