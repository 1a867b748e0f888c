#pragma once

#include "Moravel/Model/MoravelTableModel.h"

#include <unordered_set>

/// Posted for each row whose content changed, after all contents were replaced. Object: the `TableState`;
/// user info: the `SidebarItem` under "item".
inline constexpr char const* moravelRowContentDidChange = "moravelRowContentDidChange";
/// Posted when another row, or none, is being edited. Object: the `TableState`; no user info.
inline constexpr char const* moravelEditingStateDidChange = "moravelEditingStateDidChange";
inline constexpr char const* moravelItemKey = "item";

/// What a sidebar's rows show, and which of them is being edited: the state that one
/// `SidebarViewController` shares with its rows.
class TableState : public std::enable_shared_from_this<TableState> {
public:
    /// The contents of the model that was applied last.
    RowContentByItem const& rowContentByItem() const { return m_rowContentByItem; }
    /// Replaces all contents. Nobody is told: see `postRowContentChanges`.
    void setRowContentByItem(RowContentByItem contents) { m_rowContentByItem.swap(contents); }

    std::optional<SidebarItem> const& editingItem() const { return m_editingItem; }
    void setEditingItem(std::optional<SidebarItem> const& item);

    /// The row that shows this very axis object, none when no row does.
    std::optional<SidebarItem> itemForAxis(std::shared_ptr<TLAxis> const& axis) const;

    /// The items that `contents` adds or gives another content, compared with what is shown now.
    /// The row that shows `refreshingAxis` now counts as changed: equality does not see, for example,
    /// a new name of the same axis. Null: no such axis.
    std::unordered_set<SidebarItem> changedItems(
        RowContentByItem const& contents, std::shared_ptr<TLAxis> const& refreshingAxis) const;

    void postRowContentChanges(std::unordered_set<SidebarItem> const& items);

private:
    RowContentByItem m_rowContentByItem;
    std::optional<SidebarItem> m_editingItem;
};
