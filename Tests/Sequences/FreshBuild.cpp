#include "Tests/Sequences/FreshBuild.h"

#include "Typloom/TyploomCore/TLInterpolationFontProxy.h"

#include <algorithm>
#include <cmath>
#include <set>

static std::shared_ptr<TLFont> previewedFont(TLLayer const& layer)
{
    auto const proxy = std::dynamic_pointer_cast<TLInterpolationFontProxy>(layer.valueForKey("font"));
    return proxy ? proxy->parentFont() : nullptr;
}

std::shared_ptr<TLLayer> freshActiveLayer(LiveHost const& host)
{
    auto const layer = host.activeLayer();
    auto const font = layer ? previewedFont(*layer) : nullptr;
    auto const glyph = font && layer->glyph() ? font->glyphForName(layer->glyph()->name()) : nullptr;
    auto const master = glyph ? font->fontMasterAtIndex(host.masterIndex()) : nullptr;
    auto const real = master ? glyph->layerForId(master->id()) : nullptr;
    return real ? real : layer;
}

static bool matches(std::string const& text, std::string const& query)
{
    auto const folded = [](std::string word) {
        for (auto& character : word) {
            character = static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
        }
        return word;
    };
    return folded(text).find(folded(query)) != std::string::npos;
}

static std::vector<double> ascending(std::set<double> const& values)
{
    return { values.begin(), values.end() };
}

static double fontPosition(
    LiveHost const& host, TLFont const& font, TLLayer const* layer, std::string const& axisId)
{
    if (auto const own = layer ? layer->axisInternalValueValue(axisId) : std::nullopt) {
        return *own;
    }
    auto const location = host.view->axisLocation();
    if (location && location->contains(axisId)) {
        if (auto const* const number = std::get_if<double>(&location->at(axisId))) {
            return *number;
        }
    }
    auto const current = font.fontMasterAtIndex(host.masterIndex());
    auto const master = current ? current : font.defaultFontMaster(nullptr);
    return master ? master->axisInternalValueValueForId(axisId) : 0;
}

static std::vector<FreshRow> freshFontRows(
    LiveHost const& host, TLFont const& font, TLLayer const* layer, std::string const& query)
{
    std::vector<FreshRow> rows;
    auto const standard = font.defaultFontMaster(nullptr);
    for (auto const& axis : font.canonicalAxes()) {
        auto const& axisId = axis->axisId();
        auto const hasTag = axis->axisTag() && matches(*axis->axisTag(), query);
        if (!matches(axis->name(), query) && !hasTag) {
            continue;
        }
        std::set<double> places;
        for (auto const& master : font.fontMasters()) {
            places.insert(master->axisInternalValueValueForId(axisId));
        }
        auto const middle = standard ? standard->axisInternalValueValueForId(axisId) : 0;
        auto const low = places.empty() ? middle : *places.begin();
        auto const high = places.empty() ? middle : *places.rbegin();
        rows.push_back({ { Section::font, axisId },
            { axis, std::vector { low, middle, high }, ascending(places),
                fontPosition(host, font, layer, axisId) } });
    }
    return rows;
}

static std::vector<FreshRow> freshGlyphRows(
    TLFont const& font, TLLayer const& layer, std::string const& query)
{
    std::vector<FreshRow> rows;
    auto const glyph = layer.glyph();
    auto const spans = glyph->internalAxisRanges(std::nullopt);
    auto const standard = font.defaultFontMaster(nullptr);
    auto const home = standard ? glyph->layers().find(standard->id()) : nullptr;
    for (auto const& axis : glyph->axes()) {
        if (!matches(axis->name(), query)) {
            continue;
        }
        std::set<double> places;
        for (auto const& [layerId, other] : glyph->layers()) {
            auto const place = other->axisInternalValueValue(axis->axisId());
            if (other->isBraceLayer() && place) {
                places.insert(*place);
            }
        }
        auto const own = layer.axisInternalValueValue(axis->axisId());
        auto const atHome = home ? home->axisInternalValueValue(axis->axisId()) : std::nullopt;
        auto const& span = spans.at(axis);
        rows.push_back({ { Section::glyph, axis->axisId() },
            { axis, std::vector { span.lower, atHome.value_or(axis->defaultValue()), span.upper },
                ascending(places), own.value_or(axis->defaultValue()) } });
    }
    return rows;
}

std::vector<FreshRow> freshRows(LiveHost const& host, std::string const& query)
{
    auto const layer = freshActiveLayer(host);
    auto const layerFont = layer ? layer->font() : nullptr;
    auto const font = layerFont ? layerFont : host.window->documentFont();
    if (!font) {
        return {};
    }
    auto rows = freshFontRows(host, *font, layer.get(), query);
    if (layer && layer->glyph()) {
        auto const ofGlyph = freshGlyphRows(*font, *layer, query);
        rows.insert(rows.end(), ofGlyph.begin(), ofGlyph.end());
    }
    std::vector<FreshRow> distinct;
    for (auto& row : rows) { // Of a repeated identifier the first is shown.
        if (std::ranges::find(distinct, row.item, &FreshRow::item) == distinct.end()) {
            distinct.push_back(std::move(row));
        }
    }
    return distinct;
}

bool freshIsUsable(FreshRow const& row)
{
    auto const& range = *row.content.range;
    if (row.item.section == Section::font) {
        return std::abs(range[2] - range[0]) >= 0.01;
    }
    return std::ranges::any_of(
        *row.content.landmarks, [&](double place) { return std::abs(place - range[1]) > 0.001; });
}

std::string describe(FreshRow const& row)
{
    std::ostringstream text;
    text.precision(17);
    text << describe(row.item) << " at " << row.content.position << " of";
    for (auto const value : *row.content.range) {
        text << ' ' << value;
    }
    text << ", marks";
    for (auto const value : *row.content.landmarks) {
        text << ' ' << value;
    }
    return text.str();
}
