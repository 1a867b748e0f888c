// What a SaveRun finds before it writes anything.

#include "Typloom/Formats/SaveRun.h"

#include "Typloom/Formats/FileReading.h"

#include <algorithm>

#include <fcntl.h>
#include <sys/stat.h>

using Kind = JournalEntry::Kind;

namespace {

/// As the journal names it, so that a family that was moved as a whole is still found.
std::string rootName(std::filesystem::path const& folder, std::filesystem::path const& root)
{
    auto const inner = root.lexically_relative(folder).string();
    if (inner == "." || namesInside(inner)) {
        return inner;
    }
    std::error_code problem;
    auto const relative = std::filesystem::relative(root, folder, problem);
    return problem || relative.empty() ? root.string() : relative.string();
}

} // namespace

FormatError SaveRun::errorOf(Change const& change, std::string reason) const
{
    return { .file = (change.root / change.path).string(), .reason = std::move(reason), .verb = "save" };
}

std::optional<FormatError> SaveRun::plan()
{
    SaveJournal journal;
    journal.token = makeJournalToken();
    for (auto const& change : m_changes) {
        if (rootIndex(change.root) == m_rootPaths.size()) {
            m_rootPaths.push_back(change.root);
            journal.roots.push_back(
                rootName(m_designspace.parent_path(), std::filesystem::absolute(change.root)));
        }
    }
    auto work = SaveWork::open(m_files, m_designspace, std::move(journal));
    if (!work) {
        return work.error();
    }
    m_work.emplace(std::move(*work));
    for (auto const& change : m_changes) {
        if (auto error = planChange(change)) {
            return error;
        }
    }
    // What could not be finished after a crash must not begin.
    auto const text = m_work->journal().text();
    auto const readBack = readJournal(text, journalPath(m_designspace));
    bool const isGood = readBack && *readBack == m_work->journal();
    return isGood ? std::nullopt
                  : std::optional(FormatError { .file = m_designspace.string(),
                      .reason = "it has folders that a save may not change",
                      .verb = "save" });
}

std::size_t SaveRun::rootIndex(std::filesystem::path const& root)
{
    auto const found = std::find(m_rootPaths.begin(), m_rootPaths.end(), root);
    return static_cast<std::size_t>(found - m_rootPaths.begin());
}

std::optional<FormatError> SaveRun::planChange(Change const& change)
{
    JournalEntry entry { .kind = change.kind, .root = rootIndex(change.root), .path = change.path };
    if (entry.kind == Kind::write || entry.kind == Kind::remove) {
        return planFile(change, std::move(entry));
    }
    auto const isThere = isFolderThere(entry);
    if (!isThere) {
        return isThere.error();
    }
    if (*isThere == (entry.kind == Kind::removeFolder)) {
        m_planned.push_back(&change);
        m_work->journal().entries.push_back(std::move(entry));
    }
    return std::nullopt;
}

Result<bool> SaveRun::isFolderThere(JournalEntry const& entry)
{
    auto const place = m_work->rootOf(entry).placeOf(entry.path);
    if (!place) {
        return place.error();
    }
    struct stat facts { };
    bool const isThere = place->folder >= 0
        && ::fstatat(place->folder, place->name.c_str(), &facts, AT_SYMLINK_NOFOLLOW) == 0;
    if (isThere && !S_ISDIR(facts.st_mode)) {
        return m_work->rootOf(entry).errorAt(entry.path, "it is not a folder");
    }
    return isThere;
}

std::optional<FormatError> SaveRun::planFile(Change const& change, JournalEntry entry)
{
    auto path = m_work->rootOf(entry).pathBehindLink(entry.path);
    if (!path) {
        return path.error();
    }
    entry.path = std::move(*path);
    auto const oldHash = m_work->hashOf(entry);
    if (!oldHash) {
        return oldHash.error();
    }
    entry.oldHash = *oldHash;
    entry.newHash = entry.kind == Kind::write ? contentHash(change.content) : 0;
    if (!m_targets.emplace(entry.root, entry.path).second) {
        return errorOf(change, "it would be changed twice");
    }
    if (entry.kind == Kind::remove && !entry.oldHash) {
        return std::nullopt;
    }
    if (entry.kind == Kind::write && entry.oldHash == entry.newHash) {
        return stampOf(change, entry);
    }
    if (!mayChange(m_work->journal(), entry, m_designspace.filename().string())) {
        return errorOf(change, "it is no glyph and no property list");
    }
    m_planned.push_back(&change);
    m_work->journal().entries.push_back(std::move(entry));
    return std::nullopt;
}

std::optional<FormatError> SaveRun::stampOf(Change const& change, JournalEntry const& entry)
{
    auto const place = m_work->rootOf(entry).placeOf(entry.path);
    auto const content = readFileAt(place->folder, place->name, {}, &m_stamps[change.root / change.path]);
    return content ? std::nullopt : std::optional(errorOf(change, content.error().reason));
}
