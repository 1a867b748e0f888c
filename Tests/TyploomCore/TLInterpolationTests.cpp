#include "Tests/Support/FontBuilder.h"
#include "Typloom/TyploomCore/TLInterpolation.h"
#include "Typloom/TyploomCore/TLVariationCache.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

/// A line from the origin to a point, with the point's x as advance.
TLOutline line(double x, double y)
{
    TLOutline outline;
    outline.advance = x;
    outline.contours = { { { { 0, 0, TLPointType::move }, { x, y, TLPointType::line } } } };
    return outline;
}

TLPoint tip(TLInterpolatedOutline const& instance)
{
    return instance.outline.contours.at(0).points.at(1);
}

/// Weight 100, 400 (default), 900 with masters at all three.
struct TLInterpolationTest : testing::Test {
    TLInterpolationTest()
    {
        builder.addAxis("w", "Weight", { 100, 400, 900 });
        builder.addMaster("light", { { "w", 100 } });
        builder.addMaster("regular", { { "w", 400 } });
        builder.addMaster("bold", { { "w", 900 } });
    }

    std::shared_ptr<TLGlyph> addLines(
        std::string name, double light = 50, double regular = 100, double bold = 300)
    {
        return builder.addGlyph(std::move(name), [=](TLFontMaster const& master) {
            return line(master.id() == "light" ? light : master.id() == "bold" ? bold : regular, 700);
        });
    }

    static double tipX(TLGlyph const& glyph, TLLocation const& location)
    {
        auto const instance = TLInterpolateGlyph(glyph, location);
        EXPECT_EQ(instance.problem, std::nullopt);
        EXPECT_EQ(instance.outline.advance, tip(instance).x);
        return tip(instance).x;
    }

    FontBuilder builder;
};

constexpr double tolerance = 1e-6;

} // namespace

TEST_F(TLInterpolationTest, runsThroughTheMastersAndStopsAtTheEndsOfTheAxis)
{
    auto const glyph = addLines("n", 0.1, 100.1 + 0.2, 300);
    EXPECT_EQ(tipX(*glyph, { { "w", 100.0 } }), 0.1);
    EXPECT_EQ(tipX(*glyph, { { "w", 400.0 } }), 100.1 + 0.2);
    EXPECT_EQ(tipX(*glyph, {}), 100.1 + 0.2);
    EXPECT_EQ(tipX(*glyph, { { "w", std::string("900") } }), 100.1 + 0.2); // Text is no place.
    EXPECT_NEAR(tipX(*glyph, { { "w", 650.0 } }), (100.3 + 300) / 2, tolerance);
    EXPECT_NEAR(tipX(*glyph, { { "w", 175.0 } }), 0.1 * 0.75 + 100.3 * 0.25, tolerance);
    EXPECT_EQ(tipX(*glyph, { { "w", 2000.0 } }), 300);
}

TEST_F(TLInterpolationTest, usesTheIntermediateLayersThatTheGlyphHas)
{
    builder.addAxis("x", "Width", { 0, 0, 200 });
    auto const glyph = addLines("n");
    auto const plain = addLines("o");
    FontBuilder::addBraceLayer(glyph, "n-650", "bold", { { "w", 650 } }, line(400, 700));
    FontBuilder::addBraceLayer(glyph, "n-wide", "regular", { { "x", 100 } }, line(500, 700));
    EXPECT_EQ(tipX(*glyph, { { "w", 650.0 } }), 400);
    EXPECT_NEAR(tipX(*glyph, { { "w", 525.0 } }), 250, tolerance);
    // The layer adds 400 at half the width, and half of that at a quarter and at three quarters.
    EXPECT_NEAR(tipX(*glyph, { { "w", 525.0 }, { "x", 50.0 } }), 250 + 200, tolerance);
    EXPECT_NEAR(tipX(*glyph, { { "x", 150.0 } }), 100 + 200, tolerance);
    EXPECT_EQ(tipX(*plain, { { "w", 650.0 }, { "x", 100.0 } }), 200);
}

