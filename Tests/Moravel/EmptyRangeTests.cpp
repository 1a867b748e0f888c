#include "Moravel/AxisCellView.h"

#include "Platform/AppKit/NSStackView.h"
#include "Platform/Foundation/NSLocale.h"
#include "Tests/Support/FontBuilder.h"
#include "Tests/Support/RowBuilder.h"
#include "Tests/Support/ViewWindow.h"

#include <gmock/gmock.h>

using testing::HasSubstr;
using testing::StartsWith;
using Values = std::vector<double>;

class EmptyRange : public testing::Test {
protected:
    EmptyRange() { NSSetCurrentLocale("en_US"); }
    ~EmptyRange() override { NSSetCurrentLocale(""); }

    void show(Section section, double axisDefault)
    {
        axis = FontBuilder::makeAxis("bar", "Bar", { 0, axisDefault, 1000 });
        row = RowBuilder::row(state, { section, "bar" }, { axis, Values { 7, 7, 7 }, Values {}, 7 });
    }
    std::shared_ptr<NSStackView> hint() const
    {
        std::shared_ptr<NSStackView> found;
        for (auto const& view : row->subviews()) {
            if (auto const stack = std::dynamic_pointer_cast<NSStackView>(view)) {
                EXPECT_EQ(found, nullptr) << "there is one hint";
                found = stack;
            }
        }
        return found;
    }
    std::shared_ptr<NSButton> helpButton() const
    {
        return std::dynamic_pointer_cast<NSButton>(hint()->subviews().at(1));
    }
    /// What the help says that is open now.
    std::string helpText() const
    {
        auto const view = row->emptyRangePopover()->contentViewController()->view();
        return std::dynamic_pointer_cast<NSTextField>(view->subviews().at(0))->stringValue();
    }
    std::string helpFor(Section section, double axisDefault)
    {
        show(section, axisDefault);
        row->showEmptyRangeHelp(row);
        return helpText();
    }

    std::shared_ptr<TableState> state { std::make_shared<TableState>() };
    std::shared_ptr<TLAxis> axis;
    std::shared_ptr<AxisCellView> row;
};

TEST_F(EmptyRange, theHintIsMadeOnceAndOnlyWhenItIsNeeded)
{
    axis = FontBuilder::makeAxis("bar", "Bar", {});
    SidebarItem const item { Section::glyph, "bar" };
    row = RowBuilder::row(state, item, { axis, Values { 0, 0, 100 }, Values { 100 }, 0 });
    EXPECT_EQ(hint(), nullptr);
    state->setRowContentByItem({ { item, { axis, Values { 0, 0, 100 }, Values {}, 0 } } });
    row->reloadRowContent();
    auto const first = hint();
    ASSERT_NE(first, nullptr);
    EXPECT_FALSE(first->isHidden());
    EXPECT_EQ(std::dynamic_pointer_cast<NSTextField>(first->subviews().at(0))->stringValue(), "Empty range");
    state->setRowContentByItem({ { item, { axis, Values { 0, 0, 100 }, Values { 100 }, 0 } } });
    row->reloadRowContent();
    EXPECT_TRUE(first->isHidden());
    state->setRowContentByItem({});
    row->reloadRowContent();
    EXPECT_TRUE(hint()->isHidden()) << "nothing to explain without an axis";
}

TEST_F(EmptyRange, theHintStandsInThePlaceOfTheSlider)
{
    show(Section::glyph, 0);
    ViewWindow window(row, { 280, 60 });
    auto const frame = hint()->frame();
    EXPECT_NEAR(frame.origin.x, row->slider()->frame().origin.x, 1);
    EXPECT_NEAR(frame.midY(), row->slider()->frame().midY(), 1);
    EXPECT_LE(frame.maxX(), row->valueField()->frame().maxX());
    EXPECT_GT(frame.size.width, 60);
}

TEST_F(EmptyRange, theHelpNamesTheDefaultInTheUsersLocale)
{
    EXPECT_THAT(helpFor(Section::glyph, 0),
        HasSubstr("Intermediate layer for which this axis is different from "
                  "its default value of 0. Add an Intermediate layer"));
    EXPECT_THAT(helpFor(Section::font, 400.5),
        HasSubstr("no master for which this axis is different from its "
                  "default value of 400.5. Add a master"));
    EXPECT_THAT(helpFor(Section::glyph, 0.12345), HasSubstr("value of 0.123. "));
    EXPECT_THAT(helpFor(Section::glyph, 123456), HasSubstr("value of 123456. ")) << "no group separators";
    NSSetCurrentLocale("de_DE");
    EXPECT_THAT(helpFor(Section::font, 400.5), HasSubstr("value of 400,5. "));
}

TEST_F(EmptyRange, aPressOnTheHelpButtonOpensATransientPopoverThere)
{
    show(Section::glyph, 0);
    ViewWindow window(row, { 280, 60 });
    window.click(*helpButton());
    auto const first = row->emptyRangePopover();
    ASSERT_NE(first, nullptr);
    EXPECT_TRUE(first->isShown());
    EXPECT_EQ(first->behavior(), NSPopoverBehavior::transient);
    auto const content = first->contentViewController()->view();
    EXPECT_NEAR(content->subviews().at(0)->frame().size.width, 360, 1);

    row->showEmptyRangeHelp(helpButton());
    EXPECT_NE(row->emptyRangePopover(), first) << "each request makes a popover of its own";
    row->emptyRangePopover()->close();
    first->close();
}

TEST_F(EmptyRange, helpForAnAxisThatHasGoneShowsNothing)
{
    show(Section::glyph, 0);
    state->setRowContentByItem({});
    axis.reset();
    row->showEmptyRangeHelp(row);
    EXPECT_EQ(row->emptyRangePopover(), nullptr);
}

/// The colour of the row's picture at a place.
static QColor colorAt(NSView const& view, int x, int y)
{
    return qtWidget(view)->grab().toImage().pixelColor(x, y);
}

TEST_F(EmptyRange, theOutlineIsDrawnInTheAccentColourWhileTheAxisIsEdited)
{
    show(Section::glyph, 0);
    ViewWindow window(row, { 280, 60 });
    auto const middle = static_cast<int>(row->bounds().midY());
    auto const plain = colorAt(*row, 1, middle);
    state->setEditingItem(row->item());
    auto const accent = NSColor::controlAccentColor();
    auto const drawn = colorAt(*row, 1, middle);
    EXPECT_NEAR(drawn.redF(), accent.red, 0.02);
    EXPECT_NEAR(drawn.blueF(), accent.blue, 0.02);
    EXPECT_EQ(colorAt(*row, 4, middle), plain) << "two points wide, no fill";
    EXPECT_NE(colorAt(*row, 0, 0), drawn) << "rounded corners";
    state->setEditingItem(std::nullopt);
    EXPECT_EQ(colorAt(*row, 1, middle), plain);
}
