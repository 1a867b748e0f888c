#include "Platform/Qt/ConstraintSolver.h"

#include <algorithm>
#include <limits>

namespace {

/// Two of start, end and length give the third.
bool complete(ConstraintSolver::Axis& axis)
{
    if (axis.start && axis.end && !axis.length) {
        axis.length = *axis.end - *axis.start;
    } else if (axis.start && axis.length && !axis.end) {
        axis.end = *axis.start + *axis.length;
    } else if (axis.end && axis.length && !axis.start) {
        axis.start = *axis.end - *axis.length;
    } else {
        return false;
    }
    return true;
}

bool setIfUnknown(std::optional<double>& place, double value)
{
    if (place) {
        return false;
    }
    place = value;
    return true;
}

} // namespace

std::optional<double> ConstraintSolver::value(std::size_t box, NSLayoutAttribute attribute) const
{
    auto const& [horizontal, vertical, width, height] = boxes[box];
    switch (attribute) {
    case NSLayoutAttribute::leading:
        return horizontal.start;
    case NSLayoutAttribute::trailing:
        return horizontal.end;
    case NSLayoutAttribute::width:
        return horizontal.length;
    case NSLayoutAttribute::top:
        return vertical.start;
    case NSLayoutAttribute::bottom:
        return vertical.end;
    case NSLayoutAttribute::centerY:
        return vertical.start && vertical.length ? std::optional(*vertical.start + *vertical.length / 2)
                                                 : std::nullopt;
    }
    return {};
}

bool ConstraintSolver::setValue(std::size_t box, NSLayoutAttribute attribute, double value)
{
    auto& [horizontal, vertical, width, height] = boxes[box];
    switch (attribute) {
    case NSLayoutAttribute::leading:
        return !(horizontal.end && horizontal.length) && setIfUnknown(horizontal.start, value);
    case NSLayoutAttribute::trailing:
        return setIfUnknown(horizontal.end, value);
    case NSLayoutAttribute::width:
        return setIfUnknown(horizontal.length, value);
    case NSLayoutAttribute::top:
        return setIfUnknown(vertical.start, value);
    case NSLayoutAttribute::bottom:
        return setIfUnknown(vertical.end, value);
    case NSLayoutAttribute::centerY:
        return vertical.length && setIfUnknown(vertical.start, value - *vertical.length / 2);
    }
    return false;
}

bool ConstraintSolver::follow(Rule const& rule)
{
    if (rule.relation != NSLayoutRelation::equal) {
        return false;
    }
    if (!rule.second) {
        return setValue(rule.first, rule.firstAttribute, rule.constant);
    }
    if (auto const known = value(*rule.second, rule.secondAttribute)) {
        return setValue(rule.first, rule.firstAttribute, *known + rule.constant);
    }
    if (auto const known = value(rule.first, rule.firstAttribute)) {
        return setValue(*rule.second, rule.secondAttribute, *known - rule.constant);
    }
    return false;
}

void ConstraintSolver::propagate()
{
    bool changed = true;
    while (changed) {
        changed = false;
        for (auto& box : boxes) {
            changed = complete(box.horizontal) || changed;
            changed = complete(box.vertical) || changed;
        }
        for (auto const& rule : rules) {
            changed = follow(rule) || changed;
        }
    }
}

double ConstraintSolver::greatestWidth(std::size_t box) const
{
    double greatest = std::numeric_limits<double>::infinity();
    for (auto const& rule : rules) {
        if (rule.relation != NSLayoutRelation::lessThanOrEqual || rule.first != box) {
            continue;
        }
        auto const bound = rule.second ? value(*rule.second, rule.secondAttribute) : std::optional(0.0);
        if (!bound) {
            continue;
        }
        if (rule.firstAttribute == NSLayoutAttribute::width) {
            greatest = std::min(greatest, *bound + rule.constant);
        } else if (rule.firstAttribute == NSLayoutAttribute::trailing) {
            greatest = std::min(greatest, *bound + rule.constant - boxes[box].horizontal.start.value_or(0));
        }
    }
    return std::max(greatest, 0.0);
}

void ConstraintSolver::solve()
{
    propagate();
    for (std::size_t index = 0; index < boxes.size(); ++index) {
        auto& box = boxes[index];
        if (box.naturalWidth && !box.horizontal.length) {
            box.horizontal.length = std::min(box.naturalWidth(), greatestWidth(index));
            propagate();
        }
        if (box.naturalHeight && !box.vertical.length) {
            box.vertical.length = box.naturalHeight(box.horizontal.length.value_or(0));
            propagate();
        }
    }
    for (auto& box : boxes) {
        if (box.naturalWidth && !box.horizontal.start) {
            box.horizontal.start = 0;
        }
        if (box.naturalHeight && !box.vertical.start) {
            box.vertical.start = 0;
        }
        propagate();
    }
}
