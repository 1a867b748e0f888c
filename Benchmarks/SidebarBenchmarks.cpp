#include "Benchmarks/SyntheticFamily.h"

#include "Moravel/AxisCellView.h"
#include "Moravel/Plugin.h"
#include "Moravel/SidebarViewController.h"
#include "Platform/Foundation/NSMainQueue.h"
#include "Typloom/TyploomApp/Snapshot.h"
#include "Typloom/TyploomApp/TLDocumentWindow.h"
#include "Typloom/TyploomApp/TLSidebar.h"
#include "Typloom/TyploomKit/TLPlaceholderView.h"

#include <QApplication>
#include <QWidget>
#include <benchmark/benchmark.h>

namespace {

constexpr std::size_t ringsInLine = 49;

void loadPlugin()
{
    static bool const isLoaded = [] {
        TLRegisterViewClasses();
        // Held, since a bundle is found by its identifier as long as somebody has it.
        static auto const bundle = NSBundle::bundleWithPath(BUILD_FOLDER "/PlugIns/Moravel.bundle");
        std::shared_ptr<TyploomPlugin> plugin;
        TyploomPluginEntry("SidebarViewController", &plugin);
        static auto const held = plugin;
        held->loadPlugin();
        return true;
    }();
    static_cast<void>(isLoaded);
}

void appendUtf8(std::string& text, char32_t character) // Of three bytes.
{
    text += static_cast<char>(0xE0 | (character >> 12));
    text += static_cast<char>(0x80 | (character >> 6 & 0x3F));
    text += static_cast<char>(0x80 | (character & 0x3F));
}

/// The window of a family with a line of 50 glyphs; the first, with all the layers and axes, is edited.
class OpenWindow {
public:
    explicit OpenWindow(FamilySize const& size)
        : m_font(syntheticFamily(size, ringsInLine))
    {
        loadPlugin();
        m_window = std::make_unique<TLDocumentWindow>(m_font);
        m_window->widget()->resize(1400, 900);
        m_window->widget()->show();
        std::string text;
        appendUtf8(text, bigCharacter);
        for (std::size_t ring = 0; ring < ringsInLine; ++ring) {
            appendUtf8(text, static_cast<char32_t>(firstRingCharacter + ring));
        }
        m_window->setText(text);
        SettleEvents();
    }

    TLDocumentWindow& window() { return *m_window; }
    SidebarViewController& sidebar()
    {
        return dynamic_cast<SidebarViewController&>(*m_window->sidebar()->controllerOfTab(0));
    }
    /// The row of the first font axis.
    std::shared_ptr<AxisCellView> firstRow()
    {
        return std::dynamic_pointer_cast<AxisCellView>(sidebar().tableView()->viewAtColumnRow(0, 1, true));
    }

private:
    std::shared_ptr<TLFont> m_font;
    std::unique_ptr<TLDocumentWindow> m_window;
};

/// What every TLUpdateInterface costs where nothing changed.
void refreshWithoutChange(benchmark::State& state, FamilySize const& size)
{
    OpenWindow open(size);
    auto& sidebar = open.sidebar();
    for (auto _ : state) {
        sidebar.applyTableModel(sidebar.makeTableModel(), nullptr, {});
    }
    state.counters["rows"] = double(sidebar.tableState()->rowContentByItem().size());
}

enum class Until { rowsAreRefreshed, windowIsPainted };

/// A value from a slider, the host's preview, the host's notification, the refresh, the rows.
void slideOnce(benchmark::State& state, FamilySize const& size, Until until)
{
    OpenWindow open(size);
    auto& sidebar = open.sidebar();
    auto const row = open.firstRow();
    if (!row || !row->item()) {
        state.SkipWithError("There is no row for the first axis");
        return;
    }
    auto const item = *row->item();
    std::size_t tick = 0;
    for (auto _ : state) {
        // Between the sources, a tenth further each time.
        ++tick;
        auto const value = double(1 + 10 * (tick % 900) + tick % 9) / 10;
        sidebar.axisCellViewDidChangeValue(row, value);
        NSMainQueue::runPending();
        if (until == Until::windowIsPainted) {
            QApplication::processEvents();
        }
        auto const position = sidebar.tableState()->rowContentByItem().at(item).position;
        if (position != value) {
            state.SkipWithError("The row was not refreshed");
            break;
        }
    }
}

auto const registered = [] {
    for (auto const& size : familySizes) {
        auto const add = [&](std::string const& name, auto function, auto... arguments) {
            benchmark::RegisterBenchmark((name + "/" + size.name).c_str(), function, size, arguments...)
                ->Unit(benchmark::kMicrosecond);
        };
        add("RefreshWithoutChange", refreshWithoutChange);
        add("SliderEvent", slideOnce, Until::rowsAreRefreshed);
        add("SliderEventAndPaint", slideOnce, Until::windowIsPainted);
    }
    return true;
}();

} // namespace
