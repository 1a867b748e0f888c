#include "Tests/AppKit/ViewWindow.h"

#include "Platform/AppKit/NSApplication.h"
#include "Platform/Foundation/NSMainQueue.h"

#include <QContextMenuEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTimer>

#include <gtest/gtest.h>

#include <thread>

TEST(NSEvent, ofTheMouseGoToThePressedViewUntilTheRelease)
{
    ViewWindow host;
    auto const pressed = host.add(std::make_shared<RecordingView>(), { { 10, 10 }, { 50, 50 } });
    auto const other = host.add(std::make_shared<RecordingView>(), { { 100, 10 }, { 50, 50 } });
    host.press({ 15, 20 });
    host.move({ 120, 30 });
    host.release({ 120, 30 });

    EXPECT_EQ(pressed->events, (Events { "down 1", "dragged 1", "up 1" }));
    EXPECT_EQ(pressed->places, (std::vector<NSPoint> { { 5, 10 }, { 110, 20 }, { 110, 20 } }));
    EXPECT_EQ(other->events, Events {});
}

/// A press in the terms of the window system: `milliseconds` after the one before.
static void pressAfter(
    ViewWindow& host, int milliseconds, QPoint place, Qt::MouseButton button = Qt::LeftButton)
{
    static int timestamp = 1'000'000;
    timestamp += milliseconds;
    auto* handle = host.window.windowHandle();
    QPointF const global = handle->mapToGlobal(place);
    auto const device = QPointingDevice::primaryPointingDevice();
    for (auto const type : { QEvent::MouseButtonPress, QEvent::MouseButtonRelease }) {
        QMouseEvent event(type, place, place, global, button,
            type == QEvent::MouseButtonPress ? Qt::MouseButtons(button) : Qt::NoButton, {}, device);
        event.setTimestamp(static_cast<quint64>(timestamp));
        QCoreApplication::sendEvent(handle, &event);
    }
}

