#pragma once

#include "Tests/Support/EditViewDouble.h"
#include "Typloom/TyploomApp/TLEditState.h"

/// What the parts of one host share: the program's own edit state, null once its family is closed, and how
/// often anything was asked of it.
struct LiveState {
    std::shared_ptr<TLEditState> edit;
    std::size_t calls { 0 };
    std::function<void()> onCall; ///< Runs before anything is answered or done.

    TLEditState* reached()
    {
        if (auto const act = onCall) {
            act();
        }
        return edit.get();
    }
    TLEditState* asked()
    {
        ++calls;
        return reached();
    }
};

class LiveEditView final : public TLGlyphEditView {
public:
    explicit LiveEditView(std::shared_ptr<LiveState> state)
        : m_state(std::move(state))
    {
    }
    std::optional<TLLocation> axisLocation() const override
    {
        auto const* const edit = m_state->reached();
        return edit ? edit->axisLocation() : std::nullopt;
    }
    NSRange selectedRange() const override
    {
        auto const* const edit = m_state->reached();
        return edit ? edit->line().selectedRange() : NSRange {};
    }
    void setAxisLocation(std::optional<TLLocation> location) override
    {
        if (auto* const edit = m_state->asked()) {
            edit->setAxisLocation(std::move(location));
        }
    }
    void switchToLayerWithId(
        std::string_view layerId, std::optional<std::string> const&, NSRange range) override
    {
        if (auto* const edit = m_state->asked()) {
            edit->switchToLayer(layerId, range);
        }
    }

private:
    std::shared_ptr<LiveState> m_state;
};

class LiveWindowController final : public TLWindowController {
public:
    explicit LiveWindowController(std::shared_ptr<LiveState> state)
        : m_state(std::move(state))
    {
    }
    std::shared_ptr<TLFont> documentFont() const override
    {
        auto const* const edit = m_state->reached();
        return edit ? edit->font() : nullptr;
    }
    void setMasterIndex(std::size_t index) override
    {
        if (auto* const edit = m_state->asked()) {
            edit->setMasterIndex(index);
        }
    }

private:
    std::shared_ptr<LiveState> m_state;
};

/// An edit view's controller over the program's own edit state. The test says when its reflow calls back.
class LiveHost final : public TLEditViewController {
public:
    using Callback = std::function<void(std::shared_ptr<NSObject> const&)>;

    std::shared_ptr<TLLayer> activeLayer() const override
    {
        auto const* const edit = state->reached();
        return edit ? edit->activeLayer() : nullptr;
    }
    std::size_t masterIndex() const override
    {
        auto const* const edit = state->reached();
        return edit ? edit->masterIndex() : 0;
    }
    std::shared_ptr<TLGlyphEditView> graphicView() const override { return view; }
    std::shared_ptr<TLWindowController> windowController() const override { return window; }
    void reflowKeepActiveContentCenteredWithCallback(Callback callback) override
    {
        state->asked();
        if (reflow == Reflow::later) {
            pending.push_back(std::move(callback));
            return;
        }
        auto const times = reflow == Reflow::twice ? 2 : reflow == Reflow::atOnce ? 1 : 0;
        for (auto count = 0; count < times; ++count) {
            callback(nullptr);
        }
    }

    std::shared_ptr<LiveState> state { std::make_shared<LiveState>() };
    std::shared_ptr<LiveEditView> view { std::make_shared<LiveEditView>(state) };
    std::shared_ptr<LiveWindowController> window { std::make_shared<LiveWindowController>(state) };
    Reflow reflow { Reflow::atOnce };
    std::vector<Callback> pending;
};
