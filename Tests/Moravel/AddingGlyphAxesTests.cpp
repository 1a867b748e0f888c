#include "Platform/Foundation/NSMainQueue.h"
#include "Tests/Support/AxisEditorFixture.h"
#include "Tests/Support/NotificationLog.h"
#include "Tests/Support/TemporaryFolder.h"

#include <QLabel>

#include <fstream>

class AddingGlyphAxes : public AxisEditorFixture {
protected:
    std::shared_ptr<TLAxis> lastAxis() const { return glyph->axes().back(); }
    SidebarItem itemOf(TLAxis const& axis) const { return { Section::glyph, axis.axisId() }; }
};

TEST_F(AddingGlyphAxes, thePlusButtonAddsAnAxisAtTheEndAndOpensItsEditorToNameIt)
{
    NotificationLog const editing(moravelEditingStateDidChange, sidebar->tableState());
    clickPlus();
    ASSERT_EQ(glyph->countOfAxes(), 2U);
    EXPECT_EQ(glyph->axes().front(), bar);
    auto const added = lastAxis();
    EXPECT_EQ(added->name(), "Unnamed");
    EXPECT_EQ(added->defaultValue(), 0);
    for (auto const& [layerId, layer] : glyph->layers()) {
        EXPECT_FALSE(layer->coordinates().contains(added->axisId())) << layerId;
    }
    ASSERT_TRUE(isOpen());
    EXPECT_EQ(popover()->behavior(), NSPopoverBehavior::transient);
    EXPECT_EQ(axisEditor()->axis(), added);
    EXPECT_EQ(axisEditor()->glyph(), glyph);
    EXPECT_EQ(sidebar->tableState()->editingItem(), itemOf(*added));
    EXPECT_EQ(editing.count(), 1U);
    auto const row = rowAt(4);
    EXPECT_TRUE(row->isHighlighted());
    auto const* const rowWidget = qtWidget(*row);
    EXPECT_EQ(popoverWindow().x(), rowWidget->mapToGlobal(rowWidget->rect().topRight()).x() + 1);

    ASSERT_TRUE(QTest::qWaitForWindowActive(&popoverWindow()));
    EXPECT_TRUE(nameField().isFirstResponder());
    EXPECT_EQ(line(nameField()).selectedText(), "Unnamed");
    type("Serif");
    EXPECT_EQ(row->nameLabel()->stringValue(), "Serif");
    key(Qt::Key_Return);
    EXPECT_EQ(popover(), nullptr);
    EXPECT_EQ(sidebar->tableState()->editingItem(), std::nullopt);
    EXPECT_FALSE(row->isHighlighted());
    EXPECT_EQ(added->name(), "Serif");
}

TEST_F(AddingGlyphAxes, theEditorOpensOnALaterTurnWhereTheRowCanBeSeen)
{
    scrollDownManyRows();
    sidebar->tableView()->scrollRowToVisible(0);
    sidebar->addGlyphAxis(nullptr);
    EXPECT_EQ(popover(), nullptr);
    EXPECT_GT(scrollPosition(), 100) << "the new row can be seen already";
    sidebar->tableView()->scrollRowToVisible(0); // By something else meanwhile.
    NSMainQueue::runPending();
    ASSERT_TRUE(isOpen());
    auto const row = rowAt(sidebar->tableView()->numberOfRows() - 1);
    EXPECT_EQ(row->axis(), lastAxis());
    EXPECT_TRUE(row->isHighlighted());
    EXPECT_EQ(row->visibleRect().size, row->bounds().size);
}

TEST_F(AddingGlyphAxes, withoutAGlyphNothingIsAdded)
{
    editor->layer = nullptr;
    sidebar->addGlyphAxis(nullptr);
    refresh();
    clickPlus();
    EXPECT_EQ(glyph->countOfAxes(), 1U);
    EXPECT_EQ(popover(), nullptr);
}

