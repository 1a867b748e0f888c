#pragma once

#include "Typloom/Formats/FileStamp.h"
#include "Typloom/Formats/Result.h"

#include <filesystem>
#include <map>
#include <memory>
#include <optional>

/// The files of a family as its readers see them: as they lie on disk, and before those the texts that are
/// about to be written. Remembers how each file was when it was read.
class FamilyFiles {
public:
    using Path = std::filesystem::path;
    /// None: the file is to be removed.
    using Pending = std::map<Path, std::optional<std::string>>;

    /// The content of a file whose name is trusted.
    Result<std::string> read(Path const& path, std::string const& displayName);
    /// That of a file in a folder out of which no name may lead.
    Result<std::string> readInside(
        Path const& root, Path const& relativePath, std::string const& displayName);
    bool exists(Path const& path) const;

    /// How the files were that have been read, or written since.
    std::map<Path, FileStamp> const& stamps() const { return m_stamps; }
    void setStamp(Path const& path, std::optional<FileStamp> const& stamp);

    /// The text of a file as it was last read or written, for when the file is gone; none when it is not
    /// kept. Kept are those that hold more than the document knows, but for lists of glyphs.
    std::optional<std::string> keptText(Path const& path) const;
    void keepText(Path const& path, std::string const& text);

    Pending const& pending() const { return m_pending; }
    /// While anything is pending nothing is remembered of what is read.
    void setPending(Pending pending) { m_pending = std::move(pending); }

private:
    friend class StampTrial;
    std::optional<std::string> const* pendingEntry(Path const& path) const;
    template <class Read>
    Result<std::string> read(Path const& path, std::string const& displayName, Read fromDisk);

    std::map<Path, FileStamp> m_stamps;
    std::map<Path, std::string> m_texts;
    Pending m_pending;
};

/// For as long as it lives files read as if pending ones were written.
class PendingReading {
public:
    PendingReading(FamilyFiles& files, FamilyFiles::Pending pending)
        : m_files(files)
    {
        m_files.setPending(std::move(pending));
    }
    ~PendingReading() { m_files.setPending({}); }
    PendingReading(PendingReading const&) = delete;

private:
    FamilyFiles& m_files;
};

/// While it lives, what is remembered of files that are read is so on trial: forgotten unless accepted.
class StampTrial {
public:
    explicit StampTrial(FamilyFiles& files)
        : m_files(files)
        , m_former(files.m_stamps)
    {
    }
    ~StampTrial()
    {
        if (!m_isAccepted) {
            m_files.m_stamps = std::move(m_former);
        }
    }
    StampTrial(StampTrial const&) = delete;
    void accept() { m_isAccepted = true; }

private:
    FamilyFiles& m_files;
    std::map<FamilyFiles::Path, FileStamp> m_former;
    bool m_isAccepted { false };
};
