#include "Typloom/TyploomApp/TLDocumentSaving.h"

#include "Platform/Qt/Conversions.h"
#include "Typloom/Formats/FamilySaver.h"
#include "Typloom/TyploomApp/TLDocumentCommands.h"
#include "Typloom/TyploomApp/TLDocumentCopying.h"
#include "Typloom/TyploomApp/TLMessages.h"
#include "Typloom/TyploomCore/DocumentRevision.h"
#include "Typloom/TyploomCore/TLDocumentHistory.h"

#include <QAction>
#include <QApplication>
#include <QPushButton>

TLDocumentSaving::TLDocumentSaving(std::shared_ptr<TLFont> font, QWidget& window,
    TLDocumentCommands const& commands, TLDocumentCopying& copying)
    : m_font(std::move(font))
    , m_window(window)
    , m_commands(commands)
    , m_copying(copying)
    , m_save(new QAction("&Save", &window))
{
    m_save->setShortcut(QKeySequence("Ctrl+S"));
    QObject::connect(m_save, &QAction::triggered, &window, [this] {
        if (QApplication::mouseButtons() == Qt::NoButton) { // A drag is not saved half-way.
            save();
        }
    });
}

void TLDocumentSaving::update()
{
    // The command stays enabled: what is being typed is a change as soon as saving ends it.
    if (auto const revision = documentRevision(); m_judgedRevision != revision) {
        m_judgedRevision = revision;
        m_window.setWindowModified(m_font->history().isModified());
    }
}

void TLDocumentSaving::setSaveHandler(std::function<void(std::vector<std::string> const&)> handler)
{
    m_didSave = std::move(handler);
}

bool TLDocumentSaving::showsQuestion() const
{
    return m_question && m_question->isVisible();
}

void TLDocumentSaving::save(Answer const& then)
{
    if (showsQuestion()) {
        return then ? then(false) : void();
    }
    m_commands.endEditing();
    attempt(
        {}, then ? then : [](bool) {});
}

void TLDocumentSaving::attempt(TLSaveOptions options, Answer const& then)
{
    QApplication::setOverrideCursor(Qt::WaitCursor);
    auto const outcome = TLSaveFamily(m_font, options);
    QApplication::restoreOverrideCursor();
    update();
    switch (outcome.kind) {
    case TLSaveOutcome::Kind::saved:
        if (m_didSave) {
            m_didSave(outcome.notes);
        }
        [[fallthrough]];
    case TLSaveOutcome::Kind::nothingToSave:
        return then(true);
    case TLSaveOutcome::Kind::changedByOthers:
        options.overwriteForeignChanges = true;
        return askWhetherToSave(options, outcome, then);
    case TLSaveOutcome::Kind::liesOutside:
        options.writeOutsideFamily = true;
        return askWhetherToSave(options, outcome, then);
    case TLSaveOutcome::Kind::failed:
        break;
    }
    auto* const box = TLMakeMessage(
        m_window, QMessageBox::Critical, "The family was not saved.", toQString(outcome.sentence));
    auto* const copy = box->addButton("Save a Copy…", QMessageBox::ActionRole);
    auto* const ok = box->addButton(QMessageBox::Ok);
    box->setDefaultButton(ok);
    box->setEscapeButton(ok);
    QObject::connect(copy, &QPushButton::clicked, &m_window, [this] { m_copying.choose(); });
    box->open();
    then(false);
}

void TLDocumentSaving::askWhetherToSave(
    TLSaveOptions options, TLSaveOutcome const& outcome, Answer const& then)
{
    bool const overwrites = outcome.kind == TLSaveOutcome::Kind::changedByOthers;
    auto* const box = TLMakeMessage(m_window, QMessageBox::Warning,
        overwrites
            ? "Another program has changed files of the family since they were read. Save over its changes?"
            : "Files of the family lie outside its folder. Save there?",
        TLListOf(outcome.files));
    auto const* const goOn
        = box->addButton(overwrites ? "Overwrite" : "Save There", QMessageBox::DestructiveRole);
    auto* const cancel = box->addButton(QMessageBox::Cancel);
    box->setDefaultButton(cancel);
    box->setEscapeButton(cancel);
    QObject::connect(box, &QMessageBox::finished, &m_window, [this, box, goOn, options, then] {
        bool const goesOn = box->clickedButton() == goOn;
        goesOn ? attempt(options, then) : then(false);
    });
    ask(*box);
}

void TLDocumentSaving::ask(QMessageBox& box)
{
    m_question = &box;
    m_window.show();
    m_window.raise();
    m_window.activateWindow();
    box.open();
}

bool TLDocumentSaving::mayClose() const
{
    m_commands.endEditing();
    return !m_font->history().isModified() || m_discarded == changesNow();
}

TLDocumentSaving::Changes TLDocumentSaving::changesNow() const
{
    Changes changes { m_font->state(), {} };
    for (auto const& [name, before] : m_font->history().modifiedGlyphs()) {
        changes.second.emplace(name, m_font->loadedGlyphForName(name)->state());
    }
    return changes;
}

void TLDocumentSaving::askBeforeClosing(Answer const& then)
{
    if (mayClose()) {
        return then(true);
    }
    if (showsQuestion()) {
        m_question->raise();
        return then(false);
    }
    auto* const box = TLMakeMessage(m_window, QMessageBox::Warning,
        "Save the changes to " + toQString(m_font->familyName()) + "?",
        "Without saving, your changes are lost.");
    auto* const save = box->addButton(QMessageBox::Save);
    auto const* const discard = box->addButton(QMessageBox::Discard);
    box->setDefaultButton(save);
    box->setEscapeButton(box->addButton(QMessageBox::Cancel));
    QObject::connect(box, &QMessageBox::finished, &m_window, [this, box, save, discard, then] {
        auto const* const chosen = box->clickedButton();
        if (chosen == discard) {
            m_discarded = changesNow();
        }
        chosen == save ? attempt({}, then) : then(chosen == discard);
    });
    ask(*box);
}
