#include "Moravel/TableState.h"

#include "Platform/Foundation/NSMainThread.h"
#include "Platform/Foundation/NSNotificationCenter.h"

#include <algorithm>

void TableState::setEditingItem(std::optional<SidebarItem> const& item)
{
    NSAssertMainThread();
    if (item == m_editingItem) {
        return;
    }
    m_editingItem = item;
    NSNotificationCenter::defaultCenter().post(moravelEditingStateDidChange, shared_from_this());
}

std::optional<SidebarItem> TableState::itemForAxis(std::shared_ptr<TLAxis> const& axis) const
{
    NSAssertMainThread();
    auto const entry = std::ranges::find_if(
        m_rowContentByItem, [&](auto const& itemAndContent) { return itemAndContent.second.axis == axis; });
    return entry == m_rowContentByItem.end() ? std::nullopt : std::optional(entry->first);
}

std::unordered_set<SidebarItem> TableState::changedItems(
    RowContentByItem const& contents, std::shared_ptr<TLAxis> const& refreshingAxis) const
{
    NSAssertMainThread();
    std::unordered_set<SidebarItem> changed;
    for (auto const& [item, content] : contents) {
        auto const shown = m_rowContentByItem.find(item);
        if (shown == m_rowContentByItem.end() || shown->second != content) {
            changed.insert(item);
        }
    }
    if (refreshingAxis) {
        if (auto item = itemForAxis(refreshingAxis)) {
            changed.insert(std::move(*item));
        }
    }
    return changed;
}

void TableState::postRowContentChanges(std::unordered_set<SidebarItem> const& items)
{
    NSAssertMainThread();
    // An observer may release the last other reference to this state.
    auto const self = shared_from_this();
    for (auto const& item : items) {
        NSNotificationCenter::defaultCenter().post(
            moravelRowContentDidChange, self, { { moravelItemKey, item } });
    }
}
