#pragma once

#include "Platform/AppKit/CGContext.h"
#include "Platform/AppKit/CGPath.h"

#include <QPainter>
#include <QPainterPath>

struct CGPath::Impl {
    QPainterPath path;
};

struct CGContext::Impl {
    QPainter& painter;
    QPainterPath path {};
    QPen pen { Qt::black, 1, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin };
    QBrush brush { Qt::black };
    struct Saved {
        QPen pen;
        QBrush brush;
    };
    std::vector<Saved> saved {};
};

/// Makes a context the current one while it lives.
class PLATFORM_API CurrentContextScope {
public:
    explicit CurrentContextScope(CGContext& context);
    ~CurrentContextScope();
    CurrentContextScope(CurrentContextScope const&) = delete;

private:
    CGContext* m_previous;
};
