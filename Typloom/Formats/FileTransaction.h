#pragma once

#include "Typloom/Formats/FileStamp.h"
#include "Typloom/Formats/FileSystem.h"
#include "Typloom/Formats/Result.h"
#include "Typloom/Formats/SaveJournal.h"

#include <map>

/// Changes of the files of a family that happen all or not at all, wherever they are interrupted.
/// New content is written beside its target first, then a journal beside the designspace is
/// committed, then files are replaced in the order of the calls here, then files are removed.
/// What was broken off before the commit is undone, and later finished: at once where possible, else
/// when the family is opened next (`recoverFamily`).
///
/// Roots are the folder of the designspace and the UFOs that the caller lets it change. Paths are
/// relative to their root, with slashes; one that leads out of it, through ".." or a link, is an
/// error of `commit`, and so is a file that is no designspace, property list or glyph.
class FileTransaction {
public:
    /// `designspace` need not exist yet; its folder must.
    explicit FileTransaction(std::filesystem::path designspace, FileSystem& files = FileSystem::real());

    /// Replaces a file, keeping its mode and attributes, or makes it. Nothing is written where the
    /// content is what is there.
    void write(std::filesystem::path const& root, std::string const& path, std::string content);
    /// A file that is not there is no error.
    void remove(std::filesystem::path const& root, std::string const& path);
    /// Its outer folder must be there or be made before. One that is there is no error.
    void makeFolder(std::filesystem::path const& root, std::string const& path);
    /// After all files: one that is then not empty stays.
    void removeFolder(std::filesystem::path const& root, std::string const& path);

    /// None when all is done. After an error all is as it was, unless `isPending`. When an earlier save
    /// had to be finished first nothing is done either, since files are not what the caller read.
    std::optional<FormatError> commit();
    /// Whether the commit failed when it could not go back any more: the next opening finishes it.
    bool isPending() const { return m_isPending; }
    /// Of each file given to `write`, by root / path, once it was written.
    std::map<std::filesystem::path, FileStamp> const& stamps() const { return m_stamps; }

    struct Change {
        JournalEntry::Kind kind;
        std::filesystem::path root;
        std::string path;
        std::string content {};
    };

private:
    std::filesystem::path m_designspace;
    FileSystem& m_files;
    std::vector<Change> m_changes;
    std::map<std::filesystem::path, FileStamp> m_stamps;
    bool m_isPending { false };
};

/// What became of a save that was broken off.
struct FamilyRecovery {
    enum class Outcome {
        nothing, ///< There was none; nothing was written.
        finished, ///< The family is what it should have become.
        undone, ///< The family is what it was.
        failed ///< Nothing could be done yet; also while another program saves it.
    };
    Outcome outcome { Outcome::nothing };
    std::string sentence {}; ///< For the family's report; empty when there is nothing to say.
};

/// Finishes or undoes a save that was broken off. Without one it writes nothing at all.
FamilyRecovery recoverFamily(
    std::filesystem::path const& designspace, FileSystem& files = FileSystem::real());
