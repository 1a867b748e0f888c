#pragma once

#include "Typloom/Formats/FileStamp.h"
#include "Typloom/Formats/Result.h"

#include <filesystem>

/// Bytes of the largest file that is read. A parser keeps a copy, and a tree (`xmlTreeLimit`).
inline constexpr std::size_t fileSizeLimit = std::size_t(64) * 1024 * 1024;

/// The whole content of a regular file. Anything else (a folder, a pipe, a device) is an error at
/// once, without waiting for it. `displayName` is the name that errors give. `stamp` gets what was
/// read; null when nobody will ask.
Result<std::string> readFile(
    std::filesystem::path const& path, std::string const& displayName, FileStamp* stamp = nullptr);

/// The reason of an error when the disk itself failed, which may pass.
std::string reasonOfDiskFault();

/// A file right in the folder of a descriptor; a link there is an error.
Result<std::string> readFileAt(
    int folder, std::string const& name, std::string const& displayName, FileStamp* stamp = nullptr);

/// The same for a file in a folder out of which no name may lead: a link is followed only
/// when it ends inside `root`. `relativePath` is given by a file, so it is not trusted.
Result<std::string> readFileInside(std::filesystem::path const& root,
    std::filesystem::path const& relativePath, std::string const& displayName, FileStamp* stamp = nullptr);

/// Whether a path, with all links followed, lies in a folder. False when it does not exist.
bool liesInside(std::filesystem::path const& path, std::filesystem::path const& folder);
