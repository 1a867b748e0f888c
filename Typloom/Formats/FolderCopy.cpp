#include "Typloom/Formats/FolderCopy.h"

#include "Typloom/Formats/FileAttributes.h"
#include "Typloom/Formats/FileDescriptor.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

constexpr int notReadable = 1; ///< Beside error numbers, which are negative.

bool isTemporary(std::filesystem::path const& path)
{
    auto const name = path.filename().string();
    return name.starts_with(".typloom-") && name.ends_with(".tmp");
}

} // namespace

FormatError FolderCopy::errorAt(Path const& path, int problem) const
{
    return { .file = shown(path), .reason = reasonOfWriting(problem), .verb = "save" };
}

std::optional<FormatError> FolderCopy::makeFolders(Path const& folder)
{
    std::error_code problem;
    if (folder.empty() || std::filesystem::is_directory(folder, problem)) {
        return std::nullopt;
    }
    if (auto error = makeFolders(folder.parent_path())) {
        return error;
    }
    int const result = m_files.makeFolder(AT_FDCWD, folder.string());
    return result < 0 ? std::optional(errorAt(folder, -result)) : std::nullopt;
}

std::optional<FormatError> FolderCopy::copy(Path const& from, Path const& to)
{
    if (auto error = makeFolders(to.parent_path())) {
        return error;
    }
    std::error_code problem;
    auto const behindLinks = std::filesystem::canonical(from, problem);
    m_source = problem ? from : behindLinks;
    return std::filesystem::is_directory(m_source, problem) ? copyFolder(m_source, to)
                                                            : copyFile(m_source, to);
}

std::optional<FormatError> FolderCopy::copyFolder(Path const& from, Path const& to)
{
    int const result = m_files.makeFolder(AT_FDCWD, to.string());
    if (result < 0) {
        return errorAt(to, -result);
    }
    std::error_code problem;
    std::filesystem::directory_iterator entries(from, problem);
    if (problem) {
        m_leftOut.push_back(shown(to));
        return std::nullopt;
    }
    for (; entries != std::filesystem::directory_iterator(); entries.increment(problem)) {
        if (isTemporary(entries->path())) {
            continue;
        }
        if (auto error = copyEntry(*entries, to / entries->path().filename())) {
            return error;
        }
    }
    if (problem) {
        m_leftOut.push_back("the rest of " + shown(to));
    }
    FileDescriptor const old(::open(from.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    FileDescriptor const made(m_files.open(AT_FDCWD, to.string(), O_RDONLY | O_DIRECTORY, 0));
    keepWritable(old.get(), made.get(), S_IRWXU);
    return std::nullopt;
}

/// Gives the copy what the other has besides its content, as far as the disk can hold that.
void FolderCopy::keepWritable(int old, int copy, unsigned ownerMay)
{
    constexpr unsigned permissions = 07777;
    struct stat facts { };
    if (old < 0 || copy < 0) {
        return;
    }
    static_cast<void>(keepAttributes(m_files, old, copy));
    if (::fstat(copy, &facts) == 0 && (facts.st_mode & ownerMay) != ownerMay) {
        static_cast<void>(m_files.setMode(copy, (facts.st_mode & permissions) | ownerMay));
    }
}

std::optional<FormatError> FolderCopy::copyEntry(
    std::filesystem::directory_entry const& entry, Path const& to)
{
    std::error_code problem;
    if (entry.is_symlink(problem)) {
        auto const target = std::filesystem::read_symlink(entry.path(), problem);
        auto const whole = (entry.path().parent_path() / target).lexically_normal();
        bool const staysInside = target.is_relative() && *whole.lexically_relative(m_source).begin() != "..";
        std::filesystem::create_symlink(staysInside ? target : whole, to, problem);
        return problem ? std::optional(errorAt(to, problem.value())) : std::nullopt;
    }
    return entry.is_directory(problem) ? copyFolder(entry.path(), to) : copyFile(entry.path(), to);
}

std::optional<FormatError> FolderCopy::copyFile(Path const& from, Path const& to)
{
    FileDescriptor const old(::open(from.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat facts { };
    if (old.get() < 0 || ::fstat(old.get(), &facts) != 0 || !S_ISREG(facts.st_mode)) {
        m_leftOut.push_back(shown(to));
        return std::nullopt;
    }
    int const result = copyContent(old.get(), to);
    if (result == notReadable) {
        m_leftOut.push_back(shown(to));
        int const removed = m_files.removeFile(AT_FDCWD, to.string());
        return removed < 0 ? std::optional(errorAt(to, -removed)) : std::nullopt;
    }
    return result < 0 ? std::optional(errorAt(to, -result)) : std::nullopt;
}

int FolderCopy::copyContent(int from, Path const& to)
{
    FileDescriptor const file(m_files.open(AT_FDCWD, to.string(), O_WRONLY | O_CREAT | O_EXCL, 0666));
    int result = file.get();
    std::string buffer(std::size_t(64) * 1024, '\0');
    while (result >= 0) {
        auto const count = ::read(from, buffer.data(), buffer.size());
        if (count < 0 && errno != EINTR) {
            return notReadable;
        }
        if (count == 0) {
            break;
        }
        result = count < 0
            ? 0
            : writeWhole(m_files, file.get(), { buffer.data(), static_cast<std::size_t>(count) });
    }
    if (result >= 0) {
        keepWritable(from, file.get(), S_IRUSR | S_IWUSR);
    }
    return result;
}

std::optional<FormatError> FolderCopy::write(Path const& to, std::string_view content)
{
    std::error_code problem;
    if (std::filesystem::is_symlink(to, problem)) {
        std::filesystem::remove(to, problem);
    }
    FileDescriptor const file(m_files.open(AT_FDCWD, to.string(), O_WRONLY | O_CREAT | O_TRUNC, 0666));
    int const result = file.get() < 0 ? file.get() : writeWhole(m_files, file.get(), content);
    return result < 0 ? std::optional(errorAt(to, -result)) : std::nullopt;
}