TEST_F(AddingGlyphAxes, theTemporaryNameIsLookedUpInTheApplicationsTable)
{
    TemporaryFolder const application;
    auto const table = application.path() / "Resources" / "en.lproj";
    std::filesystem::create_directories(table);
    std::ofstream(table / "Localizable.strings") << R"("Unnamed" = "Nameless"; "Variation" = "Other";)";
    NSBundle::setMainBundlePath(application.path());
    sidebar->addGlyphAxis(nullptr);
    NSBundle::setMainBundlePath({});
    EXPECT_EQ(lastAxis()->name(), "Nameless");
}

TEST_F(AddingGlyphAxes, aSecondOneHasTheSameNameAndIsRefusedUntilItHasAnother)
{
    clickPlus();
    auto const first = lastAxis();
    auto const firstPopover = popover();
    clickPlus(); // Closes the open editor as any press outside does.
    auto const second = lastAxis();
    ASSERT_EQ(glyph->countOfAxes(), 3U);
    EXPECT_EQ(second->name(), "Unnamed");
    EXPECT_NE(second->axisId(), first->axisId());
    EXPECT_FALSE(firstPopover->isShown());
    ASSERT_TRUE(isOpen());
    EXPECT_EQ(axisEditor()->axis(), second);
    EXPECT_EQ(NSPopover::shownPopovers(), std::vector { popover() });
    key(Qt::Key_Return);
    EXPECT_EQ(beeps, 1);
    EXPECT_TRUE(isOpen());
    type("Second");
    key(Qt::Key_Return);
    EXPECT_EQ(beeps, 1);
    EXPECT_FALSE(isOpen());
}

TEST_F(AddingGlyphAxes, whatTheFilterHidesIsAddedAndNotEdited)
{
    filterBy("Bar");
    clickPlus();
    EXPECT_EQ(lastAxis()->name(), "Unnamed");
    EXPECT_EQ(popover(), nullptr);
    filterBy("unn");
    clickPlus();
    EXPECT_TRUE(isOpen());
}

TEST_F(AddingGlyphAxes, nothingOpensWhereTheRowHasGoneMeanwhileOrIsNotOnScreen)
{
    auto const addAnd = [this](std::function<void()> const& meanwhile) {
        sidebar->addGlyphAxis(nullptr);
        meanwhile();
        settle();
        EXPECT_EQ(popover(), nullptr);
        EXPECT_EQ(sidebar->tableState()->editingItem(), std::nullopt);
    };
    addAnd([this] {
        glyph->removeObjectFromAxesAtIndex(1);
        refresh();
    });
    addAnd([this] { qtWidget(*sidebar->view())->hide(); });
    qtWidget(*sidebar->view())->show();
    sidebar->addGlyphAxis(nullptr);
    sidebar.reset();
    settle();
    EXPECT_TRUE(NSPopover::shownPopovers().empty());
}

TEST_F(AddingGlyphAxes, aRowOpensTheEditorOfItsOwnGlyphAxisOnly)
{
    auto const stem = FontBuilder::addGlyphAxis(glyph, "stem", "Stem");
    refresh();
    window->click(*rowAt(weightRow), 0.3, 0.3, Qt::RightButton);
    sidebar->axisCellViewDidRequestAxisEditor(rowAt(weightRow));
    sidebar->axisCellViewDidRequestAxisEditor(RowBuilder::emptyRow());
    EXPECT_EQ(popover(), nullptr);
    window->click(*rowAt(4), 0.3, 0.3, Qt::RightButton);
    settle();
    ASSERT_TRUE(isOpen());
    EXPECT_EQ(axisEditor()->axis(), stem);
    EXPECT_TRUE(rowAt(4)->isHighlighted());
    clickInfo(barRow);
    ASSERT_TRUE(isOpen());
    EXPECT_EQ(axisEditor()->axis(), bar);
    EXPECT_TRUE(rowAt(barRow)->isHighlighted());
    EXPECT_FALSE(rowAt(4)->isHighlighted());
    popover()->close();

    auto const row = rowAt(barRow);
    glyph->removeObjectFromAxesAtIndex(0);
    sidebar->axisCellViewDidRequestAxisEditor(row);
    editor->layer = nullptr;
    sidebar->axisCellViewDidRequestAxisEditor(rowAt(4));
    EXPECT_EQ(popover(), nullptr);
}

