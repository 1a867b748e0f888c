#include "Typloom/TyploomApp/TLLineEditView+Layout.h"

#include <algorithm>
#include <cmath>

void TLLineEditView::mouseDown(NSEvent const& event)
{
    auto const placed = placedGlyphs();
    auto const found = std::find_if(placed.begin(), placed.end(),
        [&](PlacedGlyph const& glyph) { return frameOf(glyph).contains(event.locationInView); });
    auto const index = found == placed.end() ? std::nullopt : std::optional(found->index);
    if (!pressInEditedGlyph(event, index) && index) {
        select(event.modifiers.shift ? m_state->line().rangeReaching(*index)
                                     : NSRange { .location = *index, .length = 0 });
    }
}

void TLLineEditView::scrollWheel(NSEvent const& event)
{
    if (event.modifiers.control) {
        constexpr double pointsForTwofold = 180;
        zoomBy(std::exp2(event.scrollingDelta.y / pointsForTwofold), event.locationInView);
    } else if (event.modifiers.shift && event.scrollingDelta.x == 0) {
        scrollBy({ event.scrollingDelta.y, 0 });
    } else {
        scrollBy(event.scrollingDelta);
    }
}

void TLLineEditView::scrollBy(NSPoint delta)
{
    auto const before = m_anchor;
    m_anchor.x += delta.x;
    m_anchor.y += delta.y;
    auto const placed = placedGlyphs();
    auto const area = bounds();
    bool const someAreSeen = std::any_of(placed.begin(), placed.end(), [&](PlacedGlyph const& glyph) {
        auto const frame = frameOf(glyph);
        return frame.maxX() > 0 && frame.origin.x < area.maxX() && frame.maxY() > 0
            && frame.origin.y < area.maxY();
    });
    if (!someAreSeen) {
        m_anchor = before; // Nobody has to look for a line that was scrolled away.
    }
    setNeedsDisplay(true);
}

void TLLineEditView::keyDown(NSEvent const& event)
{
    if (takeNodeKey(event)) {
        return;
    }
    auto const& line = m_state->line();
    auto const range = line.selectedRange();
    auto const count = line.objects().size();
    bool const extends = event.modifiers.shift;
    switch (event.modifiers.control || event.modifiers.alt ? NSKey::none : event.key) {
    case NSKey::left:
        if (range.location > 0) {
            extends ? select(line.rangeReaching(range.location - 1)) : moveCursor(range.location - 1);
        }
        return;
    case NSKey::right: {
        auto const end = range.location + std::max<std::size_t>(range.length, 1);
        extends ? select(line.rangeReaching(std::min(end, std::max<std::size_t>(count, 1) - 1)))
                : moveCursor(std::min(end, count));
        return;
    }
    case NSKey::home:
        moveCursor(0);
        return;
    case NSKey::end:
        moveCursor(count);
        return;
    default:
        TLGlyphEditView::keyDown(event);
    }
}

void TLLineEditView::moveCursor(std::size_t location)
{
    select({ .location = location, .length = 0 });
    revealEditedGlyph();
}

void TLLineEditView::revealEditedGlyph()
{
    auto const halfWidth = bounds().size.width / 2;
    auto const margin = std::min(halfWidth, metrics().unitsPerEm * scale() / 2);
    m_anchor.x = std::clamp(m_anchor.x, -halfWidth + margin, halfWidth - margin);
    setNeedsDisplay(true);
}
