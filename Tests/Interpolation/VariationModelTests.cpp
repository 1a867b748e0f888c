#include "Typloom/Interpolation/VariationModel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <set>

using testing::ElementsAre;
using testing::UnorderedElementsAre;

namespace {

using Place = std::vector<double>;

/// A source: where it stands, in normalised coordinates, and one number that it draws.
struct Source {
    Place place;
    double value;
};

VariationModel makeModel(std::vector<Place> const& places)
{
    std::vector<NormalizedLocation> locations;
    for (auto const& place : places) {
        locations.push_back(normalizedLocation(place));
    }
    return std::get<VariationModel>(VariationModel::make(locations, places.front().size()));
}

double instance(std::vector<Source> const& sources, Place const& place)
{
    std::vector<Place> places;
    for (auto const& source : sources) {
        places.push_back(source.place);
    }
    std::vector<double> sum { 0 };
    for (auto const& [source, factor] : makeModel(places).factors(place)) {
        addScaled(sum, factor, std::vector { sources[source].value });
    }
    return sum.front();
}

std::variant<VariationModel, VariationFault> make(std::vector<Place> const& places)
{
    std::vector<NormalizedLocation> locations;
    for (auto const& place : places) {
        locations.push_back(normalizedLocation(place));
    }
    return VariationModel::make(locations, 2);
}

/// Different places on a grid, the default first.
std::vector<Place> randomPlaces(std::mt19937& random, std::size_t axes, std::size_t count)
{
    std::uniform_int_distribution<int> step(-4, 4);
    std::set<Place> places { Place(axes) };
    while (places.size() < count) {
        Place place(axes);
        std::generate(place.begin(), place.end(), [&] { return step(random) / 4.0; });
        places.insert(place);
    }
    std::vector<Place> result(places.begin(), places.end());
    std::iter_swap(result.begin(), std::find(result.begin(), result.end(), Place(axes)));
    return result;
}

constexpr double tolerance = 1e-6;

} // namespace

TEST(VariationModel, isLinearBetweenNeighboursOnAnAxis)
{
    std::vector<Source> const sources { { { 1 }, 200 }, { { 0 }, 100 }, { { 0.5 }, 300 }, { { -1 }, 40 } };
    EXPECT_NEAR(instance(sources, { 0.25 }), 200, tolerance);
    EXPECT_NEAR(instance(sources, { 0.75 }), 250, tolerance);
    EXPECT_NEAR(instance(sources, { -0.5 }), 70, tolerance);
}

TEST(VariationModel, fallsBackToTheDefaultAtTheEndBehindTheLastSource)
{
    std::vector<Source> const sources { { { 0 }, 100 }, { { 0.5 }, 300 } };
    EXPECT_NEAR(instance(sources, { 0.75 }), 200, tolerance);
    EXPECT_NEAR(instance(sources, { 1 }), 100, tolerance);
    EXPECT_NEAR(instance(sources, { -1 }), 100, tolerance);
}

TEST(VariationModel, mixesFourCornersByTheirAreas)
{
    std::vector<Source> const sources { { { 0, 0 }, 100 }, { { 1, 0 }, 200 }, { { 0, 1 }, 150 },
        { { 1, 1 }, 400 } };
    EXPECT_NEAR(instance(sources, { 0.5, 0.5 }), 212.5, tolerance);
    EXPECT_NEAR(instance(sources, { 0.25, 0.75 }), 190.625, tolerance);
}

TEST(VariationModel, addsUpTheAxesWhereACornerIsMissing)
{
    std::vector<Source> const sources { { { 0, 0 }, 100 }, { { 1, 0 }, 200 }, { { 0, 1 }, 150 } };
    EXPECT_NEAR(instance(sources, { 0.5, 0.5 }), 175, tolerance);
    EXPECT_NEAR(instance(sources, { 1, 1 }), 250, tolerance);
    EXPECT_THAT(makeModel({ { 0, 0 }, { 1, 0 }, { 0, 1 } }).factors(Place { 1, 1 }),
        UnorderedElementsAre(SourceFactor { 0, -1 }, SourceFactor { 1, 1 }, SourceFactor { 2, 1 }));
}

