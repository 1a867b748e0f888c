#include "Typloom/TyploomApp/TLNodeEditor.h"

#include "Typloom/TyploomCore/TLDocumentHistory.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

NSRect rectBetween(NSPoint a, NSPoint b)
{
    return { { std::min(a.x, b.x), std::min(a.y, b.y) }, { std::abs(a.x - b.x), std::abs(a.y - b.y) } };
}

NSPoint wholeUnits(NSPoint delta, bool holdsDirection)
{
    if (holdsDirection) {
        (std::abs(delta.x) < std::abs(delta.y) ? delta.x : delta.y) = 0;
    }
    return { std::round(delta.x), std::round(delta.y) };
}

} // namespace

TLNodeEditor::TLNodeEditor(std::shared_ptr<TLEditState> state)
    : m_state(std::move(state))
{
}

TLNodeEditor::~TLNodeEditor()
{
    endPress();
}

std::optional<NSRect> TLNodeEditor::box() const
{
    bool const isDrawn = m_press && m_press->grip == Grip::none && m_press->hasMoved;
    return isDrawn ? std::optional(rectBetween(m_press->place, m_press->pointer)) : std::nullopt;
}

TLNodeEditor::Grip TLNodeEditor::gripAt(NSPoint place, double reach) const
{
    auto const edited = m_state->editableLayer();
    if (!edited) {
        return Grip::none;
    }
    if (TLNodeAtPlace(edited->outline(), place, reach)) {
        return Grip::node;
    }
    auto const distance = std::abs(place.x - std::max(edited->outline().advance, 0.0));
    return distance <= reach * 2 / 3 ? Grip::width : Grip::none;
}

void TLNodeEditor::press(NSPoint place, double reach, bool shift)
{
    settle();
    endPress();
    auto const edited = m_state->editableLayer();
    if (!edited) {
        return;
    }
    m_press = Press { .grip = gripAt(place, reach),
        .place = place,
        .pointer = place,
        .layer = edited,
        .outline = edited->outline() };
    m_selectionLayer = edited;
    if (m_press->grip == Grip::node) {
        pressNode(*TLNodeAtPlace(edited->outline(), place, reach), shift);
    } else if (m_press->grip == Grip::none) {
        m_press->selection = shift ? m_selection : TLNodeSelection();
        m_selection = m_press->selection;
    }
}

void TLNodeEditor::pressNode(TLNodeIndex node, bool shift)
{
    bool const wasSelected = m_selection.contains(node);
    if (shift && wasSelected) {
        m_selection.erase(node);
    } else if (shift) {
        m_selection.insert(node);
    } else if (wasSelected) {
        m_press->node = node;
    } else {
        m_selection = { node };
    }
}

void TLNodeEditor::drag(NSPoint place, bool shift)
{
    settle();
    if (!m_press) {
        return;
    }
    auto& press = *m_press;
    press.pointer = place;
    if (press.grip == Grip::none) {
        press.hasMoved = true;
        m_selection = press.selection;
        for (auto const index : TLNodesInRect(press.outline, rectBetween(press.place, place))) {
            // With Shift a box takes away what was selected before.

            press.selection.contains(index) ? (void)m_selection.erase(index)
                                            : (void)m_selection.insert(index);
        }
        return;
    }
    NSPoint const way { place.x - press.place.x, place.y - press.place.y };
    if (!std::exchange(press.hasMoved, true)) {
        m_state->font()->history().beginGesture();
    }
    if (press.grip == Grip::node) {
        return show(TLOutlineWithMovedNodes(press.outline, m_selection, wholeUnits(way, shift)));
    }
    auto outline = press.outline;
    outline.advance = std::max(0.0, outline.advance + std::round(way.x));
    show(std::move(outline));
}

void TLNodeEditor::show(TLOutline outline)
{
    m_shown = std::move(outline);
    m_press->layer->setOutline(m_shown);
}

void TLNodeEditor::release()
{
    settle();
    if (m_press && m_press->node && !m_press->hasMoved) {
        m_selection = { *m_press->node };
    }
    endPress();
}

void TLNodeEditor::endPress()
{
    auto const press = std::exchange(m_press, std::nullopt);
    if (press && press->hasMoved && press->grip != Grip::none) {
        m_state->font()->history().endGesture();
    }
}

bool TLNodeEditor::cancel()
{
    settle();
    if (!m_press) {
        return !std::exchange(m_selection, {}).empty();
    }
    if (m_press->grip == Grip::none) {
        m_selection = m_press->selection;
    } else if (m_press->hasMoved) {
        show(m_press->outline);
    }
    endPress();
    return true;
}

bool TLNodeEditor::nudge(NSPoint delta)
{
    settle();
    auto const edited = m_state->editableLayer();

    if (m_selection.empty() || !edited) {
        return false;
    }
    if (!m_press) {
        m_state->font()->history().endStep();
        edited->setOutline(TLOutlineWithMovedNodes(edited->outline(), m_selection, delta));
    }
    return true;
}

void TLNodeEditor::settle()
{
    auto const edited = m_state->editableLayer();
    if (edited != m_selectionLayer.lock()) {
        m_selection.clear();
        m_selectionLayer.reset();
    } else if (edited) {
        m_selection = TLFittingNodes(std::move(m_selection), edited->outline());
    }
    if (!m_press) {
        return;
    }
    bool const isOurs
        = !m_press->hasMoved || m_press->grip == Grip::none || m_press->layer->outline() == m_shown;
    if (edited != m_press->layer || !isOurs) {
        endPress(); // Somebody else has changed it: what there was is not ours to give back.
    }
}
