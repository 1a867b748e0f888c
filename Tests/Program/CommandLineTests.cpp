#include "Typloom/TyploomApp/CommandLine.h"
#include "Typloom/TyploomApp/NameSearch.h"

#include <gmock/gmock.h>

using testing::HasSubstr;

namespace {
using Arguments = std::vector<std::string>;

CommandLine parsed(Arguments const& arguments)
{
    auto const result = ParseCommandLine(arguments);
    if (auto const* error = std::get_if<CommandLineError>(&result)) {
        ADD_FAILURE() << error->sentence;
        return {};
    }
    return std::get<CommandLine>(result);
}

/// The complaint, empty when there is none.
std::string complaint(Arguments const& arguments)
{
    auto const result = ParseCommandLine(arguments);
    auto const* error = std::get_if<CommandLineError>(&result);
    return error ? error->sentence : std::string();
}
} // namespace

TEST(CommandLine, readsEveryOptionInAnyOrder)
{
    CommandLine wanted;
    wanted.family = "Family.designspace";
    wanted.glyph = "A";
    wanted.text = "Hamburg";
    wanted.location = { { "wght", 550 }, { "Optical size", -12.5 } };
    wanted.snapshot = "out.png";
    wanted.size = CommandLine::Size { 800, 600 };
    wanted.describe = true;
    wanted.plugins = { "One.bundle", "Two" };
    EXPECT_EQ(parsed({ "--plugin", "One.bundle", "--size", "800x600", "Family.designspace", "--glyph", "A",
                  "--text", "Hamburg", "--location", "wght=550, Optical size = -12.5", "--describe",
                  "--plugin", "Two", "--snapshot", "out.png" }),
        wanted);
}

TEST(CommandLine, withoutArgumentsAsksForNothing)
{
    EXPECT_EQ(parsed({}), CommandLine());
    EXPECT_EQ(parsed({}).size, std::nullopt);
}

TEST(CommandLine, takesAValueBehindAnEqualsSignToo)
{
    EXPECT_EQ(parsed({ "F", "--location=wght=1e2" }).location,
        (std::vector<CommandLine::Coordinate> { { "wght", 100 } }));
    EXPECT_EQ(parsed({ "F", "--text=--x" }).text, "--x");
    EXPECT_EQ(parsed({ "F", "--text", "" }).text, "");
}

TEST(CommandLine, takesNothingForAnOptionAfterTwoHyphens)
{
    EXPECT_EQ(parsed({ "--describe", "--", "--help" }).family, "--help");
}

TEST(CommandLine, complainsInOneSentenceThatSaysWhatThereIs)
{
    struct Case {
        Arguments arguments;
        std::string part;
    };
    Case const cases[] = {
        { { "--zoom", "2" }, "There is no option '--zoom'; there are --glyph, --text, --location" },
        { { "-v" }, "There is no option '-v'" },
        { { "F", "--glyph" }, "--glyph needs a value: --glyph NAME" },
        { { "F", "--glyph", "--describe" }, "--glyph needs a value" },
        { { "F", "--snapshot=" }, "--snapshot needs a value" },
        { { "F", "--describe=yes" }, "--describe takes no value" },
        { { "F", "--size", "1400" }, "'1400' is not a size" },
        { { "F", "--size", "0x900" }, "'0x900' is not a size" },
        { { "F", "--size", "-5x900" }, "'-5x900' is not a size" },
        { { "F", "--size", "1400x900px" }, "'1400x900px' is not a size" },
        { { "F", "--size", "99999999999x9" }, "is not a size" },
        { { "F", "--size", "10001x9" }, "each side from 1 to 10000" },
        { { "F", "--location", "wght" }, "'wght' is no place on an axis" },
        { { "F", "--location", "=5" }, "'=5' is no place on an axis" },
        { { "F", "--location", "wght=5," }, "'' is no place on an axis" },
        { { "F", "--location", "wght=heavy" }, "'heavy' is not a number for the axis 'wght'" },
        { { "F", "--location", "wght=5;5" }, "'5;5' is not a number" },
        { { "F", "--location", "wght=nan" }, "'nan' is not a number" },
        { { "F", "--location", "wght=1e999" }, "'1e999' is not a number" },
        { { "F", "--location", "wght=0x10" }, "'0x10' is not a number" },
        { { "F", "--location", "wght=1,wght=2" }, "names the axis 'wght' twice" },
        { { "F", "G" }, "One family at a time: 'F' and then 'G'" },
        { { "" }, "file name is empty" },
        { { "--describe" }, "--describe needs a family" },
        { { "--glyph", "A" }, "--glyph needs a family" },
    };
    for (auto const& [arguments, part] : cases) {
        EXPECT_THAT(complaint(arguments), HasSubstr(part));
    }
}

TEST(CommandLine, helpNamesEveryOptionThatAnErrorNames)
{
    auto const help = CommandLineHelp();
    for (auto const* option : { "--glyph NAME", "--text TEXT", "--location", "--snapshot", "--size",
             "--describe", "--plugin FOLDER", "--version", "--help" }) {
        EXPECT_THAT(help, HasSubstr(option));
    }
    EXPECT_TRUE(parsed({ "--help" }).help);
    EXPECT_TRUE(parsed({ "--version", "F" }).version);
}

TEST(NameSearch, countsWhatMustChangeAndCaseByHalf)
{
    EXPECT_EQ(EditDistance("", ""), 0);
    EXPECT_EQ(EditDistance("wght", "wght"), 0);
    EXPECT_EQ(EditDistance("WGHT", "wght"), 2);
    EXPECT_EQ(EditDistance("wgt", "wght"), 1);
    EXPECT_EQ(EditDistance("kitten", "sitting"), 3);
    EXPECT_EQ(EditDistance("", "abc"), 3);
}

TEST(NameSearch, listsFewNamesAllInTheirOrderAndOfManyTheClosest)
{
    EXPECT_EQ(ListOfNamesLike("b", {}), "none");
    EXPECT_EQ(ListOfNamesLike("b", std::vector<std::string> { "z", "b2" }), "'z', 'b2'");

    std::vector<std::string> many;
    for (int i = 0; i < 1000; ++i) {
        many.push_back("glyph" + std::to_string(i));
    }
    many.push_back("adieresis");
    auto const list = ListOfNamesLike("Adieresi", many);
    EXPECT_THAT(list, testing::StartsWith("'adieresis', "));
    EXPECT_THAT(list, testing::EndsWith(" and 981 more"));
}

TEST(NameSearch, clipsNamesOfAnyLength)
{
    EXPECT_LT(ListOfNamesLike("a", std::vector<std::string> { std::string(1'000'000, 'a') }).size(), 100u);
}
