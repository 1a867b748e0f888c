#include "Tests/Support/FamilyWriter.h"
#include "Typloom/Formats/DesignspaceReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include <sys/stat.h>

namespace {

using Names = std::vector<std::string>;

/// What a family with one fault gives.
struct BadFamily {
    std::string name;
    /// Writes the family and puts the fault into it.
    std::function<void(FamilyWriter&)> spoil;
    /// Found in the sentence of the error, or each in the report.
    Names mentions;
    bool isRefused { false };
    Names masters { "light", "bold" }; ///< Those that are there, by identifier.
    /// Masters that draw glyph A; B is always good.
    Names mastersOfA { "light", "bold" };
};

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

BadFamily badBold(std::string name, std::function<void(FamilyWriter&)> spoil, Names mentions, Names masters,
    Names mastersOfA)
{
    return { .name = std::move(name),
        .spoil =
            [spoil = std::move(spoil)](FamilyWriter& family) {
                family.writeFamily();
                spoil(family);
            },
        .mentions = std::move(mentions),
        .isRefused = false,
        .masters = std::move(masters),
        .mastersOfA = std::move(mastersOfA) };
}

/// Bold's drawing of A is the one that is bad.
BadFamily badGlyph(std::string name, std::function<void(FamilyWriter&)> spoil, Names mentions)
{
    return badBold(std::move(name), std::move(spoil), std::move(mentions), { "light", "bold" }, { "light" });
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

std::vector<BadFamily> designspaces()
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
            "\"file:///etc/passwd\">]>\n<designspace>&x;</designspace>",
            { "entities" }),
        badDesignspace("nestedWithoutEnd", deeplyNested(), { "nested too deeply" }),
        badDesignspace("anotherEncoding",
            "<designspace>\n<axes>\n<axis name=\"Gr\xF6\xDF"
            "e\"/></axes></designspace>",
            { "line 3", "UTF-8" }),
        badDesignspace("wideCharacters", std::string("\xFF\xFE<\0d\0", 6), { "not XML" }),
    };
}

std::vector<BadFamily> axes()
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

std::vector<BadFamily> sources()
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
        badSources("packedUfo", light + bold + FamilyWriter::source("Light.ufoz", "packed", "500"),
            { "'Light.ufoz'", "'packed' is left out" }, { "light", "bold" }),
    };
}

std::vector<BadFamily> ufos()
{
    Names const both { "light", "bold" };
    Names const lightAlone { "light" };
    return {
        badBold(
            "linksInACircle",
            [](FamilyWriter& family) {
                family.remove("Bold.ufo");
                std::filesystem::create_symlink("Bold.ufo", family.path("Bold.ufo"));
            },
            { "'Bold.ufo'", "'bold' is left out" }, lightAlone, lightAlone),
        badBold(
            "noMetainfo", [](FamilyWriter& family) { family.remove("Bold.ufo/metainfo.plist"); },
            { "'Bold.ufo/metainfo.plist'", "'bold' is left out" }, lightAlone, lightAlone),
        badBold(
            "anotherNameOfTheDefaultLayer",
            [](FamilyWriter& family) {
                family.writeLayers("Bold.ufo", { { "foreground", "glyphs" } });
            },
            {}, both, both),
        badBold(
            "layerFolderOutside",
            [](FamilyWriter& family) {
                family.writeLayer("outside", { { "A", FamilyWriter::glif("A", "", 666) } });
                family.writeLayers(
                    "Bold.ufo", { { "public.default", "glyphs" }, { "sketch", "../outside" } });
            },
            { "'sketch'", "'../outside'" }, both, both),
        badBold(
            "layerFolderIsALinkOutside",
            [](FamilyWriter& family) {
                family.writeLayer("outside", { { "A", FamilyWriter::glif("A", "", 666) } });
                std::filesystem::create_directory_symlink(
                    "../outside", family.path("Bold.ufo/glyphs.sketch"));
                family.writeLayers(
                    "Bold.ufo", { { "public.default", "glyphs" }, { "sketch", "glyphs.sketch" } });
            },
            { "'sketch'", "link that leads out" }, both, both),
        badBold(
            "contentsAreAList",
            [](FamilyWriter& family) {
                family.write("Bold.ufo/glyphs/contents.plist", FamilyWriter::plist("<array/>"));
            },
            { "contents.plist is no dictionary", "'bold' is left out" }, lightAlone, lightAlone),
        badBold(
            "oddMetrics",
            [](FamilyWriter& family) {
                family.write("Bold.ufo/fontinfo.plist",
                    FamilyWriter::plist("<dict><key>unitsPerEm</key><integer>0</integer>"
                                        "<key>ascender</key><string>tall</string></dict>"));
            },
            { "unitsPerEm is no usable number; 1000 is used", "ascender is no usable number" }, both, both),
        badBold(
            "laterVersion",
            [](FamilyWriter& family) {
                family.write("Bold.ufo/metainfo.plist",
                    FamilyWriter::plist("<dict><key>formatVersion</key><integer>4</integer></dict>"));
            },
            { "Bold.ufo", "later than UFO 3" }, both, both),
    };
}

