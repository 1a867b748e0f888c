#pragma once

#include "Typloom/Formats/RootFolder.h"
#include "Typloom/Formats/SaveJournal.h"

/// Carries a journal out, or takes it back. Both can be broken off and started anew at any time.
class SaveWork {
public:
    /// Opens the roots; changes nothing.
    static Result<SaveWork> open(
        FileSystem& files, std::filesystem::path const& designspace, SaveJournal journal);

    SaveJournal& journal() { return m_journal; }
    RootFolder& rootOf(JournalEntry const& entry) { return m_roots[entry.root]; }
    /// The designspace's own folder.
    RootFolder& base() { return m_base; }
    FormatError errorAt(JournalEntry const& entry, int problem) const;
    /// Of the folder in which the journal lies, which nobody knows by its own name.
    FormatError folderError(std::string reason) const;
    /// Of a file beside an entry's target, or of the target itself; none when there is none.
    Result<std::optional<std::uint64_t>> hashOf(JournalEntry const& entry, std::string const* name = nullptr);

    /// Looks at how far the work is. To be asked before the three below.
    std::optional<FormatError> look();
    bool hasReplaced() const; ///< It has begun, so it cannot be undone.
    /// The files whose new content is gone before it was put in place.
    std::vector<std::string> lost() const;
    /// The files that another program changed since the journal was written.
    std::vector<std::string> changedByOthers() const;

    /// Puts the temporary files in place and removes what is to be removed. A file that another
    /// program changed is kept beside the new one with the ending ".typloom-kept".
    std::optional<FormatError> finish();
    /// Removes temporary files and new folders.
    std::optional<FormatError> undo();
    /// Whether `finish` changed anything.
    bool hasChanged() const { return m_hasChanged; }

    std::optional<FormatError> synchronizeFolders();

private:
    enum class State { ready, done, lost };
    struct Sight {
        State state { State::ready };
        bool isForeign { false }; ///< The target is neither what it was nor what it shall become.
    };

    explicit SaveWork(FileSystem& files, std::filesystem::path const& designspace, SaveJournal journal);
    Result<Sight> lookAt(std::size_t index);
    std::optional<FormatError> replace(std::size_t index);
    std::optional<FormatError> remove(JournalEntry const& entry);
    std::optional<FormatError> removeFolder(JournalEntry const& entry);
    std::optional<FormatError> removeJournal();
    std::optional<FormatError> outcome(
        JournalEntry const& entry, int result, std::initializer_list<int> harmless);

    FileSystem* m_files;
    SaveJournal m_journal;
    std::string m_designspaceName;
    std::string m_journalName;
    RootFolder m_base;
    std::vector<RootFolder> m_roots;
    std::vector<Sight> m_sights; ///< One for each entry.
    bool m_hasChanged { false };
};
