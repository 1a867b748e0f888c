#pragma once

#include "Platform/AppKit/NSDiffableDataSourceSnapshot.h"
#include "Platform/AppKit/NSItemTokens.h"
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
    using Tokens = NSItemTokens<ItemIdentifier>;
    static Layout layoutOf(Snapshot const& snapshot, State& state);
    /// The items of a snapshot in their order, with no tokens yet.
    static std::vector<typename Tokens::Entry> itemsOf(Snapshot const& snapshot);
    /// The same with their tokens: those that they have already, new ones for new items.
    static std::vector<typename Tokens::Entry> itemsWithTokens(Snapshot const& snapshot, State& state);
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
    auto const items = itemsWithTokens(snapshot, state);
    layout.rows.reserve(items.size() + snapshot.numberOfSections());
    layout.places.reserve(layout.rows.capacity());
    auto next = items.begin();
    for (std::size_t index = 0; index < snapshot.numberOfSections(); ++index) {
        auto const& section = snapshot.sections()[index];
        auto const known = state.layout.sectionTokens.find(section.identifier);
        auto const token = known == state.layout.sectionTokens.end() ? ++state.lastToken : known->second;
        if (!layout.sectionTokens.emplace(section.identifier, token).second) {
            NSFatalError(
                "a snapshot holds the section " + std::string(describe(section.identifier)) + " twice");
        }
        if (state.headerProvider) {
            layout.places.push_back({ .section = index });
            layout.rows.push_back({ .token = token, .isGroupRow = true });
        }
        for (std::size_t item = 0; item < section.items.size(); ++item, ++next) {
            layout.places.push_back({ .section = index, .item = item });
            layout.rows.push_back({ .token = next->token });
        }
    }
    return layout;
}

template <class S, class I>
auto NSTableViewDiffableDataSource<S, I>::itemsOf(Snapshot const& snapshot)
    -> std::vector<typename Tokens::Entry>
{
    std::vector<typename Tokens::Entry> entries;
    entries.reserve(snapshot.numberOfItems());
    for (auto const& section : snapshot.sections()) {
        for (auto const& item : section.items) {
            entries.push_back({ &item });
        }
    }
    return entries;
}

template <class S, class I>
auto NSTableViewDiffableDataSource<S, I>::itemsWithTokens(Snapshot const& snapshot, State& state)
    -> std::vector<typename Tokens::Entry>
{
    auto before = itemsOf(state.snapshot);
    auto at = before.begin();
    for (auto const& row : state.layout.rows) {
        if (!row.isGroupRow) {
            (at++)->token = row.token;
        }
    }
    auto items = itemsOf(snapshot);
    if (auto const repeated = Tokens(std::move(before)).fillIn(items)) {
        NSFatalError("a snapshot holds the item " + std::string(describe(*items[*repeated].item)) + " twice");
    }
    for (auto& item : items) {
        item.token = item.token == 0 ? ++state.lastToken : item.token;
    }
    return items;
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
    auto const& [rows, places, sectionTokens] = m_state->layout;
    for (std::size_t row = 0; row < rows.size(); ++row) {
        auto const& place = places[row];
        if (!rows[row].isGroupRow && m_state->snapshot.sections()[place.section].items[place.item] == item) {
            return row;
        }
    }
    return std::nullopt;
}
