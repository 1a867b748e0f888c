#include "Tests/AppKit/ViewWindow.h"

#include "Platform/AppKit/NSApplication.h"
#include "Platform/AppKit/NSPopover.h"
#include "Platform/AppKit/NSTextField.h"
#include "Platform/Qt/PopoverPlacement.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace {

class Content final : public NSViewController {
public:
    int appeared { 0 };

    void loadView() override
    {
        auto const view = std::make_shared<NSView>();
        view->setFrame({ {}, { 120, 60 } });
        setView(view);
    }
    void viewDidAppear() override { ++appeared; }
};

class Delegate final : public NSPopoverDelegate {
public:
    Events calls;
    std::function<void()> onWillClose;

    void popoverWillClose(std::shared_ptr<NSNotification> const& notification) override
    {
        calls.push_back(notification->object<NSPopover>()->isShown() ? "will" : "will, but gone");
        if (onWillClose) {
            onWillClose();
        }
    }
    void popoverDidClose(std::shared_ptr<NSNotification> const& notification) override
    {
        calls.push_back(notification->object<NSPopover>()->isShown() ? "did, but there" : "did");
    }
};

/// A window with an anchor, and a popover beside it.
struct OpenPopover {
    ViewWindow host;
    std::shared_ptr<RecordingView> anchor { host.add(
        std::make_shared<RecordingView>(), { { 20, 20 }, { 40, 20 } }) };
    std::shared_ptr<Delegate> delegate { std::make_shared<Delegate>() };
    std::shared_ptr<Content> content { std::make_shared<Content>() };
    std::shared_ptr<NSPopover> popover { std::make_shared<NSPopover>() };

    explicit OpenPopover(NSPopoverBehavior behavior = NSPopoverBehavior::transient)
    {
        popover->setBehavior(behavior);
        popover->setDelegate(delegate);
        popover->setContentViewController(content);
        popover->showRelativeToRect(anchor->bounds(), anchor, NSRectEdge::maxY);
        ViewWindow::settle();
    }
    ~OpenPopover() { popover->close(); }

    QWidget& window() { return *qtWidget(*content->view())->window(); }
    void pressIn(QWidget& widget, QPoint place)
    {
        QTest::mouseClick(
            widget.window()->windowHandle(), Qt::LeftButton, {}, widget.mapTo(widget.window(), place));
        ViewWindow::settle();
    }
};

Events const closedOnce { "will", "did" };

} // namespace

TEST(NSPopover, showsItsContentBesideTheAnchorAndThenSaysSo)
{
    OpenPopover test;
    EXPECT_TRUE(test.popover->isShown());
    EXPECT_EQ(test.content->appeared, 1);
    EXPECT_EQ(NSPopover::shownPopovers(), std::vector { test.popover });
    EXPECT_TRUE(qtWidget(*test.content->view())->isVisible());
    EXPECT_EQ(test.content->view()->bounds().size, (NSSize { 120, 60 }));
    auto const bottom = qtWidget(*test.anchor)->mapToGlobal(QPoint(0, 20)).y();
    EXPECT_EQ(test.window().geometry().top(), bottom);
    auto const mask = test.window().mask();
    EXPECT_FALSE(mask.contains(QPoint(0, 0)));
    EXPECT_TRUE(mask.contains(QPoint(0, test.window().height() / 2))); // The line around it.
}

TEST(NSPopover, closesOnAPressOutsideWhichGoesThrough)
{
    OpenPopover test;
    test.host.press({ 30, 30 });
    EXPECT_EQ(test.delegate->calls, closedOnce);
    EXPECT_FALSE(test.popover->isShown());
    EXPECT_TRUE(NSPopover::shownPopovers().empty());
    EXPECT_EQ(test.anchor->events, Events { "down 1" });
    test.host.release({ 30, 30 });
}

