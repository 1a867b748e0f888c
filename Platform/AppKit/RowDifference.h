#pragma once

#include "Platform/AppKit/NSTableView.h"

#include <span>

/// What turns one list of rows into another with the fewest steps: rows are removed, inserted, and
/// taken out and put in elsewhere; all others stay and keep their order.
struct RowDifference {
    struct Move {
        std::size_t from { 0 }; ///< Index in the old list.
        std::size_t to { 0 }; ///< Index in the new list.
        bool operator==(Move const&) const = default;
    };
    std::vector<std::size_t> removed; ///< Indices in the old list, ascending.
    std::vector<std::size_t> inserted; ///< Indices in the new list, ascending.
    std::vector<Move> moved; ///< By `to`, ascending.
    bool operator==(RowDifference const&) const = default;
};

/// Rows are the same when they are equal; no list holds a row twice. Takes time in proportion to the
/// rows (times their logarithm where many of them moved), and little of it when few changed.
PLATFORM_API RowDifference rowDifference(
    std::span<NSTableRow const> before, std::span<NSTableRow const> after);
