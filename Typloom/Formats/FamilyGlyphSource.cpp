#include "Typloom/Formats/FamilyGlyphSource.h"

#include "Typloom/Formats/CharacterNames.h"
#include "Typloom/Formats/GlifReader.h"
#include "Typloom/Formats/GlyphLoader.h"
#include "Typloom/Formats/VariableComponents.h"

#include <algorithm>
#include <set>

std::optional<std::filesystem::path> Family::glifPath(
    std::string_view ufo, std::string_view ufoLayer, std::string_view glyphName) const
{
    auto const source = std::find_if(sources.begin(), sources.end(),
        [ufo](auto const& candidate) { return candidate.ufo->displayName() == ufo; });
    auto const layer = source == sources.end() ? std::nullopt : source->ufo->layerNamed(ufoLayer);
    if (!layer || !source->ufo->layers()[*layer].fileNames.contains(glyphName)) {
        return std::nullopt;
    }
    return source->ufo->glifPath(*layer, glyphName).lexically_normal();
}

FamilyGlyphSource::FamilyGlyphSource(Family family, std::shared_ptr<FamilyFiles> files)
    : m_family(std::move(family))
    , m_files(std::move(files))
{
}

void FamilyGlyphSource::setFamily(Family family)
{
    m_family = std::move(family);
    m_glyphNames.reset();
    m_namesByCharacter.reset();
}

std::vector<LayerOrigin> FamilyGlyphSource::originsOf(std::string_view glyphName) const
{
    auto const known = m_origins.find(glyphName);
    return known == m_origins.end() ? std::vector<LayerOrigin> {} : known->second;
}

void FamilyGlyphSource::setOrigins(std::string const& glyphName, std::vector<LayerOrigin> origins)
{
    m_origins.insert_or_assign(glyphName, std::move(origins));
}

RemovedLayer const* FamilyGlyphSource::removedLayer(
    std::string const& glyphName, std::string const& layerId) const
{
    auto const known = m_removed.find({ glyphName, layerId });
    return known == m_removed.end() ? nullptr : &known->second;
}

void FamilyGlyphSource::rememberRemoved(std::string const& glyphName, RemovedLayer layer)
{
    m_removed.insert_or_assign({ glyphName, layer.origin.layerId }, std::move(layer));
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
    GlyphLoader loader(m_family, font, name, report);
    auto glyph = loader.load();
    setOrigins(std::string(name), loader.origins());
    return glyph;
}

std::optional<std::vector<char32_t>> FamilyGlyphSource::unicodesOf(std::string_view glyphName) const
{
    auto const& [ufo, layer] = std::pair(reference().ufo, reference().layer);
    if (!ufo->layers()[layer].fileNames.contains(glyphName)) {
        return std::nullopt;
    }
    auto const text = ufo->scanGlif(layer, glyphName);
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

namespace {

/// The glyphs of a layer whose files name a library entry.
void collectNames(Ufo const& ufo, std::size_t layer, std::string_view key, std::set<std::string>& names)
{
    for (auto const& [name, file] : ufo.layers()[layer].fileNames) {
        auto const text
            = names.contains(name) ? Result<std::string>(std::string {}) : ufo.scanGlif(layer, name);
        if (text && text->find(key) != std::string::npos) {
            names.insert(name);
        }
    }
}

} // namespace

std::vector<std::string> FamilyGlyphSource::glyphNamesWithVariableComponents()
{
    std::set<std::string> names;
    std::set<Ufo const*> seen;
    for (auto const& source : m_family.sources) {
        if (!seen.insert(source.ufo.get()).second) {
            continue;
        }
        for (std::size_t layer = 0; layer < source.ufo->layers().size(); ++layer) {
            collectNames(*source.ufo, layer, variableComponentsKey, names);
        }
    }
    return { names.begin(), names.end() };
}

std::vector<std::string> FamilyGlyphSource::glyphNamesWithOwnDesignSpace()
{
    std::set<std::string> names;
    auto const* source = m_family.defaultSource ? &m_family.sources[*m_family.defaultSource] : nullptr;
    if (source && source->ufo->defaultLayer()) {
        collectNames(*source->ufo, *source->ufo->defaultLayer(), glyphDesignspaceKey, names);
    }
    return { names.begin(), names.end() };
}
