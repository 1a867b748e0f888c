#pragma once

#include "Typloom/TyploomApp/TLEditState.h"
#include "Typloom/TyploomCore/TLFontCommands.h"

#include <QWidget>

class TLInfoTable;
class QLabel;
class QPushButton;

/// A tab of the Font Info window: a table, a line that says why something was refused, and a button.
class TLFontInfoTab : public QWidget {
public:
    TLFontInfoTab(std::shared_ptr<TLEditState> state, QString const& tableName);

    /// Shows the document as it is.
    virtual void update() = 0;
    void endEditing();

protected:
    TLFont& font() const { return *m_state->font(); }
    TLEditState& state() const { return *m_state; }
    TLInfoTable& table() const { return *m_table; }
    /// None clears the line.
    void say(std::optional<std::string> const& reason);
    void addAbove(QWidget* widget);
    /// The button below the table, with a line of text beside it.
    QPushButton* addButton(QString const& title, QLabel* caption);
    virtual void take(std::size_t row, std::size_t column, std::string const& text) = 0;

private:
    std::shared_ptr<TLEditState> m_state;
    TLInfoTable* m_table;
    QLabel* m_reason;
};

/// The font's axes.
class TLFontInfoAxesTab final : public TLFontInfoTab {
public:
    explicit TLFontInfoAxesTab(std::shared_ptr<TLEditState> state);
    void update() override;

private:
    void take(std::size_t row, std::size_t column, std::string const& text) override;
    void addAxis();

    QLabel* m_familyName;
};

/// The font's masters: a row for each, a column for its value on each axis.
class TLFontInfoMastersTab final : public TLFontInfoTab {
public:
    explicit TLFontInfoMastersTab(std::shared_ptr<TLEditState> state);
    void update() override;
    /// Called with a sentence for each glyph that a new master could not be drawn for.
    std::function<void(std::vector<std::string> const&)> didNote;

private:
    void take(std::size_t row, std::size_t column, std::string const& text) override;
    void takeValue(TLFontMaster& master, TLAxis const& axis, std::string const& text);
    void addMaster();
    TLAddedMaster addMasterWithProgress();

    QLabel* m_place;
    QPushButton* m_addButton;
};
