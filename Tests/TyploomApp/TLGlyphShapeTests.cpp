#include "Tests/TyploomApp/EditFamily.h"
#include "Typloom/TyploomApp/TLGlyphShape.h"

#include "Platform/AppKit/CGContext.h"
#include "Platform/Qt/Painting.h"

#include <gtest/gtest.h>

namespace {

constexpr auto on = TLPointType::line;
constexpr auto curve = TLPointType::curve;
constexpr auto qcurve = TLPointType::qcurve;
constexpr auto off = TLPointType::offcurve;

TLPoint point(double x, double y, TLPointType type = on)
{
    return { x, y, type, false, {} };
}

/// The points of the path that lie on it or steer it, one after the other.
std::vector<std::pair<double, double>> elements(TLContour const& contour)
{
    auto const path = TLPathForContours({ contour });
    std::vector<std::pair<double, double>> found;
    for (int index = 0; index < path.impl().path.elementCount(); ++index) {
        auto const element = path.impl().path.elementAt(index);
        found.emplace_back(element.x, element.y);
    }
    return found;
}

} // namespace

TEST(TLPathForContours, startsAClosedContourAtItsFirstPointOnTheCurve)
{
    // The contour begins with the controls of its last segment.
    TLContour const contour { { point(10, 0, off), point(20, 0, off), point(30, 0, curve), point(30, 30) } };
    using Points = std::vector<std::pair<double, double>>;
    auto const drawn = elements(contour);
    ASSERT_GE(drawn.size(), 5U);
    EXPECT_EQ(Points(drawn.begin(), drawn.begin() + 5),
        (Points { { 30, 0 }, { 30, 30 }, { 10, 0 }, { 20, 0 }, { 30, 0 } }));
}

TEST(TLPathForContours, putsPointsBetweenTheControlsOfQuadraticCurves)
{
    TLContour const ring { { point(0, 0, off), point(100, 0, off), point(100, 100, off),
        point(0, 100, off) } };
    auto const path = TLPathForContours({ ring }).impl().path;
    EXPECT_EQ(path.elementAt(0), QPointF(0, 50));
    EXPECT_EQ(path.boundingRect(), QRectF(0, 0, 100, 100));
    EXPECT_TRUE(path.contains(QPointF(50, 50)));
    EXPECT_FALSE(path.contains(QPointF(5, 5))) << "the corners are rounded off";

    TLContour const arch { { point(0, 0), point(0, 100, off), point(100, 100, off), point(100, 0, qcurve) } };
    EXPECT_TRUE(TLPathForContours({ arch }).impl().path.contains(QPointF(50, 95)));
}

TEST(TLPathForContours, leavesAnOpenContourOpen)
{
    TLContour const open { { point(0, 0, TLPointType::move), point(50, 0), point(50, 50),
        point(0, 9, off) } };
    using Points = std::vector<std::pair<double, double>>;
    EXPECT_EQ(elements(open), (Points { { 0, 0 }, { 50, 0 }, { 50, 50 } }));
}

TEST(TLPathForContours, takesAnyPoints)
{
    EXPECT_EQ(TLPathForContours({ {} }).boundingBox(), NSRect());
    EXPECT_EQ(TLPathForContours({ { { point(5, 5, off) } } }).boundingBox().size, NSSize());
    auto const far = TLPathForContours({ { { point(0, 0), point(1e300, 0), point(0, -1e300) } } });
    EXPECT_LE(far.boundingBox().size.width, 2e6);
}

TEST(TLGlyphShapeCache, interpolatesAGlyphOnceForAPlace)
{
    EditFamily family;
    TLGlyphShapeCache cache(family.font());
    auto const before = TLInterpolationCountersNow().glyphsInterpolated;
    auto const first = cache.interpolated(*family.b, { { "wght", 500.0 } });
    EXPECT_EQ(first->advance, 600);
    EXPECT_EQ(cache.interpolated(*family.b, { { "wght", 500.0 } }), first);
    EXPECT_EQ(TLInterpolationCountersNow().glyphsInterpolated, before + 1);
    EXPECT_EQ(cache.interpolated(*family.b, { { "wght", 750.0 } })->advance, 700);
    cache.clear();
    EXPECT_NE(cache.interpolated(*family.b, { { "wght", 500.0 } }), first);
}

TEST(TLGlyphShapeCache, drawsComponentsApartFromContours)
{
    EditFamily family;
    auto composite = boxOutline(400);
    composite.contours.clear();
    composite.components = { { "B", { 1, 0, 0, 1, 1000, 0 }, {}, false } };
    auto const glyph = family.builder.addEmptyGlyph("Bdouble");
    family.builder.addMasterLayer(glyph, "light", composite);
    TLGlyphShapeCache cache(family.font());
    auto const shape = cache.ofLayer(*glyph->layerForId("light"), { { "wght", 0.0 } });
    EXPECT_EQ(shape->contours.boundingBox(), NSRect());
    EXPECT_EQ(shape->components.boundingBox().origin, (NSPoint { 1050, 0 }));
    EXPECT_EQ(shape->outline.components.size(), 1U);
}

TEST(TLGlyphShapeCache, saysWhichSourceIsDrawnWhereTheOutlinesDoNotFit)
{
    EditFamily family;
    TLGlyphShapeCache cache(family.font());
    auto const shape = cache.interpolated(*family.x, { { "wght", 900.0 } });
    ASSERT_TRUE(shape->problem);
    EXPECT_EQ(shape->problem->nearestSource, "Bold");
    EXPECT_NE(shape->problem->reason.find("do not fit together"), std::string::npos)
        << shape->problem->reason;
}

TEST(TLGlyphShapeCache, reportsOutlinesThatDoNotFitOnceAndNothingThatDependsOnThePlace)
{
    EditFamily family;
    auto composite = boxOutline(400);
    composite.components = { { "X", { 1, 0, 0, 1, 0, 0 }, {}, false } };
    auto const user = family.builder.addGlyph("Xuser", [&](TLFontMaster const&) { return composite; });
    auto const lone
        = family.builder.addEmptyGlyph("lone"); // Nothing at the default: always the nearest source.
    family.builder.addMasterLayer(lone, "bold", boxOutline(800));
    composite.components.front().base = "lone";
    auto const loneUser = family.builder.addGlyph("loneuser", [&](TLFontMaster const&) { return composite; });
    TLGlyphShapeCache cache(family.font());
    for (double value = 1; value < 1000; value += 50) {
        for (auto const& glyph : { user, family.x, lone, loneUser }) {
            cache.interpolated(*glyph, { { "wght", value } });
        }
    }
    ASSERT_TRUE(cache.interpolated(*lone, { { "wght", 400.0 } })->problem);
    ASSERT_EQ(family.font()->report().size(), 1U);
    EXPECT_NE(family.font()->report().front().find("glyph 'X'"), std::string::npos);
    EXPECT_EQ(family.font()->report().front().find("nearest"), std::string::npos);
}
