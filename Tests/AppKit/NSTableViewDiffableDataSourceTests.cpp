#include "Platform/AppKit/NSTableViewDiffableDataSource.h"

#include "Tests/AppKit/TableWindow.h"
#include "Tests/Support/Sequences.h"

#include <map>

namespace {

struct Section {
    std::string name;
    bool operator==(Section const&) const = default;
};
struct Item {
    int number { 0 };
    bool operator==(Item const&) const = default;
};
std::string describe(Section const& section)
{
    return section.name;
}
std::string describe(Item const& item)
{
    return "number " + std::to_string(item.number);
}

} // namespace

template <> struct std::hash<Section> {
    std::size_t operator()(Section const& section) const { return std::hash<std::string> {}(section.name); }
};
template <> struct std::hash<Item> {
    std::size_t operator()(Item const& item) const { return std::hash<int> {}(item.number); }
};

namespace {

using DataSource = NSTableViewDiffableDataSource<Section, Item>;
using Snapshot = DataSource::Snapshot;
using Texts = std::vector<std::string>;

Snapshot snapshotOf(std::vector<std::pair<std::string, std::vector<int>>> const& sections)
{
    Snapshot snapshot;
    for (auto const& [name, numbers] : sections) {
        snapshot.appendSection({ name });
        std::vector<Item> items;
        for (int const number : numbers) {
            items.push_back({ number });
        }
        snapshot.appendItems(std::move(items));
    }
    return snapshot;
}

/// A table that shows the items of a data source, under headers.
class Diffable : public testing::Test {
protected:
    Diffable()
    {
        source = std::make_unique<DataSource>(
            window.table, [this](auto const& table, std::size_t, std::size_t row, Item const& item) {
                if (onCell) {
                    onCell(item);
                }
                providedRows.emplace_back(row, item.number);
                auto const cell
                    = std::dynamic_pointer_cast<TestCell>(table->makeViewWithIdentifier("Cell", nullptr));
                cell->label()->setStringValue(std::to_string(item.number));
                return cell;
            });
        source->setSectionHeaderViewProvider([](auto const&, std::size_t, Section const& section) {
            return NSTextField::labelWithString(section.name);
        });
    }
    void apply(std::vector<std::pair<std::string, std::vector<int>>> const& sections)
    {
        source->applySnapshot(snapshotOf(sections), false);
    }

    TableWindow window;
    std::unique_ptr<DataSource> source;
    std::function<void(Item const& item)> onCell;
    std::vector<std::pair<std::size_t, int>> providedRows;
    Texts rowTexts;
};

} // namespace

TEST_F(Diffable, showsAHeaderForEachSectionAndARowForEachItem)
{
    apply({ { "Font", { 7 } }, { "Glyph", { 8 } } });
    EXPECT_EQ(window.shown(), (Texts { "Font", "7", "Glyph", "8" }));
    EXPECT_EQ(providedRows, (std::vector<std::pair<std::size_t, int>> { { 1, 7 }, { 3, 8 } }));
    EXPECT_EQ(source->rowForItem({ 8 }), 3u);
    EXPECT_EQ(source->rowForItem({ 9 }), std::nullopt);
    EXPECT_EQ(source->snapshot(), snapshotOf({ { "Font", { 7 } }, { "Glyph", { 8 } } }));
}

/// Sections in any order, each with some of the items, which are in one section each.
static std::vector<std::pair<std::string, std::vector<int>>> anySections()
{
    auto const items = *rc::gen::resize(8, rc::gen::unique<std::vector<int>>(rc::gen::inRange(1, 12)));
    auto const names
        = *rc::gen::resize(3, rc::gen::unique<Texts>(rc::gen::element<std::string>("a", "b", "c")));
    std::vector<std::pair<std::string, std::vector<int>>> sections;
    for (auto const& name : names) {
        sections.emplace_back(name, std::vector<int> {});
    }
    for (auto const item : items) {
        if (!sections.empty()) {
            sections[*rc::gen::inRange<std::size_t>(0, sections.size())].second.push_back(item);
        }
    }
    return sections;
}

