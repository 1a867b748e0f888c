#include "Benchmarks/BenchWindow.h"
#include "Benchmarks/Floors.h"
#include "Benchmarks/Themes.h"

#include "Platform/Foundation/NSMainQueue.h"

namespace {

std::size_t allocationsOfRefresh(FamilySize const& size, std::size_t glyphs)
{
    BenchWindow window(size, 0, glyphs);
    window.refresh();
    return allocationsOf([&] { window.refresh(); });
}

/// A family of the same axes has as many allocations with ten times the masters, the layers or the glyphs.
void countAllocations(Table& table)
{
    FamilySize const few { "T", 3, 6, 20, 2 };
    FamilySize const many { "", 3, 60, 200, 2 };
    auto const allocations = double(allocationsOfRefresh(few, 10));
    table.addCount("  its allocations, T", "10 glyphs", allocations, 1000);
    table.addCount(
        "  with ten times the masters and layers", "", double(allocationsOfRefresh(many, 10)), allocations);
    table.addCount(
        "  with a hundred times the glyphs", "", double(allocationsOfRefresh(few, 1000)), allocations);
}

void measureUnchanged(Table& table, FamilySize const& size, BenchWindow& window)
{
    Work const refresh { [&] { window.refresh(); } };
    if (size.axes == 3) {
        table.addTime("refresh, nothing changed", size.name, refresh, 10);
        return;
    }
    FlatPass flat(size);
    table.addComparison("refresh, nothing changed : flat pass", size.name, refresh, { [&] { flat.run(); } },
        size.masters > 100 ? 8 : 5);
}

/// One change each before a refresh; before that of the floor one that no row shows, so that all that the
/// change itself brings about is the same.
class OneChange {
public:
    OneChange(Table& table, FamilySize const& size, BenchWindow& window)
        : m_table(table)
        , m_size(size)
        , m_window(window)
        , m_glyph(window.font()->glyphForName("big"))
        , m_master(window.font()->fontMasters().back())
    {
    }

    /// An end of the last axis, so that its row's range and landmarks change. What the row does itself when
    /// it is told is in the floor too.
    void value()
    {
        auto const axisId = m_window.font()->canonicalAxes().back()->axisId();
        auto const tell = [this, axisId] {
            m_window.refresh();
            m_window.sidebar().tableState()->postRowContentChanges({ { Section::font, axisId } });
        };
        m_table.addComparison("one value changed : nothing changed", m_size.name,
            { refresh(), after([this, axisId] {
                 m_master->setAxisInternalValue(axisEnd + double(++m_round % 2), axisId);
             }) },
            { tell, after([this] { m_master->setName(std::to_string(++m_round)); }) }, 1.3);
    }

    void rowInOrOut()
    {
        auto const last = m_glyph->countOfAxes() - 1;
        auto const axis = m_glyph->axes().back();
        auto const inOrOut = [this, last, axis] {
            if (m_glyph->countOfAxes() > last) {
                m_glyph->removeObjectFromAxesAtIndex(last);
            } else {
                m_glyph->insertObjectInAxesAtIndex(axis, last);
            }
        };
        m_table.addComparison(
            "one row in or out : nothing changed", m_size.name, { refresh(), after(inOrOut) }, unseen(), 1.3);
        if (m_glyph->countOfAxes() == last) {
            inOrOut();
        }
    }

    void rowMoved()
    {
        auto const last = m_glyph->countOfAxes() - 1;
        auto const move = [this, last] {
            auto const axis = m_glyph->axes()[last - 1];
            m_glyph->removeObjectFromAxesAtIndex(last - 1);
            m_glyph->insertObjectInAxesAtIndex(axis, last);
        };
        m_table.addComparison(
            "one row moved : nothing changed", m_size.name, { refresh(), after(move) }, unseen(), 1.3);
    }

private:
    std::function<void()> refresh()
    {
        return [this] { m_window.refresh(); };
    }
    /// The change, once the one before it has been followed everywhere.
    static std::function<void()> after(std::function<void()> change)
    {
        return [change = std::move(change)] {
            NSMainQueue::runPending();
            change();
        };
    }
    Work unseen()
    {
        auto const layer = m_glyph->layers().begin()->second;
        return { refresh(), after([this, layer] { layer->setName(std::to_string(++m_round)); }) };
    }

    Table& m_table;
    FamilySize const& m_size;
    BenchWindow& m_window;
    std::shared_ptr<TLGlyph> m_glyph;
    std::shared_ptr<TLFontMaster> m_master;
    std::size_t m_round { 0 };
};

} // namespace

void measureRefreshes(Table& table)
{
    table.heading("Refresh: build the model, compare, tell the rows that changed");
    for (auto const& size : measuredSizes()) {
        BenchWindow window(size, 0);
        measureUnchanged(table, size, window);
        if (effort().isShort) {
            continue;
        }
        OneChange change(table, size, window);
        change.value();
        if (size.glyphAxes > 0) { // The rows of few axes are all in sight: their views would be most of it.
            change.rowInOrOut();
            change.rowMoved();
        }
    }
    countAllocations(table);
}

void measureSlider(Table& table)
{
    table.heading("One slider event, logic only: the value to the host, its answer, the rows");
    for (auto const& size : measuredSizes()) {
        BenchWindow window(size, 0);
        auto const row = window.row(0);
        std::size_t tick = 0;
        auto const target = size.axes < 10 ? 20 : size.axes < 100 ? 100 : 1000;
        table.addTime("slider event", size.name, { [&] { window.slide(row, valueAtTick(++tick)); } }, target);
        auto const item = row->item();
        if (!item
            || window.sidebar().tableState()->rowContentByItem().at(*item).position != valueAtTick(tick)) {
            table.add({ "  the row did not follow", size.name, "", "", "", "", Row::Verdict::missed });
        }
    }
}
