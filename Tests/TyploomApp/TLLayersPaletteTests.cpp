#include "Platform/Foundation/NSLocale.h"
#include "Tests/TyploomApp/FamilyWindow.h"

#include <QAction>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <QToolButton>

namespace {

/// With the glyph A or C edited.
struct TLLayersPaletteTest : FamilyWindow {
    TLLayersPaletteTest()
    {
        NSSetCurrentLocale("en_US");
        history().clear();
    }
    ~TLLayersPaletteTest() override { NSSetCurrentLocale(""); }

    QListView& list() const { return control<QListView>("Layers"); }
    QLineEdit& field(QString const& axis) const { return control<QLineEdit>(axis + " coordinate"); }
    std::string textOf(QString const& axis) const { return field(axis).text().toStdString(); }
    QPushButton* offer() const
    {
        for (auto* const button : window.widget()->findChildren<QPushButton*>()) {
            if (button->text() == "Add layer here" && button->isVisible()) {
                return button;
            }
        }
        return nullptr;
    }
    QStringList rows() const
    {
        QStringList rows;
        for (int row = 0; row < list().model()->rowCount(); ++row) {
            rows.append(list().model()->index(row, 0).data(Qt::AccessibleTextRole).toString());
        }
        return rows;
    }
    QString shownRow() const { return list().currentIndex().data().toString(); }

    void clickAt(QWidget& widget, QPoint place) const
    {
        QTest::mouseClick(
            window.widget()->windowHandle(), Qt::LeftButton, {}, widget.mapTo(window.widget(), place));
        settle();
    }
    void clickRow(int row) const
    {
        clickAt(*list().viewport(), list().visualRect(list().model()->index(row, 0)).center());
    }
    void clickOn(QWidget& widget) const { clickAt(widget, widget.rect().center()); }
    void type(QString const& axis, QString const& text) const
    {
        clickOn(field(axis));
        typeText(text);
    }
    std::shared_ptr<TLLayer> shown() const { return controller->activeLayer(); }
};

} // namespace

TEST_F(TLLayersPaletteTest, listsTheLayersInTheGlyphsOrderAndAClickGoesThere)
{
    FontBuilder::addOtherLayer(family.c, "sketch", "light");
    window.editGlyph("C");
    settle();
    EXPECT_EQ(rows(),
        QStringList({ "Light, Master, weight 0", "Bold, Master, weight 1000",
            "C-arm, Intermediate, arm 100, weight 0", "sketch, Other" }));
    EXPECT_EQ(shownRow(), "Light");
    clickRow(2);
    EXPECT_EQ(shown(), family.c->layerForId("C-arm"));
    clickRow(1);
    EXPECT_EQ(controller->masterIndex(), 1U);
    EXPECT_EQ(shown(), family.c->layerForId("bold"));
    clickRow(3);
    EXPECT_EQ(shown(), family.c->layerForId("sketch"));
    EXPECT_TRUE(qtWidget(view)->hasFocus()) << "the drawing keeps the keyboard";

    view.setAxisLocation(TLLocation { { "wght", 300.0 } });
    settle();
    EXPECT_EQ(shownRow(), "") << "on no layer";
    clickRow(3);
    EXPECT_EQ(shown(), family.c->layerForId("sketch"));
    view.switchToLayerWithId("C-arm", {}, { 4, 1 });
    settle();
    EXPECT_EQ(shownRow(), "C-arm");
    window.setText("");
    settle();
    EXPECT_EQ(rows(), QStringList());
}

TEST_F(TLLayersPaletteTest, addsALayerWhereTheViewStandsAndOffersThatOnAnInterpolationOnly)
{
    EXPECT_EQ(offer(), nullptr);
    window.goToLocation({ { "wght", 250.0 } });
    settle();
    ASSERT_NE(offer(), nullptr);
    clickOn(*offer());
    EXPECT_EQ(window.stateText(), "weight=250");
    EXPECT_EQ(offer(), nullptr);
    EXPECT_EQ(shown()->outline().advance, 500);
    EXPECT_EQ(shown()->glyph(), family.b);
    EXPECT_EQ(rows(),
        QStringList({ "Light, Master, weight 0", "Bold, Master, weight 1000",
            "weight=250, Intermediate, weight 250" }));
    EXPECT_EQ(history().undoTitle(), "Add Layer");
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(rows().size(), 2);
    EXPECT_EQ(shownRow(), "Light");

    clickOn(control<QToolButton>("Add layer here"));
    EXPECT_EQ(shownRow(), "Light 2") << "on a master's place too";
    clickRow(0);
    press(Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(shownRow(), "Light 3");
}

TEST_F(TLLayersPaletteTest, saysWhereALayerStandsAlready)
{
    window.editGlyph("A");
    window.goToLocation({ { "wght", 700.0 } });
    settle();
    press(Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);
    auto* const box = window.widget()->findChild<QMessageBox*>();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->text(), "The layer 'A-700' stands at this place already.");
    EXPECT_EQ(rows().size(), 3);
}