TEST_F(Diffable, showsEachSnapshotAndNeverRemakesAViewThatStays)
{
    qtWidget(*window.table)->resize(300, 1000);
    checkSequences("any snapshots", 150, [this] {
        apply({});
        rowTexts.clear();
        for (auto const& sections :
            *rc::gen::container<std::vector<std::vector<std::pair<std::string, std::vector<int>>>>>(
                rc::gen::exec(anySections))) {
            std::map<std::string, std::weak_ptr<NSView>> before;
            for (std::size_t row = 0; row < window.table->numberOfRows(); ++row) {
                before[rowTexts[row]] = window.table->viewAtColumnRow(0, row, true);
            }
            providedRows.clear();
            apply(sections);
            rowTexts.clear();
            for (auto const& [name, items] : sections) {
                rowTexts.push_back(name);
                for (auto const item : items) {
                    RC_ASSERT(source->rowForItem({ item }) == rowTexts.size());
                    rowTexts.push_back(std::to_string(item));
                }
            }
            RC_ASSERT(source->snapshot() == snapshotOf(sections));
            RC_ASSERT(window.table->numberOfRows() == rowTexts.size());
            for (std::size_t row = 0; row < rowTexts.size(); ++row) {
                auto const view = window.table->viewAtColumnRow(0, row, true);
                auto const cell = std::dynamic_pointer_cast<TestCell>(view);
                auto const label = cell ? cell->label() : std::dynamic_pointer_cast<NSTextField>(view);
                RC_ASSERT(label->stringValue() == rowTexts[row]);
                auto const kept = before.find(rowTexts[row]);
                auto const isOldView = kept != before.end() && kept->second.lock() == view;
                RC_ASSERT(isOldView == (kept != before.end()));
            }
            for (auto const& [row, item] : providedRows) {
                RC_ASSERT(!before.contains(std::to_string(item)));
            }
        }
    });
}

TEST_F(Diffable, callsTheCompletionOnceTheTableShowsTheSnapshotAndBeforeItReturns)
{
    Texts shown;
    source->applySnapshot(snapshotOf({ { "Font", { 1 } } }), true, [&] { shown = window.shown(); });
    EXPECT_EQ(shown, (Texts { "Font", "1" }));
}

TEST_F(Diffable, stopsTheProgramAtARepeatedItemOrSectionAndNamesIt)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(apply({ { "Font", { 1, 2, 1 } } }), "number 1");
    EXPECT_DEATH(apply({ { "Font", { 1 } }, { "Glyph", { 1 } } }), "number 1");
    EXPECT_DEATH(apply({ { "Font", {} }, { "Font", {} } }), "Font");
    apply({ { "Font", { 1, 2, 3 } } });
    EXPECT_DEATH(apply({ { "Font", { 1, 2, 3, 2 } } }), "number 2");
    EXPECT_DEATH(apply({ { "Font", { 9, 1, 9, 2, 3 } } }), "number 9");
    EXPECT_DEATH(apply({ { "Font", { 4, 5, 6, 7, 8, 4 } } }), "number 4");
    EXPECT_DEATH(apply({ { "Font", { 4, 5, 6, 7, 8, 3, 2, 1, 2 } } }), "number 2");
}

TEST_F(Diffable, endsInTheNewestStateWhenAProviderAppliesAnother)
{
    onCell = [&](Item const& item) {
        if (item.number == 2) {
            onCell = {};
            apply({ { "Glyph", { 3, 4 } } });
        }
    };
    apply({ { "Font", { 1, 2, 3 } } });
    EXPECT_EQ(window.shown(), (Texts { "Glyph", "3", "4" }));
    EXPECT_EQ(source->snapshot(), snapshotOf({ { "Glyph", { 3, 4 } } }));
    EXPECT_EQ(window.table->subviews().size(), 3u);
}

TEST_F(Diffable, showsARowThatWasBeingMadeAtItsNewPlace)
{
    onCell = [&](Item const& item) {
        if (item.number == 2) {
            onCell = {};
            apply({ { "Font", { 9, 2, 1 } } });
        }
    };
    apply({ { "Font", { 1, 2, 3 } } });
    EXPECT_EQ(window.shown(), (Texts { "Font", "9", "2", "1" }));
}

TEST_F(Diffable, endsInTheNewestStateWhenACompletionAppliesAnother)
{
    source->applySnapshot(snapshotOf({ { "Font", { 1 } } }), false, [&] { apply({ { "Font", { 2 } } }); });
    EXPECT_EQ(window.shown(), (Texts { "Font", "2" }));
}

TEST_F(Diffable, mayEndWhileItIsApplying)
{
    bool completed = false;
    onCell = [&](Item const&) { source.reset(); };
    source->applySnapshot(snapshotOf({ { "Font", { 1 } } }), false, [&] { completed = true; });
    EXPECT_TRUE(completed);
}

TEST_F(Diffable, isAskedNoMoreAfterItsEnd)
{
    std::vector<int> numbers(100);
    std::iota(numbers.begin(), numbers.end(), 0);
    apply({ { "Font", numbers } });
    providedRows.clear();
    source.reset();
    window.clip().scrollToPoint({ 0, 3000 });
    EXPECT_TRUE(providedRows.empty());
    EXPECT_FALSE(window.table->subviews().empty());
}

TEST_F(Diffable, outlivesItsTable)
{
    apply({ { "Font", { 1 } } });
    window.table->removeFromSuperview();
    window.table.reset();
    bool completed = false;
    source->applySnapshot(snapshotOf({ { "Font", { 2 } } }), false, [&] { completed = true; });
    EXPECT_TRUE(completed);
}
