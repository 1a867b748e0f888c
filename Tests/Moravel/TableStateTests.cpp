#include "Moravel/TableState.h"

#include "Platform/Foundation/NSNotificationCenter.h"
#include "Tests/Support/FontBuilder.h"
#include "Tests/Support/NotificationLog.h"

#include <gtest/gtest.h>

static SidebarItem const weight { Section::font, "wght" };
static SidebarItem const width { Section::font, "wdth" };
static SidebarItem const bar { Section::glyph, "bar" };

static RowContent content(std::shared_ptr<TLAxis> const& axis, double position)
{
    return { axis, std::vector<double> { 0, 0, 100 }, std::vector<double> { 0, 100 }, position };
}

class TableStateTest : public testing::Test {
protected:
    std::shared_ptr<TLAxis> weightAxis { FontBuilder::makeAxis("wght", "Weight", {}) };
    std::shared_ptr<TLAxis> widthAxis { FontBuilder::makeAxis("wdth", "Width", {}) };
    std::shared_ptr<TLAxis> barAxis { FontBuilder::makeAxis("bar", "Bar", {}) };
    std::shared_ptr<TableState> state { std::make_shared<TableState>() };
    RowContentByItem const contents { { weight, content(weightAxis, 1) }, { bar, content(barAxis, 2) } };
};

using Items = std::unordered_set<SidebarItem>;

TEST(SidebarItem, isItsSectionAndIdentifier)
{
    EXPECT_EQ((SidebarItem { Section::font, "a" }), (SidebarItem { Section::font, "a" }));
    EXPECT_NE((SidebarItem { Section::font, "a" }), (SidebarItem { Section::glyph, "a" }));
    EXPECT_EQ((Items { { Section::font, "a" }, { Section::glyph, "a" }, { Section::font, "a" } }).size(), 2U);
}

TEST_F(TableStateTest, rowContentsAreEqualByTheSameAxisObjectAndEqualValues)
{
    auto const one = content(weightAxis, 1);
    EXPECT_EQ(one, content(weightAxis, 1));
    EXPECT_NE(one, content(FontBuilder::makeAxis("wght", "Weight", {}), 1));
    EXPECT_NE(one, content(weightAxis, 2));
    auto other = one;
    other.range = { 0, 0, 101 };
    EXPECT_NE(one, other);
    other.range = std::nullopt;
    EXPECT_NE(one, other);
    other = one;
    other.landmarks = std::vector<double> {};
    auto absent = one;
    absent.landmarks = std::nullopt;
    EXPECT_NE(other, absent);
}

TEST_F(TableStateTest, startsEmpty)
{
    EXPECT_TRUE(state->rowContentByItem().empty());
    EXPECT_FALSE(state->editingItem());
}

TEST_F(TableStateTest, tellsOfANewEditingItemOnceAndOnlyWhenItIsAnother)
{
    NotificationLog log(moravelEditingStateDidChange, state);
    state->setEditingItem(std::nullopt);
    EXPECT_EQ(log.count(), 0U);
    state->setEditingItem(bar);
    state->setEditingItem(bar);
    EXPECT_EQ(log.count(), 1U);
    state->setEditingItem(SidebarItem { Section::font, "bar" });
    state->setEditingItem(std::nullopt);
    EXPECT_EQ(log.count(), 3U);
    EXPECT_TRUE(log.last()->userInfo().empty());
    EXPECT_EQ(log.last()->sender().identity, state);
}

TEST_F(TableStateTest, findsTheRowOfAnAxisByIdentity)
{
    state->setRowContentByItem(contents);
    EXPECT_EQ(state->itemForAxis(barAxis), bar);
    EXPECT_EQ(state->itemForAxis(FontBuilder::makeAxis("bar", "Bar", {})), std::nullopt);
}

TEST_F(TableStateTest, changedItemsAreNewOnesAndThoseOfAnotherContent)
{
    state->setRowContentByItem(contents);
    EXPECT_EQ(state->changedItems(contents, nullptr), Items {});
    EXPECT_EQ(
        state->changedItems({ { weight, content(weightAxis, 9) }, { bar, content(barAxis, 2) } }, nullptr),
        Items { weight });
    EXPECT_EQ(state->changedItems({ { weight, content(weightAxis, 1) } }, nullptr), Items {}) << "one left";
    EXPECT_EQ(state->changedItems({ { width, content(widthAxis, 1) } }, nullptr), Items { width })
        << "one came";
    EXPECT_EQ(state->rowContentByItem(), contents) << "nothing is replaced";
}

TEST_F(TableStateTest, theRowOfARefreshedAxisCountsAsChangedWhereItIsShownNow)
{
    state->setRowContentByItem(contents);
    EXPECT_EQ(state->changedItems(contents, barAxis), Items { bar });
    EXPECT_EQ(state->changedItems(contents, widthAxis), Items {});
    EXPECT_EQ(state->changedItems({}, barAxis), Items { bar }) << "its row is about to go";
    auto const fresh = std::make_shared<TableState>();
    EXPECT_EQ(fresh->changedItems({}, barAxis), Items {});
}

TEST_F(TableStateTest, tellsOncePerChangedRow)
{
    NotificationLog log(moravelRowContentDidChange, state);
    auto const other = std::make_shared<TableState>();
    NotificationLog otherLog(moravelRowContentDidChange, other);
    state->postRowContentChanges({});
    EXPECT_EQ(log.count(), 0U);
    state->postRowContentChanges({ weight, width, bar });
    Items told;
    for (auto const& notification : log.notifications()) {
        EXPECT_EQ(notification->sender().identity, state);
        told.insert(*notification->userInfoValue<SidebarItem>("item"));
    }
    EXPECT_EQ(log.count(), 3U);
    EXPECT_EQ(told, (Items { weight, width, bar }));
    EXPECT_EQ(otherLog.count(), 0U);
}