TEST_F(TLLayersPaletteTest, takesCoordinatesInTheUsersLanguage)
{
    NSSetCurrentLocale("de_DE");
    window.editGlyph("C");
    settle();
    EXPECT_FALSE(field("weight").isEnabled()) << "a master's";
    EXPECT_EQ(textOf("arm"), "");
    clickRow(2);
    auto const layer = shown();
    type("arm", "72,5\n");
    EXPECT_EQ(layer->coordinates(), (TLCoordinates { { "wght", 0 }, { "arm", 72.5 } }));
    EXPECT_EQ(textOf("arm"), "72,5");
    EXPECT_TRUE(field("arm").hasFocus());
    EXPECT_EQ(history().undoTitle(), "Change Coordinates");

    for (QString const bad : { "nan", "1e999", "12 13", "x" }) {
        typeText(bad + "\n");
        EXPECT_EQ(textOf("arm"), "72,5") << bad.toStdString();
    }
    press(Qt::Key_Backspace);
    press(Qt::Key_Return);
    EXPECT_EQ(layer->coordinates(), (TLCoordinates { { "wght", 0 } })) << "an empty text is no coordinate";
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(textOf("arm"), "72,5");

    type("weight", "5000\n");
    EXPECT_EQ(textOf("weight"), "1000") << "no further than the axis";
    press(Qt::Key_Backspace);
    press(Qt::Key_Return);
    EXPECT_EQ(textOf("weight"), "1000") << "a layer stands somewhere on every font axis";
    press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(layer->coordinates().at("wght"), 990);
    typeText("5");
    press(Qt::Key_Escape);
    EXPECT_EQ(textOf("weight"), "990");
    press(Qt::Key_Escape);
    EXPECT_TRUE(qtWidget(view)->hasFocus());
}

TEST_F(TLLayersPaletteTest, keepsWhatIsTypedOverUpdatesAndTakesItForItsLayerWhenAnotherIsShown)
{
    window.editGlyph("C");
    settle();
    clickRow(2);
    auto const layer = shown();
    type("arm", "33");
    family.b->layerForId("light")->setOutline(boxOutline(444));
    settle();
    EXPECT_EQ(textOf("arm"), "33");
    EXPECT_EQ(layer->coordinates().at("arm"), 100);
    clickRow(0);
    EXPECT_EQ(layer->coordinates().at("arm"), 33);
    EXPECT_EQ(shownRow(), "Light");
    EXPECT_EQ(textOf("arm"), "");
}

TEST_F(TLLayersPaletteTest, deletesALayerAfterAQuestionAndNeverAMasters)
{
    window.editGlyph("A");
    settle();
    auto& button = control<QToolButton>("Delete Layer");
    EXPECT_FALSE(button.isEnabled());
    EXPECT_EQ(button.toolTip(), "The layer of a master cannot be deleted.");
    clickRow(2);
    auto const answer = [&](QString const& text) {
        clickOn(button);
        auto* const box = window.widget()->findChild<QMessageBox*>();
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box->text(), "Delete the layer “A-700” of the glyph “A”?");
        for (auto* const choice : box->buttons()) {
            if (choice->text().remove('&') == text) {
                QTest::mouseClick(choice, Qt::LeftButton);
            }
        }
        settle();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        window.widget()->activateWindow();
    };
    answer("Cancel");
    EXPECT_EQ(shownRow(), "A-700");
    answer("Delete");
    EXPECT_EQ(rows().size(), 2);
    EXPECT_EQ(shownRow(), "Light");
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(rows().size(), 3);
}

TEST_F(TLLayersPaletteTest, staysQuickAndWhereItWasScrolledToWithFourThousandLayers)
{
    QElapsedTimer timer;
    {
        for (int index = 0; index < 4096; ++index) {
            FontBuilder::addBraceLayer(family.b, "b" + std::to_string(index), "light",
                { { "wght", 100 + index * 0.2 } }, boxOutline(400));
        }
        timer.start();
        settle();
    }
    EXPECT_EQ(list().model()->rowCount(), 4098);
    EXPECT_LT(timer.elapsed(), 2000);
    list().scrollTo(list().model()->index(2000, 0), QAbstractItemView::PositionAtTop);
    auto const first = list().indexAt({ 5, 5 }).row();
    EXPECT_EQ(first, 2000);
    family.b->removeLayer("b3000");
    family.b->layerForId("b5")->setOutline(boxOutline(500));
    timer.start();
    settle();
    EXPECT_LT(timer.elapsed(), 1000);
    EXPECT_EQ(list().indexAt({ 5, 5 }).row(), first);
    EXPECT_EQ(list().model()->rowCount(), 4097);
    clickRow(2001);
    EXPECT_EQ(shown(), family.b->layerForId("b1999"));
}

TEST_F(TLLayersPaletteTest, isHiddenAndShownByItsCommand)
{
    press(Qt::Key_L, Qt::ControlModifier);
    EXPECT_FALSE(list().isVisible());
    window.editGlyph("A");
    settle();
    press(Qt::Key_L, Qt::ControlModifier);
    EXPECT_TRUE(list().isVisible());
    EXPECT_EQ(rows().size(), 3) << "it has caught up";
}
