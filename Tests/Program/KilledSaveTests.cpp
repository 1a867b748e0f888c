#include "Tests/Program/SavedGenerations.h"
#include "Tests/Program/TestProgram.h"
#include "Tests/Support/DocumentText.h"
#include "Tests/Support/FamilyCopy.h"
#include "Typloom/Formats/DesignspaceReader.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTest>

#include <gtest/gtest.h>

#include <random>

#include <unistd.h>

namespace {

/// The program at work on a family, until it is killed.
class ProgramAtWork {
public:
    ProgramAtWork(std::filesystem::path const& family, std::string const& plugin,
        std::map<QString, QString> const& variables = { { "QT_QPA_PLATFORM", "offscreen" } })
    {
        auto environment = QProcessEnvironment::systemEnvironment();
        for (auto const& [name, value] : variables) {
            environment.insert(name, value);
        }
        m_process.setProcessEnvironment(environment);
        auto const bundle = makeBundle(m_folder, "Testing", plugin, TEST_SAVING_PLUGIN);
        m_process.start(PROGRAM,
            { QString::fromStdString(family.string()), "--plugin", QString::fromStdString(bundle.string()) });
    }
    ~ProgramAtWork() { kill(); }

    /// False when it has ended, or has not saved within a minute.
    bool waitForSave() { return line() == "saved"; }
    /// The next line that it prints; empty when there is none within a minute.
    std::string line()
    {
        bool const isThere = m_process.canReadLine() || m_process.waitForReadyRead(60'000);
        return isThere ? m_process.readLine().trimmed().toStdString() : std::string();
    }
    void kill()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    bool wasKilled() const { return m_process.exitStatus() == QProcess::CrashExit; }
    std::string output() { return m_process.readAll().toStdString(); }

private:
    TestFolder m_folder;
    QProcess m_process;
};

std::map<std::filesystem::path, std::string> contentsIn(std::filesystem::path const& folder)
{
    std::map<std::filesystem::path, std::string> contents;
    for (auto const& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file()) {
            contents.emplace(entry.path(), readFile(entry.path()));
        }
    }
    return contents;
}

} // namespace

TEST(KilledSave, leavesAFamilyOfOneGenerationAtWhateverMomentTheProgramIsKilled)
{
    FamilyCopy const copy(SOURCE_FOLDER "/Fonts/Skarvane/Skarvane.designspace");
    auto const reference = *TLOpenFamily(SOURCE_FOLDER "/Fonts/Skarvane/Skarvane.designspace");
    std::mt19937 random(7);
    int last = generationOf(*reference);
    std::size_t brokenOff = 0;
    for (int round = 0; round < 10 || brokenOff < 3; ++round) {
        ASSERT_LT(round, 60) << "of all these only " << brokenOff << " were killed in a save";
        ProgramAtWork program(copy.path(), "SavingPlugin");
        ASSERT_TRUE(program.waitForSave()) << program.output();
        QElapsedTimer sinceSave;
        sinceSave.start();
        ASSERT_TRUE(program.waitForSave()) << program.output();
        auto const saveTime = static_cast<useconds_t>(sinceSave.nsecsElapsed() / 1000);
        ::usleep(std::uniform_int_distribution<useconds_t>(0, 2 * saveTime)(random));
        program.kill();
        ASSERT_TRUE(program.wasKilled()) << program.output();

        auto const opened = TLOpenFamily(copy.path());
        ASSERT_TRUE(opened) << opened.error().sentence();
        auto const& font = **opened;
        brokenOff += font.report().size();
        auto const generation = generationOf(font);
        EXPECT_GT(generation, last) << "what was saved stays";
        last = generation;
        makeGeneration(*reference, generation);
        ASSERT_EQ(textOf(font), textOf(*reference)) << "round " << round << ", generation " << generation;
        EXPECT_LE(font.report().size(), 1U) << "but for the save that was broken off nothing is told";
    }
}

TEST(KilledWork, isOfferedByTheNextRunAndNothingOfItLiesInTheFamily)
{
    FamilyCopy const copy(SOURCE_FOLDER "/Fonts/Skarvane/Skarvane.designspace");
    TestFolder const home;
    auto const path = [&home](std::string const& name) { return QString::fromStdString(home / name); };
    // A platform that takes itself for a screen.
    std::map<QString, QString> const variables { { "QT_QPA_PLATFORM", "minimal" },
        { "XDG_CONFIG_HOME", path("config") }, { "XDG_STATE_HOME", path("state") } };
    auto const copies
        = [&] { return QDir(path("state/typloom/recovery")).entryList({ "*.json" }, QDir::Files).size(); };
    auto const files = contentsIn(copy.path().parent_path());
    {
        ProgramAtWork program(copy.path(), "WorkingPlugin", variables);
        ASSERT_EQ(program.line(), "opened as it was") << program.output();
        ASSERT_EQ(program.line(), "changed 1");
        ASSERT_TRUE(QTest::qWaitFor([&] { return copies() == 1; }, 60'000));
        program.kill();
        ASSERT_TRUE(program.wasKilled());
    }
    EXPECT_EQ(contentsIn(copy.path().parent_path()), files);
    ProgramAtWork program(copy.path(), "WorkingPlugin", variables);
    EXPECT_EQ(program.line(), "opened as it was");
    EXPECT_EQ(program.line(), "restored 1");
    EXPECT_EQ(copies(), 1) << "it is not saved yet";
}
