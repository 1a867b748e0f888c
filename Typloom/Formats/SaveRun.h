#pragma once

#include "Typloom/Formats/FileTransaction.h"
#include "Typloom/Formats/SaveWork.h"

#include <optional>
#include <set>

/// One run of a `FileTransaction`, from its changes to files in their places.
class SaveRun {
public:
    SaveRun(FileSystem& files, std::filesystem::path const& designspace,
        std::vector<FileTransaction::Change> const& changes);

    /// None when all is done. After an error all is as it was, unless `isPending`.
    std::optional<FormatError> run();
    bool isPending() const { return m_isPending; }
    std::map<std::filesystem::path, FileStamp> takeStamps() { return std::move(m_stamps); }

private:
    using Change = FileTransaction::Change;

    /// The journal of what has to be done. Writes nothing.
    std::optional<FormatError> plan();
    std::optional<FormatError> planChange(Change const& change);
    std::optional<FormatError> planFile(Change const& change, JournalEntry entry);
    /// Of a file that holds already what it shall hold.
    std::optional<FormatError> stampOf(Change const& change, JournalEntry const& entry);
    Result<bool> isFolderThere(JournalEntry const& entry);
    std::size_t rootIndex(std::filesystem::path const& root);
    FormatError errorOf(Change const& change, std::string reason) const;

    std::optional<FormatError> beginJournal();
    std::optional<FormatError> prepare();
    std::optional<FormatError> makeFolder(JournalEntry const& entry);
    std::optional<FormatError> writeTemporary(std::size_t index);
    std::optional<FormatError> commit();
    std::optional<FormatError> finish();
    std::optional<FormatError> undoAfter(FormatError error);
    int keepAttributes(int folder, std::string const& name, int file);

    FileSystem& m_files;
    std::filesystem::path m_designspace;
    std::vector<Change> const& m_changes;
    std::vector<std::filesystem::path> m_rootPaths;
    std::vector<Change const*> m_planned; ///< One for each entry of the journal.
    std::set<std::pair<std::size_t, std::string>> m_targets;
    std::optional<SaveWork> m_work;
    FileDescriptor m_journalFile;
    std::map<std::filesystem::path, FileStamp> m_stamps;
    bool m_isPending { false };
};
