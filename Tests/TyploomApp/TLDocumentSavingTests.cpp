#include "Platform/AppKit/NSPopover.h"
#include "Platform/AppKit/NSTextField.h"
#include "Tests/Support/FamilyWriter.h"
#include "Typloom/TyploomApp/TLApplicationController.h"
#include "Typloom/TyploomApp/TLDocumentWindow.h"
#include "Typloom/TyploomApp/TLEditViewController.h"
#include "Typloom/TyploomCore/TLFont.h"

#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QWidget>
#include <gtest/gtest.h>

namespace {

/// Families in files, open in the program's windows.
struct TLDocumentSavingTest : testing::Test {
    FamilyWriter files, otherFiles;
    TLApplicationController application;
    TLDocumentWindow* window { nullptr };

    TLDocumentSavingTest()
    {
        files.writeFamily();
        otherFiles.writeFamily();
        window = open(files);
    }

    TLDocumentWindow* open(FamilyWriter const& family)
    {
        auto const outcome = application.open(family.designspacePath());
        EXPECT_TRUE(outcome.window) << outcome.error;
        settle();
        EXPECT_TRUE(outcome.window->showGlyph("A"));
        settle();
        return outcome.window;
    }

    static void settle()
    {
        for (int turn = 0; turn < 5; ++turn) {
            QCoreApplication::processEvents();
        }
    }

    static double advance(TLDocumentWindow const& of) { return of.editedOutline()->advance; }
    static void setAdvance(TLDocumentWindow const& of, double advance)
    {
        auto const layer = of.font()->glyphForName("A")->layerForId("light");
        auto outline = layer->outline();
        outline.advance = advance;
        layer->setOutline(std::move(outline));
        settle();
    }

    static void press(TLDocumentWindow const& in, Qt::Key key)
    {
        in.widget()->activateWindow();
        settle();
        QTest::keyClick(in.widget()->windowHandle(), key, Qt::ControlModifier);
        settle();
    }

    /// The message that a window shows, null when it shows none.
    static QMessageBox* message(TLDocumentWindow const& of)
    {
        for (auto* const box : of.widget()->findChildren<QMessageBox*>()) {
            if (box->isVisible()) {
                return box;
            }
        }
        return nullptr;
    }
    static void answer(TLDocumentWindow const& of, QString const& title)
    {
        auto* const box = message(of);
        ASSERT_TRUE(box) << "nothing is asked; wanted: " << title.toStdString();
        for (auto* const button : box->buttons()) {
            if (button->text().remove('&') == title) {
                auto const place = button->mapTo(box, button->rect().center());
                QTest::mouseClick(box->windowHandle(), Qt::LeftButton, {}, place);
                return settle();
            }
        }
        FAIL() << "no button " << title.toStdString();
    }

    std::string glyphFile() const { return files.read("Light.ufo/glyphs/A.glif"); }
    void writeGlyphFile(int width) const
    {
        files.write("Light.ufo/glyphs/A.glif", FamilyWriter::glif("A", FamilyWriter::triangle(width), width));
    }
};

} // namespace

TEST_F(TLDocumentSavingTest, savesByItsKeyAndOnlyWhatChanged)
{
    auto const before = files.read("Light.ufo/glyphs/B.glif");
    setAdvance(*window, 321);
    EXPECT_TRUE(window->widget()->isWindowModified());
    press(*window, Qt::Key_S);
    EXPECT_FALSE(message(*window)) << message(*window)->informativeText().toStdString();
    EXPECT_FALSE(window->widget()->isWindowModified());
    EXPECT_NE(glyphFile().find("width=\"321\""), std::string::npos) << glyphFile();
    EXPECT_EQ(files.read("Light.ufo/glyphs/B.glif"), before);
}

TEST_F(TLDocumentSavingTest, takesTheNumberThatIsStillBeingTyped)
{
    QLineEdit* width = nullptr;
    for (auto* const field : window->widget()->findChildren<QLineEdit*>()) {
        width = field->accessibleName() == "Width" ? field : width;
    }
    ASSERT_TRUE(width);
    width->setFocus();
    width->selectAll();
    QTest::keyClicks(width, "654");
    EXPECT_FALSE(window->widget()->isWindowModified());
    press(*window, Qt::Key_S);
    EXPECT_NE(glyphFile().find("width=\"654\""), std::string::npos) << glyphFile();
}

TEST_F(TLDocumentSavingTest, anotherProgramsChangeIsOverwrittenOnlyWhenTheUserSaysSo)
{
    setAdvance(*window, 321);
    writeGlyphFile(777);
    auto const foreign = glyphFile();
    press(*window, Qt::Key_S);
    ASSERT_TRUE(message(*window));
    EXPECT_NE(message(*window)->informativeText().indexOf("A.glif"), -1);
    EXPECT_EQ(message(*window)->defaultButton()->text().remove('&'), "Cancel");
    QTest::keyClick(message(*window)->windowHandle(), Qt::Key_Escape);
    settle();
    EXPECT_EQ(glyphFile(), foreign);
    EXPECT_TRUE(window->widget()->isWindowModified());

    press(*window, Qt::Key_S);
    answer(*window, "Overwrite");
    EXPECT_NE(glyphFile().find("width=\"321\""), std::string::npos) << glyphFile();
    EXPECT_FALSE(window->widget()->isWindowModified());
}

