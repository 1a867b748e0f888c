#include "Platform/AppKit/NSSearchField.h"
#include "Platform/Foundation/NSLocale.h"
#include "Tests/AppKit/ActionRecorder.h"
#include "Tests/AppKit/Typing.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>

namespace {

constexpr NSRect fieldFrame { { 10, 10 }, { 100, 24 } };
constexpr NSRect otherFrame { { 10, 60 }, { 100, 24 } };
constexpr QPoint inField(60, 22);

/// A window with a number field from 100 to 900 that shows 400, and another field to go to.
class NumberField : public testing::Test {
protected:
    NumberField()
    {
        NSSetCurrentLocale("en_US");
        field->setFormatter(formatter);
        formatter->setMinimum(100);
        formatter->setMaximum(900);
        field->setDoubleValue(400);
        field->setDelegate(delegate);
        target->observe(*field);
    }
    ~NumberField() override { NSSetCurrentLocale(""); }

    QLineEdit& line() const { return *static_cast<QLineEdit*>(qtWidget(*field)); }
    void focus()
    {
        line().setFocus(Qt::TabFocusReason);
        ViewWindow::settle();
    }
    void leave()
    {
        qtWidget(*other)->setFocus(Qt::TabFocusReason);
        ViewWindow::settle();
    }
    void type(char const* text) { typeInto(window, text); }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(window.window.windowHandle(), key, modifiers);
        ViewWindow::settle();
    }

    ViewWindow window;
    std::shared_ptr<NSTextField> field
        = window.add(std::make_shared<NSTextField>(NSTextField::Kind::field), fieldFrame);
    std::shared_ptr<NSTextField> other
        = window.add(std::make_shared<NSTextField>(NSTextField::Kind::field), otherFrame);
    std::shared_ptr<NSNumberFormatter> formatter = std::make_shared<NSNumberFormatter>();
    std::shared_ptr<ActionRecorder> target = std::make_shared<ActionRecorder>();
    std::shared_ptr<EditingRecorder> delegate = std::make_shared<EditingRecorder>();
};

} // namespace

TEST_F(NumberField, isSilentWhenItIsSetFromCode)
{
    focus();
    field->setDoubleValue(500);
    field->setStringValue("600");
    field->setEnabled(false);
    field->setEnabled(true);
    EXPECT_TRUE(target->senders.empty());
    EXPECT_TRUE(delegate->notes.empty());
    EXPECT_EQ(field->doubleValue(), 600);
}

TEST_F(NumberField, keepsTheNumberBehindItsText)
{
    field->setDoubleValue(400.4);
    EXPECT_EQ(field->stringValue(), "400");
    EXPECT_EQ(field->doubleValue(), 400.4);
    focus();
    leave();
    EXPECT_EQ(field->doubleValue(), 400.4) << "nobody changed the text";
}

TEST_F(NumberField, selectsAllWhenItGetsTheKeyboard)
{
    window.click(inField);
    EXPECT_EQ(line().selectedText(), "400");
    window.click(inField);
    EXPECT_EQ(line().selectedText(), "") << "the second click places the cursor";
}

TEST_F(NumberField, commitsAtReturnAndKeepsTheKeyboard)
{
    focus();
    type("550");
    EXPECT_TRUE(target->senders.empty());
    key(Qt::Key_Return);
    EXPECT_EQ(target->texts, (std::vector<std::string> { "550" }));
    EXPECT_EQ(target->senders.front(), field);
    EXPECT_EQ(target->events.front()->type, NSEventType::keyDown);
    EXPECT_EQ(field->doubleValue(), 550);
    EXPECT_TRUE(field->isFirstResponder());
    EXPECT_EQ(line().selectedText(), "550");
    EXPECT_FALSE(line().isUndoAvailable()) << "what has been taken is no longer the field's to undo";
    leave();
    EXPECT_EQ(target->senders.size(), 1u) << "the number has been sent already";
}

TEST_F(NumberField, commitsWhenTheUserLeavesItChanged)
{
    focus();
    type("550");
    leave();
    EXPECT_EQ(target->texts, (std::vector<std::string> { "550" }));
    EXPECT_EQ(delegate->notes, (Events { "changed 5", "changed 55", "changed 550", "ended 550" }));
}

