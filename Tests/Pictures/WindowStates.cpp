#include "Tests/Pictures/Stage.h"

#include <QAction>
#include <QDialog>
#include <QPushButton>
#include <QTabWidget>

namespace {

QWidget& openFontInfo(Stage& stage, int tab)
{
    auto& shown = stage.showGlyph("a");
    shown.press(Qt::Key_I, Qt::ControlModifier);
    auto* const info = shown.document->widget()->findChild<QDialog*>();
    info->findChild<QTabWidget*>()->setCurrentIndex(tab);
    shown.settle();
    stage.showAlone(*info);
    return *info;
}

void clickButton(QWidget& window, QString const& text)
{
    for (auto* const button : window.findChildren<QPushButton*>()) {
        if (button->text().remove('&').startsWith(text) && button->isVisible()) {
            button->click();
            return ProgramWindow::settle();
        }
    }
    throw std::runtime_error("no button " + text.toStdString());
}

void trigger(Stage& stage, QString const& text)
{
    for (auto* const action : stage.window().document->widget()->findChildren<QAction*>()) {
        if (action->text().remove('&').startsWith(text)) {
            action->trigger();
            return ProgramWindow::settle();
        }
    }
    throw std::runtime_error("no command " + text.toStdString());
}

void showLastDialog(Stage& stage)
{
    auto* const dialog = QApplication::activeModalWidget();
    ASSERT_NE(dialog, nullptr);
    stage.showAlone(*dialog);
}

} // namespace

std::vector<PictureState> windowStates()
{
    return {
        { "invitation",
            [](Stage& stage) {
                auto* const widget = stage.application.openInvitation()->widget();
                widget->resize(900, 600);
                stage.showAlone(*widget);
            } },
        { "font-info-axes", [](Stage& stage) { openFontInfo(stage, 0); } },
        { "font-info-masters", [](Stage& stage) { openFontInfo(stage, 1); } },
        { "add-axis",
            [](Stage& stage) {
                clickButton(openFontInfo(stage, 0), "Add Axis");
                showLastDialog(stage);
            } },
        { "delete-layer",
            [](Stage& stage) {
                auto& shown = stage.showGlyph("a");
                shown.document->goToLocation({ { "wght", 122.0 } });
                shown.settle();
                trigger(stage, "Delete Layer");
                showLastDialog(stage);
            } },
        { "unsaved-changes",
            [](Stage& stage) {
                auto& shown = stage.showGlyph("a");
                trigger(stage, "Add layer here");
                trigger(stage, "Close");
                showLastDialog(stage);
                shown.settle();
            },
            false },
    };
}
