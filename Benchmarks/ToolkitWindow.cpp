#include "Benchmarks/ToolkitWindow.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QToolButton>

static QPainterPath pathOf(TLOutline const& outline)
{
    QPainterPath path;
    for (auto const& contour : outline.contours) {
        auto const& points = contour.points;
        path.moveTo(points.front().x, points.front().y);
        for (std::size_t index = 1; index + 1 < points.size(); index += 3) {
            auto const& end = points[(index + 2) % points.size()];
            path.cubicTo(
                points[index].x, points[index].y, points[index + 1].x, points[index + 1].y, end.x, end.y);
        }
        path.closeSubpath();
    }
    path.setFillRule(Qt::WindingFill);
    return path;
}

class ToolkitWindow::Canvas : public QWidget {
public:
    Canvas(QWidget* parent, std::size_t glyphs, double pointsPerUnit)
        : QWidget(parent)
        , m_scale(pointsPerUnit)
    {
        for (std::size_t glyph = 0; glyph < glyphs; ++glyph) {
            m_paths[0].push_back(pathOf(ringOutline(glyph, 0)));
            m_paths[1].push_back(pathOf(ringOutline(glyph, 20)));
        }
    }
    std::size_t place { 0 };
    std::size_t paints { 0 };

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        ++paints;
        painter.fillRect(rect(), palette().base());
        painter.setRenderHint(QPainter::Antialiasing);
        auto const advance = 1000 * m_scale;
        // From the middle outwards, as a line that hangs on its first glyph lies.
        double x = width() / 2.0 - advance / 2;
        for (auto const& path : m_paths[place]) {
            if (x > width()) {
                break;
            }
            painter.setTransform({ m_scale, 0, 0, -m_scale, x, height() * 0.7 });
            painter.fillPath(path, palette().text());
            x += advance;
        }
    }

private:
    double m_scale;
    std::vector<QPainterPath> m_paths[2];
};

ToolkitWindow::ToolkitWindow(QSize windowSize, QRect viewGeometry, std::size_t glyphs, double pointsPerUnit)
    : m_canvas(new Canvas(&m_window, glyphs, pointsPerUnit))
{
    m_window.resize(windowSize);
    m_canvas->setGeometry(viewGeometry);
    addRow();
    m_window.show();
    QApplication::processEvents();
}

ToolkitWindow::~ToolkitWindow() = default;

std::size_t ToolkitWindow::countOfPaints() const
{
    return m_canvas->paints;
}

void ToolkitWindow::addRow()
{
    auto* const row = new QWidget(&m_window);
    auto* const layout = new QHBoxLayout(row);
    layout->addWidget(new QLabel("Axis 0"));
    m_slider = new QSlider(Qt::Horizontal);
    m_slider->setRange(0, 10000);
    layout->addWidget(m_slider);
    auto* const number = new QLineEdit;
    layout->addWidget(number);
    layout->addWidget(new QToolButton);
    layout->addWidget(new QToolButton);
    row->setGeometry(0, 100, 300, 60);
    m_slider->installEventFilter(this);
    QObject::connect(m_slider, &QSlider::valueChanged, m_canvas, [this, number](int value) {
        number->setText(QString::number(value / 10.0));
        m_canvas->place = std::size_t(value) % 2;
        m_canvas->update();
    });
}

/// The knob follows the mouse as a drag's does, wherever the style would have it held.
bool ToolkitWindow::eventFilter(QObject* object, QEvent* event)
{
    if (event->type() != QEvent::MouseMove) {
        return QObject::eventFilter(object, event);
    }
    m_slider->setValue(int(static_cast<QMouseEvent*>(event)->position().x() * 50));
    return true;
}

void ToolkitWindow::tick(std::size_t number)
{
    // There and back, by whole pixels: the toolkit's slider has whole numbers.
    auto const step = int(number % 90);
    QPointF const place(20 + (step < 45 ? step : 90 - step), m_slider->height() / 2.0);
    auto const global = m_slider->mapToGlobal(place);
    QCoreApplication::postEvent(
        m_slider, new QMouseEvent(QEvent::MouseMove, place, global, Qt::NoButton, Qt::LeftButton, {}));
    QApplication::processEvents();
}
