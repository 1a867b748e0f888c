#include "Typloom/Formats/SaveWork.h"

#include "Typloom/Formats/FileReading.h"
#include "Typloom/Formats/FileStamp.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>

using Kind = JournalEntry::Kind;

SaveWork::SaveWork(FileSystem& files, std::filesystem::path const& designspace, SaveJournal journal)
    : m_files(&files)
    , m_journal(std::move(journal))
    , m_designspaceName(designspace.filename().string())
    , m_journalName(journalPath(designspace).filename().string())
{
}

Result<SaveWork> SaveWork::open(
    FileSystem& files, std::filesystem::path const& designspace, SaveJournal journal)
{
    SaveWork work(files, designspace, std::move(journal));
    auto const folder = designspace.parent_path();
    auto base = RootFolder::open(files, folder, {});
    if (!base || !base->exists()) {
        return base ? work.folderError(reasonOfWriting(ENOENT)) : base.error();
    }
    work.m_base = std::move(*base);
    for (auto const& name : work.m_journal.roots) {
        auto root = RootFolder::open(files, folder / name, name == "." ? std::string {} : name);
        if (!root) {
            return root.error();
        }
        work.m_roots.push_back(std::move(*root));
    }
    return work;
}

FormatError SaveWork::errorAt(JournalEntry const& entry, int problem) const
{
    return m_roots[entry.root].errorAt(entry.path, reasonOfWriting(problem));
}

FormatError SaveWork::folderError(std::string reason) const
{
    return { .file = m_designspaceName, .reason = std::move(reason), .verb = "save into the folder of" };
}

std::optional<FormatError> SaveWork::outcome(
    JournalEntry const& entry, int result, std::initializer_list<int> harmless)
{
    m_hasChanged = m_hasChanged || result >= 0;
    bool const isGood = result >= 0 || std::find(harmless.begin(), harmless.end(), -result) != harmless.end();
    return isGood ? std::nullopt : std::optional(errorAt(entry, -result));
}

Result<std::optional<std::uint64_t>> SaveWork::hashOf(JournalEntry const& entry, std::string const* name)
{
    std::optional<std::uint64_t> hash;
    auto const place = rootOf(entry).placeOf(entry.path);
    if (!place) {
        return place.error();
    }
    auto const& fileName = name ? *name : place->name;
    struct stat facts { };
    bool const exists = place->folder >= 0
        && (::fstatat(place->folder, fileName.c_str(), &facts, AT_SYMLINK_NOFOLLOW) == 0 || errno != ENOENT);
    if (!exists) {
        return hash;
    }
    auto const content = readFileAt(place->folder, fileName, {});
    if (!content) {
        return rootOf(entry).errorAt(entry.path, content.error().reason);
    }
    hash = contentHash(*content);
    return hash;
}

Result<SaveWork::Sight> SaveWork::lookAt(std::size_t index)
{
    auto const& entry = m_journal.entries[index];
    if (entry.kind == Kind::remove) {
        auto const target = hashOf(entry);
        return target ? Result(Sight { *target ? State::ready : State::done }) : target.error();
    }
    if (entry.kind != Kind::write) {
        return Sight { State::ready };
    }
    auto const temporaryName = m_journal.temporaryName(index);
    auto const temporary = hashOf(entry, &temporaryName);
    auto const target = hashOf(entry);
    if (!temporary || !target) {
        return temporary ? target.error() : temporary.error();
    }
    bool const isOld = *target == entry.oldHash;
    bool const isNew = *target == entry.newHash;
    bool const isReady = *temporary == entry.newHash;
    auto const state = isReady ? State::ready : *temporary || isOld || !*target ? State::lost : State::done;
    return Sight { state, *target && !isOld && !isNew };
}

std::optional<FormatError> SaveWork::look()
{
    m_sights.clear();
    for (std::size_t index = 0; index < m_journal.entries.size(); ++index) {
        auto const sight = lookAt(index);
        if (!sight) {
            return sight.error();
        }
        m_sights.push_back(*sight);
    }
    return std::nullopt;
}

bool SaveWork::hasReplaced() const
{
    return std::any_of(
        m_sights.begin(), m_sights.end(), [](Sight const& sight) { return sight.state == State::done; });
}

std::vector<std::string> SaveWork::lost() const
{
    std::vector<std::string> files;
    for (std::size_t index = 0; index < m_sights.size(); ++index) {
        if (m_sights[index].state == State::lost) {
            auto const& entry = m_journal.entries[index];
            files.push_back(m_roots[entry.root].errorAt(entry.path, {}).file);
        }
    }
    return files;
}

