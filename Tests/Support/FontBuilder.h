#pragma once

#include "Typloom/TyploomCore/TLFont.h"

#include <functional>

/// Where an axis begins, rests and ends, in design coordinates.
struct AxisValues {
    double minimum { 0 };
    double fallback { 0 };
    double maximum { 1000 };
};

/// Builds a family in memory. Axis identifiers are what the test says, so that it can name them.
///
///     FontBuilder builder;
///     builder.addAxis("wght", "Weight", { 100, 400, 700 });
///     builder.addMaster("regular", { { "wght", 400 } });
///     auto const glyph = builder.addGlyph("A"); // with a layer of every master
///     builder.addBraceLayer(glyph, "A-550", "regular", { { "wght", 550 } });
class FontBuilder {
public:
    std::shared_ptr<TLFont> const& font() const { return m_font; }

    std::shared_ptr<TLAxis> addAxis(
        std::string axisId, std::string name, AxisValues values = {}, std::optional<std::string> tag = {})
    {
        auto const axis = makeAxis(std::move(axisId), std::move(name), values);
        axis->setAxisTag(std::move(tag));
        m_font->insertAxis(axis, m_font->axes().size());
        return axis;
    }

    /// Glyphs that are there already get no layer of it.
    std::shared_ptr<TLFontMaster> addMaster(
        std::string id, TLCoordinates const& values, std::string name = {})
    {
        auto const master = std::make_shared<TLFontMaster>(id, name.empty() ? id : std::move(name));
        for (auto const& [axisId, value] : values) {
            master->setAxisInternalValue(value, axisId);
        }
        m_font->insertMaster(master, m_font->fontMasters().size());
        return master;
    }

    /// A glyph with a layer of every master; `outline` draws each, none leaves them empty.
    std::shared_ptr<TLGlyph> addGlyph(
        std::string name, std::function<TLOutline(TLFontMaster const&)> const& outline = {})
    {
        auto const glyph = addEmptyGlyph(std::move(name));
        for (auto const& master : m_font->fontMasters()) {
            addMasterLayer(glyph, master->id(), outline ? outline(*master) : TLOutline {});
        }
        return glyph;
    }

    std::shared_ptr<TLGlyph> addEmptyGlyph(std::string name)
    {
        auto const glyph = std::make_shared<TLGlyph>(std::move(name));
        m_font->insertGlyph(glyph);
        return glyph;
    }

    /// `coordinates` are on the glyph's own axes.
    static std::shared_ptr<TLLayer> addMasterLayer(std::shared_ptr<TLGlyph> const& glyph,
        std::string const& masterId, TLOutline outline = {}, TLCoordinates coordinates = {})
    {
        return addLayer(glyph,
            { .layerId = masterId,
                .associatedMasterId = masterId,
                .kind = TLLayerKind::master,
                .name = masterId,
                .coordinates = std::move(coordinates),
                .outline = std::move(outline) });
    }

    /// An intermediate layer; `coordinates` are on the font's and on the glyph's own axes.
    static std::shared_ptr<TLLayer> addBraceLayer(std::shared_ptr<TLGlyph> const& glyph,
        std::string const& layerId, std::optional<std::string> masterId, TLCoordinates coordinates,
        TLOutline outline = {})
    {
        return addLayer(glyph,
            { .layerId = layerId,
                .associatedMasterId = std::move(masterId),
                .kind = TLLayerKind::brace,
                .name = layerId,
                .coordinates = std::move(coordinates),
                .outline = std::move(outline) });
    }

    static std::shared_ptr<TLLayer> addOtherLayer(std::shared_ptr<TLGlyph> const& glyph,
        std::string const& layerId, std::optional<std::string> masterId = {})
    {
        return addLayer(glyph,
            { .layerId = layerId,
                .associatedMasterId = std::move(masterId),
                .kind = TLLayerKind::other,
                .name = layerId });
    }

    static std::shared_ptr<TLAxis> addGlyphAxis(
        std::shared_ptr<TLGlyph> const& glyph, std::string axisId, std::string name, AxisValues values = {})
    {
        auto const axis = makeAxis(std::move(axisId), std::move(name), values);
        glyph->insertObjectInAxesAtIndex(axis, glyph->countOfAxes());
        return axis;
    }

    static std::shared_ptr<TLAxis> makeAxis(std::string axisId, std::string name, AxisValues values)
    {
        auto const axis = std::make_shared<TLAxis>(std::move(axisId), std::move(name));
        axis->setDefaultValue(values.fallback);
        axis->setBounds(values.minimum, values.maximum);
        return axis;
    }

private:
    static std::shared_ptr<TLLayer> addLayer(std::shared_ptr<TLGlyph> const& glyph, TLLayerState state)
    {
        auto const data = std::make_shared<TLLayer::Data>();
        static_cast<TLLayerState&>(*data) = std::move(state);
        auto const layer = std::make_shared<TLLayer>(data);
        glyph->insertLayer(layer);
        return layer;
    }

    std::shared_ptr<TLFont> m_font { std::make_shared<TLFont>() };
};
