#include "Typloom/TyploomApp/TLSidebar.h"

#include "Platform/AppKit/NSSearchField.h"
#include "Platform/AppKit/NSViewController.h"
#include "Platform/Qt/Conversions.h"
#include "Platform/Qt/NSViewBacking.h"
#include "Platform/Qt/SymbolIcons.h"
#include "Typloom/TyploomApp/TLAccessibleRoles.h"
#include "Typloom/TyploomKit/TLPlaceholderView.h"

#include <QAbstractButton>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QPointer>
#include <QShowEvent>
#include <QStackedLayout>
#include <QVBoxLayout>
#include <QWidget>

#include <cmath>

namespace {

/// One tab: image and title; the shown one stands on a tinted ground.
class TabButton final : public QAbstractButton {
public:
    TabButton(QString const& title, std::shared_ptr<NSImage> const& image)
    {
        TLPresentAsTab(*this);
        setText(title);
        setToolTip(title);
        setAccessibleName(title);
        setCheckable(true);
        setAutoExclusive(true);
        setFocusPolicy(Qt::TabFocus);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        if (image) {
            setIcon(symbolIcon(*image));
            m_symbolSize = static_cast<int>(std::lround(symbolSize(image->symbolConfiguration().scale)));
        }
    }

    QSize sizeHint() const override
    {
        return { contentWidth() + 2 * margin, std::max(fontMetrics().height() + 12, 30) };
    }
    QSize minimumSizeHint() const override { return { 3 * margin, sizeHint().height() }; }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        auto ground = palette().color(QPalette::WindowText);
        ground.setAlphaF(isChecked() ? 0.10 : underMouse() ? 0.05 : 0.0);
        painter.setPen(hasFocus() ? QPen(palette().color(QPalette::Highlight), 1.5) : QPen(Qt::NoPen));
        painter.setBrush(ground);
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 6, 6);
        painter.setPen(palette().color(QPalette::WindowText));
        icon().paint(&painter, contentLeft(), (height() - m_symbolSize) / 2, m_symbolSize, m_symbolSize);
        int const left = contentLeft() + symbolWidth();
        QRect const area(left, 0, width() - left - 4, height());
        painter.drawText(area, Qt::AlignVCenter | Qt::AlignLeft,
            fontMetrics().elidedText(text(), Qt::ElideRight, area.width()));
    }

    void enterEvent(QEnterEvent*) override { update(); }
    void leaveEvent(QEvent*) override { update(); }

private:
    static constexpr int margin = 10;
    static constexpr int gap = 6;

    int symbolWidth() const { return m_symbolSize > 0 ? m_symbolSize + gap : 0; }
    int contentWidth() const { return fontMetrics().horizontalAdvance(text()) + symbolWidth(); }
    int contentLeft() const { return std::max(4, (width() - contentWidth()) / 2); }

    int m_symbolSize { 0 }; ///< 0 without an image.
};

/// Tells when the sidebar comes to be shown and ceases to be.
class SidebarWidget final : public QWidget {
public:
    std::function<void(bool isShown)> visibilityDidChange;
    std::function<void()> didCancel;

protected:
    void showEvent(QShowEvent* event) override
    {
        QWidget::showEvent(event);
        report(event->spontaneous(), true);
    }
    void hideEvent(QHideEvent* event) override
    {
        QWidget::hideEvent(event);
        report(event->spontaneous(), false);
    }

    void keyPressEvent(QKeyEvent* event) override
    {
        if (event->key() == Qt::Key_Escape && didCancel) {
            didCancel();
        } else {
            QWidget::keyPressEvent(event);
        }
    }

private:
    void report(bool isSpontaneous, bool isShown) const
    {
        if (!isSpontaneous && visibilityDidChange) {
            visibilityDidChange(isShown);
        }
    }
};

std::shared_ptr<NSSearchField> searchFieldIn(std::shared_ptr<NSView> const& view)
{
    if (auto field = std::dynamic_pointer_cast<NSSearchField>(view)) {
        return field;
    }
    for (auto const& part : view ? view->subviews() : std::vector<std::shared_ptr<NSView>> {}) {
        if (auto field = searchFieldIn(part)) {
            return field;
        }
    }
    return nullptr;
}

} // namespace

struct TLSidebar::Impl {
    struct Tab {
        TabButton* button;
        std::shared_ptr<TLEditViewSidebarControllerProtocol> controller;
        std::shared_ptr<NSView> view; ///< Null until the tab is shown for the first time.

        NSViewController* viewController() const { return dynamic_cast<NSViewController*>(controller.get()); }
    };

