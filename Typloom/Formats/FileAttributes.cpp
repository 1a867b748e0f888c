#include "Typloom/Formats/FileAttributes.h"

#include <algorithm>
#include <cerrno>

#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace {

void keepOwner(struct stat const& was, struct stat const& is, int file)
{
    bool const isOfOther = was.st_uid != is.st_uid;
    bool const isGiven = isOfOther && ::fchown(file, was.st_uid, was.st_gid) == 0;
    if (!isGiven && was.st_gid != is.st_gid) {
        // Not everyone may give a file to a group.
        [[maybe_unused]] int const ignored = ::fchown(file, uid_t(-1), was.st_gid);
    }
}

/// Not every disk keeps them.
void keepExtendedAttributes(int old, int file)
{
    if (::flistxattr(old, nullptr, 0) <= 0) {
        return;
    }
    std::string names(std::size_t(64) * 1024, '\0');
    std::string value(names);
    auto const length = ::flistxattr(old, names.data(), names.size());
    names.resize(length < 0 ? 0 : static_cast<std::size_t>(length));
    for (char const* attribute = names.c_str(); *attribute != 0;
         attribute += std::string_view(attribute).size() + 1) {
        auto const size = ::fgetxattr(old, attribute, value.data(), value.size());
        if (size >= 0) {
            ::fsetxattr(file, attribute, value.data(), static_cast<std::size_t>(size), 0);
        }
    }
}

} // namespace

int keepAttributes(FileSystem& files, int old, int file)
{
    struct stat was { };
    struct stat is { };
    if (::fstat(old, &was) != 0 || ::fstat(file, &is) != 0) {
        return -errno;
    }
    keepOwner(was, is, file);
    keepExtendedAttributes(old, file);
    constexpr unsigned permissions = 07777;
    // Giving a file away takes its special bits.
    bool const isAlike = ::fstat(file, &is) == 0 && (was.st_mode & permissions) == (is.st_mode & permissions);
    return isAlike ? 0 : files.setMode(file, was.st_mode & permissions);
}

int writeWhole(FileSystem& files, int file, std::string_view content)
{
    while (!content.empty()) {
        auto const count = files.write(file, content);
        if (count <= 0 && count != -EINTR) {
            return count == 0 ? -ENOSPC : static_cast<int>(count);
        }
        content.remove_prefix(static_cast<std::size_t>(std::max<std::ptrdiff_t>(count, 0)));
    }
    return 0;
}
