#include "Typloom/TyploomApp/TLLineEditView+Layout.h"

#include <algorithm>

NSPoint TLLineEditView::baseline() const
{
    auto const size = bounds().size;
    auto const span = metrics();
    auto const middleAboveBaseline = (span.ascender + span.descender) / 2;
    return { size.width / 2 + m_anchor.x, size.height / 2 + m_anchor.y + middleAboveBaseline * scale() };
}

NSRect TLLineEditView::frameOf(PlacedGlyph const& placed) const
{
    auto const span = metrics();
    return { { placed.x, baseline().y - span.ascender * scale() },
        { placed.advance * scale(), (span.ascender - span.descender) * scale() } };
}

/// Whether the line stands on a master of which the glyph's drawing could not be read.
bool TLLineEditView::hasUnreadableLayerHere(TLGlyph const& glyph) const
{
    auto const& active = m_state->activeLayer();
    bool const standsOnMaster = active && active->isMasterLayer() && !m_state->showsInterpolation();
    auto const layer = standsOnMaster ? glyph.layerForId(active->layerId()) : nullptr;
    return layer && layer->problem();
}

TLGlyphShapeCache::Shape TLLineEditView::shapeOfObject(std::size_t index, TLLocation const& fontPlace) const
{
    auto const& line = m_state->line();
    auto const& object = line.objects()[index];
    auto const* edited = line.editedObject();
    // An object that was switched together with the edited one shows the same layer.
    if (index == line.editedIndex() || (!m_state->showsInterpolation() && edited && object == *edited)) {
        return editedShape();
    }
    auto const glyph = m_state->font()->glyphForName(object.glyphName);
    return glyph && !hasUnreadableLayerHere(*glyph) ? m_shapes.interpolated(*glyph, fontPlace) : nullptr;
}

TLLineEditView::PlacedGlyph TLLineEditView::placedGlyph(std::size_t index, TLLocation const& fontPlace) const
{
    PlacedGlyph placed;
    placed.index = index;
    placed.shape = shapeOfObject(index, fontPlace);
    placed.advance = placed.shape ? placed.shape->advance : metrics().unitsPerEm / 2;
    return placed;
}

/// From the edited glyph outwards, and no farther than the view reaches: what is not seen is
/// not interpolated.
std::vector<TLLineEditView::PlacedGlyph> TLLineEditView::placedGlyphs() const
{
    auto const count = m_state->line().objects().size();
    auto const fontPlace = m_state->fontPlace();
    auto const points = scale();
    auto const overhang = metrics().unitsPerEm * points / 2; // Glyphs draw beyond their advance.
    auto const left = -overhang;
    auto const right = bounds().size.width + overhang;
    auto const start = std::min(m_state->line().selectedRange().location, count);
    double const anchor = bounds().size.width / 2 + m_anchor.x;

    std::vector<PlacedGlyph> placed;
    double startX = anchor;
    double x = anchor;
    for (auto index = start; index < count && (x <= right || index == start); ++index) {
        auto glyph = placedGlyph(index, fontPlace);
        if (index == start) {
            startX = anchor - glyph.advance * points / 2;
            x = startX;
        }
        glyph.x = x;
        x += glyph.advance * points;
        if (x >= left && glyph.x <= right) {
            placed.push_back(std::move(glyph));
        }
    }
    x = startX;
    for (auto index = start; index > 0 && x >= left; --index) {
        auto glyph = placedGlyph(index - 1, fontPlace);
        x -= glyph.advance * points;
        glyph.x = x;
        if (x <= right) {
            placed.push_back(std::move(glyph));
        }
    }
    return placed;
}

std::optional<NSRect> TLLineEditView::frameOfObject(std::size_t index) const
{
    auto const placed = placedGlyphs();
    auto const found = std::find_if(
        placed.begin(), placed.end(), [index](PlacedGlyph const& glyph) { return glyph.index == index; });
    return found == placed.end() ? std::nullopt : std::optional(frameOf(*found));
}