TEST_F(TLInterpolationTest, ignoresThePreviewAndLayersThatStandNowhere)
{
    auto const glyph = addLines("n");
    FontBuilder::addOtherLayer(glyph, "sketch", "regular");
    FontBuilder::addBraceLayer(glyph, "broken", "regular", { { "w", 500 } })->data()->problem
        = "it is cut off";
    glyph->setPreviewLocation("regular", TLLocation { { "w", 650.0 } });
    EXPECT_EQ(tipX(*glyph, { { "w", 650.0 } }), 200);
    EXPECT_EQ(tipX(*glyph, { { "w", 500.0 } }), 140);
}

TEST_F(TLInterpolationTest, glyphAxesReachAsFarAsTheirLayers)
{
    auto const glyph = addLines("n");
    FontBuilder::addGlyphAxis(glyph, "f", "flare", { 0, 10, 0 }); // Its bounds were never set.
    FontBuilder::addBraceLayer(glyph, "n-flare", "regular", { { "f", 50 } }, line(200, 700));
    FontBuilder::addBraceLayer(glyph, "n-pinch", "regular", { { "f", -30 } }, line(80, 700));
    EXPECT_EQ(tipX(*glyph, { { "f", 30.0 } }), 150);
    EXPECT_EQ(tipX(*glyph, { { "f", -10.0 } }), 90);
    EXPECT_EQ(tipX(*glyph, { { "f", 80.0 } }), 200);
    EXPECT_NEAR(tipX(*glyph, { { "f", 30.0 }, { "w", 650.0 } }), 250, tolerance);
}

TEST_F(TLInterpolationTest, aGlyphAxisHidesTheFontAxisOfItsName)
{
    auto const glyph = builder.addEmptyGlyph("R.alt");
    FontBuilder::addGlyphAxis(glyph, "own", "Weight", { 0, 0, 100 });
    FontBuilder::addMasterLayer(glyph, "regular", line(100, 700));
    FontBuilder::addBraceLayer(glyph, "R.alt-leg", "regular", { { "own", 100 } }, line(300, 700));
    EXPECT_EQ(tipX(*glyph, { { "w", 900.0 } }), 100);
    EXPECT_EQ(tipX(*glyph, { { "w", 900.0 }, { "own", 50.0 } }), 200);
    // With two masters, both stand at the default of that one axis.
    FontBuilder::addMasterLayer(glyph, "bold", line(300, 700));
    EXPECT_THAT(TLInterpolateGlyph(*glyph, { { "own", 50.0 } }).problem.value_or(""),
        AllOf(HasSubstr("'R.alt'"), HasSubstr("'regular' and 'bold' stand at one place")));
}

TEST_F(TLInterpolationTest, outlinesThatDoNotFitGiveTheNearestSourceAndWhy)
{
    auto const glyph = addLines("n");
    auto other = line(300, 700);
    other.contours[0].points.push_back({ 5, 5, TLPointType::line });
    glyph->layerForId("bold")->setOutline(other);
    auto const instance = TLInterpolateGlyph(*glyph, { { "w", 700.0 } });
    EXPECT_EQ(instance.outline, other);
    EXPECT_EQ(instance.problem,
        "Cannot interpolate glyph 'n': the outlines of 'regular' and 'bold' do not fit together, contour 1 "
        "has 2 and 3 "
        "points; the nearest source, 'bold', is shown");
    EXPECT_EQ(TLInterpolateGlyph(*glyph, { { "w", 900.0 } }).problem, std::nullopt);
    EXPECT_EQ(tipX(*glyph, { { "w", 250.0 } }), 75); // The bold has no share in this.
}

