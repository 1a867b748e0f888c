#include "Benchmarks/BenchWindow.h"
#include "Benchmarks/SliderDrag.h"
#include "Benchmarks/Themes.h"
#include "Benchmarks/ToolkitWindow.h"

#include "Platform/Foundation/NSMainQueue.h"

namespace {

void measureLine(Table& table, FamilySize const& size, std::size_t glyphs)
{
    BenchWindow window(size, glyphs - 1);
    auto const row = window.row(0);
    SliderDrag drag(window, row);
    if (glyphs > 15) {
        drag.zoomOut(); // Else most of the line is out of sight, and is not drawn.
    }
    ToolkitWindow bare(window.widget().size(), drag.viewGeometry(), glyphs, drag.pointsPerUnit());
    std::size_t tick = 0, bareTick = 0;
    auto const text = std::to_string(glyphs) + (glyphs == 1 ? " glyph" : " glyphs");
    Work const ours { [&] { drag.tick(++tick); } };
    table.addComparison(
        "event to painted window : bare toolkit", text, ours, { [&] { bare.tick(++bareTick); } }, 2);
    auto const unpainted = double(tick) - std::min(double(tick), double(drag.countOfPaints()))
        + double(bareTick) - std::min(double(bareTick), double(bare.countOfPaints()));
    table.addCount("  moves that were not painted", text, unpainted, 0);
    if (glyphs == 15) {
        auto const times = eachMicroseconds(ours, effort().isShort ? 40 : 400);
        auto const late = percentile(times, 0.95);
        table.add({ "  its 95th percentile", text, timeText(late), {}, {}, "< 8.33 ms",
            late < 8330 ? Row::Verdict::met : Row::Verdict::missed });
    }
}

} // namespace

void measurePainting(Table& table)
{
    table.heading("Slider event to painted window, offscreen, 3 axes");
    for (std::size_t const glyphs : { 1, 15, 100 }) {
        measureLine(table, familySizes[0], glyphs);
    }
}
