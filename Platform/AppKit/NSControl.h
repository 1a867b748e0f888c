#pragma once

#include "Platform/AppKit/NSFont.h"
#include "Platform/AppKit/NSView.h"

#include <optional>

enum class NSControlSize { regular = 0, small = 1, mini = 2 };

/// A view that sends an action to a target when the user's hand changes it. Setting anything from
/// code is silent.
class PLATFORM_API NSControl : public NSView {
public:
    std::shared_ptr<NSObject> target() const { return m_target.lock(); }
    void setTarget(std::weak_ptr<NSObject> target) { m_target = std::move(target); }
    std::string const& action() const { return m_action; }
    void setAction(std::string selector) { m_action = std::move(selector); }
    /// Sends the action as a user's change does. Nothing happens without a target or an action.
    void sendAction();

    virtual bool isEnabled() const;
    virtual void setEnabled(bool enabled);
    void setFont(std::shared_ptr<NSFont> const& font);
    std::shared_ptr<NSFont> font() const { return m_font; }
    void setControlSize(NSControlSize size);

protected:
    NSControl() = default;
    explicit NSControl(std::unique_ptr<NSViewBacking> backing);

private:
    std::weak_ptr<NSObject> m_target;
    std::string m_action;
    std::shared_ptr<NSFont> m_font;
};
