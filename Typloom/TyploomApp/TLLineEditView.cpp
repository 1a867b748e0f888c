#include "Typloom/TyploomApp/TLLineEditView.h"

#include "Typloom/TyploomApp/TLLineEditView+Layout.h"

#include "Platform/Foundation/NSMainQueue.h"

#include <algorithm>
#include <cmath>

namespace {

/// Of the view's height, for the span from ascender to descender; of its width, for one em.
constexpr double shareOfHeight = 0.52;
constexpr double shareOfWidth = 0.62;

/// Points for one font unit.
constexpr double smallestScale = 0.005;
constexpr double largestScale = 40;

} // namespace

TLLineEditView::TLLineEditView(std::shared_ptr<TLEditState> state)
    : m_state(std::move(state))
    , m_shapes(m_state->font())
    , m_nodes(m_state)
{
    setAcceptsFirstResponder(true, true);
    setAccessibilityLabel("Edit view");
}

void TLLineEditView::setAxisLocation(std::optional<TLLocation> location)
{
    m_state->setAxisLocation(std::move(location));
}

void TLLineEditView::switchToLayerWithId(
    std::string_view layerId, std::optional<std::string> const&, NSRange range)
{
    m_state->switchToLayer(layerId, range);
}

void TLLineEditView::select(NSRange range)
{
    auto const location = std::min(range.location, m_state->line().objects().size());
    std::optional<double> centre;
    if (auto const frame = frameOfObject(location)) {
        centre = frame->origin.x + frame->size.width / 2;
    } else if (auto const last = location > 0 ? frameOfObject(location - 1) : std::nullopt) {
        centre = last->maxX();
    }
    m_state->select(range);
    m_anchor.x = centre ? *centre - bounds().size.width / 2 : 0;
    setNeedsDisplay(true);
}

void TLLineEditView::centreEditedGlyph()
{
    m_anchor = {};
    setNeedsDisplay(true);
}

TLFontMaster::Metrics TLLineEditView::metrics() const
{
    auto const master = m_state->currentMaster();
    auto const metrics = master ? master->metrics() : TLFontMaster::Metrics {};
    bool const usable = metrics.unitsPerEm > 0 && metrics.ascender - metrics.descender > 0;
    return usable ? metrics : TLFontMaster::Metrics {};
}

double TLLineEditView::scale() const
{
    if (m_zoom) {
        return *m_zoom;
    }
    auto const size = bounds().size;
    auto const span = metrics();
    auto const fitting = std::min(size.height * shareOfHeight / (span.ascender - span.descender),
        size.width * shareOfWidth / span.unitsPerEm);
    return std::clamp(fitting, smallestScale, largestScale);
}

void TLLineEditView::zoomToFit()
{
    m_zoom.reset();
    centreEditedGlyph();
}

void TLLineEditView::zoomBy(double factor, NSPoint about)
{
    auto const before = scale();
    auto const after = std::clamp(before * factor, smallestScale, largestScale);
    auto const size = bounds().size;
    // What lies under the pointer stays there; the anchor is measured from the view's centre.
    NSPoint const pointer { about.x - size.width / 2, about.y - size.height / 2 };
    m_anchor.x = pointer.x + (m_anchor.x - pointer.x) * after / before;
    m_anchor.y = pointer.y + (m_anchor.y - pointer.y) * after / before;
    m_zoom = after;
    setNeedsDisplay(true);
}

void TLLineEditView::documentDidChange()
{
    m_shapes.clear();
    m_nodes.settle();
    setNeedsDisplay(true);
}

TLGlyphShapeCache::Shape TLLineEditView::editedShape() const
{
    auto const& glyph = m_state->editedGlyph();
    if (!glyph) {
        return nullptr;
    }
    auto const place = m_state->place();
    if (m_state->showsInterpolation()) {
        return m_shapes.interpolated(*glyph, place);
    }
    auto const& layer = *m_state->activeLayer();
    return layer.problem() ? nullptr : m_shapes.ofLayer(layer, place);
}

