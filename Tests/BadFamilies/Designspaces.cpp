#include "Tests/BadFamilies/BadFamily.h"

#include <sys/stat.h>

namespace {

std::string axis(std::string const& attributes, std::string const& content = {})
{
    return "<axis tag=\"wght\" name=\"weight\" " + attributes + ">" + content + "</axis>";
}

BadFamily badDesignspace(std::string name, std::string content, Names mentions)
{
    return { .name = std::move(name),
        .spoil =
            [content = std::move(content)](FamilyWriter& family) {
                family.writeFamily();
                family.write("Test.designspace", content);
                family.write("outside.txt", "outside");
            },
        .mentions = std::move(mentions),
        .isRefused = true };
}

BadFamily badAxis(std::string name, std::string axes, Names mentions, bool isRefused)
{
    return { .name = std::move(name),
        .spoil =
            [axes = std::move(axes)](FamilyWriter& family) {
                family.axes = axes;
                family.writeFamily();
            },
        .mentions = std::move(mentions),
        .isRefused = isRefused };
}

BadFamily badSources(
    std::string name, std::string sources, Names mentions, Names masters, bool isRefused = false)
{
    return { .name = std::move(name),
        .spoil =
            [sources = std::move(sources)](FamilyWriter& family) {
                family.sources = sources;
                family.writeFamily();
            },
        .mentions = std::move(mentions),
        .isRefused = isRefused,
        .masters = masters,
        .mastersOfA = masters };
}

std::string deeplyNested()
{
    std::string text;
    for (int depth = 0; depth < 200'000; ++depth) {
        text += "<a>";
    }
    return text;
}

std::string entitiesThatGrow()
{
    std::string text = "<?xml version=\"1.0\"?>\n<!DOCTYPE designspace [\n<!ENTITY a0 \"ha\">\n";
    for (int level = 1; level < 10; ++level) {
        auto const previous = "&a" + std::to_string(level - 1) + ";";
        text += "<!ENTITY a" + std::to_string(level) + " \"";
        for (int copy = 0; copy < 10; ++copy) {
            text += previous;
        }
        text += "\">\n";
    }
    return text + "]>\n<designspace><axes>&a9;</axes></designspace>";
}

auto const light = FamilyWriter::source("Light.ufo", "light", "0");
auto const bold = FamilyWriter::source("Bold.ufo", "bold", "1000");

} // namespace

std::vector<BadFamily> badDesignspaces()
{
    return {
        badDesignspace("empty", "", { "empty" }),
        badDesignspace(
            "cutInsideAnAttribute", "<designspace>\n<axes>\n<axis name=\"wei", { "line 3", "XML" }),
        badDesignspace("bytesOfAPicture", std::string("\x89PNG\r\n\x1a\n\0\0\0\x0dIHDR", 16), { "not XML" }),
        badDesignspace(
            "anotherRoot", "<plist version=\"1.0\"><dict/></plist>", { "no designspace", "'plist'" }),
        badDesignspace("entitiesThatGrow", entitiesThatGrow(), { "line 2", "entities" }),
        badDesignspace("entityOfAnotherFile",
            "<!DOCTYPE designspace [<!ENTITY x SYSTEM "
            "\"outside.txt\">]>\n<designspace>&x;</designspace>",
            { "entities" }),
        badDesignspace("nestedWithoutEnd", deeplyNested(), { "nested too deeply" }),
        badDesignspace("anotherEncoding",
            "<designspace>\n<axes>\n<axis name=\"Gr\xF6\xDF"
            "e\"/></axes></designspace>",
            { "line 3", "UTF-8" }),
        badDesignspace("wideCharacters", std::string("\xFF\xFE<\0d\0", 6), { "not XML" }),
        badDesignspace("nothingInIt", "<designspace/>", { "no masters" }),
        { .name = "mayNotBeRead",
            .spoil =
                [](FamilyWriter& family) {
                    family.writeFamily();
                    std::filesystem::permissions(family.designspacePath(), std::filesystem::perms::none);
                },
            .mentions = { "may not be read" },
            .isRefused = true },
        { .name = "aFolder",
            .spoil
            = [](FamilyWriter& family) { std::filesystem::create_directories(family.designspacePath()); },
            .mentions = { "folder" },
            .isRefused = true },
        { .name = "aPipe",
            .spoil =
                [](FamilyWriter& family) {
                    family.writeFamily();
                    family.remove("Test.designspace");
                    ::mkfifo(family.designspacePath().c_str(), 0600);
                },
            .mentions = { "not a regular file" },
            .isRefused = true },
        { .name = "aLinkToItself",
            .spoil =
                [](FamilyWriter& family) {
                    family.writeFamily();
                    family.remove("Test.designspace");
                    std::filesystem::create_symlink("Test.designspace", family.designspacePath());
                },
            .mentions = { "circle" },
            .isRefused = true },
    };
}

