#include "Typloom/Formats/SaveRun.h"

#include "Typloom/Formats/FileAttributes.h"
#include "Typloom/Formats/FileReading.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

using Kind = JournalEntry::Kind;

SaveRun::SaveRun(FileSystem& files, std::filesystem::path const& designspace,
    std::vector<FileTransaction::Change> const& changes)
    : m_files(files)
    , m_designspace(std::filesystem::absolute(designspace))
    , m_changes(changes)
{
}

std::optional<FormatError> SaveRun::run()
{
    if (auto error = plan()) {
        return error;
    }
    if (m_planned.empty()) {
        return std::nullopt;
    }
    if (auto error = beginJournal()) {
        return error;
    }
    auto error = prepare();
    error = error ? error : commit();
    return error ? undoAfter(std::move(*error)) : finish();
}

std::optional<FormatError> SaveRun::beginJournal()
{
    auto const name = journalPath(m_designspace).filename().string();
    auto const text = m_work->journal().text();
    auto const place = m_work->base().placeOf(name);
    auto const failed = [&](int result) { return m_work->folderError(reasonOfWriting(-result)); };
    auto const inTheWay = m_work->folderError("another program is at work on the family at this moment");
    int result = m_files.open(place->folder, name, O_WRONLY | O_CREAT | O_EXCL, 0666);
    if (result < 0) {
        return result == -EEXIST ? inTheWay : failed(result);
    }
    m_journalFile = FileDescriptor(result);
    struct stat facts { };
    bool const isOurs = ::flock(result, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
    if (!isOurs || ::fstat(result, &facts) != 0 || facts.st_nlink == 0) {
        return inTheWay;
    }
    result = writeWhole(m_files, m_journalFile.get(), text);
    result = result < 0 ? result : m_files.synchronize(m_journalFile.get());
    result = result < 0 ? result : m_files.synchronize(place->folder);
    return result < 0 ? undoAfter(failed(result)) : std::nullopt;
}

std::optional<FormatError> SaveRun::prepare()
{
    auto const& entries = m_work->journal().entries;
    for (std::size_t index = 0; index < entries.size(); ++index) {
        auto error = entries[index].kind == Kind::makeFolder ? makeFolder(entries[index])
            : entries[index].kind == Kind::write             ? writeTemporary(index)
                                                             : std::nullopt;
        if (error) {
            return error;
        }
    }
    return m_work->synchronizeFolders();
}

std::optional<FormatError> SaveRun::makeFolder(JournalEntry const& entry)
{
    auto const place = m_work->rootOf(entry).placeOf(entry.path);
    if (!place) {
        return place.error();
    }
    int const result = place->folder < 0 ? -ENOENT : m_files.makeFolder(place->folder, place->name);
    return result < 0 ? std::optional(m_work->errorAt(entry, -result)) : std::nullopt;
}

std::optional<FormatError> SaveRun::writeTemporary(std::size_t index)
{
    auto const& entry = m_work->journal().entries[index];
    auto const place = m_work->rootOf(entry).placeOf(entry.path);
    if (!place) {
        return place.error();
    }
    auto const& content = m_planned[index]->content;
    int result = place->folder < 0 ? -ENOENT
                                   : m_files.open(place->folder, m_work->journal().temporaryName(index),
                                       O_WRONLY | O_CREAT | O_EXCL, 0666);
    FileDescriptor const file(result);
    result = result >= 0 && entry.oldHash ? keepAttributes(place->folder, place->name, file.get()) : result;
    result = result < 0 ? result : writeWhole(m_files, file.get(), content);
    result = result < 0 ? result : m_files.synchronize(file.get());
    struct stat facts { };
    if (result < 0 || ::fstat(file.get(), &facts) != 0) {
        return m_work->errorAt(entry, result < 0 ? -result : errno);
    }
    m_stamps[m_planned[index]->root / m_planned[index]->path] = makeStamp(facts, content);
    return std::nullopt;
}

/// What the file has that is to be replaced.
int SaveRun::keepAttributes(int folder, std::string const& name, int file)
{
    FileDescriptor const old(m_files.open(folder, name, O_RDONLY | O_NONBLOCK | O_NOCTTY, 0));
    return old.get() < 0 ? old.get() : ::keepAttributes(m_files, old.get(), file);
}

std::optional<FormatError> SaveRun::commit()
{
    if (auto error = m_work->look()) {
        return error;
    }
    if (auto const changed = m_work->changedByOthers(); !changed.empty()) {
        return FormatError {
            .file = changed.front(), .reason = "another program has just changed it", .verb = "save"
        };
    }
    int result = writeWhole(m_files, m_journalFile.get(), journalCommitLine);
    result = result < 0 ? result : m_files.synchronize(m_journalFile.get());
    return result < 0 ? std::optional(m_work->folderError(reasonOfWriting(-result))) : std::nullopt;
}

std::optional<FormatError> SaveRun::finish()
{
    auto error = m_work->finish();
    if (!error) {
        return std::nullopt;
    }
    auto const blind = m_work->look();
    if (!blind && !m_work->hasReplaced()) {
        return undoAfter(std::move(*error));
    }
    // Too late to go back: what failed may have been a passing fault.
    m_isPending = blind || m_work->finish().has_value();
    return m_isPending ? error : std::nullopt;
}

std::optional<FormatError> SaveRun::undoAfter(FormatError error)
{
    // What cannot be removed now is removed when the family is opened next.
    static_cast<void>(m_work->undo());
    return error;
}