std::optional<TLDrawingProblem> TLLineEditView::knownProblem() const
{
    auto const& glyph = m_state->editedGlyph();
    bool const isKnown = glyph && m_state->showsInterpolation() && glyph->name() == m_lastDrawn.name;
    return isKnown ? m_lastDrawn.problem : std::nullopt;
}

void TLLineEditView::noticeProblem()
{
    auto const shape = editedShape();
    if (!shape) {
        return;
    }
    auto const before = knownProblem();
    m_lastDrawn = { m_state->editedGlyph()->name(), shape->problem };
    if (knownProblem() == before) {
        return;
    }
    NSMainQueue::async([weakSelf = weak_from_this()] {
        auto const self = std::dynamic_pointer_cast<TLLineEditView>(weakSelf.lock());
        if (self && self->m_problemObserver) {
            self->m_problemObserver();
        }
    });
}

void TLLineEditView::drawRect(NSRect dirty)
{
    auto* context = CGContext::current();
    if (!context) {
        return;
    }
    CGPath paper;
    paper.addRect(dirty);
    context->setFillColor(NSColor::textBackgroundColor());
    context->addPath(paper);
    context->fillPath();

    auto const placed = placedGlyphs();
    drawSelection(*context, placed);
    auto const edited = m_state->line().editedIndex();
    PlacedGlyph const* editedGlyph = nullptr;
    for (auto const& glyph : placed) {
        if (glyph.index == edited) {
            editedGlyph = &glyph;
        } else if (glyph.shape) {
            TLDrawFilledGlyph(*context, *glyph.shape, { { glyph.x, baseline().y }, scale() },
                TLComponentFill::likeContours);
        } else {
            TLDrawMissingGlyph(*context, metrics(), glyph.advance, { { glyph.x, baseline().y }, scale() });
        }
    }
    if (editedGlyph) {
        drawEditedGlyph(*context, *editedGlyph, dirty); // Last: nodes lie above the neighbours.
    } else if (!edited) {
        drawCursor(*context);
    }
    noticeProblem();
}

void TLLineEditView::drawSelection(CGContext& context, std::vector<PlacedGlyph> const& placed) const
{
    auto const range = selectedRange();
    for (auto const& glyph : placed) {
        if (glyph.index >= range.location && glyph.index - range.location < range.length) {
            CGPath area;
            area.addRect(frameOf(glyph));
            context.setFillColor(NSColor::controlAccentColor().withAlpha(0.12));
            context.addPath(area);
            context.fillPath();
        }
    }
}

void TLLineEditView::drawEditedGlyph(CGContext& context, PlacedGlyph const& placed, NSRect dirty) const
{
    TLGlyphTransform const transform { { placed.x, baseline().y }, scale() };
    TLDrawMetrics(context, metrics(), placed.advance, transform);
    if (!placed.shape) {
        TLDrawMissingGlyph(context, metrics(), placed.advance, transform);
    } else if (m_state->showsInterpolation()) {
        TLDrawFilledGlyph(context, *placed.shape, transform, TLComponentFill::tinted);
    } else {
        TLDrawEditableGlyph(context, *placed.shape, transform, dirty, m_nodes.selection());
        if (auto const box = m_nodes.box()) {
            TLDrawSelectionBox(context, *box, transform);
        }
    }
}

void TLLineEditView::drawCursor(CGContext& context) const
{
    auto const x = std::floor(bounds().size.width / 2 + m_anchor.x) + 0.5;
    auto const y = baseline().y;
    CGPath line;
    line.moveTo({ x, y - metrics().ascender * scale() });
    line.lineTo({ x, y - metrics().descender * scale() });
    context.setStrokeColor(NSColor::controlAccentColor());
    context.setLineWidth(isFirstResponder() ? 2 : 1);
    context.addPath(line);
    context.strokePath();
}
