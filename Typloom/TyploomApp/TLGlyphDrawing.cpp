#include "Typloom/TyploomApp/TLGlyphDrawing.h"

#include <algorithm>
#include <cmath>

namespace {

/// Diameters and sides, in points.
constexpr double cornerNodeSize = 7;
constexpr double smoothNodeSize = 7.5;
constexpr double handleSize = 5.5;

/// Beyond this many points nodes hide the outline and take longer to draw than a frame has.
constexpr std::size_t mostPointsWithNodes = 20'000;

/// Draws in font units; strokes are meant to be cosmetic.
class FontUnits {
public:
    FontUnits(CGContext& context, TLGlyphTransform const& transform)
        : m_context(context)
    {
        m_context.saveState();
        m_context.concatenate(
            transform.scale, 0, 0, -transform.scale, transform.origin.x, transform.origin.y);
    }
    ~FontUnits() { m_context.restoreState(); }
    FontUnits(FontUnits const&) = delete;
    FontUnits& operator=(FontUnits const&) = delete;

private:
    CGContext& m_context;
};

void fill(CGContext& context, CGPath const& path, NSColor color)
{
    context.setFillColor(color);
    context.addPath(path);
    context.fillPath();
}

void stroke(CGContext& context, CGPath const& path, NSColor color, double width)
{
    context.setStrokeColor(color);
    context.setLineWidth(width);
    context.addPath(path);
    context.strokePath();
}

NSColor mixed(NSColor first, NSColor second, double share)
{
    auto const mix = [share](double a, double b) { return a + (b - a) * share; };
    return { mix(first.red, second.red), mix(first.green, second.green), mix(first.blue, second.blue) };
}

/// Components stand out from contours of the glyph's own, in a light palette and in a dark one.
NSColor componentColor()
{
    return mixed(NSColor::labelColor(), NSColor::controlAccentColor(), 0.25);
}

NSRect centredAt(NSPoint point, double size)
{
    return { { point.x - size / 2, point.y - size / 2 }, { size, size } };
}

/// To the middle of a device pixel at scale one, so that the sides of squares are sharp.
NSPoint onPixelGrid(NSPoint point)
{
    return { std::floor(point.x) + 0.5, std::floor(point.y) + 0.5 };
}

bool isHandle(TLPoint const& point)
{
    return point.type == TLPointType::offcurve;
}

/// The lines from on-curve points to their handles; over quadratic curves the polygon of handles too.
void addHandleLines(CGPath& path, TLContour const& contour, TLGlyphTransform const& transform, bool isCubic)
{
    auto const& points = contour.points;
    bool const isOpen = points.front().type == TLPointType::move;
    for (std::size_t index = isOpen ? 1 : 0; index < points.size(); ++index) {
        auto const& from = points[index == 0 ? points.size() - 1 : index - 1];
        auto const& to = points[index];
        bool const joins = isCubic ? isHandle(from) != isHandle(to) : isHandle(from) || isHandle(to);
        if (joins) {
            path.moveTo(transform.toView(from.x, from.y));
            path.lineTo(transform.toView(to.x, to.y));
        }
    }
}

void drawHandleLines(CGContext& context, TLOutline const& outline, TLGlyphTransform const& transform)
{
    auto const color = NSColor::labelColor().withAlpha(0.35);
    for (auto const& contour : outline.contours) {
        if (contour.points.empty()) {
            continue;
        }
        bool const isCubic = std::any_of(contour.points.begin(), contour.points.end(),
            [](TLPoint const& point) { return point.type == TLPointType::curve; });
        CGPath path;
        addHandleLines(path, contour, transform, isCubic);
        stroke(context, path, color, 1);
    }
}

void drawNode(CGContext& context, TLPoint const& point, NSPoint place)
{
    auto const paper = NSColor::textBackgroundColor();
    auto const accent = NSColor::controlAccentColor();
    CGPath node;
    if (isHandle(point)) {
        node.addEllipse(centredAt(place, handleSize));
        fill(context, node, paper);
        stroke(context, node, NSColor::labelColor().withAlpha(0.6), 1);
    } else if (point.smooth) {
        node.addEllipse(centredAt(place, smoothNodeSize));
        fill(context, node, paper);
        stroke(context, node, accent, 1.5);
    } else {
        node.addRect(centredAt(onPixelGrid(place), cornerNodeSize));
        fill(context, node, accent);
    }
}

/// In a colour of its own, since nodes have the accent's, with a rim that parts it from the outline.
void drawSelectedNode(CGContext& context, TLPoint const& point, NSPoint place)
{
    constexpr double growth = 2;
    constexpr NSColor color { 0.92, 0.3, 0.06 };
    auto const size = (isHandle(point) ? handleSize : smoothNodeSize) + growth;
    CGPath node;
    isHandle(point) || point.smooth ? node.addEllipse(centredAt(place, size))
                                    : node.addRect(centredAt(onPixelGrid(place), size));
    stroke(context, node, NSColor::textBackgroundColor(), 3);
    fill(context, node, color);
}

void drawNodes(CGContext& context, TLOutline const& outline, TLGlyphTransform const& transform,
    NSRect visible, TLNodeSelection const& selection)
{
    auto const area = visible.insetBy(-2 * smoothNodeSize, -2 * smoothNodeSize);
    auto const draw = [&](bool handles, bool selected) {
        for (std::size_t contour = 0; contour < outline.contours.size(); ++contour) {
            auto const& points = outline.contours[contour].points;
            for (std::size_t index = 0; index < points.size(); ++index) {
                auto const place = transform.toView(points[index].x, points[index].y);
                bool const isSelected = !selection.empty() && selection.contains({ contour, index });
                if (isHandle(points[index]) == handles && isSelected == selected && area.contains(place)) {
                    isSelected ? drawSelectedNode(context, points[index], place)
                               : drawNode(context, points[index], place);
                }
            }
        }
    };
    for (bool const selected : { false, true }) {
        draw(true, selected);
        draw(false, selected);
    }
}

std::size_t countOfPoints(TLOutline const& outline)
{
    std::size_t count = 0;
    for (auto const& contour : outline.contours) {
        count += contour.points.size();
    }
    return count;
}

} // namespace

