#pragma once

#include "Platform/AppKit/NSColor.h"
#include "Platform/AppKit/NSFont.h"
#include "Platform/AppKit/NSGeometry.h"
#include "Platform/Qt/Conversions.h"

#include <QColor>
#include <QFont>
#include <QRectF>
inline QPointF toQPointF(NSPoint point)
{
    return { point.x, point.y };
}
inline NSPoint fromQPointF(QPointF point)
{
    return { point.x(), point.y() };
}
inline QRectF toQRectF(NSRect rect)
{
    return { rect.origin.x, rect.origin.y, rect.size.width, rect.size.height };
}
inline NSRect fromQRectF(QRectF const& rect)
{
    return { { rect.x(), rect.y() }, { rect.width(), rect.height() } };
}
inline NSSize fromQSize(QSize size)
{
    return { static_cast<double>(size.width()), static_cast<double>(size.height()) };
}

PLATFORM_API QColor toQColor(NSColor color);
PLATFORM_API NSColor fromQColor(QColor const& color);
PLATFORM_API QFont toQFont(NSFont const& font);
