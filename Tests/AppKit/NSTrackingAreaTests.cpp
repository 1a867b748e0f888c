#include "Tests/AppKit/ViewWindow.h"

#include "Platform/Qt/Tracking.h"

#include <QLabel>

#include <gtest/gtest.h>

namespace {

/// Replaces its tracking area on each update, as rows do.
class TrackedView final : public RecordingView {
public:
    int updates { 0 };

    void updateTrackingAreas() override
    {
        ++updates;
        if (m_area) {
            removeTrackingArea(m_area);
        }
        m_area = std::make_shared<NSTrackingArea>(NSRect {},
            NSTrackingMouseEnteredAndExited | NSTrackingActiveAlways | NSTrackingInVisibleRect,
            sharedAs<NSView>());
        addTrackingArea(m_area);
    }

private:
    std::shared_ptr<NSTrackingArea> m_area;
};

struct TrackedRow {
    ViewWindow host;
    std::shared_ptr<TrackedView> row { host.add(std::make_shared<TrackedView>(), { { 0, 0 }, { 100, 40 } }) };

    TrackedRow() { ViewWindow::settle(); }
};

} // namespace

TEST(NSTrackingArea, reportsThePointersComingAndGoing)
{
    TrackedRow test;
    test.host.move({ 20, 20 });
    test.host.move({ 30, 20 });
    test.host.move({ 200, 20 });
    EXPECT_EQ(test.row->events, (Events { "entered", "exited" }));
    test.host.move({ 20, 20 });
    test.host.moveAway();
    EXPECT_EQ(test.row->events, (Events { "entered", "exited", "entered", "exited" }));
}

TEST(NSTrackingArea, isNotLeftByMovingOntoAChild)
{
    TrackedRow test;
    auto const label = std::make_shared<WidgetView>(new QLabel("child"));
    label->setFrame({ { 10, 10 }, { 40, 20 } });
    test.row->addSubview(label);
    test.host.move({ 80, 20 });
    test.host.move({ 20, 20 });
    EXPECT_EQ(test.row->events, Events { "entered" });
}

TEST(NSTrackingArea, followsViewsThatMoveHideOrAppearUnderAStillPointer)
{
    TrackedRow test;
    test.host.move({ 20, 20 });
    test.row->setFrame({ { 0, 100 }, { 100, 40 } });
    ViewWindow::settle();
    EXPECT_EQ(test.row->events, (Events { "entered", "exited" }));

    test.row->setFrame({ { 0, 10 }, { 100, 40 } });
    ViewWindow::settle();
    test.row->setHidden(true);
    ViewWindow::settle();
    test.row->setHidden(false);
    ViewWindow::settle();
    EXPECT_EQ(test.row->events, (Events { "entered", "exited", "entered", "exited", "entered" }));

    auto const cover = test.host.add(std::make_shared<NSView>(), { { 0, 0 }, { 100, 100 } });
    qtWidget(*cover)->raise();
    ViewWindow::settle();
    EXPECT_EQ(test.row->events.size(), 6U);
}

TEST(NSTrackingArea, replacedUnderThePointerNeitherRepeatsNorLosesAnEvent)
{
    TrackedRow test;
    test.host.move({ 20, 20 });
    int const updates = test.row->updates;
    test.row->setFrame({ { 0, 0 }, { 120, 40 } });
    ViewWindow::settle();
    EXPECT_GT(test.row->updates, updates);
    EXPECT_EQ(test.row->events, Events { "entered" });
    // Replaced and moved from under the pointer at once.
    test.row->setFrame({ { 0, 100 }, { 130, 40 } });
    ViewWindow::settle();
    EXPECT_EQ(test.row->events, (Events { "entered", "exited" }));
}

TEST(NSTrackingArea, worksInAnInactiveWindow)
{
    TrackedRow test;
    ViewWindow other;
    ASSERT_FALSE(test.host.window.isActiveWindow());
    test.host.move({ 20, 20 });
    EXPECT_EQ(test.row->events, Events { "entered" });
    test.host.moveAway();
}

TEST(NSTrackingArea, staysAsItIsWhileAButtonIsHeld)
{
    TrackedRow test;
    test.host.move({ 20, 20 });
    test.host.press({ 20, 20 });
    test.host.move({ 20, 150 });
    EXPECT_EQ(test.row->events, (Events { "entered", "down 1", "dragged 1" }));
    test.host.release({ 20, 150 });
    EXPECT_EQ(test.row->events, (Events { "entered", "down 1", "dragged 1", "up 1", "exited" }));
}

TEST(NSTrackingArea, withARectangleReportsThatAlone)
{
    ViewWindow host;
    auto const view = host.add(std::make_shared<RecordingView>(), { { 0, 0 }, { 100, 40 } });
    view->addTrackingArea(std::make_shared<NSTrackingArea>(
        NSRect { { 50, 0 }, { 20, 40 } }, NSTrackingMouseEnteredAndExited | NSTrackingActiveAlways, view));
    host.move({ 20, 20 });
    EXPECT_EQ(view->events, Events {});
    host.move({ 60, 20 });
    EXPECT_EQ(view->events, Events { "entered" });
}

TEST(NSTrackingArea, ofAViewThatDiesIsForgotten)
{
    ViewWindow host;
    auto view = host.add(std::make_shared<TrackedView>(), { { 0, 0 }, { 100, 40 } });
    host.move({ 20, 20 });
    std::weak_ptr<TrackedView> const dead = view;
    view->removeFromSuperview();
    view.reset();
    EXPECT_TRUE(dead.expired()) << "the tracking keeps nothing alive";
    // What stands in its place is tracked as if nothing had been there.
    auto const next = host.add(std::make_shared<TrackedView>(), { { 0, 0 }, { 100, 40 } });
    ViewWindow::settle();
    host.move({ 30, 20 });
    host.moveAway();
    EXPECT_EQ(next->events, (Events { "entered", "exited" }));
}
