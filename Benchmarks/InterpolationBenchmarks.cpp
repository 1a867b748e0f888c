#include "Benchmarks/SyntheticFamily.h"

#include "Typloom/TyploomCore/TLInterpolation.h"

#include <benchmark/benchmark.h>

#include <chrono>

namespace {

constexpr std::size_t lineLength = 50;

/// Places along all axes, no two alike, as a drag gives them.
TLLocation placeAtTick(FamilySize const& size, std::size_t tick)
{
    TLLocation place;
    for (std::size_t axis = 0; axis < size.axes; ++axis) {
        place[axisName(axis)] = axis == tick % size.axes ? double(tick % 9973) / 10 : axisEnd / 3;
    }
    return place;
}

/// A line of 50 glyphs, all with the same set of sources, at a new place in each round.
void interpolateLine(benchmark::State& state, FamilySize const& size)
{
    auto const font = syntheticFamily(size, lineLength);
    std::vector<std::shared_ptr<TLGlyph>> line;
    for (std::size_t index = 0; index < lineLength; ++index) {
        line.push_back(font->glyphForName("ring" + std::to_string(index)));
        TLInterpolateGlyph(*line.back(), placeAtTick(size, 0)); // The model is at hand from here on.
    }
    std::size_t tick = 1;
    TLOutline last;
    for (auto _ : state) {
        auto const place = placeAtTick(size, tick++);
        TLInterpolatedOutline drawn;
        for (auto const& glyph : line) {
            drawn = TLInterpolateGlyph(*glyph, place);
            benchmark::DoNotOptimize(drawn);
        }
        if (drawn.problem || drawn.outline == last) {
            state.SkipWithError(drawn.problem ? drawn.problem->c_str() : "The shape did not change");
            break;
        }
        last = std::move(drawn.outline);
    }
    state.counters["glyphs/s"]
        = benchmark::Counter(double(state.iterations() * lineLength), benchmark::Counter::kIsRate);
}

/// The model of a glyph's set of sources, which is built once, and the first instance from it.
void interpolateFirst(benchmark::State& state, FamilySize const& size, char const* glyph)
{
    for (auto _ : state) {
        auto const font = syntheticFamily(size, 1);
        auto const place = placeAtTick(size, 1);
        auto const start = std::chrono::steady_clock::now();
        auto const drawn = TLInterpolateGlyph(*font->glyphForName(glyph), place);
        state.SetIterationTime(
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
        if (drawn.problem) {
            state.SkipWithError(drawn.problem->c_str());
            break;
        }
    }
}

auto const registered = [] {
    for (auto const& size : familySizes) {
        auto const add = [&](std::string const& name, auto function, auto... arguments) {
            return benchmark::RegisterBenchmark(
                (name + "/" + size.name).c_str(), function, size, arguments...)
                ->Unit(benchmark::kMicrosecond);
        };
        add("LineOf50", interpolateLine);
        add("FirstInstance", interpolateFirst, "ring0")->UseManualTime()->Iterations(5);
        add("FirstInstanceOfBigGlyph", interpolateFirst, "big")->UseManualTime()->Iterations(1);
    }
    return true;
}();

} // namespace
