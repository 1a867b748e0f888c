#include "Tests/Program/TestProgram.h"

#include <gmock/gmock.h>

#include <QJsonArray>

using testing::HasSubstr;

namespace {
namespace fs = std::filesystem;

/// A copy of the product's bundle with one text of one file replaced; it comes before the built one.
fs::path changedMoravel(
    TestFolder const& folder, std::string const& file, std::string const& text, std::string const& by)
{
    auto const bundle = folder / "Moravel.bundle";
    fs::copy(BUILD_FOLDER "/PlugIns/Moravel.bundle", bundle, fs::copy_options::recursive);
    auto content = readFile(bundle / file);
    auto const place = content.find(text);
    EXPECT_NE(place, std::string::npos);
    writeFile(bundle / file, content.replace(place, text.size(), by));
    return bundle;
}
} // namespace

TEST(ProgramPlugins, aPluginOfAnotherVersionIsReportedAndTheHostGoesOn)
{
    TestFolder const folder;
    makeBundle(folder, "Future", "PluginOfAnotherVersion", TEST_PLUGIN);
    auto const outcome
        = runProgram({ makeSmallFamily(folder), "--glyph", "A", "--plugin", folder.path(), "--describe" });
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.errors, HasSubstr("Future.bundle' was made for version 2"));
    EXPECT_EQ(outcome.json()["tab"], "Variation");
    EXPECT_EQ(outcome.json()["outline"].toObject()["advance"], 500);
}

TEST(ProgramPlugins, aBrokenPluginIsToldOnceAndDoesNotHideTheGoodOneOfItsName)
{
    TestFolder const folder;
    auto const bundle
        = changedMoravel(folder, "Info.strings", "\"SidebarViewController\"", "\"SidbarViewController\"");
    auto const outcome
        = runProgram({ makeSmallFamily(folder), "--glyph", "A", "--plugin", bundle, "--describe" });
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.errors, HasSubstr("Moravel.bundle' has no class 'SidbarViewController'"));
    EXPECT_EQ(outcome.errors.find("SidbarViewController"), outcome.errors.rfind("SidbarViewController"));
    EXPECT_EQ(outcome.json()["report"], QJsonArray()) << "the report is on the family";
    EXPECT_EQ(outcome.json()["tab"], "Variation");
    EXPECT_EQ(outcome.json()["sections"].toArray()[0].toObject()["title"], "Font Axes");
    EXPECT_EQ(outcome.json()["outline"].toObject()["advance"], 500);
}

TEST(ProgramPlugins, aBundleUnderAnotherNameFindsItsOwnResourcesAndComesBeforeTheBuiltOne)
{
    TestFolder const folder;
    auto const bundle = changedMoravel(
        folder, "Resources/en.lproj/Localizable.strings", "\"Font Axes\";", "\"Axes of the copy\";");
    auto const renamed = folder / "Moravel (copy).bundle";
    fs::rename(bundle, renamed);
    auto const outcome = runProgram({ makeSmallFamily(folder), "--plugin", renamed, "--describe" },
        "offscreen", { { "LC_ALL", "en_US.UTF-8" }, { "LANGUAGE", "en" } });
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.json()["sections"].toArray()[0].toObject()["title"], "Axes of the copy");
}

TEST(ProgramPlugins, aMisspeltNameInAnInterfaceIsToldWithFileOwnerAndName)
{
    struct Case {
        std::string file, name, misspelt;
    };
    Case const cases[] = {
        { "AxisCellView", "valueField", "valueFeild" },
        { "AxisCellView", "sliderChanged:", "sliderChangd:" },
        { "AxisCellView", "TLLandmarkSlider", "TLLandmarkSlidr" },
        { "SidebarViewController", "filterField", "filterFeild" },
    };
    for (auto const& [file, name, misspelt] : cases) {
        TestFolder const folder;
        auto const quoted = name == "TLLandmarkSlider" ? "class=\"" : "<string notr=\"true\">";
        auto const bundle
            = changedMoravel(folder, "Resources/" + file + ".ui", quoted + name, quoted + misspelt);
        auto const outcome = runProgram({ makeSmallFamily(folder), "--plugin", bundle, "--describe" });
        EXPECT_NE(outcome.status, 0);
        EXPECT_THAT(outcome.errors, HasSubstr(file + ".ui"));
        EXPECT_THAT(outcome.errors, HasSubstr("'" + misspelt + "'"));
    }
}
