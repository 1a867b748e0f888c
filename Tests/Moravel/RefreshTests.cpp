#include "Tests/Support/NotificationLog.h"
#include "Tests/Support/SidebarFixture.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

class Refresh : public SidebarFixture {
protected:
    static std::vector<SidebarItem> items(NotificationLog const& log)
    {
        std::vector<SidebarItem> told;
        for (auto const& notification : log.notifications()) {
            told.push_back(*notification->userInfoValue<SidebarItem>("item"));
        }
        return told;
    }
    NotificationLog rowLog() const
    {
        return NotificationLog(moravelRowContentDidChange, sidebar->tableState());
    }

    SidebarItem const weightItem { Section::font, "wght" };
    SidebarItem const barItem { Section::glyph, "bar" };
};

TEST_F(Refresh, beforeTheViewIsLoadedOnlyStoresTheContents)
{
    auto const log = rowLog();
    auto completions = 0;
    sidebar->applyTableModel(sidebar->makeTableModel(), weight, [&] { ++completions; });
    EXPECT_EQ(completions, 1);
    EXPECT_EQ(log.count(), 0U);
    EXPECT_EQ(sidebar->tableState()->rowContentByItem().count(weightItem), 1U);
    EXPECT_FALSE(sidebar->isViewLoaded());
}

TEST_F(Refresh, theAxisToRefreshIsToldInAnyCase)
{
    auto const bar = addBar();
    appear();
    auto const log = rowLog();
    bar->setName("Crossbar");
    refresh();
    EXPECT_EQ(rowAt(3)->nameLabel()->stringValue(), "Bar") << "equal content: the same axis object";
    sidebar->applyTableModel(sidebar->makeTableModel(), bar, {});
    EXPECT_THAT(items(log), ElementsAre(barItem));
    EXPECT_EQ(rowAt(3)->nameLabel()->stringValue(), "Crossbar");
    sidebar->applyTableModel(sidebar->makeTableModel(), FontBuilder::makeAxis("bar", "Bar", {}), {});
    EXPECT_EQ(log.count(), 1U) << "an axis in no row";
}

TEST_F(Refresh, aNewRowIsToldAfterItIsShownAndBeforeTheCompletion)
{
    appear();
    auto const row = rowAt(1);
    auto const log = rowLog();
    addBar();
    auto toldBefore = std::vector<SidebarItem> {};
    std::size_t rowsBefore = 0;
    sidebar->applyTableModel(sidebar->makeTableModel(), nullptr, [&] {
        toldBefore = items(log);
        rowsBefore = sidebar->tableView()->numberOfRows();
    });
    EXPECT_THAT(toldBefore, ElementsAre(barItem));
    EXPECT_EQ(rowsBefore, 4U);
    EXPECT_EQ(rowAt(1), row) << "rows that stay keep their views";
    EXPECT_EQ(rowAt(3)->nameLabel()->stringValue(), "Bar");
}

TEST_F(Refresh, thePlaceholderSaysWhyThereAreNoRows)
{
    appear();
    auto const placeholder = sidebar->placeholderView();
    EXPECT_TRUE(placeholder->isHidden());
    filterBy(" xyz ");
    EXPECT_EQ(sidebar->filterQuery(), "xyz");
    EXPECT_FALSE(placeholder->isHidden());
    EXPECT_EQ(placeholder->title(), "No Matches");
    EXPECT_EQ(placeholder->body(), "No axis matches the filter. Clear the filter to show all axes.");
    filterBy("");
    EXPECT_TRUE(placeholder->isHidden());
    EXPECT_EQ(placeholder->title(), "No Matches") << "hidden texts stay as they were";
    builder.font()->removeAxis(0);
    filterBy(" \t ");
    EXPECT_EQ(sidebar->filterQuery(), "");
    EXPECT_FALSE(placeholder->isHidden());
    EXPECT_EQ(placeholder->title(), "No Axes");
}

TEST_F(Refresh, withoutPlaceholderAndPlusButtonTheRowsAreShownAllTheSame)
{
    appear();
    sidebar->setPlaceholderView({});
    sidebar->setAddButton({});
    filterBy("xyz");
    EXPECT_EQ(sidebar->tableView()->numberOfRows(), 0U);
    filterBy("");
    EXPECT_EQ(sidebar->tableView()->numberOfRows(), 2U);
}

TEST_F(Refresh, typingInTheSearchFieldFiltersAtOnce)
{
    addBar();
    appear();
    window->click(*sidebar->filterField());
    window->type("wei");
    EXPECT_EQ(sidebar->filterQuery(), "wei");
    EXPECT_EQ(sidebar->tableView()->numberOfRows(), 2U);
    EXPECT_TRUE(sidebar->filterField()->isFirstResponder());
    window->pressKey(Qt::Key_Escape);
    EXPECT_EQ(sidebar->filterQuery(), "");
    EXPECT_EQ(sidebar->tableView()->numberOfRows(), 4U);
}

TEST_F(Refresh, textChangesOfOtherControlsAreIgnored)
{
    appear();
    sidebar->filterField()->setStringValue("xyz");
    auto const other = std::make_shared<NSSearchField>();
    sidebar->controlTextDidChange(std::make_shared<NSNotification>("change", other));
    sidebar->controlTextDidChange(std::make_shared<NSNotification>("change"));
    EXPECT_EQ(sidebar->filterQuery(), "");
    EXPECT_EQ(sidebar->tableView()->numberOfRows(), 2U);
}

TEST_F(Refresh, rowsScrolledOutOfSightAreReusedAndShowTheirOwnAxis)
{
    appear({ 280, 300 });
    scrollDownManyRows();
    for (std::size_t row = 0; row < 40; ++row) {
        sidebar->tableView()->scrollRowToVisible(row + 1);
        EXPECT_EQ(rowAt(row + 1)->item(), sidebar->dataSource()->snapshot().sections()[0].items[row]);
        EXPECT_EQ(rowAt(row + 1)->nameLabel()->stringValue(), rowAt(row + 1)->axis()->name());
    }
}
