#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

inline std::string contentOf(std::filesystem::path const& path)
{
    std::ifstream file(path, std::ios::binary);
    return { std::istreambuf_iterator<char>(file), {} };
}

/// The files with one of these extensions in the project's families, and in those that
/// TYPLOOM_FAMILIES names.
inline std::set<std::filesystem::path> familyFiles(std::set<std::string> const& extensions)
{
    std::set<std::filesystem::path> files;
    char const* const more = std::getenv("TYPLOOM_FAMILIES");
    for (std::filesystem::path const& folder :
        { std::filesystem::path(SOURCE_FOLDER) / "Fonts", std::filesystem::path(more ? more : "") }) {
        if (folder.empty()) {
            continue;
        }
        for (auto const& entry : std::filesystem::recursive_directory_iterator(folder)) {
            if (entry.is_regular_file() && extensions.contains(entry.path().extension())) {
                files.insert(entry.path());
            }
        }
    }
    return files;
}
