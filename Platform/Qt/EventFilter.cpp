#include "Platform/Qt/EventDispatch.h"

#include "Platform/Foundation/NSMainQueue.h"
#include "Platform/Qt/DrawingConversions.h"
#include "Platform/Qt/NSViewBacking.h"
#include "Platform/Qt/QtView.h"
#include "Platform/Qt/Tracking.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QWindow>

#include <algorithm>

namespace {

std::vector<std::weak_ptr<PressObserver>>& pressObservers()
{
    static auto& observers = *new std::vector<std::weak_ptr<PressObserver>>;
    return observers;
}

QPointer<QWidget>& heldWidget()
{
    static auto& widget = *new QPointer<QWidget>;
    return widget;
}

void tellPressObservers(QWidget* target)
{
    QPointer<QWidget> const stillThere = target;
    heldWidget() = target;
    std::erase_if(pressObservers(), [](auto const& observer) { return observer.expired(); });
    auto const observers = pressObservers();
    for (auto const& weak : observers) {
        if (auto const observer = weak.lock()) {
            (*observer)(stillThere);
        }
    }
}

bool isPress(QEvent const& event)
{
    return event.type() == QEvent::MouseButtonPress || event.type() == QEvent::MouseButtonDblClick;
}

bool isInput(QEvent const& event)
{
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        return true;
    default:
        return false;
    }
}

QWidget* topLevelWidget(QWindow const* window)
{
    auto const widgets = QApplication::topLevelWidgets();
    auto const found = std::find_if(
        widgets.begin(), widgets.end(), [&](auto const* widget) { return widget->windowHandle() == window; });
    return found == widgets.end() ? nullptr : *found;
}

/// The widget that is going to get a mouse event of the window.
QWidget* mouseTarget(QWidget& top, QMouseEvent const& event)
{
    if (auto* popup = QApplication::activePopupWidget()) {
        return popup;
    }
    auto* child = top.childAt(event.position().toPoint());
    return child ? child : &top;
}

/// Whether a field is being edited, so that its own context menu comes before its superviews.
bool isBeingEdited(QWidget const& widget)
{
    auto const* field = qobject_cast<QLineEdit const*>(&widget);
    return field && field->hasFocus() && !field->isReadOnly();
}

/// Sees every event of the program. Events of the mouse, the wheel and the keyboard come to a
/// window first; there they are wrapped in a scope, which makes them current for all that follows.
class EventFilter final : public QObject {
public:
    explicit EventFilter(QObject* parent)
        : QObject(parent)
    {
    }

    bool eventFilter(QObject* receiver, QEvent* event) override
    {
        if (auto* window = qobject_cast<QWindow*>(receiver)) {
            return isInput(*event) ? deliverInput(*window, *event) : noteWindowEvent(*window, *event);
        }
        auto* widget = receiver->isWidgetType() ? static_cast<QWidget*>(receiver) : nullptr;
        return widget && filterWidgetEvent(*widget, *event);
    }

private:
    bool m_isDelivering { false };
    bool m_swallowsContextMenu { false };

    static bool noteWindowEvent(QWindow& window, QEvent const& event)
    {
        if (event.type() == QEvent::Enter) {
            setPointerPlace(&window, static_cast<QEnterEvent const&>(event).position());
        } else if (event.type() == QEvent::Leave) {
            pointerLeft(&window);
        }
        return false;
    }

    bool filterWidgetEvent(QWidget& widget, QEvent const& event)
    {
        switch (event.type()) {
        case QEvent::ContextMenu:
            return filterContextMenu(widget, static_cast<QContextMenuEvent const&>(event));
        case QEvent::Move:
        case QEvent::Resize:
        case QEvent::Show:
        case QEvent::Hide:
            scheduleTrackingCheck();
            return false;
        case QEvent::ShortcutOverride:
            runQueueBefore();
            return false;
        default:
            return isInput(event) && filterWidgetInput(widget, event);
        }
    }

    /// The menu key does on the control with the keyboard what a right press does.
    bool filterContextMenu(QWidget& widget, QContextMenuEvent const& event) const
    {
        if (event.reason() == QContextMenuEvent::Mouse) {
            return m_swallowsContextMenu;
        }
        NSEvent press;
        press.type = NSEventType::rightMouseDown;
        press.clickCount = 1;
        press.locationInView = fromQPointF(event.pos());
        return event.reason() == QContextMenuEvent::Keyboard && offerRightPress(widget, press);
    }

