#include "Tests/Support/FamilyWriter.h"
#include "Tests/Support/FaultyFileSystem.h"
#include "Tests/Support/SavedFamily.h"
#include "Typloom/Formats/DesignspaceReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <random>

#include <sys/wait.h>
#include <unistd.h>

namespace {

using testing::HasSubstr;
using Fault = FaultyFileSystem::Fault;
using Outcome = FamilyRecovery::Outcome;
using Kind = JournalEntry::Kind;

/// Breaks a save of the family off at a call. False when it ended before.
bool breakOff(SavedFamily const& family, int call)
{
    FaultyFileSystem files(call, Fault::crash, EIO);
    FileTransaction save(family.designspace(), files);
    family.addChanges(save);
    static_cast<void>(save.commit());
    return files.wasReached();
}

/// Without waiting for the disk.
FamilyRecovery recover(SavedFamily const& family)
{
    FaultyFileSystem files;
    return recoverFamily(family.designspace(), files);
}

/// The first call after which the save is finished rather than undone.
int firstCallBehindTheCommit()
{
    for (int call = 1;; ++call) {
        SavedFamily const family;
        breakOff(family, call);
        if (recover(family).outcome == Outcome::finished) {
            return call;
        }
    }
}

} // namespace

TEST(FamilyRecovery, canItselfBeBrokenOffAnywhere)
{
    bool wasReached = true;
    for (int call = 1; wasReached; call += 3) {
        bool isRecovered = false;
        for (int second = 1; !isRecovered; ++second) {
            SavedFamily const family;
            wasReached = breakOff(family, call);
            FaultyFileSystem files(second, Fault::crash, EIO);
            static_cast<void>(recoverFamily(family.designspace(), files));
            isRecovered = !files.wasReached();
            auto const last = recover(family);
            EXPECT_NE(last.outcome, Outcome::failed) << last.sentence;
            auto const found = family.snapshot();
            ASSERT_TRUE(found == family.newFiles() || found == family.oldFiles())
                << "calls " << call << " and " << second << testing::PrintToString(found);
        }
    }
}

TEST(FamilyRecovery, keepsWhatAnotherProgramChangedMeanwhile)
{
    SavedFamily const family;
    breakOff(family, firstCallBehindTheCommit());
    family.put("Light.ufo/glyphs/contents.plist", "theirs");
    family.put("Light.ufo/glyphs/B_.glif", "theirs");
    auto const recovery = recover(family);
    EXPECT_EQ(recovery.outcome, Outcome::finished);
    EXPECT_THAT(recovery.sentence, HasSubstr("'Light.ufo/glyphs/contents.plist'"));
    auto expected = family.newFiles();
    expected["family/Light.ufo/glyphs/contents.plist.typloom-kept"] = "theirs";
    expected["family/Light.ufo/glyphs/B_.glif"] = "theirs";
    EXPECT_EQ(family.snapshot(), expected);
}

TEST(FamilyRecovery, endsWhenAPartOfTheSaveIsGone)
{
    SavedFamily const family;
    breakOff(family, firstCallBehindTheCommit() + 2);
    std::filesystem::remove_all(family.path("../store/Bold"));
    EXPECT_EQ(recover(family).outcome, Outcome::failed);
    auto const next = recover(family);
    EXPECT_EQ(next.outcome, Outcome::nothing) << next.sentence;
}

TEST(FamilyRecovery, doesNotTrustAJournal)
{
    auto const removing = [](std::string root, std::string path) {
        return SaveJournal { .token = makeJournalToken(),
            .roots = { std::move(root) },
            .entries
            = { { .kind = Kind::remove, .path = std::move(path), .oldHash = contentHash("victim") } } };
    };
    auto const committed
        = [](SaveJournal const& journal) { return journal.text() + std::string(journalCommitLine); };
    auto const good = committed(removing(".", "victim.glif"));
    std::vector<std::string> const bad { "x", "typloom-journal 2 \n", good + "commit\n" + good,
        committed(removing("..", "family/victim.glif")), committed(removing("/", "etc/victim.glif")),
        committed(removing(".", "../family/victim.glif")), committed(removing(".", "/victim.glif")),
        committed(removing(".", "victim.txt")), committed(removing("Light.ufo", "Test.designspace")),
        committed(removing("sub/../../x", "victim.glif")), [&good] {
            auto text = good;
            return text.replace(text.find("victim"), 1, "V");
        }() };
    for (auto const& text : bad) {
        SavedFamily const family;
        family.put("victim.glif", "victim");
        family.put("victim.txt", "victim");
        std::ofstream(journalPath(family.designspace()), std::ios::binary) << text;
        auto const before = family.snapshot();
        recover(family);
        auto after = family.snapshot();
        after.emplace("family/.Test.designspace.typloom-journal", text);
        EXPECT_EQ(after, before) << text;
    }
    SavedFamily const family;
    family.put("victim.glif", "victim");
    std::ofstream(journalPath(family.designspace())) << good;
    EXPECT_EQ(recover(family).outcome, Outcome::finished);
    EXPECT_EQ(family.snapshot(), family.oldFiles()) << "that one may be removed";
}

