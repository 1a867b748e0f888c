#include "Typloom/TyploomApp/RecoveryJson.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace {

constexpr int format = 1;

/// What is no state ends the reading.
struct NoState { };

QString toText(std::string const& text)
{
    return QString::fromStdString(text);
}

template <class Item, class Function> QJsonArray toArray(std::vector<Item> const& items, Function toJson)
{
    QJsonArray array;
    std::for_each(items.begin(), items.end(), [&](Item const& item) { array.append(toJson(item)); });
    return array;
}

template <class Function> auto fromArray(QJsonValue const& value, Function fromJson)
{
    if (!value.isArray()) {
        throw NoState {};
    }
    std::vector<decltype(fromJson(QJsonValue()))> items;
    for (auto const& item : value.toArray()) {
        items.push_back(fromJson(item));
    }
    return items;
}

double number(QJsonValue const& value)
{
    return value.isDouble() ? value.toDouble() : throw NoState {};
}

std::string string(QJsonValue const& value)
{
    return value.isString() ? value.toString().toStdString() : throw NoState {};
}

bool boolean(QJsonValue const& value)
{
    return value.isBool() ? value.toBool() : throw NoState {};
}

QJsonObject object(QJsonValue const& value)
{
    return value.isObject() ? value.toObject() : throw NoState {};
}

/// The value of an enumeration whose last one is given.
template <class Enumeration> Enumeration enumerated(QJsonValue const& value, Enumeration last)
{
    auto const index = value.toInt(-1);
    return index >= 0 && index <= static_cast<int>(last) ? static_cast<Enumeration>(index) : throw NoState {};
}

QJsonValue toOptional(std::optional<std::string> const& text)
{
    return text ? QJsonValue(toText(*text)) : QJsonValue();
}

std::optional<std::string> optional(QJsonValue const& value)
{
    return value.isNull() ? std::nullopt : std::optional(string(value));
}

/// Numbers by name: coordinates, values.
template <class Map> QJsonObject toNumbers(Map const& map)
{
    QJsonObject json;
    for (auto const& [name, value] : map) {
        json[toText(name)] = value;
    }
    return json;
}

template <class Map> Map numbers(QJsonValue const& value)
{
    Map map;
    auto const json = object(value);
    for (auto entry = json.begin(); entry != json.end(); ++entry) {
        map.emplace(entry.key().toStdString(), number(entry.value()));
    }
    return map;
}

QJsonValue toJson(TLPoint const& point)
{
    return QJsonArray { point.x, point.y, static_cast<int>(point.type), point.smooth, toText(point.name) };
}

TLPoint point(QJsonValue const& value)
{
    auto const json = value.toArray();
    return { number(json.at(0)), number(json.at(1)), enumerated(json.at(2), TLPointType::offcurve),
        boolean(json.at(3)), string(json.at(4)) };
}

QJsonValue toJson(TLComponent const& component)
{
    QJsonArray transform;
    std::copy(component.transform.begin(), component.transform.end(), std::back_inserter(transform));
    return QJsonArray { toText(component.base), transform, toNumbers(component.location),
        component.isVariable };
}

TLComponent component(QJsonValue const& value)
{
    auto const json = value.toArray();
    TLComponent result { .base = string(json.at(0)) };
    auto const transform = fromArray(json.at(1), number);
    if (transform.size() != result.transform.size()) {
        throw NoState {};
    }
    std::copy(transform.begin(), transform.end(), result.transform.begin());
    result.location = numbers<decltype(result.location)>(json.at(2));
    result.isVariable = boolean(json.at(3));
    return result;
}

QJsonObject toJson(TLOutline const& outline)
{
    auto const contour = [](TLContour const& one) {
        return QJsonValue(toArray(one.points, [](TLPoint const& each) { return toJson(each); }));
    };
    auto const anchor = [](TLAnchor const& one) {
        return QJsonValue(QJsonArray { toText(one.name), one.x, one.y });
    };
    return { { "advance", outline.advance }, { "height", outline.height },
        { "contours", toArray(outline.contours, contour) },
        { "components", toArray(outline.components, [](TLComponent const& each) { return toJson(each); }) },
        { "anchors", toArray(outline.anchors, anchor) } };
}

TLOutline outline(QJsonObject const& json)
{
    auto const contour = [](QJsonValue const& value) { return TLContour { fromArray(value, point) }; };
    auto const anchor = [](QJsonValue const& value) {
        auto const parts = value.toArray();
        return TLAnchor { string(parts.at(0)), number(parts.at(1)), number(parts.at(2)) };
    };
    return { number(json["advance"]), number(json["height"]), fromArray(json["contours"], contour),
        fromArray(json["components"], component), fromArray(json["anchors"], anchor) };
}

