#include "Benchmarks/FamilyFiles.h"

#include "Platform/Foundation/NSNumberFormatter.h"

#include <cmath>
#include <fstream>
#include <unistd.h>

namespace fs = std::filesystem;

static std::string const head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

static std::string number(double value)
{
    return NSNumberDescription(value);
}

static std::string plist(std::string const& content)
{
    return head + "<plist version=\"1.0\">\n" + content + "</plist>\n";
}

/// Letters have their character.
static std::string unicode(std::string const& name)
{
    constexpr char const* digits = "0123456789ABCDEF";
    auto const code = static_cast<unsigned char>(name[0]);
    return name.size() > 1
        ? std::string()
        : std::string("<unicode hex=\"00") + digits[code / 16] + digits[code % 16] + "\"/>\n";
}

/// The first glyphs are letters, as families have them.
static std::string glyphName(std::size_t glyph)
{
    if (glyph < 52) {
        return std::string(1, static_cast<char>(glyph < 26 ? 'A' + glyph : 'a' + glyph - 26));
    }
    return "ring" + std::to_string(glyph);
}

static std::string glif(std::string const& name, TLOutline const& outline, std::string const& lib = {})
{
    auto text = head + "<glyph name=\"" + name + "\" format=\"2\">\n<advance width=\""
        + number(outline.advance) + "\"/>\n" + unicode(name) + "<outline>\n";
    for (auto const& contour : outline.contours) {
        text += "<contour>\n";
        for (auto const& point : contour.points) {
            text += "<point x=\"" + number(std::round(point.x)) + "\" y=\"" + number(std::round(point.y))
                + (point.type == TLPointType::curve ? "\" type=\"curve\" smooth=\"yes\"/>\n" : "\"/>\n");
        }
        text += "</contour>\n";
    }
    return text + "</outline>\n" + lib + "</glyph>\n";
}

static std::string layerName(std::size_t layer)
{
    return "layer " + std::to_string(layer);
}

/// The master whose place is a layer's on the font's axes; the default one where the layer is a source
/// of the designspace.
static std::size_t masterOfLayer(FamilySize const& size, std::size_t layer)
{
    // The second level of an axis with four is at half of it.
    return size.glyphAxes == 0 ? 0 : 1 + size.axes + layer % size.axes;
}

static std::string location(TLCoordinates const& place)
{
    std::string text = "<location>";
    for (auto const& [axis, value] : place) {
        text += "<dimension name=\"" + axis + "\" xvalue=\"" + number(value) + "\"/>";
    }
    return text + "</location>";
}

FamilyFiles::FamilyFiles(FamilySize const& size, std::size_t glyphs)
    : m_folder(fs::temp_directory_path() / ("typloom-bench-" + std::to_string(getpid()) + "-" + size.name))
{
    for (std::size_t master = 0; master < size.masters; ++master) {
        writeMaster(size, master, glyphs);
    }
    writeDesignspace(size);
}

FamilyFiles::~FamilyFiles()
{
    std::error_code ignored;
    fs::remove_all(m_folder, ignored);
}

void FamilyFiles::write(fs::path const& path, std::string const& text)
{
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
    ++m_countOfFiles;
}

void FamilyFiles::writeMaster(FamilySize const& size, std::size_t master, std::size_t glyphs)
{
    auto const ufo = m_folder / ("Master" + std::to_string(master) + ".ufo");
    auto const growth = growthAt(masterPlace(size, master));
    write(ufo / "metainfo.plist",
        plist("<dict><key>creator</key><string>benchmark</string><key>formatVersion</key><integer>3</"
              "integer></dict>\n"));
    std::string contents = "<dict>\n", order;
    auto const addGlyph = [&](std::string const& name, std::size_t index, std::string const& lib) {
        contents += "<key>" + name + "</key><string>" + name + ".glif</string>\n";
        order += "<string>" + name + "</string>\n";
        write(ufo / "glyphs" / (name + ".glif"), glif(name, ringOutline(index, growth), lib));
    };
    addGlyph("big", 0, master == 0 ? bigGlyphLib(size) : std::string());
    for (std::size_t glyph = 0; glyph < glyphs; ++glyph) {
        addGlyph(glyphName(glyph), glyph, {});
    }
    write(ufo / "glyphs" / "contents.plist", plist(contents + "</dict>\n"));
    write(
        ufo / "lib.plist", plist("<dict><key>public.glyphOrder</key><array>" + order + "</array></dict>\n"));
    std::string layers = "<array><array><string>public.default</string><string>glyphs</string></array>\n";
    for (std::size_t layer = 0; layer < size.layers - size.masters; ++layer) {
        if (masterOfLayer(size, layer) != master) {
            continue;
        }
        auto const folder = "glyphs." + layerName(layer);
        layers += "<array><string>" + layerName(layer) + "</string><string>" + folder + "</string></array>\n";
        write(
            ufo / folder / "contents.plist", plist("<dict><key>big</key><string>big.glif</string></dict>\n"));
        write(ufo / folder / "big.glif", glif("big", ringOutline(0, growthAt(layerPlace(size, layer)))));
    }
    write(ufo / "layercontents.plist", plist(layers + "</array>\n"));
}

std::string FamilyFiles::bigGlyphLib(FamilySize const& size) const
{
    if (size.glyphAxes == 0) {
        return {};
    }
    std::string text
        = "<lib><dict><key>com.black-foundry.glyph-designspace</key><dict><key>axes</key><array>\n";
    for (std::size_t axis = 0; axis < size.glyphAxes; ++axis) {
        text += "<dict><key>name</key><string>" + glyphAxisName(axis)
            + "</string><key>minimum</key><integer>0</integer><key>default</key><integer>0</integer>"
              "<key>maximum</key><integer>1000</integer></dict>\n";
    }
    text += "</array><key>sources</key><array>\n";
    for (std::size_t layer = 0; layer < size.layers - size.masters; ++layer) {
        text += "<dict><key>name</key><string>" + layerName(layer) + "</string><key>layername</key><string>"
            + layerName(layer) + "</string><key>location</key><dict>";
        for (auto const& [axis, value] : layerPlace(size, layer)) {
            text += "<key>" + axis + "</key><real>" + number(value) + "</real>";
        }
        text += "</dict></dict>\n";
    }
    return text + "</array></dict></dict></lib>\n";
}

void FamilyFiles::writeDesignspace(FamilySize const& size)
{
    auto text = head + "<designspace format=\"5.0\">\n<axes>\n";
    for (std::size_t axis = 0; axis < size.axes; ++axis) {
        text += "<axis tag=\"A" + std::to_string(100 + axis) + "\" name=\"" + axisName(axis)
            + "\" minimum=\"0\" maximum=\"1000\" default=\"0\"/>\n";
    }
    text += "</axes>\n<sources>\n";
    for (std::size_t master = 0; master < size.masters; ++master) {
        auto const name = "Master" + std::to_string(master);
        text += "<source filename=\"" + name + ".ufo\" name=\"" + name + "\" stylename=\"" + name + "\">"
            + location(masterPlace(size, master)) + "</source>\n";
    }
    for (std::size_t layer = 0; size.glyphAxes == 0 && layer < size.layers - size.masters; ++layer) {
        text += "<source filename=\"Master0.ufo\" name=\"" + layerName(layer) + "\" layer=\""
            + layerName(layer) + "\">" + location(layerPlace(size, layer)) + "</source>\n";
    }
    write(designspace(), text + "</sources>\n</designspace>\n");
}
