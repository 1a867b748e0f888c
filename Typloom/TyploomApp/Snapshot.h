#pragma once

#include "Typloom/TyploomCore/Export.h"

#include <filesystem>
#include <optional>
#include <string>

class QWidget;

/// Handles events until nothing happens any more, some seconds at most.
TYPLOOM_API void SettleEvents();

/// Draws a window into a PNG file, which is replaced as a whole. A sentence when it cannot be written.
TYPLOOM_API std::optional<std::string> WriteSnapshot(QWidget& window, std::filesystem::path const& file);
