#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

/// Watches a folder with all below it: what any program opens and changes there, what is changed back
/// included.
class FolderWatch {
public:
    explicit FolderWatch(std::filesystem::path const& root);
    ~FolderWatch();
    FolderWatch(FolderWatch const&) = delete;

    struct Seen {
        std::vector<std::string> opened; ///< Paths in the folder.
        std::vector<std::string> changed;
    };
    /// Since the watch began.
    Seen look();

private:
    int m_descriptor;
    std::filesystem::path m_root;
    std::map<int, std::filesystem::path> m_folders; ///< By watch.
};
