#include "Platform/Foundation/NSLocale.h"
#include "Platform/Foundation/NSNumberFormatter.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <limits>

namespace {

struct NSNumberFormatterTest : testing::Test {
    NSNumberFormatterTest() { NSSetCurrentLocale("en_US"); }
    ~NSNumberFormatterTest() override { NSSetCurrentLocale(""); }

    std::string text(double number, int fractionDigits)
    {
        formatter.setMaximumFractionDigits(fractionDigits);
        return formatter.stringFromNumber(number).value_or("none");
    }

    NSNumberFormatter formatter;
};

} // namespace

TEST_F(NSNumberFormatterTest, halvesAreRoundedToEvenInDecimal)
{
    EXPECT_EQ(text(2.5, 0), "2");
    EXPECT_EQ(text(3.5, 0), "4");
    EXPECT_EQ(text(-2.5, 0), "-2");
    EXPECT_EQ(text(0.125, 2), "0.12");
    EXPECT_EQ(text(0.145, 2), "0.14"); // In binary a little less than the half...
    EXPECT_EQ(text(1.005, 2), "1"); // ... as this is, which to even goes down to 1.00 ...
    EXPECT_EQ(text(2.675, 2), "2.68"); // ... and this, which to even goes up.
    EXPECT_EQ(text(0.1250001, 2), "0.13");
    EXPECT_EQ(text(999.95, 1), "1000");
    EXPECT_EQ(text(9.5, 0), "10");
    EXPECT_EQ(text(0.12345, 3), "0.123");
}

TEST_F(NSNumberFormatterTest, thereIsNoNegativeZeroAndNoGroupSeparator)
{
    EXPECT_EQ(text(-0.0, 3), "0");
    EXPECT_EQ(text(-0.0004, 3), "0");
    EXPECT_EQ(text(-0.5, 0), "0");
    EXPECT_EQ(text(-0.0006, 3), "-0.001");
    EXPECT_EQ(text(1234567.5, 1), "1234567.5");
    EXPECT_EQ(text(DBL_MAX, 0).size(), 309u);
    EXPECT_EQ(text(5e-324, 3), "0");
}

TEST_F(NSNumberFormatterTest, whatIsNotFiniteHasNoText)
{
    for (double const number : { std::nan(""), HUGE_VAL, -HUGE_VAL }) {
        EXPECT_EQ(formatter.stringFromNumber(number), std::nullopt);
    }
}

TEST_F(NSNumberFormatterTest, theLocaleGivesSeparatorDigitsAndSign)
{
    struct Case {
        char const* locale;
        char const* text;
    };
    for (auto const& [locale, wanted] : {
             Case { "de_DE", "-1234,5" },
             Case { "fr_FR", "-1234,5" },
             Case { "tr_TR", "-1234,5" },
             Case { "sv_SE", "\u22121234,5" },
             Case { "ar_EG", "\u061C-\u0661\u0662\u0663\u0664\u066B\u0665" },
         }) {
        NSSetCurrentLocale(locale);
        EXPECT_EQ(text(-1234.5, 1), wanted) << locale;
        EXPECT_EQ(formatter.numberFromString(wanted), -1234.5) << locale;
    }
}

TEST_F(NSNumberFormatterTest, whatTheLocaleWritesIsReadBackBitByBit)
{
    formatter.setMaximumFractionDigits(340);
    for (char const* locale : { "en_US", "de_DE", "fr_FR", "tr_TR", "ar_EG", "fa_IR", "sv_SE" }) {
        NSSetCurrentLocale(locale);
        for (double const number : { 0.1 + 0.2, -1e15 + 0.5, 400.0, 1.0 / 3, -7e-10, DBL_MAX }) {
            EXPECT_EQ(formatter.numberFromString(formatter.stringFromNumber(number).value()), number)
                << locale << ' ' << number;
        }
    }
}

TEST_F(NSNumberFormatterTest, commaAndFullStopAreDecimalSeparatorsEverywhereAndNothingSeparatesGroups)
{
    for (char const* locale : { "en_US", "de_DE", "fr_FR", "sv_SE", "ar_EG", "hi_IN", "de_CH" }) {
        NSSetCurrentLocale(locale);
        for (char const* text : { "1.5", "1,5", "\u0661\u066B\u0665", "\u0661.\u0665", "+1,50", " 1.500 " }) {
            EXPECT_EQ(formatter.numberFromString(text), 1.5) << locale << ' ' << text;
        }
        EXPECT_EQ(formatter.numberFromString(",5"), 0.5) << locale;
        EXPECT_EQ(formatter.numberFromString("\u22121,"), -1) << locale;
        for (char const* text : { "1.234,5", "1,234.5", "1 234", "1\u00A0234,5", "1\u202F234", "1'234",
                 "1\u2019234", "1,2,3", "1.2,5" }) {
            EXPECT_EQ(formatter.numberFromString(text), std::nullopt) << locale << ' ' << text;
        }
    }
}

TEST_F(NSNumberFormatterTest, onlyAWholeFiniteNumberIsRead)
{
    EXPECT_EQ(formatter.numberFromString(" \t+7 \n"), 7);
    EXPECT_EQ(formatter.numberFromString("1.5e3"), 1500);
    for (char const* text :
        { "", " ", "abc", "1.5 pt", "0x10", "inf", "nan", "1e400", "1.2.3", "--1", "+" }) {
        EXPECT_EQ(formatter.numberFromString(text), std::nullopt) << text;
    }
}

TEST_F(NSNumberFormatterTest, numbersReadAreBroughtIntoTheLimits)
{
    formatter.setMinimum(100);
    formatter.setMaximum(900);
    EXPECT_EQ(formatter.numberFromString("20"), 100);
    EXPECT_EQ(formatter.numberFromString("1e9"), 900);
    EXPECT_EQ(formatter.numberFromString("400"), 400);
    formatter.setMinimum(std::nullopt);
    EXPECT_EQ(formatter.numberFromString("-20"), -20);
    auto const zero = formatter.numberFromString("-0");
    EXPECT_FALSE(std::signbit(zero.value()));
}

TEST(NSNumberText, isShortestAndReadsBackInEveryLocale)
{
    for (char const* locale : { "C", "de_DE", "ar_EG" }) {
        NSSetCurrentLocale(locale);
        EXPECT_EQ(NSNumberDescription(0.1), "0.1");
        EXPECT_EQ(NSNumberDescription(400), "400");
        EXPECT_EQ(NSNumberDescription(-0.0), "0");
        EXPECT_EQ(NSNumberDescription(0.1 + 0.2), "0.30000000000000004");
        for (double const number : { 0.1 + 0.2, -1e300, 5e-324, DBL_MAX, 1e15 + 0.5 }) {
            EXPECT_EQ(NSNumberFromText(NSNumberDescription(number)), number);
        }
    }
    NSSetCurrentLocale("");
}

TEST(NSNumberText, isRefusedUnlessItIsAFiniteNumberFromEndToEnd)
{
    EXPECT_EQ(NSNumberFromText("+7"), 7);
    EXPECT_EQ(NSNumberFromText("-1.5e-3"), -0.0015);
    for (char const* text :
        { "", "+", "+-7", " 1", "1 ", "12abc", "1,5", "0x10", "nan", "inf", "-inf", "1e400" }) {
        EXPECT_EQ(NSNumberFromText(text), std::nullopt) << text;
    }
}
