#pragma once

#include "Typloom/Formats/FamilyGlyphSource.h"

/// What keeps its identity when the family of an open document is read again.
struct KnownFamily {
    std::map<std::string, std::string, std::less<>> axisIds; ///< By axis name.
    /// Of the masters, by the file name of their source; several sources may name one UFO.
    std::map<std::string, std::vector<std::string>, std::less<>> masterIds;
    /// UFOs that need not be read again, by the file name of their sources.
    std::map<std::string, std::shared_ptr<Ufo const>, std::less<>> ufos;
};

/// The same as `TLOpenFamily`, through the given files; the font's glyph source is a `FamilyGlyphSource`.
Result<std::shared_ptr<TLFont>> openFamily(
    std::filesystem::path const& path, std::shared_ptr<FamilyFiles> files, KnownFamily const& known = {});
