#include "Tests/Support/DesignspacesIn.h"
#include "Typloom/Formats/DesignspaceReader.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

void expectToOpenWholly(std::vector<std::filesystem::path> const& families)
{
    for (auto const& path : families) {
        SCOPED_TRACE(path);
        auto const opened = TLOpenFamily(path);
        ASSERT_TRUE(opened) << opened.error().sentence();
        bool const hasDefault = (*opened)->defaultFontMaster(nullptr) != nullptr;
        EXPECT_EQ(hasDefault, path.stem() != "NoDefaultSource");
        EXPECT_FALSE((*opened)->glyphNames().empty());
        for (auto const& name : (*opened)->glyphNames()) {
            auto const glyph = (*opened)->glyphForName(name);
            ASSERT_NE(glyph, nullptr) << name;
            for (auto const& [layerId, layer] : glyph->layers()) {
                EXPECT_EQ(layer->problem(), std::nullopt) << name;
            }
        }
    }
}

} // namespace

TEST(Families, ofTheProjectOpenAndGiveEveryGlyphWithoutAProblem)
{
    auto const families = designspacesIn(std::filesystem::path(SOURCE_FOLDER) / "Fonts");
    ASSERT_FALSE(families.empty());
    expectToOpenWholly(families);
}

TEST(Families, ofAnotherFolderOpenAndGiveEveryGlyphWithoutAProblem)
{
    char const* const folder = std::getenv("TYPLOOM_FAMILIES");
    if (!folder) {
        GTEST_SKIP() << "TYPLOOM_FAMILIES names no folder of families";
    }
    auto const families = designspacesIn(folder);
    ASSERT_FALSE(families.empty()) << folder;
    expectToOpenWholly(families);
}
