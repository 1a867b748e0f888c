#pragma once

#include "Platform/AppKit/NSTableView.h"

#include <span>

/// Where the rows of a list lie: section headers are of one height, all other rows of another. Points,
/// from the top of the first row. Memory and time go with the headers, not with the rows.
class PLATFORM_API RowGeometry {
public:
    void setRows(std::span<NSTableRow const> rows);
    void setItemHeight(double height) { m_itemHeight = height; }
    double itemHeight() const { return m_itemHeight; }

    std::size_t count() const { return m_count; }
    double totalHeight() const { return top(m_count); }
    /// Of a row, or of the end of the list.
    double top(std::size_t row) const;
    double height(std::size_t row) const { return top(row + 1) - top(row); }
    /// The row at a place; the nearest for one beyond the ends. 0 for an empty list.
    std::size_t rowAt(double y) const;

    static constexpr double headerHeight = 26;

private:
    std::size_t m_count { 0 };
    std::vector<std::size_t> m_headers; ///< Rows that are headers, ascending.
    double m_itemHeight { 24 }; ///< A usual height, until the first row has been measured.
};
