#include "Tests/Program/TestProgram.h"

#include <gmock/gmock.h>

#include <QImage>
#include <QJsonArray>

using testing::HasSubstr;

namespace {
std::string const sample = SOURCE_FOLDER "/Fonts/Skarvane/Skarvane.designspace";

QJsonObject rowOf(QJsonObject const& description, int section, int row)
{
    return description["sections"].toArray()[section].toObject()["rows"].toArray()[row].toObject();
}

std::vector<double> numbers(QJsonValue const& array)
{
    std::vector<double> result;
    for (auto const& value : array.toArray()) {
        result.push_back(value.toDouble());
    }
    return result;
}

QImage imageAt(std::filesystem::path const& file)
{
    return QImage(QString::fromStdString(file.string()));
}

/// How many pixels of an area are not of the colour of its corner.
int drawnPixels(QImage const& image, QRect const& area)
{
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            count += image.pixel(x, y) != image.pixel(area.topLeft());
        }
    }
    return count;
}
} // namespace

TEST(Program, aSnapshotHasTheSizeAskedForAndShowsTheGlyph)
{
    TestFolder const folder;
    auto const family = makeSmallFamily(folder).string();
    auto const run = [&](std::string const& weight) {
        return runProgram({ family, "--glyph", "A", "--location", "wght=" + weight, "--size", "1000x700",
            "--snapshot", folder / (weight + ".png") });
    };
    for (auto const* weight : { "100", "900" }) {
        auto const outcome = run(weight);
        ASSERT_EQ(outcome.status, 0) << outcome.errors;
        EXPECT_EQ(outcome.output, "");
        auto const image = imageAt(folder / (std::string(weight) + ".png"));
        EXPECT_EQ(image.size(), QSize(1000, 700));
        EXPECT_GT(drawnPixels(image, QRect(500, 200, 300, 350)), 500);
    }
    EXPECT_NE(imageAt(folder / "100.png"), imageAt(folder / "900.png"));
}

TEST(Program, theUsualSizeIs1400By900)
{
    TestFolder const folder;
    auto const outcome = runProgram({ makeSmallFamily(folder), "--snapshot", folder / "out.png" });
    ASSERT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(imageAt(folder / "out.png").size(), QSize(1400, 900));
}

TEST(Program, describesTheRowsThatTheWindowShows)
{
    TestFolder const folder;
    auto const outcome
        = runProgram({ makeSmallFamily(folder), "--glyph", "A", "--location", "Weight=900", "--describe" });
    ASSERT_EQ(outcome.status, 0) << outcome.errors;
    auto const description = outcome.json();
    EXPECT_EQ(description["state"], "Bold");
    EXPECT_EQ(description["tab"], "Variation");
    EXPECT_EQ(description["report"], QJsonArray());
    EXPECT_EQ(description["sections"].toArray()[0].toObject()["title"], "Font Axes");
    auto const row = rowOf(description, 0, 0);
    EXPECT_EQ(row["name"], "Weight");
    EXPECT_EQ(row["enabled"], true);
    EXPECT_EQ(row["minimum"], 100);
    EXPECT_EQ(row["maximum"], 900);
    EXPECT_EQ(row["value"], 900);
    EXPECT_EQ(row["text"], "900");
    EXPECT_EQ(numbers(row["landmarks"]), (std::vector<double> { 100, 900 }));
    EXPECT_FALSE(row.contains("hint"));
}

TEST(Program, describesEachOfManyRowsOnce)
{
    TestFolder const folder;
    auto const file = makeSmallFamily(folder);
    constexpr int count = 600;
    std::string axes;
    for (int index = 0; index < count; ++index) {
        axes += "<axis tag=\"same\" name=\"Axis " + std::to_string(index)
            + "\" minimum=\"0\" maximum=\"100\" default=\"" + std::to_string(index % 100) + "\"/>";
    }
    auto content = readFile(file);
    writeFile(file, content.insert(content.find("</axes>"), axes));
    auto const description = runProgram({ file, "--glyph", "A", "--describe" }).json();
    auto const rows = description["sections"].toArray()[0].toObject()["rows"].toArray();
    ASSERT_EQ(rows.size(), count + 1);
    for (int index = 0; index < count; ++index) {
        auto const row = rows[index + 1].toObject();
        EXPECT_EQ(row["name"].toString().toStdString(), "Axis " + std::to_string(index));
    }
}

TEST(Program, describesTheOutlineAsDrawnWithExactNumbers)
{
    TestFolder const folder;
    auto const family = makeSmallFamily(folder).string();
    auto const between
        = runProgram({ family, "--glyph", "A", "--location", "wght=200", "--describe" }).json();
    EXPECT_EQ(between["state"], "Interpolated");
    auto const outline = between["outline"].toObject();
    EXPECT_EQ(outline["advance"], 525); // 500 + 200 * 1/8
    auto const points = outline["contours"].toArray()[0].toArray();
    ASSERT_EQ(points.size(), 3);
    EXPECT_EQ(points[1].toObject(), (QJsonObject { { "x", 475 }, { "y", 0 }, { "type", "line" } }));
    EXPECT_EQ(points[2].toObject(), (QJsonObject { { "x", 250.5 }, { "y", 700 }, { "type", "line" } }));
    EXPECT_EQ(outline["components"], QJsonArray());

    auto const atMaster = runProgram({ family, "--text", "BA", "--describe" }).json();
    EXPECT_EQ(atMaster["state"], "Light");
    EXPECT_EQ(atMaster["outline"].toObject()["advance"], 600);
}

