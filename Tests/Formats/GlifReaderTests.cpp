#include "Typloom/Formats/GlifReader.h"

#include "Tests/Support/FamilyWriter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

std::string glyph(std::string const& content, std::string const& format = "2")
{
    return "<glyph name=\"A\" format=\"" + format + "\">\n" + content + "\n</glyph>";
}

std::string outline(std::string const& content)
{
    return glyph("<outline>" + content + "</outline>");
}

std::string keyed(std::string const& key, std::string const& value)
{
    return glyph("<lib><dict><key>other</key><array/><key>" + key + "</key>" + value + "</dict></lib>");
}

} // namespace

TEST(GlifReader, keepsPointsInFileOrder)
{
    auto const glif = readGlif(glyph(R"(<note>x</note><outline>
        <contour><point x="1" y="2" name="first"/><point x="3" y="4.5"/><point x="-5" y="6" type="curve" smooth="yes"/></contour>
        <contour><point x="1" y="1" type="move"/><point x="2" y="2" type="line"/></contour>
        <contour><point x="7" y="7"/><point x="8" y="8" type="offcurve"/></contour>
        <contour/>
        <contour><point x="9" y="9"/><point x="0" y="0" type="qcurve"/></contour>
        </outline><advance width="500.25" height="10"/><anchor x="3" y="4" name="top"/>)"),
        "A.glif");
    ASSERT_TRUE(glif) << glif.error().sentence();
    using Type = TLPointType;
    TLOutline const expected { .advance = 500.25,
        .height = 10,
        .contours = { { { { 1, 2, Type::offcurve, false, "first" }, { 3, 4.5, Type::offcurve, false, "" },
                          { -5, 6, Type::curve, true, "" } } },
            { { { 1, 1, Type::move, false, "" }, { 2, 2, Type::line, false, "" } } },
            { { { 7, 7, Type::offcurve, false, "" }, { 8, 8, Type::offcurve, false, "" } } },
            { { { 9, 9, Type::offcurve, false, "" }, { 0, 0, Type::qcurve, false, "" } } } },
        .components = {},
        .anchors = { { "top", 3, 4 } } };
    EXPECT_EQ(glif->outline, expected);
}

TEST(GlifReader, readsComponentsAndVariableOnesBehindThem)
{
    auto const library
        = "<key>com.black-foundry.variable-components</key><array><dict><key>base</key><string>C</string>"
          "<key>location</key><dict><key>weight</key><real>70.5</real></dict>"
          "<key>transformation</key><dict><key>translateX</key><integer>9</integer></dict></dict></array>";
    auto const glif = readGlif(
        FamilyWriter::glif("A", R"(<component base="B" xScale="-1" xOffset="5"/>)", 1, library), "A.glif");
    ASSERT_TRUE(glif) << glif.error().sentence();
    std::vector<TLComponent> const expected { { "B", { -1, 0, 0, 1, 5, 0 }, {}, false },
        { "C", { 1, 0, 0, 1, 9, 0 }, { { "weight", 70.5 } }, true } };
    EXPECT_EQ(glif->outline.components, expected);
}

TEST(GlifReader, inFormatOneALoneNamedPointIsAnAnchor)
{
    auto const content
        = R"(<outline><contour><point x="1" y="2" type="move" name="top"/></contour></outline>)";
    auto const first = readGlif(glyph(content, "1"), "A.glif");
    auto const second = readGlif(glyph(content, "2"), "A.glif");
    ASSERT_TRUE(first && second);
    EXPECT_EQ(first->outline.anchors, (std::vector<TLAnchor> { { "top", 1, 2 } }));
    EXPECT_TRUE(first->outline.contours.empty());
    EXPECT_EQ(second->outline.contours.size(), 1U);
}

TEST(GlifReader, whatIsBrokenIsAnErrorThatNamesIt)
{
    std::pair<std::string, char const*> const cases[] {
        { "<plist/>", "'plist'" },
        { outline(R"(<contour><point x="1"/></contour>)"), "no y" },
        { outline(R"(<contour><point x="" y="1"/></contour>)"), "''" },
        { outline(R"(<contour><point x="1" y="1" type="arc"/></contour>)"), "'arc'" },
        { outline(R"(<contour><point x="1" y="1" type="line"/><point x="1" y="1" type="move"/></contour>)"),
            "'move'" },
        { outline(R"(<component xOffset="1"/>)"), "names no glyph" },
        { outline(R"(<component base="B" xScale="inf"/>)"), "'inf'" },
        { glyph(R"(<advance width="1,5"/>)"), "'1,5'" },
        { keyed("com.black-foundry.variable-components", "<dict/>"), "no list" },
        { keyed("com.black-foundry.variable-components",
              "<array><dict><key>base</key><string>B</string><key>transformation</key><dict><key>scaleX</key>"
              "<real>nan</real></dict></dict></array>"),
            "'scaleX'" },
        { keyed("com.black-foundry.glyph-designspace", "<dict><key>axes</key></dict>"), "key and value" },
    };
    for (auto const& [text, mention] : cases) {
        auto const glif = readGlif(text, "A.glif");
        ASSERT_FALSE(glif) << text;
        EXPECT_THAT(glif.error().sentence(), testing::HasSubstr(mention));
        EXPECT_GT(glif.error().line, 0U);
    }
}

TEST(GlifReader, charactersAreFoundWithAndWithoutParsing)
{
    auto const text = glyph("<!-- <unicode hex=\"0058\"/> --><unicode hex=\"0041\"/>\n<unicode  hex='391' "
                            "/><unicode hex=\"zz\"/>");
    auto const glif = readGlif(text, "A.glif");
    ASSERT_TRUE(glif);
    EXPECT_EQ(glif->unicodes, (std::vector<char32_t> { 0x41, 0x391 }));
    EXPECT_EQ(findUnicodes(text), glif->unicodes);
    EXPECT_TRUE(findUnicodes("<unicode hex=\"004").empty());
}
