#include "Benchmarks/BenchWindow.h"
#include "Benchmarks/SliderDrag.h"
#include "Benchmarks/Themes.h"

#include "Moravel/Model/Matching.h"

#include <cstdio>

namespace {

/// Axes times masters, four times as many from one to the next.
FamilySize const cellSizes[] = {
    { "4,096 cells", 32, 128, 128, 0 },
    { "16,384 cells", 64, 256, 256, 0 },
    { "65,536 cells", 128, 512, 512, 0 },
};

void addFit(Table& table, std::string const& work, std::vector<double> const& sizes,
    std::vector<double> const& times, double mostGrowth)
{
    std::string all;
    double worst = 0;
    for (std::size_t index = 0; index < times.size(); ++index) {
        all += (index == 0 ? "" : ", ") + timeText(times[index]);
        worst = index == 0 ? worst : std::max(worst, times[index] / times[index - 1]);
    }
    char order[32];
    std::snprintf(order, sizeof order, "order %.2f", fittedOrder(sizes, times));
    table.add({ work, all, order, {}, numberText(worst), "<= " + numberText(mostGrowth),
        worst <= mostGrowth ? Row::Verdict::met : Row::Verdict::missed });
}

double timeFor(Work const& work)
{
    return medianMicroseconds(work, effort().secondsPerSample * 7);
}

/// A place that no master stands at, though many agree with it on all axes but the last.
TLLocation nowhere(FamilySize const& size)
{
    return { { axisName(size.axes - 1), 0.25 } };
}

void growWithCells(Table& table)
{
    std::vector<double> cells, refreshes, events, searches, rebuilds;
    for (auto const& size : cellSizes) {
        BenchWindow window(size, 0);
        auto const row = window.row(0);
        std::size_t tick = 0;
        cells.push_back(double(size.axes * size.masters));
        refreshes.push_back(timeFor({ [&] { window.refresh(); } }));
        events.push_back(timeFor({ [&] { window.slide(row, valueAtTick(++tick)); } }));
        searches.push_back(timeFor({ [&] { matchingMaster(*window.font(), nowhere(size)); } }));
        auto const font = window.font();
        auto const last = font->fontMasters().size() - 1;
        auto const master = font->fontMasters()[last];
        // A master goes and comes back: where they stand on each axis is worked out anew.
        rebuilds.push_back(timeFor({ [&] {
                                        for (auto const& axis : font->canonicalAxes()) {
                                            font->masterValuesOnAxis(*axis);
                                        }
                                    },
            [&] {
                font->removeMaster(last);
                font->insertMaster(master, last);
            } }));
    }
    addFit(table, "refresh", cells, refreshes, 6);
    addFit(table, "slider event", cells, events, 6);
    addFit(table, "search of masters, none there", cells, searches, 6);
    addFit(table, "distinct values of every axis", cells, rebuilds, 6);
}

void growWithGlyphs(Table& table)
{
    std::vector<double> counts, refreshes, ticks;
    std::vector<std::unique_ptr<BenchWindow>> windows;
    for (std::size_t const count : { 100, 3000, 100000 }) {
        // One layer each where there are many: it is their number that counts here.
        FamilySize const size { "", 3, 4, 8, 0 };
        windows.push_back(
            std::make_unique<BenchWindow>(size, 14, effort().isShort ? count / 50 + 14 : count));
        counts.push_back(double(count));
    }
    // In turn, since the machine is not equally quick at all times.
    std::vector<std::vector<double>> refreshTimes(windows.size()), tickTimes(windows.size());
    for (std::size_t round = 0; round < 7; ++round) {
        for (std::size_t index = 0; index < windows.size(); ++index) {
            SliderDrag drag(*windows[index], windows[index]->row(0));
            std::size_t tick = 0;
            refreshTimes[index].push_back(
                medianMicroseconds({ [&] { windows[index]->refresh(); } }, effort().secondsPerSample));
            tickTimes[index].push_back(
                medianMicroseconds({ [&] { drag.tick(++tick); } }, effort().secondsPerSample * 4));
        }
    }
    for (std::size_t index = 0; index < windows.size(); ++index) {
        refreshes.push_back(median(refreshTimes[index]));
        ticks.push_back(median(tickTimes[index]));
    }
    addFit(table, "refresh, 100 to 100,000 glyphs", counts, refreshes, 1.15);
    addFit(table, "event to painted window, the same", counts, ticks, 1.15);
}

} // namespace

void measureGrowth(Table& table)
{
    table.heading("Growth: times at three sizes, the fitted order, the worst step from one to the next");
    growWithCells(table);
    growWithGlyphs(table);
}

void measureSoak(Table& table)
{
    table.heading("Soak");
    std::size_t const events = effort().isShort ? 2000 : 100000;
    BenchWindow window(familySizes[0], 14);
    auto const row = window.row(0);
    SliderDrag drag(window, row);
    auto const run = [&](std::size_t times) {
        for (std::size_t tick = 0; tick < times; ++tick) {
            window.slide(row, valueAtTick(tick));
            if (tick % 10 == 0) {
                window.refresh();
            }
            if (tick % 1000 == 0) {
                drag.tick(tick); // Painted now and then, so that what is to be painted does not pile up.
            }
        }
        drag.tick(times);
    };
    run(events / 10); // What is kept from the first time on is there now.
    auto const bytes = bytesInUse();
    auto const objects = liveAllocations();
    run(events);
    table.addCount("memory grown by " + std::to_string(events) + " slider events", "T, 15 glyphs",
        (double(bytesInUse()) - double(bytes)) / 1024, 1024, " KB");
    table.addCount("  live objects more", "T, 15 glyphs", double(liveAllocations()) - double(objects), 64);
}
