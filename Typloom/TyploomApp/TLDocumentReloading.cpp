#include "Typloom/TyploomApp/TLDocumentReloading.h"

#include "Platform/AppKit/NSApplication.h"
#include "Typloom/Formats/FamilyReload.h"
#include "Typloom/TyploomCore/TLDocumentHistory.h"

#include <QGuiApplication>
#include <QWindow>

TLDocumentReloading::TLDocumentReloading(std::shared_ptr<TLFont> font)
    : m_font(std::move(font))
    , m_follower([this] { reload(); })
{
    follow();
}

void TLDocumentReloading::update()
{
    if (m_font->loadedGlyphs().size() != m_countOfGlyphs) {
        follow();
    }
    if (m_waits && !m_font->history().isModified()) {
        reload();
    }
}

void TLDocumentReloading::follow()
{
    m_countOfGlyphs = m_font->loadedGlyphs().size();
    m_follower.follow(TLFilesToWatch(*m_font));
}

void TLDocumentReloading::didSave()
{
    m_waits = false;
    m_follower.forget();
    follow();
}

void TLDocumentReloading::reload()
{
    auto const* const modal = QGuiApplication::modalWindow();
    bool const isBusy = modal && modal->modality() == Qt::ApplicationModal;
    if (isBusy || QGuiApplication::mouseButtons() != Qt::NoButton) {
        return m_follower.checkSoon(); // A drag is not disturbed, nor a command that takes its time.
    }
    m_follower.forget(); // What changes while it is read is noticed: it is followed from before.
    m_follower.follow(TLFilesToWatch(*m_font));
    auto const outcome = TLReloadChangedFiles(m_font, [] { NSApplication::closeTransientPopovers(); });
    m_waits = !outcome.sentences.empty();
    follow();
    if (m_didReload) {
        m_didReload(outcome.sentences);
    }
}

void TLDocumentReloading::setReloadHandler(std::function<void(std::vector<std::string> const&)> handler)
{
    m_didReload = std::move(handler);
}
