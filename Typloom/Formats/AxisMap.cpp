#include "Typloom/Formats/AxisMap.h"

#include <algorithm>

double AxisMap::designFromUser(double user) const
{
    auto const after = std::lower_bound(entries.begin(), entries.end(), user,
        [](Entry const& entry, double value) { return entry.user < value; });
    if (after != entries.end() && after->user == user) {
        return after->design;
    }
    if (entries.empty() || onlyExact) {
        return user;
    }
    if (after == entries.begin()) {
        return user + entries.front().design - entries.front().user;
    }
    if (after == entries.end()) {
        return user + entries.back().design - entries.back().user;
    }
    auto const before = std::prev(after);
    double const share = (user - before->user) / (after->user - before->user);
    return before->design + share * (after->design - before->design);
}

AxisMap makeAxisMap(std::vector<AxisMap::Entry> entries, bool onlyExact, bool& hadRepeated)
{
    std::stable_sort(entries.begin(), entries.end(),
        [](AxisMap::Entry const& left, AxisMap::Entry const& right) { return left.user < right.user; });
    auto const repeated = std::unique(entries.begin(), entries.end(),
        [](AxisMap::Entry const& left, AxisMap::Entry const& right) { return left.user == right.user; });
    hadRepeated = repeated != entries.end();
    entries.erase(repeated, entries.end());
    return { std::move(entries), onlyExact };
}