void TLDrawFilledGlyph(CGContext& context, TLGlyphShape const& shape, TLGlyphTransform const& transform,
    TLComponentFill componentFill)
{
    FontUnits const units(context, transform);
    fill(context, shape.contours, NSColor::labelColor());
    bool const isTinted = componentFill == TLComponentFill::tinted;
    fill(context, shape.components, isTinted ? componentColor() : NSColor::labelColor());
}

void TLDrawEditableGlyph(CGContext& context, TLGlyphShape const& shape, TLGlyphTransform const& transform,
    NSRect visible, TLNodeSelection const& selection)
{
    {
        FontUnits const units(context, transform);
        context.setCosmeticLine(true);
        fill(context, shape.components, componentColor().withAlpha(0.3));
        fill(context, shape.contours, NSColor::labelColor().withAlpha(0.1));
        stroke(context, shape.contours, NSColor::labelColor(), 1.25);
    }
    if (countOfPoints(shape.outline) > mostPointsWithNodes) {
        return;
    }
    drawHandleLines(context, shape.outline, transform);
    drawNodes(context, shape.outline, transform, visible, selection);
}

void TLDrawSelectionBox(CGContext& context, NSRect box, TLGlyphTransform const& transform)
{
    auto const topLeft = onPixelGrid(transform.toView(box.origin.x, box.maxY()));
    auto const bottomRight = onPixelGrid(transform.toView(box.maxX(), box.origin.y));
    CGPath path;
    path.addRect({ topLeft, { bottomRight.x - topLeft.x, bottomRight.y - topLeft.y } });
    fill(context, path, NSColor::controlAccentColor().withAlpha(0.1));
    stroke(context, path, NSColor::controlAccentColor(), 1);
}

void TLDrawMetrics(CGContext& context, TLFontMaster::Metrics const& metrics, double advance,
    TLGlyphTransform const& transform)
{
    auto const horizontal = [&](double y, NSColor color) {
        CGPath line;
        line.moveTo(onPixelGrid(transform.toView(0, y)));
        line.lineTo(onPixelGrid(transform.toView(advance, y)));
        stroke(context, line, color, 1);
    };
    auto const faint = NSColor::labelColor().withAlpha(0.16);
    for (double const y : { metrics.ascender, metrics.capHeight, metrics.xHeight, metrics.descender }) {
        horizontal(y, faint);
    }
    horizontal(0, NSColor::controlAccentColor().withAlpha(0.55));
    for (double const x : { 0.0, advance }) {
        CGPath line;
        line.moveTo(onPixelGrid(transform.toView(x, metrics.ascender)));
        line.lineTo(onPixelGrid(transform.toView(x, metrics.descender)));
        stroke(context, line, faint, 1);
    }
}

void TLDrawMissingGlyph(CGContext& context, TLFontMaster::Metrics const& metrics, double advance,
    TLGlyphTransform const& transform)
{
    auto const topLeft = transform.toView(advance * 0.1, metrics.capHeight);
    auto const bottomRight = transform.toView(advance * 0.9, 0);
    CGPath box;
    box.addRect({ topLeft, { bottomRight.x - topLeft.x, bottomRight.y - topLeft.y } });
    box.moveTo(topLeft);
    box.lineTo(bottomRight);
    box.moveTo({ topLeft.x, bottomRight.y });
    box.lineTo({ bottomRight.x, topLeft.y });
    stroke(context, box, NSColor::secondaryLabelColor(), 1);
}
