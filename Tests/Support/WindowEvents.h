#pragma once

#include "Platform/Qt/NSViewBacking.h"

#include <QTest>
#include <QWheelEvent>

/// Real events of mouse and keyboard, sent to a window as its screen would. Places are fractions of a
/// view's size.
class WindowEvents {
public:
    explicit WindowEvents(QWidget& window)
        : m_window(window)
    {
    }

    void press(NSView const& view, double x = 0.5, double y = 0.5)
    {
        QTest::mousePress(m_window.windowHandle(), Qt::LeftButton, {}, place(view, x, y));
    }
    void moveTo(NSView const& view, double x = 0.5, double y = 0.5)
    {
        QTest::mouseMove(m_window.windowHandle(), place(view, x, y));
        QCoreApplication::processEvents();
    }
    void moveAway()
    {
        QTest::mouseMove(m_window.windowHandle(), QPoint(m_window.width() / 2, m_window.height() + 50));
        QCoreApplication::processEvents();
    }
    void release(NSView const& view, double x = 0.5, double y = 0.5)
    {
        QTest::mouseRelease(m_window.windowHandle(), Qt::LeftButton, {}, place(view, x, y));
        QCoreApplication::processEvents();
    }
    void click(NSView const& view, double x = 0.5, double y = 0.5, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseClick(m_window.windowHandle(), button, {}, place(view, x, y));
        QCoreApplication::processEvents();
    }
    void doubleClick(NSView const& view, double x = 0.5, double y = 0.5)
    {
        QTest::mouseDClick(m_window.windowHandle(), Qt::LeftButton, {}, place(view, x, y));
        QCoreApplication::processEvents();
    }
    /// A turn of the wheel, in degrees; away from the hand is positive.
    void wheel(NSView const& view, int degrees)
    {
        QPointF const local = place(view, 0.5, 0.5);
        QWheelEvent event(local, m_window.mapToGlobal(local), {}, QPoint(0, degrees * 8), Qt::NoButton,
            Qt::NoModifier, Qt::NoScrollPhase, false); // In eighths of a degree.
        QSpontaneKeyEvent::setSpontaneous(&event); // Others do not go on to parents.
        QCoreApplication::instance()->notify(m_window.windowHandle(), &event);
        QCoreApplication::processEvents();
    }
    void type(std::string const& text)
    {
        for (auto const character : text) {
            QTest::keyClick(m_window.windowHandle(), character);
        }
    }
    void pressKey(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(m_window.windowHandle(), key, modifiers);
    }
    /// A press, moves and a release with the left button, between places of the window.
    void drag(QPoint from, QPoint to)
    {
        QTest::mousePress(m_window.windowHandle(), Qt::LeftButton, {}, from);
        for (auto const& place : { (from + to) / 2, to }) {
            QTest::mouseMove(m_window.windowHandle(), place);
            QCoreApplication::processEvents();
        }
        QTest::mouseRelease(m_window.windowHandle(), Qt::LeftButton, {}, to);
        QCoreApplication::processEvents();
    }
    void clickAt(QWidget const& widget, QPoint place)
    {
        QTest::mouseClick(m_window.windowHandle(), Qt::LeftButton, {}, widget.mapTo(&m_window, place));
        QCoreApplication::processEvents();
    }

private:
    QPoint place(NSView const& view, double x, double y)
    {
        auto const* const widget = qtWidget(view);
        return widget->mapTo(
            &m_window, QPointF((widget->width() - 1) * x, (widget->height() - 1) * y).toPoint());
    }

    QWidget& m_window;
};
