#include "Platform/Qt/ConstraintLayout.h"

#include "Platform/Qt/ConstraintSolver.h"
#include "Platform/Qt/DrawingConversions.h"
#include "Platform/Qt/NSViewBacking.h"

#include <QCoreApplication>
#include <QEvent>
#include <QSet>

#include <cmath>

namespace {

/// The boxes of one container: the container itself first, then every other view named.
class Layout {
public:
    /// Without a size the container's own is what is looked for.
    Layout(NSView const& container, std::optional<QSize> size)
        : m_container(*qtWidget(container))
        , m_isMirrored(m_container.isRightToLeft())
        , m_width(size ? size->width() : 0)
    {
        m_views.push_back(&container);
        ConstraintSolver::Box box { .horizontal = { .start = 0 }, .vertical = { .start = 0 } };
        if (size) {
            box.horizontal.end = size->width();
            box.vertical.end = size->height();
        }
        m_solver.boxes.push_back(std::move(box));
        for (auto const& constraint : container.backing().constraints) {
            addRule(*constraint);
        }
        m_solver.solve();
    }

    NSSize containerSize() const
    {
        auto const& box = m_solver.boxes.front();
        return { box.horizontal.length.value_or(0), box.vertical.length.value_or(0) };
    }

    void place() const
    {
        for (std::size_t index = 1; index < m_views.size(); ++index) {
            if (!m_views[index]->backing().placedByConstraints) {
                continue;
            }
            auto const& [horizontal, vertical, width, height] = m_solver.boxes[index];
            double const start = horizontal.start.value_or(0);
            double const length = std::max(horizontal.length.value_or(0), 0.0);
            QRectF const rect(m_isMirrored ? m_width - start - length : start, vertical.start.value_or(0),
                length, std::max(vertical.length.value_or(0), 0.0));
            auto* widget = qtWidget(*m_views[index]);
            auto const topLeft = widget->parentWidget()->mapFrom(&m_container, rect.topLeft());
            auto const geometry = QRectF(topLeft, rect.size()).toAlignedRect();
            if (widget->geometry() != geometry) {
                widget->setGeometry(geometry);
            }
        }
    }

private:
    QWidget& m_container;
    bool m_isMirrored;
    double m_width;
    std::vector<NSView const*> m_views;
    ConstraintSolver m_solver;

    bool holds(NSView const* view) const
    {
        auto* widget = view ? qtWidget(*view) : nullptr;
        return widget && (widget == &m_container || m_container.isAncestorOf(widget));
    }

    void addRule(NSLayoutConstraint const& constraint)
    {
        auto const first = constraint.firstView.lock();
        auto const second = constraint.secondView.lock();
        if (!holds(first.get()) || (constraint.hasSecond && !holds(second.get()))) {
            return;
        }
        m_solver.rules.push_back({ .first = indexOf(*first),
            .firstAttribute = constraint.firstAttribute,
            .relation = constraint.relation,
            .second = constraint.hasSecond ? std::optional(indexOf(*second)) : std::nullopt,
            .secondAttribute = constraint.secondAttribute,
            .constant = constraint.constant });
    }

    std::size_t indexOf(NSView const& view)
    {
        for (std::size_t index = 0; index < m_views.size(); ++index) {
            if (m_views[index] == &view) {
                return index;
            }
        }
        m_views.push_back(&view);
        m_solver.boxes.push_back(view.backing().placedByConstraints ? naturalBox(view) : fixedBox(view));
        return m_views.size() - 1;
    }

    static ConstraintSolver::Box naturalBox(NSView const& view)
    {
        return { .naturalWidth = [&view] { return view.fittingSize().width; },
            .naturalHeight =
                [&view](double width) {
                    auto const* widget = qtWidget(view);
                    return widget->hasHeightForWidth() ? widget->heightForWidth(static_cast<int>(width))
                                                       : view.fittingSize().height;
                } };
    }

    ConstraintSolver::Box fixedBox(NSView const& view) const
    {
        auto const* widget = qtWidget(view);
        QRectF const rect(widget->mapTo(&m_container, QPoint()), widget->size());
        double const start = m_isMirrored ? m_width - rect.right() : rect.left();
        return { .horizontal = { .start = start, .end = start + rect.width(), .length = rect.width() },
            .vertical = { .start = rect.top(), .end = rect.bottom(), .length = rect.height() } };
    }
};

/// Asks for a new layout of the container when a widget that its constraints depend on has moved.
class Watcher final : public QObject {
public:
    explicit Watcher(QWidget& container)
        : m_container(&container)
    {
    }

    /// The widget and what lies between it and the container.
    void watch(QWidget* widget)
    {
        for (; widget && widget != m_container && !m_watched.contains(widget);
             widget = widget->parentWidget()) {
            m_watched.insert(widget);
            widget->installEventFilter(this);
        }
    }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (m_container && (event->type() == QEvent::Move || event->type() == QEvent::Resize)) {
            QCoreApplication::postEvent(m_container, new QEvent(QEvent::LayoutRequest));
        }
        return false;
    }

private:
    QPointer<QWidget> m_container;
    QSet<QWidget*> m_watched;
};

} // namespace

void applyConstraints(NSView& container)
{
    auto const* widget = qtWidget(container);
    if (widget && !container.backing().constraints.empty()) {
        Layout(container, widget->size()).place();
    }
}

NSSize sizeFittingConstraints(NSView const& container)
{
    return qtWidget(container) ? Layout(container, {}).containerSize() : NSSize {};
}

void watchConstrainedViews(NSView& container)
{
    auto& backing = container.backing();
    if (!backing.widget) {
        return;
    }
    auto watcher = std::make_unique<Watcher>(*backing.widget);
    for (auto const& constraint : backing.constraints) {
        for (auto const& weak : { constraint->firstView, constraint->secondView }) {
            auto const view = weak.lock();
            if (view && !view->backing().placedByConstraints) {
                watcher->watch(qtWidget(*view));
            }
        }
    }
    backing.constraintWatcher = std::move(watcher);
    QCoreApplication::postEvent(backing.widget, new QEvent(QEvent::LayoutRequest));
}
