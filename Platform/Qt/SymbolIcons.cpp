#include "Platform/Qt/SymbolIcons.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr double side = 16; ///< Of the square in which the shapes are drawn.

QPainterPath stroked(QPainterPath const& line, double width = 1.5)
{
    QPainterPathStroker stroker;
    stroker.setWidth(width);
    stroker.setCapStyle(Qt::RoundCap);
    stroker.setJoinStyle(Qt::RoundJoin);
    auto outline = stroker.createStroke(line);
    outline.setFillRule(Qt::WindingFill);
    return outline;
}

QPainterPath polyline(std::initializer_list<QPointF> points)
{
    QPainterPath line;
    for (auto const& point : points) {
        line.elementCount() == 0 ? line.moveTo(point) : line.lineTo(point);
    }
    return stroked(line);
}

QPainterPath disc(QPointF centre, double radius)
{
    QPainterPath path;
    path.addEllipse(centre, radius, radius);
    return path;
}

QPainterPath ring(QPointF centre, double radius)
{
    return stroked(disc(centre, radius), 1.2);
}

/// A slider above the window that it sets.
QPainterPath sliderBelowRectangle()
{
    QPainterPath frame;
    frame.addRoundedRect(QRectF(1.5, 2, 13, 6.5), 1.5, 1.5);
    QPainterPath shape = stroked(frame, 1.2);
    shape.addPath(polyline({ { 1.75, 12.5 }, { 7, 12.5 } }));
    shape.addPath(polyline({ { 13, 12.5 }, { 14.25, 12.5 } }));
    shape.addPath(ring({ 10, 12.5 }, 2));
    return shape;
}

QPainterPath plus()
{
    return polyline({ { 8, 3 }, { 8, 13 } }).united(polyline({ { 3, 8 }, { 13, 8 } }));
}

QPainterPath infoCircle()
{
    QPainterPath shape = ring({ 8, 8 }, 6.25);
    shape.addPath(disc({ 8, 5 }, 0.95));
    shape.addPath(polyline({ { 8, 7.6 }, { 8, 11.2 } }));
    return shape;
}

QPainterPath questionMark()
{
    QPainterPath hook;
    hook.moveTo(5.4, 5.4);
    hook.cubicTo({ 5.4, 2 }, { 10.8, 2 }, { 10.8, 5.4 });
    hook.cubicTo({ 10.8, 7.6 }, { 8, 7.4 }, { 8, 9.8 });
    QPainterPath shape = stroked(hook);
    shape.addPath(disc({ 8, 12.6 }, 1));
    return shape;
}

QPainterPath magnifyingGlass()
{
    QPainterPath shape = stroked(disc({ 6.75, 6.75 }, 4.25), 1.4);
    shape.addPath(polyline({ { 10.1, 10.1 }, { 13.5, 13.5 } }));
    return shape;
}

QPainterPath xmarkCircle()
{
    QPainterPath cross = polyline({ { 5.75, 5.75 }, { 10.25, 10.25 } });
    cross = cross.united(polyline({ { 10.25, 5.75 }, { 5.75, 10.25 } }));
    return disc({ 8, 8 }, 6).subtracted(cross);
}

/// Draws a symbol in the palette's colour for the state in which it is shown.
class SymbolEngine final : public QIconEngine {
public:
    explicit SymbolEngine(std::string name)
        : m_name(std::move(name))
    {
    }

    void paint(QPainter* painter, QRect const& rect, QIcon::Mode mode, QIcon::State) override
    {
        auto const group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        auto const role = mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::WindowText;
        double const scale = std::min(rect.width(), rect.height()) / side;
        auto const centre = QRectF(rect).center();
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(centre.x() - side / 2 * scale, centre.y() - side / 2 * scale);
        painter->scale(scale, scale);
        painter->fillPath(symbolShape(m_name), QApplication::palette().color(group, role));
        painter->restore();
    }

    QPixmap pixmap(QSize const& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap result(size);
        result.fill(Qt::transparent);
        QPainter painter(&result);
        paint(&painter, QRect({}, size), mode, state);
        return result;
    }

    QIconEngine* clone() const override { return new SymbolEngine(m_name); }

private:
    std::string m_name;
};

} // namespace

QPainterPath symbolShape(std::string_view name)
{
    using Maker = QPainterPath (*)();
    static constexpr std::array<std::pair<std::string_view, Maker>, 8> makers { {
        { "slider.horizontal.below.rectangle", sliderBelowRectangle },
        { "plus", plus },
        { "chevron.left",
            [] {
                return polyline({ { 10, 3.5 }, { 5.5, 8 }, { 10, 12.5 } });
            } },
        { "chevron.right",
            [] {
                return polyline({ { 6, 3.5 }, { 10.5, 8 }, { 6, 12.5 } });
            } },
        { "info.circle", infoCircle },
        { "questionmark", questionMark },
        { "magnifyingglass", magnifyingGlass },
        { "xmark.circle.fill", xmarkCircle },
    } };
    auto const found
        = std::find_if(makers.begin(), makers.end(), [&](auto const& entry) { return entry.first == name; });
    return found == makers.end() ? QPainterPath() : found->second();
}

double symbolSize(NSImageSymbolScale scale)
{
    switch (scale) {
    case NSImageSymbolScale::small:
        return 12;
    case NSImageSymbolScale::medium:
        return 16;
    case NSImageSymbolScale::large:
        return 20;
    }
    return side;
}

QIcon symbolIcon(NSImage const& image)
{
    return QIcon(new SymbolEngine(image.symbolName()));
}
