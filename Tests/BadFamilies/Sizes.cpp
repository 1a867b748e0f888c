#include "Tests/BadFamilies/BadFamily.h"

namespace {

std::string const tenMegabyteName(tenMegabytes, 'n');
std::string const megabyteName(tenMegabytes / 10, 'n');

/// An axis, sources and glyphs whose name is that long.
std::vector<BadFamily> longNames()
{
    return {
        { .name = "axisName",
            .spoil =
                [](FamilyWriter& family) {
                    family.axes = "<axis tag=\"wght\" name=\"" + tenMegabyteName
                        + "\" minimum=\"0\" maximum=\"1000\" default=\"0\"/>";
                    family.writeFamily();
                },
            .mentions = { "line 4", "of an axis is too long" },
            .isRefused = true },
        { .name = "axisNameThatMayBe",
            .spoil =
                [](FamilyWriter& family) {
                    family.axes = "<axis tag=\"" + megabyteName + "\" name=\"" + megabyteName
                        + "\" minimum=\"0\" maximum=\"1000\" default=\"0\"/>";
                    family.sources = "<source filename=\"Light.ufo\" name=\"light\"/>";
                    family.writeFamily();
                },
            .masters = { "light" },
            .mastersOfA = { "light" } },
        { .name = "nameOfASourceAndItsStyle",
            .spoil =
                [](FamilyWriter& family) {
                    family.sources = FamilyWriter::source("Light.ufo", "light", "0")
                        + FamilyWriter::source("Bold.ufo", tenMegabyteName, "1000",
                            "familyname=\"" + tenMegabyteName + "\" stylename=\"" + tenMegabyteName + "\"");
                    family.writeFamily();
                },
            .masters = { "light", tenMegabyteName },
            .mastersOfA = { "light", tenMegabyteName } },
        { .name = "fileOfASource",
            .spoil =
                [](FamilyWriter& family) {
                    family.sources += FamilyWriter::source(tenMegabyteName, "long", "500");
                    family.writeFamily();
                },
            .mentions = { "'long' is left out" } },
        badPart("glyphName",
            [](FamilyWriter& family) {
                family.writeContents("Light.ufo/glyphs",
                    { { "A", "A.glif" }, { "B", "B.glif" }, { tenMegabyteName, "long.glif" } });
            },
            { "'Light.ufo/glyphs/long.glif'" }),
        badPart("fileOfAGlyph",
            [](FamilyWriter& family) {
                family.writeContents(
                    "Light.ufo/glyphs", { { "A", "A.glif" }, { "B", "B.glif" }, { "C", tenMegabyteName } });
            },
            { "glyph 'C'" }),
        badPart("layerName",
            [](FamilyWriter& family) {
                family.writeLayer("Light.ufo/glyphs.sketch", { { "A", FamilyWriter::glif("A", "", 1) } });
                family.writeLayers(
                    "Light.ufo", { { "public.default", "glyphs" }, { tenMegabyteName, "glyphs.sketch" } });
            },
            {}),
        badPart("pointAndComponentNames",
            [](FamilyWriter& family) {
                auto const bold = FamilyWriter::glif(
                    "B", FamilyWriter::triangle(200) + "<component base=\"" + tenMegabyteName + "\"/>", 200);
                family.write("Bold.ufo/glyphs/B.glif", bold);
            },
            {}),
        badPart("unknownAttribute",
            [](FamilyWriter& family) {
                family.write(
                    "Test.designspace", family.read("Test.designspace") + "<!-- " + tenMegabyteName + " -->");
            },
            {}),
        badPart("nameOfAnOwnAxis",
            [](FamilyWriter& family) {
                family.write("Light.ufo/glyphs/A.glif",
                    FamilyWriter::glif("A", FamilyWriter::triangle(100), 100,
                        "<key>com.black-foundry.glyph-designspace</key><dict><key>axes</key><array><dict>"
                        "<key>name</key><string>"
                            + tenMegabyteName
                            + "</string><key>minimum</key><real>0</real><key>default</key><real>0</real>"
                              "<key>maximum</key><real>9</real></dict></array></dict>"));
            },
            { "has too long a name" }),
    };
}

void chainComponents(FamilyWriter& family)
{
    constexpr int depth = 10'000;
    std::map<std::string, std::string> files { { "A", "A.glif" }, { "B", "B.glif" } };
    for (int index = 0; index < depth; ++index) {
        auto const name = "g" + std::to_string(index);
        files[name] = name + ".glif";
        family.write("Light.ufo/glyphs/" + name + ".glif",
            FamilyWriter::glif(name, "<component base=\"g" + std::to_string(index + 1) + "\"/>", 1));
    }
    family.writeContents("Light.ufo/glyphs", files);
    family.write("Light.ufo/glyphs/A.glif",
        FamilyWriter::glif("A", FamilyWriter::triangle(100) + "<component base=\"g0\"/>", 100));
}

std::vector<std::pair<std::string, std::string>> layers(int count)
{
    std::vector<std::pair<std::string, std::string>> list { { "public.default", "glyphs" } };
    for (int index = 0; index < count; ++index) {
        list.emplace_back("layer " + std::to_string(index), "glyphs." + std::to_string(index));
    }
    return list;
}

std::string ownSources(int count)
{
    std::string sources;
    for (int index = 0; index < count; ++index) {
        sources
            += "<dict><key>name</key><string>own</string><key>layername</key><string>public.default</string>"
               "<key>location</key><dict><key>bowl</key><real>"
            + std::to_string(index % 1000) + ".5</real></dict></dict>";
    }
    return "<key>com.black-foundry.glyph-designspace</key><dict><key>axes</key><array><dict><key>name</key>"
           "<string>bowl</string><key>minimum</key><real>0</real><key>default</key><real>0</real>"
           "<key>maximum</key><real>1000</real></dict></array><key>sources</key><array>"
        + sources + "</array></dict>";
}

/// All of one name, over one UFO.
BadFamily threeThousandMasters()
{
    BadFamily family { .name = "threeThousandMasters",
        .spoil =
            [](FamilyWriter& files) {
                for (int index = 2; index < 3'000; ++index) {
                    files.sources += FamilyWriter::source("Light.ufo", "x", std::to_string(index) + "e-1");
                }
                files.writeFamily();
            },
        .mentions = {} };
    for (int index = 2; index < 3'000; ++index) {
        family.masters.push_back(index == 2 ? "x" : "x#" + std::to_string(index - 1));
    }
    family.mastersOfA = family.masters;
    return family;
}

std::vector<BadFamily> manyOfAKind()
{
    return {
        threeThousandMasters(),
        { .name = "tenThousandSourcesOfOneUfo",
            .spoil =
                [](FamilyWriter& family) {
                    for (int index = 1; index < 10'000; ++index) {
                        family.sources += FamilyWriter::source(
                            "Light.ufo", "x", std::to_string(index) + ".5", "layer=\"public.default\"");
                    }
                    family.writeFamily();
                } },
        { .name = "aThousandAxes",
            .spoil =
                [](FamilyWriter& family) {
                    for (int index = 0; index < 1'000; ++index) {
                        family.axes += "<axis tag=\"a" + std::to_string(index) + "\" name=\"a"
                            + std::to_string(index) + "\" minimum=\"0\" maximum=\"9\" default=\"0\"/>";
                    }
                    family.writeFamily();
                } },
        badPart("aHundredThousandLayersThatAreNotThere",
            [](FamilyWriter& family) { family.writeLayers("Bold.ufo", layers(100'000)); },
            { "'layer 0'", "no such file", "There is more wrong" }),
        badPart("tenThousandLayers",
            [](FamilyWriter& family) {
                family.writeLayers("Bold.ufo", layers(10'000));
                for (int index = 0; index < 10'000; ++index) {
                    family.writeContents("Bold.ufo/glyphs." + std::to_string(index), {});
                }
            },
            {}),
        badPart("aHundredThousandLayersOfAGlyph",
            [](FamilyWriter& family) {
                family.write("Light.ufo/glyphs/A.glif",
                    FamilyWriter::glif("A", FamilyWriter::triangle(100), 100, ownSources(100'000)));
            },
            {}),
        badPart("aHundredThousandGlyphsWithoutFiles",
            [](FamilyWriter& family) {
                std::map<std::string, std::string> files { { "A", "A.glif" }, { "B", "B.glif" } };
                for (int index = 0; index < 100'000; ++index) {
                    files["g" + std::to_string(index)] = "g" + std::to_string(index) + ".glif";
                }
                family.writeContents("Light.ufo/glyphs", files);
            },
            { "'Light.ufo/glyphs/g0.glif'", "no such file" }),
        badPart("componentsInAChain", chainComponents, { "nests its components too deep" }),
        badGlyph("elementsNestedTooDeeply",
            [](FamilyWriter& family) {
                family.write("Bold.ufo/glyphs/A.glif", "<glyph>" + times(200'000, "<x>"));
            },
            { "nested too deeply" }),
        badGlyph("libraryNestedTooDeeply",
            [](FamilyWriter& family) {
                family.write("Bold.ufo/glyphs/A.glif",
                    FamilyWriter::glif("A", FamilyWriter::triangle(200), 200,
                        "<key>com.black-foundry.variable-components</key>" + times(100, "<array>")
                            + times(100, "</array>")));
            },
            { "nested too deeply" }),
    };
}

/// A glyph's file of that length, with a hole in it.
std::function<void(FamilyWriter&)> hole(std::uintmax_t size)
{
    return [size](FamilyWriter& family) {
        std::filesystem::resize_file(family.path("Bold.ufo/glyphs/A.glif"), size);
    };
}

std::vector<BadFamily> largeFiles()
{
    constexpr std::uintmax_t gigabyte = std::uintmax_t(1024) * 1024 * 1024;
    return {
        badGlyph("aGlyphOfTenGigabytes", hole(10 * gigabyte), { "too large" }),
        badGlyph("aGlyphOfNothing", hole(60U * 1024 * 1024), { "not UTF-8" }),
        badPart("aMillionPoints",
            [](FamilyWriter& family) {
                family.write("Bold.ufo/glyphs/A.glif",
                    FamilyWriter::glif("A",
                        "<contour>" + times(1'000'000, FamilyWriter::point("1", "2")) + "</contour>", 200));
            },
            {}),
        badGlyph("aGlyphOfElements",
            [](FamilyWriter& family) {
                family.write(
                    "Bold.ufo/glyphs/A.glif", "<glyph name=\"A\">" + times(15'000'000, "<a/>") + "</glyph>");
            },
            { "too many elements" }),
        { .name = "aDesignspaceOfElements",
            .spoil =
                [](FamilyWriter& family) {
                    family.writeFamily();
                    family.write(
                        "Test.designspace", "<designspace>" + times(15'000'000, "<a/>") + "</designspace>");
                },
            .mentions = { "too many elements" },
            .isRefused = true },
    };
}

} // namespace

std::vector<BadFamily> badSizes()
{
    auto families = longNames();
    for (auto const& more : { manyOfAKind(), largeFiles() }) {
        families.insert(families.end(), more.begin(), more.end());
    }
    return families;
}
