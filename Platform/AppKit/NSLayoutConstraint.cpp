#include "Platform/AppKit/NSLayoutConstraint.h"

#include "Platform/AppKit/NSView.h"
#include "Platform/Foundation/NSMainThread.h"
#include "Platform/Qt/ConstraintLayout.h"
#include "Platform/Qt/NSViewBacking.h"

#include <algorithm>
#include <set>

namespace {

constexpr double systemSpacing = 8;

std::shared_ptr<NSLayoutConstraint> makeConstraint(
    NSLayoutAnchor const& first, NSLayoutRelation relation, NSLayoutAnchor const& second, double constant)
{
    auto constraint = std::make_shared<NSLayoutConstraint>();
    constraint->firstView = first.view;
    constraint->firstAttribute = first.attribute;
    constraint->relation = relation;
    constraint->secondView = second.view;
    constraint->secondAttribute = second.attribute;
    constraint->hasSecond = true;
    constraint->constant = constant;
    return constraint;
}

bool isWithin(NSView const& view, NSView const& container)
{
    auto const* widget = qtWidget(view);
    auto const* outer = qtWidget(container);
    return widget && outer && (widget == outer || outer->isAncestorOf(widget));
}

/// The nearest view that is or holds both. A single view's constraint belongs to its superview,
/// which places it.
std::shared_ptr<NSView> nearestContainer(NSLayoutConstraint const& constraint)
{
    auto const first = constraint.firstView.lock();
    auto const second = constraint.secondView.lock();
    if (!first || (constraint.hasSecond && !second)) {
        return nullptr;
    }
    if (!constraint.hasSecond) {
        return first->superview();
    }
    auto container = first;
    while (container && !isWithin(*second, *container)) {
        container = container->superview();
    }
    return container;
}

} // namespace

double NSLayoutSystemSpacing()
{
    return systemSpacing;
}

void NSLayoutConstraint::activateConstraints(
    std::vector<std::shared_ptr<NSLayoutConstraint>> const& constraints)
{
    NSAssertMainThread();
    std::set<std::shared_ptr<NSView>> changed;
    for (auto const& constraint : constraints) {
        auto const container = nearestContainer(*constraint);
        if (!container) {
            continue;
        }
        auto& inForce = container->backing().constraints;
        if (std::find(inForce.begin(), inForce.end(), constraint) == inForce.end()) {
            inForce.push_back(constraint);
            changed.insert(container);
        }
    }
    for (auto const& container : changed) {
        watchConstrainedViews(*container);
    }
}

std::shared_ptr<NSLayoutConstraint> NSLayoutAnchor::constraintEqualTo(NSLayoutAnchor const& other) const
{
    return makeConstraint(*this, NSLayoutRelation::equal, other, 0);
}

std::shared_ptr<NSLayoutConstraint> NSLayoutAnchor::constraintLessThanOrEqualTo(
    NSLayoutAnchor const& other) const
{
    return makeConstraint(*this, NSLayoutRelation::lessThanOrEqual, other, 0);
}

std::shared_ptr<NSLayoutConstraint> NSLayoutAnchor::constraintEqualToConstant(double points) const
{
    auto constraint = std::make_shared<NSLayoutConstraint>();
    constraint->firstView = view;
    constraint->firstAttribute = attribute;
    constraint->constant = points;
    return constraint;
}

std::shared_ptr<NSLayoutConstraint> NSLayoutAnchor::constraintEqualToSystemSpacingAfter(
    NSLayoutAnchor const& other, double multiplier) const
{
    return makeConstraint(*this, NSLayoutRelation::equal, other, systemSpacing * multiplier);
}
