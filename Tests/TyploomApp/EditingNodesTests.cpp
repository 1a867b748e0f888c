#include "Tests/TyploomApp/FamilyWindow.h"
#include "Typloom/TyploomApp/TLNodeSelection.h"

#include <QLineEdit>

namespace {

using Place = std::pair<double, double>;

/// B is edited on "light": a box from 50 to 350, 700 high, 400 wide.
struct EditingNodesTest : FamilyWindow {
    EditingNodesTest() { history().clear(); }

    std::shared_ptr<TLLayer> layer() const { return controller->activeLayer(); }
    std::vector<Place> nodes() const
    {
        std::vector<Place> nodes;
        for (auto const& contour : layer()->outline().contours) {
            for (auto const& point : contour.points) {
                nodes.emplace_back(point.x, point.y);
            }
        }
        return nodes;
    }
    static std::vector<Place> box() { return { { 50, 0 }, { 350, 0 }, { 350, 700 }, { 50, 700 } }; }

    /// Where a place of the edited glyph is in the window.
    QPoint pointAt(double x, double y) const
    {
        auto const frame = view.frameOfObject(view.selectedRange().location).value();
        auto const ascender = family.font()->fontMasters().front()->metrics().ascender;
        QPointF const place(
            frame.origin.x + x * view.scale(), frame.origin.y + (ascender - y) * view.scale());
        return qtWidget(view)->mapTo(window.widget(), place.toPoint());
    }
    void clickNode(double x, double y, Qt::KeyboardModifiers modifiers = {}) const
    {
        QTest::mouseClick(window.widget()->windowHandle(), Qt::LeftButton, modifiers, pointAt(x, y));
        settle();
    }
    void pressAt(double x, double y, Qt::KeyboardModifiers modifiers = {}) const
    {
        QTest::mousePress(window.widget()->windowHandle(), Qt::LeftButton, modifiers, pointAt(x, y));
        settle();
    }
    /// In two moves, each with its turns of the event loop, from the press's place in font units.
    void dragBy(double dx, double dy, QPoint from, Qt::KeyboardModifiers modifiers = {}) const
    {
        for (double const share : { 0.5, 1.0 }) {
            QPointF const way(dx * share * view.scale(), -dy * share * view.scale());
            auto const place = from + way.toPoint();
            QMouseEvent move(QEvent::MouseMove, place, place, window.widget()->mapToGlobal(place),
                Qt::NoButton, Qt::LeftButton, modifiers);
            QCoreApplication::sendEvent(window.widget()->windowHandle(), &move);
            settle();
        }
        m_pointer = from + QPointF(dx * view.scale(), -dy * view.scale()).toPoint();
    }
    void releaseMouse(Qt::KeyboardModifiers modifiers = {}) const
    {
        QTest::mouseRelease(window.widget()->windowHandle(), Qt::LeftButton, modifiers, m_pointer);
        settle();
    }
    void drag(double x, double y, double dx, double dy, Qt::KeyboardModifiers modifiers = {}) const
    {
        auto const from = pointAt(x, y);
        pressAt(x, y, modifiers & ~Qt::ShiftModifier);
        dragBy(dx, dy, from, modifiers);
        releaseMouse(modifiers);
    }
    /// What a drag of that many units comes to: the mouse moves by whole points.
    double moved(double units) const { return std::round(std::round(units * view.scale()) / view.scale()); }
    int steps() const
    {
        int count = 0;
        for (; history().canUndo(); ++count) {
            history().undo();
            settle();
        }
        return count;
    }

private:
    mutable QPoint m_pointer;
};

TLOutline curve()
{
    TLOutline outline;
    outline.advance = 400;
    outline.contours = { { { { 100, 0, TLPointType::curve, true, {} },
        { 150.5, 0, TLPointType::offcurve, false, {} }, { 200, 50, TLPointType::offcurve, false, {} },
        { 200, 300, TLPointType::curve, false, {} }, { 100, 300, TLPointType::line, false, {} },
        { 0, 100, TLPointType::offcurve, false, {} }, { 60, 0, TLPointType::offcurve, false, {} } } } };
    return outline;
}

} // namespace

