#include "Platform/AppKit/NSButton.h"
#include "Tests/AppKit/ActionRecorder.h"
#include "Tests/AppKit/ViewWindow.h"

#include <gtest/gtest.h>

#include <QAccessible>

namespace {

class Button : public testing::Test {
protected:
    Button() { target->observe(*button); }

    ViewWindow window;
    std::shared_ptr<NSTextField> field
        = window.add(std::make_shared<NSTextField>(NSTextField::Kind::field), { { 10, 60 }, { 100, 24 } });
    std::shared_ptr<NSButton> button = window.add(std::make_shared<NSButton>(), { { 10, 10 }, { 60, 24 } });
    std::shared_ptr<ActionRecorder> target = std::make_shared<ActionRecorder>();
};

} // namespace

TEST_F(Button, sendsItsActionWhileTheReleaseIsTheCurrentEvent)
{
    window.click({ 20, 20 });
    ASSERT_EQ(target->senders.size(), 1u);
    EXPECT_EQ(target->senders.front(), button);
    EXPECT_EQ(target->events.front()->type, NSEventType::leftMouseUp);
    button->performClick();
    EXPECT_EQ(target->senders.size(), 2u);
}

TEST_F(Button, isSilentWhenItIsSetFromCodeOrDisabled)
{
    button->setTitle("Title");
    button->setEnabled(false);
    window.click({ 20, 20 });
    button->performClick();
    EXPECT_FALSE(button->isEnabled());
    EXPECT_TRUE(target->senders.empty());
}

TEST_F(Button, takesTheKeyboardByTabOnly)
{
    qtWidget(*field)->setFocus();
    window.click({ 20, 20 });
    EXPECT_TRUE(field->isFirstResponder());
    window.key(Qt::Key_Tab);
    EXPECT_TRUE(button->isFirstResponder());
    window.key(Qt::Key_Space);
    window.key(Qt::Key_Return);
    EXPECT_EQ(target->senders.size(), 3u);
}

TEST_F(Button, mayEndInItsOwnAction)
{
    target->onAction = [&] {
        button->removeFromSuperview();
        button.reset();
        target->senders.clear();
    };
    window.click({ 20, 20 });
    EXPECT_EQ(button, nullptr);
}

TEST_F(Button, isRoundAndSmallForHelpAndSaysWhatItIs)
{
    button->setBezelStyle(NSBezelStyle::helpButton);
    auto const regular = button->fittingSize();
    button->setControlSize(NSControlSize::mini);
    auto const mini = button->fittingSize();
    EXPECT_EQ(mini.width, mini.height);
    EXPECT_LT(mini.width, regular.width);
    EXPECT_NE(button->accessibilityLabel(), "");
}

TEST_F(Button, withoutABezelShowsThatThePointerIsOverItAndThatItIsPressed)
{
    button->setBezelStyle(NSBezelStyle::borderless);
    button->setImage(NSImage::imageWithSystemSymbolName("plus"));
    auto const picture = [&] { return qtWidget(*button)->grab().toImage(); };
    window.move({ 200, 150 });
    auto const resting = picture();
    window.move({ 20, 20 });
    auto const hovered = picture();
    window.press({ 20, 20 });
    auto const pressed = picture();
    window.release({ 20, 20 });
    EXPECT_NE(resting, hovered);
    EXPECT_NE(hovered, pressed);
}

TEST_F(Button, ofASymbolIsNamedByItsDescriptionUnlessItHasAName)
{
    button->setImage(NSImage::imageWithSystemSymbolName("plus", "Add"));
    EXPECT_EQ(button->accessibilityLabel(), "Add");
    button->setImage(NSImage::imageWithSystemSymbolName("plus", "More"));
    EXPECT_EQ(button->accessibilityLabel(), "More");
    button->setAccessibilityLabel("Add an axis");
    button->setImage(NSImage::imageWithSystemSymbolName("plus", "Add"));
    EXPECT_EQ(button->accessibilityLabel(), "Add an axis");
}

TEST_F(Button, withoutATextIsCalledAsItsToolTipSaysUnlessItHasAName)
{
    button->setToolTip("Add");
    EXPECT_EQ(button->accessibilityLabel(), "Add");
    button->setToolTip("More");
    EXPECT_EQ(button->accessibilityLabel(), "More");
    button->setAccessibilityLabel("An axis");
    button->setToolTip("Add");
    EXPECT_EQ(button->accessibilityLabel(), "An axis");
}

TEST_F(Button, thatDestroysSomethingSaysSoInRedThatCanBeReadOnLightAndDark)
{
    button->setTitle("MMMM");
    button->setFrame({ { 10, 10 }, { 120, 40 } });
    auto const before = QApplication::palette();
    for (auto const& palette :
        { QPalette(QColor(240, 240, 240)), QPalette(QColor(60, 60, 64), QColor(45, 45, 48)),
            QPalette(QColor(0, 0, 0)), QPalette(QColor(255, 255, 255)) }) {
        QApplication::setPalette(palette);
        auto const reddest = [&] {
            auto const picture = qtWidget(*button)->grab().toImage();
            int most = 0;
            for (int x = 0; x < picture.width(); ++x) {
                auto const color = picture.pixelColor(x, picture.height() / 2);
                most = std::max(most, color.red() - std::max(color.green(), color.blue()));
            }
            return most;
        };
        button->setHasDestructiveAction(false);
        EXPECT_LT(reddest(), 30);
        button->setHasDestructiveAction(true);
        EXPECT_GT(reddest(), 80) << palette.color(QPalette::Button).name().toStdString();
        button->setEnabled(false);
        EXPECT_LT(reddest(), 30);
        button->setEnabled(true);
    }
    QApplication::setPalette(before);
}

TEST_F(Button, isForgottenByScreenReadersWhenItEndsAndSoIsAField)
{
    auto const leavesNothing = [](std::shared_ptr<NSView> view) {
        auto const id = QAccessible::uniqueId(QAccessible::queryAccessibleInterface(qtWidget(*view)));
        EXPECT_NE(QAccessible::accessibleInterface(id), nullptr);
        view.reset();
        return QAccessible::accessibleInterface(id) == nullptr;
    };
    EXPECT_TRUE(leavesNothing(std::make_shared<NSButton>()));
    EXPECT_TRUE(leavesNothing(std::make_shared<NSTextField>(NSTextField::Kind::field)));
}
