#pragma once

#include <filesystem>
#include <functional>

class QMenu;
class TLUserState;

/// Fills the menu with the families that were opened last, of which those that are gone cannot be chosen, and
/// a command that forgets them. Nothing to open makes an empty menu.
void TLFillRecentMenu(
    QMenu& menu, TLUserState& state, std::function<void(std::filesystem::path const&)> const& open);
