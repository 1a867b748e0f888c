#pragma once

#include "Typloom/TyploomApp/TLDocumentCommands.h"
#include "Typloom/TyploomApp/TLDocumentCopying.h"
#include "Typloom/TyploomApp/TLDocumentReloading.h"
#include "Typloom/TyploomApp/TLDocumentSaving.h"
#include "Typloom/TyploomApp/TLFontInfoWindow.h"

class TLEditState;
class TLGlyph;
class TLMainWindow;
struct TLMenuCommands;

/// What is done with the document of a window as a whole: undo, saving it and copies of it, following its
/// files, Font Info, and asking before the window closes.
class TLDocumentOperations {
public:
    /// `didNote` is called when `problems` or `notes` are others.
    TLDocumentOperations(
        std::shared_ptr<TLEditState> state, TLMainWindow& window, std::function<void()> didNote);
    TLDocumentOperations(TLDocumentOperations const&) = delete;

    void addTo(TLMenuCommands& commands);
    void update();
    /// What of the files could not be followed, sentences.
    std::vector<std::string> const& problems() const { return m_problems; }
    /// What there is to know of the last save, and of the last command since, sentences.
    std::vector<std::string> notes() const;
    /// What comes before the window closes.
    TLDocumentSaving& saving() { return m_saving; }
    /// Asks nothing.
    void close();

private:
    void openFontInfo();
    void installFontInfoCommands();
    bool mayClose();

    std::shared_ptr<TLEditState> m_state;
    TLMainWindow& m_window;
    TLDocumentCommands m_commands;
    TLDocumentCopying m_copying;
    TLDocumentSaving m_saving;
    TLDocumentReloading m_reloading;
    std::unique_ptr<TLFontInfoWindow> m_fontInfo; ///< Null until it is opened for the first time.
    std::function<void()> m_didNote;
    std::vector<std::string> m_commandNotes, m_saveNotes, m_problems;
    std::weak_ptr<TLGlyph> m_editedGlyph;
    bool m_closes { false }; ///< Whatever becomes of changes.
};
