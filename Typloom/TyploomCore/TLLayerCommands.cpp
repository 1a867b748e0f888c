#include "Typloom/TyploomCore/TLLayerCommands.h"

#include "Platform/Foundation/NSNumberFormatter.h"
#include "Typloom/TyploomCore/Storable.h"
#include "Typloom/TyploomCore/TLDocumentHistory.h"
#include "Typloom/TyploomCore/TLFreshIdentifier.h"
#include "Typloom/TyploomCore/TLInterpolation.h"
#include "Typloom/TyploomCore/TLLayerMatching.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace {

using Axes = std::vector<std::shared_ptr<TLAxis>>;

Axes const& fontAxes(TLGlyph const& glyph)
{
    static Axes const none;
    auto const font = glyph.font();
    return font ? font->canonicalAxes() : none;
}

TLCoordinates coordinatesAt(TLGlyph const& glyph, TLLocation const& place)
{
    TLCoordinates coordinates;
    auto const valueOn = [&place](TLAxis const& axis) {
        auto const value = TLLocationNumber(place, axis.axisId());
        return value && std::isfinite(*value) ? *value : axis.defaultValue();
    };
    for (auto const& axis : fontAxes(glyph)) {
        coordinates[axis->axisId()] = valueOn(*axis);
    }
    for (auto const& axis : glyph.axes()) {
        if (auto const value = valueOn(*axis); value != axis->defaultValue()) {
            coordinates[axis->axisId()] = value;
        }
    }
    return coordinates;
}

std::shared_ptr<TLFontMaster> masterFor(
    TLFont const& font, TLLocation const& place, std::string_view masterId)
{
    if (auto const there = TLMasterAtPlace(font, place)) {
        return there;
    }
    if (auto const given = font.fontMasterForId(masterId)) {
        return given;
    }
    return TLMasterNearestTo(font, place);
}

/// "weight=550,flip=100": the axes away from their default. On the default of all the master's name.
std::string nameOfPlace(TLGlyph const& glyph, TLCoordinates const& coordinates, TLFontMaster const* master)
{
    std::string name;
    auto axes = fontAxes(glyph);
    axes.insert(axes.end(), glyph.axes().begin(), glyph.axes().end());
    for (auto const& axis : axes) {
        auto const entry = coordinates.find(axis->axisId());
        if (entry != coordinates.end() && entry->second != axis->defaultValue()) {
            name += (name.empty() ? "" : ",") + axis->name() + "=" + NSNumberDescription(entry->second);
        }
    }
    if (name.empty() && master) {
        name = master->name();
    }
    return name.empty() ? "layer" : name;
}

/// The name, numbered where another layer of the glyph or a master has it.
std::string uniqueName(TLGlyph const& glyph, std::string const& name, std::string_view exceptLayerId = {})
{
    std::set<std::string, std::less<>> taken;
    for (auto const& [layerId, layer] : glyph.layers()) {
        if (layerId != exceptLayerId) {
            taken.insert(layer->name());
        }
    }
    for (auto const& master : glyph.font()->fontMasters()) {
        taken.insert(master->name());
    }
    auto candidate = name;
    for (int number = 2; taken.contains(candidate); ++number) {
        candidate = name + " " + std::to_string(number);
    }
    return candidate;
}

bool isSaved(TLLayer const& layer)
{
    auto const glyph = layer.glyph();
    auto const font = glyph ? glyph->font() : nullptr;
    if (!font) {
        return false;
    }
    auto const modified = font->history().modifiedGlyphs();
    auto const before = modified.find(glyph->name());
    return before == modified.end() || before->second.layer(layer.layerId());
}

/// Whether the layer is called after the place where it stands.
bool isNamedByPlace(TLGlyph const& glyph, TLLayer const& layer, TLFontMaster const* master)
{
    auto const name = nameOfPlace(glyph, layer.coordinates(), master);
    auto const& actual = layer.name();
    return actual == name
        || (actual.starts_with(name + " ")
            && actual.find_first_not_of("0123456789", name.size() + 1) == std::string::npos);
}

