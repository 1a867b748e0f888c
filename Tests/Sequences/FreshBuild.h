#pragma once

#include "Moravel/Model/MoravelTableModel.h"
#include "Tests/Sequences/LiveHost.h"

/// One row as the rules of the table say that it should be.
struct FreshRow {
    SidebarItem item;
    RowContent content;
    bool operator==(FreshRow const&) const = default;
};

/// The layer that a sidebar over that host works on: of a preview the real one. May be null.
std::shared_ptr<TLLayer> freshActiveLayer(LiveHost const& host);

/// The rows that a table made now would have, in order. Worked out by the plain rules, row by row, and by
/// none of the sidebar's code. `query`: the filter, trimmed, in ASCII.
std::vector<FreshRow> freshRows(LiveHost const& host, std::string const& query);

/// Whether a row can be moved; what it shows hangs on that.
bool freshIsUsable(FreshRow const& row);

std::string describe(FreshRow const& row);
