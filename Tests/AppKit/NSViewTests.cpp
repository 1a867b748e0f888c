#include "Tests/AppKit/ViewWindow.h"

#include "Platform/AppKit/NSControl.h"
#include "Platform/AppKit/NSViewController.h"
#include "Platform/Foundation/NSMainQueue.h"
#include "Platform/Qt/QtView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>

#include <gtest/gtest.h>

namespace {

class Control final : public NSControl {
public:
    explicit Control(QWidget* widget)
        : NSControl(std::make_unique<NSViewBacking>(widget))
    {
    }
};

} // namespace

TEST(NSView, ownsItsWidgetAndItsSubviewsTheirs)
{
    auto const before = QApplication::allWidgets().size();
    auto parent = std::make_shared<NSView>();
    auto child = std::make_shared<NSView>();
    auto grandchild = std::make_shared<NSView>();
    parent->addSubview(child);
    child->addSubview(grandchild);
    QPointer<QWidget> const childWidget = qtWidget(*child);
    QPointer<QWidget> const grandchildWidget = qtWidget(*grandchild);

    child.reset();
    parent.reset();
    EXPECT_FALSE(childWidget);
    ASSERT_TRUE(grandchildWidget);
    EXPECT_EQ(grandchildWidget->parentWidget(), nullptr);
    EXPECT_EQ(grandchild->superview(), nullptr);

    grandchild.reset();
    EXPECT_EQ(QApplication::allWidgets().size(), before);
}

TEST(NSView, whoseWidgetSitsInALayoutOfAPlainWidgetOutlivesTheView)
{
    auto const before = QApplication::allWidgets().size();
    auto outer = std::make_shared<NSView>();
    auto* plainWidget = new QWidget(qtWidget(*outer));
    auto* layout = new QHBoxLayout(plainWidget);
    auto inner = std::make_shared<NSView>();
    layout->addWidget(qtWidget(*inner));
    outer->addSubview(inner);
    EXPECT_EQ(qtWidget(*inner)->parentWidget(), plainWidget);
    EXPECT_EQ(inner->superview(), outer);

    outer.reset();
    ASSERT_NE(qtWidget(*inner), nullptr);
    inner.reset();
    EXPECT_EQ(QApplication::allWidgets().size(), before);
}

TEST(NSView, whoseWidgetTheToolkitDeletedDoesNothing)
{
    auto window = std::make_unique<QWidget>();
    auto view = std::make_shared<NSView>();
    qtWidget(*view)->setParent(window.get());
    auto const child = std::make_shared<NSView>();
    view->addSubview(child);
    window.reset();

    ASSERT_EQ(qtWidget(*view), nullptr);
    view->setFrame({ { 1, 2 }, { 3, 4 } });
    view->setHidden(true);
    view->setNeedsDisplay(true);
    view->setToolTip("tip");
    view->layoutSubtreeIfNeeded();
    view->addSubview(std::make_shared<NSView>());
    child->removeFromSuperview();
    EXPECT_EQ(view->frame(), NSRect {});
    EXPECT_EQ(view->toolTip(), "");
    EXPECT_TRUE(view->isHidden());
}

TEST(NSView, mayDieWhileItHandlesAnEvent)
{
    ViewWindow host;
    auto view = host.add(std::make_shared<RecordingView>(), { { 10, 10 }, { 50, 50 } });
    QPointer<QWidget> const widget = qtWidget(*view);
    std::weak_ptr<NSView> const weak = view;
    view->onEvent = [view = view.get()](NSEvent const&) { view->removeFromSuperview(); };
    view.reset();

    host.press({ 20, 20 });
    EXPECT_TRUE(weak.expired());
    EXPECT_FALSE(widget);
    host.release({ 20, 20 });
}

TEST(NSView, movesToAnotherSuperviewWhole)
{
    ViewWindow host;
    auto const left = host.add(std::make_shared<NSView>(), { { 0, 0 }, { 100, 100 } });
    auto const right = host.add(std::make_shared<NSView>(), { { 100, 0 }, { 100, 100 } });
    auto const view = std::make_shared<NSView>();
    view->setIdentifier("moved");
    left->addSubview(view);
    right->addSubview(left->subviews().front());

    EXPECT_TRUE(left->subviews().empty());
    EXPECT_EQ(view->superview(), right);
    EXPECT_EQ(host.root->descendantWithIdentifier("moved"), view);
    EXPECT_EQ(host.root->descendantWithIdentifier("other"), nullptr);
    EXPECT_TRUE(qtWidget(*view)->isVisible());

    view->removeFromSuperview();
    EXPECT_FALSE(qtWidget(*view)->isVisible());
    EXPECT_EQ(view->superview(), nullptr);
}