TEST_F(TLInterpolationTest, whatFitsTogetherIsContoursPointTypesAndBases)
{
    struct Case {
        char const* reason;
        std::function<void(TLOutline&)> change;
    };
    for (auto const& [reason, change] : {
             Case { "", [](TLOutline& outline) { outline.contours[0].points[1].smooth = true; } },
             Case { "", [](TLOutline& outline) { outline.contours[0].points[1].name = "tip"; } },
             Case { "differs in the type of point 2",
                 [](TLOutline& outline) { outline.contours[0].points[1].type = TLPointType::curve; } },
             Case { "1 and 2 contours", [](TLOutline& outline) { outline.contours.push_back({}); } },
             Case {
                 "component 1 is 'a' and 'b'", [](TLOutline& outline) { outline.components[0].base = "b"; } },
             Case { "1 and 0 components", [](TLOutline& outline) { outline.components.clear(); } },
         }) {
        auto const glyph = builder.addEmptyGlyph("n");
        auto outline = line(100, 700);
        outline.components = { { "a" } };
        FontBuilder::addMasterLayer(glyph, "regular", outline);
        change(outline);
        FontBuilder::addMasterLayer(glyph, "bold", outline);
        auto const problem = TLInterpolateGlyph(*glyph, { { "w", 500.0 } }).problem;
        EXPECT_THAT(problem.value_or(""), HasSubstr(reason));
        EXPECT_EQ(problem.has_value(), *reason != '\0') << reason;
    }
}

TEST_F(TLInterpolationTest, interpolatesEveryNumberOfAnOutline)
{
    auto const glyph = builder.addEmptyGlyph("aacute");
    TLOutline outline;
    outline.height = 1000;
    outline.components = { { "a", { 1, 0, 0, 1, 0, 0 } }, { "acute", { 1, 0.5, -0.5, 1, 10, 20 } } };
    outline.anchors = { { "top", 100, 700 } };
    FontBuilder::addMasterLayer(glyph, "regular", outline);
    outline.height = 1200;
    outline.components[1].transform = { 2, 1.5, 0.5, 3, 30, 60 };
    outline.anchors = { { "top", 200, 800 } };
    auto const bold = FontBuilder::addMasterLayer(glyph, "bold", outline);

    auto instance = TLInterpolateGlyph(*glyph, { { "w", 650.0 } }).outline;
    EXPECT_EQ(instance.height, 1100);
    EXPECT_EQ(instance.components[1].transform, (std::array<double, 6> { 1.5, 1, 0, 2, 20, 40 }));
    EXPECT_EQ(instance.anchors, (std::vector<TLAnchor> { { "top", 150, 750 } }));

    outline.anchors = { { "bottom", 200, 800 } };
    bold->setOutline(outline);
    instance = TLInterpolateGlyph(*glyph, { { "w", 650.0 } }).outline;
    EXPECT_THAT(instance.anchors, IsEmpty());
    EXPECT_EQ(instance.components[1].transform, (std::array<double, 6> { 1.5, 1, 0, 2, 20, 40 }));
}

TEST_F(TLInterpolationTest, aGlyphWithoutSourceAtTheDefaultShowsTheNearest)
{
    auto const glyph = builder.addEmptyGlyph("n");
    EXPECT_THAT(TLInterpolateGlyph(*glyph, {}).problem.value_or(""), HasSubstr("'n'"));
    FontBuilder::addMasterLayer(glyph, "light", line(50, 700));
    FontBuilder::addMasterLayer(glyph, "bold", line(300, 700));
    auto const instance = TLInterpolateGlyph(*glyph, { { "w", 600.0 } });
    EXPECT_EQ(tip(instance).x, 300);
    EXPECT_THAT(instance.problem.value_or(""),
        AllOf(HasSubstr("'n'"), HasSubstr("no source at the default"), HasSubstr("'bold'")));
    EXPECT_EQ(tipX(*glyph, { { "w", 100.0 } }), 50); // At a source all is well.
}

