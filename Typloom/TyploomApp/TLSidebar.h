#pragma once

#include "Typloom/TyploomKit/TLCallbackHandler.h"

class QWidget;

/// The left sidebar of one edit view: a tab for every class that plug-ins registered before it was
/// built, in their order, and the content of the tab that is shown.
class TYPLOOM_API TLSidebar {
public:
    /// Makes one controller of each class; they hold the edit view's controller weakly.
    explicit TLSidebar(std::weak_ptr<TLGlyphViewControllerProtocol> editViewController);
    ~TLSidebar();
    TLSidebar(TLSidebar const&) = delete;

    QWidget* widget() const;

    /// The title that the tab bar shows; empty beyond the tabs.
    std::string titleOfTab(std::size_t index) const;
    /// None when no plug-in gave a tab.
    std::optional<std::size_t> shownTab() const;
    /// Shows the content of that tab, whose controller is sent `viewDidAppear` if the sidebar is on screen.
    void showTab(std::size_t index);
    /// Gives the keyboard to the first search field of the shown tab; nothing where it has none.
    void focusSearchField();
    /// Called at Escape, where no control of the tab has a use for it.
    void setCancelHandler(std::function<void()> handler);
    /// The controller of a tab, null beyond the tabs.
    std::shared_ptr<TLEditViewSidebarControllerProtocol> controllerOfTab(std::size_t index) const;

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};
