#pragma once

#include "Moravel/Model/SidebarItem.h"
#include "Platform/AppKit/NSDiffableDataSourceSnapshot.h"
#include "Typloom/TyploomCore/TLAxis.h"

#include <optional>
#include <unordered_map>
#include <vector>

/// What a row shows. All values are design coordinates.
struct RowContent {
    std::shared_ptr<TLAxis> axis; ///< Never null; compared by identity.
    /// Lower bound, default, upper bound. A row without exactly three values has no usable range.
    std::optional<std::vector<double>> range;
    /// Where masters or intermediate layers stand on the axis; ascending, each value once.
    std::optional<std::vector<double>> landmarks;
    double position { 0 };
    bool operator==(RowContent const&) const = default;
};

using RowContentByItem = std::unordered_map<SidebarItem, RowContent>;
using SidebarSnapshot = NSDiffableDataSourceSnapshot<Section, SidebarItem>;

/// The whole table at one moment. Each item of the snapshot has a content, and nothing else has one.
struct MoravelTableModel {
    SidebarSnapshot snapshot;
    RowContentByItem rowContentByItem;
};
