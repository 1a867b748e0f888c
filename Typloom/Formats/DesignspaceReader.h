#pragma once

#include "Typloom/Formats/Result.h"
#include "Typloom/TyploomCore/TLFont.h"

/// Opens the family of a designspace file. Reads that file and of each UFO its lists of layers and
/// glyphs and its metrics; a glyph is read when the font is first asked for it. Writes
/// nothing, but for finishing or undoing a save that had been broken off, which the report tells.
///
/// The family of a link is that of the file to which it leads: there lie its UFOs, and that is the
/// font's path.
///
/// What is partly broken opens with what is good, and the font's report says what is not. An error
/// (one sentence) when nothing can be shown: no designspace, an axis that can't be placed, no master.
Result<std::shared_ptr<TLFont>> TLOpenFamily(std::filesystem::path const& path);