    bool filterWidgetInput(QWidget& widget, QEvent const& event)
    {
        if (m_isDelivering) {
            refineLocation(widget, event);
            return false;
        }
        // Sent to the widget directly, not through its window.
        QPointer<QWidget> const stillThere = &widget;
        if (event.spontaneous()) {
            runQueueBefore();
        }
        if (isPress(event) && stillThere) {
            countClick(event);
            tellPressObservers(&widget);
        }
        return !stillThere;
    }

    static void refineLocation(QWidget& widget, QEvent const& event)
    {
        auto* view = enclosingViewOfWidget(&widget);
        if (view && view->backing().widget) {
            EventScope::setLocation(eventFromToolkit(event, *view->backing().widget).locationInView);
        }
    }

    static void runQueueBefore()
    {
        if (!HandlingScope::isHandlingInThisLoop()) {
            HandlingScope const scope;
            NSMainQueue::runPending();
        }
    }

    bool deliverInput(QWindow& window, QEvent& event)
    {
        QPointer<QWindow> const stillThere = &window;
        runQueueBefore();
        auto* top = stillThere ? topLevelWidget(&window) : nullptr;
        if (!top) {
            return !stillThere;
        }
        if (auto const* mouse = dynamic_cast<QMouseEvent const*>(&event)) {
            setPointerPlace(&window, mouse->position());
            if (isPress(event)) {
                countClick(event);
            }
        }
        EventScope const scope(eventFromToolkit(event, *top));
        bool const wasDelivering = std::exchange(m_isDelivering, true);
        if (!isPress(event) || preparePress(*top, static_cast<QMouseEvent&>(event))) {
            if (stillThere) {
                static_cast<QObject&>(window).event(&event);
            }
        }
        m_isDelivering = wasDelivering;
        return true;
    }

    /// False when the press has been dealt with.
    bool preparePress(QWidget& top, QMouseEvent const& event)
    {
        m_swallowsContextMenu = false;
        QPointer<QWidget> const target = mouseTarget(top, event);
        tellPressObservers(target);
        if (!target || event.button() != Qt::RightButton || QApplication::activePopupWidget()) {
            return true;
        }
        m_swallowsContextMenu = sendRightPress(*target, event);
        return !m_swallowsContextMenu;
    }

    /// A right press on a control belongs to its view and the superviews; the toolkit's controls
    /// would keep it, and a field would take the focus. True when a view acted on it.
    static bool sendRightPress(QWidget& target, QMouseEvent const& event)
    {
        auto* view = enclosingViewOfWidget(&target);
        auto* receiver = view ? view->backing().widget.data() : nullptr;
        return receiver && offerRightPress(target, eventFromToolkit(event, *receiver));
    }

    static bool offerRightPress(QWidget const& target, NSEvent const& press)
    {
        auto* view = enclosingViewOfWidget(&target);
        auto const keep = view ? view->sharedAs<NSView>() : nullptr;
        if (!keep || isBeingEdited(target)) {
            return false;
        }
        EventScope::markOffered();
        EventScope const scope(press);
        view->rightMouseDown(press);
        return scope.wasHandled();
    }
};

/// Runs the blocks of the main queue on a later turn of the event loop.
void wakeMainQueue()
{
    if (auto* application = QCoreApplication::instance()) {
        QMetaObject::invokeMethod(
            application,
            [] {
                HandlingScope const scope;
                NSMainQueue::runPending();
            },
            Qt::QueuedConnection);
    }
}

void installEventFilter()
{
    auto* application = QCoreApplication::instance();
    application->installEventFilter(new EventFilter(application));
    NSMainQueue::setWaker(wakeMainQueue);
}

} // namespace

QWidget* pressedWidget()
{
    return QGuiApplication::mouseButtons() == Qt::NoButton ? nullptr : heldWidget().data();
}

std::shared_ptr<void> observePresses(PressObserver observer)
{
    auto handle = std::make_shared<PressObserver>(std::move(observer));
    pressObservers().push_back(handle);
    return handle;
}

Q_COREAPP_STARTUP_FUNCTION(installEventFilter)
