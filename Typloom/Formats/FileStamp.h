#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>

struct stat;

/// What a file was when it was read or written, to see later whether another program changed it.
struct FileStamp {
    std::uint64_t size { 0 }; ///< Bytes.
    std::int64_t modified { 0 }; ///< Nanoseconds since 1970, by the file's own time.
    std::uint64_t inode { 0 };
    std::uint64_t hash { 0 }; ///< Of the content.
    std::int64_t taken { 0 }; ///< Nanoseconds since 1970, when the stamp was made.
};

/// 64 bits by FNV-1a. Tells changes apart, not forgeries.
std::uint64_t contentHash(std::string_view content);

FileStamp makeStamp(struct stat const& facts, std::string_view content);

/// Whether a file has other content than it had. Looks into it only when its time, size or place
/// differ, or when it had been modified so shortly before the stamp that its time says nothing.
/// A file that cannot be read any more has changed.
bool hasChanged(std::filesystem::path const& path, FileStamp const& stamp);
