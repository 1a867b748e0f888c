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

TEST_F(TableStateTest, theRowOfARefreshedAxisCountsAsChangedWhereItIsShownNow)
{
    state->setRowContentByItem(contents);
    EXPECT_EQ(state->changedItems(contents, barAxis), Items { bar });
    EXPECT_EQ(state->changedItems(contents, widthAxis), Items {});
    EXPECT_EQ(state->changedItems({}, barAxis), Items { bar }) << "its row is about to go";
    auto const fresh = std::make_shared<TableState>();
    EXPECT_EQ(fresh->changedItems({}, barAxis), Items {});
}
