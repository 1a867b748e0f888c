#pragma once

#include "Typloom/TyploomCore/TLFont.h"
#include "Typloom/TyploomCore/TLLayerCommands.h"

/// States of a family that follow each other and differ in many files: advance widths in every master,
/// and in every other generation an axis of a glyph's own with a layer, and an intermediate layer.
inline constexpr double firstGenerationAdvance = 1000;

/// Of a family in none, some number that is less than 0.
inline int generationOf(TLFont const& font)
{
    auto const master = font.defaultFontMaster(nullptr);
    auto const advance = font.glyphForName("n")->layerForId(master->id())->outline().advance;
    return static_cast<int>(advance - firstGenerationAdvance);
}

/// From whatever other generation the family is in.
inline void makeGeneration(TLFont const& font, int generation)
{
    for (auto const* const name : { "n", "o", "H" }) {
        for (auto const& master : font.fontMasters()) {
            auto const layer = font.glyphForName(name)->layerForId(master->id());
            auto outline = layer->outline();
            outline.advance = firstGenerationAdvance + generation;
            layer->setOutline(std::move(outline));
        }
    }
    auto const glyph = font.glyphForName("o");
    std::vector<std::shared_ptr<TLLayer>> intermediate;
    for (auto const& [layerId, layer] : glyph->layers()) {
        if (layer->isBraceLayer()) {
            intermediate.push_back(layer);
        }
    }
    for (auto const& layer : intermediate) {
        TLDeleteLayer(*layer);
    }
    while (glyph->countOfAxes() > 0) {
        glyph->removeObjectFromAxesAtIndex(0);
    }
    if (generation % 2 == 0) {
        return;
    }
    auto const axis = std::make_shared<TLAxis>("flare", "Flare");
    glyph->insertObjectInAxesAtIndex(axis, 0);
    auto const masterId = font.defaultFontMaster(nullptr)->id();
    TLAddIntermediateLayer(*glyph, { { axis->axisId(), 50.0 } }, masterId);
    TLAddIntermediateLayer(*glyph, { { font.axes().front()->axisId(), 100.0 } }, masterId);
}
