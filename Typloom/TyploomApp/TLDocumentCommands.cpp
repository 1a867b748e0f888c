#include "Typloom/TyploomApp/TLDocumentCommands.h"

#include "Platform/AppKit/NSApplication.h"
#include "Platform/AppKit/NSPopover.h"
#include "Platform/Qt/Conversions.h"
#include "Typloom/TyploomApp/TLFieldUndo.h"
#include "Typloom/TyploomApp/TLNotificationObserver.h"
#include "Typloom/TyploomCore/TLDocumentHistory.h"

#include <QAction>
#include <QApplication>
#include <QWidget>

TLDocumentCommands::TLDocumentCommands(std::shared_ptr<TLFont> font, QWidget& window)
    : m_font(std::move(font))
    , m_undo(new QAction(&window))
    , m_redo(new QAction(&window))
{
    TLInstallFieldUndo();
    m_undo->setShortcuts({ QKeySequence("Ctrl+Z") });
    m_redo->setShortcuts({ QKeySequence("Ctrl+Shift+Z"), QKeySequence("Ctrl+Y") });
    QObject::connect(m_undo, &QAction::triggered, &window, [this] { perform(&TLDocumentHistory::undo); });
    QObject::connect(m_redo, &QAction::triggered, &window, [this] { perform(&TLDocumentHistory::redo); });
    m_popoverObserver
        = TLNotificationObserver::make(NSPopoverDidCloseNotification, [weak = std::weak_ptr(m_font)] {
              if (auto const document = weak.lock()) {
                  document->history().endStep();
              }
          });
    update();
}

void TLDocumentCommands::update()
{
    auto const& history = m_font->history();
    m_undo->setText(toQString("&Undo " + history.undoTitle()).trimmed());
    m_redo->setText(toQString("&Redo " + history.redoTitle()).trimmed());
    m_undo->setEnabled(history.canUndo());
    m_redo->setEnabled(history.canRedo());
}

void TLDocumentCommands::perform(void (TLDocumentHistory::*operation)())
{
    if (QApplication::mouseButtons() != Qt::NoButton) {
        return;
    }
    endEditing();
    (m_font->history().*operation)();
}

void TLDocumentCommands::endEditing() const
{
    NSApplication::closeTransientPopovers();
    if (m_endFieldEditing) {
        m_endFieldEditing();
    }
    m_font->history().endStep();
}
