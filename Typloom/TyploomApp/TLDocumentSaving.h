#pragma once

#include "Typloom/TyploomCore/TLFont.h"

#include <QMessageBox>
#include <QPointer>

#include <functional>

class QAction;
class QWidget;
class TLDocumentCommands;
class TLDocumentCopying;
struct TLSaveOptions;
struct TLSaveOutcome;

/// Saves a family's document for the user of its window, with the questions and messages that it takes, each
/// a dialog of the window. Nobody waits for an answer: what follows is called when it is there.
class TLDocumentSaving {
public:
    /// Told whether what was asked for has happened.
    using Answer = std::function<void(bool)>;

    /// `copying` is offered when a save fails.
    TLDocumentSaving(std::shared_ptr<TLFont> font, QWidget& window, TLDocumentCommands const& commands,
        TLDocumentCopying& copying);
    TLDocumentSaving(TLDocumentSaving const&) = delete;

    /// Can be chosen while there is something to save.
    QAction* saveAction() const { return m_save; }
    void update();
    void save(Answer const& then = {});
    /// Whether nothing is to be asked before the window closes: there are no changes that are not saved, or
    /// just those that the user gave up. Takes what is being typed.
    bool mayClose() const;
    /// Asks what is to become of unsaved changes, where there are any. False: the window is to stay open.
    void askBeforeClosing(Answer const& then);
    /// The user has not given up any changes after all.
    void forgetAnswer() { m_discarded.reset(); }
    /// Called after saving, with what there is to know about it.
    void setSaveHandler(std::function<void(std::vector<std::string> const& notes)> handler);

private:
    /// What differs from the files, as it is now.
    using Changes = std::pair<TLFontState, std::map<std::string, TLGlyphState>>;
    Changes changesNow() const;
    bool showsQuestion() const;
    void ask(QMessageBox& box);
    void attempt(TLSaveOptions options, Answer const& then);
    void askWhetherToSave(TLSaveOptions options, TLSaveOutcome const& outcome, Answer const& then);

    std::shared_ptr<TLFont> m_font;
    std::optional<std::uint64_t>
        m_judgedRevision; ///< Of the document; whether it is saved was found out then.
    QWidget& m_window;
    TLDocumentCommands const& m_commands;
    TLDocumentCopying& m_copying;
    QAction* m_save;
    QPointer<QMessageBox> m_question; ///< The last one.
    std::optional<Changes> m_discarded; ///< Those that the user has given up.
    std::function<void(std::vector<std::string> const&)> m_didSave;
};
