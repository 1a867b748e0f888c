#pragma once

#include "Typloom/TyploomApp/TLDocumentCommands.h"
#include "Typloom/TyploomApp/TLDocumentReloading.h"
#include "Typloom/TyploomApp/TLDocumentSaving.h"
#include "Typloom/TyploomApp/TLFontInfoWindow.h"

class TLEditState;
class TLGlyph;
class TLMainWindow;
struct TLMenuCommands;

/// What is done with the document of a window as a whole: undo, saving, following its files, Font Info, and
/// asking before the window closes.
class TLDocumentOperations {
public:
    /// `didNote` is called when `notes` are others.
    TLDocumentOperations(
        std::shared_ptr<TLEditState> state, TLMainWindow& window, std::function<void()> didNote);
    TLDocumentOperations(TLDocumentOperations const&) = delete;

    void addTo(TLMenuCommands& commands);
    void update();
    /// What there is to know of the commands that have run, sentences.
    std::vector<std::string> notes() const;
    /// Closes the window, after asking where there are unsaved changes. `then` is told whether it has closed.
    void requestClose(TLDocumentSaving::Answer const& then);

private:
    void openFontInfo();
    void installFontInfoCommands();
    bool mayClose();

    std::shared_ptr<TLEditState> m_state;
    TLMainWindow& m_window;
    TLDocumentCommands m_commands;
    TLDocumentSaving m_saving;
    TLDocumentReloading m_reloading;
    std::unique_ptr<TLFontInfoWindow> m_fontInfo; ///< Null until it is opened for the first time.
    std::function<void()> m_didNote;
    std::vector<std::string> m_commandNotes, m_saveNotes, m_reloadNotes;
    std::weak_ptr<TLGlyph> m_editedGlyph;
    bool m_hasAsked { false }; ///< The user wants the window closed, whatever becomes of changes.
};
