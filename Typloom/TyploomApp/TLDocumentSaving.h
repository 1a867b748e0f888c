#pragma once

#include "Typloom/TyploomCore/TLFont.h"

#include <QMessageBox>
#include <QPointer>

#include <functional>

class QAction;
class QWidget;
class TLDocumentCommands;
struct TLSaveOptions;
struct TLSaveOutcome;

/// Saves a family's document for the user of its window, with the questions and messages that it takes, each
/// a dialog of the window. Nobody waits for an answer: what follows is called when it is there.
class TLDocumentSaving {
public:
    /// Told whether what was asked for has happened.
    using Answer = std::function<void(bool)>;

    TLDocumentSaving(std::shared_ptr<TLFont> font, QWidget& window, TLDocumentCommands const& commands);
    TLDocumentSaving(TLDocumentSaving const&) = delete;

    /// Can be chosen while there is something to save.
    QAction* saveAction() const { return m_save; }
    void update();
    void save(Answer const& then = {});
    /// Asks what is to become of unsaved changes, where there are any. False: the window is to stay open.
    void askBeforeClosing(Answer const& then);
    /// Called after saving, with what there is to know about it.
    void setSaveHandler(std::function<void(std::vector<std::string> const& notes)> handler);

private:
    bool showsQuestion() const;
    void ask(QMessageBox& box);
    void attempt(TLSaveOptions options, Answer const& then);
    void askWhetherToSave(TLSaveOptions options, TLSaveOutcome const& outcome, Answer const& then);

    std::shared_ptr<TLFont> m_font;
    QWidget& m_window;
    TLDocumentCommands const& m_commands;
    QAction* m_save;
    QPointer<QMessageBox> m_question; ///< The last one.
    std::function<void(std::vector<std::string> const&)> m_didSave;
};
