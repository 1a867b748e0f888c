#include "Tests/BadFamilies/BadFamily.h"
#include "Tests/BadFamilies/FolderWatch.h"
#include "Tests/BadFamilies/ProgramRun.h"
#include "Tests/Support/FilesIn.h"
#include "Typloom/Formats/DesignspaceReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <sys/stat.h>

namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr bool isSanitized = true;
#else
constexpr bool isSanitized = false;
#endif
constexpr double mostSeconds = isSanitized ? 20 : 2;
constexpr double mostMegabytes = 500;

/// Every file with its mode, its size and its times.
std::map<std::string, std::string> listing(std::filesystem::path const& folder)
{
    std::map<std::string, std::string> entries;
    for (auto const& entry : std::filesystem::recursive_directory_iterator(
             folder, std::filesystem::directory_options::skip_permission_denied)) {
        struct stat facts { };
        ::lstat(entry.path().c_str(), &facts);
        auto const& [seconds, nanoseconds] = facts.st_ctim;
        entries[entry.path()] = std::to_string(facts.st_mode) + " " + std::to_string(facts.st_size) + " "
            + std::to_string(seconds) + " " + std::to_string(nanoseconds);
    }
    return entries;
}

/// The masters whose drawing of the glyph, a triangle, could be read.
Names mastersThatDraw(TLFont const& font, std::string const& glyphName)
{
    Names masters;
    auto const glyph = font.glyphForName(glyphName);
    for (auto const& master : font.fontMasters()) {
        auto const layer = glyph ? glyph->layerForId(master->id()) : nullptr;
        if (layer && layer->outline().contours.size() == 1 && layer->outline().advance != 666) {
            masters.push_back(master->id());
        }
    }
    return masters;
}

/// What has no right to be seen is called so by the families.
bool liesOutside(std::string const& path)
{
    return path.find("outside") != std::string::npos;
}

/// Gives or takes the right to write everywhere in a folder.
void setWritable(std::filesystem::path const& folder, bool isWritable)
{
    namespace fs = std::filesystem;
    if (isWritable) {
        fs::permissions(folder, fs::perms::owner_all, fs::perm_options::add);
    }
    for (auto const& entry : fs::directory_iterator(folder, fs::directory_options::skip_permission_denied)) {
        if (!entry.is_symlink() && entry.is_directory()) {
            setWritable(entry.path(), isWritable);
        } else if (!entry.is_symlink() && !isWritable) {
            fs::permissions(entry.path(), fs::perms::owner_write, fs::perm_options::remove);
        }
    }
    if (!isWritable) {
        fs::permissions(folder, fs::perms::owner_write, fs::perm_options::remove);
    }
}

class BadFamilies : public testing::TestWithParam<BadFamily> {
protected:
    BadFamilies()
    {
        obeyFileModes();
        GetParam().spoil(m_family);
    }
    /// What may not be written cannot be removed either.
    ~BadFamilies() override { setWritable(m_family.path(".."), true); }

    ProgramRun open() const
    {
        return runProgram({ m_family.designspacePath().string(), "--text=/A/B", "--describe", "--snapshot",
                              (m_folder.path() / "picture.png").string(), "--size=900x600" },
            m_folder.path());
    }

    void expectSentences(ProgramRun const& run) const
    {
        auto const count = std::count(run.errors.begin(), run.errors.end(), '\n');
        if (GetParam().isRefused) {
            EXPECT_EQ(run.status, 1) << run.ending << "\n" << run.errors.substr(0, 2000);
            EXPECT_THAT(run.errors, testing::StartsWith("typloom: Cannot read "));
            EXPECT_THAT(run.errors, testing::HasSubstr("Test.designspace"));
            EXPECT_EQ(count, 1);
        } else {
            EXPECT_EQ(run.status, 0) << run.ending << "\n" << run.errors.substr(0, 2000);
            EXPECT_TRUE(std::filesystem::exists(m_folder.path() / "picture.png"));
            auto const described = nlohmann::json::parse(run.output, nullptr, false);
            ASSERT_TRUE(described.is_object()) << run.output.substr(0, 2000);
            EXPECT_EQ(described["report"].size(), count) << "each sentence on one line";
            EXPECT_EQ(count == 0, GetParam().mentions.empty()) << run.errors.substr(0, 2000);
        }
        for (auto const& mention : GetParam().mentions) {
            EXPECT_NE(run.errors.find(mention), std::string::npos) << mention << "\n"
                                                                   << run.errors.substr(0, 2000);
        }
    }

    void expectMasters() const
    {
        auto const opened = TLOpenFamily(m_family.designspacePath());
        ASSERT_EQ(!opened, GetParam().isRefused) << (opened ? "it opened" : opened.error().sentence());
        if (!opened) {
            return;
        }
        Names masters;
        for (auto const& master : (*opened)->fontMasters()) {
            masters.push_back(master->id());
        }
        EXPECT_EQ(masters, GetParam().masters);
        EXPECT_EQ(mastersThatDraw(**opened, "A"), GetParam().mastersOfA);
        EXPECT_EQ(mastersThatDraw(**opened, "B"), GetParam().masters);
    }

    FamilyWriter m_family;
    TemporaryFolder m_folder;
};

std::string nameOf(testing::TestParamInfo<BadFamily> const& info)
{
    return info.param.name;
}

} // namespace

TEST_P(BadFamilies, giveOneSentenceOrOpenWithWhatIsGood)
{
    auto const before = listing(m_family.path(".."));
    FolderWatch watch(m_family.path(".."));
    auto const run = open();
    auto const [opened, changed] = watch.look();
    EXPECT_THAT(changed, testing::IsEmpty()) << "opening writes nothing";
    EXPECT_EQ(listing(m_family.path("..")), before);
    EXPECT_EQ(std::count_if(opened.begin(), opened.end(), liesOutside), 0) << "nor is anything read outside";
    expectSentences(run);
    EXPECT_LT(run.seconds, mostSeconds);
    EXPECT_TRUE(isSanitized || run.megabytes < mostMegabytes) << run.megabytes;
    RecordProperty("seconds", std::to_string(run.seconds));
    RecordProperty("megabytes", std::to_string(run.megabytes));
    if (HasFailure()) {
        return;
    }
    expectMasters();
    if (!isSanitized) {
        setWritable(m_family.path(""), false);
        auto const again = open();
        EXPECT_EQ(again.status, run.status);
        EXPECT_EQ(again.errors, run.errors);
        EXPECT_EQ(again.output, run.output) << "where nothing can be written all is as elsewhere";
    }
}

INSTANTIATE_TEST_SUITE_P(Designspace, BadFamilies, testing::ValuesIn(badDesignspaces()), nameOf);
INSTANTIATE_TEST_SUITE_P(Axis, BadFamilies, testing::ValuesIn(badAxes()), nameOf);
INSTANTIATE_TEST_SUITE_P(Source, BadFamilies, testing::ValuesIn(badSources()), nameOf);
INSTANTIATE_TEST_SUITE_P(Ufo, BadFamilies, testing::ValuesIn(badUfos()), nameOf);
INSTANTIATE_TEST_SUITE_P(Glyph, BadFamilies, testing::ValuesIn(badGlyphs()), nameOf);
INSTANTIATE_TEST_SUITE_P(OddGlyph, BadFamilies, testing::ValuesIn(oddGlyphs()), nameOf);
INSTANTIATE_TEST_SUITE_P(Size, BadFamilies, testing::ValuesIn(badSizes()), nameOf);
