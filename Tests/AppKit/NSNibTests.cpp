#include "Platform/AppKit/NSNib.h"

#include "Platform/AppKit/NSButton.h"
#include "Platform/AppKit/NSSearchField.h"
#include "Platform/AppKit/NSSlider.h"
#include "Platform/AppKit/NSTableCellView.h"
#include "Platform/AppKit/NSTableView.h"
#include "Platform/Foundation/NSLocale.h"
#include "Platform/Qt/NSViewBacking.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryDir>

#include <fstream>

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::vector<std::string> awakened;

/// An owner with a required and an optional outlet and one action.
class Owner final : public NSObject, public NSNibOwner {
public:
    std::weak_ptr<NSTextField> nameLabel;
    std::shared_ptr<NSButton> addButton;
    int pressed { 0 };

    void press(std::shared_ptr<NSButton> const&) { ++pressed; }
    std::span<NSOutlet const> outlets() const override
    {
        static std::array const outlets {
            NSOutletMake("nameLabel", &Owner::nameLabel),
            NSOutletMake("addButton", &Owner::addButton, NSOutletPresence::optional),
        };
        return outlets;
    }
    std::span<NSMethod const> methods() const override
    {
        static std::array const methods { NSMethodMake("press:", &Owner::press) };
        return methods;
    }
    void awakeFromNib() override { awakened.push_back("owner"); }
};

/// A cell that owns its outlets, as those that a table makes.
class Cell final : public NSTableCellView, public NSNibOwner {
public:
    std::weak_ptr<NSTextField> nameLabel;
    bool decoded { false };

    bool initWithCoder(NSCoder const& coder) override
    {
        decoded = coder.decodeString("NSIdentifier") == "cell";
        return NSTableCellView::initWithCoder(coder);
    }
    void awakeFromNib() override { awakened.push_back(nameLabel.lock() ? "connected cell" : "cell"); }
    std::span<NSOutlet const> outlets() const override
    {
        static std::array const outlets { NSOutletMake("nameLabel", &Cell::nameLabel) };
        return outlets;
    }
};

class RefusingView final : public NSView {
public:
    bool initWithCoder(NSCoder const&) override { return false; }
};

/// A bundle in a temporary folder, to write interface descriptions into.
class Nib : public testing::Test {
protected:
    Nib()
    {
        std::filesystem::create_directories(path / "Resources");
        NSRegisterViewClass("Cell", [] { return std::make_shared<Cell>(); });
        NSRegisterViewClass("RefusingView", [] { return std::make_shared<RefusingView>(); });
        awakened.clear();
    }

    void write(std::string const& body)
    {
        std::ofstream(path / "Resources" / "Form.ui")
            << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ui version=\"4.0\">\n<class>Form</class>\n"
            << body << "\n</ui>\n";
    }
    static std::string text(std::string const& name, std::string const& value)
    {
        return "<property name=\"" + name + "\"><string>" + value + "</string></property>";
    }
    static std::string widget(
        std::string const& type, std::string const& name, std::string const& content = {})
    {
        return "<widget class=\"" + type + "\" name=\"" + name + "\">" + content + "</widget>";
    }
    std::shared_ptr<NSView> load(std::shared_ptr<NSObject> const& loadOwner)
    {
        errors.clear();
        return NSNib("Form", NSBundle::bundleWithPath(path)).instantiate(loadOwner, errors);
    }
    /// What is said about a form whose top view holds these widgets, besides the label.
    std::vector<std::string> errorsOf(std::string const& content)
    {
        awakened.clear();
        write(widget("QWidget", "top", content));
        EXPECT_EQ(load(owner), nullptr);
        EXPECT_EQ(owner->nameLabel.lock(), nullptr) << "a failed load leaves nothing connected";
        EXPECT_EQ(owner->addButton, nullptr);
        EXPECT_THAT(awakened, IsEmpty());
        return errors;
    }

    QTemporaryDir folder;
    std::filesystem::path path { folder.path().toStdString() + "/Test.bundle" };
    std::shared_ptr<Owner> owner = std::make_shared<Owner>();
    std::vector<std::string> errors;
    std::string const label = widget("QLabel", "nameLabel", text("outlet", "nameLabel"));
};

auto sentence(std::string const& name)
{
    return AllOf(HasSubstr("Form.ui"), HasSubstr("Owner"), HasSubstr("'" + name + "'"));
}

} // namespace