TEST_F(AddingGlyphAxes, anEditorStaysForItsAxisAndGivesWayToAnother)
{
    auto const stem = FontBuilder::addGlyphAxis(glyph, "stem", "Stem");
    refresh();
    openBar();
    type("Ba");
    auto const first = popover();
    NotificationLog const editing(moravelEditingStateDidChange, sidebar->tableState());
    sidebar->axisCellViewDidRequestAxisEditor(rowAt(barRow));
    sidebar->showGlyphAxisEditor(bar, itemOf(*stem), glyph, rowAt(4));
    EXPECT_EQ(popover(), first);
    EXPECT_EQ(sidebar->tableState()->editingItem(), itemOf(*bar));
    EXPECT_EQ(nameField().stringValue(), "Ba");
    EXPECT_EQ(editing.count(), 0U);

    sidebar->axisCellViewDidRequestAxisEditor(rowAt(4));
    EXPECT_FALSE(first->isShown());
    EXPECT_TRUE(isOpen());
    EXPECT_EQ(editing.count(), 2U) << "none, then the other";
    auto const late = std::make_shared<NSNotification>("late", first);
    sidebar->popoverWillClose(late);
    sidebar->popoverDidClose(late);
    EXPECT_EQ(axisEditor()->axis(), stem);
    EXPECT_EQ(sidebar->tableState()->editingItem(), itemOf(*stem));
    EXPECT_EQ(bar->name(), "Ba");
}

TEST_F(AddingGlyphAxes, anotherEditorMayOpenWhileOneIsClosing)
{
    auto const stem = FontBuilder::addGlyphAxis(glyph, "stem", "Stem");
    refresh();
    openBar();
    struct Opener final : NSObject {
        std::function<void()> open;
        void act(std::shared_ptr<NSNotification> const&)
        {
            if (auto const once = std::exchange(open, nullptr)) {
                once();
            }
        }
        std::span<NSMethod const> methods() const override
        {
            static std::array const methods { NSMethodMake("act:", &Opener::act) };
            return methods;
        }
    };
    auto const opener = std::make_shared<Opener>();
    opener->open = [this] { sidebar->axisCellViewDidRequestAxisEditor(rowAt(4)); };
    auto& center = NSNotificationCenter::defaultCenter();
    center.addObserver(opener, "act:", moravelEditingStateDidChange, sidebar->tableState());
    popover()->close();
    center.removeObserver(opener.get());
    ASSERT_TRUE(isOpen());
    EXPECT_EQ(axisEditor()->axis(), stem);
    EXPECT_EQ(sidebar->tableState()->editingItem(), itemOf(*stem));
    EXPECT_EQ(NSPopover::shownPopovers().size(), 1U);
}

/// A way in which the editor's popover closes, other than by what is done in it.
struct Closing {
    char const* what;
    void (*act)(ViewWindow& window, SidebarViewController& sidebar);
};

TEST_F(AddingGlyphAxes, howeverItIsClosedTheAxisStaysAndWhatWasNotCommittedIsLost)
{
    for (auto const& [what, act] : {
             Closing {
                 "press outside", [](auto&shownIn, auto&shown) { shownIn.click(*shown.filterField()); } },
             Closing { "tab switched", [](auto&, auto&shown) { qtWidget(*shown.view())->hide(); } },
             Closing { "window hidden", [](auto&shownIn, auto&) { shownIn.widget().hide(); } },
             Closing { "by the host", [](auto&, auto&) { NSApplication::closeTransientPopovers(); } },
         }) {
        bar->setName("Bar");
        bar->setDefaultValue(7);
        appear();
        qtWidget(*sidebar->view())->show();
        openBar();
        std::weak_ptr<EditGlyphAxisViewController> const released = axisEditor();
        NotificationLog const editing(moravelEditingStateDidChange, sidebar->tableState());
        type("Typed");
        key(Qt::Key_Delete);
        replaceText(defaultField(), "55");
        act(*window, *sidebar);
        settle();
        EXPECT_EQ(popover(), nullptr) << what;
        EXPECT_TRUE(NSPopover::shownPopovers().empty()) << what;
        EXPECT_EQ(editing.count(), 1U) << what;
        EXPECT_EQ(glyph->axes(), std::vector { bar }) << what;
        EXPECT_EQ(bar->name(), "Typed") << what;
        EXPECT_EQ(bar->defaultValue(), 7) << what;
        EXPECT_EQ(beeps, 0) << what;
        EXPECT_TRUE(released.expired()) << what;
    }
}

