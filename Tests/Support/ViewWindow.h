#pragma once

#include "Platform/Qt/NSViewBacking.h"

#include <QTest>
#include <QVBoxLayout>

/// A window around a view, for real events of mouse and keyboard. Places are fractions of a view's size.
class ViewWindow {
public:
    explicit ViewWindow(std::shared_ptr<NSView> const& view, QSize size = { 280, 640 })
        : m_view(view)
    {
        auto* const layout = new QVBoxLayout(&m_window);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(qtWidget(*view));
        m_window.resize(size);
        m_window.show();
        (void)QTest::qWaitForWindowExposed(&m_window);
        m_window.activateWindow();
        (void)QTest::qWaitForWindowActive(&m_window);
        // So that no field has the keyboard before a test gives it one.
        m_window.setFocusPolicy(Qt::StrongFocus);
        m_window.setFocus();
        moveAway();
    }
    ~ViewWindow()
    {
        if (auto* const widget = qtWidget(*m_view)) {
            widget->setParent(nullptr);
        }
        QCoreApplication::processEvents();
    }

    QWidget& widget() { return m_window; }
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
    void type(std::string const& text)
    {
        for (auto const character : text) {
            QTest::keyClick(m_window.windowHandle(), character);
        }
    }
    void pressKey(Qt::Key key) { QTest::keyClick(m_window.windowHandle(), key); }

private:
    QPoint place(NSView const& view, double x, double y)
    {
        auto const* const widget = qtWidget(view);
        return widget->mapTo(
            &m_window, QPointF((widget->width() - 1) * x, (widget->height() - 1) * y).toPoint());
    }

    std::shared_ptr<NSView> m_view;
    QWidget m_window;
};
