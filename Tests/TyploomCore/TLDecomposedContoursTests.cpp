#include "Tests/Support/FontBuilder.h"
#include "Typloom/TyploomCore/TLInterpolation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

TLOutline dot(double x, double y)
{
    TLOutline outline;
    outline.contours = { { { { x, y, TLPointType::move } } } };
    return outline;
}

TLComponent component(std::string base, std::array<double, 6> transform = { 1, 0, 0, 1, 0, 0 },
    std::map<std::string, double> location = {})
{
    return { std::move(base), transform, location, !location.empty() };
}

TLOutline composite(std::vector<TLComponent> components)
{
    TLOutline outline;
    outline.components = std::move(components);
    return outline;
}

/// Glyphs "1", "2", "3" ..., each of which is made of the next one.
struct EndlessChain final : TLGlyphSource {
    std::vector<std::string> glyphNames() const override { return {}; }
    std::optional<std::string> glyphNameForCharacter(char32_t) override { return std::nullopt; }
    std::shared_ptr<TLGlyph> loadGlyph(
        std::shared_ptr<TLFont> const& font, std::string_view name, std::vector<std::string>&) override
    {
        auto const glyph = std::make_shared<TLGlyph>(std::string(name));
        glyph->setFont(font);
        auto const next = std::to_string(std::stoi(std::string(name)) + 1);
        FontBuilder::addMasterLayer(glyph, "regular", composite({ component(next) }));
        return glyph;
    }
};

/// Weight 0 to 100 with masters at both ends.
struct TLDecomposedContoursTest : testing::Test {
    TLDecomposedContoursTest()
    {
        builder.addAxis("w", "Weight", { 0, 0, 100 });
        builder.addMaster("regular", { { "w", 0 } });
        builder.addMaster("bold", { { "w", 100 } });
    }

    std::shared_ptr<TLGlyph> add(std::string name, TLOutline const& regular, TLOutline const& bold)
    {
        return builder.addGlyph(std::move(name),
            [&](TLFontMaster const& master) { return master.id() == "bold" ? bold : regular; });
    }

    /// A dot at (0, 0) that its own axis, "flare", moves to (0, 10).
    std::shared_ptr<TLGlyph> addFlaring(std::string name, std::string axisName = "flare")
    {
        auto const glyph = add(name, dot(0, 0), dot(0, 0));
        FontBuilder::addGlyphAxis(glyph, name + ".flare", std::move(axisName), { 0, 0, 100 });
        FontBuilder::addBraceLayer(
            glyph, name + "-flare", "regular", { { name + ".flare", 100 } }, dot(0, 10));
        return glyph;
    }

    /// The first point of each contour that a glyph draws with its components.
    std::vector<std::pair<double, double>> dots(std::string const& name, TLLocation const& location = {})
    {
        problems.clear();
        auto const outline = TLInterpolateGlyph(*builder.font()->glyphForName(name), location).outline;
        std::vector<std::pair<double, double>> result;
        for (auto const& contour : TLDecomposedContours(*builder.font(), name, outline, location, problems)) {
            result.emplace_back(contour.points.at(0).x, contour.points.at(0).y);
        }
        return result;
    }

    FontBuilder builder;
    std::vector<std::string> problems;
};

using Dot = std::pair<double, double>;

} // namespace

TEST_F(TLDecomposedContoursTest, nestedTransformsApplyFromTheInside)
{
    add("dot", dot(1, 2), dot(3, 2));
    auto const turned
        = composite({ component("dot", { 0, 1, -1, 0, 10, 0 }) }); // By 90 degrees, then 10 to the right.
    add("turned", turned, turned);
    auto outline = composite({ component("turned", { 2, 0, 0, 3, 100, 200 }), component("dot") });
    outline.contours = dot(7, 8).contours;
    add("both", outline, outline);
    EXPECT_THAT(dots("both"), ElementsAre(Dot(7, 8), Dot(2 * 8 + 100, 3 * 1 + 200), Dot(1, 2)));
    EXPECT_THAT(dots("both", { { "w", 50.0 } }), ElementsAre(Dot(7, 8), Dot(116, 3 * 2 + 200), Dot(2, 2)));
    EXPECT_THAT(problems, IsEmpty());
}

