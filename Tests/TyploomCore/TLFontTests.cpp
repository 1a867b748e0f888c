#include "Tests/Support/FontBuilder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

namespace {

/// Gives glyphs of the names "A" and "B"; "broken" can't be read.
class CountingSource final : public TLGlyphSource {
public:
    std::vector<std::string> loads;

    std::vector<std::string> glyphNames() const override { return { "B", "broken", "A" }; }
    std::shared_ptr<TLGlyph> loadGlyph(
        std::shared_ptr<TLFont> const& font, std::string_view name, std::vector<std::string>& report) override
    {
        loads.emplace_back(name);
        if (name != "A" && name != "B") {
            report.push_back("Cannot read it.");
            return nullptr;
        }
        auto const glyph = std::make_shared<TLGlyph>(std::string(name));
        glyph->setFont(font);
        return glyph;
    }
    std::optional<std::string> glyphNameForCharacter(char32_t character) override
    {
        return character == U'a' ? std::optional<std::string>("A") : std::nullopt;
    }
};

} // namespace

TEST(TLAxis, newAxesHaveDistinctIdentifiersAndZeroes)
{
    std::set<std::string> identifiers;
    for (int index = 0; index < 1000; ++index) {
        identifiers.insert(TLAxis().axisId());
    }
    EXPECT_EQ(identifiers.size(), 1000U);

    TLAxis const axis;
    EXPECT_EQ(axis.name(), "");
    EXPECT_EQ(axis.axisTag(), std::nullopt);
    EXPECT_EQ(axis.defaultValue(), 0);
}

TEST(TLAxis, takesNoNumberThatIsNotFiniteAndNoNegativeZero)
{
    TLAxis axis("w", "Weight");
    axis.setDefaultValue(5);
    axis.setBounds(1, 9);
    for (double const bad : { std::nan(""), HUGE_VAL, -HUGE_VAL }) {
        axis.setDefaultValue(bad);
        axis.setBounds(bad, 20);
        axis.setBounds(-20, bad);
    }
    EXPECT_EQ(axis.defaultValue(), 5);
    EXPECT_EQ(axis.minimum(), 1);
    EXPECT_EQ(axis.maximum(), 9);

    axis.setDefaultValue(-0.0);
    EXPECT_FALSE(std::signbit(axis.defaultValue()));
}

TEST(TLFont, theDefaultMasterIsTheFirstThatStandsAtEveryDefault)
{
    FontBuilder builder;
    builder.addAxis("wght", "Weight", { 100, 400, 700 });
    builder.addAxis("wdth", "Width", { 50, 100, 200 });
    auto const font = builder.font();
    EXPECT_EQ(font->defaultFontMaster(nullptr), nullptr);

    builder.addMaster("wide", { { "wght", 400 }, { "wdth", 200 } });
    EXPECT_EQ(font->defaultFontMaster(nullptr), nullptr);

    auto const first = builder.addMaster("first", { { "wght", 400 }, { "wdth", 100 } });
    builder.addMaster("second", { { "wght", 400 }, { "wdth", 100 } });
    EXPECT_EQ(font->defaultFontMaster(nullptr), first);
}

TEST(TLFont, findsMastersAndAxesByIdentifierAndIndex)
{
    FontBuilder builder;
    auto const font = builder.font();
    auto const bold = builder.addMaster("bold", {});
    auto const light = std::make_shared<TLFontMaster>("light", "Light");
    font->insertMaster(light, 0);
    auto const weight = builder.addAxis("wght", "Weight");

    EXPECT_EQ(font->fontMasterAtIndex(1), bold);
    EXPECT_EQ(font->fontMasterAtIndex(2), nullptr);
    EXPECT_EQ(font->fontMasterForId("light"), light);
    EXPECT_EQ(font->indexOfObjectInAllMasters(bold), 1U);
    EXPECT_EQ(font->axisForId("wght"), weight);

    font->removeMaster(0);
    font->removeMaster(7);
    font->removeAxis(0);
    EXPECT_EQ(font->indexOfObjectInAllMasters(bold), 0U);
    EXPECT_EQ(font->indexOfObjectInAllMasters(light), NSNotFound);
    EXPECT_EQ(font->indexOfObjectInAllMasters(nullptr), NSNotFound);
    EXPECT_EQ(font->indexOfObjectInAllMasters(std::make_shared<TLFontMaster>("bold", "")), NSNotFound)
        << "a master is found by identity";
    EXPECT_EQ(font->fontMasterForId("light"), nullptr);
    EXPECT_EQ(font->axisForId("wght"), nullptr);
}

TEST(TLFont, readsAGlyphWhenItIsFirstNeededAndOnlyOnce)
{
    auto const font = std::make_shared<TLFont>();
    auto const source = std::make_shared<CountingSource>();
    font->setGlyphSource(source);

    EXPECT_EQ(font->loadedGlyphForName("A"), nullptr);
    EXPECT_EQ(font->glyphNames(), (std::vector<std::string> { "B", "broken", "A" }));
    EXPECT_TRUE(source->loads.empty());

    auto const glyph = font->glyphForName("A");
    ASSERT_NE(glyph, nullptr);
    EXPECT_EQ(font->glyphForName("A"), glyph);
    EXPECT_EQ(font->loadedGlyphForName("A"), glyph);
    EXPECT_EQ(glyph->font(), font);
    EXPECT_EQ(font->glyphForName("broken"), nullptr);
    EXPECT_EQ(font->glyphForName("broken"), nullptr);

    EXPECT_EQ(source->loads, (std::vector<std::string> { "A", "broken" }));
    EXPECT_EQ(font->report(), (std::vector<std::string> { "Cannot read it." }));
}

TEST(TLFont, insertedGlyphsComeBehindAndBeforeThoseOfTheSource)
{
    FontBuilder builder;
    auto const font = builder.font();
    auto const source = std::make_shared<CountingSource>();
    font->setGlyphSource(source);
    auto const inserted = builder.addGlyph("A");
    builder.addGlyph("new")->setUnicodes({ U'x', U'a' });

    EXPECT_EQ(font->glyphForName("A"), inserted);
    EXPECT_EQ(font->glyphNames(), (std::vector<std::string> { "B", "broken", "A", "new" }));
    EXPECT_EQ(font->glyphNameForCharacter(U'a'), "new");
    EXPECT_EQ(font->glyphNameForCharacter(U'q'), std::nullopt);
}

TEST(TLFont, saysEachThingOnceInItsReport)
{
    TLFont const font;
    font.addToReport("one");
    font.addToReport("two");
    font.addToReport("one");
    EXPECT_EQ(font.report(), (std::vector<std::string> { "one", "two" }));
}
