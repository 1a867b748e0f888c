#include "Platform/AppKit/NSView.h"

#include "Platform/AppKit/NSControl.h"
#include "Platform/Foundation/NSMainThread.h"
#include "Platform/Qt/ConstraintLayout.h"
#include "Platform/Qt/DrawingConversions.h"
#include "Platform/Qt/HiddenState.h"
#include "Platform/Qt/NSViewBacking.h"
#include "Platform/Qt/QtView.h"

#include <QLayout>

#include <algorithm>
#include <cmath>

NSView::NSView()
    : NSView(std::make_unique<NSViewBacking>(new QtView))
{
}

NSView::NSView(std::unique_ptr<NSViewBacking> backing)
    : m_backing(std::move(backing))
{
    NSAssertMainThread();
    m_backing->attach(*this);
}

NSView::~NSView()
{
    NSAssertMainThread();
}

void NSView::initWithFrame(NSRect frame)
{
    setFrame(frame);
}

bool NSView::initWithCoder(NSCoder const& coder)
{
    return !coder.failed();
}

std::shared_ptr<NSView> NSView::superview() const
{
    if (auto superview = m_backing->superview.lock()) {
        return superview;
    }
    auto const* widget = qtWidget(*this);
    auto* enclosing = widget && !widget->isWindow() ? enclosingViewOfWidget(widget->parentWidget()) : nullptr;
    return enclosing ? enclosing->sharedAs<NSView>() : nullptr;
}

std::vector<std::shared_ptr<NSView>> const& NSView::subviews() const
{
    return m_backing->subviews;
}

void NSView::addSubview(std::shared_ptr<NSView> const& added)
{
    NSAssertMainThread();
    auto const view = added; // The reference may be one of the list that is about to change.
    if (!view || view.get() == this) {
        return;
    }
    if (auto const former = view->m_backing->superview.lock()) {
        std::erase(former->m_backing->subviews, view);
    }
    m_backing->subviews.push_back(view);
    view->m_backing->superview = sharedAs<NSView>();
    auto* widget = qtWidget(*view);
    auto* parent = m_backing->subviewParent();
    if (!widget || !parent) {
        return;
    }
    // An interface description has put the widget somewhere inside already.
    if (!m_backing->widget->isAncestorOf(widget)) {
        widget->setParent(parent);
        if (!view->isHidden()) {
            widget->show();
        }
    }
}

void NSView::removeFromSuperview()
{
    NSAssertMainThread();
    auto const keep = sharedAs<NSView>();
    if (auto const former = m_backing->superview.lock()) {
        std::erase(former->m_backing->subviews, keep);
    }
    m_backing->superview.reset();
    if (m_backing->widget) {
        m_backing->widget->setParent(nullptr);
    }
}

std::shared_ptr<NSView> NSView::descendantWithIdentifier(std::string_view identifier) const
{
    for (auto const& view : m_backing->subviews) {
        if (view->identifier() == identifier) {
            return view;
        }
        if (auto found = view->descendantWithIdentifier(identifier)) {
            return found;
        }
    }
    return nullptr;
}

std::string const& NSView::identifier() const
{
    return m_backing->identifier;
}

void NSView::setIdentifier(std::string identifier)
{
    m_backing->identifier = std::move(identifier);
}

/// Where the corner of the widget's own parent lies in the superview.
static QPoint originOfParent(NSView const& view)
{
    auto const superview = view.superview();
    auto const* outer = superview ? qtWidget(*superview) : nullptr;
    auto const* parent = qtWidget(view)->parentWidget();
    return outer && parent && outer->isAncestorOf(parent) ? parent->mapTo(outer, QPoint()) : QPoint();
}

NSRect NSView::frame() const
{
    auto const* widget = qtWidget(*this);
    return widget ? fromQRectF(QRectF(widget->geometry()).translated(originOfParent(*this))) : NSRect {};
}

void NSView::setFrame(NSRect frame)
{
    NSAssertMainThread();
    if (auto* widget = qtWidget(*this)) {
        widget->setGeometry(toQRectF(frame).translated(-originOfParent(*this)).toRect());
    }
}

NSRect NSView::visibleRect() const
{
    auto const* widget = qtWidget(*this);
    if (!widget || !widget->isVisible()) {
        return {};
    }
    QRect visible = widget->rect();
    for (auto const* outer = widget; !outer->isWindow() && outer->parentWidget();) {
        outer = outer->parentWidget();
        visible &= outer->rect().translated(-widget->mapTo(outer, QPoint()));
    }
    return visible.isEmpty() ? NSRect {} : fromQRectF(visible);
}

bool NSView::isHidden() const
{
    return m_backing->hidden;
}

void NSView::setHidden(bool hidden)
{
    NSAssertMainThread();
    if (m_backing->hidden == hidden) {
        return;
    }
    m_backing->hidden = hidden;
    auto* const widget = qtWidget(*this);
    if (widget && dynamic_cast<NSControl*>(this) && !widget->property("givesWayWhenHidden").toBool()) {
        // A control that is hidden leaves its place empty: its neighbours stay where they are.
        auto policy = widget->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        widget->setSizePolicy(policy);
    }
    applyHidden(*this);
}

void NSView::setNeedsDisplay(bool needed)
{
    NSAssertMainThread();
    if (auto* widget = qtWidget(*this); widget && needed) {
        widget->update();
    }
}

void NSView::drawRect(NSRect) { }

std::string NSView::toolTip() const
{
    auto const* widget = qtWidget(*this);
    return widget ? fromQString(widget->toolTip()) : std::string();
}

void NSView::setToolTip(std::string text)
{
    NSAssertMainThread();
    if (auto* widget = qtWidget(*this)) {
        widget->setToolTip(toQString(text));
    }
}

std::string NSView::accessibilityLabel() const
{
    auto const* widget = qtWidget(*this);
    return widget ? fromQString(widget->accessibleName()) : std::string();
}

void NSView::setAccessibilityLabel(std::string text)
{
    NSAssertMainThread();
    if (auto* widget = qtWidget(*this)) {
        widget->setAccessibleName(toQString(text));
    }
}