TEST_F(Nib, connectsOutletsAndActionsAndWakesTheViewsBeforeTheOwner)
{
    write(widget("QWidget", "top",
        label + widget("QPushButton", "addButton", text("outlet", "addButton") + text("action", "press:"))
            + widget("Cell", "inner")));
    auto const view = load(owner);
    ASSERT_NE(view, nullptr);
    EXPECT_THAT(errors, IsEmpty());
    ASSERT_NE(owner->nameLabel.lock(), nullptr);
    owner->addButton->performClick();
    EXPECT_EQ(owner->pressed, 1);
    EXPECT_EQ(awakened, (std::vector<std::string> { "cell", "owner" }));
    EXPECT_EQ(view->descendantWithIdentifier("nameLabel"), owner->nameLabel.lock());
}

TEST_F(Nib, makesTheTopViewTheOwnerWhenThereIsNoOther)
{
    write(widget("Cell", "cell", label));
    auto const cell = std::dynamic_pointer_cast<Cell>(load(nullptr));
    ASSERT_NE(cell, nullptr);
    EXPECT_TRUE(cell->decoded);
    EXPECT_EQ(awakened, (std::vector<std::string> { "connected cell" }));
}

TEST_F(Nib, showsItsTextsInTheLanguageOfTheUser)
{
    auto const language = path / "Resources" / "de.lproj";
    std::filesystem::create_directories(language);
    std::ofstream(language / "Localizable.strings")
        << R"("Add" = "Neu"; "Value" = "Wert"; "None" = "Keiner"; "Name & more" = "Name & mehr"; "x" = "y";)";
    write(widget("QWidget", "top",
        widget("QLabel", "nameLabel", text("outlet", "nameLabel") + text("text", "Name &amp; more"))
            + widget("QLineEdit", "field", text("placeholderText", "None") + text("accessibleName", "Value"))
            + widget("QPushButton", "button", text("text", "Add") + text("toolTip", "Not in the table"))
            + widget("NSSlider", "titled", text("accessibilityTitle", "nameLabel"))
            + widget(
                "QLabel", "kept", R"(<property name="text"><string notr="true">x</string></property>)")));
    NSSetCurrentLocale("de_DE");
    auto const view = load(owner);
    NSSetCurrentLocale("");
    ASSERT_NE(view, nullptr);
    auto const fieldNamed = [&](char const* name) {
        return std::dynamic_pointer_cast<NSTextField>(view->descendantWithIdentifier(name));
    };
    EXPECT_EQ(fieldNamed("nameLabel")->stringValue(), "Name & mehr");
    EXPECT_EQ(fieldNamed("field")->placeholderString(), "Keiner");
    EXPECT_EQ(fieldNamed("field")->accessibilityLabel(), "Wert");
    EXPECT_EQ(fieldNamed("kept")->stringValue(), "x");
    auto const titled = view->descendantWithIdentifier("titled");
    EXPECT_EQ(titled->accessibilityLabel(), "Name & mehr");
    for (auto const* title : { "Nom :", "Nom：", "Nom" }) {
        fieldNamed("nameLabel")->setStringValue(title);
        EXPECT_EQ(titled->accessibilityLabel(), "Nom");
    }
    auto const button = std::dynamic_pointer_cast<NSButton>(view->descendantWithIdentifier("button"));
    EXPECT_EQ(button->title(), "Neu");
    EXPECT_EQ(button->toolTip(), "Not in the table");
}

TEST_F(Nib, namesTheClassAtItsTopWhereThatIsTheOwner)
{
    auto const ofCell = HasSubstr("Form.ui of Cell ");
    write(widget("Cell", "cell"));
    EXPECT_EQ(load(nullptr), nullptr);
    EXPECT_THAT(errors, ElementsAre(AllOf(ofCell, HasSubstr("'nameLabel'"))));
    write(widget("Cell", "cell", label + widget("Celll", "x")));
    EXPECT_EQ(load(nullptr), nullptr);
    EXPECT_THAT(errors, ElementsAre(AllOf(ofCell, HasSubstr("'Celll'"))));
    write("<widget class=\"Cell\" name=\"cell\">\n<property");
    EXPECT_EQ(load(nullptr), nullptr);
    EXPECT_THAT(errors, ElementsAre(ofCell));
    std::filesystem::remove(path / "Resources" / "Form.ui");
    EXPECT_EQ(load(nullptr), nullptr);
    EXPECT_THAT(errors, ElementsAre(HasSubstr("Form.ui is not in the folder")));
}

