#include "Platform/AppKit/NSView.h"

#include "Platform/Foundation/NSMainThread.h"
#include "Platform/Qt/ConstraintLayout.h"
#include "Platform/Qt/DrawingConversions.h"
#include "Platform/Qt/HiddenState.h"
#include "Platform/Qt/NSViewBacking.h"
#include "Platform/Qt/QtView.h"
#include "Platform/Qt/Tracking.h"

#include <QLayout>

namespace {

constexpr int requiredPriority = 1000;

/// Brings the toolkit's own layouts of a widget and of the plain widgets in it up to date.
void activateLayouts(QWidget& widget)
{
    if (auto* layout = widget.layout()) {
        layout->activate();
        if (!widget.isVisible()) {
            // A widget that is not shown does not lay out for a size that it was given meanwhile.
            layout->setGeometry(widget.contentsRect());
        }
    }
    for (auto* child : widget.children()) {
        auto* childWidget = qobject_cast<QWidget*>(child);
        if (childWidget && !childWidget->isWindow() && !viewOfWidget(childWidget)) {
            activateLayouts(*childWidget);
        }
    }
}

void setPolicyFlag(NSView const& view, NSLayoutOrientation orientation, QSizePolicy::PolicyFlag flag, bool on)
{
    auto* widget = qtWidget(view);
    if (!widget) {
        return;
    }
    auto policy = widget->sizePolicy();
    bool const horizontal = orientation == NSLayoutOrientation::horizontal;
    int const old = horizontal ? policy.horizontalPolicy() : policy.verticalPolicy();
    auto const changed = static_cast<QSizePolicy::Policy>(on ? old | flag : old & ~flag);
    horizontal ? policy.setHorizontalPolicy(changed) : policy.setVerticalPolicy(changed);
    widget->setSizePolicy(policy);
}

} // namespace

void NSView::layoutSubtreeIfNeeded()
{
    NSAssertMainThread();
    settleHiddenForLayout(*this);
    if (auto* widget = qtWidget(*this)) {
        activateLayouts(*widget);
        applyConstraints(*this);
    }
    auto const views = subviews();
    for (auto const& view : views) {
        view->layoutSubtreeIfNeeded();
    }
    scheduleTrackingCheck();
}

NSSize NSView::fittingSize() const
{
    auto const* widget = qtWidget(*this);
    if (!widget) {
        return {};
    }
    if (auto* layout = widget->layout()) {
        return fromQSize(layout->totalSizeHint());
    }
    if (!m_backing->constraints.empty()) {
        return sizeFittingConstraints(*this);
    }
    return qobject_cast<QtView const*>(widget) ? NSSize {}
                                               : fromQSize(widget->sizeHint().expandedTo({ 0, 0 }));
}

void NSView::setTranslatesAutoresizingMaskIntoConstraints(bool translates)
{
    m_backing->placedByConstraints = !translates;
}

void NSView::setContentHuggingPriority(int priority, NSLayoutOrientation orientation)
{
    setPolicyFlag(*this, orientation, QSizePolicy::GrowFlag, priority < requiredPriority);
}

void NSView::setContentCompressionResistancePriority(int priority, NSLayoutOrientation orientation)
{
    setPolicyFlag(*this, orientation, QSizePolicy::ShrinkFlag, priority < requiredPriority);
}

NSLayoutAnchor NSView::leadingAnchor()
{
    return { sharedAs<NSView>(), NSLayoutAttribute::leading };
}

NSLayoutAnchor NSView::trailingAnchor()
{
    return { sharedAs<NSView>(), NSLayoutAttribute::trailing };
}

NSLayoutAnchor NSView::topAnchor()
{
    return { sharedAs<NSView>(), NSLayoutAttribute::top };
}

NSLayoutAnchor NSView::bottomAnchor()
{
    return { sharedAs<NSView>(), NSLayoutAttribute::bottom };
}

NSLayoutAnchor NSView::widthAnchor()
{
    return { sharedAs<NSView>(), NSLayoutAttribute::width };
}

NSLayoutAnchor NSView::centerYAnchor()
{
    return { sharedAs<NSView>(), NSLayoutAttribute::centerY };
}
