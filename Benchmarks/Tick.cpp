#include "Benchmarks/Tick.h"

#include "Benchmarks/Measure.h"
#include "Benchmarks/SliderDrag.h"
#include "Benchmarks/Table.h"

#include "Typloom/Formats/DesignspaceReader.h"

#include <QImage>
#include <QWidget>

#include <chrono>
#include <cstdio>

static std::optional<std::size_t> indexOfAxis(TLFont const& font, std::string const& wanted)
{
    auto const& axes = font.canonicalAxes();
    for (std::size_t index = 0; index < axes.size(); ++index) {
        if (axes[index]->name() == wanted || axes[index]->axisTag() == wanted) {
            return index;
        }
    }
    return std::nullopt;
}

static int fail(std::string const& sentence)
{
    std::fprintf(stderr, "%s\n", sentence.c_str());
    return 1;
}

/// The event to the painted window, and that window brought into an image, as a screen would.
static double timeOfTick(SliderDrag& drag, std::size_t number, QWidget& widget, QImage& image)
{
    auto const start = std::chrono::steady_clock::now();
    drag.tick(number);
    widget.render(&image);
    return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start).count();
}

int runTicks(TickOptions const& options)
{
    auto const font = TLOpenFamily(options.family);
    if (!font) {
        return fail(font.error().sentence());
    }
    auto const axis = indexOfAxis(**font, options.axis);
    if (!axis) {
        return fail("The family has no axis '" + options.axis + "'.");
    }
    BenchWindow window(*font, options.text);
    auto const row = window.row(*axis);
    if (!row || !window.window().editedOutline()) {
        return fail("None of these glyphs is in the family.");
    }
    SliderDrag drag(window, row);
    QImage image(window.widget().size(), QImage::Format_ARGB32_Premultiplied);
    auto before = window.window().editedOutline();
    std::vector<double> times;
    std::size_t same = 0;
    for (std::size_t tick = 1; tick <= options.ticks; ++tick) {
        times.push_back(timeOfTick(drag, tick, window.widget(), image));
        auto const outline = window.window().editedOutline();
        bool const differs = outline != before;
        same += !differs;
        before = outline;
        char const* const format = options.asJson
            ? "{\"tick\": %zu, \"value\": %.1f, \"milliseconds\": %.3f, \"outlineChanged\": %s}\n"
            : "%4zu  %8.1f  %8.3f ms  outline changed: %s\n";
        std::printf(
            format, tick, row->slider()->doubleValue(), times.back() / 1000, differs ? "true" : "false");
    }
    if (!options.asJson) {
        std::printf("median %s, 95th percentile %s; %zu of %zu drew the same outline as before\n",
            timeText(median(times)).c_str(), timeText(percentile(times, 0.95)).c_str(), same, times.size());
    }
    return 0;
}