TEST(VariationModel, addsASourceInTheMiddleToWhatTheCornersPredict)
{
    // The corners predict 5 + 10 + 70 / 4 = 32.5 in the middle, so that source's delta is 7.5.
    std::vector<Source> const sources { { { 0, 0 }, 0 }, { { 0.5, 0.5 }, 40 }, { { 1, 0 }, 10 },
        { { 0, 1 }, 20 }, { { 1, 1 }, 100 } };
    EXPECT_NEAR(instance(sources, { 0.75, 0.75 }), 7.5 + 15 + 0.5625 * 70 + 0.25 * 7.5, tolerance);
    EXPECT_NEAR(instance(sources, { 0.25, 0.5 }), 2.5 + 10 + 0.125 * 70 + 0.5 * 7.5, tolerance);
}

TEST(VariationModel, cutsASupportWhereTheLeastOfItIsLost)
{
    // Seen from (1, 1), the source at (0.25, 0.5) is further away on the first axis: cut there.
    std::vector<Source> const sources { { { 0, 0 }, 0 }, { { 1, 1 }, 100 }, { { 0.25, 0.5 }, 8 } };
    EXPECT_NEAR(instance(sources, { 0.625, 0.5 }), 0.5 * 8 + 0.5 * 0.5 * 100, tolerance);
    EXPECT_NEAR(instance(sources, { 0.25, 0.75 }), 0.5 * 8, tolerance);
    // As far away on both: cut on both.
    std::vector<Source> const tied { { { 0, 0 }, 0 }, { { 1, 1 }, 100 }, { { 0.5, 0.5 }, 8 } };
    EXPECT_NEAR(instance(tied, { 0.75, 0.5 }), 4, tolerance);
    EXPECT_NEAR(instance(tied, { 0.75, 0.75 }), 0.25 * 8 + 0.25 * 100, tolerance);
}

TEST(VariationModel, ordersSourcesByAxesThenPointsOnAxesThenSignsAndDistance)
{
    std::vector<NormalizedLocation> locations;
    for (auto const& place :
        std::vector<Place> { { 0.5, 0.5 }, { 1, 1 }, { 0, 1 }, { 1, 0 }, { 0.5, 0 }, { -1, 0 }, { 0, 0 } }) {
        locations.push_back(normalizedLocation(place));
    }
    EXPECT_THAT(sortedSources(locations), ElementsAre(6, 5, 4, 3, 2, 1, 0));
}

TEST(VariationModel, givesASourceAloneAtItsOwnPlaceBitByBit)
{
    std::mt19937 random(1);
    for (std::size_t axes = 1; axes <= 4; ++axes) {
        auto const places = randomPlaces(random, axes, axes == 1 ? 6 : 24);
        auto const model = makeModel(places);
        for (std::size_t source = 0; source < places.size(); ++source) {
            EXPECT_THAT(model.factors(places[source]), ElementsAre(SourceFactor { source, 1.0 }));
        }
    }
}

TEST(VariationModel, sharesSumToOneEverywhere)
{
    std::mt19937 random(2);
    std::uniform_real_distribution<double> coordinate(-1, 1);
    auto const model = makeModel(randomPlaces(random, 3, 40));
    for (int i = 0; i < 1000; ++i) {
        double sum = 0;
        for (auto const& [source, factor] :
            model.factors(Place { coordinate(random), coordinate(random), coordinate(random) })) {
            sum += factor;
        }
        EXPECT_NEAR(sum, 1, 1e-12);
    }
}

TEST(VariationModel, needsASourceAtTheDefaultAndNoTwoAtOnePlace)
{
    VariationFault const noDefault { .kind = VariationFault::Kind::noSourceAtDefault };
    EXPECT_EQ(std::get<VariationFault>(make({})), noDefault);
    EXPECT_EQ(std::get<VariationFault>(make({ { 1, 0 }, { 0, 1 } })), noDefault);
    EXPECT_EQ(std::get<VariationFault>(make({ { 1, 1 }, { 0, 0 }, { 0, 1 }, { 1, 1 } })),
        (VariationFault { VariationFault::Kind::sourcesCoincide, 0, 3 }));
    EXPECT_EQ(std::get<VariationFault>(make({ { 0, 0 }, { -0.0, 0 } })),
        (VariationFault { VariationFault::Kind::sourcesCoincide, 0, 1 }));
}
