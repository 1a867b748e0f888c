#include "Typloom/TyploomApp/TLDocumentWindow.h"

#include "Platform/Qt/Conversions.h"
#include "Typloom/TyploomApp/TLDocumentWindow+Impl.h"
#include "Typloom/TyploomApp/TLLineText.h"

#include <QMessageBox>

TLDocumentWindow::TLDocumentWindow(std::shared_ptr<TLFont> font)
    : m_impl(std::make_unique<Impl>())
{
    font ? m_impl->showFamily(std::move(font)) : m_impl->showInvitation();
}

TLDocumentWindow::~TLDocumentWindow()
{
    m_impl->window->didClose = nullptr;
    m_impl->window->mayClose = nullptr;
    m_impl->window->didActivate = nullptr;
    if (m_impl->state) {
        m_impl->state->setObserver(nullptr);
        m_impl->lineView()->setProblemObserver(nullptr);
    }
}

QWidget* TLDocumentWindow::widget() const
{
    return m_impl->window.get();
}

std::shared_ptr<TLFont> TLDocumentWindow::font() const
{
    return m_impl->state ? m_impl->state->font() : nullptr;
}

void TLDocumentWindow::setFont(std::shared_ptr<TLFont> font)
{
    if (font && !m_impl->state) {
        m_impl->showFamily(std::move(font));
    }
}

std::shared_ptr<TLEditViewController> TLDocumentWindow::editViewController() const
{
    return m_impl->editViewController;
}

std::shared_ptr<TLSidebar> TLDocumentWindow::sidebar() const
{
    return m_impl->sidebar;
}

void TLDocumentWindow::setText(std::string const& text)
{
    if (m_impl->state) {
        m_impl->toolbar->setText(text);
    }
}

bool TLDocumentWindow::showGlyph(std::string const& name)
{
    if (!m_impl->state || !TLFontListsGlyph(*m_impl->state->font(), name)) {
        return false;
    }
    m_impl->state->setGlyphNames({ name }, 0);
    m_impl->lineView()->centreEditedGlyph();
    return true;
}

bool TLDocumentWindow::editGlyph(std::string const& name)
{
    if (!m_impl->state || !TLFontListsGlyph(*m_impl->state->font(), name)) {
        return false;
    }
    m_impl->state->editGlyph(name);
    m_impl->lineView()->centreEditedGlyph();
    return true;
}

void TLDocumentWindow::goToLocation(TLLocation const& location)
{
    if (m_impl->state) {
        m_impl->state->goToLocation(location);
    }
}

std::string TLDocumentWindow::stateText() const
{
    if (!m_impl->state) {
        return {};
    }
    m_impl->lineView()->noticeProblem(); // Whether the sources fit is known only once they were drawn.
    m_impl->update();
    return m_impl->statusStrip->text();
}

std::optional<TLOutline> TLDocumentWindow::editedOutline() const
{
    auto const shape = m_impl->state ? m_impl->lineView()->editedShape() : nullptr;
    return shape ? std::optional(shape->outline) : std::nullopt;
}

std::vector<std::string> TLDocumentWindow::report() const
{
    auto sentences = m_impl->problems();
    auto const notes = m_impl->notes();
    sentences.insert(sentences.end(), notes.begin(), notes.end());
    return sentences;
}

void TLDocumentWindow::addToReport(std::string sentence)
{
    m_impl->ownReport.push_back(std::move(sentence));
    if (m_impl->state) {
        m_impl->update();
    }
}

void TLDocumentWindow::showError(std::string const& sentence)
{
    auto* const box = new QMessageBox(
        QMessageBox::Warning, "Typloom", toQString(sentence), QMessageBox::Ok, m_impl->window.get());
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setTextFormat(Qt::PlainText);
    box->open();
}

void TLDocumentWindow::setOpenHandler(TLMainWindow::PathHandler handler)
{
    m_impl->window->didChooseFile = std::move(handler);
}

void TLDocumentWindow::setCloseHandler(std::function<void()> handler)
{
    m_impl->window->didClose = std::move(handler);
}

void TLDocumentWindow::setQuitHandler(std::function<void()> handler)
{
    m_impl->didAskToQuit = std::move(handler);
}

bool TLDocumentWindow::mayClose() const
{
    return !m_impl->operations || m_impl->operations->saving().mayClose();
}

void TLDocumentWindow::askBeforeClosing(std::function<void(bool)> const& then)
{
    m_impl->operations ? m_impl->operations->saving().askBeforeClosing(then) : then(true);
}

void TLDocumentWindow::forgetAnswer()
{
    if (m_impl->operations) {
        m_impl->operations->saving().forgetAnswer();
    }
}

void TLDocumentWindow::close()
{
    m_impl->operations ? m_impl->operations->close() : void(m_impl->window->close());
}
