#include "Tests/Pictures/Stage.h"

#include <QDir>

namespace {

struct PictureCase {
    PictureState state;
    Look look;
};

std::vector<PictureCase> comparedCases()
{
    std::vector<PictureCase> cases;
    for (auto const& state : allPictureStates()) {
        if (state.isCompared) {
            cases.push_back({ state, Look::light });
            cases.push_back({ state, Look::dark });
        }
    }
    return cases;
}

bool isNear(QRgb left, QRgb right)
{
    constexpr int tolerance = 48; // Of 255, for each colour.
    return std::abs(qRed(left) - qRed(right)) <= tolerance
        && std::abs(qGreen(left) - qGreen(right)) <= tolerance
        && std::abs(qBlue(left) - qBlue(right)) <= tolerance;
}

/// Whether the picture has the colour at that pixel or beside it, since edges of letters fall differently.
bool hasNear(QImage const& image, int x, int y, QRgb color)
{
    for (int row = std::max(y - 1, 0); row <= std::min(y + 1, image.height() - 1); ++row) {
        for (int column = std::max(x - 1, 0); column <= std::min(x + 1, image.width() - 1); ++column) {
            if (isNear(image.pixel(column, row), color)) {
                return true;
            }
        }
    }
    return false;
}

/// Pixels of either picture for which the other has no like.
int countOfDifferences(QImage const& left, QImage const& right)
{
    int count = 0;
    for (int y = 0; y < left.height(); ++y) {
        for (int x = 0; x < left.width(); ++x) {
            count += !hasNear(right, x, y, left.pixel(x, y)) || !hasNear(left, x, y, right.pixel(x, y));
        }
    }
    return count;
}

void expectLike(QImage const& picture, std::string const& name)
{
    auto const file = QString::fromStdString(SOURCE_FOLDER "/Tests/Pictures/References/" + name + ".png");
    QImage const reference(file);
    ASSERT_FALSE(reference.isNull()) << file.toStdString();
    constexpr double allowedShare = 0.001; // A letter or two.
    bool const isLike = picture.size() == reference.size()
        && countOfDifferences(picture, reference) <= allowedShare * picture.width() * picture.height();
    auto const drawn = QDir::current().filePath(QString::fromStdString(name + ".drawn.png"));
    if (!isLike) {
        picture.save(drawn);
    }
    EXPECT_TRUE(isLike) << "compare " << drawn.toStdString() << " with " << file.toStdString();
}

class Picture : public testing::TestWithParam<PictureCase> { };

} // namespace

TEST_P(Picture, looksAsItsReference)
{
    auto const& [state, look] = GetParam();
    Stage stage(look);
    state.enter(stage);
    expectLike(stage.keptPicture(), nameOf(state, look));
}

TEST_P(Picture, followsThePaletteOfTheDesktop)
{
    auto const& [state, look] = GetParam();
    Stage stage(look == Look::dark ? Look::light : Look::dark);
    state.enter(stage);
    Stage::setLook(look);
    expectLike(stage.keptPicture(), nameOf(state, look));
}

INSTANTIATE_TEST_SUITE_P(States, Picture, testing::ValuesIn(comparedCases()), [](auto const& tested) {
    auto name = nameOf(tested.param.state, tested.param.look);
    std::ranges::replace(name, '-', '_');
    return name;
});
