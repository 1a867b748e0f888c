#include "Benchmarks/Themes.h"

#include "Moravel/Model/SidebarItem.h"
#include "Platform/AppKit/NSTableViewDiffableDataSource.h"
#include "Platform/AppKit/NSTextField.h"
#include "Platform/Qt/NSViewBacking.h"

#include <QApplication>
#include <QVBoxLayout>
#include <QWidget>

namespace {

using Source = NSTableViewDiffableDataSource<Section, SidebarItem>;
using Snapshot = Source::Snapshot;

Snapshot snapshotOf(std::size_t rows)
{
    std::vector<SidebarItem> items;
    for (std::size_t row = 0; row < rows; ++row) {
        items.push_back({ Section::font, "Axis " + std::to_string(row) });
    }
    Snapshot snapshot;
    snapshot.appendSection(Section::font);
    snapshot.appendItems(std::move(items));
    return snapshot;
}

/// A table in a window, with a label for each row that can be seen.
class ListWindow {
public:
    ListWindow()
    {
        auto* const layout = new QVBoxLayout(&m_window);
        layout->addWidget(qtWidget(*m_table));
        m_window.resize(300, 900);
        m_window.show();
        QApplication::processEvents();
    }
    ~ListWindow() { qtWidget(*m_table)->setParent(nullptr); }
    void apply(Snapshot snapshot)
    {
        m_source.applySnapshot(std::move(snapshot), true);
        QApplication::processEvents();
    }
    void scrollTo(std::size_t row)
    {
        m_table->scrollRowToVisible(row);
        QApplication::processEvents();
    }
    std::size_t countOfViewsMade() const { return m_views; }

private:
    QWidget m_window;
    std::shared_ptr<NSTableView> m_table { std::make_shared<NSTableView>() };
    std::size_t m_views { 0 };
    Source m_source { m_table, [this](auto const&, std::size_t, std::size_t, SidebarItem const& item) {
                         ++m_views;
                         return NSTextField::labelWithString(item.axisId);
                     } };
};

} // namespace

void measureLists(Table& table)
{
    table.heading("A table of 10,000 rows");
    auto const all = snapshotOf(10000);
    ListWindow window;
    table.addTime(
        "first show", "10000 rows", { [&] { window.apply(all); }, [&] { window.apply({}); } }, 30000);
    ListWindow fresh;
    fresh.apply(all);
    table.addCount("  views made for it", "10000 rows", double(fresh.countOfViewsMade()), 100);
    std::size_t page = 0;
    table.addTime(
        "a page scrolled", "10000 rows", { [&] { window.scrollTo(++page * 40 % 10000); } }, 1e6 / 60);
    auto const changed = [&] {
        auto items = all.sections().front().items;
        items.erase(items.begin() + 5000);
        Snapshot snapshot;
        snapshot.appendSection(Section::font);
        snapshot.appendItems(std::move(items));
        return snapshot;
    }();
    bool isWhole = true;
    table.addTime("one row in or out, shown", "10000 rows",
        { [&] { window.apply((isWhole = !isWhole) ? all : changed); } }, 1e6 / 120);
}
