#include "Typloom/Formats/FileReading.h"

#include "Typloom/Formats/FileDescriptor.h"

#include <algorithm>
#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

std::string reasonOf(int errorNumber)
{
    switch (errorNumber) {
    case ENOENT:
    case ENOTDIR:
        return "there is no such file";
    case ELOOP:
        return "its links lead in a circle";
    case EACCES:
    case EPERM:
        return "it may not be read";
    case ENXIO:
        return "it is not a regular file";
    default:
        return std::generic_category().message(errorNumber);
    }
}

Result<std::string> readWhole(int descriptor, std::size_t size, std::string const& displayName)
{
    std::string content(size, '\0');
    std::size_t filled = 0;
    while (filled < content.size()) {
        auto const count = ::read(descriptor, content.data() + filled, content.size() - filled);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            return FormatError { displayName, 0, reasonOf(errno) };
        }
        if (count == 0) {
            break; // It became shorter while it was read.
        }
        filled += static_cast<std::size_t>(count);
    }
    content.resize(filled);
    return content;
}

Result<std::string> readFile(
    int folder, char const* path, int linkFlag, std::string const& displayName, FileStamp* stamp)
{
    int const flags = O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY | linkFlag;
    FileDescriptor const file(::openat(folder, path, flags));
    struct stat facts { };
    if (file.get() < 0 || ::fstat(file.get(), &facts) != 0) {
        return FormatError { displayName, 0, reasonOf(errno) };
    }
    if (S_ISDIR(facts.st_mode)) {
        return FormatError { displayName, 0, "it is a folder" };
    }
    if (!S_ISREG(facts.st_mode)) {
        return FormatError { displayName, 0, "it is not a regular file" };
    }
    auto const size = static_cast<std::size_t>(facts.st_size);
    if (size > fileSizeLimit) {
        return FormatError { displayName, 0, "it is too large" };
    }
    auto content = readWhole(file.get(), size, displayName);
    if (stamp && content) {
        *stamp = makeStamp(facts, *content);
    }
    return content;
}

} // namespace

Result<std::string> readFile(
    std::filesystem::path const& path, std::string const& displayName, FileStamp* stamp)
{
    return readFile(AT_FDCWD, path.c_str(), 0, displayName, stamp);
}

std::string reasonOfDiskFault()
{
    return reasonOf(EIO);
}

Result<std::string> readFileAt(
    int folder, std::string const& name, std::string const& displayName, FileStamp* stamp)
{
    return readFile(folder, name.c_str(), O_NOFOLLOW, displayName, stamp);
}

Result<std::string> readFileInside(std::filesystem::path const& root,
    std::filesystem::path const& relativePath, std::string const& displayName, FileStamp* stamp)
{
    bool const leads = relativePath.is_absolute()
        || std::find(relativePath.begin(), relativePath.end(), "..") != relativePath.end();
    if (leads) {
        return FormatError { displayName, 0, "its name leads out of the folder" };
    }
    auto const path = root / relativePath;
    std::error_code problem;
    if (!std::filesystem::is_symlink(std::filesystem::symlink_status(path, problem))) {
        return readFile(AT_FDCWD, path.c_str(), O_NOFOLLOW, displayName, stamp);
    }
    auto const target = std::filesystem::canonical(path, problem);
    if (problem) {
        return FormatError { displayName, 0, reasonOf(problem.value()) };
    }
    if (!liesInside(target, root)) {
        return FormatError { displayName, 0, "it is a link that leads out of the folder" };
    }
    return readFile(AT_FDCWD, target.c_str(), O_NOFOLLOW, displayName, stamp);
}

bool liesInside(std::filesystem::path const& path, std::filesystem::path const& folder)
{
    std::error_code problem;
    auto const inner = std::filesystem::canonical(path, problem);
    if (problem) {
        return false;
    }
    auto const outer = std::filesystem::canonical(folder, problem);
    if (problem) {
        return false;
    }
    auto const ends = std::mismatch(outer.begin(), outer.end(), inner.begin(), inner.end());
    return ends.first == outer.end();
}
