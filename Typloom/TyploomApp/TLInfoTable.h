#pragma once

#include <QTableWidget>

#include <functional>
#include <string>
#include <vector>

/// A table whose cells are edited in place. What is typed is handed over; then the table is shown anew, so
/// that what was not taken gives way to what was there.
class TLInfoTable final : public QTableWidget {
public:
    struct Cell {
        QString text;
        bool isEditable { false };
        bool isNumber { false };
        QString toolTip {};
        bool operator==(Cell const&) const = default;
    };
    using Row = std::vector<Cell>;

    explicit TLInfoTable(QString const& name);

    /// Takes what was typed into a cell.
    std::function<void(std::size_t row, std::size_t column, std::string const& text)> take;
    /// Gives the table its content after that.
    std::function<void()> refresh;

    /// Cells that stay as they are keep their selection and an editor that is open on them.
    void setContent(QStringList const& headers, std::vector<Row> rows);
    void beginEditing(std::size_t row, std::size_t column);
    /// Takes what is being typed and closes the editor.
    void endEditing();

protected:
    void changeEvent(QEvent* event) override;

private:
    bool shows(std::size_t row, std::size_t column, Cell const& cell) const;
    void show(int row, int column, Cell const& cell);
    void showColor(QTableWidgetItem& entry) const;
    void didEdit(QTableWidgetItem const& item);

    std::vector<Row> m_rows;
    QStringList m_headers;
    bool m_isShowing { false };
};
