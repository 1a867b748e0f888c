#include "Platform/Qt/PopoverPlacement.h"

#include <algorithm>

namespace {

constexpr int arrowLength = 9;
constexpr int arrowHalfWidth = 9;
constexpr int margin = 4; ///< Between outline and content.
constexpr int cornerRadius = 8;

bool isHorizontal(NSRectEdge edge)
{
    return edge == NSRectEdge::minX || edge == NSRectEdge::maxX;
}

NSRectEdge opposite(NSRectEdge edge)
{
    switch (edge) {
    case NSRectEdge::minX:
        return NSRectEdge::maxX;
    case NSRectEdge::maxX:
        return NSRectEdge::minX;
    case NSRectEdge::minY:
        return NSRectEdge::maxY;
    case NSRectEdge::maxY:
        return NSRectEdge::minY;
    }
    return edge;
}

/// What the screen has left beyond that edge of the anchor.
int room(NSRectEdge edge, QRect anchor, QRect screen)
{
    switch (edge) {
    case NSRectEdge::minX:
        return anchor.left() - screen.left();
    case NSRectEdge::maxX:
        return screen.right() - anchor.right();
    case NSRectEdge::minY:
        return anchor.top() - screen.top();
    case NSRectEdge::maxY:
        return screen.bottom() - anchor.bottom();
    }
    return 0;
}

NSRectEdge chooseEdge(int needed, QRect anchor, NSRectEdge preferred, QRect screen)
{
    int const here = room(preferred, anchor, screen);
    return here < needed && room(opposite(preferred), anchor, screen) > here ? opposite(preferred)
                                                                             : preferred;
}

QRect besideAnchor(QSize size, QRect anchor, NSRectEdge edge)
{
    QRect window({}, size);
    window.moveCenter(anchor.center());
    switch (edge) {
    case NSRectEdge::minX:
        window.moveRight(anchor.left() - 1);
        break;
    case NSRectEdge::maxX:
        window.moveLeft(anchor.right() + 1);
        break;
    case NSRectEdge::minY:
        window.moveBottom(anchor.top() - 1);
        break;
    case NSRectEdge::maxY:
        window.moveTop(anchor.bottom() + 1);
        break;
    }
    return window;
}

/// Moves the window into the screen; one that is too large keeps its beginning there.
QRect broughtInto(QRect window, QRect screen)
{
    window.moveRight(std::min(window.right(), screen.right()));
    window.moveBottom(std::min(window.bottom(), screen.bottom()));
    window.moveLeft(std::max(window.left(), screen.left()));
    window.moveTop(std::max(window.top(), screen.top()));
    return window;
}

/// The rectangle without the arrow, within the window.
QRect bodyRect(PopoverPlacement const& placement)
{
    QRect const rect({}, placement.window.size());
    switch (placement.edge) {
    case NSRectEdge::minX:
        return rect.adjusted(0, 0, -arrowLength, 0);
    case NSRectEdge::maxX:
        return rect.adjusted(arrowLength, 0, 0, 0);
    case NSRectEdge::minY:
        return rect.adjusted(0, 0, 0, -arrowLength);
    case NSRectEdge::maxY:
        return rect.adjusted(0, arrowLength, 0, 0);
    }
    return rect;
}

} // namespace

PopoverPlacement placePopover(QSize content, QRect anchor, NSRectEdge preferred, QRect screen)
{
    QSize size = content + QSize(2 * margin, 2 * margin);
    bool const beside = isHorizontal(preferred);
    (beside ? size.rwidth() : size.rheight()) += arrowLength;

    PopoverPlacement result;
    result.edge = chooseEdge(beside ? size.width() : size.height(), anchor, preferred, screen);
    result.window = broughtInto(besideAnchor(size, anchor, result.edge), screen);
    int const tip = beside ? anchor.top() + anchor.height() / 2 - result.window.top()
                           : anchor.left() + anchor.width() / 2 - result.window.left();
    int const length = beside ? size.height() : size.width();
    int const least = std::min(cornerRadius + arrowHalfWidth, length / 2);
    result.arrow = std::clamp(tip, least, length - least);
    return result;
}

QRect popoverContentRect(PopoverPlacement const& placement)
{
    return bodyRect(placement).adjusted(margin, margin, -margin, -margin);
}

QPainterPath popoverOutline(PopoverPlacement const& placement)
{
    // Half a point inwards, so that a line of one point along it stays within the window.
    QRectF const body = QRectF(bodyRect(placement)).adjusted(0.5, 0.5, -0.5, -0.5);
    QPainterPath path;
    path.addRoundedRect(body, cornerRadius, cornerRadius);
    QPolygonF arrow;
    double const at = placement.arrow;
    auto const point = [&](double along, double outward) -> QPointF {
        switch (placement.edge) {
        case NSRectEdge::minX:
            return { body.right() + outward, along };
        case NSRectEdge::maxX:
            return { body.left() - outward, along };
        case NSRectEdge::minY:
            return { along, body.bottom() + outward };
        case NSRectEdge::maxY:
            return { along, body.top() - outward };
        }
        return {};
    };
    constexpr double overlap = 1; // The arrow's foot lies inside the body.
    arrow << point(at - arrowHalfWidth, -overlap) << point(at, arrowLength)
          << point(at + arrowHalfWidth, -overlap);
    QPainterPath tip;
    tip.addPolygon(arrow);
    tip.closeSubpath();
    return path.united(tip);
}
