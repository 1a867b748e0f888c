#include "Typloom/Formats/GlyphLoader.h"

#include "Typloom/TyploomCore/TLDocumentHistory.h"

#include <algorithm>

GlyphLoader::GlyphLoader(Family const& family, std::shared_ptr<TLFont> font, std::string_view name,
    std::vector<std::string>& report)
    : m_family(family)
    , m_font(std::move(font))
    , m_name(name)
    , m_report(report)
    , m_glyph(std::make_shared<TLGlyph>(m_name))
{
    m_glyph->setFont(m_font);
    if (m_font) {
        m_savedAxes = m_font->history().savedAxes();
    }
}

std::shared_ptr<TLGlyph> GlyphLoader::load()
{
    addFamilySources();
    readUnicodes();
    addGlyphDesignspace();
    addOtherLayers();
    bool const isReadable = std::any_of(m_glyph->layers().begin(), m_glyph->layers().end(),
        [](auto const& entry) { return !entry.second->problem(); });
    return isReadable ? m_glyph : nullptr;
}

bool GlyphLoader::hasGlyph(Ufo const& ufo, std::size_t layer) const
{
    return ufo.layers()[layer].fileNames.contains(m_name);
}

Result<Glif> const& GlyphLoader::glif(Ufo const& ufo, std::size_t layer)
{
    LayerKey const key { &ufo, layer };
    if (auto const known = m_glifs.find(key); known != m_glifs.end()) {
        return known->second;
    }
    auto text = ufo.readGlif(layer, m_name);
    auto result
        = text ? readGlif(std::move(*text), ufo.glifDisplayName(layer, m_name)) : Result<Glif>(text.error());
    if (!result) {
        auto error = result.error();
        error.item = "glyph " + inQuotes(m_name);
        m_report.push_back(error.sentence());
        result = std::move(error);
    }
    return m_glifs.emplace(key, std::move(result)).first->second;
}

void GlyphLoader::addLayer(TLLayer::Data data, Ufo const& ufo, std::size_t layer, bool isOfLocalSource)
{
    auto const& content = glif(ufo, layer);
    if (content) {
        data.outline = content->outline;
    } else {
        data.problem = content.error().sentence();
    }
    data.layerId = m_layerIds.take(data.layerId);
    m_origins.push_back({ data.layerId, ufo.displayName(), ufo.layers()[layer].name, isOfLocalSource });
    m_glyph->insertLayer(std::make_shared<TLLayer>(std::make_shared<TLLayer::Data>(std::move(data))));
}

void GlyphLoader::addFamilySources()
{
    for (auto const& source : m_family.sources) {
        if (!hasGlyph(*source.ufo, source.layer)) {
            continue;
        }
        TLLayer::Data data;
        data.layerId = source.id;
        data.associatedMasterId = source.masterId;
        data.kind = source.kind;
        data.name = source.name;
        if (source.kind == TLLayerKind::brace) {
            data.coordinates = source.coordinates;
        }
        addLayer(std::move(data), *source.ufo, source.layer);
    }
}

void GlyphLoader::readUnicodes()
{
    auto const take = [this](FamilySource const& source) {
        if (m_glyph->unicodes().empty() && hasGlyph(*source.ufo, source.layer)) {
            auto const& content = glif(*source.ufo, source.layer);
            m_glyph->setUnicodes(content ? content->unicodes : std::vector<char32_t> {});
        }
    };
    if (m_family.defaultSource) {
        take(m_family.sources[*m_family.defaultSource]);
    }
    std::for_each(m_family.sources.begin(), m_family.sources.end(), take);
}

void GlyphLoader::addGlyphDesignspace()
{
    auto const* source = m_family.axisHolder(m_name);
    if (!source) {
        return;
    }
    auto const& content = glif(*source->ufo, *source->ufo->defaultLayer());
    if (!content || !content->glyphDesignspace) {
        return;
    }
    auto const* identities = content->glyphAxes ? &*content->glyphAxes : nullptr;
    auto const designspace = readGlyphDesignspace(*content->glyphDesignspace, identities, m_name, m_report);
    for (auto const& axis : designspace.axes) {
        addAxis(axis);
    }
    for (std::size_t index = 0; index < designspace.sources.size(); ++index) {
        addLocalSource(designspace.sources[index], index);
    }
}

/// That which the file keeps, else one made of the names.
std::string GlyphLoader::axisIdFor(LocalAxis const& local) const
{
    auto const isTaken = [this](std::string const& axisId) {
        return (m_font && m_font->axisForId(axisId))
            || std::any_of(m_ownAxes.begin(), m_ownAxes.end(),
                [&axisId](OwnAxis const& other) { return other.axis->axisId() == axisId; });
    };
    if (local.axisId && !isTaken(*local.axisId)) {
        return *local.axisId;
    }
    auto axisId = derivedAxisId(m_name, local.name);
    while (isTaken(axisId)) {
        axisId += "'";
    }
    return axisId;
}

void GlyphLoader::addAxis(LocalAxis const& local)
{
    auto const axisId = axisIdFor(local);
    auto const axis = std::make_shared<TLAxis>(axisId, local.name);
    axis->setDefaultValue(local.fallback);
    axis->setBounds(local.minimum, local.maximum);
    if (local.parts.size() > 1) {
        std::vector<std::string> ids;
        for (auto const& part : local.parts) {
            ids.push_back(axisId + part.substr(local.name.size()));
        }
        axis->setPartIds(std::move(ids));
    }
    m_glyph->insertObjectInAxesAtIndex(axis, m_glyph->countOfAxes());
    m_ownAxes.push_back({ axis, local });
}

