#include "Benchmarks/SyntheticFamily.h"

#include "Tests/Support/FontBuilder.h"

#include <cmath>
#include <numbers>

std::string axisName(std::size_t index)
{
    return "Axis " + std::to_string(index);
}

std::string glyphAxisName(std::size_t index)
{
    return "Own " + std::to_string(index);
}

TLCoordinates masterPlace(FamilySize const& size, std::size_t master)
{
    if (master == 0) {
        return {};
    }
    auto const levels = (size.masters - 2) / size.axes + 1;
    auto const level = (master - 1) / size.axes + 1;
    return { { axisName((master - 1) % size.axes), axisEnd * double(level) / double(levels) } };
}

TLCoordinates layerPlace(FamilySize const& size, std::size_t layer)
{
    auto const part = double(layer + 1) / double(size.layers);
    auto const axis = axisName(layer % size.axes);
    if (size.glyphAxes != 0) {
        return { { axis, axisEnd / 2 }, { glyphAxisName(layer % size.glyphAxes), axisEnd * part } };
    }
    return { { axis, axisEnd / 2 }, { axisName((layer + 1) % size.axes), axisEnd * part } };
}

double growthAt(TLCoordinates const& place)
{
    double growth = 0;
    for (auto const& [axis, value] : place) {
        growth += 40 * value / axisEnd;
    }
    return growth;
}

static TLContour circle(double radius, std::size_t segments, bool clockwise)
{
    // A quarter of a circle would have handles of 0.5523 radius; these are arcs of 1 / `segments` turn.
    auto const arc = 2 * std::numbers::pi / double(segments);
    auto const handle = 4.0 / 3 * std::tan(arc / 4) * radius;
    auto const place = [&](double angle, double along, TLPointType type) {
        auto const x = 500 + radius * std::cos(angle) - along * std::sin(angle);
        auto const y = 350 + radius * std::sin(angle) + along * std::cos(angle);
        return TLPoint { x, clockwise ? 700 - y : y, type, type == TLPointType::curve, {} };
    };
    TLContour contour;
    for (std::size_t index = 0; index < segments; ++index) {
        auto const from = double(index) * arc;
        contour.points.push_back(place(from, 0, TLPointType::curve));
        contour.points.push_back(place(from, handle, TLPointType::offcurve));
        contour.points.push_back(place(from + arc, -handle, TLPointType::offcurve));
    }
    return contour;
}

TLOutline ringOutline(std::size_t glyph, double growth)
{
    auto const radius = 300 + double(glyph % 7) + growth;
    TLOutline outline;
    outline.advance = 1000 + growth;
    outline.contours = { circle(radius, 16, false), circle(radius - 100 - growth / 2, 16, true) };
    return outline;
}

std::shared_ptr<TLFont> syntheticFamily(FamilySize const& size, std::size_t glyphs)
{
    FontBuilder builder;
    for (std::size_t axis = 0; axis < size.axes; ++axis) {
        builder.addAxis(axisName(axis), axisName(axis), { 0, 0, axisEnd });
    }
    for (std::size_t master = 0; master < size.masters; ++master) {
        builder.addMaster("master " + std::to_string(master), masterPlace(size, master));
    }
    auto const growth = [&](TLFontMaster const& master) {
        double sum = 0;
        for (std::size_t axis = 0; axis < size.axes; ++axis) {
            sum += growthAt({ { axisName(axis), master.axisInternalValueValueForId(axisName(axis)) } });
        }
        return sum;
    };
    std::vector<double> growths;
    for (auto const& master : builder.font()->fontMasters()) {
        growths.push_back(growth(*master));
    }
    auto const addGlyph = [&](std::string const& name, std::size_t number) {
        std::size_t master = 0;
        return builder.addGlyph(
            name, [&](TLFontMaster const&) { return ringOutline(number, growths[master++]); });
    };
    auto const big = addGlyph("big", 0);
    big->setUnicodes({ bigCharacter });
    for (std::size_t axis = 0; axis < size.glyphAxes; ++axis) {
        FontBuilder::addGlyphAxis(big, glyphAxisName(axis), glyphAxisName(axis), { 0, 0, axisEnd });
    }
    for (std::size_t layer = 0; layer < size.layers - size.masters; ++layer) {
        auto place = layerPlace(size, layer);
        auto outline = ringOutline(0, growthAt(place));
        FontBuilder::addBraceLayer(
            big, "layer " + std::to_string(layer), "master 0", std::move(place), std::move(outline));
    }
    for (std::size_t glyph = 0; glyph < glyphs; ++glyph) {
        addGlyph("ring" + std::to_string(glyph), glyph)
            ->setUnicodes({ static_cast<char32_t>(firstRingCharacter + glyph) });
    }
    return builder.font();
}
