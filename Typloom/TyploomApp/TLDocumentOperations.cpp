#include "Typloom/TyploomApp/TLDocumentOperations.h"

#include "Platform/AppKit/NSApplication.h"
#include "Platform/Qt/Conversions.h"
#include "Typloom/TyploomApp/TLDocumentMenus.h"
#include "Typloom/TyploomApp/TLEditState.h"
#include "Typloom/TyploomApp/TLMainWindow.h"
#include "Typloom/TyploomApp/TLNumberField.h"
#include "Typloom/TyploomApp/TLStateText.h"
#include "Typloom/TyploomCore/TLDocumentHistory.h"

#include <QAction>
#include <QApplication>

namespace {

QString titleFor(TLFont const& font)
{
    auto const file = toQString(font.path().filename().string());
    auto const family = toQString(TLShownName(font.familyName()));
    auto const name = family.isEmpty() || file.isEmpty() ? family + file : family + " (" + file + ")";
    return QString(name).replace("[*]", "[*][*]") + "[*] — Typloom"; // Twice stands for itself.
}

/// Every glyph of a large family can have its sentence.
std::vector<std::string> shortened(std::vector<std::string> notes)
{
    constexpr std::size_t most = 100;
    if (notes.size() > most) {
        auto const more = notes.size() - most;
        notes.resize(most);
        notes.push_back("There are " + std::to_string(more) + " more notes like these.");
    }
    return notes;
}

} // namespace

TLDocumentOperations::TLDocumentOperations(
    std::shared_ptr<TLEditState> state, TLMainWindow& window, std::function<void()> didNote)
    : m_state(std::move(state))
    , m_window(window)
    , m_commands(m_state->font(), window)
    , m_copying(m_state->font(), window, m_commands)
    , m_saving(m_state->font(), window, m_commands, m_copying)
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
        m_commandNotes.clear();
        m_problems.clear();
        m_didNote();
    });
    m_copying.setOpenHandler([this](std::filesystem::path const& copy) {
        if (m_window.didChooseFile) {
            m_window.didChooseFile(copy);
        }
    });
    m_reloading.setReloadHandler([this](std::vector<std::string> const& notes) {
        if (m_problems != notes) {
            m_problems = notes;
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
    commands.saveCopy = m_copying.action();
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
    auto notes = m_saveNotes;
    notes.insert(notes.end(), m_commandNotes.begin(), m_commandNotes.end());
    return notes;
}

void TLDocumentOperations::openFontInfo()
{
    if (!m_fontInfo) {
        m_fontInfo = std::make_unique<TLFontInfoWindow>(
            m_state, m_window, std::vector { m_commands.undoAction(), m_commands.redoAction() });
        m_fontInfo->setNoteHandler([this](std::vector<std::string> const& notes) {
            m_commandNotes = shortened(notes);
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
    if (m_closes || m_saving.mayClose()) {
        return true;
    }
    m_saving.askBeforeClosing([this](bool mayClose) {
        if (mayClose) {
            close();
        }
    });
    return false;
}

void TLDocumentOperations::close()
{
    m_closes = true;
    m_window.close();
}
