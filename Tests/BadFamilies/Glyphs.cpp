#include "Tests/BadFamilies/BadFamily.h"

#include <sys/stat.h>

namespace {

std::function<void(FamilyWriter&)> content(std::string text)
{
    return [text = std::move(text)](FamilyWriter& family) { family.write("Bold.ufo/glyphs/A.glif", text); };
}

std::function<void(FamilyWriter&)> fileName(std::string name)
{
    return [name = std::move(name)](FamilyWriter& family) {
        family.write("outside.glif", FamilyWriter::glif("A", FamilyWriter::triangle(666), 666));
        family.writeContents("Bold.ufo/glyphs", { { "A", name }, { "B", "B.glif" } });
    };
}

std::function<void(FamilyWriter&)> outline(std::string const& text)
{
    return content(FamilyWriter::glif("A", text, 200));
}

std::function<void(FamilyWriter&)> point(std::string const& x, std::string const& y)
{
    return outline("<contour>\n" + FamilyWriter::point(x, y) + "</contour>\n");
}

/// Something else where the file should be.
std::function<void(FamilyWriter&)> instead(std::function<void(std::filesystem::path const&)> make)
{
    return [make = std::move(make)](FamilyWriter& family) {
        family.write("outside.glif", FamilyWriter::glif("A", FamilyWriter::triangle(666), 666));
        family.remove("Bold.ufo/glyphs/A.glif");
        make(family.path("Bold.ufo/glyphs/A.glif"));
    };
}

std::function<void(FamilyWriter&)> link(std::string const& target)
{
    return instead([target](auto const& path) { std::filesystem::create_symlink(target, path); });
}

/// Light's drawings of A and B, with a library for A.
BadFamily odd(std::string name, std::string const& a, std::string const& b, Names mentions,
    std::string const& library = {})
{
    return badPart(
        std::move(name),
        [=](FamilyWriter& family) {
            family.write("Light.ufo/glyphs/A.glif",
                FamilyWriter::glif("A", FamilyWriter::triangle(100) + a, 100, library));
            family.write(
                "Light.ufo/glyphs/B.glif", FamilyWriter::glif("B", FamilyWriter::triangle(100) + b, 100));
        },
        std::move(mentions));
}

/// A glyph's own axes and sources.
BadFamily ownAxes(std::string name, std::string const& axes, std::string const& sources, Names mentions)
{
    return odd(std::move(name), {}, {}, std::move(mentions),
        "<key>com.black-foundry.glyph-designspace</key><dict><key>axes</key><array>" + axes
            + "</array><key>sources</key><array>" + sources + "</array></dict>");
}

std::string ownAxis(std::string const& minimum, std::string const& maximum)
{
    return "<dict><key>name</key><string>bowl</string><key>minimum</key><real>" + minimum
        + "</real><key>default</key><real>0</real><key>maximum</key><real>" + maximum + "</real></dict>";
}

std::string ownSource(std::string const& axis, std::string const& value, std::string const& layer)
{
    return "<dict><key>name</key><string>own</string><key>layername</key><string>" + layer
        + "</string><key>location</key><dict><key>" + axis + "</key>" + value + "</dict></dict>";
}

std::string component(std::string const& base, std::string const& more = {})
{
    return "<component base=\"" + base + "\" " + more + "/>";
}

} // namespace

std::vector<BadFamily> badGlyphs()
{
    return {
        badGlyph("fileOutside", fileName("../../outside.glif"), { "'../../outside.glif'" }),
        badGlyph("fileByAWholePath", fileName("/etc/hostname"), { "'/etc/hostname'" }),
        badGlyph("fileIsALinkOutside", link("../../outside.glif"), { "link that leads out" }),
        badGlyph("fileIsALinkToADevice", link("/dev/zero"), { "link that leads out" }),
        badGlyph("fileIsALinkToItself", link("A.glif"), { "circle" }),
        badGlyph("fileMissing", instead([](auto const&) {}), { "'Bold.ufo/glyphs/A.glif'", "no such file" }),
        badGlyph("fileMayNotBeRead",
            [](FamilyWriter& family) {
                std::filesystem::permissions(
                    family.path("Bold.ufo/glyphs/A.glif"), std::filesystem::perms::none);
            },
            { "may not be read" }),
        badGlyph("fileCut", content("<glyph name=\"A\" format=\"2\">\n<outline>\n<contour>\n<point x=\"1"),
            { "line 4" }),
        badGlyph("fileEmpty", content(""), { "empty" }),
        badGlyph("wideCharacters", content(std::string("\xFF\xFE<\0g\0", 6)), { "not XML" }),
        badGlyph("anotherRoot", content("<designspace/>"), { "no glyph", "'designspace'" }),
        badGlyph("notANumber", point("nan", "0"), { "line 6", "'nan'" }),
        badGlyph("numberTooLarge", point("0", "1e400"), { "line 6", "'1e400'" }),
        badGlyph("numberWithAComma", point("0", "1,5"), { "line 6", "'1,5'" }),
        badGlyph("componentOfInfiniteSize", outline(component("B", "xScale=\"inf\"")), { "'inf'" }),
        badGlyph("componentOfNothing", outline(component("")), { "names no glyph" }),
        badGlyph("aPipe", instead([](auto const& path) { ::mkfifo(path.c_str(), 0600); }),
            { "not a regular file" }),
        badGlyph("aFolder", instead([](auto const& path) { std::filesystem::create_directory(path); }),
            { "folder" }),
    };
}

