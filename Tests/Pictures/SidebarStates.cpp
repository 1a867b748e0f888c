#include "Tests/Pictures/Stage.h"

#include "Tests/Support/FontBuilder.h"

#include <QAbstractButton>

namespace {

void keepSidebar(Stage& stage)
{
    stage.kept = stage.place(*stage.window().document->sidebar()->widget());
}

void showGlyphAxes(Stage& stage)
{
    auto& shown = stage.showGlyph("a");
    shown.document->goToLocation({ { "wght", 122.0 } });
    shown.settle();
    keepSidebar(stage);
}

/// Many axes, with long names, crowded landmarks, names in other scripts, and ranges of every size.
std::shared_ptr<TLFont> crowdedFont()
{
    FontBuilder builder;
    builder.font()->setFamilyName("Crowded");
    builder.addAxis("wght", "Weight", { 100, 400, 900 }, "wght");
    builder.addAxis("wdth", "A width that goes from condensed to extremely expanded", { 0, 0, 1 }, "wdth");
    builder.addAxis("opsz", "Оптический размер", { 6, 12, 72 }, "opsz");
    builder.addAxis("slnt", "Наклон", { -15, 0, 0 }, "slnt");
    builder.addAxis("huge", "العرض", { -1e7, 0, 1e7 }, "huge");
    builder.addAxis("none", "Nothing on it", { 0, 0, 0 }, "none");
    for (int master = 0; master < 24; ++master) {
        auto const step = static_cast<double>(master);
        builder.addMaster("m" + std::to_string(master),
            { { "wght", 400 + 3 * step }, { "wdth", master % 4 == 0 ? step / 24 : 0 }, { "opsz", 12 + step },
                { "slnt", -step / 2 }, { "huge", (step - 12) * 1e6 }, { "none", 0 } },
            "Master " + std::to_string(master));
    }
    auto const glyph = builder.addGlyph("a");
    builder.addGlyphAxis(glyph, "own", "Weight", { 0, 0, 100 });
    builder.addBraceLayer(glyph, "own layer", "m0", { { "own", 100 } });
    for (int axis = 0; axis < 12; ++axis) {
        builder.addGlyphAxis(glyph, "x" + std::to_string(axis), "Part " + std::to_string(axis));
    }
    return builder.font();
}

void openEditor(Stage& stage, std::string const& typedName)
{
    auto& shown = stage.showGlyph("a");
    if (typedName.empty()) {
        shown.window->click(*shown.plusButton());
    } else {
        shown.window->click(*shown.row("Bowl"), 0.3, 0.2, Qt::RightButton);
    }
    shown.settle();
    (void)QTest::qWaitForWindowActive(&ProgramWindow::popoverWidget());
    for (auto const character : typedName) {
        WindowEvents(ProgramWindow::popoverWidget()).type(std::string(1, character));
    }
    shown.settle();
    stage.kept = stage.place(ProgramWindow::popoverWidget(), 2);
}

void hover(Stage& stage, std::string const& axis)
{
    showGlyphAxes(stage);
    stage.window().window->moveTo(*stage.window().row(axis), 0.3, 0.2);
    stage.kept = stage.place(*stage.window().row(axis));
}

void askWhyEmpty(Stage& stage)
{
    auto& shown = stage.showGlyph("a");
    auto const row = shown.row("Spur");
    for (auto const& button : qtWidget(*row)->findChildren<QAbstractButton*>()) {
        if (button->isVisible()) {
            shown.window->clickAt(*button, button->rect().center());
            break;
        }
    }
    shown.settle();
    ASSERT_NE(ProgramWindow::popover(), nullptr);
    stage.kept = stage.place(ProgramWindow::popoverWidget(), 2);
}

} // namespace

std::vector<PictureState> sidebarStates()
{
    return {
        { "sidebar-font-axes",
            [](Stage& stage) {
                stage.showGlyph("");
                keepSidebar(stage);
            } },
        { "sidebar-glyph-axes", showGlyphAxes },
        { "row-hovered", [](Stage& stage) { hover(stage, "Terminal"); } },
        { "row-empty", [](Stage& stage) { hover(stage, "Spur"); } },
        { "empty-range-help", askWhyEmpty },
        { "sidebar-no-match",
            [](Stage& stage) {
                auto& shown = stage.showGlyph("a");
                shown.window->click(*shown.part<NSSearchField>("filterField"));
                shown.window->type("weird");
                keepSidebar(stage);
            } },
        { "sidebar-no-axes",
            [](Stage& stage) {
                FontBuilder builder;
                builder.addMaster("only", {});
                builder.addGlyph("a");
                stage.showFont(builder.font(), "a");
                keepSidebar(stage);
            } },
        { "sidebar-focus",
            [](Stage& stage) {
                showGlyphAxes(stage);
                auto& shown = stage.window();
                qtWidget(*shown.slider("Weight"))->setFocus(Qt::TabFocusReason);
                keepSidebar(stage);
            } },
        { "sidebar-crowded",
            [](Stage& stage) {
                stage.showFont(crowdedFont(), "a");
                keepSidebar(stage);
            } },
        { "editor-new", [](Stage& stage) { openEditor(stage, ""); } },
        { "editor-invalid", [](Stage& stage) { openEditor(stage, "Spur"); } },
        { "editor-long",
            [](Stage& stage) {
                openEditor(
                    stage, "A name that is far too long for the field that it is typed into, and then some");
            } },
    };
}