TEST(NSEvent, clickCountGrowsWithPressesThatAreNearInTimeAndPlaceAndOfOneButton)
{
    ViewWindow host;
    auto const view = host.add(std::make_shared<RecordingView>(), { { 0, 0 }, { 200, 100 } });
    std::vector<int> counts;
    view->onEvent = [&](NSEvent const& event) {
        if (event.type == NSEventType::leftMouseDown || event.type == NSEventType::rightMouseDown) {
            counts.push_back(event.clickCount);
            EXPECT_EQ(NSApplication::currentEvent()->clickCount, event.clickCount);
        }
    };
    pressAfter(host, 10'000, { 20, 20 });
    pressAfter(host, 100, { 21, 20 });
    pressAfter(host, 100, { 21, 20 });
    pressAfter(host, 100, { 60, 20 }); // Elsewhere.
    pressAfter(host, 5'000, { 60, 20 }); // Much later.
    pressAfter(host, 100, { 60, 20 }, Qt::RightButton); // Of another button.
    pressAfter(host, 100, { 60, 20 });
    EXPECT_EQ(counts, (std::vector { 1, 2, 3, 1, 1, 1, 1 }));
}

TEST(NSEvent, doubleClickOfTheWindowSystemIsCountedOnce)
{
    ViewWindow host;
    auto const view = host.add(std::make_shared<RecordingView>(), { { 0, 0 }, { 200, 100 } });
    QTest::mouseDClick(host.window.windowHandle(), Qt::LeftButton, {}, { 150, 90 });
    EXPECT_EQ(view->events, (Events { "down 1", "up 1", "down 2", "up 2" }));
}

TEST(NSEvent, thatNoViewKeepsPassesUpOnceInEachViewsCoordinates)
{
    ViewWindow host;
    auto const outer
        = host.add(std::make_shared<RecordingView>("outer ", false), { { 10, 10 }, { 200, 100 } });
    auto const inner = std::make_shared<RecordingView>("inner ", false);
    inner->setFrame({ { 20, 30 }, { 50, 50 } });
    outer->addSubview(inner);
    host.press({ 35, 45 }, Qt::RightButton);
    host.release({ 35, 45 }, Qt::RightButton);

    EXPECT_EQ(inner->events, Events { "inner right 1" });
    EXPECT_EQ(inner->places.front(), (NSPoint { 5, 5 }));
    EXPECT_EQ(outer->events, Events { "outer right 1" });
    EXPECT_EQ(outer->places.front(), (NSPoint { 25, 35 }));
}

TEST(NSEvent, wheelThatNoViewKeepsScrollsTheToolkitsParent)
{
    class Area final : public QWidget {
    public:
        int wheels { 0 };

    protected:
        void wheelEvent(QWheelEvent*) override { ++wheels; }
    };
    ViewWindow host;
    auto* area = new Area;
    auto const around = host.add(std::make_shared<WidgetView>(area), { { 0, 0 }, { 200, 100 } });
    auto const keeps = std::make_shared<RecordingView>();
    auto const passes = std::make_shared<RecordingView>("", false);
    keeps->setFrame({ { 0, 0 }, { 50, 50 } });
    passes->setFrame({ { 50, 0 }, { 50, 50 } });
    around->addSubview(keeps);
    around->addSubview(passes);

    host.wheel({ 20, 20 });
    EXPECT_EQ(keeps->events, Events { "wheel" });
    EXPECT_EQ(area->wheels, 0);
    host.wheel({ 70, 20 });
    EXPECT_EQ(passes->events, Events { "wheel" });
    EXPECT_EQ(area->wheels, 1);
}

namespace {

/// A row with one of the toolkit's controls in it.
struct RowWith {
    ViewWindow host;
    std::shared_ptr<RecordingView> row;
    std::shared_ptr<WidgetView> control;

    explicit RowWith(QWidget* widget)
        : row(host.add(std::make_shared<RecordingView>(), { { 0, 0 }, { 200, 50 } }))
        , control(std::make_shared<WidgetView>(widget))
    {
        control->setFrame({ { 10, 10 }, { 100, 30 } });
        row->addSubview(control);
        ViewWindow::settle();
    }
};

/// Counts the context menus that are asked for.
class MenuWatch final : public QObject {
public:
    int asked { 0 };

    bool eventFilter(QObject*, QEvent* event) override
    {
        asked += event->type() == QEvent::ContextMenu ? 1 : 0;
        return event->type() == QEvent::ContextMenu;
    }
};

} // namespace

TEST(NSEventRightPress, orTheMenuKeyOnALabelButtonOrFieldReachesTheRowAndNothingElse)
{
    auto* disabled = new QPushButton("b");
    disabled->setEnabled(false);
    for (auto* widget : std::initializer_list<QWidget*> {
             new QLabel("label"), new QPushButton("a"), disabled, new QLineEdit("field") }) {
        RowWith test(widget);
        MenuWatch watch;
        widget->installEventFilter(&watch);
        test.host.click({ 50, 25 }, Qt::RightButton);
        EXPECT_EQ(test.row->events, Events { "right 1" }) << widget->metaObject()->className();
        QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, { 5, 5 }, widget->mapToGlobal(QPoint(5, 5)));
        QCoreApplication::sendEvent(widget, &menuKey);
        EXPECT_EQ(test.row->events, (Events { "right 1", "right 1" })) << widget->metaObject()->className();
        EXPECT_EQ(watch.asked, 0) << widget->metaObject()->className();
        EXPECT_FALSE(widget->hasFocus()) << widget->metaObject()->className();
    }
}

TEST(NSEventRightPress, onAFieldBeingEditedIsTheFields)
{
    auto* field = new QLineEdit("field");
    RowWith test(field);
    MenuWatch watch;
    field->installEventFilter(&watch);
    field->setFocus();
    test.host.click({ 50, 25 }, Qt::RightButton);
    EXPECT_EQ(test.row->events, Events {});
    EXPECT_EQ(watch.asked, 1);
}

TEST(NSEventRightPress, thatNoViewWantsOpensTheFieldsMenu)
{
    ViewWindow host;
    auto* field = new QLineEdit("field");
    auto const control = host.add(std::make_shared<WidgetView>(field), { { 10, 10 }, { 100, 30 } });
    MenuWatch watch;
    field->installEventFilter(&watch);
    host.click({ 50, 25 }, Qt::RightButton);
    EXPECT_EQ(watch.asked, 1);
}

TEST(NSApplicationCurrentEvent, isThereForTheToolkitsControlsAndGoneAfterwards)
{
    auto* button = new QPushButton("press");
    RowWith test(button);
    std::optional<NSEvent> during;
    QObject::connect(button, &QPushButton::pressed, [&] { during = NSApplication::currentEvent(); });
    test.host.press({ 50, 25 });
    ASSERT_TRUE(during);
    EXPECT_EQ(during->type, NSEventType::leftMouseDown);
    EXPECT_EQ(during->clickCount, 1);
    EXPECT_EQ(during->locationInView, (NSPoint { 40, 15 }));
    EXPECT_FALSE(NSApplication::currentEvent());
    test.host.release({ 50, 25 });
}

TEST(NSApplicationCurrentEvent, ofAnInnerEventGivesWayToTheOuterOne)
{
    ViewWindow host;
    auto const view = host.add(std::make_shared<RecordingView>(), { { 0, 0 }, { 100, 100 } });
    std::vector<NSEventType> types;
    view->onEvent = [&](NSEvent const& event) {
        types.push_back(NSApplication::currentEvent()->type);
        if (event.type == NSEventType::leftMouseDown) {
            host.wheel({ 20, 20 });
            types.push_back(NSApplication::currentEvent()->type);
        }
    };
    host.press({ 20, 20 });
    EXPECT_EQ(types,
        (std::vector { NSEventType::leftMouseDown, NSEventType::scrollWheel, NSEventType::leftMouseDown }));
    host.release({ 20, 20 });
}

TEST(NSEvent, ofTheKeyboardCarriesKeyTextAndModifiersAndPassesOn)
{
    ViewWindow host;
    auto const view = host.add(std::make_shared<RecordingView>(), { { 0, 0 }, { 100, 100 } });
    view->setAcceptsFirstResponder(true, false);
    qtWidget(*view)->setFocus();
    NSEvent last;
    view->onEvent = [&](NSEvent const& event) { last = event; };
    QTest::keyClick(host.window.windowHandle(), Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(last.key, NSKey::left);
    EXPECT_EQ(last.modifiers, (NSEventModifiers { .shift = true, .control = false, .alt = false }));
    QTest::keyClick(host.window.windowHandle(), 'g');
    EXPECT_EQ(last.key, NSKey::none);
    EXPECT_EQ(last.characters, "g");
}

TEST(NSEvent, pressTakesTheKeyboardOnlyWhereTheViewWantsIt)
{
    ViewWindow host;
    auto const editor = host.add(std::make_shared<RecordingView>(), { { 0, 0 }, { 50, 50 } });
    auto const byTab = host.add(std::make_shared<RecordingView>(), { { 50, 0 }, { 50, 50 } });
    auto const never = host.add(std::make_shared<RecordingView>(), { { 100, 0 }, { 50, 50 } });
    editor->setAcceptsFirstResponder(true, true);
    byTab->setAcceptsFirstResponder(true, false);
    host.click({ 20, 20 });
    EXPECT_TRUE(editor->isFirstResponder());
    host.click({ 70, 20 });
    host.click({ 120, 20 });
    EXPECT_TRUE(editor->isFirstResponder());
    host.key(Qt::Key_Tab);
    EXPECT_TRUE(byTab->isFirstResponder());
    host.key(Qt::Key_Tab);
    EXPECT_TRUE(editor->isFirstResponder());
}

TEST(NSMainQueue, blocksRunOnALaterTurnAndBeforeTheNextInputEvent)
{
    ViewWindow host;
    auto const view = host.add(std::make_shared<RecordingView>(), { { 0, 0 }, { 100, 100 } });
    Events order;
    view->onEvent = [&](NSEvent const& event) {
        bool const isDown = event.type == NSEventType::leftMouseDown;
        order.push_back(isDown ? "down" : "up");
        if (isDown) {
            NSMainQueue::async([&] { order.push_back("from the press"); });
        }
    };
    NSMainQueue::async([&] { order.push_back("block"); });
    EXPECT_EQ(order, Events {});
    // Delivered without a turn of the event loop between them.
    QTest::mousePress(host.window.windowHandle(), Qt::LeftButton, {}, { 20, 20 });
    QTest::mouseRelease(host.window.windowHandle(), Qt::LeftButton, {}, { 20, 20 });
    EXPECT_EQ(order, (Events { "block", "down", "from the press", "up" }));
}

TEST(NSMainQueue, blockFromAnotherThreadWakesTheEventLoop)
{
    bool ran = false;
    std::thread([&] {
        NSMainQueue::async([&] {
            ran = true;
            QApplication::exit();
        });
    }).join();
    QTimer::singleShot(5000, qApp, [] { QApplication::exit(1); });
    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_TRUE(ran);
}

TEST(NSBeep, callsTheHandlerInItsPlace)
{
    int beeps = 0;
    NSSetBeepHandler([&] { ++beeps; });
    NSBeep();
    EXPECT_EQ(beeps, 1);
    NSSetBeepHandler({});
}
