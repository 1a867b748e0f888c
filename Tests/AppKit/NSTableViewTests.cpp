#include "Platform/AppKit/NSTableView.h"

#include "Platform/Qt/DrawingConversions.h"
#include "Tests/AppKit/TableWindow.h"
#include "Tests/AppKit/Typing.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPointer>
#include <QScrollBar>

#include <random>

using Texts = std::vector<std::string>;
using Changes = NSTableView::Changes;

TEST(NSTableView, showsItsRowsUnderTheirHeadersAtTheHeightThatTheyWant)
{
    TableWindow window;
    window.table->setRows({ { 100, true }, { 1 }, { 2 }, { 200, true }, { 3 } });
    EXPECT_EQ(window.shown(), (Texts { "100", "1", "2", "200", "3" }));
    EXPECT_EQ(window.table->numberOfRows(), 5u);
    EXPECT_EQ(window.cell(2)->frame(), (NSRect { { 0, 76 }, { 300, 50 } }));
    EXPECT_EQ(window.cell(1)->frame(), (NSRect { { 0, 26 }, { 300, 50 } }));
    EXPECT_TRUE(qtWidget(*window.cell(1))->isVisible());
}

TEST(NSTableView, drawsHeadersInTheSecondaryColour)
{
    TableWindow window;
    window.table->setRows({ { 100, true } });
    auto const* header = qtWidget(*window.table->viewAtColumnRow(0, 0, false));
    auto const color = header->palette().color(header->foregroundRole());
    EXPECT_EQ(color.name(QColor::HexArgb), toQColor(NSColor::secondaryLabelColor()).name(QColor::HexArgb));
    EXPECT_NE(color, window.window.palette().color(QPalette::WindowText));
}

