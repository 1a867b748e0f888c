#include "Typloom/Formats/DesignspaceReader.h"

#include <gtest/gtest.h>

namespace {

/// Designspaces of real families beside the source folder; none where that was not set up.
std::vector<std::filesystem::path> sharedFamilies()
{
    std::vector<std::filesystem::path> found;
    std::error_code problem;
    for (auto const& entry : std::filesystem::recursive_directory_iterator(
             std::filesystem::path(SOURCE_FOLDER).parent_path() / "shared" / "fonts", problem)) {
        if (entry.path().extension() == ".designspace") {
            found.push_back(entry.path());
        }
    }
    return found;
}

} // namespace

TEST(SharedFamilies, openAndGiveEveryGlyphWithoutAProblem)
{
    auto const families = sharedFamilies();
    if (families.empty()) {
        GTEST_SKIP() << "there are no shared families here";
    }
    for (auto const& path : families) {
        auto const opened = TLOpenFamily(path);
        ASSERT_TRUE(opened) << opened.error().sentence();
        EXPECT_NE((*opened)->defaultFontMaster(nullptr), nullptr) << path;
        for (auto const& name : (*opened)->glyphNames()) {
            auto const glyph = (*opened)->glyphForName(name);
            ASSERT_NE(glyph, nullptr) << path << " " << name;
            for (auto const& [layerId, layer] : glyph->layers()) {
                EXPECT_EQ(layer->problem(), std::nullopt) << path;
            }
        }
    }
}