std::vector<BadFamily> oddGlyphs()
{
    return {
        odd("componentsInACircle", component("B"), component("A"),
            { "'B' contains itself through component 'A'" }),
        odd("componentOfItself", component("A") + component("A", "xScale=\"-1\""), {},
            { "'A' contains itself" }),
        odd("componentMissing", component("no such glyph"), {},
            { "'no such glyph', which the font does not have" }),
        odd("componentOfNoExtent", component("B", "xScale=\"0\" yScale=\"0\""),
            component("A", "xOffset=\"1e308\" xScale=\"1e300\""), { "contains itself" }),
        odd("anchorsOfOneName", {}, {}, {},
            "<key>a</key><string/><key>a</key><string/><key>public.objectLibs</key><array/>"),
        badPart("outlinesThatDoNotFit",
            [](FamilyWriter& family) {
                family.write("Bold.ufo/glyphs/A.glif",
                    FamilyWriter::glif("A",
                        "<contour>" + FamilyWriter::point("0", "0") + FamilyWriter::point("9", "9")
                            + "</contour>",
                        200));
            },
            {}),
        badPart("coordinatesBeyondAll",
            [](FamilyWriter& family) {
                family.write("Bold.ufo/glyphs/A.glif",
                    "<glyph name=\"A\" format=\"2\"><advance width=\"-1.7e308\" height=\"1.7e308\"/><outline>"
                    "<contour>"
                        + FamilyWriter::point("1.7e308", "-1.7e308")
                        + FamilyWriter::point("-1.7e308", "5e-324") + FamilyWriter::point("1e300", "1e300")
                        + "</contour></outline></glyph>");
            },
            {}),
        badPart("namesOfManyKinds",
            [](FamilyWriter& family) {
                std::map<std::string, std::string> files { { "A", "A.glif" }, { "B", "B.glif" },
                    { "a/b", "x1.glif" }, { "a&#10;b", "x2.glif" }, { std::string(300, 'n'), "x3.glif" },
                    { "../../outside", "x4.glif" }, { "twin", "A_.glif" }, { "Twin", "a_.glif" },
                    { "&#0;", "x5.glif" } };
                for (auto const& [name, file] : files) {
                    if (name.size() > 1) {
                        family.write("Light.ufo/glyphs/" + file, FamilyWriter::glif(name, "", 1));
                    }
                }
                family.writeContents("Light.ufo/glyphs", files);
            },
            {}),
        badPart("everythingTwice",
            [](FamilyWriter& family) {
                auto const half = FamilyWriter::glif("A", FamilyWriter::triangle(100), 100);
                auto text = half;
                text.insert(
                    text.find("</glyph>"), "<outline/><advance width=\"7\"/><lib/><lib><dict/></lib>");
                family.write("Light.ufo/glyphs/B.glif", text);
                family.write("Light.ufo/glyphs/contents.plist",
                    FamilyWriter::plist("<dict><key>A</key><string>A.glif</string><key>A</key>"
                                        "<string>B.glif</string><key>B</key><string>B.glif</string></dict>"));
            },
            {}),
        ownAxes("ownAxisFromNaN", ownAxis("nan", "100"), {}, { "'bowl'" }),
        ownAxes("ownAxisUpsideDown", ownAxis("100", "-100"), {}, { "'bowl'" }),
        ownAxes("ownAxisWithoutEnd", ownAxis("-1.7e308", "1.7e308"), {}, { "'bowl'" }),
        ownAxes("ownAxisTwice", ownAxis("0", "100") + ownAxis("-5", "5"), {}, { "'bowl'" }),
        ownAxes("ownSourceNowhere", ownAxis("0", "100"), ownSource("bowl", "<real>nan</real>", "sketch"),
            { "'own'" }),
        ownAxes("ownSourceOfNoLayer", ownAxis("0", "100"), ownSource("bowl", "<real>50</real>", "gone"),
            { "'own'", "'gone'" }),
        ownAxes("ownSourceOnNoAxis", {}, ownSource("stem", "<real>50</real>", "public.default"),
            { "'own'", "'stem'" }),
    };
}
