#include "Typloom/TyploomApp/NameSearch.h"

#include <algorithm>
#include <numeric>

namespace {
constexpr std::size_t longestList = 20;
/// Names in files can be of any length; no more of one is compared or shown.
constexpr std::size_t longestName = 64;

double replacementCost(char left, char right)
{
    auto const lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    if (left == right) {
        return 0;
    }
    return lower(left) == lower(right) ? 0.5 : 1;
}

std::string quoted(std::string_view name)
{
    return name.size() <= longestName ? "'" + std::string(name) + "'"
                                      : "'" + std::string(name.substr(0, longestName)) + "…'";
}
} // namespace

double EditDistance(std::string_view left, std::string_view right)
{
    left = left.substr(0, longestName);
    right = right.substr(0, longestName);
    std::vector<double> row(right.size() + 1);
    std::iota(row.begin(), row.end(), 0.0);
    for (std::size_t i = 0; i < left.size(); ++i) {
        auto diagonal = row[0];
        row[0] = static_cast<double>(i + 1);
        for (std::size_t j = 0; j < right.size(); ++j) {
            auto const replaced = diagonal + replacementCost(left[i], right[j]);
            diagonal = row[j + 1];
            row[j + 1] = std::min({ replaced, row[j] + 1, row[j + 1] + 1 });
        }
    }
    return row.back();
}

std::string ListOfNamesLike(std::string const& wanted, std::span<std::string const> names)
{
    if (names.empty()) {
        return "none";
    }
    std::vector<std::pair<double, std::size_t>> order; // In the names' own order while they are few.
    for (std::size_t i = 0; i < names.size(); ++i) {
        order.emplace_back(names.size() <= longestList ? 0 : EditDistance(wanted, names[i]), i);
    }
    auto const shown = std::min(longestList, order.size());
    std::ranges::partial_sort(order, order.begin() + static_cast<std::ptrdiff_t>(shown));
    std::string text;
    for (std::size_t i = 0; i < shown; ++i) {
        text += (i > 0 ? ", " : "") + quoted(names[order[i].second]);
    }
    return shown == names.size() ? text : text + " and " + std::to_string(names.size() - shown) + " more";
}
