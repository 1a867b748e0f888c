#pragma once

#include "Typloom/Formats/FileSystem.h"

/// Gives a new file what the old one has besides its content, as far as the system lets this user do it:
/// owner, group, extended attributes and mode. `old` and `file` are open. Not negative, or why the mode could
/// not be kept: the system's error number negated.
int keepAttributes(FileSystem& files, int old, int file);

/// All of a content, however often it takes. Not negative, or the system's error number negated.
int writeWhole(FileSystem& files, int file, std::string_view content);
