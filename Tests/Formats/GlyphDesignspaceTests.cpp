#include "Typloom/Formats/GlyphDesignspace.h"

#include "Tests/Support/FamilyWriter.h"
#include "Typloom/Formats/DesignspaceReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using Dictionary = std::vector<std::pair<std::string, std::string>>;

std::string dictionary(Dictionary const& entries)
{
    std::string text = "<dict>";
    for (auto const& [key, value] : entries) {
        text += "<key>" + key + "</key>" + value;
    }
    return text + "</dict>";
}

std::string string(std::string const& text)
{
    return "<string>" + text + "</string>";
}

std::string real(std::string const& number)
{
    return "<real>" + number + "</real>";
}

std::string axis(std::string const& name, std::string const& minimum, std::string const& fallback,
    std::string const& maximum)
{
    return dictionary({ { "name", string(name) }, { "minimum", real(minimum) }, { "default", real(fallback) },
        { "maximum", real(maximum) } });
}

std::string source(std::string const& name, std::string const& layer, Dictionary location)
{
    for (auto& [axisName, value] : location) {
        value = real(value);
    }
    Dictionary entries { { "name", string(name) }, { "location", dictionary(location) } };
    if (!layer.empty()) {
        entries.emplace_back("layername", string(layer));
    }
    return dictionary(entries);
}

std::string designspace(std::string const& axes, std::string const& sources)
{
    return dictionary(
        { { "axes", "<array>" + axes + "</array>" }, { "sources", "<array>" + sources + "</array>" } });
}

/// Writes the family with the entry in light's glyph A, and with a layer "flip" in both UFOs; opens it.
struct LocalFamily {
    FamilyWriter files;
    std::shared_ptr<TLFont> font;
    std::shared_ptr<TLGlyph> glyph;

    LocalFamily(std::string const& axes, std::string const& sources)
    {
        files.writeFamily();
        files.write("Light.ufo/glyphs/A.glif",
            FamilyWriter::glif("A", FamilyWriter::triangle(100), 100,
                "<key>com.black-foundry.glyph-designspace</key>" + designspace(axes, sources)));
        for (std::string const ufo : { "Light.ufo", "Bold.ufo" }) {
            files.writeLayers(ufo, { { "public.default", "glyphs" }, { "flip", "glyphs.flip" } });
            files.writeLayer(ufo + "/glyphs.flip",
                { { "A",
                    FamilyWriter::glif("A", FamilyWriter::triangle(50), ufo == "Light.ufo" ? 101 : 201) } });
        }
        font = *TLOpenFamily(files.designspacePath());
        glyph = font->glyphForName("A");
    }

    /// "name@master: axis=value ... width" of every intermediate layer.
    std::vector<std::string> intermediateLayers() const
    {
        std::vector<std::string> found;
        for (auto const& [layerId, layer] : glyph->layers()) {
            if (!layer->isBraceLayer()) {
                continue;
            }
            auto text = layer->name() + "@" + *layer->associatedMasterId() + ":";
            for (auto const& axisToShow : glyph->allAxes()) {
                auto const value = layer->axisInternalValueValue(axisToShow->axisId());
                text += " " + axisToShow->name() + "=" + (value ? std::to_string(int(*value)) : "none");
            }
            found.push_back(text + " " + std::to_string(int(layer->outline().advance)));
        }
        return found;
    }
};

auto const flip = axis("flip", "0", "0", "100");

} // namespace

TEST(GlyphDesignspace, layersComeFromTheUfoThatStandsAtTheirPlace)
{
    LocalFamily const family(axis("flip", "0", "10", "100"),
        source("one", "flip", { { "flip", "100" } })
            + source("two", "flip", { { "flip", "100" }, { "weight", "1000" } })
            + source("three", "", { { "flip", "50" } }));

    ASSERT_EQ(family.glyph->countOfAxes(), 1U);
    auto const& own = *family.glyph->axes().front();
    EXPECT_EQ(own.name(), "flip");
    EXPECT_EQ((std::vector { own.minimum(), own.defaultValue(), own.maximum() }),
        (std::vector<double> { 0, 10, 100 }));
    EXPECT_EQ(own.axisTag(), std::nullopt);
    EXPECT_THAT(family.intermediateLayers(),
        testing::ElementsAre("one@light: flip=100 weight=0 101", "two@bold: flip=100 weight=1000 201",
            "three@light: flip=50 weight=0 100"));
    EXPECT_TRUE(family.font->report().empty());
}

