#include "Platform/AppKit/NSEvent.h"

#include "Platform/Qt/DrawingConversions.h"
#include "Platform/Qt/EventDispatch.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyleHints>
#include <QWheelEvent>
#include <QWidget>

#include <algorithm>
#include <array>
#include <cstdlib>

namespace {

/// The press that was last counted.
struct Click {
    Qt::MouseButton button { Qt::NoButton };
    QPoint place;
    quint64 timestamp { 0 };
    QEvent::Type type { QEvent::None };
    int count { 0 };
};
Click lastClick;

constexpr double pointsPerScrolledLine = 16;

NSKey keyFromToolkit(int key)
{
    switch (key) {
    case Qt::Key_Left:
        return NSKey::left;
    case Qt::Key_Right:
        return NSKey::right;
    case Qt::Key_Up:
        return NSKey::up;
    case Qt::Key_Down:
        return NSKey::down;
    case Qt::Key_PageUp:
        return NSKey::pageUp;
    case Qt::Key_PageDown:
        return NSKey::pageDown;
    case Qt::Key_Home:
        return NSKey::home;
    case Qt::Key_End:
        return NSKey::end;
    case Qt::Key_Backspace:
        return NSKey::backspace;
    case Qt::Key_Delete:
        return NSKey::deleteForward;
    case Qt::Key_Escape:
        return NSKey::escape;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return NSKey::enter;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return NSKey::tab;
    default:
        return NSKey::none;
    }
}

NSEventType mouseEventType(QMouseEvent const& event)
{
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        return event.button() == Qt::LeftButton ? NSEventType::leftMouseDown
            : event.button() == Qt::RightButton ? NSEventType::rightMouseDown
                                                : NSEventType::other;
    case QEvent::MouseButtonRelease:
        return event.button() == Qt::LeftButton ? NSEventType::leftMouseUp : NSEventType::other;
    default:
        return event.buttons() & Qt::LeftButton ? NSEventType::leftMouseDragged
            : event.buttons() == Qt::NoButton   ? NSEventType::mouseMoved
                                                : NSEventType::other;
    }
}

void readMouse(NSEvent& result, QMouseEvent const& event, QWidget const& receiver)
{
    result.type = mouseEventType(event);
    result.locationInView = fromQPointF(receiver.mapFromGlobal(event.globalPosition()));
    result.clickCount = result.type == NSEventType::mouseMoved ? 0 : lastClick.count;
}

void readWheel(NSEvent& result, QWheelEvent const& event, QWidget const& receiver)
{
    result.type = NSEventType::scrollWheel;
    result.locationInView = fromQPointF(receiver.mapFromGlobal(event.globalPosition()));
    if (!event.pixelDelta().isNull()) {
        result.scrollingDelta = fromQPointF(event.pixelDelta());
    } else {
        double const pointsPerUnit = QApplication::wheelScrollLines() * pointsPerScrolledLine / 120;
        result.scrollingDelta = fromQPointF(QPointF(event.angleDelta()) * pointsPerUnit);
    }
}

} // namespace

void countClick(QEvent const& press)
{
    auto const& event = static_cast<QMouseEvent const&>(press);
    bool const isDouble = event.type() == QEvent::MouseButtonDblClick;
    auto const place = event.globalPosition().toPoint();
    bool const sameButton = event.button() == lastClick.button;
    if (isDouble && sameButton && event.timestamp() == lastClick.timestamp
        && lastClick.type == QEvent::MouseButtonPress) {
        lastClick.type = event.type();
        return; // The toolkit tells a window of one press twice: as itself, then as a double click.
    }
    auto const* hints = QGuiApplication::styleHints();
    auto const moved = place - lastClick.place;
    int const distance = hints->mouseDoubleClickDistance();
    auto const elapsed = event.timestamp() - lastClick.timestamp; // Wraps round for an earlier one.
    bool const continues = sameButton && elapsed < static_cast<quint64>(hints->mouseDoubleClickInterval())
        && std::abs(moved.x()) <= distance && std::abs(moved.y()) <= distance;
    int const count = continues ? lastClick.count + 1 : 1;
    lastClick
        = { event.button(), place, event.timestamp(), event.type(), isDouble ? std::max(count, 2) : count };
}

NSEvent eventFromToolkit(QEvent const& event, QWidget const& receiver)
{
    NSEvent result;
    if (auto const* input = dynamic_cast<QInputEvent const*>(&event)) {
        auto const modifiers = input->modifiers();
        result.modifiers = { .shift = modifiers.testFlag(Qt::ShiftModifier),
            .control = modifiers.testFlag(Qt::ControlModifier),
            .alt = modifiers.testFlag(Qt::AltModifier) };
    }
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove:
        readMouse(result, static_cast<QMouseEvent const&>(event), receiver);
        break;
    case QEvent::Wheel:
        readWheel(result, static_cast<QWheelEvent const&>(event), receiver);
        break;
    case QEvent::KeyPress: {
        auto const& key = static_cast<QKeyEvent const&>(event);
        result.type = NSEventType::keyDown;
        result.key = keyFromToolkit(key.key());
        result.characters = fromQString(key.text());
        break;
    }
    default:
        break;
    }
    return result;
}
