#include "Typloom/Formats/FamilyReload.h"

#include "Tests/Support/DocumentText.h"
#include "Tests/Support/FamilyCopy.h"
#include "Typloom/Formats/DesignspaceReader.h"
#include "Typloom/Formats/FamilySaver.h"
#include "Typloom/TyploomCore/TLDocumentHistory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

/// An open family whose files another program changes.
class FamilyReload : public testing::Test {
protected:
    FamilyCopy copy { std::filesystem::path(SOURCE_FOLDER) / "Fonts/Skarvane/Skarvane.designspace" };
    std::shared_ptr<TLFont> font { *TLOpenFamily(copy.path()) };
    std::shared_ptr<TLGlyph> a { font->glyphForName("a") };
    std::string const file { "Skarvane-Regular.ufo/glyphs/a.glif" };

    void expectToBeAsTheFiles() const
    {
        EXPECT_EQ(textOf(*font), textOf(**TLOpenFamily(copy.path())));
        EXPECT_FALSE(font->history().isModified());
    }

    void moveNode(std::string const& glyphName) const
    {
        auto const layer = font->glyphForName(glyphName)->layers().begin()->second;
        auto outline = layer->outline();
        outline.contours.front().points.front().x += 1;
        layer->setOutline(std::move(outline));
        font->history().endStep();
    }
};

} // namespace

TEST_F(FamilyReload, followsAGlyphAndKeepsItsObjects)
{
    EXPECT_FALSE(TLReloadChangedFiles(font).anything);
    auto const layer = a->layerForId("Skarvane Regular");
    moveNode("n");
    copy.replace(file, "width=\"491\"", "width=\"500\"");
    copy.replace(file, "<string>Spur</string>", "<string>Thorn</string>");

    auto const outcome = TLReloadChangedFiles(font);
    EXPECT_TRUE(outcome.anything);
    EXPECT_THAT(outcome.sentences, ElementsAre());
    EXPECT_EQ(a->layerForId("Skarvane Regular"), layer);
    EXPECT_EQ(layer->outline().advance, 500);
    EXPECT_EQ(a->axes().back()->name(), "Thorn");
    EXPECT_TRUE(font->history().canUndo());
    EXPECT_FALSE(TLReloadChangedFiles(font).anything);
    font->history().undo();
    expectToBeAsTheFiles();
}

TEST_F(FamilyReload, disturbsNobodyUnlessTheDocumentChanges)
{
    int disturbances = 0;
    auto const reload
        = [&] { return TLReloadChangedFiles(font, [&disturbances] { ++disturbances; }).anything; };
    copy.write("Skarvane-Regular.ufo/kerning.plist", "<plist/>");
    copy.write(file, copy.text(file));
    EXPECT_FALSE(reload());
    copy.replace(file, "</outline>", "</outline>\n  <note>A note</note>");
    copy.replace("Skarvane.designspace", "<sources>", "<!-- here --><sources>");
    EXPECT_FALSE(reload());
    EXPECT_EQ(disturbances, 0);
    copy.replace(file, "width=\"491\"", "width=\"500\"");
    EXPECT_TRUE(reload());
    EXPECT_EQ(disturbances, 1);
    copy.replace("Skarvane.designspace", "stylename=\"Thin\"", "stylename=\"Hairline\"");
    EXPECT_TRUE(reload());
    EXPECT_FALSE(reload());
    EXPECT_EQ(disturbances, 2);
    expectToBeAsTheFiles();
}

TEST_F(FamilyReload, readsAGlyphThatWasAskedForWhileItsFolderWasAway)
{
    auto const away = copy.folder().parent_path() / "away";
    for (bool const asksAgain : { true, false }) {
        font = *TLOpenFamily(copy.path());
        std::filesystem::rename(copy.folder(), away);
        EXPECT_EQ(font->glyphForName("n"), nullptr);
        std::filesystem::rename(away, copy.folder());
        if (!asksAgain) {
            EXPECT_TRUE(TLReloadChangedFiles(font).anything);
        }
        EXPECT_NE(asksAgain ? font->glyphForName("n") : font->loadedGlyphForName("n"), nullptr);
    }
    expectToBeAsTheFiles();
}

