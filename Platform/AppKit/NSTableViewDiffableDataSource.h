#pragma once

#include "Platform/AppKit/NSDiffableDataSourceSnapshot.h"
#include "Platform/AppKit/NSTableView.h"

#include <optional>
#include <unordered_map>

/// Shows snapshots in a table: a header row for each section and a row for each item. A new
/// snapshot becomes removals, insertions and moves; views of rows in both stay as they are.
///
/// Items and sections need `std::hash`, `==` and a `describe(x)` found by argument-dependent look-up,
/// which names one in the message that stops the program when a snapshot holds it twice.
template <class SectionIdentifier, class ItemIdentifier> class NSTableViewDiffableDataSource {
public:
    using Snapshot = NSDiffableDataSourceSnapshot<SectionIdentifier, ItemIdentifier>;
    using CellProvider = std::function<std::shared_ptr<NSView>(std::shared_ptr<NSTableView> const& table,
        std::size_t column, std::size_t row, ItemIdentifier const& item)>;
    using SectionHeaderViewProvider = std::function<std::shared_ptr<NSView>(
        std::shared_ptr<NSTableView> const& table, std::size_t row, SectionIdentifier const& section)>;

    NSTableViewDiffableDataSource(std::shared_ptr<NSTableView> const& table, CellProvider cellProvider);

    /// Without a provider sections have no header row. Takes effect with the next snapshot.
    void setSectionHeaderViewProvider(SectionHeaderViewProvider provider)
    {
        m_state->headerProvider = std::move(provider);
    }
    /// Without effect: rows appear and go at once.
    void setDefaultRowAnimation(NSTableViewAnimationOptions) { }

    Snapshot const& snapshot() const { return m_state->snapshot; }
    /// Shows the snapshot, then calls the completion, on the main thread, before it returns.
    void applySnapshot(Snapshot snapshot, bool animatingDifferences, std::function<void()> completion = {});
    /// The table's row of an item, header rows counted; none for an item that is not in the snapshot.
    std::optional<std::size_t> rowForItem(ItemIdentifier const& item) const;

private:
    /// Where in the snapshot a row is from.
    struct Place {
        std::size_t section { 0 };
        std::size_t item { 0 }; ///< Not looked at for a section's header.
    };
    /// What one snapshot means in rows of the table.
    struct Layout {
        std::vector<NSTableRow> rows;
        std::vector<Place> places; ///< Of the rows.
        std::unordered_map<SectionIdentifier, std::uint64_t> sectionTokens;
        std::unordered_map<ItemIdentifier, std::size_t> rowOfItem;
    };
    /// Shared with an application that is going on, which the data source need not outlive.
    struct State {
        std::weak_ptr<NSTableView> table;
        CellProvider cellProvider;
        SectionHeaderViewProvider headerProvider;
        Snapshot snapshot;
        Layout layout;
        std::uint64_t lastToken { 0 };
    };
    static Layout layoutOf(Snapshot const& snapshot, State& state);
    static void appendSection(
        typename Snapshot::Section const& section, std::size_t index, State& state, Layout& layout);
    static std::shared_ptr<NSView> makeRowView(State const& state, std::size_t row);

    std::shared_ptr<State> m_state { std::make_shared<State>() };
};

template <class S, class I>
NSTableViewDiffableDataSource<S, I>::NSTableViewDiffableDataSource(
    std::shared_ptr<NSTableView> const& table, CellProvider cellProvider)
{
    m_state->table = table;
    m_state->cellProvider = std::move(cellProvider);
    table->setRowViewProvider([weakState = std::weak_ptr(m_state)](std::size_t row) {
        auto const state = weakState.lock();
        return state ? makeRowView(*state, row) : nullptr;
    });
}

template <class S, class I>
void NSTableViewDiffableDataSource<S, I>::applySnapshot(
    Snapshot snapshot, bool /*animatingDifferences*/, std::function<void()> completion)
{
    // A provider or the completion may apply another snapshot, or end the data source.
    auto const state = m_state;
    state->layout = layoutOf(snapshot, *state);
    state->snapshot = std::move(snapshot);
    if (auto const table = state->table.lock()) {
        table->setRows(state->layout.rows);
    }
    if (completion) {
        completion();
    }
}

template <class S, class I>
auto NSTableViewDiffableDataSource<S, I>::layoutOf(Snapshot const& snapshot, State& state) -> Layout
{
    Layout layout;
    layout.rowOfItem.reserve(snapshot.numberOfItems());
    auto const& sections = snapshot.sections();
    for (std::size_t section = 0; section < sections.size(); ++section) {
        appendSection(sections[section], section, state, layout);
    }
    return layout;
}

template <class S, class I>
void NSTableViewDiffableDataSource<S, I>::appendSection(
    typename Snapshot::Section const& section, std::size_t index, State& state, Layout& layout)
{
    Layout const& before = state.layout;
    auto const known = before.sectionTokens.find(section.identifier);
    auto const token = known == before.sectionTokens.end() ? ++state.lastToken : known->second;
    if (!layout.sectionTokens.emplace(section.identifier, token).second) {
        NSFatalError("a snapshot holds the section " + std::string(describe(section.identifier)) + " twice");
    }
    if (state.headerProvider) {
        layout.places.push_back({ .section = index });
        layout.rows.push_back({ .token = token, .isGroupRow = true });
    }
    for (std::size_t item = 0; item < section.items.size(); ++item) {
        auto const& identifier = section.items[item];
        if (!layout.rowOfItem.emplace(identifier, layout.rows.size()).second) {
            NSFatalError("a snapshot holds the item " + std::string(describe(identifier)) + " twice");
        }
        auto const row = before.rowOfItem.find(identifier);
        bool const isNew = row == before.rowOfItem.end();
        layout.places.push_back({ .section = index, .item = item });
        layout.rows.push_back({ .token = isNew ? ++state.lastToken : before.rows[row->second].token });
    }
}

template <class S, class I>
std::shared_ptr<NSView> NSTableViewDiffableDataSource<S, I>::makeRowView(State const& state, std::size_t row)
{
    auto const table = state.table.lock();
    if (!table || row >= state.layout.places.size()) {
        return nullptr;
    }
    // Copies of what is asked and of what it is asked for: the provider may apply another snapshot.
    auto const place = state.layout.places[row];
    auto const& section = state.snapshot.sections()[place.section];
    if (state.layout.rows[row].isGroupRow) {
        auto const provider = state.headerProvider;
        auto const identifier = section.identifier;
        return provider ? provider(table, row, identifier) : nullptr;
    }
    auto const provider = state.cellProvider;
    auto const item = section.items[place.item];
    return provider ? provider(table, 0, row, item) : nullptr;
}

template <class S, class I>
std::optional<std::size_t> NSTableViewDiffableDataSource<S, I>::rowForItem(I const& item) const
{
    auto const row = m_state->layout.rowOfItem.find(item);
    return row == m_state->layout.rowOfItem.end() ? std::nullopt : std::optional(row->second);
}
