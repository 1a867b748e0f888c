#include "Platform/AppKit/RowGeometry.h"

#include <algorithm>

void RowGeometry::setRows(std::span<NSTableRow const> rows)
{
    m_count = rows.size();
    m_headers.clear();
    for (std::size_t row = 0; row < rows.size(); ++row) {
        if (rows[row].isGroupRow) {
            m_headers.push_back(row);
        }
    }
}

double RowGeometry::top(std::size_t row) const
{
    auto const before = std::lower_bound(m_headers.begin(), m_headers.end(), row);
    auto const headers = static_cast<double>(before - m_headers.begin());
    return headers * headerHeight + (static_cast<double>(row) - headers) * m_itemHeight;
}

std::size_t RowGeometry::rowAt(double y) const
{
    std::size_t low = 0; // The row sought is in [low, high).
    std::size_t high = m_count;
    while (high - low > 1) {
        auto const middle = low + (high - low) / 2;
        (top(middle) <= y ? low : high) = middle;
    }
    return low;
}
