#pragma once

#include "Typloom/Formats/FileSystem.h"
#include "Typloom/TyploomCore/TLFont.h"

struct TLSaveOptions {
    /// Apply the changes to files that other programs have changed since they were read.
    bool overwriteForeignChanges { false };
    /// Write into UFOs that the designspace names but that lie outside its folder.
    bool writeOutsideFamily { false };
};

struct TLSaveOutcome {
    enum class Kind {
        saved,
        nothingToSave,
        changedByOthers, ///< Nothing was written; `files` were changed by another program.
        liesOutside, ///< Nothing was written; `files` lie outside the family's folder.
        failed ///< Nothing was written, or what was written was taken back.
    };
    Kind kind { Kind::failed };
    std::string sentence {}; ///< Which file and why; empty when saved.
    std::vector<std::string> files {}; ///< Those written, or those that the question is about.
    std::vector<std::string> notes {}; ///< What other programs will make of it, a sentence each.
};

/// Writes what differs between a document and its files; files without a difference are not touched.
///
/// A file that changes keeps its order, style and all that is not understood. A layer of a UFO that loses its
/// last glyph goes with the sparse source that brought it, unless its folder holds anything else or the
/// place is needed by a source of some glyph's own. The UFO of a master that is removed stays on
/// disk, where nothing names it; only that of a new master that was undone goes again. Layers that share a
/// file which cannot be parted become alike.
TLSaveOutcome TLSaveFamily(std::shared_ptr<TLFont> const& font, TLSaveOptions const& options = {},
    FileSystem& fileSystem = FileSystem::real());
