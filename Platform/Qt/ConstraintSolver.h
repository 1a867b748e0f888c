#pragma once

#include "Platform/AppKit/NSLayoutConstraint.h"
#include "Platform/Foundation/Export.h"

#include <functional>
#include <optional>
#include <vector>

/// Finds places for boxes from a handful of constraints, by going from what is known to what
/// follows from it, in the order in which the constraints were given. What no constraint settles gets the
/// box's natural size and the place at the beginning. Of constraints that contradict each other the
/// first one wins. x runs in reading direction, y downwards.
struct PLATFORM_API ConstraintSolver {
    struct Axis {
        std::optional<double> start {};
        std::optional<double> end {};
        std::optional<double> length {};
    };
    struct Box {
        Axis horizontal {};
        Axis vertical {};
        /// Natural sizes; without them the box keeps what it has (the container, other fixed boxes).
        std::function<double()> naturalWidth {};
        std::function<double(double width)> naturalHeight {};
    };
    struct Rule {
        std::size_t first { 0 };
        NSLayoutAttribute firstAttribute { NSLayoutAttribute::leading };
        NSLayoutRelation relation { NSLayoutRelation::equal };
        std::optional<std::size_t> second {};
        NSLayoutAttribute secondAttribute { NSLayoutAttribute::leading };
        double constant { 0 };
    };

    std::vector<Box> boxes;
    std::vector<Rule> rules;

    void solve();

private:
    void propagate();
    bool follow(Rule const& rule);
    double greatestWidth(std::size_t box) const;
    std::optional<double> value(std::size_t box, NSLayoutAttribute attribute) const;
    bool setValue(std::size_t box, NSLayoutAttribute attribute, double value);
};
