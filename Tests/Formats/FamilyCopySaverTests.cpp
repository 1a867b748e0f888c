#include "Typloom/Formats/FamilyCopySaver.h"

#include "Tests/Support/DocumentText.h"
#include "Tests/Support/FamilyCopy.h"
#include "Tests/Support/FaultyFileSystem.h"
#include "Typloom/Formats/DesignspaceReader.h"
#include "Typloom/TyploomCore/TLDocumentHistory.h"
#include "Typloom/TyploomCore/TLFontCommands.h"
#include "Typloom/TyploomCore/TLLayerCommands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

/// A family with changes that are not saved, and a place for copies.
class FamilyCopySaver : public testing::Test {
protected:
    FamilyCopy files { std::filesystem::path(SOURCE_FOLDER) / "Fonts/Skarvane/Skarvane.designspace" };
    TemporaryFolder const elsewhere;
    std::filesystem::path const target { elsewhere.path() / "Mine" };
    std::shared_ptr<TLFont> font;
    FaultyFileSystem quick;

    void open()
    {
        font = *TLOpenFamily(files.path());
        auto const n = font->glyphForName("n");
        auto const axis = std::make_shared<TLAxis>();
        axis->setName("Serif");
        n->insertObjectInAxesAtIndex(axis, 0);
        EXPECT_TRUE(TLAddIntermediateLayer(*n, { { axis->axisId(), 80.0 } }, "").layer);
        auto const thin = font->glyphForName("o")->layerForId("Skarvane Thin");
        auto outline = thin->outline();
        outline.advance += 11;
        thin->setOutline(std::move(outline));
        EXPECT_TRUE(TLAddMaster(font, "Heavy", { { font->axes().front()->axisId(), 150.0 } }).master);
        font->history().endStep();
    }

    std::vector<std::string> entries() const
    {
        std::vector<std::string> names;
        for (auto const& entry : std::filesystem::directory_iterator(elsewhere.path())) {
            names.push_back(entry.path().filename().string());
        }
        return names;
    }

    void expectTheCopyToBeTheDocument(TLCopyOutcome const& outcome) const
    {
        ASSERT_EQ(outcome.designspace, target / "Mine.designspace") << outcome.sentence;
        auto const copied = TLOpenFamily(outcome.designspace);
        ASSERT_TRUE(copied) << copied.error().sentence();
        EXPECT_EQ(textOf(**copied), textOf(*font));
        EXPECT_THAT((*copied)->report(), ElementsAre());
        EXPECT_THAT(entries(), ElementsAre("Mine"));
        EXPECT_TRUE(font->history().isModified());
    }
};

std::string contentOf(std::filesystem::path const& path)
{
    std::ifstream file(path, std::ios::binary);
    return { std::istreambuf_iterator<char>(file), {} };
}

} // namespace

TEST_F(FamilyCopySaver, holdsWhatIsNotSavedAndWhatIsNotUnderstood)
{
    files.write("Skarvane-Thin.ufo/data/of.others/notes.bin", std::string("\0\xFF", 2));
    files.write("Skarvane-Thin.ufo/features.fea", "# locked");
    files.write("Skarvane-Thin.ufo/.typloom-0-0.tmp", "left over");
    std::filesystem::create_symlink("features.fea", files.folder() / "Skarvane-Thin.ufo/link");
    std::filesystem::permissions(
        files.folder() / "Skarvane-Thin.ufo/glyphs/o.glif", std::filesystem::perms::owner_read);
    open();
    files.replace("Skarvane-Regular.ufo/glyphs/u.glif", "</outline>", "</outline>\n  <note>Since</note>");
    auto const before = files.files();
    auto const times = files.times();
    expectTheCopyToBeTheDocument(TLSaveCopy(font, target.string() + ".designspace", quick));
    EXPECT_EQ(files.files(), before);
    EXPECT_EQ(files.times(), times);
    EXPECT_TRUE(std::filesystem::is_symlink(target / "Skarvane-Thin.ufo/link"));
    EXPECT_FALSE(std::filesystem::exists(target / "Skarvane-Thin.ufo/.typloom-0-0.tmp"));
    std::vector<std::string> others;
    for (auto const& [path, content] : before) {
        bool const isFile = std::filesystem::is_regular_file(files.folder() / path);
        if (isFile && contentOf(target / path) != content && path.find(".tmp") == std::string::npos) {
            others.push_back(path);
        }
    }
    EXPECT_THAT(others,
        testing::UnorderedElementsAre("Skarvane.designspace", "Skarvane-Regular.ufo/glyphs/n.glif",
            "Skarvane-Regular.ufo/layercontents.plist", "Skarvane-Thin.ufo/glyphs/o.glif"));
    EXPECT_TRUE(std::filesystem::exists(target / "Skarvane-Heavy.ufo/metainfo.plist"));
}

