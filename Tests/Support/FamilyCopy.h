#pragma once

#include "Tests/Support/TemporaryFolder.h"

#include <fstream>
#include <iterator>
#include <map>

/// A writable copy of the folder in which a family lies.
class FamilyCopy {
public:
    explicit FamilyCopy(std::filesystem::path const& designspace,
        std::filesystem::path const& parent = std::filesystem::temp_directory_path())
        : m_folder(parent)
        , m_name(designspace.filename())
    {
        std::filesystem::copy(designspace.parent_path(), folder(), std::filesystem::copy_options::recursive);
        for (auto const& entry : std::filesystem::recursive_directory_iterator(folder())) {
            std::filesystem::permissions(
                entry.path(), std::filesystem::perms::owner_write, std::filesystem::perm_options::add);
        }
        std::filesystem::permissions(
            folder(), std::filesystem::perms::owner_write, std::filesystem::perm_options::add);
    }

    std::filesystem::path folder() const { return m_folder.path() / "family"; }
    std::filesystem::path path() const { return folder() / m_name; }

    std::string text(std::string const& relativePath) const
    {
        std::ifstream file(folder() / relativePath, std::ios::binary);
        return { std::istreambuf_iterator<char>(file), {} };
    }
    /// The content replaced, as another program would do it.
    void write(std::string const& relativePath, std::string const& content) const
    {
        std::filesystem::create_directories((folder() / relativePath).parent_path());
        std::ofstream(folder() / relativePath, std::ios::binary) << content;
    }
    void replace(std::string const& relativePath, std::string const& old, std::string const& now) const
    {
        auto content = text(relativePath);
        content.replace(content.find(old), old.size(), now);
        write(relativePath, content);
    }

    /// The content of every file by its path; that of the folders is empty.
    std::map<std::string, std::string> files() const
    {
        std::map<std::string, std::string> files;
        for (auto const& entry : std::filesystem::recursive_directory_iterator(folder())) {
            auto const path = entry.path().lexically_relative(folder()).generic_string();
            files.emplace(path, entry.is_regular_file() ? text(path) : std::string {});
        }
        return files;
    }
    std::map<std::string, std::filesystem::file_time_type> times() const
    {
        std::map<std::string, std::filesystem::file_time_type> times;
        for (auto const& entry : std::filesystem::recursive_directory_iterator(folder())) {
            times.emplace(entry.path().string(), entry.last_write_time());
        }
        return times;
    }

private:
    TemporaryFolder m_folder;
    std::filesystem::path m_name;
};

/// The lines that are in one text and not in the other: "-" those of the first, "+" those of the second, in
/// order.
inline std::vector<std::string> lineDifference(std::string const& before, std::string const& after)
{
    auto const lines = [](std::string const& text) {
        std::vector<std::string> found;
        for (std::size_t start = 0; start < text.size();) {
            auto const end = std::min(text.find('\n', start), text.size());
            auto const line = text.substr(start, end - start);
            found.push_back(line.substr(std::min(line.find_first_not_of(" \t"), line.size())));
            start = end + 1;
        }
        return found;
    };
    auto const one = lines(before);
    auto const other = lines(after);
    // Longest common subsequence; the texts are short.
    std::vector<std::vector<int>> common(one.size() + 1, std::vector<int>(other.size() + 1));
    for (auto i = one.size(); i-- > 0;) {
        for (auto j = other.size(); j-- > 0;) {
            common[i][j] = one[i] == other[j] ? common[i + 1][j + 1] + 1
                                              : std::max(common[i + 1][j], common[i][j + 1]);
        }
    }
    std::vector<std::string> difference;
    for (std::size_t i = 0, j = 0; i < one.size() || j < other.size();) {
        if (i < one.size() && j < other.size() && one[i] == other[j]) {
            ++i;
            ++j;
        } else if (j == other.size() || (i < one.size() && common[i + 1][j] >= common[i][j + 1])) {
            difference.push_back("-" + one[i++]);
        } else {
            difference.push_back("+" + other[j++]);
        }
    }
    return difference;
}
