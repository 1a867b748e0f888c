#pragma once

#include <vector>

/// How the user's coordinates of an axis become design coordinates.
struct AxisMap {
    struct Entry {
        double user { 0 };
        double design { 0 };
        bool operator==(Entry const&) const = default;
    };
    std::vector<Entry> entries; ///< By ascending user coordinate, none twice. Empty: the identity.
    bool onlyExact { false }; ///< Of a discrete axis: other coordinates pass unchanged.

    /// Piecewise linear; beyond an end shifted as that end is. 100 -> 150 and 900 -> 850 give 50 -> 100.
    double designFromUser(double user) const;
};

/// Entries in any order, brought into theirs; of several for one user coordinate the first stays,
/// and `hadRepeated` tells.
AxisMap makeAxisMap(std::vector<AxisMap::Entry> entries, bool onlyExact, bool& hadRepeated);
