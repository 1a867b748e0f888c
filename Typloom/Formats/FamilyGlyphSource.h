#pragma once

#include "Typloom/Formats/Ufo.h"
#include "Typloom/TyploomCore/TLFont.h"

/// One source of the family: a layer of a UFO, and where it stands.
struct FamilySource {
    TLLayerKind kind { TLLayerKind::master };
    std::string id; ///< Of the master, or of the intermediate layer in every glyph.
    std::string name;
    std::string masterId; ///< Of the associated master; a master's own.
    std::shared_ptr<Ufo const> ufo;
    std::size_t layer { 0 };
    TLCoordinates coordinates; ///< Design coordinates on every axis of the font, by identifier.
};

struct Family {
    std::vector<FamilySource> sources; ///< Masters in font order, then intermediate layers in file order.
    std::optional<std::size_t> defaultSource;
};

/// Reads the glyphs of a family from its UFOs, each when it is first needed.
class FamilyGlyphSource final : public TLGlyphSource {
public:
    explicit FamilyGlyphSource(Family family);

    std::vector<std::string> glyphNames() const override;
    std::shared_ptr<TLGlyph> loadGlyph(std::shared_ptr<TLFont> const& font, std::string_view name,
        std::vector<std::string>& report) override;
    std::optional<std::string> glyphNameForCharacter(char32_t character) override;

private:
    FamilySource const& reference() const;
    std::optional<std::vector<char32_t>> unicodesOf(std::string_view glyphName) const;
    void scanUnicodes();

    Family m_family;
    mutable std::optional<std::vector<std::string>> m_glyphNames;
    std::optional<std::unordered_map<char32_t, std::string>> m_namesByCharacter;
};
