#include "Benchmarks/FamilyFiles.h"

#include "Typloom/Formats/DesignspaceReader.h"

#include <benchmark/benchmark.h>

namespace {

/// Opening a family whose files the system has in memory. With `glyph`, to that glyph read with all its
/// layers.
void openFamily(benchmark::State& state, FamilySize const& size, std::size_t glyphs, char const* glyph)
{
    FamilyFiles const files(size, glyphs);
    for (auto _ : state) {
        auto const font = TLOpenFamily(files.designspace());
        if (!font || !(*font)->report().empty()) {
            auto const problem = font ? (*font)->report().front() : font.error().sentence();
            state.SkipWithError(problem.c_str());
            break;
        }
        if (glyph) {
            auto const read = (*font)->glyphForName(glyph);
            if (!read || read->layers().size() != size.layers) {
                state.SkipWithError("The glyph does not have all its layers");
                break;
            }
        }
    }
    state.counters["files"] = double(files.countOfFiles());
}

auto const registered = [] {
    for (auto const& size : familySizes) {
        // Of the extreme family fewer glyphs, for the disk's sake.
        std::size_t const glyphs = size.masters > 100 ? 20 : 200;
        auto const add = [&](std::string const& name, char const* glyph) {
            benchmark::RegisterBenchmark((name + "/" + size.name).c_str(), openFamily, size, glyphs, glyph)
                ->Unit(benchmark::kMillisecond);
        };
        add("Open", nullptr);
        add("OpenAndReadBigGlyph", "big");
    }
    return true;
}();

} // namespace