double broughtOnto(TLAxis const& axis, double value)
{
    if (!axis.isDiscrete()) {
        return axis.minimum() < axis.maximum() ? std::clamp(value, axis.minimum(), axis.maximum()) : value;
    }
    return *std::ranges::min_element(
        axis.discreteValues(), {}, [value](double candidate) { return std::abs(candidate - value); });
}

std::shared_ptr<TLAxis> glyphAxis(TLGlyph const& glyph, std::string const& axisId)
{
    auto const found
        = std::ranges::find_if(glyph.axes(), [&](auto const& axis) { return axis->axisId() == axisId; });
    return found == glyph.axes().end() ? nullptr : *found;
}

} // namespace

TLAddedLayer TLAddIntermediateLayer(TLGlyph& glyph, TLLocation const& place, std::string_view masterId)
{
    auto const font = glyph.font();
    if (!font) {
        return { nullptr, "The glyph '" + glyph.name() + "' belongs to no font." };
    }
    auto const there = TLLayerAtPlace(glyph, place, std::nullopt);
    if (there && !there->isMasterLayer()) {
        return { nullptr, "The layer '" + there->name() + "' stands at this place already." };
    }
    bool const canBeDrawn = std::any_of(glyph.layers().begin(), glyph.layers().end(), [](auto const& entry) {
        return entry.second->data()->kind != TLLayerKind::other && !entry.second->problem();
    });
    if (!canBeDrawn) {
        return { nullptr, "The glyph '" + glyph.name() + "' has no layer to begin with." };
    }
    auto const master = masterFor(*font, place, masterId);
    auto const reason = font->glyphSource() && master
        ? font->glyphSource()->reasonAgainstNewLayer(master->id())
        : std::nullopt;
    if (reason) {
        return { nullptr, *reason };
    }
    auto data = std::make_shared<TLLayer::Data>();
    data->layerId = TLFreshIdentifier();
    data->associatedMasterId = master ? std::optional(master->id()) : std::nullopt;
    data->kind = TLLayerKind::brace;
    data->coordinates = coordinatesAt(glyph, place);
    data->name = uniqueName(glyph, nameOfPlace(glyph, data->coordinates, master.get()));
    data->outline = TLInterpolateGlyph(glyph, place).outline;
    auto const layer = std::make_shared<TLLayer>(std::move(data));
    font->history().endStep();
    glyph.insertLayer(layer);
    return { layer };
}

std::optional<std::string> TLReasonAgainstDeletingLayer(TLLayer const& layer)
{
    if (layer.isMasterLayer()) {
        return "The layer of a master cannot be deleted.";
    }
    return std::nullopt;
}

void TLDeleteLayer(TLLayer const& layer)
{
    auto const glyph = layer.glyph();
    if (!glyph || TLReasonAgainstDeletingLayer(layer)) {
        return;
    }
    if (auto const font = glyph->font()) {
        font->history().endStep();
    }
    glyph->removeLayer(layer.layerId());
}

bool TLSetLayerCoordinate(TLLayer& layer, std::string const& axisId, std::optional<double> value)
{
    auto const glyph = layer.glyph();
    auto const font = glyph ? glyph->font() : nullptr;
    if (!font || !layer.isBraceLayer() || (value && !isStorableCoordinate(*value))) {
        return false;
    }
    auto const own = glyphAxis(*glyph, axisId);
    auto const shared = own ? nullptr : font->axisForId(axisId);
    if (!own && (!shared || !value)) {
        return false;
    }
    auto const master = font->fontMasterForId(layer.associatedMasterId().value_or(""));
    bool const takesName = isNamedByPlace(*glyph, layer, master.get()) && !isSaved(layer);
    auto coordinates = layer.coordinates();
    coordinates.erase(axisId);
    for (auto const& partId : (own ? own : shared)->partIds()) {
        coordinates.erase(partId);
    }
    if (value) {
        coordinates[axisId] = own ? *value : broughtOnto(*shared, *value);
    }
    font->history().endStep();
    layer.setCoordinates(std::move(coordinates));
    if (takesName) {
        layer.setName(
            uniqueName(*glyph, nameOfPlace(*glyph, layer.coordinates(), master.get()), layer.layerId()));
    }
    return true;
}
