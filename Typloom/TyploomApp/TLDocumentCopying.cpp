#include "Typloom/TyploomApp/TLDocumentCopying.h"

#include "Platform/Qt/Conversions.h"
#include "Typloom/Formats/FamilyCopySaver.h"
#include "Typloom/TyploomApp/TLDocumentCommands.h"
#include "Typloom/TyploomApp/TLMessages.h"

#include <QAction>
#include <QApplication>
#include <QFileDialog>
#include <QPushButton>

TLDocumentCopying::TLDocumentCopying(
    std::shared_ptr<TLFont> font, QWidget& window, TLDocumentCommands const& commands)
    : m_font(std::move(font))
    , m_window(window)
    , m_commands(commands)
    , m_action(new QAction("Save a C&opy…", &window))
{
    m_action->setShortcut(QKeySequence("Ctrl+Shift+S"));
    QObject::connect(m_action, &QAction::triggered, &window, [this] {
        if (QApplication::mouseButtons() == Qt::NoButton) { // A drag is not saved half-way.
            choose();
        }
    });
}

void TLDocumentCopying::setOpenHandler(std::function<void(std::filesystem::path const&)> handler)
{
    m_open = std::move(handler);
}

void TLDocumentCopying::choose()
{
    m_commands.endEditing();
    auto const folder = std::filesystem::absolute(m_font->path()).parent_path();
    auto* const dialog = new QFileDialog(&m_window, "Save a copy of the family");
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setOption(QFileDialog::DontConfirmOverwrite); // Nothing is overwritten.
    dialog->setLabelText(QFileDialog::FileName, "New folder:");
    dialog->setDirectory(QFile::decodeName(folder.parent_path().c_str()));
    dialog->selectFile(QFile::decodeName((m_font->path().stem().string() + " copy").c_str()));
    QObject::connect(dialog, &QFileDialog::fileSelected, &m_window,
        [this](QString const& file) { copyTo(QFile::encodeName(file).toStdString()); });
    dialog->open();
}

void TLDocumentCopying::copyTo(std::filesystem::path const& folder)
{
    m_commands.endEditing();
    QApplication::setOverrideCursor(Qt::WaitCursor);
    auto const outcome = TLSaveCopy(m_font, folder);
    QApplication::restoreOverrideCursor();
    outcome.designspace.empty() ? tellOfFailure(outcome.sentence)
                                : tellOfSuccess(outcome.designspace, outcome.notes);
}

void TLDocumentCopying::tellOfSuccess(
    std::filesystem::path const& designspace, std::vector<std::string> const& notes)
{
    auto const details = QFile::decodeName(designspace.c_str())
        + "\n\nThis window stays on the family itself, whose changes are still not saved there if there are "
          "any.";
    auto* const box = TLMakeMessage(m_window, QMessageBox::Information, "The copy is saved.",
        notes.empty() ? details : details + "\n\n" + TLListOf(notes));
    auto* const open = box->addButton("Open Copy", QMessageBox::ActionRole);
    auto* const ok = box->addButton(QMessageBox::Ok);
    box->setDefaultButton(ok);
    box->setEscapeButton(ok);
    QObject::connect(open, &QPushButton::clicked, &m_window, [this, designspace] {
        if (m_open) {
            m_open(designspace);
        }
    });
    box->open();
}

void TLDocumentCopying::tellOfFailure(std::string const& sentence)
{
    auto* const box
        = TLMakeMessage(m_window, QMessageBox::Critical, "The copy was not saved.", toQString(sentence));
    auto* const again = box->addButton("Save a Copy…", QMessageBox::ActionRole);
    auto* const ok = box->addButton(QMessageBox::Ok);
    box->setDefaultButton(ok);
    box->setEscapeButton(ok);
    QObject::connect(again, &QPushButton::clicked, &m_window, [this] { choose(); });
    box->open();
}