TEST(GlyphDesignspace, aSourceAtTheDefaultsIsTheMasterItself)
{
    LocalFamily const family(
        flip, source("light", "", {}) + source("bold", "", { { "weight", "1000" }, { "flip", "0" } }));
    EXPECT_TRUE(family.intermediateLayers().empty());
    EXPECT_TRUE(family.font->report().empty());
}

TEST(GlyphDesignspace, sourcesWithoutAPlaceOrALayerAreLeftOutAndReported)
{
    LocalFamily const family(flip,
        source("between", "flip", { { "flip", "100" }, { "weight", "500" } })
            + source("lost", "nowhere", { { "flip", "100" } })
            + source("good", "flip", { { "flip", "60" }, { "unknown", "5" } }) + source("late", "flip", {}));
    EXPECT_THAT(family.intermediateLayers(),
        testing::ElementsAre("good@light: flip=60 weight=0 101", "late@light: flip=none weight=0 101"));
    EXPECT_THAT(family.font->report(),
        testing::ElementsAre(testing::HasSubstr("'between' of glyph 'A'"), testing::HasSubstr("'nowhere'"),
            testing::HasSubstr("'unknown', which is none"),
            "The source 'late' of glyph 'A' stands where a source of the family stands."));
}

TEST(GlyphDesignspace, anAxisWithTheNameOfOneOfTheFontHidesIt)
{
    LocalFamily const family(axis("weight", "0", "0", "1"), source("heavy", "flip", { { "weight", "1" } }));
    EXPECT_THAT(family.intermediateLayers(), testing::ElementsAre("heavy@light: weight=1 weight=0 101"));
    EXPECT_NE(family.glyph->axes().front()->axisId(), family.font->axes().front()->axisId());
}

TEST(GlyphDesignspace, entriesWithAStarAreOneAxisAndMayShareALayer)
{
    LocalFamily const family(axis("turn*1", "0", "0", "100") + axis("turn*2", "0", "0", "100"),
        source("first", "flip", { { "turn*1", "100" } }) + source("second", "flip", { { "turn*2", "100" } })
            + source("end", "", { { "turn*1", "100" }, { "turn*2", "100" } }));

    ASSERT_EQ(family.glyph->countOfAxes(), 1U);
    EXPECT_EQ(family.glyph->axes().front()->name(), "turn");
    EXPECT_THAT(family.intermediateLayers(),
        testing::ElementsAre("first@light: turn=none weight=0 101", "second@light: turn=none weight=0 101",
            "end@light: turn=100 weight=0 100"));
}

TEST(GlyphDesignspace, axesAndSourcesMayBeThereAlone)
{
    EXPECT_EQ(LocalFamily(flip, "").glyph->countOfAxes(), 1U);
    LocalFamily const family("", source("one", "flip", { { "weight", "1000" } }));
    EXPECT_EQ(family.glyph->countOfAxes(), 0U);
}

TEST(GlyphDesignspace, whatCannotBeUsedIsLeftOut)
{
    auto const text = designspace(flip + axis("flip", "0", "0", "5") + axis("", "0", "0", "5")
            + axis("nan", "0", "nan", "5") + axis("round", "9", "9", "5") + axis("off", "0", "7", "5"),
        source("odd", "flip", { { "flip", "1e400" } }));
    auto const document = XmlDocument::parse(FamilyWriter::plist(text), "x");
    ASSERT_TRUE(document);
    std::vector<std::string> report;
    auto const found = readGlyphDesignspace(*readPlist(*document), nullptr, "A", report);

    EXPECT_EQ(found.axes,
        (std::vector<LocalAxis> { { "flip", 0, 0, 100, { "flip" } }, { "off", 0, 5, 5, { "off" } } }));
    EXPECT_TRUE(found.sources.empty());
    EXPECT_EQ(report.size(), 6U);
}
