#include "Platform/AppKit/NSPopover.h"
#include "Platform/AppKit/NSTextField.h"
#include "Platform/Qt/NSViewBacking.h"
#include "Tests/TyploomApp/EditFamily.h"
#include "Typloom/TyploomApp/TLDocumentWindow.h"
#include "Typloom/TyploomApp/TLEditViewController.h"
#include "Typloom/TyploomApp/TLGlyphEditView.h"
#include "Typloom/TyploomCore/TLDocumentHistory.h"

#include <QLineEdit>
#include <QMenuBar>
#include <QTest>
#include <gtest/gtest.h>

namespace {

struct TLDocumentCommandsTest : testing::Test {
    EditFamily family;
    TLDocumentWindow window { family.font() };

    TLDocumentCommandsTest()
    {
        settle();
        family.font()->history().clear();
        window.widget()->show();
        settle();
    }

    static void settle()
    {
        for (int turn = 0; turn < 5; ++turn) {
            QCoreApplication::processEvents();
        }
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers) const
    {
        QTest::keyClick(QGuiApplication::focusWindow(), key, modifiers);
        settle();
    }

    QAction& command(QString const& beginning) const
    {
        for (auto* const menu : window.widget()->findChildren<QMenu*>()) {
            for (auto* const action : menu->actions()) {
                if (action->text().remove('&').startsWith(beginning)) {
                    return *action;
                }
            }
        }
        throw std::runtime_error("no command " + beginning.toStdString());
    }

    template <class Widget> Widget& control(QString const& name) const
    {
        for (auto* const widget : window.widget()->findChildren<Widget*>()) {
            if (widget->accessibleName() == name) {
                return *widget;
            }
        }
        throw std::runtime_error("no control named " + name.toStdString());
    }

    TLAxis& arm() const { return *family.c->axes().front(); }
    void rename(std::string const& name) const
    {
        arm().setName(name);
        settle();
    }

    /// A transient popover over the edit view with one text field, as a plug-in opens it.
    std::shared_ptr<NSPopover> openPopover() const
    {
        auto const content = std::make_shared<NSViewController>();
        content->setView(NSTextField::labelWithString("An axis"));
        auto const popover = std::make_shared<NSPopover>();
        popover->setBehavior(NSPopoverBehavior::transient);
        popover->setContentViewController(content);
        auto const view = window.editViewController()->view();
        popover->showRelativeToRect({ { 100, 100 }, { 20, 20 } }, view, NSRectEdge::maxX);
        settle();
        return popover;
    }
};

} // namespace

TEST_F(TLDocumentCommandsTest, undoAndRedoSayWhatTheyDoAndFollowTheirKeys)
{
    EXPECT_FALSE(command("Undo").isEnabled());
    EXPECT_FALSE(window.widget()->isWindowModified());
    rename("elbow");
    EXPECT_EQ(command("Undo").text(), "&Undo Rename Axis");
    EXPECT_TRUE(window.widget()->isWindowModified());

    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(arm().name(), "arm");
    EXPECT_EQ(command("Undo").text(), "&Undo");
    EXPECT_FALSE(command("Undo").isEnabled());
    EXPECT_EQ(command("Redo").text(), "&Redo Rename Axis");
    EXPECT_FALSE(window.widget()->isWindowModified());

    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(arm().name(), "elbow");
    press(Qt::Key_Z, Qt::ControlModifier);
    press(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(arm().name(), "elbow");
    EXPECT_FALSE(command("Redo").isEnabled());
}

TEST_F(TLDocumentCommandsTest, aTextFieldUndoesWhatWasTypedInItAndThenTheDocument)
{
    rename("elbow");
    auto& text = control<QLineEdit>("Text");
    text.setFocus();
    text.selectAll();
    QTest::keyClicks(&text, "BA");
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_NE(text.text(), "BA");
    EXPECT_EQ(arm().name(), "elbow");
    press(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(text.text(), "BA");
    press(Qt::Key_Z, Qt::ControlModifier);
    ASSERT_FALSE(text.isUndoAvailable());
    QTest::keyClicks(&text, "C");
    QTest::keyClick(&text, Qt::Key_Return);
    text.setFocus();

    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(arm().name(), "arm") << "what was typed before the field was left is not undone";
    EXPECT_TRUE(text.hasFocus());
}

TEST_F(TLDocumentCommandsTest, aClosedPopoverEndsTheStepAndUndoClosesTheOpenOnes)
{
    auto const first = openPopover();
    rename("e");
    rename("el");
    first->close();
    auto const second = openPopover();
    rename("shoulder");
    ASSERT_TRUE(second->isShown());
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_FALSE(second->isShown());
    EXPECT_EQ(arm().name(), "el") << "the renames of one popover, and no more";
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(arm().name(), "arm");
}

TEST_F(TLDocumentCommandsTest, aDragThatIsGoingOnIsNotUndone)
{
    rename("elbow");
    auto* const handle = window.widget()->windowHandle();
    QTest::mousePress(handle, Qt::LeftButton, {}, { 700, 400 });
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(arm().name(), "elbow");
    QTest::mouseRelease(handle, Qt::LeftButton, {}, { 700, 400 });
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(arm().name(), "arm");
}