std::vector<std::string> SaveWork::changedByOthers() const
{
    std::vector<std::string> files;
    for (std::size_t index = 0; index < m_sights.size(); ++index) {
        if (m_sights[index].isForeign && m_sights[index].state == State::ready) {
            auto const& entry = m_journal.entries[index];
            files.push_back(m_roots[entry.root].errorAt(entry.path, {}).file);
        }
    }
    return files;
}

std::optional<FormatError> SaveWork::finish()
{
    for (std::size_t index = 0; index < m_journal.entries.size(); ++index) {
        if (m_journal.entries[index].kind == Kind::write && m_sights[index].state == State::ready) {
            if (auto error = replace(index)) {
                return error;
            }
        }
    }
    if (auto error = synchronizeFolders()) {
        return error;
    }
    for (auto const& entry : m_journal.entries) {
        if (auto error = entry.kind == Kind::remove ? remove(entry) : std::nullopt) {
            return error;
        }
    }
    for (auto const& entry : m_journal.entries) {
        if (auto error = entry.kind == Kind::removeFolder ? removeFolder(entry) : std::nullopt) {
            return error;
        }
    }
    if (auto error = synchronizeFolders()) {
        return error;
    }
    // All is done; a journal that stays is found to have nothing left.
    static_cast<void>(removeJournal());
    return std::nullopt;
}

std::optional<FormatError> SaveWork::replace(std::size_t index)
{
    auto const& entry = m_journal.entries[index];
    auto const place = rootOf(entry).placeOf(entry.path);
    if (!place) {
        return place.error();
    }
    if (m_sights[index].isForeign) {
        int const result = m_files->rename(place->folder, place->name, place->name + ".typloom-kept");
        if (auto error = outcome(entry, result, {})) {
            return error;
        }
    }
    return outcome(entry, m_files->rename(place->folder, m_journal.temporaryName(index), place->name), {});
}

std::optional<FormatError> SaveWork::remove(JournalEntry const& entry)
{
    auto const place = rootOf(entry).placeOf(entry.path);
    auto const hash = hashOf(entry);
    if (!place || !hash) {
        return place ? hash.error() : place.error();
    }
    // What another program has made of it since is not ours to remove.
    bool const isOld = *hash && *hash == entry.oldHash;
    return isOld ? outcome(entry, m_files->removeFile(place->folder, place->name), { ENOENT }) : std::nullopt;
}

std::optional<FormatError> SaveWork::removeFolder(JournalEntry const& entry)
{
    auto const place = rootOf(entry).placeOf(entry.path);
    if (!place || place->folder < 0) {
        return place ? std::nullopt : std::optional(place.error());
    }
    return outcome(
        entry, m_files->removeFolder(place->folder, place->name), { ENOENT, ENOTEMPTY, EEXIST, ENOTDIR });
}

std::optional<FormatError> SaveWork::undo()
{
    auto const& entries = m_journal.entries;
    for (std::size_t index = 0; index < entries.size(); ++index) {
        auto const place = rootOf(entries[index]).placeOf(entries[index].path);
        if (!place) {
            return place.error();
        }
        if (entries[index].kind == Kind::write && place->folder >= 0) {
            int const result = m_files->removeFile(place->folder, m_journal.temporaryName(index));
            if (auto error = outcome(entries[index], result, { ENOENT })) {
                return error;
            }
        }
    }
    for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
        if (auto error = entry->kind == Kind::makeFolder ? removeFolder(*entry) : std::nullopt) {
            return error;
        }
    }
    // A temporary file that comes back after a power failure does no harm.
    static_cast<void>(synchronizeFolders());
    return removeJournal();
}

std::optional<FormatError> SaveWork::removeJournal()
{
    auto const place = m_base.placeOf(m_journalName);
    int const result = m_files->removeFile(place->folder, m_journalName);
    m_files->synchronize(place->folder);
    return result < 0 && result != -ENOENT ? std::optional(folderError(reasonOfWriting(-result)))
                                           : std::nullopt;
}

std::optional<FormatError> SaveWork::synchronizeFolders()
{
    for (auto const& root : m_roots) {
        for (auto const& [path, folder] : root.folders()) {
            int const result = folder.get() < 0 ? 0 : m_files->synchronize(folder.get());
            if (result < 0) {
                return root.errorAt(path, reasonOfWriting(-result));
            }
        }
    }
    return std::nullopt;
}
