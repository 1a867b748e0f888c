#pragma once

#include <QAccessible>

#include <cstdint>
#include <unordered_map>

class QtTableView;
class QWidget;
struct NSTableViewBacking;

/// The rows of a table as a screen reader finds them: one entry for each, whether the row has a view now or
/// not, which stays the same while the row scrolls in and out of sight. Entries are made when somebody asks.
class AccessibleRows {
public:
    ~AccessibleRows();
    QAccessibleInterface* entry(QtTableView& table, std::uint64_t token);
    /// After rows were removed.
    void forgetRemoved(NSTableViewBacking const& table);
    /// A row has got a view, or is about to lose it.
    void viewAdded(QtTableView& table, std::uint64_t token, QWidget& rowWidget);
    void viewGoes(QWidget& rowWidget) const;

private:
    std::unordered_map<std::uint64_t, QAccessible::Id> m_entries;
};

/// A list of the table's rows and its scroller; null where the widget is no table's.
QAccessibleInterface* makeAccessibleTable(QWidget& widget);

/// The entry of the row whose view's widget this is, null for any other widget.
QAccessibleInterface* accessibleRowOf(QWidget const& rowWidget);
