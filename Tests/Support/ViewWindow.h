#pragma once

#include "Tests/Support/WindowEvents.h"

#include <QVBoxLayout>

/// A window around a view, for real events.
class ViewWindow : public WindowEvents {
public:
    explicit ViewWindow(std::shared_ptr<NSView> const& view, QSize size = { 280, 640 })
        : WindowEvents(m_window)
        , m_view(view)
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

private:
    std::shared_ptr<NSView> m_view;
    QWidget m_window;
};
