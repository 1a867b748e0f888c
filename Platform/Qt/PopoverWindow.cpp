#include "Platform/Qt/PopoverWindow.h"

#include "Platform/Qt/DrawingConversions.h"
#include "Platform/Qt/EventDispatch.h"
#include "Platform/Qt/NSViewBacking.h"

#include <QApplication>
#include <QBitmap>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>

#include <cmath>
#include <utility>

PopoverWindow::PopoverWindow(std::shared_ptr<NSView> content, bool transient, std::function<void()> close)
    : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint)
    , m_content(std::move(content))
    , m_isTransient(transient)
    , m_close(std::move(close))
{
}

PopoverWindow::~PopoverWindow()
{
    m_isDying = true;
    requestClose(); // The toolkit deletes it with the anchor's window.
    releaseContent();
}

void PopoverWindow::requestClose()
{
    // A copy: the call ends in `finish`, which drops the function.
    if (auto const close = m_close) {
        close();
    }
}

void PopoverWindow::open(Anchor anchor)
{
    m_anchor = std::move(anchor);
    m_anchorWindow = m_anchor.widget->window();
    setParent(m_anchorWindow, windowFlags());
    m_anchorWindow->installEventFilter(this);
    m_anchor.widget->installEventFilter(this);
    auto const close = [this] { closeLaterIf([] { return true; }); };
    connect(m_anchor.widget, &QObject::destroyed, this, close);
    if (m_isTransient) {
        m_pressObserver = observePresses([this](QWidget const* target) {
            if (!isInside(target)) {
                requestClose();
            }
        });
        connect(qApp, &QGuiApplication::applicationStateChanged, this, [this] {
            closeLaterIf([] { return QGuiApplication::applicationState() != Qt::ApplicationActive; });
        });
    }
    if (auto* widget = qtWidget(*m_content)) {
        widget->setParent(this);
        if (!m_content->isHidden()) {
            widget->show();
        }
    }
    place();
    show();
    raise();
    activateWindow();
}

void PopoverWindow::finish()
{
    m_close = nullptr;
    m_pressObserver.reset();
    bool const hadKeyboard = isActiveWindow();
    if (m_isDying) {
        return;
    }
    hide();
    releaseContent();
    if (hadKeyboard && m_anchorWindow && m_anchorWindow->isVisible()) {
        m_anchorWindow->activateWindow();
    }
    deleteLater(); // It may be in the middle of an event of its own.
}

void PopoverWindow::releaseContent()
{
    auto const content = std::exchange(m_content, nullptr);
    auto* widget = content ? qtWidget(*content) : nullptr;
    if (widget && widget->parentWidget() == this) {
        widget->setParent(nullptr);
    }
}

void PopoverWindow::closeLaterIf(std::function<bool()> condition)
{
    QMetaObject::invokeMethod(
        this,
        [this, condition = std::move(condition)] {
            if (condition()) {
                requestClose();
            }
        },
        Qt::QueuedConnection);
}

bool PopoverWindow::isInside(QWidget const* widget) const
{
    // Across windows: the list of a combo box and a popover opened from here belong to it.
    for (auto const* outer = widget; outer; outer = outer->parentWidget()) {
        if (outer == this) {
            return true;
        }
    }
    // A menu that belongs to nothing is on top of all popovers.
    return widget && widget->windowType() == Qt::Popup && !widget->parentWidget();
}

void PopoverWindow::place()
{
    if (!m_content || !m_anchor.widget) {
        return;
    }
    auto const fitting = m_content->fittingSize();
    auto const size = fitting == NSSize {} ? m_content->frame().size : fitting;
    QSize const whole(static_cast<int>(std::ceil(size.width)), static_cast<int>(std::ceil(size.height)));
    QRect const anchor(m_anchor.widget->mapToGlobal(m_anchor.rect.topLeft()), m_anchor.rect.size());
    m_placement = placePopover(whole, anchor, m_anchor.edge, m_anchor.widget->screen()->availableGeometry());
    setGeometry(m_placement.window);
    m_content->setFrame(fromQRectF(popoverContentRect(m_placement)));
    m_content->layoutSubtreeIfNeeded();
    update();
}

bool PopoverWindow::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Hide:
    case QEvent::Close:
        if (watched == m_anchorWindow) {
            if (event->type() == QEvent::Hide && !event->spontaneous()) {
                requestClose();
            } else if (event->type() == QEvent::Close) {
                closeLaterIf([window = m_anchorWindow] { return !window || !window->isVisible(); });
            }
            break;
        }
        [[fallthrough]];
    case QEvent::ParentChange:
        // Whether it really went is seen when all has settled: a table may put a row back at once.
        closeLaterIf([this] { return !m_anchor.widget || !m_anchor.widget->isVisible(); });
        break;
    case QEvent::Move:
    case QEvent::Resize:
        place();
        break;
    default:
        break;
    }
    return false;
}

bool PopoverWindow::event(QEvent* event)
{
    if (event->type() == QEvent::LayoutRequest) {
        place();
    }
    return QWidget::event(event);
}

void PopoverWindow::closeEvent(QCloseEvent* event)
{
    event->accept();
    requestClose();
}

void PopoverWindow::keyPressEvent(QKeyEvent* event)
{
    if (m_isTransient && event->key() == Qt::Key_Escape) {
        requestClose();
    } else {
        event->ignore();
    }
}

void PopoverWindow::resizeEvent(QResizeEvent*)
{
    // A mask, since translucency needs a compositor. Drawn, so that it holds the line around it too.
    QBitmap mask(size());
    mask.clear();
    QPainter painter(&mask);
    painter.setPen(Qt::color1);
    painter.setBrush(Qt::color1);
    painter.drawPath(popoverOutline(m_placement));
    painter.end();
    setMask(mask);
}

void PopoverWindow::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(toQColor(NSColor::tertiaryLabelColor()));
    painter.setBrush(palette().window());
    painter.drawPath(popoverOutline(m_placement));
}
