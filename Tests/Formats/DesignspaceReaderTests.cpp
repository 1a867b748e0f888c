#include "Typloom/Formats/DesignspaceReader.h"

#include "Tests/Support/FamilyWriter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

std::shared_ptr<TLFont> open(FamilyWriter const& family)
{
    auto const font = TLOpenFamily(family.designspacePath());
    EXPECT_TRUE(font) << font.error().sentence();
    return font ? *font : nullptr;
}

std::string described(TLAxis const& axis)
{
    auto text = axis.name() + " " + axis.axisTag().value_or("-");
    for (double const value : { axis.minimum(), axis.defaultValue(), axis.maximum() }) {
        text += " " + std::to_string(int(value));
    }
    return text + (axis.isHidden() ? " hidden" : "") + (axis.isDiscrete() ? " discrete" : "");
}

} // namespace

TEST(DesignspaceReader, axesAreInDesignCoordinatesAndInFileOrder)
{
    FamilyWriter family;
    family.axes = R"(<axis tag="wght" name="weight" minimum="100" maximum="900" default="500">
        <map input="900" output="850"/><map input="100" output="150"/></axis>
        <axis tag="ital" name="italic" values="1 0" default="0"/>
        <axis tag="wdth" name="width" minimum="-5" maximum="5" default="0" hidden="1"/>
        <axis tag="wdth" name="width too" minimum="0" maximum="5" default="0"/>)";
    family.sources = FamilyWriter::source("Light.ufo", "light", "500");
    family.writeFamily();
    auto const font = open(family);

    std::vector<std::string> axes;
    std::set<std::string> identifiers;
    for (auto const& axis : font->canonicalAxes()) {
        axes.push_back(described(*axis));
        identifiers.insert(axis->axisId());
    }
    EXPECT_THAT(axes,
        testing::ElementsAre("weight wght 150 500 850", "italic ital 0 0 1 discrete",
            "width wdth -5 0 5 hidden", "width too wdth 0 0 5"));
    EXPECT_EQ(identifiers.size(), 4U);
    EXPECT_EQ(font->axes()[1]->discreteValues(), (std::vector<double> { 0, 1 }));
    EXPECT_NE(font->defaultFontMaster(nullptr), nullptr);
}

TEST(DesignspaceReader, sourcesWithoutNamesGetStableIdentifiersAndTheNameOfTheirStyle)
{
    FamilyWriter family;
    family.sources = R"(<source filename="Light.ufo" stylename="Thin"/>
        <source filename="Bold.ufo"><location><dimension name="weight" uservalue="1000"/></location></source>
        <source filename="Bold.ufo"><location><dimension name="weight" xvalue="900"/></location></source>)";
    family.writeFamily();
    auto const identifiers = [&family] {
        std::vector<std::string> found;
        auto const font = open(family);
        for (auto const& master : font->fontMasters()) {
            found.push_back(master->id());
        }
        return found;
    };
    auto const font = open(family);
    ASSERT_EQ(font->fontMasters().size(), 3U);
    EXPECT_EQ(font->fontMasters()[0]->name(), "Thin");
    EXPECT_EQ(font->fontMasters()[1]->name(), "Bold");
    EXPECT_EQ(font->fontMasters()[1]->axisInternalValueValueForId("wght"), 1000);
    EXPECT_THAT(font->report(), testing::ElementsAre(testing::HasSubstr("user value")));
    EXPECT_EQ(std::set(font->fontMasters().begin(), font->fontMasters().end()).size(), 3U);

    auto const before = identifiers();
    EXPECT_EQ(std::set(before.begin(), before.end()).size(), 3U);
    EXPECT_EQ(identifiers(), before);
}

TEST(DesignspaceReader, sparseSourcesAreIntermediateLayersOfTheirUfosMaster)
{
    FamilyWriter family;
    family.sources = FamilyWriter::source("Bold.ufo", "half", "500", "layer=\"half\"") + family.sources
        + FamilyWriter::source("Light.ufo", "quarter", "250", "layer=\"quarter\"");
    family.writeFamily();
    for (auto const& [ufo, layer] :
        { std::pair<std::string, std::string>("Bold.ufo", "half"), { "Light.ufo", "quarter" } }) {
        family.writeLayers(ufo,
            { { "public.default", "glyphs" }, { layer, "glyphs." + layer }, { "sketch", "glyphs.sketch" } });
        family.writeLayer(
            ufo + "/glyphs." + layer, { { "A", FamilyWriter::glif("A", FamilyWriter::triangle(150), 150) } });
        family.writeLayer(ufo + "/glyphs.sketch", {});
    }
    family.writeLayer("Bold.ufo/glyphs.sketch", { { "A", FamilyWriter::glif("A", "", 1) } });
    auto const font = open(family);

    std::vector<std::string> layers;
    for (auto const& [layerId, layer] : font->glyphForName("A")->layers()) {
        auto const place = layer->axisInternalValueValue("wght");
        layers.push_back(layer->name() + "@" + layer->associatedMasterId().value_or("-") + " "
            + (place ? std::to_string(int(*place)) : "nowhere"));
    }
    EXPECT_THAT(layers,
        testing::ElementsAre(
            "light@light 0", "bold@bold 1000", "half@bold 500", "quarter@light 250", "sketch@bold nowhere"));
    EXPECT_EQ(font->glyphForName("B")->layers().size(), 2U) << "a sparse layer brings only its own glyphs";
    EXPECT_TRUE(font->report().empty());
}

