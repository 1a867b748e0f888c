#include "Tests/TyploomApp/FamilyWindow.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace {

struct TLDocumentWindowTest : FamilyWindow { };

TLLocation weight(double value)
{
    return { { "wght", value } };
}

} // namespace

TEST_F(TLDocumentWindowTest, beginsWithTheEditedGlyphInTheMiddleOfTheView)
{
    EXPECT_NEAR(centreOf(0), view.bounds().size.width / 2, 0.01);
    EXPECT_NEAR(view.frameOfObject(0)->midY(), view.bounds().size.height / 2, 0.01);
    EXPECT_TRUE(qtWidget(view)->hasFocus());
}

TEST_F(TLDocumentWindowTest, reflowsAroundTheCentreOfTheEditedGlyph)
{
    click(1);
    auto const centre = centreOf(1);
    auto const width = view.frameOfObject(1)->size.width;
    bool hasRun = false;
    controller->reflowKeepActiveContentCenteredWithCallback([&](std::shared_ptr<NSObject> const&) {
        hasRun = true;
        view.setAxisLocation(weight(900));
    });
    EXPECT_TRUE(hasRun) << "before the operation returns";
    EXPECT_GT(view.frameOfObject(1)->size.width, width * 1.2);
    EXPECT_NEAR(centreOf(1), centre, 0.01);
    controller->reflowKeepActiveContentCenteredWithCallback(nullptr);
}

TEST_F(TLDocumentWindowTest, editsTheGlyphThatIsClickedWhereItIs)
{
    auto const before = centreOf(1);
    click(1);
    EXPECT_EQ(view.selectedRange(), (NSRange { 1, 0 }));
    EXPECT_EQ(controller->activeLayer(), family.a->layerForId("light"));
    EXPECT_NEAR(centreOf(1), before, 0.01);
    click(3, Qt::ShiftModifier);
    EXPECT_EQ(view.selectedRange(), (NSRange { 1, 3 }));
}

