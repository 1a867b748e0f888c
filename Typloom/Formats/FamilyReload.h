#pragma once

#include "Typloom/TyploomCore/TLFont.h"

/// Every file of the family that has been read, and the folders in which they lie: what is to be watched for
/// changes by other programs.
std::vector<std::filesystem::path> TLFilesToWatch(TLFont const& font);

struct TLReloadOutcome {
    bool anything { false }; ///< Whether the document has changed.
    /// On what was changed both here and by another program and was left, a sentence each. They come again
    /// with each call, until the changes here are saved or undone.
    std::vector<std::string> sentences {};
};

/// Brings a document up to date with files that other programs have changed. Glyphs, axes and masters without
/// changes of their own become what the files say; their objects stay. Of a glyph with changes the layers
/// that are drawn as they were saved follow their files, and its changes can still be undone. A file that
/// can't be read, since it is still being written, is left for the next call. `willChange` is called before
/// the document changes, and only then.
TLReloadOutcome TLReloadChangedFiles(
    std::shared_ptr<TLFont> const& font, std::function<void()> const& willChange = {});
