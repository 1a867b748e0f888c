#include "Tests/Pictures/Stage.h"

#include <QApplication>
#include <QDir>

#include <clocale>
#include <iostream>

namespace {

bool save(QImage const& image, QString const& folder, PictureState const& state, Look look)
{
    auto const file = folder + "/" + QString::fromStdString(nameOf(state, look)) + ".png";
    std::cout << file.toStdString() << std::endl;
    return QDir().mkpath(folder) && image.save(file);
}

/// Draws every state, whole, or the parts that are kept as references.
int write(QString const& folder, bool referencesAlone)
{
    bool isNumber = false;
    auto const size = qEnvironmentVariable("PICTURE_FONT_SIZE").toDouble(&isNumber);
    bool isWritten = true;
    for (auto const& state : allPictureStates()) {
        if (referencesAlone && !state.isCompared) {
            continue;
        }
        for (auto const look : { Look::light, Look::dark }) {
            Stage stage(look, isNumber ? size : Stage::usualFontSize);
            state.enter(stage);
            isWritten &= save(referencesAlone ? stage.keptPicture() : stage.picture(), folder, state, look);
        }
    }
    return isWritten ? 0 : 1;
}

} // namespace

/// A screen of one size and density, so that pictures are the same on every machine.
///
///     PictureTests                      compares, as other tests do
///     PictureTests --write FOLDER       draws every state; PICTURE_FONT_SIZE is in points
///     PictureTests --references FOLDER  draws what is compared
int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" SOURCE_FOLDER "/Tests/Pictures/screen.json");
    qputenv("QT_FONT_DPI", "96");
    QApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    std::string const option = argc == 3 ? argv[1] : "";
    if (option == "--write" || option == "--references") {
        return write(argv[2], option == "--references");
    }
    return RUN_ALL_TESTS();
}
