#include "Tests/Pictures/Stage.h"

#include "Typloom/TyploomApp/TLDocumentEditViewController.h"

#include <QListView>

namespace {

constexpr QSize smallSize { 800, 600 };
constexpr QSize largeSize { 1400, 900 };

QWidget& palette(Stage& stage)
{
    return *stage.window().control<QListView>("Layers").parentWidget();
}

void showPalette(Stage& stage, QSize size)
{
    auto& shown = stage.showGlyph("a", size);
    shown.document->goToLocation({ { "wght", 122.0 } });
    shown.settle();
    stage.kept = stage.place(palette(stage));
}

std::shared_ptr<TLLineEditView> lineView(Stage& stage)
{
    auto const controller = stage.window().document->editViewController();
    return std::dynamic_pointer_cast<TLDocumentEditViewController>(controller)->lineView();
}

QRect editedPart(Stage& stage)
{
    auto const view = lineView(stage);
    auto const frame = view->frameOfObject(view->selectedRange().location).value();
    QRect const glyph(static_cast<int>(frame.origin.x) - 20, static_cast<int>(frame.origin.y),
        static_cast<int>(frame.size.width) + 40, static_cast<int>(frame.size.height));
    return glyph.translated(stage.place(*view).topLeft()) & stage.place(*view);
}

void selectNodes(Stage& stage)
{
    stage.showGlyph("n");
    auto const part = editedPart(stage);
    auto& shown = stage.window();
    auto const middle = part.center();
    shown.window->drag(QPoint(part.left() + 24, middle.y()), QPoint(middle.x(), part.bottom() - 4));
    stage.kept = editedPart(stage);
}

} // namespace

std::vector<PictureState> editingStates()
{
    return {
        { "palette-800", [](Stage& stage) { showPalette(stage, smallSize); } },
        { "palette-1100", [](Stage& stage) { showPalette(stage, Stage::usualSize); } },
        { "palette-1400", [](Stage& stage) { showPalette(stage, largeSize); } },
        { "window", [](Stage& stage) { showPalette(stage, largeSize); }, false },
        { "edit-master",
            [](Stage& stage) {
                stage.showGlyph("n");
                stage.kept = editedPart(stage);
            } },
        { "edit-nodes", selectNodes },
        { "edit-interpolated",
            [](Stage& stage) {
                auto& shown = stage.showGlyph("a");
                shown.document->goToLocation({ { "wght", 140.0 } });
                shown.settle();
                stage.kept = editedPart(stage);
            } },
        { "edit-components",
            [](Stage& stage) {
                stage.showGlyph("adieresis");
                stage.kept = editedPart(stage);
            } },
    };
}
