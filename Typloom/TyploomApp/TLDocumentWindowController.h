#pragma once

#include "Typloom/TyploomApp/TLEditState.h"
#include "Typloom/TyploomApp/TLWindowController.h"

/// The controller of a window on one family, for plug-ins and the window's own pickers.
class TYPLOOM_API TLDocumentWindowController final : public TLWindowController {
public:
    explicit TLDocumentWindowController(std::shared_ptr<TLEditState> state)
        : m_state(std::move(state))
    {
    }
    std::shared_ptr<TLFont> documentFont() const override;
    void setMasterIndex(std::size_t index) override;

private:
    std::shared_ptr<TLEditState> m_state;
};
