#pragma once

#include "Platform/Foundation/NSObject.h"

#include <vector>

class NSView;

enum class NSLayoutAttribute { leading, trailing, top, bottom, width, centerY };
enum class NSLayoutRelation { equal, lessThanOrEqual };
enum class NSLayoutOrientation { horizontal, vertical };

/// The distance, in points, that the platform puts between neighbouring controls.
PLATFORM_API double NSLayoutSystemSpacing();

/// first (relation) second + constant; `second` null: first (relation) constant. Leading and
/// trailing follow the direction of the interface.
struct PLATFORM_API NSLayoutConstraint final : public NSObject {
    std::weak_ptr<NSView> firstView;
    NSLayoutAttribute firstAttribute { NSLayoutAttribute::leading };
    NSLayoutRelation relation { NSLayoutRelation::equal };
    std::weak_ptr<NSView> secondView;
    NSLayoutAttribute secondAttribute { NSLayoutAttribute::leading };
    bool hasSecond { false };
    double constant { 0 };

    /// Puts the constraints in force in the nearest view that holds all views they name.
    static void activateConstraints(std::vector<std::shared_ptr<NSLayoutConstraint>> const& constraints);
};

/// One edge or measure of a view, to make constraints from.
struct PLATFORM_API NSLayoutAnchor {
    std::shared_ptr<NSView> view;
    NSLayoutAttribute attribute;

    std::shared_ptr<NSLayoutConstraint> constraintEqualTo(NSLayoutAnchor const& other) const;
    std::shared_ptr<NSLayoutConstraint> constraintLessThanOrEqualTo(NSLayoutAnchor const& other) const;
    std::shared_ptr<NSLayoutConstraint> constraintEqualToConstant(double points) const;
    /// This anchor stands the standard spacing, times `multiplier`, after or below the other.
    std::shared_ptr<NSLayoutConstraint> constraintEqualToSystemSpacingAfter(
        NSLayoutAnchor const& other, double multiplier) const;
};
