#include "Benchmarks/SliderDrag.h"

#include "Platform/Qt/NSViewBacking.h"
#include "Typloom/TyploomApp/TLGlyphEditView.h"

#include <QApplication>
#include <QMouseEvent>
#include <QTest>

SliderDrag::SliderDrag(BenchWindow& window, std::shared_ptr<AxisCellView> row)
    : m_window(window)
    , m_row(std::move(row))
{
    qtWidget(view())->installEventFilter(this);
    post(QEvent::MouseButtonPress, 0.3);
    QApplication::processEvents();
}

bool SliderDrag::eventFilter(QObject* object, QEvent* event)
{
    m_paints += event->type() == QEvent::Paint;
    return QObject::eventFilter(object, event);
}

SliderDrag::~SliderDrag()
{
    post(QEvent::MouseButtonRelease, 0.3);
    QApplication::processEvents();
}

/// At a part of the slider's length.
void SliderDrag::post(int type, double part)
{
    auto* const slider = qtWidget(*m_row->slider());
    QPointF const place(10 + part * (slider->width() - 20), slider->height() / 2.0);
    auto const button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    auto const held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    QCoreApplication::postEvent(
        slider, new QMouseEvent(QEvent::Type(type), place, slider->mapToGlobal(place), button, held, {}));
}

void SliderDrag::tick(std::size_t number)
{
    // There and back in 90 steps, each a little off the one before on the same way.
    auto const step = number % 90;
    auto const way = double(step < 45 ? step : 90 - step) / 45;
    post(QEvent::MouseMove, 0.1 + 0.8 * way + 0.001 * double(number % 7));
    QApplication::processEvents();
}

NSView& SliderDrag::view() const
{
    return *m_window.window().editViewController()->graphicView();
}

void SliderDrag::zoomOut()
{
    for (int step = 0; step < 12; ++step) {
        QTest::keyClick(&m_window.widget(), Qt::Key_Minus, Qt::ControlModifier);
    }
    QApplication::processEvents();
}

double SliderDrag::pointsPerUnit() const
{
    auto& line = view();
    return std::min(0.52 * line.bounds().size.height / 1000, 0.62 * line.bounds().size.width / 1000);
}

QRect SliderDrag::viewGeometry() const
{
    auto* const widget = qtWidget(view());
    return { widget->mapTo(&m_window.widget(), QPoint()), widget->size() };
}