TEST_F(NumberField, sendsNothingWhenTheUserLeavesItAsItWas)
{
    field->setDoubleValue(400.4);
    focus();
    key(Qt::Key_End);
    type("1");
    key(Qt::Key_Backspace);
    leave();
    EXPECT_TRUE(target->senders.empty());
    EXPECT_EQ(field->doubleValue(), 400.4);
}

TEST_F(NumberField, takesTheTypedNumberAtReturnEvenWhereItReadsAsBefore)
{
    field->setDoubleValue(400.4);
    focus();
    type("400");
    key(Qt::Key_Return);
    EXPECT_EQ(field->doubleValue(), 400);
    EXPECT_EQ(target->senders.size(), 1u);
}

TEST_F(NumberField, bringsNumbersIntoItsRange)
{
    focus();
    type("5000");
    key(Qt::Key_Return);
    EXPECT_EQ(target->texts.back(), "900");
    type("3");
    leave();
    EXPECT_EQ(target->texts.back(), "100");
    EXPECT_EQ(field->doubleValue(), 100);
}

TEST_F(NumberField, givesBackWhatWasThereForTextThatIsNoNumber)
{
    field->setDoubleValue(400.4);
    for (char const* text : { "abc", " ", "4x", "1e999" }) {
        focus();
        line().selectAll();
        type(text);
        key(Qt::Key_Return);
        EXPECT_EQ(field->stringValue(), "400") << text;
        type(text);
        leave();
        EXPECT_EQ(field->stringValue(), "400") << text;
        EXPECT_EQ(field->doubleValue(), 400.4) << text;
    }
    focus();
    key(Qt::Key_Delete);
    EXPECT_EQ(field->stringValue(), "");
    leave();
    EXPECT_EQ(field->stringValue(), "400");
    EXPECT_TRUE(target->senders.empty());
}

TEST_F(NumberField, givesBackWhatWasThereAtEscapeAndTellsTheDelegate)
{
    focus();
    type("7");
    key(Qt::Key_Escape);
    EXPECT_EQ(field->stringValue(), "400");
    EXPECT_EQ(field->doubleValue(), 400);
    EXPECT_TRUE(field->isFirstResponder());
    EXPECT_EQ(delegate->notes, (Events { "changed 7", "changed 400" }));
    EXPECT_TRUE(target->senders.empty());
}

TEST_F(NumberField, keepsWhatIsBeingTypedWhenTheShownNumberIsSetAgain)
{
    focus();
    type("55");
    key(Qt::Key_Left);
    field->setDoubleValue(400);
    field->setDoubleValue(400.2); // Reads the same.
    EXPECT_EQ(field->stringValue(), "55");
    EXPECT_EQ(line().cursorPosition(), 1);
    key(Qt::Key_Right);
    type("0");
    key(Qt::Key_Return);
    EXPECT_EQ(target->texts.back(), "550");
}

TEST_F(NumberField, isReplacedByAnotherNumberWhileTheUserTypes)
{
    focus();
    type("55");
    field->setDoubleValue(300);
    EXPECT_EQ(field->stringValue(), "300");
    leave();
    EXPECT_TRUE(target->senders.empty());
    EXPECT_EQ(field->doubleValue(), 300);
}

TEST_F(NumberField, keepsTheSelectionOfTheWholeTextWhenItsNumberChanges)
{
    focus();
    field->setDoubleValue(500);
    EXPECT_EQ(line().selectedText(), "500");
}

