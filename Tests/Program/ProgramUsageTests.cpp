#include "Tests/Program/TestProgram.h"

#include <gmock/gmock.h>

#include <algorithm>

#include <QDir>
#include <QLibraryInfo>

using testing::HasSubstr;
using testing::StartsWith;

TEST(ProgramUsage, versionAndHelpNeedNoFamilyAndNoScreen)
{
    auto const version = runProgram({ "--version" });
    EXPECT_EQ(version.status, 0);
    EXPECT_THAT(version.output, testing::MatchesRegex("typloom [0-9]+\\.[0-9]+\\.[0-9]+\n"));
    auto const help = runProgram({ "--help" });
    EXPECT_EQ(help.status, 0);
    EXPECT_THAT(help.output, HasSubstr("--snapshot FILE.png"));
}

TEST(ProgramUsage, aCommandLineThatIsNoneEndsWith2AndOneSentence)
{
    for (auto const& [arguments, sentence] : std::vector<std::pair<std::vector<std::string>, std::string>> {
             { { "--zoom" }, "typloom: There is no option '--zoom'; there are --glyph, " },
             { { "F.designspace", "--glyph" }, "typloom: --glyph needs a value" },
             { { "F.designspace", "--location", "wght=x" }, "typloom: 'x' is not a number" },
             { { "F.designspace", "--size", "big" }, "typloom: 'big' is not a size" },
             { { "--describe" }, "typloom: --describe needs a family" } }) {
        auto const outcome = runProgram(arguments);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.output, "");
        EXPECT_THAT(outcome.errors, StartsWith(sentence));
        EXPECT_EQ(std::ranges::count(outcome.errors, '\n'), 1) << outcome.errors;
    }
}

TEST(ProgramUsage, aFamilyThatCannotBeReadEndsWith1AndOneSentence)
{
    TestFolder const folder;
    writeFile(folder / "empty.designspace", "");
    writeFile(folder / "plist.designspace", "<plist/>");
    for (std::string const name : { "empty.designspace", "plist.designspace", "missing.designspace" }) {
        for (auto const& options :
            { std::vector<std::string> {}, { "--snapshot", folder / "out.png" }, { "--describe" } }) {
            std::vector<std::string> arguments { folder / name };
            arguments.insert(arguments.end(), options.begin(), options.end());
            auto const outcome = runProgram(arguments);
            EXPECT_EQ(outcome.status, 1) << name;
            EXPECT_EQ(outcome.output, "");
            EXPECT_THAT(outcome.errors, HasSubstr(name));
            EXPECT_EQ(std::ranges::count(outcome.errors, '\n'), 1) << outcome.errors;
        }
    }
    EXPECT_FALSE(std::filesystem::exists(folder / "out.png"));
}

TEST(ProgramUsage, anUnknownGlyphOrAxisListsWhatThereIs)
{
    TestFolder const folder;
    auto const family = makeSmallFamily(folder).string();
    auto const glyph = runProgram({ family, "--glyph", "a", "--describe" });
    EXPECT_EQ(glyph.status, 1);
    EXPECT_THAT(glyph.errors, HasSubstr("There is no glyph 'a' in the family; there are 'A', 'B'\n"));
    auto const text = runProgram({ family, "--text", "B/nosuch A", "--describe" });
    EXPECT_EQ(text.status, 1);
    EXPECT_EQ(text.errors, "typloom: There is no glyph 'nosuch' in the family; there are 'A', 'B'\n");
    auto const axis = runProgram({ family, "--location", "wgth=200", "--describe" });
    EXPECT_EQ(axis.status, 1);
    EXPECT_THAT(axis.errors, HasSubstr("There is no axis 'wgth'; axes by tag and name: 'wght', 'Weight'\n"));
    EXPECT_EQ(axis.output, "");
}

TEST(ProgramUsage, aPictureThatCannotBeWrittenEndsWith1)
{
    TestFolder const folder;
    auto const outcome = runProgram({ makeSmallFamily(folder), "--snapshot", folder / "none/out.png" });
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("none/out.png' cannot be written: "));
}

TEST(ProgramUsage, withoutAScreenAWindowIsRefusedInASentence)
{
    TestFolder const folder;
    auto const family = makeSmallFamily(folder).string();
    for (auto const& arguments : { std::vector<std::string> {}, { family } }) {
        auto const outcome = runProgram(arguments, "");
        EXPECT_EQ(outcome.status, 1);
        EXPECT_THAT(
            outcome.errors, StartsWith("typloom: There is no screen to open a window on; --snapshot"));
    }
    auto const unreadable = runProgram({ folder / "missing.designspace" }, "");
    EXPECT_EQ(unreadable.status, 1);
    EXPECT_THAT(unreadable.errors, HasSubstr("missing.designspace"));
    EXPECT_EQ(runProgram({ family, "--describe" }, "").status, 0);
}

TEST(ProgramUsage, aWaylandSessionThatTheToolkitCannotServeIsNoScreen)
{
    QDir const platforms(QLibraryInfo::path(QLibraryInfo::PluginsPath) + "/platforms");
    if (!platforms.entryList({ "libqwayland*" }).isEmpty()) {
        GTEST_SKIP() << "the toolkit has its part for Wayland";
    }
    TestFolder const folder;
    auto const outcome = runProgram({ makeSmallFamily(folder) }, "", { { "WAYLAND_DISPLAY", "wayland-0" } });
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.errors, StartsWith("typloom: There is no screen to open a window on"));
}

TEST(ProgramUsage, aDescriptionThatCannotBeWrittenEndsWith1)
{
    TestFolder const folder;
    auto const family = makeSmallFamily(folder).string();
    QProcess process;
    process.setStandardOutputFile("/dev/full");
    process.start(PROGRAM, { QString::fromStdString(family), "--describe" });
    ASSERT_TRUE(process.waitForFinished(60'000));
    EXPECT_EQ(process.exitCode(), 1);
    EXPECT_THAT(
        process.readAllStandardError().toStdString(), HasSubstr("cannot be written to the standard output"));
}