std::vector<BadFamily> glyphs()
{
    auto const content = [](std::string text) {
        return
            [text = std::move(text)](FamilyWriter& family) { family.write("Bold.ufo/glyphs/A.glif", text); };
    };
    auto const fileName = [](std::string name) {
        return [name = std::move(name)](FamilyWriter& family) {
            family.write("outside.glif", FamilyWriter::glif("A", FamilyWriter::triangle(666), 666));
            family.writeContents("Bold.ufo/glyphs", { { "A", name }, { "B", "B.glif" } });
        };
    };
    auto const point = [&content](std::string const& x, std::string const& y) {
        return content(
            FamilyWriter::glif("A", "<contour>\n" + FamilyWriter::point(x, y) + "</contour>\n", 200));
    };
    return {
        badGlyph("fileOutside", fileName("../../outside.glif"), { "'A'", "'../../outside.glif'" }),
        badGlyph("fileIsALinkOutside",
            [](FamilyWriter& family) {
                family.write("outside.glif", FamilyWriter::glif("A", FamilyWriter::triangle(666), 666));
                family.remove("Bold.ufo/glyphs/A.glif");
                std::filesystem::create_symlink("../../outside.glif", family.path("Bold.ufo/glyphs/A.glif"));
            },
            { "glyph 'A'", "link that leads out" }),
        badGlyph("fileMissing", [](FamilyWriter& family) { family.remove("Bold.ufo/glyphs/A.glif"); },
            { "glyph 'A'", "'Bold.ufo/glyphs/A.glif'", "no such file" }),
        badGlyph("fileCut", content("<glyph name=\"A\" format=\"2\">\n<outline>\n<contour>\n<point x=\"1"),
            { "glyph 'A'", "line 4" }),
        badGlyph("fileEmpty", content(""), { "glyph 'A'", "empty" }),
        badGlyph("notANumber", point("nan", "0"), { "glyph 'A'", "line 6", "'nan'" }),
        badGlyph("numberTooLarge", point("0", "1e400"), { "glyph 'A'", "line 6", "'1e400'" }),
        badGlyph("aPipe",
            [](FamilyWriter& family) {
                family.remove("Bold.ufo/glyphs/A.glif");
                ASSERT_EQ(::mkfifo(family.path("Bold.ufo/glyphs/A.glif").c_str(), 0600), 0);
            },
            { "glyph 'A'", "not a regular file" }),
        badGlyph("aFolder",
            [](FamilyWriter& family) {
                family.remove("Bold.ufo/glyphs/A.glif");
                std::filesystem::create_directory(family.path("Bold.ufo/glyphs/A.glif"));
            },
            { "glyph 'A'", "folder" }),
    };
}

std::string nameOf(testing::TestParamInfo<BadFamily> const& info)
{
    return info.param.name;
}

/// Every file with its size and time of change.
std::map<std::string, std::string> listing(std::filesystem::path const& folder)
{
    std::map<std::string, std::string> entries;
    for (auto const& entry : std::filesystem::recursive_directory_iterator(folder)) {
        struct stat facts { };
        ::lstat(entry.path().c_str(), &facts);
        entries[entry.path()] = std::to_string(facts.st_size) + " " + std::to_string(facts.st_mtim.tv_sec)
            + " " + std::to_string(facts.st_mtim.tv_nsec);
    }
    return entries;
}

std::string joined(Names const& sentences)
{
    std::string text;
    for (auto const& sentence : sentences) {
        text += sentence + "\n";
    }
    return text;
}

/// The masters whose drawing of the glyph, a triangle, could be read.
Names mastersThatDraw(TLFont const& font, std::string const& glyphName)
{
    Names masters;
    auto const glyph = font.glyphForName(glyphName);
    for (auto const& [layerId, layer] : glyph ? glyph->layers() : TLLayerDictionary {}) {
        if (layer->outline().contours.size() == 1 && layer->outline().advance != 666) {
            masters.push_back(layerId);
        }
    }
    return masters;
}

class BadFamilies : public testing::TestWithParam<BadFamily> { };

} // namespace

TEST_P(BadFamilies, giveOneSentenceOrOpenWithWhatIsGood)
{
    auto const& expected = GetParam();
    FamilyWriter family;
    expected.spoil(family);
    auto const before = listing(family.path(""));
    auto const opened = TLOpenFamily(family.designspacePath());

    ASSERT_EQ(!opened, expected.isRefused) << (opened ? "it opened" : opened.error().sentence());
    std::string said;
    if (opened) {
        auto const& font = **opened;
        Names masters;
        for (auto const& master : font.fontMasters()) {
            masters.push_back(master->id());
        }
        EXPECT_EQ(masters, expected.masters);
        EXPECT_EQ(mastersThatDraw(font, "A"), expected.mastersOfA);
        EXPECT_EQ(mastersThatDraw(font, "B"), expected.masters);
        said = joined(font.report());
        EXPECT_EQ(said.empty(), expected.mentions.empty()) << said;
    } else {
        said = opened.error().sentence();
        EXPECT_THAT(said, testing::HasSubstr("Test.designspace"));
        EXPECT_THAT(said, testing::Not(testing::HasSubstr("\n")));
    }
    for (auto const& mention : expected.mentions) {
        EXPECT_THAT(said, testing::HasSubstr(mention));
    }
    EXPECT_EQ(listing(family.path("")), before) << "opening writes nothing";
}

INSTANTIATE_TEST_SUITE_P(Designspace, BadFamilies, testing::ValuesIn(designspaces()), nameOf);
INSTANTIATE_TEST_SUITE_P(Axis, BadFamilies, testing::ValuesIn(axes()), nameOf);
INSTANTIATE_TEST_SUITE_P(Source, BadFamilies, testing::ValuesIn(sources()), nameOf);
INSTANTIATE_TEST_SUITE_P(Ufo, BadFamilies, testing::ValuesIn(ufos()), nameOf);
INSTANTIATE_TEST_SUITE_P(Glyph, BadFamilies, testing::ValuesIn(glyphs()), nameOf);
