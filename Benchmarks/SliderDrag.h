#pragma once

#include "Benchmarks/BenchWindow.h"

#include <QObject>
#include <QRect>

class NSView;

/// A row's slider that is being dragged by real events of the mouse, up to the painted window.
class SliderDrag : public QObject {
public:
    SliderDrag(BenchWindow& window, std::shared_ptr<AxisCellView> row);
    ~SliderDrag();
    /// One move of the mouse, from the event posted to the window painted. The next value each time.
    void tick(std::size_t number);
    /// How often the edit view was painted.
    std::size_t countOfPaints() const { return m_paints; }
    /// Makes the glyphs so small that a line of 100 is in sight.
    void zoomOut();
    /// How many points one font unit takes now.
    double pointsPerUnit() const;
    /// The edit view, in the window.
    QRect viewGeometry() const;

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    NSView& view() const;
    void post(int type, double part);

    BenchWindow& m_window;
    std::shared_ptr<AxisCellView> m_row;
    std::size_t m_paints { 0 };
};