TEST(NSPopover, staysOnAPressInsideItOrInWhatWasOpenedFromIt)
{
    OpenPopover test;
    auto* combo = new QComboBox(qtWidget(*test.content->view()));
    combo->addItems({ "one", "two" });
    combo->show();
    test.pressIn(test.window(), { 60, 50 });
    combo->showPopup();
    ViewWindow::settle();
    test.pressIn(*combo->view()->viewport(), { 5, 5 });
    combo->hidePopup();
    ViewWindow::settle();

    OpenPopover* outer = &test;
    auto const inner = std::make_shared<NSPopover>();
    auto const innerContent = std::make_shared<Content>();
    inner->setBehavior(NSPopoverBehavior::transient);
    inner->setContentViewController(innerContent);
    inner->showRelativeToRect({ {}, { 10, 10 } }, outer->content->view(), NSRectEdge::maxX);
    ViewWindow::settle();
    test.pressIn(*qtWidget(*innerContent->view()), { 5, 5 });
    EXPECT_TRUE(inner->isShown());
    EXPECT_TRUE(test.popover->isShown());
    EXPECT_EQ(test.delegate->calls, Events {});

    test.pressIn(test.window(), { 20, 60 });
    EXPECT_FALSE(inner->isShown());
    EXPECT_TRUE(test.popover->isShown());
}

TEST(NSPopover, closesOnEscapeThatItsContentDoesNotKeep)
{
    OpenPopover test;
    auto* field = new QLineEdit(qtWidget(*test.content->view()));
    field->show();
    test.window().activateWindow();
    field->setFocus();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&test.window()));
    QTest::keyClick(test.window().windowHandle(), Qt::Key_A);
    EXPECT_EQ(field->text(), "a");
    QTest::keyClick(test.window().windowHandle(), Qt::Key_Escape);
    EXPECT_EQ(test.delegate->calls, closedOnce);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&test.host.window));
}

TEST(NSPopover, leavesTheKeyboardWhereItIsUnlessItsContentTakesIt)
{
    OpenPopover test;
    test.popover->close();
    auto const field
        = test.host.add(std::make_shared<NSTextField>(NSTextField::Kind::field), { { 20, 60 }, { 100, 24 } });
    field->selectText();
    test.popover->showRelativeToRect(test.anchor->bounds(), test.anchor, NSRectEdge::maxY);
    ViewWindow::settle();
    EXPECT_TRUE(test.popover->isShown());
    EXPECT_TRUE(test.host.window.isActiveWindow());
    test.host.key(Qt::Key_5);
    EXPECT_EQ(field->stringValue(), "5");
    test.delegate->calls.clear();
    test.host.key(Qt::Key_Escape);
    EXPECT_EQ(test.delegate->calls, closedOnce);
    EXPECT_EQ(field->stringValue(), "5") << "Escape closed the popover and nothing else";
    test.host.key(Qt::Key_Escape);
    EXPECT_EQ(field->stringValue(), "");

    test.content->view()->addSubview(std::make_shared<NSTextField>(NSTextField::Kind::field));
    test.popover->showRelativeToRect(test.anchor->bounds(), test.anchor, NSRectEdge::maxY);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&test.window()));
}

TEST(NSPopover, closesWhenItsWindowOrItsAnchorGoes)
{
    struct Case {
        char const* what;
        void (*act)(OpenPopover&);
    };
    for (auto const& [what, act] : {
             Case { "window hidden", [](OpenPopover& test) { test.host.window.hide(); } },
             Case { "window closed", [](OpenPopover& test) { test.host.window.close(); } },
             Case { "anchor hidden", [](OpenPopover& test) { test.anchor->setHidden(true); } },
             Case { "anchor's superview removed",
                 [](OpenPopover& test) { qtWidget(*test.host.root)->setParent(nullptr); } },
             Case { "anchor's superview hidden", [](OpenPopover& test) { test.host.root->setHidden(true); } },
             Case { "popover's own window closed", [](OpenPopover& test) { test.window().close(); } },
             Case { "all transient ones", [](OpenPopover&) { NSApplication::closeTransientPopovers(); } },
         }) {
        OpenPopover test;
        act(test);
        ViewWindow::settle();
        EXPECT_EQ(test.delegate->calls, closedOnce) << what;
    }
}

