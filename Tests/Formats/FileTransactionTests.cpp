#include "Typloom/Formats/FileTransaction.h"

#include "Tests/Support/FaultyFileSystem.h"
#include "Tests/Support/SavedFamily.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>

namespace {

using testing::HasSubstr;
using Outcome = FamilyRecovery::Outcome;

} // namespace

TEST(FileTransaction, changesAllFilesAndTellsWhatItWrote)
{
    SavedFamily const family;
    FileTransaction save(family.designspace());
    family.addChanges(save);
    save.write(family.path("Light.ufo"), "glyphs/A_.glif/../x", "");
    EXPECT_TRUE(save.commit());
    EXPECT_EQ(family.snapshot(), family.oldFiles());

    FileTransaction good(family.designspace());
    family.addChanges(good);
    auto const error = good.commit();
    EXPECT_FALSE(error) << error->sentence();
    EXPECT_EQ(family.snapshot(), family.newFiles());
    ASSERT_EQ(good.stamps().size(), 5U);
    for (auto const& [path, stamp] : good.stamps()) {
        EXPECT_FALSE(hasChanged(path, stamp)) << path;
        EXPECT_EQ(stamp.inode, [&path = path] {
            struct stat facts { };
            ::stat(path.c_str(), &facts);
            return facts.st_ino;
        }());
    }
}

TEST(FileTransaction, leavesAFileWhoseContentIsTheSame)
{
    SavedFamily const family;
    auto const time = std::filesystem::last_write_time(family.path("Light.ufo/glyphs"));
    FileTransaction save(family.designspace());
    save.write(family.path("Light.ufo"), "glyphs/A_.glif", "old Light.ufo/glyphs/A_.glif");
    EXPECT_FALSE(save.commit());
    EXPECT_EQ(std::filesystem::last_write_time(family.path("Light.ufo/glyphs")), time);
    EXPECT_EQ(save.stamps().size(), 1U);
}

TEST(FileTransaction, keepsModeAndAttributesOfAFile)
{
    SavedFamily const family(std::filesystem::temp_directory_path());
    auto const file = family.path("Light.ufo/glyphs/A_.glif");
    ASSERT_EQ(::chmod(file.c_str(), 0640), 0);
    bool const hasAttributes = ::setxattr(file.c_str(), "user.typloom", "x", 1, 0) == 0;
    FileTransaction save(family.designspace());
    save.write(family.path("Light.ufo"), "glyphs/A_.glif", "new");
    EXPECT_FALSE(save.commit());
    struct stat facts { };
    ASSERT_EQ(::stat(file.c_str(), &facts), 0);
    EXPECT_EQ(facts.st_mode & 07777U, 0640U);
    char value = 0;
    EXPECT_TRUE(!hasAttributes || ::getxattr(file.c_str(), "user.typloom", &value, 1) == 1);
}

TEST(FileTransaction, neverLeavesItsRoots)
{
    SavedFamily const family;
    auto const light = family.path("Light.ufo");
    std::filesystem::create_symlink(family.path("../store/Bold/glyphs/A_.glif"), light / "glyphs/out.glif");
    std::filesystem::create_symlink("A_.glif", light / "glyphs/in.glif");
    std::filesystem::create_directory_symlink("../../store", light / "glyphs.out");
    std::filesystem::create_directory(light / "glyphs/folder.glif");
    auto const before = family.snapshot();
    for (std::string const path : { "../x.glif", "glyphs/../../x.glif", "/tmp/x.glif", "glyphs//x.glif",
             "./x.glif", "", "glyphs\\x.glif", "glyphs/out.glif", "glyphs.out/x.glif", "glyphs.none/x.glif",
             "glyphs/folder.glif" }) {
        FileTransaction save(family.designspace());
        save.write(light, path, "x");
        auto const error = save.commit();
        ASSERT_TRUE(error) << path;
        EXPECT_TRUE(error->sentence().starts_with("Cannot save 'Light.ufo/")) << error->sentence();
        EXPECT_EQ(family.snapshot(), before) << path;
    }
    FileTransaction save(family.designspace());
    save.write(light, "glyphs/in.glif", "new");
    EXPECT_FALSE(save.commit());
    EXPECT_TRUE(std::filesystem::is_symlink(light / "glyphs/in.glif"));
    EXPECT_EQ(contentOf(light / "glyphs/A_.glif"), "new");
}

