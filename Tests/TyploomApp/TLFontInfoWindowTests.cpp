#include "Platform/AppKit/NSApplication.h"
#include "Platform/Foundation/NSLocale.h"
#include "Tests/TyploomApp/EditFamily.h"
#include "Typloom/TyploomApp/TLDocumentWindow.h"
#include "Typloom/TyploomApp/TLEditViewController.h"
#include "Typloom/TyploomCore/TLDocumentHistory.h"

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>
#include <gtest/gtest.h>

namespace {

/// The Font Info window of a family, opened by its keys; a German types into it.
struct TLFontInfoWindowTest : testing::Test {
    EditFamily family;
    TLDocumentWindow window { family.font() };
    QDialog* info { nullptr };

    TLFontInfoWindowTest()
    {
        NSSetCurrentLocale("de_DE");
        NSSetBeepHandler([] {});
        window.widget()->show();
        settle();
        family.font()->history().clear();
        QTest::keyClick(window.widget()->windowHandle(), Qt::Key_I, Qt::ControlModifier);
        settle();
        info = window.widget()->findChild<QDialog*>();
    }
    ~TLFontInfoWindowTest() override
    {
        NSSetBeepHandler({});
        NSSetCurrentLocale("");
    }

    static void settle()
    {
        for (int turn = 0; turn < 5; ++turn) {
            QCoreApplication::processEvents();
        }
    }

    TLDocumentHistory& history() const { return family.font()->history(); }

    QTableWidget& table(QString const& name) const
    {
        auto const tables = info->findChildren<QTableWidget*>();
        auto const isIt
            = [&name](QTableWidget const* candidate) { return candidate->accessibleName() == name; };
        auto* const table = *std::find_if(tables.begin(), tables.end(), isIt);
        info->findChild<QTabWidget*>()->setCurrentIndex(name == "Masters");
        settle();
        return *table;
    }

    /// A double click opens the editor, the text replaces what is in it.
    void type(QTableWidget& into, int row, int column, char const* text)
    {
        auto const area = into.visualItemRect(into.item(row, column));
        auto const place = into.viewport()->mapTo(info, area.center());
        QTest::mouseDClick(info->windowHandle(), Qt::LeftButton, {}, place);
        settle();
        if (auto* const editor = into.viewport()->findChild<QLineEdit*>()) {
            QTest::keyClicks(editor, text);
            QTest::keyClick(editor, Qt::Key_Return);
        }
        settle();
    }

    /// The refusal that is shown in the window, its tab in front.
    static std::string refusal(QWidget const& within)
    {
        for (auto const* label : within.findChildren<QLabel*>()) {
            if (label->accessibleName() == "Refusal" && label->isVisible()) {
                return label->text().toStdString();
            }
        }
        return {};
    }

    static QPushButton& button(QWidget const& within, QString const& title)
    {
        for (auto* const candidate : within.findChildren<QPushButton*>()) {
            if (candidate->text() == title) {
                return *candidate;
            }
        }
        throw std::runtime_error("no button " + title.toStdString());
    }
    static void click(QPushButton& button)
    {
        auto* const top = button.window();
        QTest::mouseClick(top->windowHandle(), Qt::LeftButton, {}, button.mapTo(top, button.rect().center()));
        settle();
    }
};

} // namespace

TEST_F(TLFontInfoWindowTest, axesAreRenamedInPlaceEachEditOneStep)
{
    ASSERT_TRUE(info);
    auto& axes = table("Axes");
    ASSERT_EQ(axes.rowCount(), 1);
    EXPECT_EQ(axes.item(0, 4)->text(), "1000");
    type(axes, 0, 0, " Gewicht ");
    EXPECT_EQ(family.font()->axes().front()->name(), "Gewicht");
    EXPECT_EQ(axes.item(0, 0)->text(), "Gewicht");
    type(axes, 0, 0, "Fett");
    type(axes, 0, 0, "  ");
    EXPECT_EQ(axes.item(0, 0)->text(), "Fett");
    EXPECT_EQ(refusal(*info), "An axis needs a name.");

    QTest::keyClick(info->windowHandle(), Qt::Key_Z, Qt::ControlModifier);
    settle();
    EXPECT_EQ(axes.item(0, 0)->text(), "Gewicht");
    QTest::keyClick(info->windowHandle(), Qt::Key_Z, Qt::ControlModifier);
    settle();
    EXPECT_EQ(axes.item(0, 0)->text(), "weight");
    EXPECT_FALSE(history().canUndo());
}