    QPointer<SidebarWidget> widget { new SidebarWidget };
    QStackedLayout* content { new QStackedLayout };
    std::vector<Tab> tabs;
    std::optional<std::size_t> shown;
    std::shared_ptr<TLPlaceholderView> placeholder;

    void addTab(TLEditViewSidebarControllerClass const& controllerClass, QHBoxLayout& bar,
        std::weak_ptr<TLGlyphViewControllerProtocol> const& editViewController)
    {
        auto const title = controllerClass.title ? controllerClass.title() : controllerClass.name;
        auto const image = controllerClass.tabBarImage ? controllerClass.tabBarImage() : nullptr;
        auto const controller = controllerClass.make ? controllerClass.make() : nullptr;
        if (!controller) {
            return;
        }
        controller->setController(editViewController);
        auto* const button = new TabButton(toQString(title), image);
        bar.addWidget(button);
        auto const index = tabs.size();
        QObject::connect(button, &QAbstractButton::clicked, widget, [this, index] { show(index); });
        tabs.push_back({ button, controller, nullptr });
    }

    void addPlaceholder()
    {
        placeholder = std::make_shared<TLPlaceholderView>();
        placeholder->setTitle("No Tabs");
        placeholder->setBody("No plug-in adds a tab to this sidebar.");
        content->addWidget(qtWidget(*placeholder));
    }

    void show(std::size_t index)
    {
        if (index >= tabs.size() || shown == index) {
            return;
        }
        tellShownTab(false);
        shown = index;
        auto& tab = tabs[index];
        tab.button->setChecked(true);
        if (!tab.view) {
            tab.view = tab.controller->view();
            content->addWidget(qtWidget(*tab.view));
        }
        content->setCurrentWidget(qtWidget(*tab.view));
        tellShownTab(true);
    }

    void tellShownTab(bool hasAppeared) const
    {
        auto* const controller = shown && widget->isVisible() ? tabs[*shown].viewController() : nullptr;
        if (controller) {
            hasAppeared ? controller->viewDidAppear() : controller->viewDidDisappear();
        }
    }
};

TLSidebar::TLSidebar(std::weak_ptr<TLGlyphViewControllerProtocol> editViewController)
    : m_impl(std::make_unique<Impl>())
{
    auto* const layout = new QVBoxLayout(m_impl->widget);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    auto* const bar = new QHBoxLayout;
    bar->setContentsMargins(8, 6, 8, 4);
    bar->setSpacing(4);
    layout->addLayout(bar);
    layout->addLayout(m_impl->content, 1);
    m_impl->widget->setMinimumWidth(220);
    m_impl->widget->setAccessibleName("Sidebar");
    for (auto const& controllerClass : TLCallbackHandler::editViewLeftSidebarControllers()) {
        m_impl->addTab(controllerClass, *bar, editViewController);
    }
    if (m_impl->tabs.empty()) {
        m_impl->addPlaceholder();
    }
    m_impl->show(0);
    m_impl->widget->visibilityDidChange = [impl = m_impl.get()](bool isShown) {
        auto* const controller = impl->shown ? impl->tabs[*impl->shown].viewController() : nullptr;
        if (controller) {
            isShown ? controller->viewDidAppear() : controller->viewDidDisappear();
        }
    };
}

TLSidebar::~TLSidebar()
{
    if (m_impl->widget) {
        m_impl->widget->visibilityDidChange = nullptr;
    }
    m_impl->tabs.clear(); // Views before the widget that holds them: each owns its own.
    m_impl->placeholder.reset();
    delete m_impl->widget;
}

QWidget* TLSidebar::widget() const
{
    return m_impl->widget;
}

std::string TLSidebar::titleOfTab(std::size_t index) const
{
    return index < m_impl->tabs.size() ? fromQString(m_impl->tabs[index].button->text()) : std::string();
}

std::optional<std::size_t> TLSidebar::shownTab() const
{
    return m_impl->shown;
}

void TLSidebar::showTab(std::size_t index)
{
    m_impl->show(index);
}

void TLSidebar::focusSearchField()
{
    m_impl->widget->show();
    auto const& shown = m_impl->shown;
    if (auto const field = searchFieldIn(shown ? m_impl->tabs[*shown].view : nullptr)) {
        field->selectText();
    }
}

void TLSidebar::setCancelHandler(std::function<void()> handler)
{
    m_impl->widget->didCancel = std::move(handler);
}

std::shared_ptr<TLEditViewSidebarControllerProtocol> TLSidebar::controllerOfTab(std::size_t index) const
{
    return index < m_impl->tabs.size() ? m_impl->tabs[index].controller : nullptr;
}
