#include "Moravel/MoravelBundle.h"
#include "Moravel/Plugin.h"
#include "Tests/Support/RowBuilder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

static std::map<std::string, std::string, std::less<>> stringsTable(std::string const& path)
{
    std::ifstream file(path);
    std::ostringstream text;
    text << file.rdbuf();
    return NSParseStringsTable(text.str()).value_or(std::map<std::string, std::string, std::less<>> {});
}

TEST(MoravelBundle, isThePlugInsOwnOnceOpened)
{
    auto const opened = RowBuilder::openBundle();
    ASSERT_NE(opened, nullptr);
    EXPECT_EQ(MoravelBundle(), opened);
    EXPECT_TRUE(opened->pathForResource("AxisCellView", "ui"));
    EXPECT_TRUE(opened->pathForResource("SidebarViewController", "ui"));
}

TEST(MoravelBundle, describesAPrincipalClassThatItsLibraryHas)
{
    RowBuilder::openBundle();
    auto const info = stringsTable(BUILD_FOLDER "/PlugIns/Moravel.bundle/Info.strings");
    EXPECT_TRUE(std::filesystem::exists(BUILD_FOLDER "/PlugIns/Moravel.bundle/" + info.at("Library")));
    std::shared_ptr<TyploomPlugin> principal;
    TyploomPluginEntry(info.at("PrincipalClass").c_str(), &principal);
    ASSERT_NE(principal, nullptr);
    EXPECT_EQ(principal->interfaceVersion(), 1U);
    std::shared_ptr<TyploomPlugin> unknown;
    TyploomPluginEntry("NoSuchClass", &unknown);
    EXPECT_EQ(unknown, nullptr);
}

/// The quoted texts that follow `MoravelLocalizedString(` in a source: joined pieces, three by three.
static std::vector<std::array<std::string, 3>> localizedStrings(std::filesystem::path const& path);

TEST(MoravelBundle, itsEnglishTableHoldsTheDefaultsOfTheSources)
{
    auto const table = stringsTable(SOURCE_FOLDER "/Moravel/Resources/en.lproj/Localizable.strings");
    std::size_t calls = 0;
    for (auto const& entry : std::filesystem::directory_iterator(SOURCE_FOLDER "/Moravel")) {
        if (entry.path().extension() != ".cpp") {
            continue;
        }
        for (auto const& [key, english, comment] : localizedStrings(entry.path())) {
            ++calls;
            ASSERT_TRUE(table.contains(key)) << key;
            EXPECT_EQ(table.at(key), english);
            EXPECT_NE(comment, "");
        }
    }
    EXPECT_EQ(calls, table.size());
}

static std::string nextLiteral(std::string_view& text)
{
    std::string literal;
    while (true) {
        text.remove_prefix(text.find('"') + 1);
        literal += text.substr(0, text.find('"'));
        text.remove_prefix(text.find('"') + 1);
        auto const next = text.find_first_not_of(" \n");
        if (next == std::string_view::npos || text[next] != '"') {
            return literal;
        }
    }
}

static std::vector<std::array<std::string, 3>> localizedStrings(std::filesystem::path const& path)
{
    std::ifstream file(path);
    std::ostringstream source;
    source << file.rdbuf();
    auto const whole = source.str();
    std::string_view text = whole;
    std::string_view const call = "MoravelLocalizedString(";
    std::vector<std::array<std::string, 3>> found;
    for (auto place = text.find(call); place != std::string_view::npos; place = text.find(call)) {
        text.remove_prefix(place + call.size());
        if (auto const first = text.find_first_not_of(" \n"); text[first] == '"') {
            auto key = nextLiteral(text);
            auto english = nextLiteral(text);
            found.push_back({ std::move(key), std::move(english), nextLiteral(text) });
        }
    }
    return found;
}
