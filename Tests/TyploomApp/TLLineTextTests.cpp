#include "Tests/TyploomApp/EditFamily.h"
#include "Typloom/TyploomApp/TLLineText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// A font with glyphs for characters of every length in UTF-8, and one without a character.
std::shared_ptr<TLFont> makeFont()
{
    FontBuilder builder;
    std::pair<char const*, char32_t> const glyphs[] = { { "a", U'a' }, { "slash", U'/' },
        { "adieresis", U'ä' }, { "euro", U'€' }, { "emoji", U'😀' }, { "space", U' ' } };
    for (auto const& [name, character] : glyphs) {
        builder.addEmptyGlyph(name)->setUnicodes({ character });
    }
    builder.addEmptyGlyph("a.alt");
    return builder.font();
}

} // namespace

TEST(TLLineText, readsCharactersAndNames)
{
    auto const font = makeFont();
    EXPECT_THAT(TLGlyphNamesForText(*font, "aä€😀"), ElementsAre("a", "adieresis", "euro", "emoji"));
    EXPECT_THAT(TLGlyphNamesForText(*font, "/a.alt a"), ElementsAre("a.alt", "a"));
    EXPECT_THAT(TLGlyphNamesForText(*font, "/a.alt  a"), ElementsAre("a.alt", "space", "a"));
    EXPECT_THAT(TLGlyphNamesForText(*font, "/a/a.alt/a"), ElementsAre("a", "a.alt", "a"));
    EXPECT_THAT(TLGlyphNamesForText(*font, "//a"), ElementsAre("slash", "a"));
}

TEST(TLLineText, leavesOutWhatTheFontDoesNotHave)
{
    auto const font = makeFont();
    EXPECT_THAT(TLGlyphNamesForText(*font, "azb/none a"), ElementsAre("a", "a"));
    EXPECT_THAT(TLGlyphNamesForText(*font, "a\xC3"), ElementsAre("a")) << "cut off inside a character";
    EXPECT_THAT(TLGlyphNamesForText(*font, "\xFF\x80/"), IsEmpty());
}

TEST(TLLineText, writesATextThatReadsBackAsTheSameGlyphs)
{
    auto const font = makeFont();
    std::vector<std::string> const names { "a.alt", "space", "a", "slash", "emoji", "a.alt", "euro",
        "adieresis" };
    EXPECT_EQ(TLGlyphNamesForText(*font, TLTextForGlyphNames(*font, names)), names);
    EXPECT_EQ(TLTextForGlyphNames(*font, { "a", "euro", "a.alt" }), "a€/a.alt ");
}

TEST(TLLineText, cutsOffATextBeyondTheLongestLine)
{
    EXPECT_EQ(TLGlyphNamesForText(*makeFont(), std::string(TLLineMaximumLength + 5, 'a')).size(),
        TLLineMaximumLength);
}

TEST(TLLineText, opensWithALineThatTheFontCanShow)
{
    FontBuilder capitals;
    for (char const letter : std::string("ABEFGHIMNORSTUV")) {
        capitals.addEmptyGlyph(std::string(1, letter))->setUnicodes({ static_cast<char32_t>(letter) });
    }
    EXPECT_EQ(TLDefaultText(*capitals.font()), "HAMBURGEFONSTIV");

    FontBuilder unencoded;
    unencoded.addMaster("light", {});
    unencoded.addEmptyGlyph("blank");
    unencoded.addGlyph("drawn", [](TLFontMaster const&) { return boxOutline(400); });
    EXPECT_EQ(TLDefaultText(*unencoded.font()), "/drawn ");
    EXPECT_EQ(TLDefaultText(*FontBuilder().font()), "");
}
