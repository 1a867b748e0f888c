#pragma once

#include "Platform/AppKit/NSTableView.h"
#include "Platform/AppKit/RowGeometry.h"
#include "Platform/Qt/NSViewBacking.h"
#include "Platform/Qt/QtTableView.h"
#include "Platform/Qt/RowViewPool.h"
#include "Platform/Qt/TableAccessibility.h"

#include <set>
#include <unordered_map>

/// The toolkit's side of a table: lays views over the rows that can be seen.
///
/// Providers of views may call back into the table, change its rows included. So a pass over the rows
/// begins again whenever another one has run while a view was being made.
struct NSTableViewBacking : NSViewBacking {
    NSTableViewBacking();
    ~NSTableViewBacking() override;
    void attach(NSView& owner) override;
    QWidget* subviewParent() override;

    NSTableView::Changes setRows(std::vector<NSTableRow> wanted);
    /// Gives views to the rows in sight and takes them from the others.
    void tile();
    std::shared_ptr<NSView> viewOfRow(std::size_t row, bool makeIfNecessary);
    /// Null also for a view that somebody wanted to see and that goes back on the next turn.
    std::shared_ptr<NSView> lastingViewOfRow(std::size_t row) const;

    /// What can be seen, in the document's coordinates: from the top of the first row.
    NSRect visibleRect() const;
    void scrollTo(double y);
    void scrollRowToVisible(std::size_t row);
    void setContentInsets(NSEdgeInsets insets);
    /// None for a row that is no more.
    std::optional<std::size_t> rowWithToken(std::uint64_t token) const;
    /// The token of the row that this is the widget of, none where it is no row's.
    std::optional<std::uint64_t> tokenOf(QWidget const& rowWidget) const;
    /// The widgets of the rows in sight, from the top.
    std::vector<QWidget*> rowWidgets() const;

    std::vector<NSTableRow> rows;
    RowGeometry geometry;
    NSTableView::RowViewProvider provider;
    RowViewPool pool;
    AccessibleRows accessibleRows;

private:
    struct RowView {
        std::shared_ptr<NSView> view;
        std::size_t row { 0 };
        bool isGroupRow { false };

        bool holds(QWidget const* control) const;
    };
    struct Range {
        std::size_t first { 0 };
        std::size_t end { 0 };
        bool contains(std::size_t row) const { return row >= first && row < end; }
    };
    /// Rows of which one is to stay where it is on screen, the most wanted first.
    struct Place {
        std::uint64_t token { 0 };
        double y { 0 }; ///< Below the upper edge of what can be seen.
    };

    Range wantedRows() const;
    bool isHeld(RowView const& row) const;
    void releaseRows(Range wanted);
    void takeBack(std::vector<RowView> const& released);
    void makeRow(std::size_t row);
    void adopt(std::shared_ptr<NSView> const& made, std::size_t row);
    void measure(RowView const& row);
    void placeRows();
    void orderKeyboard();
    void updateScrollRange();
    std::vector<Place> placesToKeep() const;
    void keepPlace(std::vector<Place> const& places);
    std::vector<RowView> renumberRows();
    void tileLater();

    QPointer<QtTableView> m_scroller;
    std::unique_ptr<QObject> m_rowToolTip;
    NSEdgeInsets m_insets;
    std::unordered_map<std::uint64_t, RowView> m_live; ///< By the rows' tokens.
    std::set<std::uint64_t> m_making;
    std::size_t m_pass { 0 };
    bool m_updatesScrollRange { false };
    bool m_ordersKeyboard { false };
    bool m_tilesLater { false };
    bool m_isMeasured { false };
};
