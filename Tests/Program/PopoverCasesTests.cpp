#include "Tests/Program/ProgramWindow.h"

#include "Typloom/TyploomCore/TLDocumentHistory.h"

#include <QMessageBox>
#include <QPushButton>

namespace {

/// The editor of a glyph axis in the program's window, and what takes the ground from under it. The glyph
/// "a" is edited, which has the axes "Terminal", "Bowl" and "Spur" of its own.
class PopoverCases : public testing::Test, protected ProgramWindows, protected ProgramWindow {
protected:
    PopoverCases()
        : ProgramWindow(open(SOURCE_FOLDER "/Fonts/Skarvane/Skarvane.designspace"))
    {
        document->widget()->resize(1100, 700);
        document->showGlyph("a");
        activate();
    }

    void openEditor(std::string const& axis) const
    {
        window->click(*row(axis), 0.3, 0.2, Qt::RightButton);
        waitForPopover();
    }
    void clickPlus() const
    {
        window->click(*plusButton());
        settle();
        waitForPopover();
    }
    static void waitForPopover()
    {
        settle();
        ASSERT_NE(popover(), nullptr);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&popoverWidget()));
        EXPECT_EQ(NSPopover::shownPopovers().size(), 1U);
    }
    static void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        WindowEvents(popoverWidget()).pressKey(key, modifiers);
        settle();
    }
    static void type(std::string const& text)
    {
        WindowEvents(popoverWidget()).type(text);
        settle();
    }
    static std::string typedName()
    {
        auto const field
            = popover()->contentViewController()->view()->descendantWithIdentifier("axisNameField");
        return std::dynamic_pointer_cast<NSTextField>(field)->stringValue();
    }
    TLGlyph& glyph() const { return *document->font()->glyphForName("a"); }
    std::vector<std::string> names() const
    {
        std::vector<std::string> names;
        for (auto const& axis : glyph().axes()) {
            names.push_back(axis->name());
        }
        return names;
    }
    static void answer(QWidget const& asked, QString const& title)
    {
        for (auto* const box : asked.findChildren<QMessageBox*>()) {
            for (auto* const button : box->buttons()) {
                if (box->isVisible() && button->text().remove('&') == title) {
                    QTest::mouseClick(
                        box->windowHandle(), Qt::LeftButton, {}, button->mapTo(box, button->rect().center()));
                    return settle();
                }
            }
        }
        FAIL() << "nothing asks for " << title.toStdString();
    }

    std::vector<std::string> const asRead { names() };
};

} // namespace

TEST_F(PopoverCases, undoTakesTypingBackFirstThenTheAxisWithItsEditor)
{
    auto const rowsBefore = rows();
    clickPlus();
    std::weak_ptr<NSPopover> const first = popover();
    type("Ser");
    EXPECT_EQ(names().back(), "Ser");
    key(Qt::Key_Z, Qt::ControlModifier);
    ASSERT_NE(popover(), nullptr);
    EXPECT_EQ(typedName(), "Unnamed");
    EXPECT_EQ(names().back(), "Unnamed");
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(popover(), nullptr);
    EXPECT_TRUE(first.expired());
    EXPECT_EQ(names(), asRead);
    EXPECT_EQ(rows(), rowsBefore);
    EXPECT_FALSE(document->font()->history().isModified());

    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(names().back(), "Unnamed");
    EXPECT_EQ(popover(), nullptr);
    openEditor("Unnamed");
    type("Serif");
    key(Qt::Key_Return);
    EXPECT_EQ(popover(), nullptr);
    EXPECT_EQ(names().back(), "Serif");
    EXPECT_NE(row("Serif"), nullptr);
}

TEST_F(PopoverCases, aWindowClosesWithItsEditor)
{
    openEditor("Bowl");
    std::weak_ptr<NSPopover> const open = popover();
    key(Qt::Key_W, Qt::ControlModifier);
    EXPECT_TRUE(application.windows().empty());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(open.expired());
    EXPECT_TRUE(NSPopover::shownPopovers().empty());
}

TEST_F(PopoverCases, aWindowThatAsksBeforeItClosesKeepsTheAxisAndNotTheEditor)
{
    clickPlus();
    type("Serif");
    key(Qt::Key_W, Qt::ControlModifier);
    EXPECT_EQ(popover(), nullptr);
    answer(*document->widget(), "Cancel");
    EXPECT_EQ(names().back(), "Serif");
    activate();
    openEditor("Serif");
    key(Qt::Key_Escape);
    document->widget()->close();
    settle();
    answer(*document->widget(), "Discard");
    EXPECT_TRUE(application.windows().empty());
}

TEST_F(PopoverCases, hidingTheSidebarClosesTheEditorAndItOpensAgain)
{
    openEditor("Bowl");
    type("Belly");
    document->sidebar()->widget()->hide();
    settle();
    EXPECT_EQ(popover(), nullptr);
    EXPECT_EQ(names()[1], "Belly");
    document->sidebar()->widget()->show();
    settle();
    openEditor("Belly");
    EXPECT_EQ(typedName(), "Belly");
}

TEST_F(PopoverCases, anotherGlyphIsNotLeftWithTheEditorOfTheLastOne)
{
    clickPlus();
    type("Serif");
    key(Qt::Key_PageDown, Qt::ControlModifier);
    ASSERT_NE(layer()->glyph()->name(), "a") << "the key goes to the window that the editor belongs to";
    EXPECT_EQ(popover(), nullptr);
    EXPECT_EQ(names().back(), "Serif");
    activate();
    press(Qt::Key_PageUp, Qt::ControlModifier);
    openEditor("Serif");
}

TEST_F(PopoverCases, oneClickClosesAnEditorAndOpensAnother)
{
    openEditor("Bowl");
    type("Belly");
    std::weak_ptr<NSPopover> const first = popover();
    openEditor("Spur");
    EXPECT_TRUE(first.expired());
    EXPECT_EQ(typedName(), "Spur");
    clickPlus();
    EXPECT_EQ(typedName(), "Unnamed");
    type("Serif");
    key(Qt::Key_Return);
    EXPECT_EQ(names(), (std::vector<std::string> { "Terminal", "Belly", "Spur", "Serif" }));
}

TEST_F(PopoverCases, twoClicksOnThePlusButtonInOneTurnLeaveOneEditor)
{
    auto const* const plus = qtWidget(*plusButton());
    auto const place = plus->mapTo(document->widget(), plus->rect().center());
    for (int count = 0; count < 2; ++count) {
        QTest::mouseClick(document->widget()->windowHandle(), Qt::LeftButton, {}, place);
    }
    waitForPopover();
    EXPECT_EQ(names().size(), asRead.size() + 2);
    type("Second");
    key(Qt::Key_Return);
    EXPECT_EQ(names().back(), "Second");
    EXPECT_EQ(names()[asRead.size()], "Unnamed");
    EXPECT_EQ(popover(), nullptr);
}
