#include "Tests/Support/NotificationLog.h"
#include "Tests/Support/SidebarFixture.h"
#include "Typloom/TyploomCore/TLUpdateInterface.h"
#include "Typloom/TyploomKit/TLCallbackHandler.h"

#include "Platform/Foundation/NSMainThread.h"

#include <gmock/gmock.h>

#include <thread>

using testing::HasSubstr;

class SidebarViewControllerTest : public SidebarFixture { };

TEST_F(SidebarViewControllerTest, registersItsClassOncePerLoad)
{
    auto const& registered = TLCallbackHandler::editViewLeftSidebarControllers();
    auto const before = registered.size();
    EXPECT_EQ(sidebar->interfaceVersion(), 1U);
    sidebar->loadPlugin();
    ASSERT_EQ(registered.size(), before + 1);
    auto const& added = registered.back();
    EXPECT_EQ(added.name, "SidebarViewController");
    EXPECT_EQ(added.title(), "Variation");
    auto const made = std::dynamic_pointer_cast<SidebarViewController>(added.make());
    ASSERT_NE(made, nullptr);
    EXPECT_NE(made, sidebar);
    EXPECT_EQ(made->title(), "Variation");
    EXPECT_FALSE(made->isViewLoaded());
}

TEST_F(SidebarViewControllerTest, theTabImageIsOneLargeSymbol)
{
    auto const image = SidebarViewController::tabBarImage();
    EXPECT_EQ(image->symbolName(), "slider.horizontal.below.rectangle");
    EXPECT_EQ(image->symbolConfiguration().scale, NSImageSymbolScale::large);
    EXPECT_EQ(image->accessibilityDescription(), std::nullopt);
    EXPECT_EQ(SidebarViewController::tabBarImage(), image);
}

TEST_F(SidebarViewControllerTest, canComeFromAnArchive)
{
    auto const archived = std::make_shared<SidebarViewController>();
    EXPECT_TRUE(archived->initWithCoder(NSCoder({ { "NSNibName", "SidebarViewController" },
        { "NSBundleIdentifier", "Moravel" }, { "NSTitle", "Old" } })));
    EXPECT_EQ(archived->title(), "Variation");
    archived->setController(editor);
    ViewWindow const itsWindow(archived->view());
    archived->viewDidAppear();
    EXPECT_EQ(archived->tableView()->numberOfRows(), 2U);

    NSCoder broken;
    broken.failWithError();
    EXPECT_FALSE(std::make_shared<SidebarViewController>()->initWithCoder(broken));
}

TEST_F(SidebarViewControllerTest, setsItsViewsUpWhenTheyAreLoaded)
{
    auto const view = sidebar->view();
    EXPECT_EQ(sidebar->tableView()->delegate(), sidebar);
    EXPECT_EQ(sidebar->filterField()->delegate(), sidebar);
    EXPECT_EQ(sidebar->addButton()->toolTip(), "Add Glyph Axis");
    EXPECT_EQ(sidebar->addButton()->action(), "addGlyphAxis:");
    EXPECT_EQ(sidebar->addButton()->target(), sidebar);
    EXPECT_EQ(sidebar->placeholderView()->title(), "No Axes");
    EXPECT_EQ(sidebar->placeholderView()->body(),
        "Add font axes in the Font tab in Font Info and glyph axes using the plus button below.");
    ASSERT_NE(sidebar->dataSource(), nullptr);
    EXPECT_EQ(sidebar->dataSource()->snapshot().numberOfSections(), 0U);
    EXPECT_EQ(sidebar->filterField()->placeholderString(), "Filter axes");
    EXPECT_NE(sidebar->filterField()->accessibilityLabel(), "");
    EXPECT_NE(sidebar->addButton()->accessibilityLabel(), "");
}

TEST_F(SidebarViewControllerTest, observesTheHostOnceHoweverOftenItsInterfaceIsLoadedAndUntilItGoes)
{
    auto& center = NSNotificationCenter::defaultCenter();
    auto const before = center.observationCount();
    auto view = sidebar->view();
    EXPECT_EQ(center.observationCount(), before + 1);
    auto const again = NSNib("SidebarViewController", RowBuilder::openBundle()).instantiateOrStop(sidebar);
    EXPECT_EQ(center.observationCount(), before + 1);
    center.post(TLUpdateInterface, editor, { { "anything", 1 } });
    EXPECT_EQ(sidebar->activeLayer(), editor->layer) << "whoever posts it";
    view.reset();
    sidebar.reset();
    EXPECT_EQ(center.observationCount(), before);
    center.post(TLUpdateInterface);
}