TEST_F(AddingGlyphAxes, escapeClosesTheEditorAndKeepsTheLastValidName)
{
    openBar();
    type("Stem");
    line(nameField()).selectAll();
    key(Qt::Key_Delete);
    key(Qt::Key_Escape);
    EXPECT_EQ(popover(), nullptr);
    EXPECT_EQ(bar->name(), "Stem");
    openBar();
    replaceText(defaultField(), "9");
    key(Qt::Key_Escape);
    EXPECT_EQ(popover(), nullptr);
    EXPECT_EQ(bar->defaultValue(), 0);
    EXPECT_EQ(beeps, 0);
}

TEST_F(AddingGlyphAxes, theEditorStaysInItsPlaceWhenTheFilterTakesItsRowAway)
{
    FontBuilder::addGlyphAxis(glyph, "barn", "Barn");
    filterBy("bar");
    clickInfo(1);
    ASSERT_TRUE(isOpen());
    auto const place = popoverWindow().geometry();
    type("Stem");
    EXPECT_EQ(sidebar->tableView()->numberOfRows(), 2U) << "the heading and the other axis";
    ASSERT_TRUE(isOpen());
    EXPECT_EQ(popoverWindow().geometry(), place);
    EXPECT_EQ(nameField().stringValue(), "Stem");
    EXPECT_TRUE(nameField().isFirstResponder());
    EXPECT_FALSE(rowAt(1)->isHighlighted());
    filterBy("");
    EXPECT_TRUE(rowAt(barRow)->isHighlighted());
    EXPECT_EQ(rowAt(barRow)->nameLabel()->stringValue(), "Stem");
    key(Qt::Key_Return);
    EXPECT_EQ(popover(), nullptr);
}

TEST_F(AddingGlyphAxes, anEditorThatOutlivesTheSidebarEditsOnAndCloses)
{
    openBar();
    auto const view = sidebar->view();
    auto const open = axisEditor();
    auto const openPopover = popover();
    auto& open_window = popoverWindow();
    std::weak_ptr<SidebarViewController> const released = sidebar;
    sidebar.reset();
    EXPECT_TRUE(released.expired());
    ASSERT_TRUE(openPopover->isShown());
    QTest::keyClick(open_window.windowHandle(), Qt::Key_X);
    EXPECT_EQ(bar->name(), "x");
    QTest::keyClick(open_window.windowHandle(), Qt::Key_Return);
    EXPECT_FALSE(openPopover->isShown());
}

TEST_F(AddingGlyphAxes, nothingIsLeftOpenWhenTheSidebarGoesWithItsView)
{
    openBar();
    std::weak_ptr<NSPopover> const open = popover();
    window.reset();
    sidebar.reset();
    settle();
    EXPECT_TRUE(open.expired());
    EXPECT_TRUE(NSPopover::shownPopovers().empty());
}

TEST_F(AddingGlyphAxes, aLongNameEndsInAnEllipsisInTheRow)
{
    openBar();
    std::string const name(300, 'W');
    type(QString::fromStdString(name));
    EXPECT_EQ(bar->name(), name);
    auto const label = rowAt(barRow)->nameLabel();
    EXPECT_EQ(label->stringValue(), name);
    EXPECT_EQ(label->toolTip(), name);
    EXPECT_LT(label->frame().maxX(), window->widget().width());
    EXPECT_EQ(nameField().frame().size.width, 200) << "the field scrolls, the popover stays as it is";
}