TEST_F(NumberField, stepsWithTheArrowKeys)
{
    focus();
    key(Qt::Key_Up);
    EXPECT_EQ(target->texts.back(), "401");
    key(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(target->texts.back(), "391");
    type("895");
    key(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(target->texts.back(), "900");
    auto const sent = target->senders.size();
    key(Qt::Key_Up);
    EXPECT_EQ(target->senders.size(), sent) << "nothing lies above the end of the range";
    EXPECT_TRUE(field->isFirstResponder());
}

TEST_F(NumberField, stepsByTenthsInASmallRange)
{
    formatter->setMinimum(0);
    formatter->setMaximum(5);
    formatter->setMaximumFractionDigits(1);
    field->setDoubleValue(0.1);
    focus();
    key(Qt::Key_Up);
    key(Qt::Key_Up);
    EXPECT_EQ(field->doubleValue(), 0.3);
    key(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(field->doubleValue(), 0.8);
    formatter->setMaximum(0.9);
    key(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(field->doubleValue(), 0.7) << "a tenth of the range would be less than a step";
}

TEST_F(NumberField, readsAndShowsNumbersOfTheUsersLocale)
{
    NSSetCurrentLocale("de_DE");
    formatter->setMaximumFractionDigits(1);
    field->setDoubleValue(400.5);
    EXPECT_EQ(field->stringValue(), "400,5");
    focus();
    type("512,25");
    key(Qt::Key_Return);
    EXPECT_EQ(field->doubleValue(), 512.25);
    EXPECT_EQ(field->stringValue(), "512,2");
}

TEST_F(NumberField, letsItsDelegateSeeTheTypedTextFirst)
{
    delegate->onEnd = [](NSTextField& ended) { ended.setStringValue("123"); };
    focus();
    key(Qt::Key_Delete);
    leave();
    EXPECT_EQ(delegate->notes.back(), "ended ");
    EXPECT_EQ(field->stringValue(), "123");
}

TEST_F(NumberField, leavesCommandsToADelegateThatTakesThem)
{
    std::vector<std::string> selectors;
    delegate->onCommand = [&](std::string_view selector) {
        selectors.emplace_back(selector);
        return true;
    };
    focus();
    type("5");
    key(Qt::Key_Return);
    key(Qt::Key_Tab);
    key(Qt::Key_Escape);
    EXPECT_EQ(selectors, (std::vector<std::string> { "insertNewline:", "insertTab:", "cancelOperation:" }));
    EXPECT_EQ(field->stringValue(), "5");
    EXPECT_TRUE(field->isFirstResponder());
    EXPECT_TRUE(target->senders.empty());
}

TEST_F(NumberField, showsTheBeginningOfALongTextUnlessItIsEdited)
{
    formatter->setMaximumFractionDigits(40);
    field->setDoubleValue(1e2 + 1.0 / 3);
    EXPECT_EQ(line().cursorPosition(), 0);
    focus();
    type("400.1234567890123");
    EXPECT_EQ(line().cursorPosition(), 17);
    leave();
    EXPECT_EQ(line().cursorPosition(), 0);
}

TEST_F(NumberField, dropsWhatIsBeingTypedWhenItIsTakenAway)
{
    for (auto const takeAway : { +[](NSTextField& taken) { taken.setEnabled(false); },
             +[](NSTextField& taken) { taken.removeFromSuperview(); } }) {
        focus();
        type("55");
        delegate->notes.clear();
        takeAway(*field);
        ViewWindow::settle();
        EXPECT_EQ(field->stringValue(), "400");
        EXPECT_TRUE(target->senders.empty());
        EXPECT_TRUE(delegate->notes.empty());
        field->setEnabled(true);
    }
}

TEST_F(NumberField, dropsWhatIsBeingTypedWhenItIsHiddenBehindAnotherWindow)
{
    focus();
    type("55");
    QWidget front;
    front.show();
    front.activateWindow();
    ViewWindow::settle();
    field->setHidden(true);
    ViewWindow::settle();
    EXPECT_EQ(field->stringValue(), "400");
    EXPECT_TRUE(target->senders.empty());
}

TEST_F(NumberField, keepsEditingWhileAnotherWindowIsInFront)
{
    focus();
    type("55");
    QWidget front;
    front.show();
    front.activateWindow();
    ViewWindow::settle();
    EXPECT_EQ(field->stringValue(), "55");
    EXPECT_TRUE(target->senders.empty());
    window.window.activateWindow();
    ViewWindow::settle();
    type("0");
    key(Qt::Key_Return);
    EXPECT_EQ(target->texts, (std::vector<std::string> { "550" }));
}

TEST_F(NumberField, mayEndInItsOwnActionAndInItsDelegatesCommand)
{
    focus();
    type("550");
    target->onAction = [&] {
        field->removeFromSuperview();
        field.reset();
        target->senders.clear();
    };
    key(Qt::Key_Return);
    EXPECT_EQ(field, nullptr);

    field = window.add(std::make_shared<NSTextField>(NSTextField::Kind::field), fieldFrame);
    field->setDelegate(delegate);
    delegate->onCommand = [&](std::string_view) {
        field->removeFromSuperview();
        field.reset();
        return true;
    };
    focus();
    key(Qt::Key_Return);
    EXPECT_EQ(field, nullptr);
}

TEST(NSSearchField, tellsItsDelegateOfTypingAndClearing)
{
    ViewWindow window;
    auto const field = window.add(std::make_shared<NSSearchField>(), fieldFrame);
    auto const delegate = std::make_shared<EditingRecorder>();
    field->setDelegate(delegate);
    window.click(inField);
    typeInto(window, "w");
    window.key(Qt::Key_Escape);
    EXPECT_EQ(field->stringValue(), "");
    typeInto(window, "x");
    window.click({ 100, 22 }); // The button that clears, at the trailing end.
    EXPECT_EQ(field->stringValue(), "");
    EXPECT_EQ(delegate->notes, (Events { "changed w", "changed ", "changed x", "changed " }));
    EXPECT_TRUE(field->isFirstResponder());
}

TEST(NSTextField, endsALabelThatDoesNotFitInAnEllipsisAndTellsTheWholeInItsToolTip)
{
    ViewWindow window;
    auto const label = window.add(NSTextField::labelWithString("A very long name of an axis"), fieldFrame);
    EXPECT_EQ(label->stringValue(), "A very long name of an axis");
    EXPECT_EQ(label->toolTip(), "A very long name of an axis");
    label->setFrame({ { 10, 10 }, { 280, 24 } });
    EXPECT_EQ(label->toolTip(), "");
    label->setToolTip("Another text");
    label->setFrame(fieldFrame);
    EXPECT_EQ(label->toolTip(), "Another text");
}

TEST(NSTextField, showsMarkupInALabelAsItIs)
{
    auto const label = NSTextField::labelWithString("<b>Weight</b>");
    EXPECT_GT(label->fittingSize().width, NSTextField::labelWithString("Weight")->fittingSize().width * 1.5);
}

TEST(NSTextField, alignsItsTextWithinItsWidth)
{
    auto const blankColumns = [](NSTextField const& field) {
        auto const image = qtWidget(field)->grab().toImage();
        auto const isBlank = [&](int x) {
            for (int y = 4; y < image.height() - 4; ++y) {
                if (image.pixel(x, y) != image.pixel(4, 4)) {
                    return false;
                }
            }
            return true;
        };
        int left = 4;
        int right = image.width() - 5;
        for (; left < right && isBlank(left); ++left) { }
        for (; left < right && isBlank(right); --right) { }
        return std::pair(left, image.width() - 1 - right);
    };
    for (auto const kind :
        { NSTextField::Kind::label, NSTextField::Kind::wrappingLabel, NSTextField::Kind::field }) {
        NSTextField field(kind);
        field.setStringValue("HH");
        field.setFrame({ {}, { 200, 30 } });
        auto const [naturalLeft, naturalRight] = blankColumns(field);
        EXPECT_LT(naturalLeft, 20);
        field.setAlignment(NSTextAlignment::center);
        auto const [left, right] = blankColumns(field);
        EXPECT_NEAR(left, right, 4);
        field.setAlignment(NSTextAlignment::right);
        EXPECT_LT(blankColumns(field).second, 20);
        field.setAlignment(NSTextAlignment::natural);
        EXPECT_EQ(blankColumns(field), std::pair(naturalLeft, naturalRight));
    }
}

TEST(NSTextField, showsANumberWithoutAFormatterInItsPlainDescription)
{
    NSSetCurrentLocale("de_DE");
    auto const label = NSTextField::labelWithString("");
    label->setDoubleValue(0.5);
    EXPECT_EQ(label->stringValue(), "0.5");
    label->setStringValue("2.25");
    EXPECT_EQ(label->doubleValue(), 2.25);
    NSSetCurrentLocale("");
}
