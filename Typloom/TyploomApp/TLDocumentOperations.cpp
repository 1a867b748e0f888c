#include "Typloom/TyploomApp/TLDocumentOperations.h"

#include "Platform/AppKit/NSApplication.h"
#include "Platform/Qt/Conversions.h"
#include "Typloom/TyploomApp/TLDocumentMenus.h"
#include "Typloom/TyploomApp/TLEditState.h"
#include "Typloom/TyploomApp/TLMainWindow.h"
#include "Typloom/TyploomApp/TLNumberField.h"
#include "Typloom/TyploomCore/TLDocumentHistory.h"

#include <QAction>
#include <QApplication>

namespace {

QString titleFor(TLFont const& font)
{
    auto const file = toQString(font.path().filename().string());
    auto const family = toQString(font.familyName());
    auto const name = family.isEmpty() || file.isEmpty() ? family + file : family + " (" + file + ")";
    return QString(name).replace("[*]", "[*][*]") + "[*] — Typloom"; // Twice stands for itself.
}

} // namespace

TLDocumentOperations::TLDocumentOperations(
    std::shared_ptr<TLEditState> state, TLMainWindow& window, std::function<void()> didNote)
    : m_state(std::move(state))
    , m_window(window)
    , m_commands(m_state->font(), window)
    , m_saving(m_state->font(), window, m_commands)
    , m_reloading(m_state->font())
    , m_didNote(std::move(didNote))
{
    window.setWindowTitle(titleFor(*m_state->font()));
    m_commands.setFieldEditingEnder([this] {
        if (auto* const field = dynamic_cast<TLNumberField*>(QApplication::focusWidget())) {
            field->commit();
        }
        if (m_fontInfo) {
            m_fontInfo->endEditing();
        }
    });
    m_saving.setSaveHandler([this](std::vector<std::string> const& notes) {
        m_reloading.didSave();
        m_saveNotes = notes;
        m_reloadNotes.clear();
        m_didNote();
    });
    m_reloading.setReloadHandler([this](std::vector<std::string> const& notes) {
        if (m_reloadNotes != notes) {
            m_reloadNotes = notes;
            m_didNote();
        }
    });
    window.mayClose = [this] { return mayClose(); };
    window.didActivate = [this] { m_reloading.check(); };
}

void TLDocumentOperations::addTo(TLMenuCommands& commands)
{
    commands.undo = m_commands.undoAction();
    commands.redo = m_commands.redoAction();
    commands.save = m_saving.saveAction();
    commands.fontInfo = [this] { openFontInfo(); };
}

void TLDocumentOperations::update()
{
    if (auto const glyph = m_state->editedGlyph(); glyph != m_editedGlyph.lock()) {
        m_editedGlyph = glyph;
        NSApplication::closeTransientPopovers(); // One on an axis of the last glyph points at nothing now.
    }
    m_commands.update();
    m_saving.update();
    m_reloading.update();
}

std::vector<std::string> TLDocumentOperations::notes() const
{
    auto notes = m_commandNotes;
    notes.insert(notes.end(), m_saveNotes.begin(), m_saveNotes.end());
    notes.insert(notes.end(), m_reloadNotes.begin(), m_reloadNotes.end());
    return notes;
}

void TLDocumentOperations::openFontInfo()
{
    if (!m_fontInfo) {
        m_fontInfo = std::make_unique<TLFontInfoWindow>(
            m_state, m_window, std::vector { m_commands.undoAction(), m_commands.redoAction() });
        m_fontInfo->setNoteHandler([this](std::vector<std::string> const& notes) {
            m_commandNotes.insert(m_commandNotes.end(), notes.begin(), notes.end());
            m_didNote();
        });
        installFontInfoCommands();
    }
    m_fontInfo->open();
}

/// What is still being typed there can be saved, though there may be no change yet.
void TLDocumentOperations::installFontInfoCommands()
{
    auto* const save = new QAction(m_fontInfo->widget());
    save->setShortcut(m_saving.saveAction()->shortcut());
    QObject::connect(save, &QAction::triggered, m_fontInfo->widget(), [this] { m_saving.save(); });
    m_fontInfo->widget()->addAction(save);
}

bool TLDocumentOperations::mayClose()
{
    if (m_hasAsked) {
        return true;
    }
    m_commands.endEditing();
    if (!m_state->font()->history().isModified()) {
        return true;
    }
    requestClose([](bool) {});
    return false;
}

void TLDocumentOperations::requestClose(TLDocumentSaving::Answer const& then)
{
    m_saving.askBeforeClosing([this, then](bool mayClose) {
        m_hasAsked = mayClose;
        if (mayClose) {
            m_window.close();
        }
        then(mayClose);
    });
}
