#include "Typloom/TyploomApp/TLLineEditView+Layout.h"

#include "Platform/Qt/NSViewBacking.h"

#include <algorithm>
#include <cmath>

namespace {

/// Points. So near a node, or so far from where it began, that a press or a drag is meant.
constexpr double reachOfPress = 7;
constexpr double beginOfDrag = 3;

/// Font units.
constexpr double step = 1;
constexpr double bigStep = 10;

} // namespace

TLGlyphTransform TLLineEditView::editedTransform() const
{
    auto const shape = editedShape();
    auto const centre = bounds().size.width / 2 + m_anchor.x;
    return { { centre - (shape ? shape->advance : 0) * scale() / 2, baseline().y }, scale() };
}

/// False when the press is not for the edited glyph: on another one, or where nothing can be edited.
bool TLLineEditView::pressInEditedGlyph(NSEvent const& event, std::optional<std::size_t> indexThere)
{
    if (!m_state->editableLayer()) {
        return false;
    }
    auto const edited = m_state->line().editedIndex();
    auto const place = editedTransform().toUnits(event.locationInView);
    auto const reach = reachOfPress / scale();
    bool const isHeld = m_nodes.gripAt(place, reach) != TLNodeEditor::Grip::none;
    if (!isHeld && indexThere && indexThere != edited) {
        return false;
    }
    if (!isHeld && indexThere && !event.modifiers.shift && selectedRange().length > 0) {
        select({ .location = *indexThere, .length = 0 });
    }
    m_pressPlace = event.locationInView;
    m_isDrag = false;
    m_nodes.press(place, reach, event.modifiers.shift);
    setNeedsDisplay(true);
    return true;
}

void TLLineEditView::mouseDragged(NSEvent const& event)
{
    auto const place = event.locationInView;
    m_isDrag = m_isDrag || std::hypot(place.x - m_pressPlace.x, place.y - m_pressPlace.y) >= beginOfDrag;
    if (m_isDrag && m_nodes.isPressed()) {
        edit([&] { m_nodes.drag(editedTransform().toUnits(place), event.modifiers.shift); });
    }
}

void TLLineEditView::mouseUp(NSEvent const&)
{
    m_nodes.release();
    setNeedsDisplay(true);
}

void TLLineEditView::mouseMoved(NSEvent const& event)
{
    showCursorFor(m_state->editableLayer()
            ? m_nodes.gripAt(editedTransform().toUnits(event.locationInView), reachOfPress / scale())
            : TLNodeEditor::Grip::none);
}

void TLLineEditView::showCursorFor(TLNodeEditor::Grip grip)
{
    auto const shape = grip == TLNodeEditor::Grip::width ? Qt::SplitHCursor : Qt::ArrowCursor;
    auto* const widget = qtWidget(*this);
    if (widget && widget->cursor().shape() != shape) {
        widget->setCursor(shape);
    }
}

void TLLineEditView::edit(std::function<void()> const& change)
{
    auto const before = editedTransform().origin.x;
    change();
    m_shapes.clear();
    m_anchor.x += before - editedTransform().origin.x;
    setNeedsDisplay(true);
}

bool TLLineEditView::takeNodeKey(NSEvent const& event)
{
    bool const isIdle = !m_nodes.isPressed() && m_nodes.selection().empty();
    if (isIdle || event.modifiers.control || event.modifiers.alt) {
        return false;
    }
    auto const length = event.modifiers.shift ? bigStep : step;
    NSPoint delta;
    switch (event.key) {
    case NSKey::escape: {
        bool wasThere = false;
        edit([&] { wasThere = m_nodes.cancel(); });
        return wasThere;
    }
    case NSKey::left:
        delta = { -length, 0 };
        break;
    case NSKey::right:
        delta = { length, 0 };
        break;
    case NSKey::up:
        delta = { 0, length };
        break;
    case NSKey::down:
        delta = { 0, -length };
        break;
    default:
        return false;
    }
    bool wasNudged = false;
    edit([&] { wasNudged = m_nodes.nudge(delta); });
    return wasNudged || m_nodes.isPressed();
}
