#pragma once

#include "Typloom/Formats/FileSystem.h"
#include "Typloom/TyploomCore/TLFont.h"

struct TLCopyOutcome {
    std::filesystem::path designspace {}; ///< Of the copy; empty when there is none.
    std::string sentence {}; ///< Then: why.
    std::vector<std::string>
        notes {}; ///< What the copy lacks, and what other programs make of it, a sentence each.
};

/// Writes the whole family, changes that are not saved included, into a new folder: the designspace by the
/// name of the folder, and every UFO that it names, with all that lies in them. UFOs outside the family's
/// folder come into the copy's. Document, history and files stay as they are, and so does everything when it
/// fails.
///
/// `chosen` is the folder, which must not be there or be empty; an ending ".designspace" is left away. What
/// other programs have changed in the files is in the copy. Where files are gone they are made of what the
/// document has read, and `notes` tell what is missing.
TLCopyOutcome TLSaveCopy(std::shared_ptr<TLFont> const& font, std::filesystem::path const& chosen,
    FileSystem& fileSystem = FileSystem::real());
