#pragma once

#include "Platform/AppKit/NSNib.h"

#include <map>

/// Views of rows: made from interface descriptions, and taken back for the next row of the same
/// kind. Views that wait here are in no window, so nobody finds them there.
class RowViewPool {
public:
    void registerNib(std::shared_ptr<NSNib> const& nib, std::string identifier);
    /// A view that waits or a new one; null for an identifier that is not registered.
    std::shared_ptr<NSView> make(std::string_view identifier, std::shared_ptr<NSObject> const& owner);
    /// Keeps the view for reuse if it was made here, and takes it out of its superview in any case.
    void takeBack(std::shared_ptr<NSView> const& view);

private:
    /// More views than rows on a screen wait only after somebody asked for rows out of sight.
    static constexpr std::size_t mostWaiting = 64;

    std::map<std::string, std::shared_ptr<NSNib>, std::less<>> m_nibs;
    std::map<std::string, std::vector<std::shared_ptr<NSView>>, std::less<>> m_waiting;
    std::map<std::weak_ptr<NSView>, std::string, std::owner_less<>> m_identifiers; ///< Of views made here.
    std::shared_ptr<NSView> m_holder { std::make_shared<NSView>() };
};
