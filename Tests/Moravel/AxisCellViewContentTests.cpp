#include "Moravel/AxisCellView.h"

#include "Platform/AppKit/NSStackView.h"
#include "Platform/Foundation/NSLocale.h"
#include "Tests/Support/FontBuilder.h"
#include "Tests/Support/RowBuilder.h"

#include <gmock/gmock.h>

using testing::IsEmpty;
using Values = std::vector<double>;

static SidebarItem const fontItem { Section::font, "wght" };
static SidebarItem const glyphItem { Section::glyph, "bar" };

class AxisCellViewContent : public testing::Test {
protected:
    AxisCellViewContent() { NSSetCurrentLocale("en_US"); }
    ~AxisCellViewContent() override { NSSetCurrentLocale(""); }

    std::shared_ptr<AxisCellView> show(SidebarItem const& item, std::optional<Values> range,
        std::optional<Values> landmarks, double position)
    {
        return RowBuilder::row(state, item, { axis, std::move(range), std::move(landmarks), position });
    }
    static bool showsHint(AxisCellView const& row)
    {
        auto const& views = row.subviews();
        return std::ranges::any_of(views, [](std::shared_ptr<NSView> const& view) {
            return std::dynamic_pointer_cast<NSStackView>(view) && !view->isHidden();
        });
    }
    static void expectUnusable(AxisCellView const& row)
    {
        EXPECT_FALSE(row.slider()->isEnabled());
        EXPECT_FALSE(row.valueField()->isEnabled());
        EXPECT_EQ(row.valueField()->stringValue(), "");
        EXPECT_EQ(row.valueField()->placeholderString(), "––");
        EXPECT_THAT(row.stepPositions(), IsEmpty());
    }

    std::shared_ptr<TableState> state { std::make_shared<TableState>() };
    std::shared_ptr<TLAxis> axis { FontBuilder::makeAxis("wght", "Weight", { 0, 30, 100 }) };
};

TEST_F(AxisCellViewContent, aRangeWithoutThreeValuesIsTheAxisDefault)
{
    auto const row = show(fontItem, Values { 1, 2 }, std::nullopt, 7);
    expectUnusable(*row);
    EXPECT_EQ(row->slider()->minValue(), 30);
    EXPECT_EQ(row->slider()->maxValue(), 30);
    EXPECT_EQ(row->slider()->landmarks(), std::nullopt);
    EXPECT_TRUE(showsHint(*row));
}

TEST_F(AxisCellViewContent, aRowWithoutContentIsEmptyAndDisabledButItsSliderIsSeen)
{
    auto const expectNothing = [](AxisCellView& row) {
        row.reloadRowContent();
        expectUnusable(row);
        EXPECT_EQ(row.nameLabel()->stringValue(), "");
        EXPECT_FALSE(row.nameLabel()->isEnabled());
        EXPECT_FALSE(row.slider()->isHidden() || row.valueField()->isHidden() || showsHint(row));
        EXPECT_EQ(row.axis(), nullptr);
    };
    auto const row = show(fontItem, Values { 100, 400, 900 }, Values {}, 550);
    row->setItem(SidebarItem { Section::glyph, "wght" });
    expectNothing(*row);
    EXPECT_EQ(row->slider()->maxValue(), 1);
    row->setItem(std::nullopt);
    expectNothing(*row);
    row->setItem(fontItem);
    row->reloadRowContent();
    EXPECT_EQ(row->nameLabel()->stringValue(), "Weight");
    state.reset();
    EXPECT_EQ(row->tableState(), nullptr) << "a row does not keep the state";
    expectNothing(*row);
}

TEST_F(AxisCellViewContent, aRowReloadsWhenToldOfItsOwnItemOrOfNone)
{
    auto const row = show(fontItem, Values { 100, 400, 900 }, Values {}, 550);
    auto const reloadsAfter
        = [&](NSNotification::UserInfo const& userInfo, std::shared_ptr<TableState> const& from) {
              row->nameLabel()->setStringValue("old");
              NSNotificationCenter::defaultCenter().post(moravelRowContentDidChange, from, userInfo);
              return row->nameLabel()->stringValue() == "Weight";
          };
    EXPECT_TRUE(reloadsAfter({ { "item", fontItem } }, state));
    EXPECT_FALSE(reloadsAfter({ { "item", SidebarItem { Section::glyph, "wght" } } }, state));
    EXPECT_TRUE(reloadsAfter({}, state));
    EXPECT_TRUE(reloadsAfter({ { "item", std::string("wght") } }, state));
    EXPECT_FALSE(reloadsAfter({}, std::make_shared<TableState>())) << "another sidebar's state";

    row->prepareForReuse();
    EXPECT_FALSE(reloadsAfter({}, state));
    EXPECT_FALSE(row->item());
    EXPECT_EQ(row->axis(), nullptr);
    EXPECT_THAT(row->stepPositions(), IsEmpty());
    row->observeTableState();
    NSNotificationCenter::defaultCenter().post(moravelRowContentDidChange, std::make_shared<TableState>());
    EXPECT_EQ(row->nameLabel()->stringValue(), "") << "without a state it listens to everyone";
}

TEST_F(AxisCellViewContent, onlyTheRowOfTheEditedItemIsHighlighted)
{
    auto const row = show(glyphItem, Values { 0, 0, 100 }, Values { 100 }, 0);
    EXPECT_FALSE(row->isHighlighted());
    state->setEditingItem(SidebarItem { Section::font, "bar" });
    EXPECT_FALSE(row->isHighlighted());
    state->setEditingItem(glyphItem);
    EXPECT_TRUE(row->isHighlighted());
    EXPECT_FALSE(row->infoButton()->isHidden() || row->stepUpButton()->isHidden()) << "without the pointer";
    state->setEditingItem(std::nullopt);
    EXPECT_FALSE(row->isHighlighted());
    EXPECT_TRUE(row->infoButton()->isHidden() && row->stepDownButton()->isHidden());
    state->setEditingItem(glyphItem);
    row->prepareForReuse();
    EXPECT_FALSE(row->isHighlighted());
    EXPECT_TRUE(row->infoButton()->isHidden());
}

TEST_F(AxisCellViewContent, aReleasedRowObservesNothing)
{
    auto& center = NSNotificationCenter::defaultCenter();
    auto const before = center.observationCount();
    auto row = show(fontItem, Values { 100, 400, 900 }, Values {}, 550);
    EXPECT_EQ(center.observationCount(), before + 2);
    row->observeTableState();
    EXPECT_EQ(center.observationCount(), before + 2) << "subscribed once however often it is asked to";
    row.reset();
    EXPECT_EQ(center.observationCount(), before);
}
