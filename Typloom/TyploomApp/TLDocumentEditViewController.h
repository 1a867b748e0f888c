#pragma once

#include "Platform/Foundation/NSNotificationCenter.h"
#include "Typloom/TyploomApp/TLEditViewController.h"
#include "Typloom/TyploomApp/TLLineEditView.h"

/// The controller of the edit view of a window on one family.
class TYPLOOM_API TLDocumentEditViewController final : public TLEditViewController {
public:
    TLDocumentEditViewController(
        std::shared_ptr<TLEditState> state, std::weak_ptr<TLWindowController> windowController);
    /// Makes the view and has it follow the interface updates. Called once, by the maker.
    void init() override;

    std::shared_ptr<TLLayer> activeLayer() const override { return m_state->activeLayer(); }
    std::size_t masterIndex() const override { return m_state->masterIndex(); }
    std::shared_ptr<TLGlyphEditView> graphicView() const override { return m_lineView; }
    std::shared_ptr<TLLineEditView> const& lineView() const { return m_lineView; }
    std::shared_ptr<TLWindowController> windowController() const override
    {
        return m_windowController.lock();
    }
    void reflowKeepActiveContentCenteredWithCallback(
        std::function<void(std::shared_ptr<NSObject> const&)> callback) override;

    void loadView() override;
    std::span<NSMethod const> methods() const override;
    void didUpdateInterface(std::shared_ptr<NSNotification> const& notification);

private:
    std::shared_ptr<TLEditState> m_state;
    std::weak_ptr<TLWindowController> m_windowController;
    std::shared_ptr<TLLineEditView> m_lineView;
};
