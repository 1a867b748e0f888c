#include "Typloom/TyploomApp/NamedLocation.h"

#include "Tests/Support/FontBuilder.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {
/// Weight 100 to 700 and Width 75 to 125; the glyph has an axis of its own that is named Weight too.
struct Family {
    FontBuilder builder;
    std::shared_ptr<TLGlyph> glyph;

    Family()
    {
        builder.addAxis("w-id", "Weight", { 100, 400, 700 }, "wght");
        builder.addAxis("x-id", "Width", { 75, 100, 125 }, "wdth");
        builder.addMaster("regular", { { "w-id", 400 }, { "x-id", 100 } });
        builder.addMaster("bold", { { "w-id", 700 }, { "x-id", 125 } });
        glyph = builder.addGlyph("arrow");
        auto const axis = std::make_shared<TLAxis>("g-id", "Weight");
        axis->setDefaultValue(10);
        glyph->insertObjectInAxesAtIndex(axis, 0);
        builder.addBraceLayer(glyph, "arrow-50", "regular", { { "g-id", 50 } });
    }

    NamedLocation find(std::vector<CommandLine::Coordinate> const& coordinates, bool withGlyph = true)
    {
        return LocationForNames(coordinates, *builder.font(), withGlyph ? glyph.get() : nullptr);
    }
};
} // namespace

TEST(NamedLocation, aTagMeansTheFontAxisAndANameTheGlyphsAxisFirst)
{
    Family family;
    EXPECT_EQ(family.find({ { "wght", 500 } }).location, (TLLocation { { "w-id", 500.0 } }));
    EXPECT_EQ(family.find({ { "Weight", 20 } }).location, (TLLocation { { "g-id", 20.0 } }));
    EXPECT_EQ(family.find({ { "Weight", 500 } }, false).location, (TLLocation { { "w-id", 500.0 } }));
    EXPECT_EQ(family.find({ { "wght", 500 }, { "Width", 110 } }).location,
        (TLLocation { { "w-id", 500.0 }, { "x-id", 110.0 } }));
}

TEST(NamedLocation, valuesGoNoFurtherThanTheSlidersAndANoteSaysSo)
{
    Family family;
    auto const beyond = family.find({ { "wght", 900 }, { "Weight", -3 } });
    EXPECT_EQ(beyond.location, (TLLocation { { "w-id", 700.0 }, { "g-id", 10.0 } }));
    EXPECT_THAT(beyond.notes,
        ElementsAre("The axis 'Weight' goes from 400 to 700; 900 became 700",
            "The axis 'Weight' goes from 10 to 50; -3 became 10"));
    EXPECT_THAT(family.find({ { "wght", 700 }, { "wdth", 100 } }).notes, IsEmpty());
}

TEST(NamedLocation, anUnknownAxisIsAnErrorThatListsTagsAndNames)
{
    auto const error = Family().find({ { "opsz", 12 } }).error;
    ASSERT_TRUE(error);
    EXPECT_THAT(*error, HasSubstr("no axis 'opsz'"));
    EXPECT_THAT(*error, HasSubstr("'wght', 'Weight', 'wdth', 'Width', 'Weight'"));
}

TEST(NamedLocation, oneAxisByTagAndByNameIsAnError)
{
    auto const error = Family().find({ { "wdth", 100 }, { "Width", 110 } }).error;
    ASSERT_TRUE(error);
    EXPECT_THAT(*error, HasSubstr("'Width' by its tag and by its name"));
}