TLCoordinates GlyphLoader::ownCoordinates(LocalSource const& local) const
{
    TLCoordinates coordinates;
    for (auto const& [axis, entries] : m_ownAxes) {
        std::vector<std::optional<double>> values;
        for (auto const& part : entries.parts) {
            auto const entry = local.location.find(part);
            values.push_back(entry == local.location.end() ? std::nullopt : std::optional(entry->second));
        }
        bool const isOnAxis = std::equal(values.begin() + 1, values.end(), values.begin());
        if (isOnAxis && values.front()) {
            coordinates.emplace(axis->axisId(), *values.front());
        }
        for (std::size_t part = 0; part < values.size() && !isOnAxis; ++part) {
            coordinates.emplace(axis->partIds()[part], values[part].value_or(axis->defaultValue()));
        }
    }
    return coordinates;
}

/// The source's place on every axis of the font; an axis whose name the glyph's own has stays at its default.
TLCoordinates GlyphLoader::fontCoordinates(LocalSource const& local)
{
    TLCoordinates coordinates;
    auto rest = local.location;
    for (auto const& [axis, entries] : m_ownAxes) {
        for (auto const& part : entries.parts) {
            rest.erase(part);
        }
    }
    rest.insert(local.hiddenLocation.begin(), local.hiddenLocation.end());
    // The files know the axes by the names under which they were saved.
    for (auto const& axis : m_savedAxes) {
        auto const entry = rest.find(axis.name);
        coordinates.emplace(axis.axisId, entry == rest.end() ? axis.defaultValue : entry->second);
        if (entry != rest.end()) {
            rest.erase(entry);
        }
    }
    for (auto const& [axisName, value] : rest) {
        m_report.push_back(what(local) + " stands on an axis " + inQuotes(axisName) + ", which is none.");
    }
    return coordinates;
}

/// The source at the same place of the font whose UFO has the layer; without such a layer, any source there.
FamilySource const* GlyphLoader::sourceAt(
    TLCoordinates const& fontCoordinates, LocalSource const& local) const
{
    FamilySource const* found = nullptr;
    for (auto const& source : m_family.sources) {
        if (source.coordinates != fontCoordinates) {
            continue;
        }
        if (!local.layerName || source.ufo->layerNamed(*local.layerName)) {
            return &source;
        }
        found = found ? found : &source;
    }
    return found;
}

bool GlyphLoader::isAtDefaults(TLCoordinates const& own) const
{
    return std::all_of(m_ownAxes.begin(), m_ownAxes.end(), [&own](OwnAxis const& axis) {
        auto const entry = own.find(axis.axis->axisId());
        return (entry == own.end() || entry->second == axis.axis->defaultValue())
            && std::none_of(axis.axis->partIds().begin(), axis.axis->partIds().end(),
                [&own](std::string const& partId) { return own.contains(partId); });
    });
}

void GlyphLoader::addLocalSource(LocalSource const& local, std::size_t index)
{
    auto coordinates = fontCoordinates(local);
    auto const* const source = sourceAt(coordinates, local);
    if (!source) {
        m_report.push_back(
            what(local) + " is left out: no source of the family stands at its place on the font's axes.");
        return;
    }
    auto const layer
        = local.layerName ? source->ufo->layerNamed(*local.layerName) : source->ufo->defaultLayer();
    if (!layer || !hasGlyph(*source->ufo, *layer)) {
        m_report.push_back(what(local) + " is left out: there is no such glyph in layer "
            + inQuotes(local.layerName.value_or("")) + " of " + source->ufo->displayName() + ".");
        return;
    }
    auto const own = ownCoordinates(local);
    if (isAtDefaults(own) && hasGlyph(*source->ufo, source->layer)) {
        // It stands where a source of the family does, and is usually that very layer.
        if (*layer == source->layer) {
            return;
        }
        m_report.push_back(what(local) + " stands where a source of the family stands.");
    }
    TLLayer::Data data;
    data.layerId = "glyph source " + (local.name.empty() ? std::to_string(index + 1) : local.name);
    data.associatedMasterId = source->masterId;
    data.kind = TLLayerKind::brace;
    data.name = local.name.empty() ? source->ufo->layers()[*layer].name : local.name;
    data.coordinates = std::move(coordinates);
    data.coordinates.insert(own.begin(), own.end());
    addLayer(std::move(data), *source->ufo, *layer, true);
}

/// Sketches and backgrounds: the layers of the masters' UFOs that stand nowhere.
void GlyphLoader::addOtherLayers()
{
    for (auto const& source : m_family.sources) {
        if (source.kind != TLLayerKind::master) {
            continue;
        }
        auto const& ufo = *source.ufo;
        for (std::size_t layer = 0; layer < ufo.layers().size(); ++layer) {
            if (!hasGlyph(ufo, layer) || m_glifs.contains({ &ufo, layer })) {
                continue;
            }
            TLLayer::Data data;
            data.layerId = ufo.displayName() + "/" + ufo.layers()[layer].name;
            data.associatedMasterId = source.id;
            data.kind = TLLayerKind::other;
            data.name = ufo.layers()[layer].name;
            addLayer(std::move(data), ufo, layer);
        }
    }
}

std::string GlyphLoader::what(LocalSource const& local) const
{
    return "The source " + inQuotes(local.name) + " of glyph " + inQuotes(m_name);
}