std::vector<BadFamily> badAxes()
{
    return {
        badAxis("noAxes", "", { "has no axes", "'weight', which is none" }, false),
        badAxis("withoutName", R"(<axis tag="weight" minimum="0" maximum="1000" default="0"/>)",
            { "line 4", "its tag 'weight'" }, false),
        badAxis("repeated",
            axis(R"(minimum="0" maximum="1000" default="0")")
                + axis(R"(minimum="0" maximum="9" default="0")"),
            { "'weight' is there more than once" }, false),
        badAxis("minimumAboveMaximum", axis(R"(minimum="1000" maximum="0" default="0")"),
            { "line 4", "'weight'" }, true),
        badAxis("defaultOutside", axis(R"(minimum="0" maximum="1000" default="-9")"),
            { "default of axis 'weight' is outside" }, false),
        badAxis("boundOfLetters", axis(R"(minimum="0" maximum="abc" default="0")"),
            { "line 4", "'abc'", "'weight'" }, true),
        badAxis(
            "boundMissing", axis(R"(minimum="0" default="0")"), { "line 4", "maximum", "'weight'" }, true),
        badAxis("boundNotANumber", axis(R"(minimum="0" maximum="nan" default="0")"), { "'nan'", "'weight'" },
            true),
        badAxis("boundInfinite", axis(R"(minimum="-inf" maximum="9" default="0")"), { "'-inf'", "'weight'" },
            true),
        badAxis("boundsTooFar", axis(R"(minimum="-1.7e308" maximum="1.7e308" default="0")"),
            { "minimum of axis 'weight' is beyond", "maximum of axis 'weight' is beyond" }, false),
        badAxis("noExtent", axis(R"(minimum="0" maximum="0" default="0")"), {}, false),
        badAxis("mapFalls",
            axis(R"(minimum="0" maximum="1000" default="0")",
                R"(<map input="0" output="0"/><map input="0" output="5"/><map input="1000" output="-1000"/>)"),
            { "two outputs for one input", "does not rise" }, false),
    };
}

std::vector<BadFamily> badSources()
{
    auto const boldAt = [](std::string const& dimension) {
        return "<source filename=\"Bold.ufo\" name=\"bold\"><location><dimension " + dimension
            + "/></location></source>";
    };
    return {
        badSources("none", "", { "no masters" }, {}, true),
        badSources("commaInAPlace", light + FamilyWriter::source("Bold.ufo", "bold", "999,5"),
            { "'bold'", "'999,5'", "line 8" }, {}, true),
        badSources("missingUfo", light + bold + FamilyWriter::source("Gone.ufo", "gone", "500"),
            { "'Gone.ufo'", "'gone' is left out" }, { "light", "bold" }),
        badSources("onlyMissingUfos", FamilyWriter::source("Gone.ufo", "gone", "0"),
            { "none of its masters", "Gone.ufo" }, {}, true),
        badSources("twoAtOnePlace", light + bold + FamilyWriter::source("Bold.ufo", "twin", "1000"),
            { "'twin' stands where 'bold' stands" }, { "light", "bold", "twin" }),
        badSources("twoOfOneName", light + bold + FamilyWriter::source("Bold.ufo", "bold", "500"), {},
            { "light", "bold", "bold#2" }),
        badSources("noneAtTheDefault", FamilyWriter::source("Light.ufo", "light", "10") + bold,
            { "stands at the default of every axis" }, { "light", "bold" }),
        badSources("unknownDimension", light + boldAt(R"(name="width" xvalue="7")"),
            { "'width', which is none", "'bold' stands where 'light' stands" }, { "light", "bold" }),
        badSources("dimensionWithoutValue", light + boldAt(R"(name="weight")"),
            { "'bold' has no value on axis 'weight'" }, { "light" }),
        badSources("unknownLayer",
            light + bold + FamilyWriter::source("Bold.ufo", "half", "500", "layer=\"nowhere\""),
            { "'half' is left out", "no layer 'nowhere'" }, { "light", "bold" }),
        badSources("onlySparseLayers",
            FamilyWriter::source("Light.ufo", "half", "500", "layer=\"public.default\""),
            { "no masters that can be read" }, {}, true),
        { .name = "ufosElsewhere",
            .spoil =
                [](FamilyWriter& family) {
                    family.sources = FamilyWriter::source("../elsewhere/Light.ufo", "light", "0")
                        + FamilyWriter::source(family.path("../elsewhere/Bold.ufo").string(), "bold", "1000");
                    family.writeDesignspace();
                    family.writeUfo("../elsewhere/Light.ufo", 100);
                    family.writeUfo("../elsewhere/Bold.ufo", 200);
                },
            .mentions = { "'../elsewhere/Light.ufo' lies outside", "/elsewhere/Bold.ufo' lies outside" } },
        badSources("filesThatAreNone",
            light + bold + FamilyWriter::source("", "none", "1")
                + FamilyWriter::source("/dev/zero", "device", "2") + FamilyWriter::source("..", "above", "3")
                + FamilyWriter::source("&#0;", "nul", "4")
                + FamilyWriter::source("Test.designspace", "self", "5"),
            { "'none' names no file", "'device' is left out", "'above' is left out", "'self' is left out" },
            { "light", "bold" }),
        { .name = "everythingTwice",
            .spoil =
                [](FamilyWriter& family) {
                    family.axes = axis(R"(minimum="0" minimum="5" maximum="1000" default="0")")
                        + "</axes><axes/><axes>" + axis(R"(minimum="0" maximum="9" default="0")");
                    family.sources = light + bold + "</sources><sources>" + light
                        + "<source filename=\"Bold.ufo\">" + "<location/><location/></source>";
                    family.writeFamily();
                },
            .mentions = {} },
        badSources("packedUfo", light + bold + FamilyWriter::source("Light.ufoz", "packed", "500"),
            { "'Light.ufoz'", "'packed' is left out" }, { "light", "bold" }),
    };
}