TEST(FileTransaction, doesNotTouchWhatIsNotPartOfAFamily)
{
    SavedFamily const family;
    family.put("notes.txt", "mine");
    family.put("Light.ufo/features.fea", "mine");
    auto const before = family.snapshot();
    for (auto const& [root, path] : { std::pair(".", "notes.txt"), std::pair("Light.ufo", "features.fea"),
             std::pair("..", "x.glif"), std::pair("None.ufo", "glyphs/x.glif") }) {
        FileTransaction save(family.designspace());
        save.write(family.path(root), path, "x");
        EXPECT_TRUE(save.commit()) << path;
        EXPECT_EQ(family.snapshot(), before);
    }
}

TEST(FileTransaction, givesWayToAnotherProgram)
{
    SavedFamily const family;
    auto const journal = journalPath(family.designspace());
    std::ofstream(journal) << SaveJournal { .token = makeJournalToken() }.text();
    int const other = ::open(journal.c_str(), O_RDONLY);
    ASSERT_EQ(::flock(other, LOCK_EX), 0);
    FileTransaction save(family.designspace());
    family.addChanges(save);
    auto const error = save.commit();
    ASSERT_TRUE(error);
    EXPECT_THAT(error->sentence(), HasSubstr("Another program is saving 'Test.designspace'"));
    EXPECT_EQ(recoverFamily(family.designspace()).outcome, Outcome::failed);
    EXPECT_TRUE(std::filesystem::exists(journal));
    ::close(other);
    EXPECT_FALSE(save.commit());
    EXPECT_EQ(family.snapshot(), family.newFiles());
}

namespace {

struct Ends {
    int old { 0 };
    int changed { 0 };
};

/// Saves with a fault at every call, and looks at what a later opening makes of it.
Ends saveWithFaults(FaultyFileSystem::Fault fault, int problem)
{
    Ends ends;
    for (int call = 1;; ++call) {
        SCOPED_TRACE("call " + std::to_string(call));
        SavedFamily const family;
        FaultyFileSystem files(call, fault, problem);
        FileTransaction save(family.designspace(), files);
        family.addChanges(save);
        auto const error = save.commit();
        bool const isCrash = fault == FaultyFileSystem::Fault::crash;
        if (error && !save.isPending() && !isCrash) {
            EXPECT_EQ(family.snapshot(), family.oldFiles()) << "undone at once";
        }
        FaultyFileSystem unfailing;
        auto const recovery = recoverFamily(family.designspace(), unfailing);
        EXPECT_NE(recovery.outcome, Outcome::failed) << recovery.sentence;
        EXPECT_EQ(recovery.outcome == Outcome::nothing, recovery.sentence.empty());
        auto const found = family.snapshot();
        bool const isNew = found == family.newFiles();
        EXPECT_TRUE(isNew || found == family.oldFiles()) << testing::PrintToString(found);
        EXPECT_TRUE(isNew || error) << "it said that all was saved";
        EXPECT_TRUE(!isNew || !error || save.isPending() || isCrash) << error->sentence();
        (isNew ? ends.changed : ends.old) += 1;
        if (!files.wasReached() || testing::Test::HasFailure()) {
            EXPECT_FALSE(error);
            return ends;
        }
    }
}

} // namespace

TEST(FileTransaction, isWholeOrUndoneWhereverACallFails)
{
    for (int const problem : { EIO, EACCES, ENOSPC }) {
        auto const ends = saveWithFaults(FaultyFileSystem::Fault::once, problem);
        EXPECT_GT(ends.old, 30);
        EXPECT_GT(ends.changed, 10);
    }
}

TEST(FileTransaction, isWholeOrUndoneOnADiskThatFillsUp)
{
    auto const ends = saveWithFaults(FaultyFileSystem::Fault::full, ENOSPC);
    EXPECT_GT(ends.old, 30);
}

TEST(FileTransaction, isWholeOrUndoneWhereverItIsBrokenOff)
{
    auto const ends = saveWithFaults(FaultyFileSystem::Fault::crash, EIO);
    EXPECT_GT(ends.old, 30);
    EXPECT_GT(ends.changed, 10);
}