TEST(NSPopover, staysInItsPlaceWhenItsAnchorIsTakenOutWhateverBecomesOfThat)
{
    OpenPopover test;
    auto const before = test.window().geometry();
    test.anchor->removeFromSuperview();
    ViewWindow::settle();
    EXPECT_EQ(test.window().geometry(), before);
    test.host.add(test.anchor, { { 150, 90 }, { 40, 20 } }); // As another row.
    ViewWindow::settle();
    EXPECT_EQ(test.window().geometry(), before);
    test.anchor->setHidden(true);
    test.anchor->removeFromSuperview();
    test.anchor.reset();
    ViewWindow::settle();
    EXPECT_TRUE(test.popover->isShown());
    test.host.window.move(test.host.window.pos() + QPoint(30, 40));
    ViewWindow::settle();
    EXPECT_EQ(test.window().geometry().topLeft(), before.topLeft() + QPoint(30, 40));
    test.host.root->setHidden(true);
    ViewWindow::settle();
    EXPECT_EQ(test.delegate->calls, closedOnce);
}

TEST(NSPopover, closesOnEscapeInAFieldThatIsBeingEdited)
{
    for (auto const behavior : { NSPopoverBehavior::transient, NSPopoverBehavior::applicationDefined }) {
        OpenPopover test(behavior);
        auto const field = std::make_shared<NSTextField>(NSTextField::Kind::field);
        test.content->view()->addSubview(field);
        field->selectText();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&test.window()));
        QTest::keyClick(test.window().windowHandle(), Qt::Key_A);
        EXPECT_EQ(field->stringValue(), "a");
        QTest::keyClick(test.window().windowHandle(), Qt::Key_Escape);
        EXPECT_EQ(field->stringValue(), "");
        EXPECT_EQ(test.popover->isShown(), behavior == NSPopoverBehavior::applicationDefined);
    }
}

TEST(NSPopover, outlivesTheWindowItWasOpenedFrom)
{
    auto const popover = std::make_shared<NSPopover>();
    auto const content = std::make_shared<Content>();
    auto const delegate = std::make_shared<Delegate>();
    auto const anchor = std::make_shared<NSView>();
    auto window = std::make_unique<QWidget>();
    qtWidget(*anchor)->setParent(window.get());
    window->show();
    popover->setContentViewController(content);
    popover->setDelegate(delegate);
    popover->showRelativeToRect({ {}, { 10, 10 } }, anchor, NSRectEdge::maxX);
    ASSERT_TRUE(popover->isShown());
    window.reset();
    ViewWindow::settle();
    EXPECT_EQ(delegate->calls, closedOnce);
    EXPECT_NE(qtWidget(*content->view()), nullptr);
}

TEST(NSPopover, growsWithItsContentAndMovesWithItsWindow)
{
    OpenPopover test;
    auto const before = test.window().geometry();
    auto* layout = new QVBoxLayout(qtWidget(*test.content->view()));
    auto* filler = new QWidget;
    filler->setFixedSize(200, 90);
    layout->setContentsMargins({});
    layout->addWidget(filler);
    ViewWindow::settle();
    EXPECT_EQ(test.content->view()->bounds().size, (NSSize { 200, 90 }));
    EXPECT_EQ(test.window().geometry().top(), before.top());

    test.host.window.move(test.host.window.pos() + QPoint(30, 40));
    ViewWindow::settle();
    EXPECT_EQ(test.window().geometry().top(), before.top() + 40);
}

TEST(NSPopover, isClosedOnceThoughItsDelegateClosesItAgain)
{
    OpenPopover test;
    test.delegate->onWillClose = [&] { test.popover->close(); };
    test.popover->close();
    test.popover->close();
    EXPECT_EQ(test.delegate->calls, closedOnce);
}

