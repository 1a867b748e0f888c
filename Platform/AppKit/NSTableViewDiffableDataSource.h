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
template <class SectionIdentifier, class ItemIdentifier>
class NSTableViewDiffableDataSource {
public:
    using Snapshot = NSDiffableDataSourceSnapshot<SectionIdentifier, ItemIdentifier>;
    using CellProvider = std::function<std::shared_ptr<NSView>(
        std::shared_ptr<NSTableView> const& table, std::size_t column, std::size_t row, ItemIdentifier const& item)>;
    using SectionHeaderViewProvider = std::function<std::shared_ptr<NSView>(
        std::shared_ptr<NSTableView> const& table, std::size_t row, SectionIdentifier const& section)>;

    NSTableViewDiffableDataSource(std::shared_ptr<NSTableView> const& table, CellProvider cellProvider);
    ~NSTableViewDiffableDataSource();

    void setSectionHeaderViewProvider(SectionHeaderViewProvider provider) { m_headerProvider = std::move(provider); }
    void setDefaultRowAnimation(NSTableViewAnimationOptions animation) { m_defaultRowAnimation = animation; }

    Snapshot const& snapshot() const { return m_snapshot; }
    /// Shows the snapshot, then calls the completion, on the main thread, before it returns.
    void applySnapshot(Snapshot snapshot, bool animatingDifferences, std::function<void()> completion = {});
    std::optional<std::size_t> rowForItem(ItemIdentifier const& item) const;

private:
    struct Row;
    std::weak_ptr<NSTableView> m_table;
    CellProvider m_cellProvider;
    SectionHeaderViewProvider m_headerProvider;
    NSTableViewAnimationOptions m_defaultRowAnimation { NSTableViewAnimationOptions::effectFade };
    Snapshot m_snapshot;
};
