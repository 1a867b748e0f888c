#pragma once

#include "Moravel/AxisCellView.h"
#include "Moravel/SidebarViewController.h"
#include "Tests/Sequences/FreshBuild.h"

#include <map>
#include <stdexcept>

/// What a sequence found wrong.
struct Wrong : std::runtime_error {
    using std::runtime_error::runtime_error;
};
inline void require(bool holds, std::string const& what)
{
    if (!holds) {
        throw Wrong(what);
    }
}

/// Watches one sidebar from outside: its signals, and the views that its table shows. Throws `Wrong`.
class ShownTable {
public:
    ShownTable(std::shared_ptr<SidebarViewController> sidebar, std::shared_ptr<LiveHost> host);

    /// Remembers what is shown, and forgets the signals. `isTall`: every row fits in sight.
    void begin(bool isTall);
    /// What a person did with a row's controls is not its content until it is told again.
    void touched(AxisCellView const& row);

    /// Nothing was told and nothing changed.
    void requireQuiet();
    /// All is as a fresh build shows it, and rows were told as little as that takes. `forced`: the row that
    /// the refresh named.
    void requireRefreshed(std::optional<SidebarItem> const& forced);
    /// All is as a fresh build shows it, whatever was told on the way.
    void requireFresh();
    /// After the host's update: another layer scrolls to the top, the same one does not.
    void requireScrolledForLayer() const;
    /// What holds at any time.
    void requireConsistent();

    std::vector<std::shared_ptr<AxisCellView>> rows() const;
    double scrollPosition() const;
    void forget();

private:
    class Listener;
    struct Held { ///< Where the person's hand is.
        std::weak_ptr<NSView> view;
        SidebarItem item;
        std::string text;
    };
    struct Shown {
        std::weak_ptr<NSView> view;
        std::string name;
        bool isTouched { false }; ///< Its knob by a person, since it was told.
        bool isTyped { false }; ///< Its number.
    };
    std::vector<SidebarItem> shownItems() const;
    std::map<std::size_t, std::shared_ptr<AxisCellView>> views() const;
    void requireKept() const;
    void requireHeld(std::optional<Held> const& held, bool isTyping) const;
    void requireAccessories(bool isEmpty) const;
    void requireRow(AxisCellView const& row, RowContent const& content, Shown const& shown) const;
    void requireControls(AxisCellView const& row, FreshRow const& fresh, Shown const& shown) const;
    bool stays(SidebarItem const& item) const;

    std::shared_ptr<SidebarViewController> m_sidebar;
    std::shared_ptr<LiveHost> m_host;
    std::shared_ptr<Listener> m_listener;
    std::unordered_map<SidebarItem, Shown> m_shown;

    std::unordered_set<SidebarItem> m_touched; ///< In this step.

    // At the last `begin`.
    std::vector<SidebarItem> m_items;
    RowContentByItem m_contents;
    std::unordered_map<SidebarItem, std::weak_ptr<NSView>> m_views;
    std::optional<Held> m_typing;
    std::optional<Held> m_dragging;
    std::weak_ptr<TLLayer> m_layer;
    double m_scrollPosition { 0 };
    std::size_t m_calls { 0 };
    bool m_isTall { true };
};
