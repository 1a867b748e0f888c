#include "Platform/AppKit/RowDifference.h"

#include <algorithm>
#include <unordered_map>

namespace {

using Rows = std::span<NSTableRow const>;

/// How far the walk looks ahead for the place where both lists agree again. Further away, or with
/// more differences than this, a table of all rows is the cheaper way.
constexpr std::size_t lookAhead = 32;

/// Both lists without what they have in common at their ends; `start` rows were cut off in front.
struct Middle {
    Rows before;
    Rows after;
    std::size_t start { 0 };
};

Middle middleOf(Rows before, Rows after)
{
    std::size_t const shorter = std::min(before.size(), after.size());
    std::size_t start = 0;
    while (start < shorter && before[start] == after[start]) {
        ++start;
    }
    std::size_t end = 0;
    while (end < shorter - start && before[before.size() - 1 - end] == after[after.size() - 1 - end]) {
        ++end;
    }
    return { before.subspan(start, before.size() - start - end),
        after.subspan(start, after.size() - start - end), start };
}

/// The rows that a walk over runs of equal rows found on one side only.
struct Unmatched {
    std::vector<std::size_t> before;
    std::vector<std::size_t> after;

    bool isTooMuch() const { return before.size() + after.size() > 2 * lookAhead; }
};

/// Steps over the fewest rows of one side after which both lists agree again. False when that is
/// further than the walk looks.
bool skipToNextRun(Middle const& middle, std::size_t& i, std::size_t& j, Unmatched& unmatched)
{
    for (std::size_t skip = 1; skip <= lookAhead; ++skip) {
        if (i + skip < middle.before.size() && middle.before[i + skip] == middle.after[j]) {
            for (auto const end = i + skip; i < end; ++i) {
                unmatched.before.push_back(i);
            }
            return true;
        }
        if (j + skip < middle.after.size() && middle.after[j + skip] == middle.before[i]) {
            for (auto const end = j + skip; j < end; ++j) {
                unmatched.after.push_back(j);
            }
            return true;
        }
    }
    return false;
}

std::optional<Unmatched> walkEqualRuns(Middle const& middle)
{
    Unmatched unmatched;
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < middle.before.size() && j < middle.after.size()) {
        if (middle.before[i] == middle.after[j]) {
            ++i;
            ++j;
        } else if (!skipToNextRun(middle, i, j, unmatched) || unmatched.isTooMuch()) {
            return std::nullopt;
        }
    }
    for (; i < middle.before.size() && !unmatched.isTooMuch(); ++i) {
        unmatched.before.push_back(i);
    }
    for (; j < middle.after.size() && !unmatched.isTooMuch(); ++j) {
        unmatched.after.push_back(j);
    }
    return unmatched.isTooMuch() ? std::nullopt : std::optional(unmatched);
}

/// The difference that the walk found, when it is certain to be a smallest one. A row that is
/// unmatched on both sides crosses a row that was matched, so at least one move is needed: a walk
/// that finds no more than one is right. With more of them another choice might have been better.
std::optional<RowDifference> differenceOfFewChanges(Middle const& middle)
{
    auto const unmatched = walkEqualRuns(middle);
    if (!unmatched) {
        return std::nullopt;
    }
    RowDifference difference;
    auto inserted = unmatched->after;
    for (std::size_t const from : unmatched->before) {
        auto const to = std::find_if(inserted.begin(), inserted.end(),
            [&](std::size_t j) { return middle.after[j] == middle.before[from]; });
        if (to == inserted.end()) {
            difference.removed.push_back(from);
        } else {
            difference.moved.push_back({ from, *to });
            inserted.erase(to);
        }
    }
    difference.inserted = std::move(inserted);
    return difference.moved.size() > 1 ? std::nullopt : std::optional(difference);
}

/// Marks the members of a longest ascending subsequence.
std::vector<bool> longestAscending(std::vector<RowDifference::Move> const& pairs)
{
    std::vector<std::size_t> tails; // The pair that ends the best run of each length.
    std::vector<std::size_t> previous(pairs.size());
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        auto const place = std::lower_bound(tails.begin(), tails.end(), pairs[i].from,
            [&](std::size_t tail, std::size_t from) { return pairs[tail].from < from; });
        previous[i] = place == tails.begin() ? pairs.size() : *std::prev(place);
        if (place == tails.end()) {
            tails.push_back(i);
        } else {
            *place = i;
        }
    }
    std::vector<bool> marked(pairs.size());
    for (std::size_t i = tails.empty() ? pairs.size() : tails.back(); i < pairs.size(); i = previous[i]) {
        marked[i] = true;
    }
    return marked;
}

RowDifference differenceByTable(Middle const& middle)
{
    constexpr auto used = static_cast<std::size_t>(-1);
    std::unordered_map<std::uint64_t, std::size_t> places;
    places.reserve(middle.before.size());
    for (std::size_t i = 0; i < middle.before.size(); ++i) {
        places.emplace(middle.before[i].token, i);
    }

    RowDifference difference;
    std::vector<RowDifference::Move> kept;
    std::vector<bool> stays(middle.before.size());
    for (std::size_t j = 0; j < middle.after.size(); ++j) {
        auto const place = places.find(middle.after[j].token);
        if (place == places.end() || place->second == used
            || middle.before[place->second] != middle.after[j]) {
            difference.inserted.push_back(j);
            continue;
        }
        kept.push_back({ place->second, j });
        stays[place->second] = true;
        place->second = used;
    }
    for (std::size_t i = 0; i < stays.size(); ++i) {
        if (!stays[i]) {
            difference.removed.push_back(i);
        }
    }
    auto const inOrder = longestAscending(kept);
    for (std::size_t k = 0; k < kept.size(); ++k) {
        if (!inOrder[k]) {
            difference.moved.push_back(kept[k]);
        }
    }
    return difference;
}

} // namespace

RowDifference rowDifference(Rows before, Rows after)
{
    auto const middle = middleOf(before, after);
    auto const few = differenceOfFewChanges(middle);
    auto difference = few ? *few : differenceByTable(middle);
    for (auto& index : difference.removed) {
        index += middle.start;
    }
    for (auto& index : difference.inserted) {
        index += middle.start;
    }
    for (auto& move : difference.moved) {
        move.from += middle.start;
        move.to += middle.start;
    }
    return difference;
}