TEST_F(Nib, doesNotKeepItsOwnerAlive)
{
    write(widget("QWidget", "top", label + widget("QPushButton", "button", text("action", "press:"))));
    auto const view = load(owner);
    std::weak_ptr<Owner> const weak = owner;
    owner.reset();
    EXPECT_TRUE(weak.expired());
    std::dynamic_pointer_cast<NSButton>(view->descendantWithIdentifier("button"))->performClick();
}

TEST_F(Nib, makesViewsOfTheStandardWidgetsWithTheirProperties)
{
    auto const boolean = [](std::string const& name, bool value) {
        return "<property name=\"" + name + "\"><bool>" + (value ? "true" : "false") + "</bool></property>";
    };
    write(widget("QWidget", "top",
        label + widget("QLabel", "wrapping", text("text", "Long") + boolean("wordWrap", true))
            + widget("QLineEdit", "field",
                text("text", "5") + text("placeholderText", "None") + text("formatter", "number")
                    + text("maximumFractionDigits", "4") + boolean("enabled", false)
                    + text("accessibleName", "Value"))
            + widget("QToolButton", "tool", text("symbol", "plus") + text("toolTip", "Add"))
            + widget("QPushButton", "hidden", boolean("visible", false)) + widget("NSSearchField", "search")
            + widget("NSSlider", "slider") + widget("NSTableView", "table") + widget("Line", "line")));
    auto const view = load(owner);
    ASSERT_NE(view, nullptr);
    auto const field = std::dynamic_pointer_cast<NSTextField>(view->descendantWithIdentifier("field"));
    EXPECT_EQ(field->stringValue(), "5");
    EXPECT_EQ(field->placeholderString(), "None");
    EXPECT_EQ(field->accessibilityLabel(), "Value");
    ASSERT_NE(field->formatter(), nullptr);
    EXPECT_EQ(field->formatter()->maximumFractionDigits(), 4);
    EXPECT_TRUE(field->isEditable());
    EXPECT_FALSE(field->isEnabled());
    EXPECT_FALSE(owner->nameLabel.lock()->isEditable());
    auto const tool = std::dynamic_pointer_cast<NSButton>(view->descendantWithIdentifier("tool"));
    EXPECT_EQ(tool->image()->symbolName(), "plus");
    EXPECT_EQ(tool->toolTip(), "Add");
    EXPECT_EQ(tool->bezelStyle(), NSBezelStyle::borderless);
    EXPECT_TRUE(view->descendantWithIdentifier("hidden")->isHidden());
    EXPECT_NE(std::dynamic_pointer_cast<NSSearchField>(view->descendantWithIdentifier("search")), nullptr);
    EXPECT_NE(std::dynamic_pointer_cast<NSTableView>(view->descendantWithIdentifier("table")), nullptr);
    EXPECT_EQ(view->subviews().size(), 8u) << "a line is no view";
}

TEST_F(Nib, givesBackTheTextOfTheFileAfterAWrongNumber)
{
    write(widget("QWidget", "top",
        label + widget("QLineEdit", "field", text("text", "5") + text("formatter", "number"))));
    auto const view = load(owner);
    auto const field = std::dynamic_pointer_cast<NSTextField>(view->descendantWithIdentifier("field"));
    EXPECT_EQ(field->doubleValue(), 5);
}

TEST_F(Nib, nestsViewsAsTheFileDoesAndLaysThemOut)
{
    write(widget("QWidget", "top",
        "<layout class=\"QVBoxLayout\"><item>"
            + widget("QFrame", "frame", "<layout class=\"QHBoxLayout\"><item>" + label + "</item></layout>")
            + "</item><item>" + widget("Cell", "inner", widget("NSSlider", "slider")) + "</item></layout>"));
    auto const view = load(owner);
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(view->subviews().size(), 2u);
    EXPECT_EQ(owner->nameLabel.lock()->superview(), view);
    auto const slider = view->descendantWithIdentifier("slider");
    EXPECT_EQ(slider->superview(), view->descendantWithIdentifier("inner"));
    view->setFrame({ {}, { 300, 200 } });
    view->layoutSubtreeIfNeeded();
    EXPECT_GT(view->descendantWithIdentifier("inner")->frame().size.width, 200);
}

