#pragma once

#include "Platform/AppKit/NSNib.h"
#include "Platform/AppKit/NSView.h"

#include <optional>

/// Owns a view, usually from an interface description, and what happens in it.
class PLATFORM_API NSViewController : public NSObject {
public:
    virtual void init();
    /// Without a name the controller starts with an empty plain view. A null bundle is the main one.
    virtual void initWithNibName(std::optional<std::string> nibName, std::shared_ptr<NSBundle> bundle);
    /// Reads "NSNibName", "NSBundleIdentifier" and "NSTitle". False when the coder yields no object.
    virtual bool initWithCoder(NSCoder const& coder);

    std::string const& title() const { return m_title; }
    void setTitle(std::string title) { m_title = std::move(title); }

    /// The view; loads it at the first call: `loadView`, then `viewDidLoad`.
    std::shared_ptr<NSView> view();
    void setView(std::shared_ptr<NSView> view) { m_view = std::move(view); }
    bool isViewLoaded() const { return m_view != nullptr; }
    virtual void loadView();
    virtual void viewDidLoad() { }
    /// The view has come onto the screen. Sent by whoever shows it.
    virtual void viewDidAppear() { }
    virtual void viewDidDisappear() { }

private:
    std::optional<std::string> m_nibName;
    std::shared_ptr<NSBundle> m_bundle;
    std::string m_title;
    std::shared_ptr<NSView> m_view;
};
