#include "Typloom/Formats/RootFolder.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>

std::optional<std::vector<std::string>> namesInside(std::string_view relativePath)
{
    std::vector<std::string> names;
    if (relativePath.find_first_of(std::string_view("\0\\", 2)) != std::string_view::npos) {
        return std::nullopt;
    }
    for (std::size_t start = 0; start <= relativePath.size();) {
        auto const end = std::min(relativePath.find('/', start), relativePath.size());
        auto const name = relativePath.substr(start, end - start);
        if (name.empty() || name == "." || name == "..") {
            return std::nullopt;
        }
        names.emplace_back(name);
        start = end + 1;
    }
    return names;
}

Result<RootFolder> RootFolder::open(FileSystem& files, std::filesystem::path const& path, std::string shown)
{
    RootFolder root;
    root.m_files = &files;
    root.m_path = path.empty() ? "." : path;
    root.m_shown = std::move(shown);
    FileDescriptor folder(::open(root.m_path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.get() < 0 && errno != ENOENT) {
        auto const name = root.m_shown.empty() ? root.m_path.string() : root.m_shown;
        return FormatError { .file = name, .reason = reasonOfWriting(errno), .verb = "save" };
    }
    root.m_folders.emplace(std::string {}, std::move(folder));
    return root;
}

Result<int> RootFolder::folderNamed(std::string const& relativePath)
{
    auto const known = m_folders.find(relativePath);
    if (known != m_folders.end()) {
        return known->second.get();
    }
    auto const slash = relativePath.rfind('/');
    bool const isTop = slash == std::string::npos;
    auto const outer = folderNamed(isTop ? std::string {} : relativePath.substr(0, slash));
    if (!outer || *outer < 0) {
        return outer;
    }
    int const folder
        = m_files->open(*outer, relativePath.substr(isTop ? 0 : slash + 1), O_RDONLY | O_DIRECTORY, 0);
    if (folder == -ENOENT) {
        return -1;
    }
    if (folder < 0) {
        return errorAt(relativePath, reasonOfWriting(-folder));
    }
    m_folders.emplace(relativePath, FileDescriptor(folder));
    return folder;
}

Result<RootFolder::Place> RootFolder::placeOf(std::string const& relativePath)
{
    constexpr std::size_t deepest = 32;
    auto const names = namesInside(relativePath);
    if (!names || names->size() > deepest) {
        return errorAt(relativePath, "its name leads out of the folder");
    }
    auto const length = relativePath.size() - names->back().size();
    auto const folder = folderNamed(relativePath.substr(0, length == 0 ? 0 : length - 1));
    if (!folder) {
        return folder.error();
    }
    return Place { *folder, names->back() };
}

Result<std::string> RootFolder::pathBehindLink(std::string const& relativePath)
{
    auto const place = placeOf(relativePath);
    struct stat facts { };
    bool const isLink = place && place->folder >= 0
        && ::fstatat(place->folder, place->name.c_str(), &facts, AT_SYMLINK_NOFOLLOW) == 0
        && S_ISLNK(facts.st_mode);
    if (!place || !isLink) {
        return place ? Result<std::string>(relativePath) : place.error();
    }
    std::error_code problem;
    auto const root = std::filesystem::canonical(m_path, problem);
    auto const target = std::filesystem::canonical(m_path / relativePath, problem);
    auto inner = problem ? std::string {} : target.lexically_relative(root).string();
    if (!namesInside(inner)) {
        return errorAt(relativePath, "it is a link that leads out of the folder, or nowhere");
    }
    return inner;
}

FormatError RootFolder::errorAt(std::string const& relativePath, std::string reason) const
{
    auto const file = (m_shown.empty() ? m_shown : m_shown + "/") + relativePath;
    return { .file = file.empty() ? m_path.string() : file, // The family's folder itself has no name in it.
        .reason = std::move(reason),
        .verb = "save" };
}
