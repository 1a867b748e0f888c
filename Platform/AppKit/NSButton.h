#pragma once

#include "Platform/AppKit/NSControl.h"
#include "Platform/AppKit/NSImage.h"

enum class NSBezelStyle { rounded = 1, borderless = 8, helpButton = 9 };

/// A push button with a title or a symbol. It takes the keyboard by Tab only.
class PLATFORM_API NSButton : public NSControl {
public:
    NSButton();
    ~NSButton() override;

    std::string title() const;
    void setTitle(std::string_view title);
    std::shared_ptr<NSImage> image() const { return m_image; }
    void setImage(std::shared_ptr<NSImage> image);
    NSBezelStyle bezelStyle() const { return m_bezelStyle; }
    void setBezelStyle(NSBezelStyle style);
    bool hasDestructiveAction() const { return m_isDestructive; }
    /// Marks an action that destroys something; a bezelled button writes its title in red then.
    void setHasDestructiveAction(bool destructive);
    /// Presses the button as the user does.
    void performClick();

    NSSize fittingSize() const override;

private:
    friend struct NSButtonBacking;
    std::shared_ptr<NSImage> m_image;
    NSBezelStyle m_bezelStyle { NSBezelStyle::rounded };
    bool m_isDestructive { false };
};
