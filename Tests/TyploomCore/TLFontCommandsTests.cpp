#include "Typloom/TyploomCore/TLFontCommands.h"

#include "Platform/Foundation/NSLocale.h"
#include "Platform/Foundation/NSMainQueue.h"
#include "Tests/Support/FontBuilder.h"
#include "Typloom/TyploomCore/TLDocumentHistory.h"

#include <gtest/gtest.h>

namespace {

TLOutline triangle(double width)
{
    TLOutline outline;
    outline.advance = width;
    outline.contours.push_back({ { { 0, 0 }, { width, 0 }, { 0, 100 } } });
    return outline;
}

/// A family of two masters and the glyphs "a", which a layer at 700 and a flip of its own belong to, and "x",
/// whose outlines don't fit together; "late" is read when it is needed.
class TLFontCommandsTest : public testing::Test {
protected:
    class LateGlyph final : public TLGlyphSource {
    public:
        std::vector<std::string> glyphNames() const override { return { "late", "unreadable" }; }
        std::shared_ptr<TLGlyph> loadGlyph(
            std::shared_ptr<TLFont> const& font, std::string_view name, std::vector<std::string>&) override
        {
            if (name != "late") {
                return nullptr;
            }
            auto const glyph = std::make_shared<TLGlyph>("late");
            glyph->setFont(font);
            FontBuilder::addMasterLayer(glyph, "Regular", triangle(100));
            FontBuilder::addMasterLayer(glyph, "Bold", triangle(200));
            return glyph;
        }
        std::optional<std::string> glyphNameForCharacter(char32_t) override { return std::nullopt; }
    };

    TLFontCommandsTest()
    {
        NSSetCurrentLocale("en_US");
        builder.addAxis("w", "Weight", { 400, 400, 900 }, "wght");
        builder.addMaster("Regular", { { "w", 400 } })->setMetrics({ .ascender = 812 });
        builder.addMaster("Bold", { { "w", 900 } });
        a = builder.addGlyph(
            "a", [](TLFontMaster const& m) { return triangle(m.id() == "Bold" ? 300 : 100); });
        FontBuilder::addGlyphAxis(a, "f", "flip", { 0, 0, 100 });
        FontBuilder::addBraceLayer(a, "a-700", "Regular", { { "w", 700 } }, triangle(150));
        FontBuilder::addBraceLayer(a, "Medium", "Regular", { { "w", 650 }, { "f", 100 } }, triangle(800));
        x = builder.addGlyph(
            "x", [](TLFontMaster const& m) { return m.id() == "Bold" ? TLOutline {} : triangle(100); });
        font->setGlyphSource(std::make_shared<LateGlyph>());
        NSMainQueue::runPending();
        font->history().clear();
    }
    ~TLFontCommandsTest() override { NSSetCurrentLocale(""); }

    static TLOutline outlineOf(TLGlyph const& glyph, std::string const& layerId)
    {
        auto const layer = glyph.layerForId(layerId);
        return layer ? layer->outline() : TLOutline {};
    }

    FontBuilder builder;
    std::shared_ptr<TLFont> font { builder.font() };
    std::shared_ptr<TLGlyph> a, x;
};

} // namespace

TEST_F(TLFontCommandsTest, aNewMasterHasALayerOfEveryGlyphInterpolatedThereAsOneStep)
{
    auto const added = TLAddMaster(font, "Medium", { { "w", 650.0 } });
    ASSERT_TRUE(added.master) << added.problem;
    EXPECT_EQ(added.master->id(), "Medium 2") << "a layer has the identifier already";
    EXPECT_EQ(added.master->name(), "Medium");
    EXPECT_EQ(font->fontMasters().back(), added.master);
    EXPECT_EQ(added.master->axisInternalValueValueForId("w"), 650);
    EXPECT_EQ(added.master->metrics().ascender, 812);
    auto const late = font->loadedGlyphForName("late");
    ASSERT_TRUE(late);
    EXPECT_EQ(outlineOf(*late, "Medium 2"), triangle(150));
    EXPECT_EQ(outlineOf(*a, "Medium 2").advance, 100 + 50 * 250. / 300) << "between its sources there";
    EXPECT_EQ(outlineOf(*x, "Medium 2"), triangle(100)) << "as the nearest source";
    ASSERT_EQ(added.notes.size(), 1u);
    EXPECT_TRUE(added.notes[0].starts_with("The glyph 'x' looks in the new master as in 'Regular': "))
        << added.notes[0];

    EXPECT_EQ(font->history().undoTitle(), "Add Master");
    font->history().undo();
    EXPECT_FALSE(font->history().canUndo());
    EXPECT_EQ(font->fontMasters().size(), 2u);
    EXPECT_FALSE(late->layerForId("Medium 2"));
    EXPECT_FALSE(font->history().isModified());
    font->history().redo();
    EXPECT_EQ(outlineOf(*late, "Medium 2"), triangle(150));
}

TEST_F(TLFontCommandsTest, addingAMasterCanBeStoppedAtEveryStepAndThenChangesNothing)
{
    auto const before = font->state();
    for (std::size_t stop = 1;; ++stop) {
        std::size_t calls = 0;
        auto const added
            = TLAddMaster(font, "Bold", { { "w", 650.0 } }, [&](std::size_t done, std::size_t steps) {
                  EXPECT_LE(done, steps);
                  return ++calls < stop;
              });
        if (added.master) {
            EXPECT_GT(stop, 6u) << "four glyphs are read and three drawn";
            EXPECT_EQ(added.master->name(), "Bold 2") << "the name is another master's";
            break;
        }
        EXPECT_EQ(added.problem, "");
        EXPECT_EQ(font->state(), before);
        EXPECT_FALSE(font->history().isModified());
    }
}

