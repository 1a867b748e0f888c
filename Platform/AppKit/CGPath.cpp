#include "Platform/AppKit/CGPath.h"

#include "Platform/Qt/DrawingConversions.h"
#include "Platform/Qt/Painting.h"

#include <algorithm>
#include <array>

CGPath::CGPath()
    : m_impl(std::make_shared<Impl>())
{
    m_impl->path.setFillRule(Qt::WindingFill);
}

CGPath::~CGPath() = default;
CGPath::CGPath(CGPath const&) = default;
CGPath& CGPath::operator=(CGPath const&) = default;

// What has been moved from stays a path: it shares the shape, as a copy does.
CGPath::CGPath(CGPath&& other) noexcept
    : m_impl(other.m_impl)
{
}

CGPath& CGPath::operator=(CGPath&& other) noexcept
{
    m_impl = other.m_impl;
    return *this;
}

CGPath::Impl& CGPath::edit()
{
    if (m_impl.use_count() > 1) {
        m_impl = std::make_shared<Impl>(*m_impl);
    }
    return *m_impl;
}

void CGPath::moveTo(NSPoint point)
{
    edit().path.moveTo(toQPointF(point));
}

void CGPath::lineTo(NSPoint point)
{
    edit().path.lineTo(toQPointF(point));
}

void CGPath::quadCurveTo(NSPoint control, NSPoint end)
{
    edit().path.quadTo(toQPointF(control), toQPointF(end));
}

void CGPath::curveTo(NSPoint control1, NSPoint control2, NSPoint end)
{
    edit().path.cubicTo(toQPointF(control1), toQPointF(control2), toQPointF(end));
}

void CGPath::closeSubpath()
{
    edit().path.closeSubpath();
}

void CGPath::addRect(NSRect rect)
{
    edit().path.addRect(toQRectF(rect));
}

void CGPath::addEllipse(NSRect rect)
{
    edit().path.addEllipse(toQRectF(rect));
}

void CGPath::addPath(CGPath const& path)
{
    edit().path.addPath(path.impl().path);
}

NSRect CGPath::boundingBox() const
{
    return fromQRectF(m_impl->path.controlPointRect());
}

namespace {

/// Curve of one corner, from the edge before it to the edge after it, as distances from the
/// corner's tip along both edges, in corner sizes. The outer parts leave the edges with a curvature of
/// nothing, since their first three points lie on the edge; the part between them turns.
struct CornerPoint {
    double before;
    double after;
};
constexpr double reach = 1.5; ///< Where the corner begins on an edge.
constexpr std::array<CornerPoint, 10> corner { { { reach, 0 }, { 1.18, 0 }, { 0.92, 0 }, { 0.67, 0.067 },
    { 0.42, 0.134 }, { 0.134, 0.42 }, { 0.067, 0.67 }, { 0, 0.92 }, { 0, 1.18 }, { 0, reach } } };

} // namespace

CGPath CGPath::continuousRoundedRect(NSRect rect, NSSize cornerSize)
{
    // Corners that would meet on a short edge are made smaller.
    double const width = std::clamp(cornerSize.width, 0.0, std::max(rect.size.width, 0.0) / (2 * reach));
    double const height = std::clamp(cornerSize.height, 0.0, std::max(rect.size.height, 0.0) / (2 * reach));
    struct Turn {
        NSPoint tip;
        NSPoint before; ///< Away from the tip, along the edge that leads to it, one corner size.
        NSPoint after; ///< The same along the edge that leaves it.
    };
    std::array<Turn, 4> const turns { {
        { { rect.maxX(), rect.origin.y }, { -width, 0 }, { 0, height } },
        { { rect.maxX(), rect.maxY() }, { 0, -height }, { -width, 0 } },
        { { rect.origin.x, rect.maxY() }, { width, 0 }, { 0, -height } },
        { rect.origin, { 0, height }, { width, 0 } },
    } };
    CGPath path;
    bool isFirst = true;
    for (auto const& turn : turns) {
        auto const at = [&](std::size_t index) -> NSPoint {
            auto const [before, after] = corner[index];
            return { turn.tip.x + turn.before.x * before + turn.after.x * after,
                turn.tip.y + turn.before.y * before + turn.after.y * after };
        };
        isFirst ? path.moveTo(at(0)) : path.lineTo(at(0));
        isFirst = false;
        for (std::size_t index = 1; index + 2 < corner.size(); index += 3) {
            path.curveTo(at(index), at(index + 1), at(index + 2));
        }
    }
    path.closeSubpath();
    return path;
}
