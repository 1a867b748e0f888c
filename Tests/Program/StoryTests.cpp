#include "Tests/Program/ProgramWindow.h"

#include "Tests/Support/DocumentText.h"
#include "Tests/Support/FamilyCopy.h"
#include "Typloom/Formats/DesignspaceReader.h"
#include "Typloom/TyploomApp/TLDocumentEditViewController.h"
#include "Typloom/TyploomCore/TLDocumentHistory.h"

#include <QAction>
#include <QLineEdit>
#include <QListView>
#include <gmock/gmock.h>

using testing::ElementsAre;

namespace {

constexpr Qt::KeyboardModifiers ctrlShift = Qt::ControlModifier | Qt::ShiftModifier;
std::string const glyphName = "n";

/// A window of the program in the hands of its user.
class UsedWindow : public ProgramWindow {
public:
    explicit UsedWindow(TLDocumentWindow& shown)
        : ProgramWindow(shown)
    {
        document->widget()->resize(1400, 800);
        activate();
    }

    void addAxis(std::string const& name) const
    {
        window->click(*plusButton());
        settle();
        ASSERT_NE(popover(), nullptr);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&popoverWidget()));
        WindowEvents events(popoverWidget());
        events.type(name);
        events.pressKey(Qt::Key_Return);
        settle();
        activate();
    }
    void typeCoordinate(std::string const& axis, std::string const& value) const
    {
        auto const& field = control<QLineEdit>(QString::fromStdString(axis) + " coordinate");
        window->clickAt(field, field.rect().center());
        window->type(value);
        press(Qt::Key_Return);
    }
    void moveSlider(std::string const& axis, double value) const
    {
        auto const knob = slider(axis);
        window->press(*knob, fraction(*knob, knob->doubleValue()));
        window->moveTo(*knob, fraction(*knob, value));
        window->release(*knob, fraction(*knob, value));
        settle();
    }
    QStringList layerRows() const
    {
        auto const& list = control<QListView>("Layers");
        QStringList rows;
        for (int row = 0; row < list.model()->rowCount(); ++row) {
            rows.append(list.model()->index(row, 0).data(Qt::AccessibleTextRole).toString());
        }
        return rows;
    }
    /// Moves the mouse from a node by that many points.
    void dragNode(TLPoint const& node, QPoint way) const
    {
        auto const& view = lineView();
        auto const frame = view.frameOfObject(view.selectedRange().location).value();
        auto const ascender = document->font()->fontMasters().front()->metrics().ascender;
        QPointF const place(
            frame.origin.x + node.x * view.scale(), frame.origin.y + (ascender - node.y) * view.scale());
        auto const from = qtWidget(view)->mapTo(document->widget(), place.toPoint());
        window->drag(from, from + way);
        settle();
    }
    double scale() const { return lineView().scale(); }

private:
    TLLineEditView const& lineView() const
    {
        return *std::dynamic_pointer_cast<TLDocumentEditViewController>(document->editViewController())
                    ->lineView();
    }
};

/// A share of the way from one outline to another.
TLOutline between(TLOutline from, TLOutline const& to, double share)
{
    auto const mix = [share](double& value, double other) { value += (other - value) * share; };
    mix(from.advance, to.advance);
    for (std::size_t contour = 0; contour < from.contours.size(); ++contour) {
        auto& points = from.contours[contour].points;
        for (std::size_t index = 0; index < points.size(); ++index) {
            mix(points[index].x, to.contours[contour].points[index].x);
            mix(points[index].y, to.contours[contour].points[index].y);
        }
    }
    return from;
}

void expectNear(TLOutline const& drawn, TLOutline const& expected)
{
    EXPECT_NEAR(drawn.advance, expected.advance, 1e-9);
    ASSERT_EQ(drawn.contours.size(), expected.contours.size());
    for (std::size_t contour = 0; contour < drawn.contours.size(); ++contour) {
        auto const& points = drawn.contours[contour].points;
        ASSERT_EQ(points.size(), expected.contours[contour].points.size());
        for (std::size_t index = 0; index < points.size(); ++index) {
            EXPECT_NEAR(points[index].x, expected.contours[contour].points[index].x, 1e-9) << index;
            EXPECT_NEAR(points[index].y, expected.contours[contour].points[index].y, 1e-9) << index;
        }
    }
}

} // namespace

