#include "Tests/Program/ProgramWindow.h"

#include "Tests/Support/FontBuilder.h"
#include "Typloom/TyploomApp/TLDocumentEditViewController.h"
#include "Typloom/TyploomCore/TLDocumentHistory.h"

#include <QAbstractButton>
#include <QHelpEvent>
#include <QLineEdit>
#include <QListView>
#include <QToolTip>

namespace {

std::string const longName = "A name of an axis that is longer than any sidebar has room for";

struct FamilyOfHabits {
    /// Weight 100 to 900 and Fine 0 to 5 for the font; another Weight for its glyph.
    static std::shared_ptr<TLFont> font()
    {
        FontBuilder builder;
        builder.addAxis("wght", "Weight", { 100, 400, 900 }, "wght");
        builder.addAxis("fine", "Fine", { 0, 0, 5 }, "fine");
        builder.addAxis("long", longName);
        builder.addMaster("regular", { { "wght", 400 }, { "fine", 0 } });
        builder.addMaster("thin", { { "wght", 100 }, { "fine", 0 } });
        builder.addMaster("black", { { "wght", 900 }, { "fine", 0 } });
        builder.addMaster("other", { { "wght", 400 }, { "fine", 5 } });
        auto const glyph = builder.addGlyph("a");
        builder.addGlyphAxis(glyph, "own", "Weight", { 0, 0, 50 });
        builder.addBraceLayer(
            glyph, "own layer", "regular", { { "wght", 400 }, { "fine", 0 }, { "own", 50 } });
        return builder.font();
    }
    TLDocumentWindow ownDocument { font() };
};

/// The built plug-in in the host's window, in the hands of someone who knows other programs.
class Habits : public testing::Test,
               protected ProgramWindows,
               protected FamilyOfHabits,
               protected ProgramWindow {
protected:
    Habits()
        : ProgramWindow(ownDocument)
    {
        document->widget()->resize(1100, 700);
        document->widget()->show();
        document->showGlyph("a");
        document->font()->history().clear();
        activate();
    }

    void goTo(double weight, double fine) const
    {
        document->goToLocation({ { "wght", weight }, { "fine", fine } });
        settle();
    }
    std::shared_ptr<NSTextField> field(std::string const& axis) const
    {
        return in<NSTextField>(row(axis), "valueField");
    }
    QWidget& editView() const
    {
        auto const controller = document->editViewController();
        return *qtWidget(*std::dynamic_pointer_cast<TLDocumentEditViewController>(controller)->lineView());
    }
    /// The tool tip over a place of a view.
    static std::string toolTipOver(NSView const& view, QPoint place)
    {
        auto* const widget = qtWidget(view);
        QHelpEvent event(QEvent::ToolTip, place, widget->mapToGlobal(place));
        QCoreApplication::sendEvent(widget, &event);
        return QToolTip::text().toStdString();
    }
};

struct KeyCase {
    std::string axis;
    double from;
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
    double to;
};

} // namespace

TEST_F(Habits, keysStepAFocusedSliderAndMovingAboutIsNoChangeOfTheDocument)
{
    for (auto const& [axis, from, key, modifiers, to] : {
             KeyCase { "Weight", 500, Qt::Key_Right, {}, 501 },
             { "Weight", 500, Qt::Key_Up, Qt::ShiftModifier, 510 },
             { "Weight", 500, Qt::Key_Left, Qt::ShiftModifier, 490 },
             { "Weight", 100, Qt::Key_Down, {}, 100 },
             { "Weight", 500, Qt::Key_PageUp, {}, 900 },
             { "Weight", 500, Qt::Key_PageDown, {}, 400 },
             { "Weight", 500, Qt::Key_Home, {}, 100 },
             { "Weight", 500, Qt::Key_End, {}, 900 },
             { "Weight", 500, Qt::Key_Backspace, {}, 400 },
             { "Weight", 500, Qt::Key_Delete, {}, 400 },
             { "Fine", 0.5, Qt::Key_Right, {}, 0.6 },
             { "Fine", 2, Qt::Key_Left, Qt::ShiftModifier, 1.5 },
             { "Fine", 0.5, Qt::Key_Delete, {}, 0 },
         }) {
        goTo(axis == "Weight" ? from : 400, axis == "Fine" ? from : 0);
        auto const knob = slider(axis);
        qtWidget(*knob)->setFocus(Qt::TabFocusReason);
        press(key, modifiers);
        EXPECT_NEAR(knob->doubleValue(), to, 1e-9)
            << axis << ' ' << QKeySequence(key).toString().toStdString();
        EXPECT_TRUE(knob->isFirstResponder()) << "also where a layer was landed on";
    }
    EXPECT_FALSE(document->font()->history().canUndo());
    EXPECT_FALSE(document->widget()->isWindowModified());
}

