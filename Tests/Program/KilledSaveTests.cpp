#include "Tests/Program/SavedGenerations.h"
#include "Tests/Program/TestProgram.h"
#include "Tests/Support/DocumentText.h"
#include "Tests/Support/FamilyCopy.h"
#include "Typloom/Formats/DesignspaceReader.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <random>

#include <unistd.h>

namespace {

/// The program at work on a family, until it is killed.
class SavingProgram {
public:
    explicit SavingProgram(std::filesystem::path const& family)
    {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        m_process.setProcessEnvironment(environment);
        auto const bundle = makeBundle(m_folder, "Saving", "SavingPlugin", TEST_SAVING_PLUGIN);
        m_process.start(PROGRAM,
            { QString::fromStdString(family.string()), "--plugin", QString::fromStdString(bundle.string()) });
    }
    ~SavingProgram() { kill(); }

    /// False when it has ended, or has not saved within a minute.
    bool waitForSave()
    {
        return (m_process.canReadLine() || m_process.waitForReadyRead(60'000))
            && m_process.readLine() == "saved\n";
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
        SavingProgram program(copy.path());
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