TEST(NSPopover, isHeldWhileShownAndReleasedAfterwards)
{
    auto const before = QApplication::allWidgets().size();
    {
        ViewWindow host;
        std::weak_ptr<NSPopover> weak;
        {
            auto const popover = std::make_shared<NSPopover>();
            auto const delegate = std::make_shared<Delegate>(); // Gone before the popover closes.
            popover->setBehavior(NSPopoverBehavior::transient);
            popover->setDelegate(delegate);
            popover->setContentViewController(std::make_shared<Content>());
            popover->showRelativeToRect({ {}, { 10, 10 } }, host.root, NSRectEdge::maxX);
            weak = popover;
        }
        ViewWindow::settle();
        ASSERT_FALSE(weak.expired());
        host.click({ 290, 190 });
        EXPECT_TRUE(weak.expired());
    }
    ViewWindow::settle();
    EXPECT_EQ(QApplication::allWidgets().size(), before);
}

TEST(NSPopover, withoutTransientBehaviourStays)
{
    OpenPopover test(NSPopoverBehavior::applicationDefined);
    test.host.click({ 250, 150 });
    QTest::keyClick(test.window().windowHandle(), Qt::Key_Escape);
    NSApplication::closeTransientPopovers();
    EXPECT_TRUE(test.popover->isShown());
}

TEST(NSPopover, ofAViewThatIsNotOnScreenIsNotShown)
{
    auto const popover = std::make_shared<NSPopover>();
    popover->setContentViewController(std::make_shared<Content>());
    popover->showRelativeToRect({}, std::make_shared<NSView>(), NSRectEdge::maxX);
    EXPECT_FALSE(popover->isShown());
}

TEST(PopoverPlacement, prefersItsEdgeThenTheOppositeOneAndStaysOnTheScreen)
{
    QRect const screen(0, 0, 1000, 800);
    struct Case {
        QRect anchor;
        NSRectEdge preferred;
        NSRectEdge expected;
    };
    for (auto const& [anchor, preferred, expected] : {
             Case { { 400, 300, 50, 20 }, NSRectEdge::maxX, NSRectEdge::maxX },
             Case { { 900, 300, 50, 20 }, NSRectEdge::maxX, NSRectEdge::minX },
             Case { { 10, 300, 50, 20 }, NSRectEdge::minX, NSRectEdge::maxX },
             Case { { 400, 300, 50, 20 }, NSRectEdge::maxY, NSRectEdge::maxY },
             Case { { 400, 770, 50, 20 }, NSRectEdge::maxY, NSRectEdge::minY },
             Case { { 0, 5, 50, 20 }, NSRectEdge::minY, NSRectEdge::maxY },
             Case { { 0, 0, 1000, 800 }, NSRectEdge::maxX, NSRectEdge::maxX },
         }) {
        auto const placement = placePopover({ 200, 100 }, anchor, preferred, screen);
        EXPECT_EQ(placement.edge, expected) << anchor.x() << ", " << anchor.y();
        EXPECT_TRUE(screen.contains(placement.window)) << anchor.x() << ", " << anchor.y();
        EXPECT_EQ(popoverContentRect(placement).size(), QSize(200, 100));
        EXPECT_TRUE(QRectF({}, placement.window.size()).contains(popoverOutline(placement).boundingRect()));
    }
}

TEST(PopoverPlacement, pointsAtTheMiddleOfItsAnchor)
{
    auto const placement
        = placePopover({ 200, 100 }, { 20, 300, 40, 20 }, NSRectEdge::maxY, { 0, 0, 1000, 800 });
    EXPECT_EQ(placement.window.left() + placement.arrow, 40);
    EXPECT_EQ(placement.window.top(), 320);
    auto const tip = popoverOutline(placement).boundingRect().top();
    EXPECT_LT(tip, 1);
}
