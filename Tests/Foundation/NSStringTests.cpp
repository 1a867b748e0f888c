#include "Platform/Foundation/NSLocale.h"
#include "Platform/Foundation/NSString.h"

#include <gtest/gtest.h>

namespace {

struct NSStringTest : testing::Test {
    ~NSStringTest() override { NSSetCurrentLocale(""); }
};

bool contains(char const* locale, char const* text, char const* query)
{
    NSSetCurrentLocale(locale);
    return NSLocalizedCaseInsensitiveContains(text, query);
}

} // namespace

TEST_F(NSStringTest, containmentIgnoresLetterCaseOnly)
{
    EXPECT_TRUE(contains("en_US", "Optical Size", "CAL s"));
    EXPECT_TRUE(contains("de_DE", "GRÖSSE", "größe") == false && contains("de_DE", "GRÖSSE", "grösse"));
    EXPECT_TRUE(contains("el_GR", "\u039F\u0394\u039F\u03A3 \u0391", "\u03BF\u03B4\u03BF\u03C3"));
    EXPECT_FALSE(contains("fr_FR", "Caf\u00E9", "cafe"));
    EXPECT_FALSE(contains("en_US", "Weight", "wigh"));
}

TEST_F(NSStringTest, containmentFollowsTheLocalesLetters)
{
    EXPECT_TRUE(contains("tr_TR", "\u0130stanbul", "istanbul"));
    EXPECT_TRUE(contains("tr_TR", "KALINLIK", "kal\u0131nl\u0131k"));
    EXPECT_TRUE(contains("tr_TR", "GEN\u0130\u015EL\u0130K", "geni\u015Flik"));
    EXPECT_FALSE(contains("tr_TR", "Weight", "WEI"));
    EXPECT_TRUE(contains("en_US", "Weight", "WEI"));
    EXPECT_TRUE(contains("ar_EG", "\u0627\u0644\u0648\u0632\u0646 wght", "WGHT"));
}

TEST_F(NSStringTest, canonicallyEquivalentTextsAreTheSame)
{
    EXPECT_TRUE(contains("fr_FR", "Caf\u00E9", "FE\u0301"));
    EXPECT_TRUE(contains("fr_FR", "Cafe\u0301", "f\u00E9"));
    EXPECT_FALSE(contains("fr_FR", "Cafe\u0301", "cafe"));
    EXPECT_FALSE(contains("en_US", "x\u0301", "x")); // No single character stands for this one.
    EXPECT_TRUE(contains("en_US", "x\u0301x", "x"));
    EXPECT_TRUE(NSStringIsEqual("\u00E9", "e\u0301"));
    EXPECT_FALSE(NSStringIsEqual("\u00E9", "e"));
    EXPECT_FALSE(NSStringIsEqual("a", "A"));
}

TEST_F(NSStringTest, theEmptyQueryIsInNoText)
{
    EXPECT_FALSE(contains("en_US", "Weight", ""));
    EXPECT_FALSE(contains("en_US", "", ""));
    EXPECT_FALSE(contains("en_US", "", "a"));
}

TEST_F(NSStringTest, trimmingTakesTheSetsCharactersFromBothEndsOnly)
{
    auto blanks = [](char const* text) { return NSStringByTrimming(text, NSCharacterSet::whitespace); };
    auto all
        = [](char const* text) { return NSStringByTrimming(text, NSCharacterSet::whitespaceAndNewlines); };
    EXPECT_EQ(blanks(" \t\u00A0\u3000a b\u2003\u202F"), "a b");
    EXPECT_EQ(blanks("\n a \r"), "\n a \r");
    EXPECT_EQ(all("\r\n a\nb \u2028\u0085\v\f"), "a\nb");
    EXPECT_EQ(blanks("\u200Ba\u200B"), "\u200Ba\u200B"); // A zero-width space is no space separator.
    EXPECT_EQ(blanks(" \t "), "");
    EXPECT_EQ(all("\xFF a \xC2"), "\xFF a \xC2");
}