TEST_F(TLDocumentWindowTest, movesTheCursorByKeysAndBehindTheLastGlyph)
{
    auto* const handle = window.widget()->windowHandle();
    QTest::keyClick(handle, Qt::Key_Right);
    EXPECT_EQ(view.selectedRange(), (NSRange { 1, 0 }));
    QTest::keyClick(handle, Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(view.selectedRange(), (NSRange { 1, 2 }));
    QTest::keyClick(handle, Qt::Key_End);
    EXPECT_EQ(view.selectedRange(), (NSRange { 7, 0 }));
    EXPECT_EQ(controller->activeLayer(), nullptr);
    EXPECT_EQ(window.stateText(), "Light");
    EXPECT_EQ(window.editedOutline(), std::nullopt);
    QTest::keyClick(handle, Qt::Key_Left);
    EXPECT_EQ(controller->activeLayer(), family.x->layerForId("light"));
    auto const width = view.bounds().size.width;
    EXPECT_GT(centreOf(6), 0);
    EXPECT_LT(centreOf(6), width) << "what becomes edited is brought into sight";
}

TEST_F(TLDocumentWindowTest, drawsALayerWithNodesAndAnInterpolationFilled)
{
    auto const ink = color(NSColor::labelColor());
    auto const paper = color(NSColor::textBackgroundColor());
    auto const accent = color(NSColor::controlAccentColor());
    EXPECT_LT(distance(colorAt(1, 200, 350), ink), 10) << "a neighbour is filled";
    EXPECT_LT(distance(colorAt(0, 200, 350), paper), 120) << "the edited layer is lightly filled";
    EXPECT_LT(distance(colorAt(0, 50, 0), accent), 30) << "with a node at its corner";
    window.goToLocation(weight(500));
    settle();
    EXPECT_LT(distance(colorAt(0, 300, 350), ink), 10);
    EXPECT_GT(distance(colorAt(0, 50, 350), accent), 60) << "no node";
    EXPECT_LT(distance(colorAt(0, 52, 2), ink), distance(colorAt(0, 52, 2), accent));
}

TEST_F(TLDocumentWindowTest, drawsTheLineWhereTheEditedGlyphStands)
{
    click(1);
    auto const points = view.scale();
    window.goToLocation(weight(700));
    EXPECT_EQ(window.stateText(), "A-700");
    EXPECT_NEAR(view.frameOfObject(1)->size.width, 500 * points, 0.01) << "the layer as it is";
    EXPECT_NEAR(view.frameOfObject(0)->size.width, 680 * points, 0.01) << "B at weight 700";
}

TEST_F(TLDocumentWindowTest, interpolatesOnceAFrameAndOnlyWhatIsSeen)
{
    window.setText("BBBBBBBBBB" + std::string(500, 'A') + "P");
    settle();
    auto const before = TLInterpolationCountersNow().glyphsInterpolated;
    for (double value = 1; value <= 100; ++value) {
        view.setAxisLocation(weight(value));
    }
    EXPECT_EQ(TLInterpolationCountersNow().glyphsInterpolated, before) << "only drawing does";
    settle();
    EXPECT_LE(TLInterpolationCountersNow().glyphsInterpolated - before, 4U)
        << "A and B, nothing out of sight";
    EXPECT_EQ(window.editedOutline()->advance, 440);
}

TEST_F(TLDocumentWindowTest, saysWhatItDrawsWhereAGlyphCannotBeInterpolated)
{
    ASSERT_TRUE(window.showGlyph("X"));
    window.goToLocation(weight(900));
    settle();
    auto const& label = control<QLabel>("Location");
    EXPECT_TRUE(label.text().startsWith("Nearest source: Bold (")) << label.text().toStdString();
    EXPECT_EQ(window.stateText(), label.text().toStdString());
    EXPECT_EQ(window.editedOutline(), family.x->layerForId("bold")->outline());
    ASSERT_TRUE(window.showGlyph("B"));
    EXPECT_EQ(window.stateText(), "Interpolated");
    EXPECT_EQ(control<QLabel>("Coordinates").text(), "weight 900");
}

TEST_F(TLDocumentWindowTest, choosesMastersAndIntermediateLayersByThePicker)
{
    click(1);
    auto& picker = control<QComboBox>("Master");
    ASSERT_EQ(picker.count(), 4) << "two masters, a line, and the layer of A";
    EXPECT_EQ(picker.currentText(), "Light");
    auto const choose = [&picker](int row) {
        picker.setCurrentIndex(row);
        emit picker.activated(row);
    };
    choose(3);
    EXPECT_EQ(window.stateText(), "A-700");
    choose(1);
    EXPECT_EQ(controller->masterIndex(), 1U);
    EXPECT_EQ(window.stateText(), "Bold");
    view.setAxisLocation(weight(10));
    EXPECT_EQ(picker.currentText(), "Bold") << "the current master, under a preview";
    choose(1);
    EXPECT_EQ(window.stateText(), "Bold") << "the same master ends the preview";
    click(0);
    EXPECT_EQ(picker.count(), 2) << "B has no intermediate layer";
}

TEST_F(TLDocumentWindowTest, takesTextAndGlyphNamesFromTheirFields)
{
    auto& text = control<QLineEdit>("Text");
    auto& glyph = control<QLineEdit>("Glyph");
    EXPECT_EQ(glyph.text(), "B");
    text.setFocus();
    text.selectAll();
    QTest::keyClicks(&text, "/A B");
    EXPECT_EQ(view.selectedRange(), (NSRange { 0, 0 }));
    EXPECT_EQ(controller->activeLayer()->glyph(), family.a);
    EXPECT_EQ(text.text(), "/A B") << "what the user types stays";
    QTest::keyClick(&text, Qt::Key_Return);
    EXPECT_TRUE(qtWidget(view)->hasFocus());

    glyph.setFocus();
    settle();
    QTest::keyClicks(&glyph, "C");
    QTest::keyClick(&glyph, Qt::Key_Return);
    EXPECT_EQ(controller->activeLayer()->glyph(), family.c);
    EXPECT_EQ(text.text(), "CB");
    EXPECT_TRUE(qtWidget(view)->hasFocus());
}

TEST_F(TLDocumentWindowTest, givesBackTheNameOfTheEditedGlyphWhenNoneWasChosen)
{
    auto& glyph = control<QLineEdit>("Glyph");
    glyph.setFocus();
    settle();
    QTest::keyClicks(&glyph, "unknown");
    QTest::keyClick(&glyph, Qt::Key_Return);
    EXPECT_EQ(controller->activeLayer()->glyph(), family.b);
    QTest::keyClick(&glyph, Qt::Key_Escape);
    EXPECT_TRUE(qtWidget(view)->hasFocus());
    EXPECT_EQ(glyph.text(), "B");
}

TEST_F(TLDocumentWindowTest, showsOneGlyphAloneAndTellsOfUnknownOnes)
{
    EXPECT_TRUE(window.showGlyph("C"));
    EXPECT_EQ(control<QLineEdit>("Text").text(), "C");
    EXPECT_FALSE(window.showGlyph("unknown"));
    EXPECT_EQ(controller->activeLayer()->glyph(), family.c);
    window.setText("");
    EXPECT_EQ(controller->activeLayer(), nullptr);
    EXPECT_EQ(window.stateText(), "Light");
}

TEST_F(TLDocumentWindowTest, keepsWhatLiesUnderThePointerWhenZooming)
{
    auto const frame = view.frameOfObject(1).value();
    auto const scale = view.scale();
    view.zoomBy(2, frame.origin);
    EXPECT_NEAR(view.scale(), scale * 2, 1e-9);
    EXPECT_NEAR(view.frameOfObject(1)->origin.x, frame.origin.x, 0.01);
    EXPECT_NEAR(view.frameOfObject(1)->origin.y, frame.origin.y, 0.01);
    view.zoomToFit();
    EXPECT_NEAR(view.scale(), scale, 1e-9);
}

TEST_F(TLDocumentWindowTest, doesNotLetTheLineBeScrolledOutOfSight)
{
    NSEvent wheel;
    wheel.type = NSEventType::scrollWheel;
    wheel.scrollingDelta = { 0, 60 };
    auto const before = view.frameOfObject(0)->origin.y;
    view.scrollWheel(wheel);
    EXPECT_NEAR(view.frameOfObject(0)->origin.y, before + 60, 0.01);
    for (int turn = 0; turn < 100; ++turn) {
        view.scrollWheel(wheel);
    }
    EXPECT_LT(view.frameOfObject(0)->origin.y, view.bounds().size.height);
}

TEST_F(TLDocumentWindowTest, listsWhatCouldNotBeRead)
{
    auto* const button = [this] {
        for (auto* const candidate : window.widget()->findChildren<QPushButton*>()) {
            if (candidate->text().contains("problem")
                || candidate->toolTip().startsWith("What of the family")) {
                return candidate;
            }
        }
        return static_cast<QPushButton*>(nullptr);
    }();
    ASSERT_NE(button, nullptr);
    EXPECT_FALSE(button->isVisible());
    family.font()->addToReport("Bold.ufo is missing.");
    settle();
    EXPECT_TRUE(button->isVisible());
    EXPECT_EQ(button->text(), "1 problem…");
    window.addToReport("A plug-in does not load.");
    EXPECT_EQ(
        window.report(), (std::vector<std::string> { "A plug-in does not load.", "Bold.ufo is missing." }));
    EXPECT_EQ(button->text(), "2 problems…");
}

TEST(TLDocumentWindow, invitesToOpenAFamilyAndTakesOneLater)
{
    TLDocumentWindow window(nullptr);
    window.widget()->show();
    EXPECT_EQ(window.font(), nullptr);
    EXPECT_EQ(window.editViewController(), nullptr);
    EXPECT_EQ(window.stateText(), "");
    auto const buttons = window.widget()->findChildren<QPushButton*>();
    ASSERT_EQ(buttons.size(), 1);
    EXPECT_TRUE(buttons.front()->text().startsWith("Open"));

    EditFamily const family, other;
    window.setFont(family.font());
    EXPECT_EQ(window.font(), family.font());
    EXPECT_EQ(window.stateText(), "Light");
    window.setFont(other.font());
    EXPECT_EQ(window.font(), family.font()) << "one window for a family";
}