TEST_F(TLFontInfoWindowTest, anEditorKeepsWhatIsTypedWhileTheDocumentChanges)
{
    auto& axes = table("Axes");
    axes.setCurrentCell(0, 0);
    axes.setFocus();
    QTest::keyClick(info->windowHandle(), Qt::Key_F2);
    auto* const editor = axes.viewport()->findChild<QLineEdit*>();
    ASSERT_TRUE(editor);
    QTest::keyClicks(editor, "Wei");
    family.c->axes().front()->setName("elbow");
    settle();
    EXPECT_EQ(editor->text(), "Wei");
    QTest::keyClick(editor, Qt::Key_Z, Qt::ControlModifier);
    settle();
    EXPECT_EQ(family.c->axes().front()->name(), "elbow") << "the text field's own undo comes first";
    QTest::keyClick(editor, Qt::Key_Escape);
    EXPECT_EQ(family.font()->axes().front()->name(), "weight");
}

TEST_F(TLFontInfoWindowTest, masterValuesAreTypedInTheUsersLanguageAndNonsenseIsGivenBack)
{
    auto& masters = table("Masters");
    auto const& bold = *family.font()->fontMasters()[1];
    type(masters, 1, 1, "912,5");
    EXPECT_EQ(bold.axisInternalValueValueForId("wght"), 912.5);
    EXPECT_EQ(masters.item(1, 1)->text(), "912,5");
    EXPECT_EQ(history().undoTitle(), "Change Master");
    for (auto const& [text, reason] :
        { std::pair { "fat", "“fat” is no number." }, { "1001", "weight goes from 0 to 1000." },
            { "0", "The master 'Light' stands at this place already." } }) {
        type(masters, 1, 1, text);
        EXPECT_EQ(masters.item(1, 1)->text(), "912,5") << text;
        EXPECT_EQ(refusal(*info), reason);
    }
    type(masters, 0, 1, "10");
    EXPECT_EQ(masters.item(0, 1)->text(), "0") << "the default master stays where it is";
    type(masters, 1, 0, "Light");
    EXPECT_EQ(refusal(*info), "There is a master 'Light' already.");
    type(masters, 1, 0, "Fett");
    EXPECT_EQ(refusal(*info), "");
    EXPECT_EQ(window.font()->fontMasters()[1]->name(), "Fett");
}

TEST_F(TLFontInfoWindowTest, aMasterIsAddedWhereTheViewStandsAndShown)
{
    auto& masters = table("Masters");
    auto& add = button(*info, "Add Master");
    EXPECT_FALSE(add.isEnabled()) << "the view stands on a master";
    window.showGlyph("B");
    window.goToLocation({ { "wght", 500.0 } });
    settle();
    ASSERT_TRUE(add.isEnabled());
    click(add);
    ASSERT_EQ(masters.rowCount(), 3);
    auto* const editor = masters.viewport()->findChild<QLineEdit*>();
    ASSERT_TRUE(editor) << "its name is typed at once";
    QTest::keyClicks(editor, "Medium");
    QTest::keyClick(editor, Qt::Key_Return);
    settle();
    EXPECT_EQ(window.stateText(), "Medium");
    EXPECT_EQ(window.editViewController()->masterIndex(), 2u);
    EXPECT_EQ(window.editedOutline(), boxOutline(600));
    ASSERT_FALSE(window.report().empty());
    EXPECT_NE(window.report().back().find("'X'"), std::string::npos) << "its outlines do not fit together";

    QTest::keyClick(window.widget()->windowHandle(), Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(window.widget()->windowHandle(), Qt::Key_Z, Qt::ControlModifier);
    settle();
    EXPECT_EQ(masters.rowCount(), 2);
    EXPECT_EQ(window.stateText(), "Light");
    EXPECT_FALSE(history().isModified());
}

TEST_F(TLFontInfoWindowTest, anAxisIsAddedFromADialogThatSaysWhatIsWrong)
{
    auto& axes = table("Axes");
    click(button(*info, "Add Axis…"));
    auto* const dialog = info->findChild<QDialog*>();
    ASSERT_TRUE(dialog);
    auto const fields = dialog->findChildren<QLineEdit*>();
    ASSERT_EQ(fields.size(), 5);
    EXPECT_EQ(fields[1]->text(), "wdth") << "the first of the usual axes that the font has not";
    auto& add = button(*dialog, "Add Axis");
    EXPECT_TRUE(add.isEnabled());
    fields[1]->selectAll();
    QTest::keyClicks(fields[1], "wght");
    EXPECT_FALSE(add.isEnabled());
    EXPECT_EQ(refusal(*dialog), "The axis 'weight' has the tag wght already.");
    fields[1]->selectAll();
    QTest::keyClicks(fields[1], "wdth");
    fields[2]->selectAll();
    QTest::keyClicks(fields[2], "62,5");
    QTest::keyClick(fields[2], Qt::Key_Return);
    settle();
    ASSERT_EQ(axes.rowCount(), 2);
    EXPECT_EQ(axes.item(1, 2)->text(), "62,5");
    EXPECT_EQ(family.font()->axes()[1]->minimum(), 62.5);
    EXPECT_EQ(history().undoTitle(), "Add Axis");
}
