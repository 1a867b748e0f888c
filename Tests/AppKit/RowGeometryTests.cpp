#include "Platform/AppKit/RowGeometry.h"

#include <gtest/gtest.h>

namespace {

/// Rows by kind: 'h' a header, 'i' an item.
RowGeometry geometryOf(std::string_view kinds)
{
    std::vector<NSTableRow> rows;
    for (char const kind : kinds) {
        rows.push_back({ .token = rows.size() + 1, .isGroupRow = kind == 'h' });
    }
    RowGeometry geometry;
    geometry.setRows(rows);
    geometry.setItemHeight(50);
    return geometry;
}

} // namespace

TEST(RowGeometry, stacksHeadersAndItems)
{
    auto const geometry = geometryOf("hiihi");
    std::vector<double> tops;
    for (std::size_t row = 0; row <= geometry.count(); ++row) {
        tops.push_back(geometry.top(row));
    }
    EXPECT_EQ(tops, (std::vector<double> { 0, 26, 76, 126, 152, 202 }));
    EXPECT_EQ(geometry.totalHeight(), 202);
    EXPECT_EQ(geometry.height(3), 26);
    EXPECT_EQ(geometry.height(4), 50);
}

TEST(RowGeometry, findsTheRowAtAPlaceAndTheNearestBeyondTheEnds)
{
    auto const geometry = geometryOf("hiihi");
    std::vector<std::size_t> rows;
    for (double const y : { -10.0, 0.0, 25.9, 26.0, 75.9, 76.0, 126.0, 152.0, 1000.0 }) {
        rows.push_back(geometry.rowAt(y));
    }
    EXPECT_EQ(rows, (std::vector<std::size_t> { 0, 0, 0, 1, 1, 2, 3, 4, 4 }));
    EXPECT_EQ(geometryOf("").rowAt(5), 0u);
    EXPECT_EQ(geometryOf("").totalHeight(), 0);
}