TEST_F(FamilyReload, leavesWhatIsChangedHereToo)
{
    moveNode("a");
    auto const before = textOf(*a);
    copy.replace(file, "width=\"491\"", "width=\"500\"");
    auto outcome = TLReloadChangedFiles(font);
    EXPECT_FALSE(outcome.anything);
    EXPECT_THAT(outcome.sentences, ElementsAre(HasSubstr("The glyph 'a' was changed by another program")));
    EXPECT_EQ(textOf(*a), before);
    EXPECT_EQ(TLSaveFamily(font).kind, TLSaveOutcome::Kind::changedByOthers);
    font->history().undo();
    EXPECT_TRUE(TLReloadChangedFiles(font).anything);
    EXPECT_FALSE(font->history().canRedo());
    expectToBeAsTheFiles();
}

TEST_F(FamilyReload, followsTheLayersOfAGlyphThatAreNotChangedHere)
{
    auto const axis = std::make_shared<TLAxis>();
    axis->setName("Serif");
    a->insertObjectInAxesAtIndex(axis, a->countOfAxes());
    font->history().endStep();
    auto const thin = a->layerForId("Skarvane Thin");
    auto outline = thin->outline();
    outline.advance = 123;
    thin->setOutline(outline);
    copy.replace(file, "width=\"491\"", "width=\"500\"");
    auto outcome = TLReloadChangedFiles(font);
    EXPECT_TRUE(outcome.anything);
    EXPECT_THAT(outcome.sentences, ElementsAre());
    EXPECT_EQ(a->layerForId("Skarvane Regular")->outline().advance, 500);

    copy.replace("Skarvane-Thin.ufo/glyphs/a.glif", "<advance width=\"", "<advance width=\"1");
    copy.replace(file, "width=\"500\"", "width=\"510\"");
    outcome = TLReloadChangedFiles(font);
    EXPECT_THAT(outcome.sentences, ElementsAre(HasSubstr("The glyph 'a' was changed by another program")));
    EXPECT_EQ(a->layerForId("Skarvane Regular")->outline().advance, 510);
    EXPECT_EQ(thin->outline().advance, 123);
    EXPECT_THAT(TLSaveFamily(font).files, ElementsAre("Skarvane-Thin.ufo/glyphs/a.glif"));
    font->history().undo();
    TLReloadChangedFiles(font);
    EXPECT_EQ(a->axes().back()->name(), "Serif");
    font->history().undo();
    expectToBeAsTheFiles();
}

TEST_F(FamilyReload, waitsForAFileThatIsStillBeingWritten)
{
    auto const before = textOf(*font);
    for (std::string const& name : { file, std::string("Skarvane.designspace"),
             std::string("Skarvane-Regular.ufo/glyphs.semibold/contents.plist") }) {
        auto const whole = copy.text(name);
        copy.write(name, whole.substr(0, whole.size() / 2));
        auto const outcome = TLReloadChangedFiles(font);
        EXPECT_FALSE(outcome.anything) << name;
        EXPECT_EQ(textOf(*font), before) << name;
        copy.write(name, whole);
        EXPECT_FALSE(TLReloadChangedFiles(font).anything) << name;
    }
    EXPECT_EQ(textOf(*font), before);
}

TEST_F(FamilyReload, followsAxesMastersAndLayers)
{
    copy.replace("Skarvane.designspace", "stylename=\"Thin\"", "stylename=\"Hairline\"");
    copy.replace("Skarvane.designspace", "maximum=\"125\"", "maximum=\"150\"");
    auto const contents = "Skarvane-Regular.ufo/glyphs.semibold/contents.plist";
    copy.replace(contents, "<key>a</key>\n  <string>a.glif</string>", "");
    auto const master = font->fontMasterForId("Skarvane Thin");
    EXPECT_TRUE(TLReloadChangedFiles(font).anything);
    EXPECT_EQ(font->fontMasterForId("Skarvane Thin"), master);
    EXPECT_EQ(master->name(), "Hairline");
    expectToBeAsTheFiles();

    moveNode("n");
    copy.replace("Skarvane.designspace", "stylename=\"Hairline\"", "stylename=\"Thin\"");
    auto const outcome = TLReloadChangedFiles(font);
    EXPECT_FALSE(outcome.anything);
    EXPECT_THAT(outcome.sentences, ElementsAre(HasSubstr("axes, masters or layers")));
}

TEST_F(FamilyReload, takesNoFileOfItsOwnForAnothers)
{
    moveNode("a");
    EXPECT_EQ(TLSaveFamily(font).kind, TLSaveOutcome::Kind::saved);
    EXPECT_FALSE(TLReloadChangedFiles(font).anything);
    auto const watched = TLFilesToWatch(*font);
    EXPECT_THAT(watched, Contains(copy.folder() / file));
    EXPECT_THAT(watched, Contains((copy.folder() / file).parent_path()));
    EXPECT_THAT(watched, Contains(copy.path()));
}
