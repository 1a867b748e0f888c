#pragma once

#include "Typloom/Formats/FileDescriptor.h"
#include "Typloom/Formats/FileSystem.h"
#include "Typloom/Formats/Result.h"

#include <filesystem>
#include <map>
#include <optional>
#include <vector>

/// The names in a relative path that leads nowhere out of its folder: none for an absolute one, for
/// one with "..", ".", an empty name, a NUL or a backslash.
std::optional<std::vector<std::string>> namesInside(std::string_view relativePath);

/// A folder below which files are changed, the one way to all of them. It may be reached
/// through links; inside it none is followed.
class RootFolder {
public:
    struct Place {
        int folder { -1 }; ///< Lives as long as the root; -1 when it is not there.
        std::string name;
    };

    /// One that is not there is no error; no place in it is there either. `shown` is the root in errors;
    /// empty for one whose files need no more than their path.
    static Result<RootFolder> open(FileSystem& files, std::filesystem::path const& path, std::string shown);

    bool exists() const { return m_folders.at({}).get() >= 0; }
    /// Where a path leads. An error when it leads out, and when a folder on the way is a link.
    Result<Place> placeOf(std::string const& relativePath);
    /// With the path of a link to a file inside the folder replaced by that of the file.
    Result<std::string> pathBehindLink(std::string const& relativePath);
    FormatError errorAt(std::string const& relativePath, std::string reason) const;
    /// Every folder in which a place was asked for.
    std::map<std::string, FileDescriptor> const& folders() const { return m_folders; }

private:
    Result<int> folderNamed(std::string const& relativePath);

    FileSystem* m_files { nullptr };
    std::filesystem::path m_path;
    std::string m_shown;
    std::map<std::string, FileDescriptor> m_folders; ///< By path; "" is the root.
};
