#pragma once

#include "Benchmarks/SyntheticFamily.h"

#include <QPainterPath>
#include <QRect>
#include <QSlider>
#include <QWidget>

#include <memory>

/// What the toolkit alone takes: a slider, one row with a name, a number and two buttons, and the paths of a
/// line of glyphs painted, at one of two places in turn.
class ToolkitWindow : public QObject {
public:
    ToolkitWindow(QSize windowSize, QRect viewGeometry, std::size_t glyphs, double pointsPerUnit);
    ~ToolkitWindow();
    /// An event at the slider, and all that follows up to the painted window.
    void tick(std::size_t number);
    std::size_t countOfPaints() const;

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    class Canvas;
    void addRow();

    QWidget m_window;
    Canvas* m_canvas;
    QSlider* m_slider { nullptr };
};
