#pragma once

#include "Typloom/Formats/FileSystem.h"
#include "Typloom/Formats/Result.h"

#include <filesystem>
#include <optional>
#include <vector>

/// Copies files with all that they are: content, mode, attributes and links, of folders all that lies in
/// them. The owner may write the copies. Temporary files of a save are left out.
class FolderCopy {
public:
    using Path = std::filesystem::path;
    /// `base`: that by which errors and `leftOut` call what they name.
    FolderCopy(FileSystem& files, Path base)
        : m_files(files)
        , m_base(std::move(base))
    {
    }

    /// A link is followed. Folders around the target are made; the target itself must not be there.
    std::optional<FormatError> copy(Path const& from, Path const& to);
    /// A file of that content; one that is there is replaced, but not all or nothing.
    std::optional<FormatError> write(Path const& to, std::string_view content);
    std::optional<FormatError> makeFolders(Path const& folder);

    /// What could not be read, or is neither a file nor a folder.
    std::vector<std::string> const& leftOut() const { return m_leftOut; }

private:
    std::optional<FormatError> copyFolder(Path const& from, Path const& to);
    std::optional<FormatError> copyEntry(std::filesystem::directory_entry const& entry, Path const& to);
    std::optional<FormatError> copyFile(Path const& from, Path const& to);
    int copyContent(int from, Path const& to);
    void keepWritable(int old, int copy, unsigned ownerMay);
    FormatError errorAt(Path const& path, int problem) const;
    std::string shown(Path const& path) const { return path.lexically_relative(m_base).generic_string(); }

    FileSystem& m_files;
    Path m_base;
    Path m_source; ///< What is being copied, behind links.
    std::vector<std::string> m_leftOut;
};