TEST_F(EditingNodesTest, aDragMovesByWholeUnitsAndIsOneStep)
{
    drag(350, 700, 40, 30);
    auto expected = box();
    expected[2] = { 350 + moved(40), 700 + moved(30) };
    EXPECT_EQ(nodes(), expected);
    EXPECT_EQ(history().undoTitle(), "Move Nodes");
    EXPECT_EQ(steps(), 1);
    EXPECT_EQ(nodes(), box());
    history().redo();
    EXPECT_EQ(nodes(), expected);

    press(Qt::Key_Left);
    expected[2].first -= 1;
    EXPECT_EQ(nodes(), expected) << "the node is still selected";
}

TEST_F(EditingNodesTest, aClickSelectsShiftAddsAndTakesAwayAndKeysNudge)
{
    auto expected = box();
    clickNode(50, 0);
    press(Qt::Key_Up);
    clickNode(350, 0, Qt::ShiftModifier);
    press(Qt::Key_Right, Qt::ShiftModifier);
    expected[0] = { 60, 1 };
    expected[1] = { 360, 0 };
    EXPECT_EQ(nodes(), expected);
    clickNode(60, 1, Qt::ShiftModifier);
    press(Qt::Key_Down);
    expected[1].second = -1;
    EXPECT_EQ(nodes(), expected);
    clickNode(200, 300);
    press(Qt::Key_Right);
    EXPECT_EQ(view.selectedRange(), (NSRange { 1, 0 })) << "nothing is selected: the key moves the cursor";
    press(Qt::Key_Left);
    EXPECT_EQ(nodes(), expected);
    EXPECT_EQ(steps(), 3);
}

TEST_F(EditingNodesTest, aBoxSelectsWhatItHoldsAndEscapeClears)
{
    drag(20, 750, 360, -100); // Around the upper two.
    press(Qt::Key_Up, Qt::ShiftModifier);
    auto expected = box();
    expected[2].second = expected[3].second = 710;
    EXPECT_EQ(nodes(), expected);
    press(Qt::Key_Escape);
    press(Qt::Key_Right);
    EXPECT_EQ(view.selectedRange().location, 1U) << "nothing is selected";
    EXPECT_EQ(steps(), 1);
}

TEST_F(EditingNodesTest, shiftHoldsTheDirectionAndAllSelectedNodesGoAlong)
{
    clickNode(50, 0);
    clickNode(50, 700, Qt::ShiftModifier);
    drag(50, 700, -30, 12, Qt::ShiftModifier);
    auto expected = box();
    expected[0].first = expected[3].first = 50 + moved(-30);
    EXPECT_EQ(nodes(), expected);
    clickNode(expected[0].first, 0);
    press(Qt::Key_Up);
    EXPECT_EQ(nodes()[0].second, 1) << "a click on a selected node selects it alone";
    EXPECT_EQ(nodes()[3].second, 700);
}

