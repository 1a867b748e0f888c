#include "Typloom/TyploomApp/TLDocumentWindowController.h"

std::shared_ptr<TLFont> TLDocumentWindowController::documentFont() const
{
    return m_state->font();
}

void TLDocumentWindowController::setMasterIndex(std::size_t index)
{
    m_state->setMasterIndex(index);
}
