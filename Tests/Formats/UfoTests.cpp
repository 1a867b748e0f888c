#include "Typloom/Formats/Ufo.h"

#include "Tests/Support/FamilyWriter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

struct OpenedUfo {
    FamilyWriter files;
    std::vector<std::string> report;

    OpenedUfo() { files.writeUfo("X.ufo", 100); }
    Result<std::shared_ptr<Ufo>> open() { return Ufo::open(files.path("X.ufo"), "X.ufo", report); }
};

} // namespace

TEST(Ufo, ofVersionTwoHasOneLayer)
{
    OpenedUfo opened;
    opened.files.remove("X.ufo/layercontents.plist");
    opened.files.write("X.ufo/metainfo.plist",
        FamilyWriter::plist("<dict><key>formatVersion</key><integer>2</integer></dict>"));
    auto const ufo = opened.open();
    ASSERT_TRUE(ufo) << ufo.error().sentence();
    ASSERT_EQ((*ufo)->layers().size(), 1U);
    EXPECT_EQ((*ufo)->defaultLayer(), 0U);
    EXPECT_TRUE((*ufo)->readGlif(0, "A"));
    EXPECT_FALSE((*ufo)->readGlif(0, "no such glyph"));
}

TEST(Ufo, theDefaultLayerIsTheOneInItsDirectoryWhateverItsPlace)
{
    OpenedUfo opened;
    opened.files.writeLayer("X.ufo/glyphs.sketch", { { "A", FamilyWriter::glif("A", "", 1) } });
    opened.files.writeLayers("X.ufo", { { "sketch", "glyphs.sketch" }, { "foreground", "glyphs" } });
    auto const ufo = opened.open();
    ASSERT_TRUE(ufo);
    EXPECT_EQ((*ufo)->defaultLayer(), 1U);
    EXPECT_EQ((*ufo)->layerNamed("sketch"), 0U);
    EXPECT_EQ((*ufo)->layerNamed("public.default"), std::nullopt);
}

TEST(Ufo, namesThatLeadElsewhereAreLeftOut)
{
    for (std::string const directory :
        { "..", "/etc", "glyphs./x", "glyphs.\\x", "data", "glyphs.", "glyphs/.." }) {
        OpenedUfo opened;
        opened.files.writeLayers("X.ufo", { { "public.default", "glyphs" }, { "other", directory } });
        auto const ufo = opened.open();
        ASSERT_TRUE(ufo);
        EXPECT_EQ((*ufo)->layers().size(), 1U) << directory;
        EXPECT_EQ(opened.report.size(), 1U) << directory;
    }
    for (std::string const file : { "", ".", "..", "../A.glif", "/etc/passwd", "x/A.glif", "x\\A.glif" }) {
        OpenedUfo opened;
        opened.files.writeContents("X.ufo/glyphs", { { "A", file }, { "B", "B.glif" } });
        auto const ufo = opened.open();
        ASSERT_TRUE(ufo);
        EXPECT_EQ((*ufo)->layers()[0].fileNames.size(), 1U) << file;
        EXPECT_EQ(opened.report.size(), 1U) << file;
    }
}

TEST(Ufo, aFileBelongsToOneGlyph)
{
    OpenedUfo opened;
    opened.files.writeContents("X.ufo/glyphs", { { "A", "A.glif" }, { "B", "A.glif" } });
    auto const ufo = opened.open();
    ASSERT_TRUE(ufo);
    EXPECT_TRUE((*ufo)->readGlif(0, "A"));
    EXPECT_FALSE((*ufo)->readGlif(0, "B"));
    EXPECT_THAT(opened.report, testing::ElementsAre(testing::HasSubstr("'A.glif' is another glyph's")));
}

TEST(Ufo, linksInsideItAreFollowed)
{
    OpenedUfo opened;
    opened.files.remove("X.ufo/glyphs/A.glif");
    std::filesystem::create_symlink("B.glif", opened.files.path("X.ufo/glyphs/A.glif"));
    auto const ufo = opened.open();
    ASSERT_TRUE(ufo);
    EXPECT_TRUE((*ufo)->readGlif(0, "A"));
}

TEST(Ufo, metricsScaleWithTheEmWhereTheFileGivesNone)
{
    OpenedUfo opened;
    opened.files.write("X.ufo/fontinfo.plist",
        FamilyWriter::plist(
            "<dict><key>unitsPerEm</key><integer>2000</integer><key>xHeight</key><real>1010.5</real>"
            "<key>descender</key><integer>-400</integer></dict>"));
    auto const ufo = opened.open();
    ASSERT_TRUE(ufo);
    auto const& metrics = (*ufo)->metrics();
    std::vector<double> const found { metrics.unitsPerEm, metrics.ascender, metrics.descender,
        metrics.xHeight, metrics.capHeight };
    EXPECT_EQ(found, (std::vector<double> { 2000, 1500, -400, 1010.5, 1400 }));
}
