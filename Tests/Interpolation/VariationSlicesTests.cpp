#include "Typloom/Interpolation/VariationSlices.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::UnorderedElementsAre;

namespace {

using Place = std::vector<double>;
using Instance = VariationSlices::Instance;

VariationAxis const weight { 100, 400, 900 };
VariationAxis const italic { 0, 0, 1, true };

VariationSlices makeSlices(std::vector<VariationAxis> axes, std::vector<Place> const& places)
{
    std::vector<double> flat;
    for (auto const& place : places) {
        flat.insert(flat.end(), place.begin(), place.end());
    }
    return { std::move(axes), places.size(), std::move(flat) };
}

Instance instance(VariationSlices const& slices, Place const& place)
{
    return std::get<Instance>(slices.instance(place));
}

VariationFault fault(VariationSlices const& slices, Place const& place)
{
    return std::get<VariationFault>(slices.instance(place));
}

} // namespace

TEST(VariationSlices, interpolatesInDesignCoordinatesAndClampsToTheAxis)
{
    auto const slices = makeSlices({ weight }, { { 400 }, { 900 }, { 100 } });
    EXPECT_THAT(instance(slices, { 525 }).factors,
        UnorderedElementsAre(SourceFactor { 0, 0.75 }, SourceFactor { 1, 0.25 }));
    EXPECT_THAT(instance(slices, { 2000 }).factors, ElementsAre(SourceFactor { 1, 1 }));
    EXPECT_THAT(instance(slices, { 0 }).factors, ElementsAre(SourceFactor { 2, 1 }));
}

TEST(VariationSlices, neverMixesSourcesOfDifferentDiscreteValues)
{
    auto const slices = makeSlices({ weight, italic }, { { 400, 0 }, { 900, 0 }, { 400, 1 }, { 900, 1 } });
    EXPECT_THAT(instance(slices, { 650, 1 }).factors,
        UnorderedElementsAre(SourceFactor { 2, 0.5 }, SourceFactor { 3, 0.5 }));
    EXPECT_FALSE(instance(slices, { 650, 1 }).isOfNearestSlice);
}

TEST(VariationSlices, takesTheNearestSliceWhereItsOwnHasNoSourceAtTheDefault)
{
    auto const slices = makeSlices({ weight, italic }, { { 400, 0 }, { 900, 0 }, { 900, 1 }, { 400, 3 } });
    EXPECT_EQ(instance(slices, { 900, 1 }), (Instance { { { 1, 1 } }, true }));
    EXPECT_EQ(instance(slices, { 900, 7 }), (Instance { { { 3, 1 } }, true }));
    EXPECT_EQ(fault(makeSlices({ weight, italic }, { { 900, 1 } }), { 400, 0 }),
        VariationFault { .kind = VariationFault::Kind::noSourceAtDefault });
}

TEST(VariationSlices, ignoresAnAxisWithoutLength)
{
    auto const slices = makeSlices({ weight, { 50, 50, 50 } }, { { 400, 50 }, { 900, 50 } });
    EXPECT_THAT(instance(slices, { 900, 60 }).factors, ElementsAre(SourceFactor { 1, 1 }));
}

TEST(VariationSlices, reportsSourcesThatCoincideAtTheirOwnIndices)
{
    VariationFault const coinciding { VariationFault::Kind::sourcesCoincide, 2, 4 };
    auto const slices
        = makeSlices({ weight, italic }, { { 400, 0 }, { 400, 1 }, { 950, 1 }, { 900, 0 }, { 900, 1 } });
    EXPECT_EQ(fault(slices, { 500, 1 }), coinciding); // The axis ends at 900 for both.
    EXPECT_EQ(instance(slices, { 900, 0 }), (Instance { { { 3, 1 } }, false }));
}

TEST(VariationSlices, reportsAnAxisOutOfOrder)
{
    auto const slices = makeSlices({ weight, { 0, 9, 5 } }, { { 400, 0 } });
    EXPECT_EQ(fault(slices, { 400, 0 }), (VariationFault { VariationFault::Kind::axisOutOfOrder, 1, 0 }));
}

TEST(VariationSlices, aSpaceWithoutAxesHasOneSource)
{
    EXPECT_EQ(instance(makeSlices({}, { {} }), {}), (Instance { { { 0, 1 } }, false }));
    EXPECT_EQ(fault(makeSlices({}, { {}, {} }), {}),
        (VariationFault { VariationFault::Kind::sourcesCoincide, 0, 1 }));
    EXPECT_EQ(fault(makeSlices({}, {}), {}).kind, VariationFault::Kind::noSourceAtDefault);
}

TEST(VariationSlices, nearestSourceMeasuresEachAxisByItsLength)
{
    VariationAxis const opticalSize { 8, 12, 18 };
    auto const slices = makeSlices({ weight, opticalSize }, { { 400, 12 }, { 900, 12 }, { 400, 18 } });
    EXPECT_EQ(slices.nearestSource(Place { 600, 12 }), 0u);
    EXPECT_EQ(slices.nearestSource(Place { 500, 16 }), 2u);
    EXPECT_EQ(slices.nearestSource(Place { 650, 12 }), 0u); // As near to the second.
    double const huge = 1.7e308;
    auto const wide = makeSlices({ { -huge, 0, huge } }, { { -huge }, { huge } });
    EXPECT_EQ(wide.nearestSource(Place { 1e308 }), 1u);
}
