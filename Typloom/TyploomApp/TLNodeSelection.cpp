#include "Typloom/TyploomApp/TLNodeSelection.h"

#include <array>
#include <cmath>

namespace {

bool isHandle(TLPoint const& point)
{
    return point.type == TLPointType::offcurve;
}

template <class Visit> void forEachPoint(TLOutline const& outline, Visit visit)
{
    for (std::size_t contour = 0; contour < outline.contours.size(); ++contour) {
        auto const& points = outline.contours[contour].points;
        for (std::size_t point = 0; point < points.size(); ++point) {
            visit(TLNodeIndex { contour, point }, points[point]);
        }
    }
}

/// The handles before and after a node; none where a line, or the end of an open contour, is.
std::array<std::optional<TLNodeIndex>, 2> handlesBeside(TLOutline const& outline, TLNodeIndex node)
{
    auto const& points = outline.contours[node.contour].points;
    bool const isOpen = points.front().type == TLPointType::move;
    auto const handle = [&](bool isAtEnd, std::size_t index) {
        bool const exists = !(isOpen && isAtEnd) && isHandle(points[index]);
        return exists ? std::optional(TLNodeIndex { node.contour, index }) : std::nullopt;
    };
    auto const last = points.size() - 1;
    return { handle(node.point == 0, node.point == 0 ? last : node.point - 1),
        handle(node.point == last, node.point == last ? 0 : node.point + 1) };
}

TLPoint& at(TLOutline& outline, TLNodeIndex index)
{
    return outline.contours[index.contour].points[index.point];
}

/// Turns a handle of a smooth node into line with the one opposite.
void turnHandle(TLPoint& handle, TLPoint const& node, TLPoint const& opposite)
{
    auto const distance = std::hypot(opposite.x - node.x, opposite.y - node.y);
    auto const length = std::hypot(handle.x - node.x, handle.y - node.y);
    if (distance > 0) {
        handle.x = std::round(node.x - (opposite.x - node.x) / distance * length);
        handle.y = std::round(node.y - (opposite.y - node.y) / distance * length);
    }
}

void keepSmooth(TLOutline& outline, TLNodeSelection const& moved)
{
    forEachPoint(TLOutline(outline), [&](TLNodeIndex index, TLPoint const& point) {
        if (isHandle(point) || !point.smooth || moved.contains(index)) {
            return;
        }
        auto const [before, after] = handlesBeside(outline, index);
        if (!before || !after || before == after || moved.contains(*before) == moved.contains(*after)) {
            return;
        }
        bool const turnsBefore = moved.contains(*after);
        turnHandle(
            at(outline, turnsBefore ? *before : *after), point, at(outline, turnsBefore ? *after : *before));
    });
}

} // namespace

std::optional<TLNodeIndex> TLNodeAtPlace(TLOutline const& outline, NSPoint place, double reach)
{
    std::optional<TLNodeIndex> nearest;
    double least = 0;
    forEachPoint(outline, [&](TLNodeIndex index, TLPoint const& point) {
        auto const distance = std::hypot(point.x - place.x, point.y - place.y);
        auto const rank = distance + (isHandle(point) ? reach / 5 : 0);
        if (distance <= reach && (!nearest || rank < least)) {
            nearest = index;
            least = rank;
        }
    });
    return nearest;
}

TLNodeSelection TLNodesInRect(TLOutline const& outline, NSRect rect)
{
    TLNodeSelection nodes;
    forEachPoint(outline, [&](TLNodeIndex index, TLPoint const& point) {
        if (point.x >= rect.origin.x && point.x <= rect.maxX() && point.y >= rect.origin.y
            && point.y <= rect.maxY()) {
            nodes.insert(index);
        }
    });
    return nodes;
}

TLNodeSelection TLFittingNodes(TLNodeSelection selection, TLOutline const& outline)
{
    std::erase_if(selection, [&outline](TLNodeIndex index) {
        return index.contour >= outline.contours.size()
            || index.point >= outline.contours[index.contour].points.size();
    });
    return selection;
}

TLOutline TLOutlineWithMovedNodes(TLOutline outline, TLNodeSelection const& selection, NSPoint delta)
{
    auto moved = TLFittingNodes(selection, outline);
    for (auto const index : TLNodeSelection(moved)) {
        if (!isHandle(at(outline, index))) {
            for (auto const& handle : handlesBeside(outline, index)) {
                if (handle) {
                    moved.insert(*handle);
                }
            }
        }
    }
    for (auto const index : moved) {
        auto& point = at(outline, index);
        point.x += delta.x;
        point.y += delta.y;
    }
    keepSmooth(outline, moved);
    return outline;
}