TEST_F(TLDecomposedContoursTest, whatIsMissingOrContainsItselfIsLeftOutAndNamed)
{
    add("dot", dot(1, 2), dot(1, 2));
    auto const a = composite({ component("b"), component("gone"), component("dot"), component("gone") });
    auto const b = composite({ component("dot"), component("a"), component("b") });
    add("a", a, a);
    add("b", b, b);
    EXPECT_THAT(dots("a"), ElementsAre(Dot(1, 2), Dot(1, 2)));
    EXPECT_THAT(problems,
        ElementsAre("Glyph 'b' contains itself through component 'a'",
            "Glyph 'b' contains itself through component 'b'",
            "Glyph 'a' has a component 'gone', which the font does not have"));
}

TEST_F(TLDecomposedContoursTest, aBaseThatCannotBeInterpolatedIsDrawnAsItsNearestSource)
{
    auto twoDots = dot(5, 5);
    twoDots.contours.push_back(twoDots.contours[0]);
    add("dot", dot(1, 2), twoDots);
    add("a", composite({ component("dot") }), composite({ component("dot") }));
    EXPECT_THAT(dots("a", { { "w", 40.0 } }), ElementsAre(Dot(1, 2)));
    EXPECT_THAT(problems, ElementsAre(HasSubstr("Cannot interpolate glyph 'dot'")));
}

TEST_F(TLDecomposedContoursTest, aChainWithoutEndIsCutOff)
{
    builder.font()->setGlyphSource(std::make_shared<EndlessChain>());
    EXPECT_THAT(dots("1"), IsEmpty());
    EXPECT_THAT(problems, ElementsAre(HasSubstr("too deep")));
}

TEST_F(TLDecomposedContoursTest, aTreeThatDoublesAtEachLevelIsCutOff)
{
    add("level0", dot(0, 0), dot(0, 0));
    for (int i = 1; i <= 60; ++i) {
        auto const base = "level" + std::to_string(i - 1);
        auto const twice = composite({ component(base), component(base) });
        add("level" + std::to_string(i), twice, twice);
    }
    EXPECT_LT(dots("level60").size(), 20'000u);
    EXPECT_THAT(problems, testing::Contains(HasSubstr("too many components")));
}

TEST_F(TLDecomposedContoursTest, aVariableComponentSetsAxesOfItsBaseByName)
{
    addFlaring("arm");
    addFlaring("heavy", "Weight")->removeLayer("bold"); // Its own axis hides the font's.
    add("dot", dot(0, 0), dot(100, 0));
    auto const outline = composite({ component("arm", { 1, 0, 0, 1, 1, 0 }, { { "flare", 50 } }),
        component("arm"), component("heavy", { 1, 0, 0, 1, 2, 0 }, { { "Weight", 30 } }),
        component("dot", { 1, 0, 0, 1, 0, 0 }, { { "Weight", 80 } }) });
    add("a", outline, outline);
    EXPECT_THAT(dots("a", { { "w", 20.0 } }), ElementsAre(Dot(1, 5), Dot(0, 0), Dot(2, 3), Dot(80, 0)));
}

TEST_F(TLDecomposedContoursTest, valuesArePassedDownTheTreeAndCanBeOverridden)
{
    addFlaring("arm");
    auto const cross
        = composite({ component("arm"), component("arm", { 1, 0, 0, 1, 1, 0 }, { { "flare", 100 } }) });
    add("cross", cross, cross); // Has no such axis itself.
    auto const outline
        = composite({ component("cross", { 1, 0, 0, 1, 0, 0 }, { { "flare", 40 } }), component("arm") });
    auto const top = add("top", outline, outline);
    EXPECT_THAT(dots("top"), ElementsAre(Dot(0, 4), Dot(1, 10), Dot(0, 0)));
    FontBuilder::addGlyphAxis(top, "own", "flare", { 0, 0, 100 });
    EXPECT_THAT(dots("top", { { "own", 70.0 } }), ElementsAre(Dot(0, 4), Dot(1, 10), Dot(0, 7)));
}

TEST_F(TLDecomposedContoursTest, theLocationOfAComponentIsInterpolatedToo)
{
    addFlaring("arm");
    add("dot", dot(0, 0), dot(100, 0));
    // One that does not name an axis stands at the default of the base's own, or where its source stands.
    add("a", composite({ component("arm"), component("dot", { 1, 0, 0, 1, 0, 0 }, { { "Weight", 60 } }) }),
        composite({ component("arm", { 1, 0, 0, 1, 0, 0 }, { { "flare", 80 } }), component("dot") }));
    EXPECT_THAT(dots("a", { { "w", 50.0 } }), ElementsAre(Dot(0, 4), Dot(80, 0)));
    EXPECT_THAT(dots("a", { { "w", 100.0 } }), ElementsAre(Dot(0, 8), Dot(100, 0)));
}