TEST_F(TLFontCommandsTest, aMasterIsNotAddedWhereSomethingStands)
{
    EXPECT_EQ(TLAddMaster(font, "M", { { "w", 900.0 } }).problem,
        "The master 'Bold' stands at this place already.");
    EXPECT_FALSE(font->loadedGlyphForName("late")) << "nothing is read to find that out";
    EXPECT_EQ(TLAddMaster(font, "M", { { "w", 700.0 } }).problem,
        "The intermediate layer 'a-700' of the glyph 'a' stands at this place already.");
    EXPECT_FALSE(TLAddMaster(font, "", { { "w", 500.0 } }).master);
    EXPECT_EQ(TLReasonAgainstMasterName(*font, "Bold"), "There is a master 'Bold' already.");
    EXPECT_EQ(TLReasonAgainstMasterName(*font, "Bold", font->fontMasters()[1].get()), std::nullopt);
    EXPECT_FALSE(font->history().canUndo());
    EXPECT_EQ(font->fontMasters().size(), 2u);
}

TEST_F(TLFontCommandsTest, everythingStandsOnTheDefaultOfANewAxis)
{
    auto const axis = TLAddAxis(font, "Width", "wdth", { 50, 100, 200 });
    ASSERT_TRUE(axis);
    EXPECT_EQ(font->canonicalAxes().back(), axis);
    EXPECT_EQ(axis->axisTag(), "wdth");
    for (auto const& [layerId, layer] : a->layers()) {
        EXPECT_EQ(layer->axisInternalValueValue(axis->axisId()), 100) << layerId;
    }
    EXPECT_EQ(font->history().undoTitle(), "Add Axis");
    font->history().undo();
    EXPECT_FALSE(font->history().canUndo());
    EXPECT_EQ(font->canonicalAxes().size(), 1u);
    EXPECT_NE(TLAddAxis(font, "Width", "wdth", { 50, 100, 200 })->axisId(), axis->axisId());
}

TEST_F(TLFontCommandsTest, aRenamedAxisIsAnotherObjectOfTheSameIdentifier)
{
    auto const axis = font->axisForId("w");
    TLRenameAxis(font, *axis, " ");
    EXPECT_EQ(font->axisForId("w"), axis);
    TLRenameAxis(font, *axis, "Gewicht");
    auto const renamed = font->axisForId("w");
    EXPECT_NE(renamed, axis) << "rows compare the objects";
    EXPECT_EQ(renamed->name(), "Gewicht");
    EXPECT_EQ(renamed->maximum(), 900);
    EXPECT_EQ(font->history().undoTitle(), "Rename Axis");
    font->history().undo();
    EXPECT_FALSE(font->history().canUndo());
    EXPECT_EQ(font->axisForId("w")->name(), "Weight");
}

TEST_F(TLFontCommandsTest, axesThatFilesCouldNotHoldAreRefusedWithAReason)
{
    builder.addAxis("s", "Schr\u00e4ge");
    for (auto const* name : { "", " \n", "Weight", "Schra\u0308ge" }) {
        EXPECT_TRUE(TLReasonAgainstAxisName(*font, name)) << name;
        EXPECT_FALSE(TLAddAxis(font, name, "ABCD", {})) << name;
    }
    EXPECT_FALSE(TLReasonAgainstAxisName(*font, "weight")) << "case matters";
    EXPECT_FALSE(TLReasonAgainstAxisName(*font, "Weight", font->axisForId("w").get()));
    for (auto const* tag : { "", "abc", "abcde", "1abc", "ab c", "\u00e4bc", "wght" }) {
        EXPECT_TRUE(TLReasonAgainstAxisTag(*font, tag)) << tag;
    }
    EXPECT_FALSE(TLReasonAgainstAxisTag(*font, "GR4D"));
    constexpr double infinity = std::numeric_limits<double>::infinity();
    for (auto const& bounds :
        { TLAxisBounds { 5, 5, 5 }, { 9, 5, 1 }, { 0, 11, 10 }, { 0, -1, 10 }, { -infinity, 0, 1 } }) {
        EXPECT_TRUE(TLReasonAgainstAxisBounds(bounds));
        EXPECT_FALSE(TLAddAxis(font, "Grade", "GRAD", bounds));
    }
    EXPECT_EQ(font->canonicalAxes().size(), 2u);
}

TEST_F(TLFontCommandsTest, aMasterStaysOffWhatWouldEndInterpolation)
{
    auto const& weight = *font->axisForId("w");
    auto const& [regular, bold] = std::pair(font->fontMasters()[0], font->fontMasters()[1]);
    EXPECT_EQ(TLReasonAgainstMasterValue(*font, *bold, weight, 901), "Weight goes from 400 to 900.");
    EXPECT_EQ(TLReasonAgainstMasterValue(*font, *bold, weight, 400),
        "The master 'Regular' stands at this place already.");
    EXPECT_EQ(TLReasonAgainstMasterValue(*font, *regular, weight, 500),
        "One master has to stand at the default of every axis.");
    EXPECT_EQ(TLReasonAgainstMasterValue(*font, *bold, weight, 750.5), std::nullopt);
}