TEST(NSView, frameIsInTheSuperviewThroughPlainWidgets)
{
    ViewWindow host;
    auto* plainWidget = new QWidget(qtWidget(*host.root));
    plainWidget->setGeometry(30, 40, 100, 100);
    auto const view = std::make_shared<NSView>();
    qtWidget(*view)->setParent(plainWidget);
    host.root->addSubview(view);
    view->setFrame({ { 35, 50 }, { 20, 10 } });

    EXPECT_EQ(qtWidget(*view)->geometry(), QRect(5, 10, 20, 10));
    EXPECT_EQ(view->frame(), (NSRect { { 35, 50 }, { 20, 10 } }));
    EXPECT_EQ(view->bounds(), (NSRect { {}, { 20, 10 } }));
}

TEST(NSView, visibleRectIsWhatSuperviewsDoNotClip)
{
    ViewWindow host;
    auto const clip = host.add(std::make_shared<NSView>(), { { 10, 10 }, { 100, 50 } });
    auto const view = std::make_shared<NSView>();
    view->setFrame({ { -20, 20 }, { 200, 200 } });
    clip->addSubview(view);
    EXPECT_EQ(view->visibleRect(), (NSRect { { 20, 0 }, { 100, 30 } }));

    clip->setHidden(true);
    EXPECT_EQ(view->visibleRect(), NSRect {});
}

TEST(NSViewHidden, outsideEventsIsAppliedAtOnce)
{
    ViewWindow host;
    auto const view = host.add(std::make_shared<NSView>(), { { 10, 10 }, { 50, 50 } });
    view->setHidden(true);
    EXPECT_FALSE(qtWidget(*view)->isVisible());
    view->setHidden(false);
    EXPECT_TRUE(qtWidget(*view)->isVisible());
}

TEST(NSViewHidden, ofAViewInNoWindowOpensNone)
{
    auto const view = std::make_shared<NSView>();
    view->setHidden(true);
    view->setHidden(false);
    EXPECT_FALSE(qtWidget(*view)->isVisible());

    ViewWindow host;
    host.root->addSubview(view);
    EXPECT_TRUE(qtWidget(*view)->isVisible());
    auto const hidden = std::make_shared<NSView>();
    hidden->setHidden(true);
    host.root->addSubview(hidden);
    EXPECT_FALSE(qtWidget(*hidden)->isVisible());
}

TEST(NSViewHidden, andShownAgainInOneEventKeepsTheDragAndTheFocus)
{
    ViewWindow host;
    auto const view = host.add(std::make_shared<RecordingView>(), { { 10, 10 }, { 50, 50 } });
    view->setAcceptsFirstResponder(true, true);
    bool seenWhileHidden = true;
    view->onEvent = [&](NSEvent const&) {
        view->setHidden(true);
        seenWhileHidden = view->isHidden() && qtWidget(*view)->isVisible();
        view->setHidden(false);
    };
    host.press({ 20, 20 });
    host.move({ 200, 150 });
    // The host's refresh comes in a block of the main queue, while the button is still down.
    NSMainQueue::async([&] {
        view->setHidden(true);
        view->setHidden(false);
    });
    ViewWindow::settle();
    host.move({ 210, 150 });
    host.release({ 210, 150 });

    EXPECT_TRUE(seenWhileHidden);
    EXPECT_EQ(view->events, (Events { "down 1", "dragged 1", "dragged 1", "up 1" }));
    EXPECT_TRUE(view->isFirstResponder());
}