TEST_F(EditingNodesTest, handlesFollowTheirNodeAndKeepTheirFractions)
{
    layer()->setOutline(curve());
    settle();
    clickNode(100, 0);
    press(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(nodes(),
        (std::vector<Place> {
            { 100, 10 }, { 150.5, 10 }, { 200, 50 }, { 200, 300 }, { 100, 300 }, { 0, 100 }, { 60, 10 } }));
    clickNode(200, 50);
    press(Qt::Key_Right);
    EXPECT_EQ(nodes()[2], Place(201, 50));
    EXPECT_EQ(nodes()[3], Place(200, 300)) << "a handle moves alone";
}

TEST(TLNodeSelection, theOtherHandleOfASmoothNodeTurnsAndKeepsItsLength)
{
    auto const turned = TLOutlineWithMovedNodes(curve(), { { 0, 1 } }, { -50.5, 60 });
    auto const& points = turned.contours[0].points;
    EXPECT_EQ(Place(points[0].x, points[0].y), Place(100, 0));
    EXPECT_EQ(Place(points[6].x, points[6].y), Place(100, -40));
    auto open = curve();
    open.contours[0].points[0].type = TLPointType::move;
    auto const moved = TLOutlineWithMovedNodes(open, { { 0, 0 }, { 7, 7 } }, { 5, 0 });
    EXPECT_EQ(moved.contours[0].points[1].x, 155.5);
    EXPECT_EQ(moved.contours[0].points[6].x, 60) << "an open contour does not close";
    EXPECT_EQ(TLNodeAtPlace(open, { 101, 1 }, 5), (TLNodeIndex { 0, 0 }));
    EXPECT_EQ(TLNodeAtPlace(open, { 120, 1 }, 5), std::nullopt);
}

TEST_F(EditingNodesTest, escapeDuringADragGivesBack)
{
    auto const from = pointAt(350, 700);
    pressAt(350, 700);
    dragBy(100, 100, from);
    ASSERT_NE(nodes(), box());
    press(Qt::Key_Escape);
    EXPECT_EQ(nodes(), box());
    dragBy(50, 50, from);
    releaseMouse();
    EXPECT_EQ(nodes(), box());
    EXPECT_FALSE(history().canUndo());
    EXPECT_FALSE(history().isModified());
}

TEST_F(EditingNodesTest, theAdvanceWidthIsDraggedAtItsLineAndTyped)
{
    auto const origin = view.frameOfObject(0)->origin.x;
    drag(400, 350, 120, 40);
    EXPECT_EQ(layer()->outline().advance, 400 + moved(120));
    EXPECT_EQ(nodes(), box());
    EXPECT_NEAR(view.frameOfObject(0)->origin.x, origin, 0.01) << "the glyph does not slide away";
    EXPECT_EQ(history().undoTitle(), "Change Width");
    auto& field = control<QLineEdit>("Width");
    EXPECT_EQ(field.text(), QString::number(400 + moved(120)));
    drag(400 + moved(120), 350, -5000, 0);
    EXPECT_EQ(layer()->outline().advance, 0);
    EXPECT_EQ(steps(), 2);

    field.setFocus();
    typeText("512.5\n");
    EXPECT_EQ(layer()->outline().advance, 512.5);
    press(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(layer()->outline().advance, 522.5);
    typeText("-7\n");
    EXPECT_EQ(layer()->outline().advance, 0);
    EXPECT_EQ(steps(), 3);
    EXPECT_EQ(field.text(), "400");
    window.goToLocation({ { "wght", 300.0 } });
    settle();
    EXPECT_FALSE(field.isEnabled());
    EXPECT_EQ(field.text(), "");
}

TEST_F(EditingNodesTest, anInterpolationCannotBeEditedAndClicksStillChooseGlyphs)
{
    auto const before = family.b->state();
    window.goToLocation({ { "wght", 500.0 } });
    settle();
    drag(50, 0, 100, 0);
    press(Qt::Key_Up);
    EXPECT_TRUE(family.b->state() == before);
    EXPECT_TRUE(view.axisLocation());
    click(1);
    EXPECT_EQ(view.selectedRange(), (NSRange { 1, 0 }));
    window.goToLocation({});
    settle();
    click(0);
    EXPECT_EQ(view.selectedRange(), (NSRange { 0, 0 })) << "on a layer, too";
    EXPECT_TRUE(family.b->state() == before);
}

TEST_F(EditingNodesTest, theSelectionEndsWithItsGlyphAndLayerAndLastsOverUndo)
{
    clickNode(50, 700);
    press(Qt::Key_Up);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(nodes(), box());
    press(Qt::Key_Up);
    EXPECT_EQ(nodes()[3].second, 701) << "still selected";
    auto shorter = layer()->outline();
    shorter.contours[0].points.pop_back();
    layer()->setOutline(shorter);
    settle();
    press(Qt::Key_Right);
    EXPECT_EQ(view.selectedRange().location, 1U) << "the node is gone";

    click(0);
    clickNode(350, 0);
    window.goToLocation({ { "wght", 1000.0 } });
    settle();
    press(Qt::Key_Right);
    EXPECT_EQ(layer()->glyph(), family.a) << "another layer: the key moves the cursor";
}

TEST_F(EditingNodesTest, aDragEndsWhenItsLayerGoes)
{
    window.goToLocation({ { "wght", 250.0 } });
    settle();
    press(Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);
    ASSERT_EQ(layer()->name(), "weight=250");
    auto const corner = layer()->outline().contours[0].points[2];
    auto const from = pointAt(corner.x, corner.y);
    pressAt(corner.x, corner.y);
    dragBy(40, 0, from);
    family.b->removeLayer(layer()->layerId());
    settle();
    dragBy(80, 0, from);
    releaseMouse();
    EXPECT_EQ(window.stateText(), "Light");
    EXPECT_EQ(nodes(), box());
    EXPECT_EQ(steps(), 2) << "the layer, and its drag with its end";
}

TEST_F(EditingNodesTest, selectedNodesStandOut)
{
    auto const before = colorAt(0, 350, 700);
    clickNode(350, 700);
    EXPECT_GT(distance(colorAt(0, 350, 700), before), 150);
    EXPECT_LT(distance(colorAt(0, 50, 0), before), 30);
}
