#include "Typloom/Formats/FamilyGlyphSource.h"

#include "Typloom/Formats/CharacterNames.h"
#include "Typloom/Formats/FileReading.h"
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

FamilySource const* Family::axisHolder(std::string_view glyphName) const
{
    auto const holds = [glyphName](FamilySource const& source) {
        auto const layer = source.ufo->defaultLayer();
        return layer && source.kind == TLLayerKind::master
            && source.ufo->layers()[*layer].fileNames.contains(glyphName);
    };
    if (defaultSource && holds(sources[*defaultSource])) {
        return &sources[*defaultSource];
    }
    auto const holder = std::find_if(sources.begin(), sources.end(), holds);
    return holder == sources.end() ? nullptr : &*holder;
}

std::vector<FamilySource const*> Family::sourcesBeside(std::set<std::filesystem::path> const& files) const
{
    std::vector<FamilySource const*> beside;
    for (auto const& source : sources) {
        auto const folder = source.ufo->folder().lexically_normal();
        bool const concerns = std::any_of(files.begin(), files.end(), [&folder](auto const& path) {
            auto const ends = std::mismatch(folder.begin(), folder.end(), path.begin(), path.end());
            return path.extension() != ".glif" && ends.first == folder.end();
        });
        if (!concerns) {
            beside.push_back(&source);
        }
    }
    return beside;
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
    m_passing.erase(std::string(name));
    if (auto place = glyph ? std::nullopt : passingFault(name)) {
        m_passing.emplace(name, std::move(*place));
    }
    return glyph;
}

/// The folder of the glyph's layer when that is away, or its file when the disk fails.
std::optional<std::filesystem::path> FamilyGlyphSource::passingFault(std::string_view glyphName) const
{
    for (auto const& source : m_family.sources) {
        auto const& layer = source.ufo->layers()[source.layer];
        if (!layer.fileNames.contains(glyphName)) {
            continue;
        }
        std::error_code problem;
        auto const path = source.ufo->glifPath(source.layer, glyphName);
        if (!std::filesystem::is_directory(path.parent_path(), problem)) {
            return path.parent_path();
        }
        if (auto const text = readFile(path, {}); !text && text.error().reason == reasonOfDiskFault()) {
            return path;
        }
    }
    return std::nullopt;
}

bool FamilyGlyphSource::mayReadLater(std::string_view name) const
{
    auto const fault = m_passing.find(name);
    std::error_code problem;
    return fault != m_passing.end() && std::filesystem::exists(fault->second, problem);
}

std::optional<std::string> FamilyGlyphSource::reasonAgainstNewLayer(std::string_view masterId) const
{
    auto const source = std::find_if(m_family.sources.begin(), m_family.sources.end(),
        [masterId](auto const& candidate) { return candidate.id == masterId; });
    return source == m_family.sources.end() || source->ufo->version() > 2
        ? std::nullopt
        : std::optional(inQuotes(source->ufo->displayName())
            + " is a UFO of version 2, which has no place for another layer. A program that converts it to "
              "version 3 helps.");
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

/// The glyphs of a layer whose files name a library entry, but for those that were `seen` in others.
void collectNames(Ufo const& ufo, std::size_t layer, std::string_view key, std::set<std::string>& names,
    std::set<std::string_view>* seen = nullptr)
{
    for (auto const& [name, file] : ufo.layers()[layer].fileNames) {
        if (seen && !seen->insert(name).second) {
            continue;
        }
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
    std::set<std::string_view> seen;
    auto const collect = [&](FamilySource const& source) {
        auto const layer = source.kind == TLLayerKind::master ? source.ufo->defaultLayer() : std::nullopt;
        if (layer) {
            collectNames(*source.ufo, *layer, glyphDesignspaceKey, names, &seen);
        }
    };
    if (m_family.defaultSource) {
        collect(m_family.sources[*m_family.defaultSource]);
    }
    std::for_each(m_family.sources.begin(), m_family.sources.end(), collect);
    return { names.begin(), names.end() };
}
