#pragma once

#include "Platform/AppKit/NSView.h"
#include "Platform/Qt/NSViewBacking.h"

#include <QApplication>
#include <QTest>
#include <QWheelEvent>
#include <QWidget>
#include <QWindow>

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// A window on screen with a plain view all over it. Events go in where the window system puts
/// them: at the window.
class ViewWindow {
public:
    explicit ViewWindow(QSize size = { 300, 200 })
        : root(std::make_shared<NSView>())
    {
        window.setGeometry(QRect({ 100, 100 }, size));
        qtWidget(*root)->setParent(&window);
        root->setFrame({ {}, { static_cast<double>(size.width()), static_cast<double>(size.height()) } });
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        settle();
    }
    ~ViewWindow() { moveAway(); }

    static void settle()
    {
        for (int turn = 0; turn < 3; ++turn) {
            QCoreApplication::processEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    }

    /// Adds a view at a place in the root view.
    template <class View> std::shared_ptr<View> add(std::shared_ptr<View> view, NSRect frame)
    {
        view->setFrame(frame);
        root->addSubview(view);
        return view;
    }

    void press(QPoint place, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mousePress(window.windowHandle(), button, {}, place);
        settle();
    }
    void release(QPoint place, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseRelease(window.windowHandle(), button, {}, place);
        settle();
    }
    void click(QPoint place, Qt::MouseButton button = Qt::LeftButton)
    {
        press(place, button);
        release(place, button);
    }
    void move(QPoint place)
    {
        QTest::mouseMove(window.windowHandle(), place);
        settle();
    }
    /// The pointer leaves the window.
    void moveAway()
    {
        if (auto* handle = window.windowHandle()) {
            // Elsewhere first: a move to where the pointer was last is no move for the toolkit.
            QTest::mouseMove(handle, { -20, -20 });
            QEvent leave(QEvent::Leave);
            QCoreApplication::sendEvent(handle, &leave);
        }
        settle();
    }
    /// One notch away from the user.
    void wheel(QPoint place)
    {
        auto* handle = window.windowHandle();
        QWheelEvent event(
            place, handle->mapToGlobal(QPointF(place)), {}, { 0, 120 }, {}, {}, Qt::NoScrollPhase, false);
        QSpontaneKeyEvent::setSpontaneous(&event); // Others do not go on to parents.
        qApp->notify(handle, &event);
    }
    void key(Qt::Key key)
    {
        QTest::keyClick(window.windowHandle(), key);
        settle();
    }

    QWidget window;
    std::shared_ptr<NSView> root;
};

/// A view that notes the events that reach it, as "name clicks", and keeps those that it is told to.
class RecordingView : public NSView {
public:
    explicit RecordingView(std::string name = {}, bool keeps = true)
        : m_name(std::move(name))
        , m_keeps(keeps)
    {
    }

    void mouseDown(NSEvent const& event) override
    {
        if (note("down", event)) {
            NSView::mouseDown(event);
        }
    }
    void mouseDragged(NSEvent const& event) override { note("dragged", event); }
    void mouseUp(NSEvent const& event) override { note("up", event); }
    void rightMouseDown(NSEvent const& event) override
    {
        if (note("right", event)) {
            NSView::rightMouseDown(event);
        }
    }
    void scrollWheel(NSEvent const& event) override
    {
        if (note("wheel", event)) {
            NSView::scrollWheel(event);
        }
    }
    void keyDown(NSEvent const& event) override
    {
        if (note("key", event)) {
            NSView::keyDown(event);
        }
    }
    void mouseEntered(NSEvent const&) override { events.push_back("entered"); }
    void mouseExited(NSEvent const&) override { events.push_back("exited"); }

    std::vector<std::string> events;
    std::vector<NSPoint> places;
    std::function<void(NSEvent const&)> onEvent;

private:
    std::string m_name;
    bool m_keeps;

    /// Whether the event is to be passed on.
    bool note(char const* what, NSEvent const& event)
    {
        events.push_back(
            m_name + what + (event.clickCount > 0 ? " " + std::to_string(event.clickCount) : ""));
        places.push_back(event.locationInView);
        if (onEvent) {
            onEvent(event);
        }
        return !m_keeps;
    }
};

/// A view around one of the toolkit's own widgets, as controls are.
class WidgetView : public NSView {
public:
    explicit WidgetView(QWidget* widget)
        : NSView(std::make_unique<NSViewBacking>(widget))
    {
    }
};

using Events = std::vector<std::string>;