TEST(SaveJournal, isReadAsItWasWrittenAndAtNoLengthMisread)
{
    SaveJournal const journal { .token = makeJournalToken(),
        .roots = { ".", "A %\t\n.ufo", "../B.ufo" },
        .entries = { { .kind = Kind::makeFolder, .root = 1, .path = "glyphs.\xC3\xA9 %41\n" },
            { .kind = Kind::write, .root = 1, .path = "a.glif", .newHash = 7, .oldHash = 8 },
            { .kind = Kind::removeFolder, .root = 2, .path = "glyphs.b" } } };
    auto const path = journalPath("/x/T.designspace");
    auto const text = journal.text() + std::string(journalCommitLine);
    for (std::size_t length = 0; length <= text.size(); ++length) {
        auto const read = readJournal(std::string_view(text).substr(0, length), path);
        ASSERT_TRUE(read) << length;
        ASSERT_EQ(read->has_value(), length >= journal.text().size()) << length;
        if (*read) {
            auto expected = journal;
            expected.isCommitted = length == text.size();
            ASSERT_EQ(**read, expected);
        }
    }
}

TEST(FamilyRecovery, comesBeforeOpeningAndIsReported)
{
    FamilyWriter family;
    family.writeFamily();
    auto const glif = contentOf(family.path("Bold.ufo/glyphs/A.glif"));
    for (int call = 1;; ++call) {
        FaultyFileSystem files(call, Fault::crash, EIO);
        FileTransaction save(family.designspacePath(), files);
        save.write(family.path("Light.ufo"), "glyphs/A.glif", glif);
        static_cast<void>(save.commit());
        auto const opened = TLOpenFamily(family.designspacePath());
        ASSERT_TRUE(opened);
        if (contentOf(family.path("Light.ufo/glyphs/A.glif")) == glif) {
            EXPECT_THAT((*opened)->report(), testing::Contains(HasSubstr("has now been finished")));
            break;
        }
    }
    EXPECT_FALSE(std::filesystem::exists(journalPath(family.designspacePath())));
    std::map<std::filesystem::path, std::filesystem::file_time_type> times;
    auto const root = family.designspacePath().parent_path();
    for (auto const& entry : std::filesystem::recursive_directory_iterator(root)) {
        times[entry.path()] = entry.last_write_time();
    }
    times[root] = std::filesystem::last_write_time(root);
    EXPECT_THAT((*TLOpenFamily(family.designspacePath()))->report(), testing::IsEmpty());
    for (auto const& [path, time] : times) {
        EXPECT_EQ(std::filesystem::last_write_time(path), time) << path;
    }
}

namespace {

/// Saves one generation after the other until it is killed.
[[noreturn]] void saveForEver(SavedFamily const& family, int generation)
{
    for (;; ++generation) {
        auto const content = std::to_string(generation);
        auto const layer = "glyphs." + std::to_string(generation % 2);
        auto const last = "glyphs." + std::to_string((generation + 1) % 2);
        FileTransaction save(family.designspace());
        save.makeFolder(family.path("Light.ufo"), layer);
        save.write(family.path("Light.ufo"), layer + "/a.glif", content);
        save.write(family.path("Light.ufo"), "glyphs/A_.glif", content);
        save.write(family.path("Bold.ufo"), "glyphs/A_.glif", content);
        save.write(family.path("."), "Test.designspace", content);
        save.remove(family.path("Light.ufo"), last + "/a.glif");
        save.removeFolder(family.path("Light.ufo"), last);
        if (save.commit()) {
            ::_exit(1);
        }
    }
}

} // namespace

TEST(FamilyRecovery, makesAFamilyWholeAfterAKillAtAnyMoment)
{
    SavedFamily const family(std::filesystem::temp_directory_path());
    std::mt19937 random(1);
    std::map<Outcome, int> outcomes;
    int generation = 1;
    for (int kill = 0; kill < 40; ++kill) {
        auto const child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            saveForEver(family, generation);
        }
        ::usleep(std::uniform_int_distribution<useconds_t>(500, 30'000)(random));
        ASSERT_EQ(::kill(child, SIGKILL), 0);
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFSIGNALED(status)) << "it could not save";
        auto const recovery = recoverFamily(family.designspace());
        ++outcomes[recovery.outcome];
        ASSERT_NE(recovery.outcome, Outcome::failed) << recovery.sentence;

        auto expected = family.oldFiles();
        auto const content = contentOf(family.designspace());
        if (!content.starts_with("old")) {
            generation = std::atoi(content.c_str());
            auto const layer = "family/Light.ufo/glyphs." + std::to_string(generation % 2);
            expected[layer] = "folder";
            for (auto const& file : { layer + "/a.glif", std::string("family/Light.ufo/glyphs/A_.glif"),
                     std::string("store/Bold/glyphs/A_.glif"), std::string("family/Test.designspace") }) {
                expected[file] = content;
            }
            ++generation;
        }
        ASSERT_EQ(family.snapshot(), expected) << "kill " << kill;
    }
    EXPECT_GT(outcomes[Outcome::undone] + outcomes[Outcome::finished], 10);
}
