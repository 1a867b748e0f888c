#pragma once

#include "Typloom/Formats/Result.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

/// One change of a save.
struct JournalEntry {
    enum class Kind { makeFolder, write, remove, removeFolder };
    Kind kind { Kind::write };
    std::size_t root { 0 }; ///< Index into the journal's roots.
    std::string path; ///< Below its root.
    std::uint64_t newHash { 0 }; ///< Of what is written.
    std::optional<std::uint64_t> oldHash {}; ///< Of what is replaced or removed; none: nothing is there.
    bool operator==(JournalEntry const&) const = default;
};

/// What a save is about to do, on disk beside the designspace for as long as it lasts. Until the
/// journal is committed the family is what it was; from then on it is what it shall become.
struct SaveJournal {
    std::string token; ///< In the names of the temporary files.
    std::vector<std::string> roots {}; ///< Relative to the designspace's folder, "." for that itself.
    std::vector<JournalEntry> entries {};
    bool isCommitted { false };

    /// The temporary file of an entry, beside its target.
    std::string temporaryName(std::size_t entry) const;
    /// Without the line that commits it.
    std::string text() const;
    bool operator==(SaveJournal const&) const = default;
};

inline constexpr std::string_view journalCommitLine = "commit\n";

std::string makeJournalToken();
std::filesystem::path journalPath(std::filesystem::path const& designspace);

/// What a journal file says; none when it was cut off before it was whole, so that nothing can have
/// been done yet. The text is not trusted: it is an error when a path leads out of its root, when a root
/// outside the family is no UFO, and when a change is none that a save may make.
Result<std::optional<SaveJournal>> readJournal(std::string_view text, std::filesystem::path const& journal);

/// Whether a save may make a change: new files at all, but of those that are there it replaces or
/// removes only the designspace, glyphs and property lists; features it may remove, with a UFO that it made.
bool mayChange(SaveJournal const& journal, JournalEntry const& entry, std::string_view designspaceName);
