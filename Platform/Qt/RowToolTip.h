#pragma once

#include <QObject>

struct NSTableViewBacking;

/// The tool tip of a table's rows, where nothing in them has one of its own: the heading that a row stands
/// under and the row's own name, since two sections may have rows of one name.
class RowToolTip final : public QObject {
public:
    explicit RowToolTip(NSTableViewBacking& table);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QString textAt(double y) const;

    NSTableViewBacking& m_table;
};
