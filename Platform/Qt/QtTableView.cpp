#include "Platform/Qt/QtTableView.h"

#include "Platform/Qt/EventDispatch.h"

#include <QApplication>
#include <QMouseEvent>
#include <QScrollBar>

QtTableView::QtTableView()
{
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAutoFillBackground(false);
    viewport()->setBackgroundRole(QPalette::Window); // What shows through; texts take their colour from it.
    viewport()->setMouseTracking(true);
    verticalScrollBar()->setSingleStep(16);
    m_pressObserver = observePresses([this](QWidget* target) { notePress(target); });
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget* former) {
        if (former && viewport()->isAncestorOf(former) && hooks.holdEnded) {
            hooks.holdEnded();
        }
    });
}

QWidget* QtTableView::controlWithKeyboard() const
{
    auto* control = window()->focusWidget();
    return control && viewport()->isAncestorOf(control) ? control : nullptr;
}

void QtTableView::notePress(QWidget* target)
{
    if (!target || !viewport()->isAncestorOf(target)) {
        return;
    }
    auto const held = static_cast<unsigned>(QGuiApplication::mouseButtons());
    bool const isSecondButton = (held & (held - 1)) != 0;
    if (m_pressed && isSecondButton) {
        return;
    }
    if (m_pressed) { // Its release went astray.
        m_pressed->removeEventFilter(this);
    }
    m_pressed = target;
    m_pressed->installEventFilter(this);
}

bool QtTableView::eventFilter(QObject* watched, QEvent* event)
{
    bool const isRelease = watched == m_pressed && event->type() == QEvent::MouseButtonRelease
        && static_cast<QMouseEvent*>(event)->buttons() == Qt::NoButton;
    if (isRelease) {
        m_pressed->removeEventFilter(this);
        // What the release leads to still finds the row where it was.
        QMetaObject::invokeMethod(
            this,
            [this, released = m_pressed] {
                if (m_pressed == released) {
                    m_pressed.clear();
                }
                if (hooks.holdEnded) {
                    hooks.holdEnded();
                }
            },
            Qt::QueuedConnection);
    }
    return QAbstractScrollArea::eventFilter(watched, event);
}

bool QtTableView::focusNextPrevChild(bool next)
{
    if (m_takesOut) {
        if (auto* control = window()->focusWidget()) {
            control->clearFocus();
        }
        return true;
    }
    bool const moved = QAbstractScrollArea::focusNextPrevChild(next);
    if (auto* control = controlWithKeyboard(); moved && control && hooks.tabbedTo) {
        hooks.tabbedTo(control);
    }
    return moved;
}

void QtTableView::scrollContentsBy(int, int)
{
    if (hooks.visibleRectChanged) {
        hooks.visibleRectChanged();
    }
}

void QtTableView::resizeEvent(QResizeEvent*)
{
    if (hooks.visibleRectChanged) {
        hooks.visibleRectChanged();
    }
}
