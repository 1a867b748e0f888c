#include "Typloom/TyploomApp/TLInfoTable.h"

#include "Platform/Qt/Conversions.h"

#include <QEvent>
#include <QHeaderView>
#include <QLineEdit>

TLInfoTable::TLInfoTable(QString const& name)
{
    setAccessibleName(name);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(DoubleClicked | SelectedClicked | EditKeyPressed | AnyKeyPressed);
    setTabKeyNavigation(false);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    verticalHeader()->hide();
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setMinimumSectionSize(64);
    connect(this, &QTableWidget::itemChanged, this, [this](QTableWidgetItem const* item) {
        if (!m_isShowing) {
            didEdit(*item);
        }
    });
}

void TLInfoTable::setContent(QStringList const& headers, std::vector<Row> rows)
{
    m_isShowing = true;
    auto const count = static_cast<int>(rows.size());
    if (headers != m_headers || count != rowCount()) {
        setColumnCount(static_cast<int>(headers.size()));
        setRowCount(count);
        setHorizontalHeaderLabels(headers);
        horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
        horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
        m_headers = headers;
    }
    for (std::size_t row = 0; row < rows.size(); ++row) {
        for (std::size_t column = 0; column < rows[row].size(); ++column) {
            // Any change would put the old text into an editor that is open on the cell.
            if (auto const& cell = rows[row][column]; !shows(row, column, cell)) {
                show(static_cast<int>(row), static_cast<int>(column), cell);
            }
        }
    }
    m_rows = std::move(rows);
    m_isShowing = false;
}

bool TLInfoTable::shows(std::size_t row, std::size_t column, Cell const& cell) const
{
    auto const* entry = item(static_cast<int>(row), static_cast<int>(column));
    return entry && entry->text() == cell.text && row < m_rows.size() && column < m_rows[row].size()
        && m_rows[row][column] == cell;
}

void TLInfoTable::show(int row, int column, Cell const& cell)
{
    auto* entry = item(row, column);
    if (!entry) {
        entry = new QTableWidgetItem;
        setItem(row, column, entry);
    }
    entry->setText(cell.text);
    auto const flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    entry->setFlags(cell.isEditable ? flags | Qt::ItemIsEditable : flags);
    Qt::Alignment const alignment = (cell.isNumber ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
    entry->setTextAlignment(alignment);
    entry->setToolTip(cell.toolTip);
    showColor(*entry);
    if (auto* const header = horizontalHeaderItem(column)) {
        header->setTextAlignment(alignment);
    }
}

void TLInfoTable::showColor(QTableWidgetItem& entry) const
{
    bool const isEditable = entry.flags() & Qt::ItemIsEditable;
    entry.setForeground(palette().brush(isEditable ? QPalette::Text : QPalette::PlaceholderText));
}

void TLInfoTable::changeEvent(QEvent* event)
{
    QTableWidget::changeEvent(event);
    if (event->type() != QEvent::PaletteChange) {
        return;
    }
    m_isShowing = true;
    for (int cell = 0; cell < rowCount() * columnCount(); ++cell) {
        if (auto* const entry = item(cell / columnCount(), cell % columnCount())) {
            showColor(*entry);
        }
    }
    m_isShowing = false;
}

void TLInfoTable::didEdit(QTableWidgetItem const& edited)
{
    auto const row = static_cast<std::size_t>(edited.row());
    auto const column = static_cast<std::size_t>(edited.column());
    if (take && edited.text() != m_rows[row][column].text) {
        take(row, column, fromQString(edited.text()));
    }
    if (refresh) {
        refresh();
    }
}

void TLInfoTable::beginEditing(std::size_t row, std::size_t column)
{
    auto* const entry = item(static_cast<int>(row), static_cast<int>(column));
    if (entry) {
        setCurrentItem(entry);
        scrollToItem(entry);
        editItem(entry);
    }
}

void TLInfoTable::endEditing()
{
    if (state() != EditingState) {
        return;
    }
    if (auto* const editor = viewport()->findChild<QLineEdit*>()) {
        commitData(editor);
        closeEditor(editor, QAbstractItemDelegate::NoHint);
    }
}
