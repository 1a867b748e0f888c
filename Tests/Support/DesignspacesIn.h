#pragma once

#include <algorithm>
#include <filesystem>
#include <vector>

/// Every designspace below a folder, sorted.
inline std::vector<std::filesystem::path> designspacesIn(std::filesystem::path const& folder)
{
    std::vector<std::filesystem::path> found;
    for (auto const& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.path().extension() == ".designspace") {
            found.push_back(entry.path());
        }
    }
    std::sort(found.begin(), found.end());
    return found;
}
