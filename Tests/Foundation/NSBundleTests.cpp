#include "Platform/Foundation/NSBundle.h"
#include "Platform/Foundation/NSFatalError.h"
#include "Platform/Foundation/NSLocale.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Pair;

namespace {

struct NSBundleTest : testing::Test {
    NSBundleTest()
    {
        std::string folder = std::filesystem::temp_directory_path() / "bundleXXXXXX";
        root = mkdtemp(folder.data());
    }
    ~NSBundleTest() override
    {
        std::filesystem::remove_all(root);
        NSSetCurrentLocale("");
        NSBundle::setMainBundlePath({});
    }

    std::filesystem::path write(std::filesystem::path const& relative, std::string_view text)
    {
        auto const file = root / relative;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << text;
        return file;
    }

    std::filesystem::path root;
};

} // namespace

TEST_F(NSBundleTest, aTextIsTakenFromTheFirstPreferredLanguageThatHasIt)
{
    write("Some.bundle/Resources/de.lproj/Localizable.strings",
        "\"Weight\" = \"Fette\"; \"Axis\" = \"Achse\";");
    write("Some.bundle/Resources/de-CH.lproj/Localizable.strings", "\"Weight\" = \"St\u00E4rche\";");
    auto const bundle = NSBundle::bundleWithPath(root / "Some.bundle");
    ASSERT_NE(bundle, nullptr);

    NSSetCurrentLocale("de_CH");
    EXPECT_EQ(NSLocalizedString("Weight", bundle, "Weight", "axis"), "St\u00E4rche");
    EXPECT_EQ(NSLocalizedString("Axis", bundle, "Axis", "noun"), "Achse");
    EXPECT_EQ(NSLocalizedString("Width", bundle, "Breadth", "axis"), "Breadth");
    NSSetCurrentLocale("fr_FR");
    EXPECT_EQ(NSLocalizedString("Weight", bundle, "Weight", "axis"), "Weight");
}

TEST_F(NSBundleTest, aTableThatIsMalformedIsReportedOnceAndTheDefaultsHold)
{
    auto const file = write("Bad.bundle/Resources/de.lproj/Localizable.strings", "\"Weight\" = \"Fette\"");
    auto const bundle = NSBundle::bundleWithPath(root / "Bad.bundle");
    NSSetCurrentLocale("de_DE");
    testing::internal::CaptureStderr();
    EXPECT_EQ(bundle->localizedString("Weight", "Weight"), "Weight");
    EXPECT_EQ(bundle->localizedString("Width", "Width"), "Width");
    auto const printed = testing::internal::GetCapturedStderr();
    EXPECT_THAT(printed, HasSubstr(file.string()));
    EXPECT_EQ(std::count(printed.begin(), printed.end(), '\n'), 1);
}

TEST_F(NSBundleTest, aFolderHasOneBundleFoundByPathAndByIdentifier)
{
    write("Unique.bundle/Resources/Row.ui", "<ui/>");
    EXPECT_EQ(NSBundle::bundleWithIdentifier("Unique"), nullptr);
    auto const bundle = NSBundle::bundleWithPath(root / "Unique.bundle/");
    ASSERT_NE(bundle, nullptr);
    EXPECT_EQ(bundle->identifier(), "Unique");
    EXPECT_EQ(NSBundle::bundleWithPath(root / "Unique.bundle" / "Resources" / ".."), bundle);
    EXPECT_EQ(NSBundle::bundleWithIdentifier("Unique"), bundle);
    EXPECT_EQ(NSBundle::bundleWithPath(root / "Absent.bundle"), nullptr);
    EXPECT_EQ(NSBundle::bundleWithPath(root / "Unique.bundle/Resources/Row.ui"), nullptr);

    EXPECT_EQ(bundle->pathForResource("Row", "ui"), bundle->bundlePath() / "Resources/Row.ui");
    EXPECT_EQ(bundle->pathForResource("Row", "strings"), std::nullopt);
}

TEST_F(NSBundleTest, theMainBundleFindsNothingBeforeItsFolderIsSet)
{
    write("Resources/Main.ui", "<ui/>");
    auto const before = std::filesystem::current_path();
    std::filesystem::current_path(root); // An empty path must not mean the folder that we are in.
    EXPECT_EQ(NSBundle::mainBundle()->pathForResource("Main", "ui"), std::nullopt);
    NSBundle::setMainBundlePath(root);
    EXPECT_TRUE(NSBundle::mainBundle()->pathForResource("Main", "ui").has_value());
    std::filesystem::current_path(before);
}

TEST(NSStringsTable, readsPairsCommentsAndEscapes)
{
    auto const table
        = NSParseStringsTable("\xEF\xBB\xBF/* first\n * comment */\r\n"
                              "\"a.key\"=\"1 \\\"q\\\" \\\\ \\n\\t\\r\"; // rest of the line = \"x\";\n"
                              "\"\u00E7\" /* here too */ = // and here\n \"\\u00e7 \\uD83D\\uDE00 \\U20AC\" ;"
                              "\"empty\" = \"\"; \"//\" = \"/* no comment */\"; // end");
    ASSERT_TRUE(table.has_value());
    EXPECT_THAT(*table,
        ElementsAre(Pair("//", "/* no comment */"), Pair("a.key", "1 \"q\" \\ \n\t\r"), Pair("empty", ""),
            Pair("\u00E7", "\u00E7 \U0001F600 \u20AC")));
    EXPECT_TRUE(NSParseStringsTable("")->empty());
    EXPECT_EQ(NSParseStringsTable("\"a\"=\"1\";\"a\"=\"2\";")->at("a"), "1");
}

TEST(NSStringsTable, refusesWhatIsNotOfItsForm)
{
    for (char const* text : { "\"a\"", "\"a\" = ", "\"a\" = \"b\"", "\"a\" \"b\";", "a = b;", "\"a\" = \"b;",
             "\"a\" = \"\\", "\"a\" = \"\\x\";", "\"a\" = \"\\u12\";", "\"a\" = \"\\u12G4\";",
             "\"a\" = \"\\uD83D\";", "\"a\" = \"\\uDE00\";", "\"a\" = \"\\uD83D\\u0041\";", "\"a\" = \"b\";;",
             "/* never ends", "\"a\" = \"b\"; /", "\"a\" = \"\\u-001\";" }) {
        EXPECT_EQ(NSParseStringsTable(text), std::nullopt) << text;
    }
}

TEST(NSPreferredLanguages, nameARegionsLanguageAfterTheRegion)
{
    NSSetCurrentLocale("pt_BR");
    auto const languages = NSPreferredLanguages();
    auto const region = std::find(languages.begin(), languages.end(), "pt-BR");
    EXPECT_NE(region, languages.end());
    EXPECT_EQ(languages.back(), "pt");
    EXPECT_EQ(std::count(languages.begin(), languages.end(), "pt"), 1);
    NSSetCurrentLocale("");
}

TEST(NSFatalError, stopsTheProgramWithOneLine)
{
    EXPECT_DEATH(NSFatalError("outlet 'slider'\nis missing"), "^[^\n]*outlet 'slider' is missing\n$");
}
