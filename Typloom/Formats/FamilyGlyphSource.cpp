#include "Typloom/Formats/FamilyGlyphSource.h"

#include "Typloom/Formats/CharacterNames.h"
#include "Typloom/Formats/GlifReader.h"
#include "Typloom/Formats/GlyphLoader.h"

#include <algorithm>
#include <set>

FamilyGlyphSource::FamilyGlyphSource(Family family)
    : m_family(std::move(family))
{
}

/// The source whose glyphs tell their characters and their order.
FamilySource const& FamilyGlyphSource::reference() const
{
    return m_family.sources[m_family.defaultSource.value_or(0)];
}

std::vector<std::string> FamilyGlyphSource::glyphNames() const
{
    if (!m_glyphNames) {
        std::set<std::string_view> remaining;
        std::set<UfoLayer const*> seen;
        for (auto const& source : m_family.sources) {
            auto const& layer = source.ufo->layers()[source.layer];
            if (seen.insert(&layer).second) {
                for (auto const& [name, file] : layer.fileNames) {
                    remaining.insert(name);
                }
            }
        }
        m_glyphNames.emplace();
        std::vector<std::string> ignored;
        for (auto& name : reference().ufo->readGlyphOrder(ignored)) {
            if (remaining.erase(name) > 0) {
                m_glyphNames->push_back(std::move(name));
            }
        }
        m_glyphNames->insert(m_glyphNames->end(), remaining.begin(), remaining.end());
    }
    return *m_glyphNames;
}

std::shared_ptr<TLGlyph> FamilyGlyphSource::loadGlyph(
    std::shared_ptr<TLFont> const& font, std::string_view name, std::vector<std::string>& report)
{
    return GlyphLoader(m_family, font, name, report).load();
}

std::optional<std::vector<char32_t>> FamilyGlyphSource::unicodesOf(std::string_view glyphName) const
{
    auto const& [ufo, layer] = std::pair(reference().ufo, reference().layer);
    if (!ufo->layers()[layer].fileNames.contains(glyphName)) {
        return std::nullopt;
    }
    auto const text = ufo->readGlif(layer, glyphName);
    return text ? std::optional(findUnicodes(*text)) : std::nullopt;
}

std::optional<std::string> FamilyGlyphSource::glyphNameForCharacter(char32_t character)
{
    if (!m_namesByCharacter) {
        for (auto& name : likelyGlyphNames(character)) {
            auto const unicodes = unicodesOf(name);
            if (unicodes && std::find(unicodes->begin(), unicodes->end(), character) != unicodes->end()) {
                return std::move(name);
            }
        }
        scanUnicodes();
    }
    auto const found = m_namesByCharacter->find(character);
    return found == m_namesByCharacter->end() ? std::nullopt : std::optional(found->second);
}

void FamilyGlyphSource::scanUnicodes()
{
    m_namesByCharacter.emplace();
    for (auto const& name : glyphNames()) {
        for (char32_t const character : unicodesOf(name).value_or(std::vector<char32_t> {})) {
            m_namesByCharacter->try_emplace(character, name);
        }
    }
}
