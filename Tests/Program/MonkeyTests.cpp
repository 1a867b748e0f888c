#include "Tests/Program/ShownRows.h"

#include "Platform/AppKit/NSApplication.h"
#include "Platform/Foundation/NSMainThread.h"
#include "Tests/Support/FamilyCopy.h"
#include "Tests/Support/Sequences.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QMenu>
#include <QTimer>

#include <random>

namespace {

/// Hands that know nothing of the program: keys, mouse and wheel, other sizes, other windows, at random.
class Monkey : public testing::TestWithParam<char const*>, protected ProgramWindows {
protected:
    Monkey()
    {
        // Dialogs and menus run loops of their own; nobody else would end them.
        QObject::connect(&m_impatience, &QTimer::timeout, [] {
            if (auto* const open = QApplication::activePopupWidget() ? QApplication::activePopupWidget()
                                                                     : QApplication::activeModalWidget()) {
                open->close();
            }
        });
        m_impatience.start(1);
        NSSetBeepHandler([] {});
    }
    ~Monkey() override { NSSetBeepHandler({}); }

    void playWith(char const* family, int events)
    {
        m_copy.emplace(SOURCE_FOLDER + std::string("/Fonts/") + family, quickFolder());
        reopen();
        for (int event = 0; event < events && !HasFailure(); ++event) {
            SCOPED_TRACE(std::string(family) + ", event " + std::to_string(event));
            if (application.windows().empty()) {
                reopen();
            }
            act();
            if (event % 50 == 49 && !application.windows().empty()) {
                m_shown->settle();
                if (m_shown->part<NSSearchField>("filterField")->stringValue().empty()) {
                    ASSERT_EQ(rowsOf(*m_shown->document->sidebar()), rowsOfNewSidebar(*m_shown->document));
                }
                ASSERT_LE(NSPopover::shownPopovers().size(), 1U);
            }
        }
    }

private:
    std::size_t pick(std::size_t count)
    {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(m_random);
    }
    template <class List> auto const& any(List const& list) { return list[pick(std::size(list))]; }