TEST_F(TLInterpolationTest, aDiscreteAxisNamesTheValueThatHasNoSources)
{
    auto const italic = builder.addAxis("i", "Italic", { 0, 0, 1 });
    italic->setDiscreteValues({ 0, 1 });
    auto const glyph = addLines("n");
    EXPECT_EQ(tipX(*glyph, { { "w", 650.0 } }), 200);
    auto const instance = TLInterpolateGlyph(*glyph, { { "w", 650.0 }, { "i", 1.0 } });
    EXPECT_EQ(tip(instance).x, 200);
    EXPECT_THAT(instance.problem.value_or(""), AllOf(HasSubstr("'n'"), HasSubstr("'Italic' is 1")));
}

TEST_F(TLInterpolationTest, followsEveryChangeOfTheDocument)
{
    auto const glyph = addLines("n");
    TLLocation const location { { "w", 650.0 } };
    EXPECT_EQ(tipX(*glyph, location), 200);
    glyph->layerForId("bold")->setOutline(line(500, 700));
    EXPECT_EQ(tipX(*glyph, location), 300);
    builder.font()->fontMasterForId("bold")->setAxisInternalValue(650, "w");
    EXPECT_EQ(tipX(*glyph, location), 500);
    auto const brace = FontBuilder::addBraceLayer(glyph, "n-500", "regular", { { "w", 500 } }, line(0, 700));
    EXPECT_EQ(tipX(*glyph, { { "w", 500.0 } }), 0);
    brace->setCoordinates({ { "w", 550.0 } });
    EXPECT_EQ(tipX(*glyph, { { "w", 550.0 } }), 0);
    glyph->removeLayer("n-500");
    EXPECT_NEAR(tipX(*glyph, { { "w", 525.0 } }), 300, tolerance);
    builder.font()->axisForId("w")->setBounds(100, 650);
    EXPECT_EQ(tipX(*glyph, { { "w", 700.0 } }), 500);
}

TEST_F(TLInterpolationTest, glyphsOfTheSamePlacesShareOneModelThatOutlivesChanges)
{
    auto const n = addLines("n");
    auto const o = addLines("o");
    auto const sparse = addLines("s");
    FontBuilder::addBraceLayer(sparse, "s-650", "bold", { { "w", 650 } }, line(1, 700));
    auto const before = TLInterpolationCountersNow();
    for (double weight = 100; weight < 900; weight += 7) {
        for (auto const& glyph : { n, o, sparse }) {
            TLInterpolateGlyph(*glyph, { { "w", weight } });
        }
    }
    n->layerForId("bold")->setOutline(line(500, 700));
    TLInterpolateGlyph(*n, { { "w", 650.0 } });
    auto const after = TLInterpolationCountersNow();
    EXPECT_EQ(after.modelsBuilt - before.modelsBuilt, 2u);
    EXPECT_EQ(after.glyphsInterpolated - before.glyphsInterpolated, 3u * 115 + 1);
}

TEST_F(TLInterpolationTest, nothingIsKeptOfGlyphsThatAreGone)
{
    for (int round = 0; round < 3; ++round) {
        for (auto const* name : { "n", "o" }) {
            TLInterpolateGlyph(*addLines(name), { { "w", 650.0 } });
        }
    }
    EXPECT_EQ(builder.font()->variationCache().countOfGlyphs(), 2u);
}

TEST_F(TLInterpolationTest, aGlyphOfNoFontInterpolatesOnItsOwnAxes)
{
    auto const glyph = std::make_shared<TLGlyph>("n");
    FontBuilder::addGlyphAxis(glyph, "f", "flare", { 0, 0, 10 });
    FontBuilder::addBraceLayer(glyph, "a", {}, {}, line(100, 700));
    FontBuilder::addBraceLayer(glyph, "b", {}, { { "f", 10 } }, line(200, 700));
    EXPECT_EQ(tipX(*glyph, { { "f", 5.0 } }), 150);
}
