#include "Typloom/Formats/FileSystem.h"

#include <cerrno>
#include <cstdio>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

template <class Number> Number orProblem(Number result)
{
    return result < 0 ? -errno : result;
}

} // namespace

int FileSystem::open(int folder, std::string const& name, int flags, unsigned mode)
{
    return orProblem(::openat(folder, name.c_str(), flags | O_NOFOLLOW | O_CLOEXEC, mode));
}

std::ptrdiff_t FileSystem::write(int file, std::string_view bytes)
{
    return orProblem(::write(file, bytes.data(), bytes.size()));
}

int FileSystem::synchronize(int descriptor)
{
    return orProblem(::fsync(descriptor));
}

int FileSystem::synchronizeDisk(int descriptor)
{
    return orProblem(::syncfs(descriptor));
}

int FileSystem::setMode(int file, unsigned mode)
{
    return orProblem(::fchmod(file, mode));
}

int FileSystem::rename(int folder, std::string const& name, std::string const& newName)
{
    return orProblem(::renameat(folder, name.c_str(), folder, newName.c_str()));
}

int FileSystem::removeFile(int folder, std::string const& name)
{
    return orProblem(::unlinkat(folder, name.c_str(), 0));
}

int FileSystem::removeFolder(int folder, std::string const& name)
{
    return orProblem(::unlinkat(folder, name.c_str(), AT_REMOVEDIR));
}

int FileSystem::makeFolder(int folder, std::string const& name)
{
    constexpr unsigned allBeforeTheMask = 0777;
    return orProblem(::mkdirat(folder, name.c_str(), allBeforeTheMask));
}

FileSystem& FileSystem::real()
{
    static FileSystem system;
    return system;
}

std::string reasonOfWriting(int problem)
{
    switch (problem) {
    case EACCES:
    case EPERM:
        return "it may not be written";
    case EROFS:
        return "it is on a disk that can only be read";
    case ENOSPC:
        return "the disk is full";
    case EDQUOT:
        return "the room that you may use on the disk is full";
    case ENOENT:
        return "its folder is not there";
    case EEXIST:
        return "something of that name is there already";
    case ELOOP:
    case ENOTDIR:
        return "a link or a file stands where a folder should be";
    default:
        return std::generic_category().message(problem);
    }
}