TEST(DesignspaceReader, aDefaultSourceWithALayerIsAMaster)
{
    FamilyWriter family;
    family.sources = FamilyWriter::source("Light.ufo", "light", "0", "layer=\"public.default\"")
        + FamilyWriter::source("Bold.ufo", "bold", "1000");
    family.writeFamily();
    auto const font = open(family);
    ASSERT_NE(font->defaultFontMaster(nullptr), nullptr);
    EXPECT_EQ(font->defaultFontMaster(nullptr)->id(), "light");
    EXPECT_THAT(font->report(), testing::ElementsAre(testing::HasSubstr("read as a master")));
}

TEST(DesignspaceReader, glyphsAreReadWhenTheyAreFirstNeeded)
{
    FamilyWriter family;
    family.writeFamily();
    family.write("Light.ufo/glyphs/B.glif", "nonsense");
    auto const font = open(family);
    EXPECT_TRUE(font->report().empty());
    EXPECT_EQ(font->loadedGlyphForName("A"), nullptr);

    family.write("Light.ufo/glyphs/A.glif", FamilyWriter::glif("A", "", 4321));
    EXPECT_EQ(font->glyphForName("A")->layerForId("light")->outline().advance, 4321);
    EXPECT_TRUE(font->report().empty());
    EXPECT_EQ(font->glyphForName("no such glyph"), nullptr);

    auto const glyph = font->glyphForName("B");
    ASSERT_NE(glyph, nullptr);
    EXPECT_THAT(glyph->layerForId("light")->problem().value_or(""), testing::HasSubstr("not XML"));
    EXPECT_EQ(glyph->layerForId("bold")->problem(), std::nullopt);
    EXPECT_THAT(font->report(), testing::ElementsAre(testing::HasSubstr("glyph 'B'")));
}

TEST(DesignspaceReader, glyphsOfWhichNothingCanBeReadAreNone)
{
    FamilyWriter family;
    family.writeFamily();
    family.write("Light.ufo/glyphs/B.glif", "nonsense");
    family.remove("Bold.ufo/glyphs/B.glif");
    auto const font = open(family);
    EXPECT_EQ(font->glyphForName("B"), nullptr);
    EXPECT_EQ(font->report().size(), 2U);
}

TEST(DesignspaceReader, glyphsFollowTheirOrderAndThenTheAlphabet)
{
    FamilyWriter family;
    family.writeFamily();
    auto const glif = [](std::string const& name) { return FamilyWriter::glif(name, "", 1); };
    family.writeLayer("Light.ufo/glyphs",
        { { "c", glif("c") }, { "a", glif("a") }, { "b", glif("b") }, { "d", glif("d") } });
    family.writeLayer("Bold.ufo/glyphs", { { "a", glif("a") }, { "only here", glif("only here") } });
    family.write("Light.ufo/lib.plist",
        FamilyWriter::plist("<dict><key>public.glyphOrder</key><array><string>d</string><string>gone</string>"
                            "<string>b</string><string>d</string></array></dict>"));
    EXPECT_THAT(open(family)->glyphNames(), testing::ElementsAre("d", "b", "a", "c", "only here"));
}

TEST(DesignspaceReader, charactersAreFoundUnderTheirUsualNamesAndUnderAnyOther)
{
    FamilyWriter family;
    family.writeFamily();
    auto const glif = [](std::string const& name, std::string const& hexadecimal) {
        return "<glyph name=\"" + name + "\" format=\"2\"><unicode hex=\"" + hexadecimal + "\"/></glyph>";
    };
    family.writeLayer("Light.ufo/glyphs",
        { { "A", glif("A", "0041") }, { "one", glif("one", "0031") }, { "eacute", glif("eacute", "00E9") },
            { "uni0416", glif("uni0416", "0416") }, { "B", glif("B", "0058") },
            { "smile", glif("smile", "1F600") } });
    auto const font = open(family);
    std::pair<char32_t, std::optional<std::string>> const cases[] { { U'A', "A" }, { U'1', "one" },
        { 0xE9, "eacute" }, { 0x416, "uni0416" }, { U'X', "B" }, { 0x1F600, "smile" }, { U'B', std::nullopt },
        { U'1', "one" }, { 0, std::nullopt } };
    for (auto const& [character, name] : cases) {
        EXPECT_EQ(font->glyphNameForCharacter(character), name) << std::uint32_t(character);
    }
    EXPECT_EQ(font->loadedGlyphForName("A"), nullptr) << "finding a name reads no glyph";
}