TEST(Program, aValueBeyondTheAxisEndsWhereTheSliderDoesAndSaysSo)
{
    TestFolder const folder;
    auto const outcome = runProgram({ makeSmallFamily(folder), "--location", "wght=2000", "--describe" });
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.errors, HasSubstr("goes from 100 to 900; 2000 became 900"));
    EXPECT_EQ(outcome.json()["state"], "Bold");
}

TEST(Program, aFamilyThatIsPartlyBrokenOpensAndIsReported)
{
    TestFolder const folder;
    auto const family = makeSmallFamily(folder).string();
    std::filesystem::remove_all(folder / "Bold.ufo");
    auto const outcome = runProgram({ family, "--glyph", "A", "--describe" });
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.errors, HasSubstr("Bold"));
    EXPECT_GE(outcome.json()["report"].toArray().size(), 1);
    EXPECT_EQ(outcome.json()["outline"].toObject()["advance"], 500);
}

TEST(Program, aGlyphIsEditedInTheTextThatIsAskedFor)
{
    TestFolder const folder;
    auto const family = makeSmallFamily(folder).string();
    auto const inText = [&](std::string const& text, std::string const& name) {
        auto const picture = folder / (name + ".png");
        auto const outcome
            = runProgram({ family, "--text", text, "--glyph", "A", "--describe", "--snapshot", picture });
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        EXPECT_EQ(outcome.json()["outline"].toObject()["advance"], 500);
        return imageAt(picture);
    };
    auto const alone = inText("A", "alone");
    auto const held = inText("BA", "held");
    EXPECT_NE(held, alone) << "the text is shown, with its A edited";
    EXPECT_NE(inText("B", "inserted"), alone);
    EXPECT_NE(inText("B", "inserted"), held) << "before the B and not behind it";
}

TEST(Program, whatCannotBeReadIsAMissingGlyphAndNeverAnEmptyOne)
{
    TestFolder const folder;
    auto const family = makeSmallFamily(folder).string();
    writeFile(folder / "Bold.ufo/glyphs/A_.glif", "<glyph");
    auto const at = [&](std::string const& weight) {
        auto const outcome
            = runProgram({ family, "--glyph", "A", "--location", "wght=" + weight, "--describe" });
        EXPECT_EQ(outcome.status, 0);
        EXPECT_THAT(outcome.errors, HasSubstr("A_.glif"));
        EXPECT_EQ(outcome.json()["report"].toArray().size(), 1);
        return outcome.json();
    };
    EXPECT_EQ(at("900")["state"], "Bold");
    EXPECT_TRUE(at("900")["outline"].isNull());
    EXPECT_EQ(at("500")["outline"].toObject()["advance"], 500) << "it takes no part in interpolation";

    writeFile(folder / "Light.ufo/glyphs/A_.glif", "<glyph");
    for (auto const& arguments : { std::vector<std::string> { "--glyph", "A" }, { "--text", "/A B" },
             { "--text", "B", "--glyph", "A" } }) {
        auto all = arguments;
        all.insert(all.begin(), { family, "--describe" });
        auto const outcome = runProgram(all);
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        EXPECT_THAT(outcome.errors, HasSubstr("Light.ufo"));
        EXPECT_TRUE(outcome.json()["outline"].isNull());
    }
}

TEST(Program, theSampleFamilyIsDrawnAndDescribedAtOnce)
{
    TestFolder const folder;
    auto const outcome
        = runProgram({ sample, "--glyph", "arrow", "--snapshot", folder / "out.png", "--describe" });
    ASSERT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(imageAt(folder / "out.png").size(), QSize(1400, 900));
    auto const description = outcome.json();
    ASSERT_EQ(description["sections"].toArray().size(), 2);
    EXPECT_EQ(description["sections"].toArray()[1].toObject()["title"], "Glyph Axes");
    auto const weight = rowOf(description, 0, 0);
    EXPECT_EQ(weight["name"], "Weight");
    EXPECT_EQ(numbers(weight["landmarks"]), (std::vector<double> { 24, 80, 184 }));
    EXPECT_EQ(weight["value"], 80);
    EXPECT_GE(numbers(rowOf(description, 1, 0)["landmarks"]).size(), 1u);
    EXPECT_EQ(description["report"], QJsonArray());
    EXPECT_FALSE(description["outline"].toObject()["contours"].toArray().isEmpty());
}

TEST(Program, aPlaceOfTheSampleFamilyIsReachedOnASourceAndBetween)
{
    auto const stateAt = [](std::string const& location) {
        return runProgram({ sample, "--glyph", "a", "--location", location, "--describe" })
            .json()["state"]
            .toString();
    };
    EXPECT_EQ(stateAt("wght=184,wdth=75").toStdString(), "Black Condensed");
    EXPECT_EQ(stateAt("wght=122").toStdString(), "Skarvane SemiBold");
    EXPECT_EQ(stateAt("wght=100").toStdString(), "Interpolated");
}
