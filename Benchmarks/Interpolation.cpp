#include "Benchmarks/BenchWindow.h"
#include "Benchmarks/Floors.h"
#include "Benchmarks/Themes.h"

#include "Typloom/TyploomCore/TLInterpolation.h"

namespace {

TLLocation placeAtTick(FamilySize const& size, std::size_t tick)
{
    TLLocation place;
    for (std::size_t axis = 0; axis < size.axes; ++axis) {
        place[axisName(axis)] = axis == tick % size.axes ? double(tick % 9973) / 10 : axisEnd / 3;
    }
    return place;
}

/// The numbers of a ring in each master that counts at the place, as floors take them.
struct FlatGlyph {
    FlatGlyph(FamilySize const& size, std::size_t countOfSources)
    {
        for (std::size_t source = 0; source < countOfSources; ++source) {
            auto const outline = ringOutline(0, growthAt(masterPlace(size, source)));
            std::vector<double> numbers { outline.advance, outline.height };
            for (auto const& contour : outline.contours) {
                for (auto const& point : contour.points) {
                    numbers.insert(numbers.end(), { point.x, point.y });
                }
            }
            sources.push_back(std::move(numbers));
            factors.push_back(1 / double(countOfSources));
        }
        sum.resize(sources.front().size());
    }
    std::vector<std::vector<double>> sources;
    std::vector<double> factors;
    std::vector<double> sum;
};

/// One glyph, at a new place each time; at how many sources count there the floor is told.
void interpolateOne(Table& table, FamilySize const& size)
{
    auto const font = syntheticFamily(size, 1);
    auto const glyph = font->glyphForName("ring0");
    std::vector<TLLocation> places;
    for (std::size_t tick = 0; tick < 64; ++tick) {
        places.push_back(placeAtTick(size, tick + 1));
    }
    FlatGlyph flat(size, size.masters);
    std::size_t tick = 0, alike = 0;
    TLOutline last;
    for (auto const& place : places) {
        auto drawn = TLInterpolateGlyph(*glyph, place);
        alike += drawn.problem || drawn.outline == last;
        last = std::move(drawn.outline);
    }
    table.addCount("  places where it was drawn as at the one before", size.name, double(alike), 0);
    auto const models = TLInterpolationCountersNow().modelsBuilt;
    table.addComparison("one glyph : multiply-add of all its sources", size.name,
        { [&] { last = TLInterpolateGlyph(*glyph, places[++tick % places.size()]).outline; } },
        { [&] { multiplyAdd(flat.sum, flat.sources, flat.factors); } }, 2);
    table.addCount(
        "  models built meanwhile", size.name, double(TLInterpolationCountersNow().modelsBuilt - models), 0);
}

void countModels(Table& table)
{
    BenchWindow window(familySizes[0], 14);
    auto const row = window.row(0);
    window.slide(row, valueAtTick(0));
    auto const models = TLInterpolationCountersNow().modelsBuilt;
    for (std::size_t tick = 1; tick <= 1000; ++tick) {
        window.slide(row, valueAtTick(tick));
    }
    table.addCount("models built during 1,000 slider events", "T",
        double(TLInterpolationCountersNow().modelsBuilt - models), 0);
}

} // namespace

void measureInterpolation(Table& table)
{
    table.heading("Interpolation with an existing model");
    for (auto const& size : measuredSizes()) {
        interpolateOne(table, size);
    }
    countModels(table);
}
