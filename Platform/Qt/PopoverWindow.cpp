#include "Platform/Qt/PopoverWindow.h"

#include "Platform/Qt/DrawingConversions.h"
#include "Platform/Qt/EventDispatch.h"
#include "Platform/Qt/NSViewBacking.h"

#include <QApplication>
#include <QBitmap>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {
bool isEscape(QEvent const& event)
{
    return static_cast<QKeyEvent const&>(event).key() == Qt::Key_Escape;
}

bool takesKeyboard(QWidget const& widget)
{
    auto const children = widget.findChildren<QWidget const*>(QString(), Qt::FindDirectChildrenOnly);
    return widget.focusPolicy() != Qt::NoFocus
        || std::ranges::any_of(children, [](auto const* child) { return takesKeyboard(*child); });
}

/// Closes a popover at Escape where its anchor's window has the keyboard.
class EscapeFilter final : public QObject {
public:
    EscapeFilter(PopoverWindow& popover, QPointer<QWidget> anchorWindow, std::function<void()> close)
        : QObject(&popover)
        , m_popover(popover)
        , m_anchorWindow(std::move(anchorWindow))
        , m_close(std::move(close))
    {
        QCoreApplication::instance()->installEventFilter(this);
    }

    bool eventFilter(QObject* receiver, QEvent* event) override
    {
        bool const isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
        if (!isKey || !isEscape(*event) || !m_popover.isVisible() || !isForAnchorWindow(*receiver)) {
            return false;
        }
        event->accept();
        if (event->type() == QEvent::KeyPress) {
            HandlingScope const scope;
            m_close();
        }
        return true;
    }

private:
    PopoverWindow& m_popover;
    QPointer<QWidget> m_anchorWindow;
    std::function<void()> m_close;

    bool isForAnchorWindow(QObject const& receiver) const
    {
        auto const* widget = receiver.isWidgetType() ? static_cast<QWidget const*>(&receiver) : nullptr;
        return m_anchorWindow && !QApplication::activePopupWidget()
            && (&receiver == m_anchorWindow->windowHandle()
                || (widget && widget->window() == m_anchorWindow));
    }
};
} // namespace

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
    watchAnchor();
    setParent(m_anchorWindow, windowFlags());
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
    bringUp();
}

/// Content without a use for the keyboard leaves it where it is.
void PopoverWindow::bringUp()
{
    auto const* content = m_content ? qtWidget(*m_content) : nullptr;
    bool const wantsKeyboard = content && takesKeyboard(*content);
    bool const anchorHadKeyboard = m_anchorWindow->isActiveWindow();
    setAttribute(Qt::WA_ShowWithoutActivating, !wantsKeyboard);
    show();
    raise();
    if (wantsKeyboard) {
        activateWindow();
        return;
    }
    if (anchorHadKeyboard) {
        m_anchorWindow->activateWindow(); // Not every window system heeds the attribute.
    }
    if (m_isTransient) {
        new EscapeFilter(*this, m_anchorWindow, [this] { requestClose(); });
    }
}

void PopoverWindow::watchAnchor()
{
    auto* anchor = m_anchor.widget.data();
    m_anchorWindow = anchor->window();
    m_anchorSuperview = anchor->isWindow() ? anchor : anchor->parentWidget();
    for (QWidget* watched : { anchor, m_anchorSuperview.data(), m_anchorWindow.data() }) {
        watched->installEventFilter(this);
    }
    auto const close = [this] { closeLaterIf([] { return true; }); };
    connect(m_anchorSuperview, &QObject::destroyed, this, close);
}

/// A view that was taken out, such as a row that its table has no longer, may come back as another one.
void PopoverWindow::letAnchorGo()
{
    m_anchor.widget->removeEventFilter(this);
    m_anchor.widget = nullptr;
}

bool PopoverWindow::isAnchorHidden() const
{
    bool const isPlaceVisible = m_anchorSuperview && m_anchorSuperview->isVisible();
    return !isPlaceVisible || (m_anchor.widget && !m_anchor.widget->isVisible());
}

QRect PopoverWindow::anchorOnScreen()
{
    if (m_anchor.widget && m_anchor.widget->window() == m_anchorWindow) {
        m_anchorInWindow
            = { m_anchor.widget->mapTo(m_anchorWindow, m_anchor.rect.topLeft()), m_anchor.rect.size() };
    }
    return m_anchorInWindow.translated(m_anchorWindow->mapToGlobal(QPoint()));
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
    if (!m_content || !m_anchorWindow) {
        return;
    }
    auto const fitting = m_content->fittingSize();
    auto const size = fitting == NSSize {} ? m_content->frame().size : fitting;
    QSize const whole(static_cast<int>(std::ceil(size.width)), static_cast<int>(std::ceil(size.height)));
    auto const screen = m_anchorWindow->screen()->availableGeometry();
    m_placement = placePopover(whole, anchorOnScreen(), m_anchor.edge, screen);
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
        // Taking the anchor out hides it too.
        closeLaterIf([this] { return isAnchorHidden(); });
        break;
    case QEvent::ParentChange:
        if (watched == m_anchor.widget && m_anchor.widget->parentWidget() != m_anchorSuperview) {
            letAnchorGo();
        }
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
    if (m_isTransient && isEscape(*event)) {
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