TEST_F(SidebarViewControllerTest, rowsHaveTheirContentAndReportToTheController)
{
    addBar();
    appear();
    ASSERT_EQ(sidebar->tableView()->numberOfRows(), 4U);
    auto const row = rowAt(1);
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->item(), (SidebarItem { Section::font, "wght" }));
    EXPECT_EQ(row->tableState(), sidebar->tableState());
    EXPECT_EQ(row->nameLabel()->stringValue(), "Weight");
    EXPECT_EQ(row->slider()->doubleValue(), 400);
    EXPECT_EQ(rowAt(3)->nameLabel()->stringValue(), "Bar");
    window->press(*row->slider(), 0.6);
    window->release(*row->slider(), 0.6);
    ASSERT_EQ(editor->log->size(), 2U);
    EXPECT_THAT(editor->log->at(1), HasSubstr("setAxisLocation bar=0,wght="));
}

TEST_F(SidebarViewControllerTest, sectionsHaveHeaders)
{
    addBar();
    appear();
    auto const headerAt = [&](std::size_t row) {
        auto const label = std::dynamic_pointer_cast<NSTextField>(viewAt(row));
        return label && !label->isEditable() ? label->stringValue() : "no label";
    };
    EXPECT_EQ(headerAt(0), "Font Axes");
    EXPECT_EQ(headerAt(2), "Glyph Axes");
}

TEST_F(SidebarViewControllerTest, aTableThatOutlivesItGetsEmptyViews)
{
    auto const view = sidebar->view();
    sidebar->viewDidAppear();
    auto const table = sidebar->tableView();
    auto const dataSource = sidebar->dataSource();
    std::weak_ptr<SidebarViewController> const released = std::exchange(sidebar, nullptr);
    EXPECT_TRUE(released.expired());
    SidebarSnapshot snapshot;
    snapshot.appendSection(Section::glyph);
    snapshot.appendItems({ { Section::glyph, "new" } });
    dataSource->applySnapshot(snapshot, false);
    ASSERT_EQ(table->numberOfRows(), 2U);
    for (std::size_t row = 0; row < 2; ++row) {
        auto const empty = table->viewAtColumnRow(0, row, true);
        ASSERT_NE(empty, nullptr);
        EXPECT_EQ(std::dynamic_pointer_cast<AxisCellView>(empty), nullptr);
        EXPECT_TRUE(empty->subviews().empty());
    }
}

TEST_F(SidebarViewControllerTest, closingPopoversThatAreNotItsEditorChangesNothing)
{
    sidebar->tableState()->setEditingItem(SidebarItem { Section::glyph, "bar" });
    auto const stranger = std::make_shared<NSNotification>("close", std::make_shared<NSPopover>());
    sidebar->popoverWillClose(stranger);
    sidebar->popoverDidClose(stranger);
    EXPECT_TRUE(sidebar->tableState()->editingItem());
    sidebar->popoverWillClose(std::make_shared<NSNotification>("close"));
    EXPECT_FALSE(sidebar->tableState()->editingItem()) << "no popover is the one that is not open";
}

TEST_F(SidebarViewControllerTest, reportsCallsFromOtherThreads)
{
    std::vector<std::string> messages;
    auto const before
        = NSSetMainThreadViolationHandler([&](auto const& message) { messages.push_back(message); });
    std::thread([&] {
        (void)sidebar->tableView();
        (void)SidebarViewController::tabTitle();
        (void)sidebar->tableState()->itemForAxis(weight);
    }).join();
    NSSetMainThreadViolationHandler(before);
    ASSERT_EQ(messages.size(), 3U);
    EXPECT_THAT(messages[0], HasSubstr("SidebarViewController+Outlets.cpp"));
    EXPECT_THAT(messages[1], HasSubstr("SidebarViewController.cpp"));
    EXPECT_THAT(messages[2], HasSubstr("TableState.cpp"));
}

using SidebarViewControllerDeathTest = SidebarViewControllerTest;

TEST_F(SidebarViewControllerDeathTest, aMissingOutletStopsTheProgram)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_DEATH(sidebar->viewDidLoad(), "tableView");
}
