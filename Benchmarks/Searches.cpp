#include "Benchmarks/Floors.h"
#include "Benchmarks/Themes.h"

#include "Moravel/Model/Matching.h"
#include "Platform/AppKit/NSTableViewDiffableDataSource.h"
#include "Platform/AppKit/RowDifference.h"

#include <algorithm>
#include <numeric>

namespace {

TLLocation locationOf(std::vector<double> const& place)
{
    TLLocation location;
    for (std::size_t axis = 0; axis < place.size(); ++axis) {
        location[axisName(axis)] = place[axis];
    }
    return location;
}

void searchMasters(Table& table, FamilySize const& size, TLFont const& font)
{
    FlatPass const flat(size);
    struct Case {
        char const* name;
        std::vector<double> place;
        std::size_t found;
    };
    auto nowhere = flat.placeOf(flat.countOfMasters() - 1);
    nowhere.back() += 0.5;
    for (auto const& [name, place, found] : { Case { "first", flat.placeOf(0), 0 },
             Case { "last", flat.placeOf(flat.countOfMasters() - 1), flat.countOfMasters() - 1 },
             Case { "none", nowhere, flat.countOfMasters() } }) {
        auto const location = locationOf(place);
        auto const target = std::string(" : one full flat pass");
        auto const master = matchingMaster(font, location);
        if (flat.find(place) != found
            || (master ? font.indexOfObjectInAllMasters(master) : flat.countOfMasters()) != found) {
            table.add({ "  found another master", size.name, "", "", "", "", Row::Verdict::missed });
        }
        volatile std::size_t sink = 0;
        // The location's texts are looked up once for a search, which alone is more than a pass at T.
        Work const ours { [&] { sink = sink + (matchingMaster(font, location) != nullptr); } };
        Work const full { [&] { sink = sink + flat.findByFullPass(place); } };
        if (size.masters < 100) {
            table.addTime(
                "master at a location: " + std::string(name), size.name, ours, size.masters < 10 ? 2 : 10);
        } else {
            table.addComparison(
                "master at a location: " + std::string(name) + target, size.name, ours, full, 1);
        }
    }
}

void searchLayers(Table& table, FamilySize const& size, TLFont const& font)
{
    auto const glyph = font.glyphForName("big");
    auto const fontAxes = font.canonicalAxes().size();
    FlatPass const flat({ "", fontAxes + size.glyphAxes, size.layers, size.layers, 0 });
    auto const none = locationOf(std::vector<double>(fontAxes, 0.25));
    TLLocation last;
    for (auto const& [axisId, value] : layerPlace(size, size.layers - size.masters - 1)) {
        last[axisId] = value;
    }
    auto const found = matchingLayer(*glyph, last, "nobody's");
    if (!found || found != glyph->layers().entries().back().second
        || matchingLayer(*glyph, none, "nobody's")) {
        table.add({ "  found another layer", size.name, "", "", "", "", Row::Verdict::missed });
    }
    volatile std::size_t sink = 0;
    auto const place = flat.placeOf(0);
    // Of the place by its identifiers, as ours gets it.
    Work const full { [&] {
        auto sought = place;
        for (std::size_t axis = 0; axis < fontAxes; ++axis) {
            sought[axis] = TLLocationNumber(none, font.canonicalAxes()[axis]->axisId()).value_or(0);
        }
        sink = sink + flat.findByFullPass(sought);
    } };
    using Case = std::pair<char const*, TLLocation const*>;
    for (auto const& [name, location] : { Case { "last", &last }, Case { "none", &none } }) {
        table.addComparison("layer at a location: " + std::string(name) + " : full pass", size.name,
            { [&] { sink = sink + (matchingLayer(*glyph, *location, "nobody's") != nullptr); } }, full,
            size.masters < 100 ? 4 : 1);
    }
}

std::vector<NSTableRow> rowsOf(std::vector<std::uint64_t> const& tokens)
{
    std::vector<NSTableRow> rows;
    std::ranges::transform(tokens, std::back_inserter(rows), [](auto token) { return NSTableRow { token }; });
    return rows;
}

struct Change {
    char const* name;
    std::function<void(std::vector<std::uint64_t>&)> apply;
};

Change const changes[] = {
    { "none", [](auto&) {} },
    { "few",
        [](auto& tokens) {
            tokens.erase(tokens.begin() + 1);
            tokens.insert(tokens.begin() + std::ptrdiff_t(tokens.size() / 2), 1'000'001);
            tokens.back() = 1'000'002;
        } },
    { "rotated by one", [](auto& tokens) { std::ranges::rotate(tokens, tokens.begin() + 1); } },
    { "reversed", [](auto& tokens) { std::ranges::reverse(tokens); } },
    { "all new",
        [](auto& tokens) { std::ranges::for_each(tokens, [](auto& token) { token += 1'000'000; }); } },
};

} // namespace

void measureSearches(Table& table)
{
    table.heading("Finding the master or layer at a location");
    for (auto const& size : measuredSizes()) {
        auto const font = syntheticFamily(size, 0);
        searchMasters(table, size, *font);
        searchLayers(table, size, *font);
    }
}

void measureDifferences(Table& table)
{
    table.heading("Snapshot difference, against a walk over equal runs that then hashes");
    for (std::size_t const count : { 10, 100, 1000, 10000 }) {
        std::vector<std::uint64_t> before(count);
        std::iota(before.begin(), before.end(), 1);
        for (auto const& change : changes) {
            auto after = before;
            change.apply(after);
            auto const rowsBefore = rowsOf(before), rowsAfter = rowsOf(after);
            volatile std::size_t sink = 0;
            table.addComparison(std::string("difference: ") + change.name, std::to_string(count) + " rows",
                { [&] { sink = sink + rowDifference(rowsBefore, rowsAfter).removed.size(); } },
                { [&] { sink = sink + floorDifference(before, after).removed.size(); } }, 2);
            if (change.name == std::string("rotated by one")) {
                auto const difference = rowDifference(rowsBefore, rowsAfter);
                table.addCount("  its moves, removals and insertions", std::to_string(count) + " rows",
                    double(difference.moved.size() + difference.removed.size() + difference.inserted.size()),
                    1);
            }
        }
    }
}
