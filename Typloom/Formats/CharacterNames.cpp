#include "Typloom/Formats/CharacterNames.h"

#include <array>
#include <string_view>

namespace {

struct NamedRange {
    char32_t first;
    std::array<std::string_view, 96> names;
};

/// Basic Latin without the letters, which are their own names, and Latin-1.
constexpr NamedRange namedRanges[] {
    { U' ',
        { "space", "exclam", "quotedbl", "numbersign", "dollar", "percent", "ampersand", "quotesingle",
            "parenleft", "parenright", "asterisk", "plus", "comma", "hyphen", "period", "slash", "zero",
            "one", "two", "three", "four", "five", "six", "seven", "eight", "nine", "colon", "semicolon",
            "less", "equal", "greater", "question", "at" } },
    { U'[', { "bracketleft", "backslash", "bracketright", "asciicircum", "underscore", "grave" } },
    { U'{', { "braceleft", "bar", "braceright", "asciitilde" } },
    { 0xA0,
        { "nbspace", "exclamdown", "cent", "sterling", "currency", "yen", "brokenbar", "section", "dieresis",
            "copyright", "ordfeminine", "guillemotleft", "logicalnot", "softhyphen", "registered", "macron",
            "degree", "plusminus", "twosuperior", "threesuperior", "acute", "mu", "paragraph",
            "periodcentered", "cedilla", "onesuperior", "ordmasculine", "guillemotright", "onequarter",
            "onehalf", "threequarters", "questiondown", "Agrave", "Aacute", "Acircumflex", "Atilde",
            "Adieresis", "Aring", "AE", "Ccedilla", "Egrave", "Eacute", "Ecircumflex", "Edieresis", "Igrave",
            "Iacute", "Icircumflex", "Idieresis", "Eth", "Ntilde", "Ograve", "Oacute", "Ocircumflex",
            "Otilde", "Odieresis", "multiply", "Oslash", "Ugrave", "Uacute", "Ucircumflex", "Udieresis",
            "Yacute", "Thorn", "germandbls", "agrave", "aacute", "acircumflex", "atilde", "adieresis",
            "aring", "ae", "ccedilla", "egrave", "eacute", "ecircumflex", "edieresis", "igrave", "iacute",
            "icircumflex", "idieresis", "eth", "ntilde", "ograve", "oacute", "ocircumflex", "otilde",
            "odieresis", "divide", "oslash", "ugrave", "uacute", "ucircumflex", "udieresis", "yacute",
            "thorn", "ydieresis" } },
};

std::string inHexadecimal(char32_t character, std::size_t leastDigits)
{
    static constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    for (; character != 0; character /= 16) {
        text.insert(text.begin(), digits[character % 16]);
    }
    return text.size() < leastDigits ? std::string(leastDigits - text.size(), '0') + text : text;
}

} // namespace

std::vector<std::string> likelyGlyphNames(char32_t character)
{
    std::vector<std::string> names;
    bool const isLetter
        = (character >= U'A' && character <= U'Z') || (character >= U'a' && character <= U'z');
    if (isLetter) {
        names.emplace_back(1, static_cast<char>(character));
    }
    for (auto const& [first, range] : namedRanges) {
        if (character >= first && character - first < range.size() && !range[character - first].empty()) {
            names.emplace_back(range[character - first]);
        }
    }
    names.push_back((character > 0xFFFF ? "u" : "uni") + inHexadecimal(character, 4));
    return names;
}
