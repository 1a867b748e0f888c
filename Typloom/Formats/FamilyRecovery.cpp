#include "Typloom/Formats/FileDescriptor.h"
#include "Typloom/Formats/FileReading.h"
#include "Typloom/Formats/FileTransaction.h"
#include "Typloom/Formats/SaveWork.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace {

using Outcome = FamilyRecovery::Outcome;

class Recovery {
public:
    Recovery(std::filesystem::path const& designspace, FileSystem& files)
        : m_designspace(designspace)
        , m_files(files)
        , m_name(inQuotes(designspace.filename().string()))
    {
    }

    FamilyRecovery run()
    {
        auto const path = journalPath(m_designspace);
        FileDescriptor const file(
            ::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
        if (file.get() < 0 && errno == ENOENT) {
            return {};
        }
        if (::flock(file.get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
            return { Outcome::failed, "Another program is saving " + m_name + " at this moment." };
        }
        struct stat facts { };
        if (::fstat(file.get(), &facts) == 0 && facts.st_nlink == 0) {
            return {}; // The save ended while its journal was opened.
        }
        auto const text = readFile(path, path.string());
        auto journal = text ? readJournal(*text, path) : text.error();
        if (!journal) {
            return failed(journal.error());
        }
        return carryOut(std::move(*journal));
    }

private:
    FamilyRecovery carryOut(std::optional<SaveJournal> journal)
    {
        bool const isCommitted = journal && journal->isCommitted;
        auto work = SaveWork::open(m_files, m_designspace, journal ? std::move(*journal) : SaveJournal {});
        if (!work) {
            return failed(work.error());
        }
        if (!isCommitted) {
            return undo(*work);
        }
        if (auto const error = work->look()) {
            return failed(*error);
        }
        return !work->lost().empty() && !work->hasReplaced() ? undo(*work) : finish(*work);
    }

    FamilyRecovery undo(SaveWork& work)
    {
        if (auto const error = work.undo()) {
            return failed(*error);
        }
        return {
            Outcome::undone,
            "The last save of " + m_name
                + " had been broken off before it changed anything. The family is as it was before that save."
        };
    }

    FamilyRecovery finish(SaveWork& work)
    {
        auto const kept = work.changedByOthers();
        if (auto const error = work.finish()) {
            return failed(*error);
        }
        if (auto const lost = work.lost(); !lost.empty()) {
            auto const more = lost.size() > 1 ? " and " + std::to_string(lost.size() - 1) + " more files"
                                              : std::string {};
            return { Outcome::failed,
                "The last save of " + m_name
                    + " had been broken off. All of it has now been finished but for what it was to write "
                      "into "
                    + inQuotes(lost.front()) + more + ", which is lost." };
        }
        if (!work.hasChanged()) {
            return {};
        }
        auto sentence = "The last save of " + m_name + " had been broken off and has now been finished.";
        for (auto const& file : kept) {
            sentence += " Another program had changed " + inQuotes(file)
                + " since; that content is beside it, with the ending '.typloom-kept'.";
        }
        return { Outcome::finished, sentence };
    }

    FamilyRecovery failed(FormatError const& error) const
    {
        return { Outcome::failed,
            "The last save of " + m_name
                + " was broken off and cannot be finished now, so that the family may be partly as before "
                  "it: "
                + inQuotes(error.file) + ": " + error.reason + "." };
    }

    std::filesystem::path const& m_designspace;
    FileSystem& m_files;
    std::string m_name;
};

} // namespace

FamilyRecovery recoverFamily(std::filesystem::path const& designspace, FileSystem& files)
{
    return designspace.has_filename() ? Recovery(designspace, files).run() : FamilyRecovery {};
}
