#include "Platform/AppKit/CGContext.h"

#include "Platform/Qt/DrawingConversions.h"
#include "Platform/Qt/Painting.h"

#include <utility>

static CGContext* currentContext = nullptr;

CGContext* CGContext::current()
{
    return currentContext;
}

CurrentContextScope::CurrentContextScope(CGContext& context)
    : m_previous(std::exchange(currentContext, &context))
{
}

CurrentContextScope::~CurrentContextScope()
{
    currentContext = m_previous;
}

void CGContext::saveState()
{
    m_impl.painter.save();
    m_impl.saved.push_back({ m_impl.pen, m_impl.brush });
}

void CGContext::restoreState()
{
    if (m_impl.saved.empty()) {
        return;
    }
    m_impl.painter.restore();
    m_impl.pen = m_impl.saved.back().pen;
    m_impl.brush = m_impl.saved.back().brush;
    m_impl.saved.pop_back();
}

void CGContext::concatenate(double a, double b, double c, double d, double tx, double ty)
{
    m_impl.painter.setTransform(QTransform(a, b, c, d, tx, ty), true);
}

void CGContext::setFillColor(NSColor color)
{
    m_impl.brush = toQColor(color);
}

void CGContext::setStrokeColor(NSColor color)
{
    m_impl.pen.setColor(toQColor(color));
}

void CGContext::setLineWidth(double points)
{
    m_impl.pen.setWidthF(points);
}

void CGContext::setCosmeticLine(bool cosmetic)
{
    m_impl.pen.setCosmetic(cosmetic);
}

void CGContext::addPath(CGPath const& path)
{
    if (m_impl.path.isEmpty()) {
        m_impl.path = path.impl().path; // Shares the points: most drawing is of one path.
    } else {
        m_impl.path.addPath(path.impl().path);
    }
    m_impl.path.setFillRule(Qt::WindingFill);
}

void CGContext::strokePath()
{
    m_impl.painter.strokePath(std::exchange(m_impl.path, {}), m_impl.pen);
}

void CGContext::fillPath()
{
    m_impl.painter.fillPath(std::exchange(m_impl.path, {}), m_impl.brush);
}

void CGContext::drawText(std::string_view text, NSPoint baselineStart, NSFont const& font, NSColor color)
{
    m_impl.painter.setFont(toQFont(font));
    m_impl.painter.setPen(toQColor(color));
    m_impl.painter.drawText(toQPointF(baselineStart), toQString(text));
}