TEST_F(TLDocumentSavingTest, aWindowWithChangesAsksBeforeItCloses)
{
    auto const before = glyphFile();
    setAdvance(*window, 321);
    window->widget()->close();
    settle();
    answer(*window, "Cancel");
    EXPECT_TRUE(window->widget()->isVisible());
    EXPECT_EQ(advance(*window), 321);

    window->widget()->close();
    settle();
    answer(*window, "Save");
    EXPECT_TRUE(application.windows().empty());
    auto const saved = glyphFile();
    EXPECT_NE(saved, before);

    window = open(files);
    setAdvance(*window, 322);
    window->widget()->close();
    settle();
    answer(*window, "Discard");
    EXPECT_TRUE(application.windows().empty());
    EXPECT_EQ(glyphFile(), saved);
}

TEST_F(TLDocumentSavingTest, aSaveThatFailsKeepsTheWindowOpen)
{
    setAdvance(*window, 321);
    files.remove("");
    window->widget()->close();
    settle();
    answer(*window, "Save");
    ASSERT_TRUE(message(*window));
    EXPECT_EQ(message(*window)->text(), "The family was not saved.");
    EXPECT_TRUE(message(*window)->informativeText().contains("is not there any more"));
    answer(*window, "OK");
    EXPECT_TRUE(window->widget()->isVisible());
    EXPECT_TRUE(window->widget()->isWindowModified());
    EXPECT_EQ(advance(*window), 321);
}

TEST_F(TLDocumentSavingTest, quittingClosesAllWindowsOrNone)
{
    auto* const other = open(otherFiles);
    auto* const invitation = application.openInvitation();
    auto const all = application.windows();
    setAdvance(*window, 321);
    setAdvance(*other, 321);
    press(*invitation, Qt::Key_Q);
    answer(*other, "Discard");
    EXPECT_EQ(application.windows(), all);
    answer(*window, "Cancel");
    EXPECT_EQ(application.windows(), all);
    EXPECT_TRUE(other->widget()->isVisible());

    press(*invitation, Qt::Key_Q);
    answer(*other, "Discard");
    setAdvance(*other, 322);
    answer(*window, "Save");
    answer(*other, "Discard"); // What was changed since was not given up.
    EXPECT_TRUE(application.windows().empty());
    EXPECT_NE(glyphFile().find("width=\"321\""), std::string::npos);
    EXPECT_EQ(otherFiles.read("Light.ufo/glyphs/A.glif").find("width=\"32"), std::string::npos);
}

TEST_F(TLDocumentSavingTest, aSaveThatFailsOffersACopyWhichOpens)
{
    setAdvance(*window, 321);
    auto const folder = files.path("Light.ufo").parent_path();
    std::filesystem::rename(files.path("Bold.ufo"), files.path("gone"));
    press(*window, Qt::Key_S);
    answer(*window, "Save a Copy…");
    auto* const chooser = window->widget()->findChild<QFileDialog*>();
    ASSERT_TRUE(chooser);
    auto* const name = chooser->findChild<QLineEdit*>();
    ASSERT_TRUE(name);
    EXPECT_EQ(name->text(), "Test copy");
    name->setText((folder.parent_path() / "Rescued").c_str());
    QTest::keyClick(name, Qt::Key_Return);
    settle();
    ASSERT_TRUE(message(*window));
    EXPECT_EQ(message(*window)->text(), "The copy is saved.");
    EXPECT_TRUE(message(*window)->informativeText().contains("kerning")) << "what is missing in it";
    answer(*window, "Open Copy");
    ASSERT_EQ(application.windows().size(), 2u);
    auto const& copy = *application.windows().back();
    EXPECT_EQ(copy.font()->path(), folder.parent_path() / "Rescued/Rescued.designspace");
    EXPECT_EQ(copy.font()->glyphForName("A")->layerForId("light")->outline().advance, 321);
    EXPECT_TRUE(window->widget()->isWindowModified()) << "the window stays on its family";
    EXPECT_FALSE(copy.widget()->isWindowModified());
}

TEST_F(TLDocumentSavingTest, followsFilesThatAnotherProgramChanges)
{
    auto const content = std::make_shared<NSViewController>();
    content->setView(NSTextField::labelWithString("An axis"));
    auto const popover = std::make_shared<NSPopover>();
    popover->setBehavior(NSPopoverBehavior::transient);
    popover->setContentViewController(content);
    popover->showRelativeToRect(
        { { 100, 100 }, { 20, 20 } }, window->editViewController()->view(), NSRectEdge::maxX);
    settle();
    files.write("Light.ufo/notes.txt", "nothing of the family");
    QTest::qWait(400);
    EXPECT_TRUE(popover->isShown());
    files.write("Light.ufo/glyphs/A.glif", glyphFile() + "<!-- nothing that is shown -->");
    QTest::qWait(400);
    EXPECT_TRUE(popover->isShown());

    writeGlyphFile(777);
    EXPECT_TRUE(QTest::qWaitFor([this] { return advance(*window) == 777; }, 3000)) << "written in place";
    EXPECT_FALSE(popover->isShown());
    files.write("Light.ufo/glyphs/new", FamilyWriter::glif("A", FamilyWriter::triangle(778), 778));
    std::filesystem::rename(files.path("Light.ufo/glyphs/new"), files.path("Light.ufo/glyphs/A.glif"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return advance(*window) == 778; }, 3000)) << "replaced";
    EXPECT_FALSE(window->widget()->isWindowModified());

    setAdvance(*window, 321);
    writeGlyphFile(779);
    QTest::qWait(400);
    EXPECT_EQ(advance(*window), 321) << "what the user has changed stays";
    EXPECT_NE(window->report().back().find("'A'"), std::string::npos) << "and the window says so";
    press(*window, Qt::Key_Z);
    EXPECT_EQ(advance(*window), 779) << "without changes it follows again";
    EXPECT_TRUE(window->report().empty());
}