TEST_F(FamilyCopySaver, bringsUfosFromOutsideTheFamilysFolder)
{
    TemporaryFolder const store;
    auto const absolute = store.path() / "Skarvane-Regular.ufo";
    std::filesystem::rename(files.folder() / "Skarvane-Regular.ufo", absolute);
    std::filesystem::rename(files.folder() / "Skarvane-Thin.ufo", store.path() / "Thin.ufo");
    std::filesystem::create_directory_symlink(
        store.path() / "Thin.ufo", files.folder() / "Skarvane-Thin.ufo");
    auto text = files.text("Skarvane.designspace");
    for (std::size_t at = 0; (at = text.find("\"Skarvane-Regular.ufo\"", at)) != std::string::npos;) {
        text.replace(at + 1, absolute.filename().string().size(), absolute.string());
        at += absolute.string().size();
    }
    files.write("Skarvane.designspace", text);
    font = *TLOpenFamily(files.path());
    auto const layer = font->glyphForName("n")->layerForId("Skarvane Regular");
    auto outline = layer->outline();
    outline.advance = 321;
    layer->setOutline(std::move(outline));
    static_cast<void>(textOf(*font)); // Reads every glyph.
    auto const outcome = TLSaveCopy(font, target, quick);
    std::filesystem::remove_all(store.path() / "Thin.ufo");
    std::filesystem::remove_all(absolute);
    expectTheCopyToBeTheDocument(outcome);
    EXPECT_FALSE(std::filesystem::is_symlink(target / "Skarvane-Thin.ufo"));
}

TEST_F(FamilyCopySaver, leavesNothingBehindWhereverItFails)
{
    open();
    auto const before = files.files();
    int failures = 0;
    for (int call = 1;; call += call < 20 ? 3 : 97) {
        FaultyFileSystem fileSystem(call, FaultyFileSystem::Fault::full, ENOSPC);
        auto const outcome = TLSaveCopy(font, target, fileSystem);
        if (!outcome.designspace.empty()) {
            expectTheCopyToBeTheDocument(outcome);
            break;
        }
        ++failures;
        EXPECT_THAT(outcome.sentence, HasSubstr("No copy was made."));
        EXPECT_THAT(outcome.sentence, HasSubstr("the disk is full"));
        EXPECT_THAT(entries(), ElementsAre()) << call;
    }
    EXPECT_GT(failures, 10);
    EXPECT_EQ(files.files(), before);
}

TEST_F(FamilyCopySaver, replacesNothing)
{
    open();
    std::filesystem::create_directory(target);
    expectTheCopyToBeTheDocument(TLSaveCopy(font, target, quick));
    EXPECT_EQ(TLSaveCopy(font, target, quick).sentence,
        "'Mine' is there already. A copy is a new folder; give it another name.");
    EXPECT_THAT(TLSaveCopy(font, files.folder() / "Skarvane-Thin.ufo/glyphs/x").sentence,
        HasSubstr("inside a UFO of the family"));
    EXPECT_EQ(TLSaveCopy(font, "/").sentence, "A copy needs a name.");
    EXPECT_THAT(TLSaveCopy(font, elsewhere.path() / "gone/x").sentence, HasSubstr("gone' is no folder."));
    EXPECT_THAT(entries(), ElementsAre("Mine"));
}

TEST_F(FamilyCopySaver, isMadeOfWhatIsOpenWhereFilesAreGone)
{
    for (auto const* const gone :
        { "Skarvane-Thin.ufo", "Skarvane-Regular.ufo", "Skarvane.designspace", "" }) {
        open(); // Adding a master reads every glyph.
        auto const kept = files.folder().parent_path() / "kept";
        std::filesystem::rename(files.folder() / gone, kept);
        auto const outcome = TLSaveCopy(font, target, quick);
        expectTheCopyToBeTheDocument(outcome);
        EXPECT_THAT(outcome.notes, Contains(HasSubstr(*gone == 0 ? "kerning" : gone)));
        std::filesystem::remove_all(target);
        std::filesystem::rename(kept, files.folder() / gone);
    }
    font = *TLOpenFamily(files.path());
    auto const thin = font->glyphForName("o")->layerForId("Skarvane Thin");
    std::filesystem::remove_all(files.folder());
    auto const outcome = TLSaveCopy(font, target, quick);
    EXPECT_THAT(outcome.notes, Contains(HasSubstr("glyphs of its layers that had not been looked at")));
    auto const copied = TLOpenFamily(outcome.designspace);
    ASSERT_TRUE(copied) << copied.error().sentence();
    EXPECT_EQ(textOf(*(*copied)->glyphForName("o")), textOf(*font->glyphForName("o")));
}