TEST_F(Nib, namesEveryOutletAndActionThatDoesNotFit)
{
    EXPECT_THAT(errorsOf(label + widget("QLabel", "x", text("outlet", "nameLabl"))),
        ElementsAre(sentence("nameLabl")));
    EXPECT_THAT(errorsOf(label + widget("QWidget", "x", text("accessibilityTitle", "y"))),
        ElementsAre(AllOf(sentence("x"), sentence("y"))));
    EXPECT_THAT(errorsOf(""), ElementsAre(sentence("nameLabel")));
    EXPECT_THAT(errorsOf(widget("QPushButton", "x", text("outlet", "nameLabel"))),
        ElementsAre(AllOf(sentence("nameLabel"), HasSubstr("NSButton"))));
    EXPECT_THAT(errorsOf(label + widget("QLabel", "y", text("outlet", "nameLabel"))),
        ElementsAre(AllOf(sentence("nameLabel"), HasSubstr("twice"))));
    EXPECT_THAT(errorsOf(label + widget("QPushButton", "x", text("action", "pres:"))),
        ElementsAre(sentence("pres:")));
    EXPECT_THAT(
        errorsOf(label + widget("QLabel", "x", text("action", "press:"))), ElementsAre(sentence("press:")));
    EXPECT_THAT(errorsOf(label + widget("QPushButton", "x", text("outlet", "a") + text("action", "b"))),
        ElementsAre(sentence("a"), sentence("b")));
}

TEST_F(Nib, namesClassesAndValuesThatAreNotKnown)
{
    EXPECT_THAT(errorsOf(label + widget("Celll", "x")), ElementsAre(sentence("Celll")));
    write(widget("QWidget", "top", label + widget("Celll", "x"))
        + "<customwidgets><customwidget><class>Celll</class><extends>QWidget</extends></customwidget></"
          "customwidgets>");
    EXPECT_EQ(load(owner), nullptr) << "a declared class is not made of its base";
    EXPECT_THAT(errors, ElementsAre(sentence("Celll")));
    EXPECT_THAT(errorsOf(label + widget("QSlider", "x")), ElementsAre(sentence("QSlider")));
    EXPECT_THAT(errorsOf(label + widget("RefusingView", "x")), ElementsAre(sentence("RefusingView")));
    EXPECT_THAT(errorsOf(label + widget("QPushButton", "x", text("symbol", "pluss"))),
        ElementsAre(sentence("pluss")));
    EXPECT_THAT(
        errorsOf(label + widget("QLineEdit", "x", text("formatter", "date"))), ElementsAre(sentence("date")));
    for (auto const* const digits : { "few", "-1" }) {
        EXPECT_THAT(errorsOf(label
                        + widget("QLineEdit", "x",
                            text("formatter", "number") + text("maximumFractionDigits", digits))),
            ElementsAre(sentence(digits)));
    }
}

TEST_F(Nib, namesFilesThatCannotBeRead)
{
    EXPECT_EQ(load(owner), nullptr);
    EXPECT_THAT(errors, ElementsAre(AllOf(HasSubstr("Form.ui"), HasSubstr("Owner"), HasSubstr("Resources"))));
    write("<widget class=\"QWidget\" name=\"top\">\n<property");
    EXPECT_EQ(load(owner), nullptr);
    EXPECT_THAT(errors, ElementsAre(AllOf(HasSubstr("Form.ui"), HasSubstr("line 6"))));
    write("");
    EXPECT_EQ(load(owner), nullptr);
    EXPECT_THAT(errors, ElementsAre(HasSubstr("Form.ui")));
    write(widget("QWidget", "top", label) + widget("QWidget", "second"));
    EXPECT_EQ(load(owner), nullptr);
    EXPECT_THAT(errors, testing::Contains(HasSubstr("more than one")));
    write(widget("QSlider", "top"));
    EXPECT_EQ(load(owner), nullptr);
    EXPECT_FALSE(errors.empty());
}

TEST_F(Nib, stopsTheProgramWhereItMustNotFail)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(NSNib("Form", NSBundle::bundleWithPath(path)).instantiateOrStop(owner), "Form.ui");
}

TEST_F(Nib, leavesNoWidgetBehind)
{
    write(widget("QWidget", "top", label + widget("Cell", "inner", widget("NSSlider", "slider"))));
    load(owner);
    auto const before = QApplication::allWidgets().size();
    load(owner);
    errorsOf(label + widget("Celll", "x"));
    write(widget("QSlider", "top"));
    load(owner);
    EXPECT_EQ(QApplication::allWidgets().size(), before);
}
