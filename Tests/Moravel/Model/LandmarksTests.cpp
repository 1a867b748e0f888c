#include "Moravel/Model/Landmarks.h"

#include "Tests/Support/FontBuilder.h"

#include <gtest/gtest.h>

using Values = std::vector<double>;

TEST(Landmarks, ofAFontAxisAreItsMastersValuesOnceAndAscending)
{
    FontBuilder builder;
    builder.addMaster("bold", { { "wght", 400 } });
    builder.addMaster("thin", { { "wght", 100 } });
    builder.addMaster("condensed bold", { { "wght", 400 } });
    auto const font = builder.font();
    TLAxis const weight("wght", "Weight");
    EXPECT_EQ(font->masterValuesOnAxis(weight), (Values { 100, 400 }));
    EXPECT_EQ(font->masterValuesOnAxis({ "wdth", "Width" }), (Values { 0 }));
    EXPECT_EQ(TLFont().masterValuesOnAxis(weight), Values {});

    // What was worked out before does not outlive a change.
    font->fontMasterForId("thin")->setAxisInternalValue(50, "wght");
    EXPECT_EQ(font->masterValuesOnAxis(weight), (Values { 50, 400 }));
    auto const before = font->state();
    font->removeMaster(1);
    EXPECT_EQ(font->masterValuesOnAxis(weight), (Values { 400 }));
    font->restore(before);
    EXPECT_EQ(font->masterValuesOnAxis(weight), (Values { 50, 400 }));
}

TEST(Landmarks, ofGlyphAxesComeFromIntermediateLayersThatHaveAPlaceThere)
{
    FontBuilder builder;
    builder.addMaster("regular", {});
    auto const glyph = builder.addEmptyGlyph("A");
    FontBuilder::addGlyphAxis(glyph, "crossbar", "Crossbar");
    FontBuilder::addGlyphAxis(glyph, "serif", "Serif");
    FontBuilder::addGlyphAxis(glyph, "unused", "Unused");
    FontBuilder::addMasterLayer(glyph, "regular", {}, { { "crossbar", 7 } });
    FontBuilder::addBraceLayer(glyph, "1", "regular", { { "crossbar", 100 }, { "serif", -5 } });
    FontBuilder::addBraceLayer(glyph, "2", std::nullopt, { { "crossbar", 100 } });
    FontBuilder::addBraceLayer(glyph, "3", "regular", { { "crossbar", 20 } });
    FontBuilder::addOtherLayer(glyph, "sketch", "regular");
    auto const landmarks = [&] {
        std::vector<Values> all;
        for (auto const& axis : glyph->axes()) {
            all.push_back(glyphAxisLandmarks(*glyph, *axis));
        }
        return all;
    };
    EXPECT_EQ(landmarks(), (std::vector<Values> { { 20, 100 }, { -5 }, {} }));

    auto const before = glyph->state();
    glyph->layerForId("2")->setCoordinates({ { "serif", 3 } });
    glyph->layerForId("3")->setCoordinates({ { "crossbar", 30 } });
    EXPECT_EQ(landmarks(), (std::vector<Values> { { 30, 100 }, { -5, 3 }, {} }));
    glyph->removeLayer("1");
    EXPECT_EQ(landmarks(), (std::vector<Values> { { 30 }, { 3 }, {} }));
    glyph->restore(before);
    EXPECT_EQ(landmarks(), (std::vector<Values> { { 20, 100 }, { -5 }, {} }));
    // On an axis that is the font's too, a layer that says nothing stands at its default.
    builder.addAxis("serif", "Serif", { 0, 1, 10 });
    EXPECT_EQ(landmarks(), (std::vector<Values> { { 20, 100 }, { -5, 1 }, {} }));
}

TEST(StepPositions, areTheLandmarksAndTheDefaultOnceAndAscending)
{
    EXPECT_EQ(stepPositions({ 100, 900 }, 400), (Values { 100, 400, 900 }));
    EXPECT_EQ(stepPositions({ 100, 400 }, 400), (Values { 100, 400 }));
    EXPECT_EQ(stepPositions({}, 400), (Values { 400 }));
}

struct Step {
    Values positions;
    double from;
    std::optional<double> up;
    std::optional<double> down;
};

TEST(StepPositions, leadToTheNextOneFurtherThanTheToleranceAndWrapAround)
{
    Values const three { 100, 400, 900 };
    for (auto const& step : {
             Step { three, 400, 900, 100 },
             Step { three, 399.9995, 900, 100 },
             Step { three, 400.0005, 900, 100 },
             Step { three, 399.998, 400, 100 },
             Step { three, 400.002, 900, 400 },
             Step { three, 900, 100, 400 },
             Step { three, 100, 400, 900 },
             Step { three, 1000, 100, 900 },
             Step { three, 0, 100, 900 },
             Step { { 0, 100 }, 0, 100, 100 },
             Step { { 400 }, 100, {}, {} },
             Step { {}, 100, {}, {} },
         }) {
        EXPECT_EQ(nextStepPosition(step.positions, step.from, true), step.up) << "up from " << step.from;
        EXPECT_EQ(nextStepPosition(step.positions, step.from, false), step.down) << "down from " << step.from;
    }
}