    void reopen()
    {
        m_shown.emplace(open(m_copy->path()));
        m_shown->document->setText("an");
        m_shown->document->widget()->resize(900, 600);
        m_shown->activate();
    }
    /// Where events go: a popover that is open, else the window.
    QWidget* target()
    {
        auto* const popover = NSPopover::shownPopovers().empty() ? nullptr : &ProgramWindow::popoverWidget();
        return popover && pick(3) > 0 ? popover : m_shown->document->widget();
    }
    void act()
    {
        using Act = void (Monkey::*)(QWidget&);
        static constexpr std::array<Act, 9> acts { &Monkey::key, &Monkey::key, &Monkey::text, &Monkey::click,
            &Monkey::click, &Monkey::drag, &Monkey::wheel, &Monkey::focus, &Monkey::reshape };
        (this->*any(acts))(*target());
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    QPoint place(QWidget const& widget)
    {
        return { static_cast<int>(pick(static_cast<std::size_t>(widget.width()))),
            static_cast<int>(pick(static_cast<std::size_t>(widget.height()))) };
    }
    /// Through the event queue, since what handles an event may take the window away.
    static void send(QWidget& widget, std::unique_ptr<QEvent> event)
    {
        if (auto* const window = widget.windowHandle()) {
            QCoreApplication::postEvent(window, event.release());
            QCoreApplication::processEvents();
        }
    }
    void press(QWidget& widget, Qt::Key key, Qt::KeyboardModifiers modifiers, QString const& typed = {})
    {
        QPointer<QWidget> const still = &widget;
        for (auto const type : { QEvent::KeyPress, QEvent::KeyRelease }) {
            if (still) {
                send(*still, std::make_unique<QKeyEvent>(type, key, modifiers, typed));
            }
        }
    }
    void key(QWidget& widget)
    {
        static constexpr std::array keys { Qt::Key_Tab, Qt::Key_Backtab, Qt::Key_Return, Qt::Key_Escape,
            Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown,
            Qt::Key_Home, Qt::Key_End, Qt::Key_Backspace, Qt::Key_Delete, Qt::Key_Space, Qt::Key_Z, Qt::Key_A,
            Qt::Key_C, Qt::Key_V, Qt::Key_X, Qt::Key_S, Qt::Key_W, Qt::Key_F, Qt::Key_0, Qt::Key_Plus,
            Qt::Key_Minus };
        static constexpr std::array<Qt::KeyboardModifiers::Int, 5> modifiers { 0, 0, Qt::ControlModifier,
            Qt::ShiftModifier, Qt::ControlModifier | Qt::ShiftModifier };
        press(widget, any(keys), Qt::KeyboardModifiers::fromInt(any(modifiers)));
    }
    void text(QWidget& widget)
    {
        static QString const letters = QStringLiteral("aeno159.,- x\u00e4");
        QPointer<QWidget> const still = &widget;
        for (auto count = pick(4) + 1; count > 0 && still; --count) {
            press(*still, Qt::Key_unknown, {},
                QString(letters[static_cast<int>(pick(static_cast<std::size_t>(letters.size())))]));
        }
    }
    void mouse(
        QWidget& widget, QEvent::Type type, QPoint at, Qt::MouseButton button, Qt::MouseButtons buttons)
    {
        send(widget,
            std::make_unique<QMouseEvent>(type, at, widget.mapToGlobal(at), button, buttons, Qt::NoModifier));
    }
    void click(QWidget& widget)
    {
        QPointer<QWidget> const still = &widget;
        auto const at = place(widget);
        auto const button = pick(5) == 0 ? Qt::RightButton : Qt::LeftButton;
        mouse(widget, QEvent::MouseMove, at, Qt::NoButton, Qt::NoButton);
        for (auto clicks = pick(2) + 1; clicks > 0 && still; --clicks) {
            mouse(*still, QEvent::MouseButtonPress, at, button, button);
            if (still) {
                mouse(*still, QEvent::MouseButtonRelease, at, button, Qt::NoButton);
            }
        }
    }
    void drag(QWidget& widget)
    {
        QPointer<QWidget> const still = &widget;
        mouse(widget, QEvent::MouseButtonPress, place(widget), Qt::LeftButton, Qt::LeftButton);
        for (auto moves = pick(5) + 1; moves > 0 && still; --moves) {
            mouse(*still, QEvent::MouseMove, place(*still), Qt::NoButton, Qt::LeftButton);
        }
        if (still) {
            mouse(*still, QEvent::MouseButtonRelease, place(*still), Qt::LeftButton, Qt::NoButton);
        }
    }
    void wheel(QWidget& widget)
    {
        QPointF const at = place(widget);
        QPoint const turn(0, pick(2) == 0 ? 120 : -120);
        send(widget,
            std::make_unique<QWheelEvent>(at, widget.mapToGlobal(at), QPoint(), turn, Qt::NoButton,
                Qt::NoModifier, Qt::NoScrollPhase, false));
    }
    void focus(QWidget& widget) { pick(2) == 0 ? widget.activateWindow() : widget.clearFocus(); }
    void reshape(QWidget&)
    {
        auto* const window = m_shown->document->widget();
        switch (pick(12)) {
        case 0:
            window->close();
            break;
        case 1:
            window->hide();
            QCoreApplication::processEvents();
            window->show();
            break;
        default:
            window->resize(static_cast<int>(300 + pick(1000)), static_cast<int>(200 + pick(700)));
        }
    }

    std::mt19937 m_random { static_cast<std::mt19937::result_type>(sequenceSeed()) };
    QTimer m_impatience;
    std::optional<FamilyCopy> m_copy;
    std::optional<ProgramWindow> m_shown;
};

} // namespace

TEST_P(Monkey, playsWithAFamilyAndTheTableStaysTrue)
{
    std::vector<std::string> violations;
    auto const before
        = NSSetMainThreadViolationHandler([&](auto const& message) { violations.push_back(message); });
    playWith(GetParam(), sequenceCount(500));
    NSSetMainThreadViolationHandler(before);
    EXPECT_TRUE(violations.empty());
}

INSTANTIATE_TEST_SUITE_P(Families, Monkey,
    testing::Values("Skarvane/Skarvane.designspace", "Cases/QuadraticCurves/QuadraticCurves.designspace",
        "Cases/IncompatibleOutlines/IncompatibleOutlines.designspace"));