QJsonValue toJson(TLAxisState const& axis)
{
    auto const discrete = toArray(axis.discreteValues, [](double value) { return QJsonValue(value); });
    auto const parts = toArray(axis.partIds, [](std::string const& id) { return QJsonValue(toText(id)); });
    return QJsonObject { { "id", toText(axis.axisId) }, { "name", toText(axis.name) },
        { "tag", toOptional(axis.tag) }, { "default", axis.defaultValue }, { "minimum", axis.minimum },
        { "maximum", axis.maximum }, { "hidden", axis.isHidden }, { "discrete", discrete },
        { "parts", parts } };
}

TLAxisState axis(QJsonValue const& value)
{
    auto const json = object(value);
    return { string(json["id"]), string(json["name"]), optional(json["tag"]), number(json["default"]),
        number(json["minimum"]), number(json["maximum"]), boolean(json["hidden"]),
        fromArray(json["discrete"], number), fromArray(json["parts"], string) };
}

QJsonValue toJson(std::shared_ptr<TLLayerState const> const& layer)
{
    return QJsonObject { { "id", toText(layer->layerId) },
        { "master", toOptional(layer->associatedMasterId) }, { "kind", static_cast<int>(layer->kind) },
        { "name", toText(layer->name) }, { "coordinates", toNumbers(layer->coordinates) },
        { "outline", toJson(layer->outline) }, { "problem", toOptional(layer->problem) } };
}

std::shared_ptr<TLLayerState const> layer(QJsonValue const& value)
{
    auto const json = object(value);
    return std::make_shared<TLLayerState>(TLLayerState { string(json["id"]), optional(json["master"]),
        enumerated(json["kind"], TLLayerKind::other), string(json["name"]),
        numbers<TLCoordinates>(json["coordinates"]), outline(object(json["outline"])),
        optional(json["problem"]) });
}

QJsonObject toJson(std::map<std::string, TLGlyphState> const& glyphs)
{
    QJsonObject json;
    for (auto const& [name, glyph] : glyphs) {
        json[toText(name)] = QJsonObject {
            { "axes", toArray(glyph.axes, [](TLAxisState const& each) { return toJson(each); }) },
            { "layers", toArray(glyph.layers, [](auto const& each) { return toJson(each); }) }
        };
    }
    return json;
}

std::map<std::string, TLGlyphState> glyphs(QJsonValue const& value)
{
    std::map<std::string, TLGlyphState> result;
    auto const json = object(value);
    for (auto entry = json.begin(); entry != json.end(); ++entry) {
        auto const glyph = object(entry.value());
        result.emplace(entry.key().toStdString(),
            TLGlyphState { fromArray(glyph["axes"], axis), fromArray(glyph["layers"], layer) });
    }
    return result;
}

QJsonValue toJson(TLMasterState const& master)
{
    auto const& metrics = master.metrics;
    return QJsonObject { { "id", toText(master.id) }, { "name", toText(master.name) },
        { "values", toNumbers(master.values) },
        { "metrics",
            QJsonArray { metrics.unitsPerEm, metrics.ascender, metrics.descender, metrics.xHeight,
                metrics.capHeight } } };
}

TLMasterState master(QJsonValue const& value)
{
    auto const json = object(value);
    auto const metrics = json["metrics"].toArray();
    return { string(json["id"]), string(json["name"]),
        numbers<decltype(TLMasterState::values)>(json["values"]),
        { number(metrics.at(0)), number(metrics.at(1)), number(metrics.at(2)), number(metrics.at(3)),
            number(metrics.at(4)) } };
}

QJsonObject toJson(TLFontState const& font)
{
    return { { "axes", toArray(font.axes, [](TLAxisState const& each) { return toJson(each); }) },
        { "masters", toArray(font.masters, [](TLMasterState const& each) { return toJson(each); }) } };
}

TLFontState font(QJsonValue const& value)
{
    auto const json = object(value);
    return { fromArray(json["axes"], axis), fromArray(json["masters"], master) };
}

} // namespace

QByteArray toRecoveryJson(UnsavedWork const& work)
{
    auto const file = QFile::decodeName(QByteArray::fromStdString(work.family.string()));
    QJsonObject const json { { "format", format }, { "family", file },
        { "savedFont", toJson(work.savedFont) }, { "savedGlyphs", toJson(work.savedGlyphs) },
        { "font", toJson(work.font) }, { "glyphs", toJson(work.glyphs) } };
    return QJsonDocument(json).toJson(QJsonDocument::Compact);
}

std::optional<UnsavedWork> fromRecoveryJson(QByteArray const& text)
{
    auto const json = QJsonDocument::fromJson(text).object();
    if (json["format"].toInt() != format) {
        return std::nullopt;
    }
    try {
        auto const file = QFile::encodeName(json["family"].toString()).toStdString();
        return UnsavedWork { file, font(json["savedFont"]), glyphs(json["savedGlyphs"]), font(json["font"]),
            glyphs(json["glyphs"]) };
    } catch (NoState const&) {
        return std::nullopt;
    }
}
