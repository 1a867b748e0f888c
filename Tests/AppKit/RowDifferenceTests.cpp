#include "Platform/AppKit/RowDifference.h"

#include "Tests/Support/Sequences.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <set>

namespace {

using Tokens = std::vector<std::uint64_t>;

std::vector<NSTableRow> rowsOf(Tokens const& tokens)
{
    std::vector<NSTableRow> rows;
    for (auto const token : tokens) {
        rows.push_back({ token });
    }
    return rows;
}

RowDifference difference(Tokens const& before, Tokens const& after)
{
    return rowDifference(rowsOf(before), rowsOf(after));
}

/// The old list after the steps: rows are taken out, then put in at their new indices, ascending.
Tokens applied(RowDifference const& steps, Tokens const& before, Tokens const& after)
{
    std::set<std::size_t> gone(steps.removed.begin(), steps.removed.end());
    std::vector<std::pair<std::size_t, std::uint64_t>> placed;
    for (auto const& move : steps.moved) {
        gone.insert(move.from);
        placed.emplace_back(move.to, before[move.from]);
    }
    for (auto const index : steps.inserted) {
        placed.emplace_back(index, after[index]);
    }
    std::sort(placed.begin(), placed.end());
    Tokens result;
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (!gone.count(i)) {
            result.push_back(before[i]);
        }
    }
    for (auto const& [index, token] : placed) {
        result.insert(result.begin() + static_cast<std::ptrdiff_t>(std::min(index, result.size())), token);
    }
    return result;
}

/// The length of a longest common subsequence, by the table of all pairs: slow, and certain.
std::size_t longestCommon(Tokens const& before, Tokens const& after)
{
    std::vector<std::size_t> row(after.size() + 1);
    for (auto const token : before) {
        std::size_t diagonal = 0;
        for (std::size_t j = 0; j < after.size(); ++j) {
            auto const above = row[j + 1];
            row[j + 1] = token == after[j] ? diagonal + 1 : std::max(row[j + 1], row[j]);
            diagonal = above;
        }
    }
    return row.back();
}

std::size_t stepCount(RowDifference const& steps)
{
    return steps.removed.size() + steps.inserted.size() + steps.moved.size();
}

Tokens counting(std::size_t count)
{
    Tokens tokens(count);
    std::iota(tokens.begin(), tokens.end(), 1);
    return tokens;
}

} // namespace

TEST(RowDifference, namesTheRowsThatComeGoAndMove)
{
    EXPECT_EQ(difference({ 1, 2, 3 }, { 1, 2, 3 }), (RowDifference {}));
    EXPECT_EQ(difference({}, { 1, 2 }), (RowDifference { .removed = {}, .inserted = { 0, 1 }, .moved = {} }));
    EXPECT_EQ(difference({ 1, 2, 3, 4 }, { 1, 4, 5 }),
        (RowDifference { .removed = { 1, 2 }, .inserted = { 2 }, .moved = {} }));
    EXPECT_EQ(difference({ 1, 2, 3, 4 }, { 2, 3, 4, 1 }),
        (RowDifference { .removed = {}, .inserted = {}, .moved = { { 0, 3 } } }));
}

TEST(RowDifference, takesARotationByOneForOneMoveAtAnyLength)
{
    for (std::size_t const count : { 2u, 40u, 5000u }) {
        auto const before = counting(count);
        auto left = before;
        std::rotate(left.begin(), left.begin() + 1, left.end());
        EXPECT_EQ(difference(before, left).moved.size(), 1u) << count;
        EXPECT_EQ(difference(left, before).moved.size(), 1u) << count;
    }
}

TEST(RowDifference, takesAHeaderForAnotherRowThanAnItemOfTheSameToken)
{
    std::vector<NSTableRow> const item { { .token = 1, .isGroupRow = false } };
    std::vector<NSTableRow> const header { { .token = 1, .isGroupRow = true } };
    EXPECT_EQ(
        rowDifference(item, header), (RowDifference { .removed = { 0 }, .inserted = { 0 }, .moved = {} }));
}

/// A list and another one with some of its rows and some new ones, from few edits or in any order.
static std::pair<Tokens, Tokens> anyTwoLists()
{
    auto const size = *rc::gen::inRange<std::size_t>(0, 100);
    auto const before = *rc::gen::resize(
        static_cast<int>(size), rc::gen::unique<Tokens>(rc::gen::inRange<std::uint64_t>(1, 300)));
    if (*rc::gen::arbitrary<bool>()) {
        auto const after = rc::gen::unique<Tokens>(rc::gen::inRange<std::uint64_t>(1, 300));
        return { before, *rc::gen::resize(static_cast<int>(size), after) };
    }
    auto after = before;
    auto const place
        = [&] { return static_cast<std::ptrdiff_t>(*rc::gen::inRange<std::size_t>(0, after.size() + 1)); };
    for (auto const kind : *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 3))) {
        auto token = 1000 + after.size() + static_cast<std::uint64_t>(kind);
        if (kind != 0 && !after.empty()) {
            auto const from = after.begin() + place() % static_cast<std::ptrdiff_t>(after.size());
            token = *from;
            after.erase(from);
        }
        if (kind != 1 && std::ranges::find(after, token) == after.end()) {
            after.insert(after.begin() + place(), token);
        }
    }
    return { before, after };
}

TEST(RowDifference, isRightAndSmallestForAnyTwoLists)
{
    checkSequences("any two lists", 1500, [] {
        auto const [before, after] = anyTwoLists();
        auto const steps = difference(before, after);
        std::set<std::uint64_t> const old(before.begin(), before.end());
        auto const kept = static_cast<std::size_t>(
            std::ranges::count_if(after, [&](auto token) { return old.count(token) > 0; }));
        RC_ASSERT(applied(steps, before, after) == after);
        RC_ASSERT(steps.removed.size() == before.size() - kept);
        RC_ASSERT(steps.inserted.size() == after.size() - kept);
        RC_ASSERT(steps.moved.size() == kept - longestCommon(before, after));
    });
}

TEST(RowDifference, endsSoonForALongListThatIsReversedOrReplaced)
{
    auto const before = counting(50'000);
    Tokens const reversed(before.rbegin(), before.rend());
    EXPECT_EQ(difference(before, reversed).moved.size(), before.size() - 1);
    Tokens others = before;
    for (auto& token : others) {
        token += before.size();
    }
    EXPECT_EQ(stepCount(difference(before, others)), 2 * before.size());
}