TEST_F(Habits, aFieldReadsBothDecimalSeparatorsAndGivesBackWhatItHadForAnythingElse)
{
    struct Case {
        char const* text;
        double value;
    };
    for (char const* locale : { "en_US", "de_DE" }) {
        NSSetCurrentLocale(locale);
        for (auto const& [text, value] : { Case { "0.3", 0.3 }, { "0,4", 0.4 }, { " ,25", 0.3 }, { "9", 5 },
                 { "", 0.5 }, { "a lot", 0.5 }, { "0.1,2", 0.5 } }) {
            goTo(400, 0.5);
            window->click(*field("Fine"));
            press(Qt::Key_A, Qt::ControlModifier);
            press(Qt::Key_Delete);
            window->type(text);
            press(Qt::Key_Return);
            EXPECT_NEAR(slider("Fine")->doubleValue(), value, 0.051) << locale << ' ' << text;
            EXPECT_TRUE(field("Fine")->isFirstResponder()) << "Return stays";
        }
    }
    goTo(400, 0.5);
    window->type("0.7");
    press(Qt::Key_Escape);
    EXPECT_EQ(text("Fine"), "0,5");
    press(Qt::Key_Up);
    EXPECT_NEAR(slider("Fine")->doubleValue(), 0.6, 1e-9);
}

TEST_F(Habits, theMouseLeavesTheKeyboardToTheEditViewButForAFieldWhoseTextIsThenSelected)
{
    editView().setFocus();
    auto const keepsIt = [&](char const* what) { EXPECT_TRUE(editView().hasFocus()) << what; };
    window->click(*slider("Weight"), 0.3);
    keepsIt("slider");
    window->moveTo(*row("Weight"), 0.2, 0.2);
    window->click(*in<NSButton>(row("Weight"), "stepUpButton"));
    keepsIt("step button");
    window->click(*row("Weight"), 0.3, 0.2);
    keepsIt("row");
    auto const& layers = control<QListView>("Layers");
    window->clickAt(*layers.viewport(), layers.visualRect(layers.model()->index(1, 0)).center());
    keepsIt("layers");
    EXPECT_EQ(document->stateText(), "thin");
    for (auto const* const widget : document->widget()->findChildren<QWidget*>()) {
        bool const isField = qobject_cast<QLineEdit const*>(widget) || widget == &editView();
        bool const takesIt = widget->isVisible() && (widget->focusPolicy() & Qt::ClickFocus);
        EXPECT_TRUE(isField || !takesIt)
            << widget->metaObject()->className() << ' ' << widget->accessibleName().toStdString();
    }
    window->click(*field("Weight"));
    EXPECT_EQ(qobject_cast<QLineEdit*>(qtWidget(*field("Weight")))->selectedText(), "100");
    press(Qt::Key_Escape);
    keepsIt("Escape in a field in which nothing was typed");
}

TEST_F(Habits, aShortcutLeadsToTheFilterAndEscapeClearsItAndGoesBack)
{
    editView().setFocus();
    press(Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
    auto const filter = part<NSSearchField>("filterField");
    ASSERT_TRUE(filter->isFirstResponder());
    window->type("fin");
    EXPECT_EQ(table()->numberOfRows(), 2U);
    press(Qt::Key_Escape);
    EXPECT_EQ(filter->stringValue(), "");
    EXPECT_EQ(table()->numberOfRows(), 6U);
    EXPECT_TRUE(editView().hasFocus());
}

TEST_F(Habits, toolTipsTellValuesWholeNamesAndWhoseAxisARowIs)
{
    QPoint const onName(20, 12);
    EXPECT_EQ(toolTipOver(*row("Weight"), onName), "Font Axes: Weight");
    auto const glyphRow = table()->viewAtColumnRow(0, 5, false);
    EXPECT_EQ(toolTipOver(*in<NSTextField>(glyphRow, "nameLabel"), { 4, 4 }), "Glyph Axes: Weight");
    EXPECT_EQ(toolTipOver(*slider("Weight"), { 9, 9 }), "400, between 100 and 900");
    EXPECT_EQ(toolTipOver(*in<NSTextField>(row(longName), "nameLabel"), { 4, 4 }), longName);
}
