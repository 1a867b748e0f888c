#include "Tests/Support/FontBuilder.h"
#include "Typloom/TyploomCore/TLInterpolationFontProxy.h"

#include <gtest/gtest.h>

namespace {

/// Two masters on two axes, and a glyph with an axis of its own.
struct Family {
    FontBuilder builder;
    std::shared_ptr<TLGlyph> glyph;

    Family()
    {
        builder.addAxis("wght", "Weight", { 100, 400, 700 });
        builder.addAxis("wdth", "Width", { 50, 100, 200 });
        builder.addMaster("regular", { { "wght", 400 }, { "wdth", 100 } });
        builder.addMaster("bold", { { "wght", 700 }, { "wdth", 100 } });
        glyph = builder.addGlyph("A");
        FontBuilder::addGlyphAxis(glyph, "flip", "Flip", { 0, 10, 100 });
    }

    using Places = std::vector<std::optional<double>>;
    static Places placesOf(TLLayer const& layer)
    {
        return { layer.axisInternalValueValue("wght"), layer.axisInternalValueValue("wdth"),
            layer.axisInternalValueValue("flip") };
    }
};

} // namespace

TEST(TLLayer, aMasterLayerStandsAtItsMastersValues)
{
    Family family;
    EXPECT_EQ(
        Family::placesOf(*family.glyph->layerForId("bold")), (Family::Places { 700, 100, std::nullopt }));

    family.builder.font()->fontMasterForId("bold")->setAxisInternalValue(650, "wght");
    family.glyph->layerForId("bold")->setCoordinates({ { "flip", 30 }, { "wght", 5 } });
    EXPECT_EQ(Family::placesOf(*family.glyph->layerForId("bold")), (Family::Places { 650, 100, 30 }));
}

TEST(TLLayer, anIntermediateLayerReportsEveryFontAxisAndTheGlyphAxesThatItNames)
{
    Family family;
    auto const half = FontBuilder::addBraceLayer(family.glyph, "half", "regular", { { "wght", 550 } });
    auto const flipped = FontBuilder::addBraceLayer(family.glyph, "flipped", "regular", { { "flip", 100 } });

    EXPECT_EQ(Family::placesOf(*half), (Family::Places { 550, 100, std::nullopt }));
    EXPECT_EQ(Family::placesOf(*flipped), (Family::Places { 400, 100, 100 }));
    EXPECT_EQ(half->axisInternalValueValue("no such axis"), std::nullopt);
}

TEST(TLLayer, layersThatStandNowhereReportNothing)
{
    Family family;
    auto const sketch = FontBuilder::addOtherLayer(family.glyph, "sketch", "regular");
    EXPECT_EQ(Family::placesOf(*sketch), (Family::Places { std::nullopt, std::nullopt, std::nullopt }));

    auto const orphan = FontBuilder::addMasterLayer(family.glyph, "gone");
    EXPECT_EQ(Family::placesOf(*orphan), (Family::Places { std::nullopt, std::nullopt, std::nullopt }));
}

TEST(TLLayer, underAPreviewOnlyTheWorkingObjectReportsThePreviewsPlace)
{
    Family family;
    auto const working = family.glyph->layerForId("regular");
    family.glyph->setPreviewLocation("regular", TLLocation { { "wght", 555.0 }, { "flip", 42.0 } });

    auto const trueLayer = family.glyph->layers().find("regular");
    ASSERT_NE(trueLayer, working);
    EXPECT_EQ(family.glyph->layerForId("regular"), working);
    EXPECT_EQ(Family::placesOf(*working), (Family::Places { 555, 100, 42 }));
    EXPECT_EQ(Family::placesOf(*trueLayer), (Family::Places { 400, 100, std::nullopt }));
    EXPECT_EQ(trueLayer->layerId(), "regular");
    EXPECT_TRUE(trueLayer->isMasterLayer());

    family.glyph->setPreviewLocation("regular", TLLocation { { "wght", 560.0 } });
    EXPECT_EQ(family.glyph->layers().find("regular"), trueLayer) << "a preview that moves keeps the object";

    family.glyph->setPreviewLocation("regular", std::nullopt);
    EXPECT_EQ(family.glyph->layers().find("regular"), working);
    EXPECT_EQ(Family::placesOf(*working), (Family::Places { 400, 100, std::nullopt }));
}

TEST(TLLayer, bothObjectsOfALayerWriteTheSameData)
{
    Family family;
    family.glyph->setPreviewLocation("regular", TLLocation { { "wght", 555.0 } });
    auto const trueLayer = family.glyph->layers().find("regular");

    trueLayer->setOutline({ .advance = 321, .height = 0, .contours = {}, .components = {}, .anchors = {} });
    trueLayer->setCoordinates({ { "flip", 7 } });

    EXPECT_EQ(family.glyph->layerForId("regular")->outline().advance, 321);
    EXPECT_EQ(family.glyph->layerForId("regular")->axisInternalValueValue("flip"), 7);
}

TEST(TLLayer, textInAPreviewsLocationIsNoPlace)
{
    Family family;
    family.glyph->setPreviewLocation("regular", TLLocation { { "wght", "555" } });
    EXPECT_EQ(family.glyph->layerForId("regular")->axisInternalValueValue("wght"), 400);
}

TEST(TLLayer, ofAPreviewGivesTheProxyByKeyAndTheRealFontAndGlyphByName)
{
    Family family;
    auto const font = family.builder.font();
    auto const real = family.glyph->layerForId("regular");
    auto const proxy = std::make_shared<TLInterpolationFontProxy>(font);
    TLLayer const shown(real->data(), proxy);

    EXPECT_EQ(real->valueForKey("font"), font);
    EXPECT_EQ(shown.valueForKey("font"), proxy);
    EXPECT_EQ(shown.valueForKey("glyph"), nullptr);
    EXPECT_EQ(shown.font(), font);
    EXPECT_EQ(shown.glyph(), family.glyph);
}

TEST(TLLayer, outlivesItsGlyphAndItsFont)
{
    std::shared_ptr<TLLayer> layer;
    {
        Family family;
        layer = family.glyph->layerForId("regular");
    }
    EXPECT_EQ(layer->glyph(), nullptr);
    EXPECT_EQ(layer->font(), nullptr);
    EXPECT_EQ(layer->valueForKey("font"), nullptr);
    EXPECT_EQ(layer->axisInternalValueValue("wght"), std::nullopt);
}