TEST(NSViewHidden, inAnEventIsAppliedAtItsEnd)
{
    ViewWindow host;
    auto const view = host.add(std::make_shared<RecordingView>(), { { 10, 10 }, { 50, 50 } });
    auto const other = host.add(std::make_shared<NSView>(), { { 100, 10 }, { 50, 50 } });
    bool visibleDuringEvent = false;
    view->onEvent = [&](NSEvent const&) {
        other->setHidden(true);
        visibleDuringEvent = qtWidget(*other)->isVisible();
    };
    QTest::mousePress(host.window.windowHandle(), Qt::LeftButton, {}, { 20, 20 });
    EXPECT_TRUE(visibleDuringEvent);
    EXPECT_FALSE(qtWidget(*other)->isVisible());
    host.release({ 20, 20 });
}

TEST(NSViewHidden, isSeenByALayoutThatIsAskedForInTheEvent)
{
    ViewWindow host;
    auto* layout = new QHBoxLayout(qtWidget(*host.root));
    auto const pressed = std::make_shared<RecordingView>();
    auto const other = std::make_shared<NSView>();
    for (auto const& view : { std::shared_ptr<NSView>(pressed), other }) {
        layout->addWidget(qtWidget(*view));
        host.root->addSubview(view);
    }
    ViewWindow::settle();
    double const before = pressed->frame().size.width;
    double during = 0;
    bool keptWhatIsPressed = false;
    pressed->onEvent = [&](NSEvent const&) {
        other->setHidden(true);
        pressed->setHidden(true);
        host.root->layoutSubtreeIfNeeded();
        during = pressed->frame().size.width;
        keptWhatIsPressed = qtWidget(*pressed)->isVisible();
        pressed->setHidden(false);
    };
    host.press({ 40, 100 });
    EXPECT_GT(during, before * 1.5);
    EXPECT_TRUE(keptWhatIsPressed);
    host.move({ 50, 100 });
    host.release({ 50, 100 });
    EXPECT_EQ(pressed->events, (Events { "down 1", "dragged 1", "up 1" }));
}

TEST(NSViewHidden, isAppliedInADialogThatTheEventOpens)
{
    ViewWindow host;
    auto const view = host.add(std::make_shared<RecordingView>(), { { 10, 10 }, { 50, 50 } });
    auto const other = host.add(std::make_shared<NSView>(), { { 100, 10 }, { 50, 50 } });
    bool visibleInDialog = true;
    view->onEvent = [&](NSEvent const& event) {
        if (event.type == NSEventType::leftMouseDown) {
            other->setHidden(true);
            QEventLoop dialog;
            QTimer::singleShot(10, &dialog, &QEventLoop::quit);
            dialog.exec();
            visibleInDialog = qtWidget(*other)->isVisible();
        }
    };
    host.click({ 20, 20 });
    EXPECT_FALSE(visibleInDialog);
}

TEST(NSViewHidden, controlsInALayoutKeepTheirPlace)
{
    ViewWindow host;
    auto* layout = new QHBoxLayout(qtWidget(*host.root));
    auto const first = std::make_shared<Control>(new QLineEdit);
    auto const second = std::make_shared<Control>(new QLineEdit);
    for (auto const& control : { first, second }) {
        layout->addWidget(qtWidget(*control));
        host.root->addSubview(control);
    }
    ViewWindow::settle();
    auto const before = second->frame();
    first->setHidden(true);
    ViewWindow::settle();
    EXPECT_FALSE(qtWidget(*first)->isVisible());
    EXPECT_EQ(second->frame(), before);
}

TEST(NSViewController, loadsItsViewOnceAndThenSaysSo)
{
    class Controller final : public NSViewController {
    public:
        int loads { 0 };
        void viewDidLoad() override
        {
            EXPECT_TRUE(isViewLoaded());
            ++loads;
        }
    };
    auto const controller = std::make_shared<Controller>();
    controller->init();
    EXPECT_FALSE(controller->isViewLoaded());
    auto const view = controller->view();
    EXPECT_EQ(controller->view(), view);
    EXPECT_EQ(controller->loads, 1);
}

TEST(NSViewController, readsItsArchiveOrYieldsNothing)
{
    NSViewController controller;
    EXPECT_TRUE(controller.initWithCoder(
        NSCoder(std::map<std::string, std::string, std::less<>> { { "NSTitle", "Axes" } })));
    EXPECT_EQ(controller.title(), "Axes");
    NSCoder failed;
    failed.failWithError();
    EXPECT_FALSE(NSViewController().initWithCoder(failed));
    EXPECT_FALSE(std::make_shared<NSView>()->initWithCoder(failed));
}
