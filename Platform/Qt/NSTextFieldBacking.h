#pragma once

#include "Platform/AppKit/NSTextField.h"
#include "Platform/Qt/NSViewBacking.h"
#include "Platform/Qt/QtLabel.h"
#include "Platform/Qt/QtTextField.h"

/// The toolkit's side of a text field: one editing at a time, from the user's first change of the
/// text to its end by Return, Escape or leaving, or by a text from code.
struct NSTextFieldBacking : NSViewBacking {
    explicit NSTextFieldBacking(NSTextField::Kind kind);
    ~NSTextFieldBacking() override;
    void attach(NSView& owner) override;

    QString text() const;
    /// Shows a text from code and ends the editing. The keyboard stays, and what was selected whole
    /// is selected whole again.
    void show(QString const& text);
    /// Takes over what an interface description has put into the widget.
    void takeTextOfWidget();
    /// Whether the user has changed the text since it was last committed or set.
    bool isEdited() const { return m_edited; }
    /// The text before the user's change.
    QString const& committedText() const { return m_committed; }

    /// Gives back what was there before the user's change; a search field keeps its text.
    void dropEditing();

    QPointer<QtLabel> label; ///< Null for a field.
    QPointer<QtTextField> field; ///< Null for a label.
    /// What is typed counts at once: there is nothing to take back, and Escape clears.
    bool isSearchField { false };

private:
    enum class Commit { byReturn, byLeaving };

    NSTextField& owner() const { return static_cast<NSTextField&>(*view); }
    void userChangedText();
    void notifyChange();
    /// Makes a number of the typed text, where there is a formatter. False for text that is none.
    bool readTypedText();
    bool handleCommand(std::string_view selector);
    void commit(Commit how);
    void forgetTyping() const;
    bool cancel();
    bool cancelSearch();
    bool step(double direction, bool big);
    void endEditing();

    bool m_edited { false };
    QString m_committed;
};
