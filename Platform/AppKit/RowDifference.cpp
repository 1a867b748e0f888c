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
    bool areSomeReplaced { false }; ///< Somewhere the lists did not agree again within reach.

    bool isTooMuch() const { return before.size() + after.size() > 2 * lookAhead; }
};

/// Steps over the fewest rows of one side after which both lists agree again. Where that is further than
/// the walk looks, one row of each side is taken for replaced.
void skipToNextRun(Middle const& middle, std::size_t& i, std::size_t& j, Unmatched& unmatched)
{
    for (std::size_t skip = 1; skip <= lookAhead; ++skip) {
        if (i + skip < middle.before.size() && middle.before[i + skip] == middle.after[j]) {
            for (auto const end = i + skip; i < end; ++i) {
                unmatched.before.push_back(i);
            }
            return;
        }
        if (j + skip < middle.after.size() && middle.after[j + skip] == middle.before[i]) {
            for (auto const end = j + skip; j < end; ++j) {
                unmatched.after.push_back(j);
            }
            return;
        }
    }
    unmatched.before.push_back(i++);
    unmatched.after.push_back(j++);
    unmatched.areSomeReplaced = true;
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
        } else {
            skipToNextRun(middle, i, j, unmatched);
            if (unmatched.isTooMuch()) {
                return std::nullopt;
            }
        }
    }
    for (; i < middle.before.size() && !unmatched.isTooMuch(); ++i) {
        unmatched.before.push_back(i);
    }
    for (; j < middle.after.size() && !unmatched.isTooMuch(); ++j) {
        unmatched.after.push_back(j);
    }
    return unmatched.isTooMuch() ? std::nullopt : std::optional(std::move(unmatched));
}

/// The difference that the walk found, when it is certain to be a smallest one. A row that is
/// unmatched on both sides crosses a row that was matched, so at least one move is needed: a walk
/// that finds no more than one is right. With more of them, or where a row taken for replaced has only
/// moved, another choice might have been better.
std::optional<RowDifference> differenceOfFewChanges(Middle const& middle)
{
    auto unmatched = walkEqualRuns(middle);
    if (!unmatched) {
        return std::nullopt;
    }
    RowDifference difference;
    auto inserted = std::move(unmatched->after);
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
    auto const mostMoves = unmatched->areSomeReplaced ? 0u : 1u;
    return difference.moved.size() > mostMoves ? std::nullopt : std::optional(std::move(difference));
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

/// Finds rows by their token. Few of them are looked through, which is quicker than a table.
class RowPlaces {
public:
    explicit RowPlaces(Rows rows)
        : m_rows(rows)
    {
        if (m_rows.size() > fewRows) {
            m_places.reserve(m_rows.size());
            for (std::size_t i = 0; i < m_rows.size(); ++i) {
                m_places.emplace(m_rows[i].token, i);
            }
        }
    }
    /// The number of rows where there is none of that token.
    std::size_t find(std::uint64_t token) const
    {
        if (m_rows.size() > fewRows) {
            auto const place = m_places.find(token);
            return place == m_places.end() ? m_rows.size() : place->second;
        }
        auto const isIt = [token](NSTableRow const& row) { return row.token == token; };
        return static_cast<std::size_t>(std::find_if(m_rows.begin(), m_rows.end(), isIt) - m_rows.begin());
    }

private:
    static constexpr std::size_t fewRows = 24;
    Rows m_rows;
    std::unordered_map<std::uint64_t, std::size_t> m_places;
};

RowDifference differenceByTable(Middle const& middle)
{
    RowPlaces const places(middle.before);

    RowDifference difference;
    std::vector<RowDifference::Move> kept;
    std::vector<bool> stays(middle.before.size());
    for (std::size_t j = 0; j < middle.after.size(); ++j) {
        auto const place = places.find(middle.after[j].token);
        if (place == stays.size() || stays[place] || middle.before[place] != middle.after[j]) {
            difference.inserted.push_back(j);
            continue;
        }
        kept.push_back({ place, j });
        stays[place] = true;
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
    auto few = differenceOfFewChanges(middle);
    auto difference = few ? std::move(*few) : differenceByTable(middle);
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