/// All that a designer does to give a glyph an axis of its own, from the first click to the saved family.
TEST(Story, anAxisIsAddedNamedDrawnMovedUndoneRedoneSavedAndFoundAgain)
{
    FamilyCopy const copy(SOURCE_FOLDER "/Fonts/Skarvane/Skarvane.designspace");
    auto const filesBefore = copy.files();
    ProgramWindows program;
    UsedWindow const used(program.open(copy.path()));
    auto const font = used.document->font();
    auto& history = font->history();
    auto const textBefore = textOf(*font);

    used.chooseGlyph(glyphName);
    ASSERT_EQ(used.layer()->glyph()->name(), glyphName);
    auto const rowsBefore = used.rows();
    auto const layersBefore = used.layerRows();
    auto const glyph = used.layer()->glyph();
    used.addAxis("Serif");
    ASSERT_EQ(glyph->countOfAxes(), 1U);
    EXPECT_EQ(glyph->axes()[0]->name(), "Serif");
    EXPECT_EQ(used.popover(), nullptr);
    EXPECT_FALSE(used.slider("Serif")->isEnabled()) << "nothing leaves its default yet";

    auto const regular = used.layer();
    used.press(Qt::Key_L, ctrlShift);
    auto const added = used.layer();
    ASSERT_TRUE(added->isBraceLayer());
    EXPECT_EQ(added->outline(), regular->outline());
    used.typeCoordinate("Serif", "80");
    EXPECT_EQ(added->coordinates().at(glyph->axes()[0]->axisId()), 80);
    EXPECT_TRUE(used.slider("Serif")->isEnabled());
    EXPECT_EQ(used.slider("Serif")->maxValue(), 80);
    EXPECT_EQ(used.text("Serif"), "80");

    constexpr std::size_t foot = 1; // The right end of the left stem's foot.
    auto expected = regular->outline();
    auto& moved = expected.contours[0].points[foot];
    QPoint const way(30, 12); // Points of the screen, downwards.
    used.dragNode(moved, way);
    moved.x = std::round(moved.x + way.x() / used.scale());
    moved.y = std::round(moved.y - way.y() / used.scale());
    EXPECT_EQ(added->outline(), expected);
    ASSERT_NE(added->outline(), regular->outline());

    used.moveSlider("Serif", 30);
    EXPECT_EQ(used.document->stateText(), "Interpolated");
    auto const place = used.slider("Serif")->doubleValue();
    EXPECT_NEAR(place, 30, 1);
    EXPECT_EQ(used.text("Serif"), "30") << "whole units, as far as a text goes";
    auto const drawn = between(regular->outline(), added->outline(), place / 80);
    expectNear(used.document->editedOutline().value(), drawn);

    auto const textAfter = textOf(*font);
    auto const rowsAfter = used.rows();
    auto const layersAfter = used.layerRows();
    std::vector<std::string> titles;
    while (history.canUndo()) {
        titles.push_back(history.undoTitle());
        used.press(Qt::Key_Z, Qt::ControlModifier);
    }
    EXPECT_THAT(
        titles, ElementsAre("Move Nodes", "Change Coordinates", "Add Layer", "Rename Axis", "Add Axis"));
    EXPECT_EQ(textOf(*font), textBefore);
    EXPECT_EQ(used.rows(), rowsBefore);
    EXPECT_EQ(used.layerRows(), layersBefore);
    EXPECT_FALSE(used.document->widget()->isWindowModified());
    for (std::size_t step = 0; step < titles.size(); ++step) {
        used.press(Qt::Key_Z, ctrlShift);
    }
    EXPECT_FALSE(history.canRedo());
    EXPECT_EQ(textOf(*font), textAfter);
    EXPECT_EQ(used.layerRows(), layersAfter);
    used.moveSlider("Serif", place);
    EXPECT_EQ(used.rows(), rowsAfter);
    expectNear(used.document->editedOutline().value(), drawn);

    EXPECT_EQ(copy.files(), filesBefore) << "nothing is written before it is saved";
    EXPECT_TRUE(used.document->widget()->isWindowModified());
    used.press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_FALSE(used.document->widget()->isWindowModified());

    ProgramWindows another;
    UsedWindow const again(another.open(copy.path()));
    ASSERT_NE(again.document->font(), font);
    EXPECT_EQ(textOf(*again.document->font()), textAfter);
    EXPECT_THAT(again.document->report(), ElementsAre());
    again.chooseGlyph(glyphName);
    EXPECT_EQ(again.layerRows(), layersAfter);
    again.moveSlider("Serif", place);
    EXPECT_EQ(again.rows(), rowsAfter);
    expectNear(again.document->editedOutline().value(), drawn);
}
