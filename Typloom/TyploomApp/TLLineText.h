#pragma once

#include "Typloom/TyploomCore/Export.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

class TLFont;

/// Most glyph objects that a line takes; what goes beyond is left out.
inline constexpr std::size_t TLLineMaximumLength = 10'000;

/// The glyphs that a text stands for, in order. A character (UTF-8) stands for the glyph that shows it;
/// "/name" up to a blank or the next slash stands for the glyph of that name, the blank that ends it for
/// nothing, and "//" for the glyph of the slash. What the font has no glyph for is left out; a glyph that
/// cannot be read is none of that.
TYPLOOM_API std::vector<std::string> TLGlyphNamesForText(TLFont const& font, std::string_view text);

/// The first "/name" in a text of which the font has no glyph; none when it has them all.
TYPLOOM_API std::optional<std::string> TLUnknownNameInText(TLFont const& font, std::string_view text);

/// Whether the font has a glyph of that name, one that cannot be read included.
TYPLOOM_API bool TLFontListsGlyph(TLFont const& font, std::string const& name);

/// A text that stands for these glyphs: characters where they have one, otherwise "/name ".
TYPLOOM_API std::string TLTextForGlyphNames(TLFont const& font, std::vector<std::string> const& names);

/// The text that a new window shows: letters of a word that type designers look at first, as far as the
/// font has them; for other scripts its first glyphs. Empty only for a font without glyphs.
TYPLOOM_API std::string TLDefaultText(TLFont const& font);
