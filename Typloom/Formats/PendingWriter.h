#pragma once

#include "Typloom/Formats/FamilyGlyphSource.h"
#include "Typloom/Formats/FileTransaction.h"

#include <set>

/// Writes pending texts of a family, in an order that leaves a family that opens after each.
class PendingWriter {
public:
    using Path = std::filesystem::path;
    using Pending = FamilyFiles::Pending;
    PendingWriter(TLFont const& font, FamilyGlyphSource const& family, FileSystem& fileSystem);

    /// An error's sentence; empty when all is done.
    std::string write(Pending const& pending);
    std::optional<FileStamp> stampOf(Path const& path) const;

    /// That in which the designspace is found.
    static Path familyFolder(TLFont const& font);

private:
    void add(Path const& path, std::optional<std::string> const& text);
    void makeFolders(Path const& root, std::string const& relative);
    std::pair<Path, std::string> rootOf(Path const& path) const;

    Path m_designspace; ///< That is replaced.
    Path m_link; ///< By what the family knows it; the same unless that is a link.
    bool m_isLink;
    Path m_folder;
    FileSystem& m_fileSystem;
    FileTransaction m_transaction;
    std::set<Path> m_ufos;
    std::set<Path> m_made;
};
