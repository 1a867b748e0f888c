#include "Typloom/TyploomApp/TLLineText.h"

#include "Typloom/TyploomCore/TLFont.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <unordered_set>

namespace {

constexpr char32_t replacementCharacter = 0xFFFD;

/// Takes the first character off UTF-8 text; what is no UTF-8 gives replacement characters.
char32_t takeCharacter(std::string_view& text)
{
    auto const lead = static_cast<unsigned char>(text.front());
    std::size_t const length = lead < 0x80 ? 1 : lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 1;
    if (lead >= 0x80 && (length == 1 || length > text.size())) {
        text.remove_prefix(1);
        return replacementCharacter;
    }
    char32_t character = length == 1 ? lead : lead & (0xFFU >> (length + 1));
    for (std::size_t index = 1; index < length; ++index) {
        character = (character << 6) | (static_cast<unsigned char>(text[index]) & 0x3FU);
    }
    text.remove_prefix(length);
    return character;
}

void appendCharacter(std::string& text, char32_t character)
{
    auto const byte = [&text](char32_t bits) { text.push_back(static_cast<char>(bits)); };
    if (character < 0x80) {
        byte(character);
        return;
    }
    if (character < 0x800) {
        byte(0xC0 | character >> 6);
    } else if (character < 0x10000) {
        byte(0xE0 | character >> 12);
        byte(0x80 | (character >> 6 & 0x3F));
    } else {
        byte(0xF0 | character >> 18);
        byte(0x80 | (character >> 12 & 0x3F));
        byte(0x80 | (character >> 6 & 0x3F));
    }
    byte(0x80 | (character & 0x3F));
}

/// Takes a "name" whose slash has been taken, and the blank that ends it.
std::string_view takeName(std::string_view& text)
{
    auto const name = text.substr(0, text.find_first_of(" /"));
    text.remove_prefix(name.size());
    if (text.starts_with(' ')) {
        text.remove_prefix(1);
    }
    return name;
}

/// A part of a text that stands for one glyph.
struct Element {
    char32_t character { 0 }; ///< 0 where there is a name, or nothing.
    std::string_view name;
};

Element takeElement(std::string_view& text)
{
    auto const character = takeCharacter(text);
    if (character != U'/') {
        return { character, {} };
    }
    if (text.starts_with('/')) {
        text.remove_prefix(1);
        return { U'/', {} };
    }
    return { 0, takeName(text) };
}

/// The names of a font's glyphs, listed only when there is need: a family can have 80,000.
class NameList {
public:
    explicit NameList(TLFont const& font)
        : m_font(font)
    {
    }
    bool contains(std::string_view name) const
    {
        if (m_font.glyphForName(name)) {
            return true;
        }
        if (!m_names) {
            auto names = m_font.glyphNames();
            m_names.emplace(std::make_move_iterator(names.begin()), std::make_move_iterator(names.end()));
        }
        return m_names->contains(std::string(name));
    }

private:
    TLFont const& m_font;
    mutable std::optional<std::unordered_set<std::string>> m_names;
};

/// A name that is a single character, as of most letters; 0 for any other.
char32_t characterAlone(std::string_view name)
{
    auto const character = name.empty() ? 0 : takeCharacter(name);
    return name.empty() ? character : 0;
}

/// The character whose glyph this is, and by which the text field can name it. A glyph that has not been
/// read yet is not read for that: then only its name can tell.
std::optional<char32_t> characterOfGlyph(TLFont const& font, std::string const& name)
{
    std::vector<char32_t> candidates { characterAlone(name) };
    if (auto const glyph = font.loadedGlyphForName(name)) {
        candidates = glyph->unicodes();
    }
    auto const found = std::find_if(candidates.begin(), candidates.end(), [&](char32_t character) {
        return character > U' ' && font.glyphNameForCharacter(character) == name;
    });
    return found == candidates.end() ? std::nullopt : std::optional(*found);
}

std::vector<std::string> firstGlyphsWithOutlines(TLFont const& font)
{
    constexpr std::size_t wanted = 8;
    constexpr std::size_t tried = 100; // Each try reads a file.
    auto names = font.glyphNames();
    std::vector<std::string> found;
    for (std::size_t index = 0; index < std::min(tried, names.size()) && found.size() < wanted; ++index) {
        auto const glyph = font.glyphForName(names[index]);
        auto const draws = [](auto const& entry) {
            auto const& outline = entry.second->outline();
            return !outline.contours.empty() || !outline.components.empty();
        };
        if (glyph && std::any_of(glyph->layers().begin(), glyph->layers().end(), draws)) {
            found.push_back(names[index]);
        }
    }
    if (found.empty() && !names.empty()) {
        found.push_back(names.front());
    }
    return found;
}

std::optional<std::string> glyphNameFor(Element const& element, TLFont const& font, NameList const& list)
{
    if (element.character != 0) {
        return font.glyphNameForCharacter(element.character);
    }
    bool const isListed = !element.name.empty() && list.contains(element.name);
    return isListed ? std::optional(std::string(element.name)) : std::nullopt;
}

} // namespace

std::vector<std::string> TLGlyphNamesForText(TLFont const& font, std::string_view text)
{
    NameList const list(font);
    std::vector<std::string> names;
    while (!text.empty() && names.size() < TLLineMaximumLength) {
        auto const element = takeElement(text);
        auto name = glyphNameFor(element, font, list);
        if (name) {
            names.push_back(std::move(*name));
        }
    }
    return names;
}

std::optional<std::string> TLUnknownNameInText(TLFont const& font, std::string_view text)
{
    NameList const list(font);
    while (!text.empty()) {
        auto const element = takeElement(text);
        if (!element.name.empty() && !list.contains(element.name)) {
            return std::string(element.name);
        }
    }
    return std::nullopt;
}

bool TLFontListsGlyph(TLFont const& font, std::string const& name)
{
    return NameList(font).contains(name);
}

std::string TLTextForGlyphNames(TLFont const& font, std::vector<std::string> const& names)
{
    std::string text;
    for (auto const& name : names) {
        auto const character = characterOfGlyph(font, name);
        if (character == U'/') {
            text += "//";
        } else if (character) {
            appendCharacter(text, *character);
        } else {
            text += "/" + name + " ";
        }
    }
    return text;
}

std::string TLDefaultText(TLFont const& font)
{
    std::string best;
    for (std::string_view const word : { "Hamburgefonstiv", "HAMBURGEFONSTIV", "0123456789" }) {
        std::string text;
        std::copy_if(word.begin(), word.end(), std::back_inserter(text), [&font](char letter) {
            return font.glyphNameForCharacter(static_cast<unsigned char>(letter)).has_value();
        });
        if (text.size() == word.size()) {
            return text;
        }
        if (text.size() > best.size()) {
            best = std::move(text);
        }
    }
    constexpr std::size_t enoughForALine = 3;
    return best.size() >= enoughForALine ? best : TLTextForGlyphNames(font, firstGlyphsWithOutlines(font));
}
