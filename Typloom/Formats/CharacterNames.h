#pragma once

#include <string>
#include <vector>

/// The names that a glyph for a character usually has, the likeliest first. A guess: whether the
/// glyph is really there for the character, its file tells.
std::vector<std::string> likelyGlyphNames(char32_t character);
