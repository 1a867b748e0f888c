#include "Typloom/Formats/FileStamp.h"

#include "Typloom/Formats/FileReading.h"

#include <chrono>

#include <sys/stat.h>

namespace {

constexpr std::int64_t second = 1'000'000'000;

std::int64_t modifiedTime(struct stat const& facts)
{
    return std::int64_t(facts.st_mtim.tv_sec) * second + facts.st_mtim.tv_nsec;
}

} // namespace

std::uint64_t contentHash(std::string_view content)
{
    constexpr std::uint64_t offset = 0xCBF29CE484222325;
    constexpr std::uint64_t prime = 0x100000001B3;
    std::uint64_t hash = offset;
    for (char const character : content) {
        hash = (hash ^ static_cast<unsigned char>(character)) * prime;
    }
    return hash;
}

FileStamp makeStamp(struct stat const& facts, std::string_view content)
{
    auto const now = std::chrono::system_clock::now().time_since_epoch();
    return { .size = content.size(),
        .modified = modifiedTime(facts),
        .inode = facts.st_ino,
        .hash = contentHash(content),
        .taken = std::chrono::duration_cast<std::chrono::nanoseconds>(now).count() };
}

bool hasChanged(std::filesystem::path const& path, FileStamp const& stamp)
{
    // File systems keep times as coarse as two seconds.
    bool const isSettled = stamp.modified + 2 * second < stamp.taken;
    struct stat facts { };
    if (::stat(path.c_str(), &facts) != 0 || static_cast<std::uint64_t>(facts.st_size) != stamp.size) {
        return true;
    }
    if (isSettled && modifiedTime(facts) == stamp.modified && facts.st_ino == stamp.inode) {
        return false;
    }
    auto const content = readFile(path, {});
    return !content || contentHash(*content) != stamp.hash;
}