TEST(NSTableView, makesViewsOnlyForRowsInSightHoweverManyThereAre)
{
    TableWindow window;
    QElapsedTimer timer;
    timer.start();
    window.table->setRows(TableWindow::rowsUpTo(10'000));
    auto const milliseconds = timer.elapsed();
    EXPECT_LE(TestCell::made, 8);
    EXPECT_LT(milliseconds, 300) << "ten times what it takes";
    for (double const y : { 3000.0, 250'000.0, 125'000.0, 499'800.0 }) {
        window.clip().scrollToPoint({ 0, y });
        EXPECT_EQ(window.shown().front(), std::to_string(static_cast<int>(y / 50) + 1));
    }
    EXPECT_LE(TestCell::made, 10);
    EXPECT_LE(window.table->subviews().size(), 10u);
}

TEST(NSTableView, handsViewsOutAgainAfterPreparingThem)
{
    TableWindow window;
    window.table->setRows(TableWindow::rowsUpTo(4));
    auto const first = window.cell(0);
    auto const made = TestCell::made;
    window.table->setRows({});
    EXPECT_EQ(first->preparations, 1);
    EXPECT_FALSE(qtWidget(*first)->isVisible());
    EXPECT_NE(qtWidget(*first)->window(), &window.window) << "nobody finds it in the window";
    window.table->setRows(TableWindow::rows({ 11, 12, 13, 14 }));
    EXPECT_EQ(TestCell::made, made);
    EXPECT_EQ(first->preparations, 1);
    EXPECT_EQ(window.shown(), (Texts { "11", "12", "13", "14" }));
    EXPECT_TRUE(qtWidget(*first)->isVisible());
}

TEST(NSTableView, keepsTheRowWithTheKeyboardAndItsHalfTypedText)
{
    TableWindow window;
    window.table->setRows(TableWindow::rowsUpTo(100));
    auto const cell = window.cell(1);
    window.click(window.centreOf(*cell->field()));
    typeInto(window, "55");
    window.clip().scrollToPoint({ 0, 3000 });
    ViewWindow::settle();
    EXPECT_EQ(window.cell(1), cell);
    EXPECT_EQ(cell->preparations, 0);
    window.table->setRows(TableWindow::rows({ 50, 2, 1, 51 }));
    EXPECT_EQ(window.cell(1), cell);
    EXPECT_EQ(cell->field()->stringValue(), "55");
    EXPECT_TRUE(cell->field()->isFirstResponder());
}

TEST(NSTableView, letsTheRowGoWhenTheKeyboardHasLeftIt)
{
    TableWindow window;
    window.table->setRows(TableWindow::rowsUpTo(100));
    auto const cell = window.cell(0);
    window.click(window.centreOf(*cell->field()));
    window.clip().scrollToPoint({ 0, 3000 });
    qtWidget(*cell->field())->clearFocus();
    ViewWindow::settle();
    EXPECT_EQ(window.cell(0), nullptr);
    EXPECT_EQ(cell->preparations, 1);
}

TEST(NSTableView, givesTheKeyboardOfARowThatGoesToNobody)
{
    TableWindow window;
    window.table->setRows(TableWindow::rows({ 1, 2, 3 }));
    window.click(window.centreOf(*window.cell(1)->field()));
    window.table->setRows(TableWindow::rows({ 1, 3 }));
    ViewWindow::settle();
    EXPECT_EQ(QApplication::focusWidget(), nullptr);
    EXPECT_EQ(window.shown(), (Texts { "1", "3" }));
}

TEST(NSTableView, letsADragGoOnWhileItsRowIsScrolledAwayAndOtherRowsChange)
{
    TableWindow window;
    window.table->setRows(TableWindow::rowsUpTo(100));
    auto const cell = window.cell(1);
    auto const place = window.centreOf(*cell->slider());
    window.press(place);
    ASSERT_TRUE(cell->slider()->isTracking());
    window.clip().scrollToPoint({ 0, 3000 });
    window.table->setRows(TableWindow::rows({ 70, 71, 2, 72, 73, 74, 75, 76, 77, 78 }));
    window.move(place + QPoint(1000, 0));
    EXPECT_EQ(cell->slider()->doubleValue(), 1);
    EXPECT_EQ(window.cell(2), cell);
    window.move(place - QPoint(1000, 0));
    EXPECT_EQ(cell->slider()->doubleValue(), 0);
    EXPECT_EQ(cell->preparations, 0);
    window.release(place);
    EXPECT_FALSE(cell->slider()->isTracking());
    window.clip().scrollToPoint({ 0, 3000 });
    window.table->setRows(TableWindow::rowsUpTo(100));
    window.clip().scrollToPoint({ 0, 3000 });
    EXPECT_GT(cell->preparations, 0) << "after the drag the row is like any other";
}

TEST(NSTableView, keepsThePressedRowUnderThePointerWhenRowsComeAboveIt)
{
    TableWindow window;
    window.table->setRows(TableWindow::rowsUpTo(20));
    auto const cell = window.cell(1);
    double const y = cell->frame().origin.y;
    window.press(window.centreOf(*cell->slider()));
    window.table->setRows(TableWindow::rows({ 90, 91, 1, 2, 3, 4, 5, 6, 7 }));
    EXPECT_EQ(cell->frame().origin.y, y);
    window.release(window.centreOf(*cell->slider()));
}

TEST(NSTableView, keepsWhatIsInSightWhenRowsComeAboveItUnlessItStandsAtItsTop)
{
    TableWindow window;
    auto const former = TableWindow::rowsUpTo(20);
    auto longer = former;
    longer.insert(longer.begin(), { 90 });
    window.table->setRows(former);
    window.table->setRows(longer);
    EXPECT_EQ(window.offset(), 0);
    window.table->setRows(former);
    window.clip().scrollToPoint({ 0, 320 });
    auto const shown = window.shown();
    window.table->setRows(longer);
    EXPECT_EQ(window.offset(), 370);
    EXPECT_EQ(window.shown(), shown);
}

TEST(NSTableView, scrollsWithinItsEndsAndItsInsets)
{
    TableWindow window;
    window.table->setRows(TableWindow::rowsUpTo(10));
    window.clip().scrollToPoint({ 0, 10'000 });
    EXPECT_EQ(window.offset(), 300);
    window.clip().scrollToPoint({ 0, -50 });
    EXPECT_EQ(window.offset(), 0);
    window.clip().setContentInsets({ .top = 20, .bottom = 10 });
    window.clip().scrollToPoint({ 0, -20 });
    EXPECT_EQ(window.offset(), -20);
    EXPECT_EQ(window.cell(0)->frame().origin.y, 20);
    window.clip().scrollToPoint({ 0, 10'000 });
    EXPECT_EQ(window.offset(), 310);
    window.table->setRows({});
    EXPECT_EQ(window.offset(), -20);
}

TEST(NSTableView, scrollsNoFurtherThanARowNeeds)
{
    TableWindow window;
    window.table->setRows(TableWindow::rowsUpTo(20));
    window.table->scrollRowToVisible(2);
    EXPECT_EQ(window.offset(), 0);
    window.table->scrollRowToVisible(9);
    EXPECT_EQ(window.offset(), 300);
    window.table->scrollRowToVisible(7);
    EXPECT_EQ(window.offset(), 300);
    window.table->scrollRowToVisible(3);
    EXPECT_EQ(window.offset(), 150);
    window.table->scrollRowToVisible(1000);
    EXPECT_EQ(window.offset(), 150);
}

TEST(NSTableView, scrollsWithTheWheelOverItsRows)
{
    TableWindow window;
    window.table->setRows(TableWindow::rowsUpTo(20));
    for (auto const& view : std::vector<std::shared_ptr<NSView>> {
             window.cell(1)->label(), window.cell(1)->slider(), window.cell(1)->field() }) {
        window.clip().scrollToPoint({ 0, 0 });
        QPointF const place = window.centreOf(*view);
        QWheelEvent wheel(place, window.window.mapToGlobal(place), {}, { 0, -120 }, Qt::NoButton,
            Qt::NoModifier, Qt::NoScrollPhase, false);
        QSpontaneKeyEvent::setSpontaneous(&wheel);
        qApp->notify(window.window.windowHandle(), &wheel); // `sendEvent` makes it a synthetic one.
        ViewWindow::settle();
        EXPECT_GT(window.offset(), 0) << view->identifier();
        EXPECT_LT(window.offset(), 100) << view->identifier();
    }
}

TEST(NSTableView, takesTabThroughTheRowsInTheirOrderAndScrollsAlong)
{
    TableWindow window;
    auto const after = window.add(std::make_shared<NSTextField>(NSTextField::Kind::field), {});
    window.table->setRows(TableWindow::rows({ 3, 1, 2, 4, 5, 6, 7, 8 }));
    window.table->setRows(TableWindow::rows({ 1, 2, 3, 4, 5, 6, 7, 8 }));
    qtWidget(*window.cell(0)->field())->setFocus();
    for (std::size_t row = 1; row < 8; ++row) {
        window.key(Qt::Key_Tab); // To the slider.
        window.key(Qt::Key_Tab);
        ASSERT_NE(window.cell(row), nullptr);
        EXPECT_TRUE(window.cell(row)->field()->isFirstResponder()) << row;
        auto const frame = window.cell(row)->frame();
        EXPECT_TRUE(frame.origin.y >= 0 && frame.maxY() <= 200) << row;
    }
    window.key(Qt::Key_Tab);
    EXPECT_TRUE(after->isFirstResponder());
}

TEST(NSTableView, makesTheViewOfARowOutOfSightOnDemandOnly)
{
    TableWindow window;
    window.table->setRows(TableWindow::rowsUpTo(100));
    EXPECT_EQ(window.cell(60), nullptr);
    auto const cell = window.cell(60, true);
    ASSERT_NE(cell, nullptr);
    EXPECT_EQ(cell->label()->stringValue(), "61");
    EXPECT_EQ(window.cell(60), cell);
    ViewWindow::settle();
    EXPECT_EQ(window.cell(60), nullptr) << "goes back when nobody looks";
    EXPECT_EQ(window.table->viewAtColumnRow(0, 100, true), nullptr);
    EXPECT_EQ(window.table->viewAtColumnRow(1, 0, true), nullptr);
}

TEST(NSTableView, letsAScreenReaderFindEveryRowUnderItsHeadingMadeOrNot)
{
    TableWindow window;
    auto rows = TableWindow::rowsUpTo(40);
    rows.insert(rows.begin(), { 100, true });
    window.table->setRows(rows);
    window.table->setAccessibilityLabel("Numbers");
    ViewWindow::settle();
    auto* const list = QAccessible::queryAccessibleInterface(qtWidget(*window.table));
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->role(), QAccessible::List);
    EXPECT_EQ(list->text(QAccessible::Name), "Numbers");
    EXPECT_EQ(list->childCount(), 42) << "and the scroller";
    EXPECT_EQ(list->child(0)->role(), QAccessible::Heading);
    EXPECT_EQ(list->child(0)->text(QAccessible::Name), "100");

    auto* const near = list->child(1);
    EXPECT_EQ(near->role(), QAccessible::ListItem);
    EXPECT_FALSE(near->state().invisible);
    EXPECT_EQ(near->child(0)->object(), qtWidget(*window.cell(1)));
    EXPECT_EQ(near->child(0)->parent(), near);
    EXPECT_EQ(list->childAt(near->rect().center().x(), near->rect().center().y()), near);

    auto* const far = list->child(31);
    EXPECT_EQ(far->text(QAccessible::Name), "31");
    EXPECT_EQ(far->childCount(), 0) << "what it is called is seen for a moment only";
    ViewWindow::settle();
    EXPECT_EQ(window.cell(31), nullptr);
    EXPECT_TRUE(far->state().invisible);
    far->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    ASSERT_NE(window.cell(31), nullptr);
    EXPECT_TRUE(window.cell(31)->slider()->isFirstResponder());
    EXPECT_FALSE(far->state().invisible);
    EXPECT_EQ(list->child(31), far);
    EXPECT_EQ(far->rect(),
        QRect(qtWidget(*window.cell(31))->mapToGlobal(QPoint(0, 0)), qtWidget(*window.cell(31))->size()));
    EXPECT_TRUE(near->state().invisible);

    auto const gone = QAccessible::uniqueId(far);
    rows.erase(rows.begin() + 31);
    window.table->setRows(rows);
    EXPECT_EQ(QAccessible::accessibleInterface(gone), nullptr);
    EXPECT_EQ(list->indexOfChild(near), 1);
    EXPECT_EQ(list->child(31)->text(QAccessible::Name), "32");
}

TEST(NSTableView, showsEmptyRowsWhereTheProviderGivesNoView)
{
    TableWindow window;
    window.table->setRowViewProvider(
        [](std::size_t row) { return row == 0 ? nullptr : std::make_shared<NSView>(); });
    window.table->setRows(TableWindow::rowsUpTo(3));
    EXPECT_EQ(window.table->subviews().size(), 3u);
    EXPECT_GT(window.table->subviews().front()->frame().size.height, 10);
    EXPECT_EQ(window.table->makeViewWithIdentifier("Unknown", nullptr), nullptr);
}

TEST(NSTableView, laysItsRowsOutAnewAtAnotherSize)
{
    TableWindow window;
    window.table->setRows(TableWindow::rowsUpTo(3));
    window.table->setFrame({ {}, { 220, 120 } });
    window.table->layoutSubtreeIfNeeded();
    EXPECT_EQ(window.cell(0)->frame().size.width, qtWidget(*window.cell(0))->parentWidget()->width());
    EXPECT_LT(window.cell(0)->frame().size.width, 220.5);
}

TEST(NSTableView, endsWithItsRowsAndLeavesNoWidget)
{
    auto const before = QApplication::allWidgets().size();
    std::shared_ptr<NSScrollView> scrollView;
    std::shared_ptr<NSView> kept;
    {
        TableWindow window;
        window.table->setRows(TableWindow::rowsUpTo(100));
        window.clip().scrollToPoint({ 0, 2000 });
        scrollView = window.table->enclosingScrollView();
        kept = window.cell(40);
        window.table->removeFromSuperview();
    }
    ViewWindow::settle();
    EXPECT_EQ(scrollView->contentView()->bounds(), NSRect {});
    scrollView->contentView()->scrollToPoint({ 0, 10 });
    EXPECT_NE(qtWidget(*kept), nullptr) << "the view of a row belongs to whoever holds it";
    kept.reset();
    EXPECT_EQ(QApplication::allWidgets().size(), before);
}

TEST(NSTableView, doesNothingAfterItsWindowHasBeenDeletedUnderIt)
{
    auto const table = std::make_shared<NSTableView>();
    auto const field = std::make_shared<NSTextField>(NSTextField::Kind::field);
    {
        QWidget window;
        qtWidget(*table)->setParent(&window);
        qtWidget(*field)->setParent(&window);
        table->setRows(TableWindow::rowsUpTo(3));
    }
    table->setRows(TableWindow::rowsUpTo(5));
    table->scrollRowToVisible(4);
    table->layoutSubtreeIfNeeded();
    field->setDoubleValue(5);
    field->selectText();
    EXPECT_EQ(table->viewAtColumnRow(0, 0, true), nullptr);
    EXPECT_EQ(field->stringValue(), "");
}
