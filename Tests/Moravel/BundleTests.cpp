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
