#include "Tests/TyploomKit/ShownSlider.h"

#include "Platform/Foundation/NSBundle.h"
#include "Platform/Foundation/NSLocale.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <QAccessible>
#include <QHelpEvent>
#include <QToolTip>

#include <fstream>

using testing::DoubleEq;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {
/// Counts what the slider passes on, as the list around it would scroll.
class Surrounding final : public NSView {
public:
    void scrollWheel(NSEvent const&) override { ++wheels; }
    void keyDown(NSEvent const&) override { ++keys; }
    int wheels { 0 };
    int keys { 0 };
};

struct SliderInAList : ShownSlider {
    std::shared_ptr<Surrounding> list = std::make_shared<Surrounding>();
    SliderInAList()
    {
        window->addSubview(list);
        list->setFrame({ {}, { 300, 100 } });
        slider->removeFromSuperview();
        list->addSubview(slider);
        slider->setFrame({ { 20, 30 }, { 218, 24 } });
        qtWidget(*list)->show();
        qtWidget(*slider)->show();
        QCoreApplication::processEvents();
    }
};
} // namespace

TEST(SliderKeyboard, tabGivesTheFocus)
{
    ShownSlider shown;
    qtWidget(*shown.window)->activateWindow();
    shown.key(Qt::Key_Tab);
    EXPECT_TRUE(shown.slider->isFirstResponder());
}

TEST(SliderKeyboard, inARangeUnderTenArrowsStepByATenth)
{
    ShownSlider shown;
    shown.focus();
    shown.slider->setMaxValue(5);
    shown.slider->setDoubleValue(0.2);
    shown.key(Qt::Key_Right); // 0.2 + 0.1 is not 0.3 in binary
    shown.key(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_THAT(shown.recorder->values, ElementsAre(0.3, 0.8));
    shown.slider->setMaxValue(0.5);
    shown.slider->setDoubleValue(0.2);
    shown.key(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(shown.recorder->values.back(), 0.1);
}

TEST(SliderKeyboard, pageKeysGoToTheLandmarksAndHomeAndEndToTheEnds)
{
    ShownSlider shown;
    shown.focus();
    shown.slider->setLandmarks(std::vector<double> { 250, 500.0005, 800 });
    for (auto const key : { Qt::Key_PageUp, Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_PageDown,
             Qt::Key_PageDown, Qt::Key_PageDown, Qt::Key_End, Qt::Key_Home }) {
        shown.key(key);
    }
    EXPECT_THAT(shown.recorder->values, ElementsAre(800, 1000, 800, 500.0005, 250, 0, 1000, 0));
}

TEST(SliderKeyboard, aKeyThatChangesNothingSendsNothingAndOtherKeysArePassedOn)
{
    SliderInAList shown;
    shown.focus();
    shown.slider->setDoubleValue(1000);
    shown.key(Qt::Key_Right);
    shown.key(Qt::Key_End);
    EXPECT_EQ(shown.list->keys, 0);
    shown.key(Qt::Key_A);
    EXPECT_EQ(shown.list->keys, 1);
    shown.key(Qt::Key_Left, Qt::ControlModifier);
    EXPECT_GT(shown.list->keys, 1);
    EXPECT_THAT(shown.recorder->values, IsEmpty());
}

TEST(SliderWheel, scrollsTheListUnlessTheSliderHasTheFocus)
{
    SliderInAList shown;
    shown.wheel(1);
    EXPECT_EQ(shown.list->wheels, 1);
    EXPECT_THAT(shown.recorder->values, IsEmpty());
    shown.focus();
    shown.wheel(1);
    shown.wheel(-1);
    EXPECT_THAT(shown.recorder->values, ElementsAre(501, 500));
    EXPECT_EQ(shown.list->wheels, 1);
}

TEST(SliderWheel, atTheEndOfTheRangeAFocusedSliderKeepsIt)
{
    SliderInAList shown;
    shown.focus();
    shown.slider->setDoubleValue(999.5);
    shown.wheel(1);
    shown.wheel(1);
    EXPECT_THAT(shown.recorder->values, ElementsAre(1000));
    EXPECT_EQ(shown.list->wheels, 0);
}

TEST(SliderAccessibility, aScreenReaderFindsNameNumberAndPlaceAndCanChangeTheValue)
{
    ShownSlider shown;
    shown.slider->setAccessibilityLabel("Weight");
    shown.slider->setMaxValue(700);
    shown.slider->setMinValue(400);
    shown.slider->setDoubleValue(540);
    auto* const interface = QAccessible::queryAccessibleInterface(qtWidget(*shown.slider));
    ASSERT_TRUE(interface);
    EXPECT_EQ(interface->role(), QAccessible::Slider);
    EXPECT_EQ(interface->text(QAccessible::Name), "Weight");
    EXPECT_EQ(interface->text(QAccessible::Value), "540, between 400 and 700");
    auto* const value = interface->valueInterface();
    ASSERT_TRUE(value);
    EXPECT_EQ(value->currentValue(), 540);
    value->setCurrentValue(900);
    value->setCurrentValue(700);
    shown.slider->setEnabled(false);
    value->setCurrentValue(400);
    EXPECT_THAT(shown.recorder->values, ElementsAre(700));
}

TEST(SliderAccessibility, thePlaceIsBetweenLandmarksOrOnOne)
{
    ShownSlider shown;
    auto const spoken = [&](double value) {
        shown.slider->setDoubleValue(value);
        return QAccessible::queryAccessibleInterface(qtWidget(*shown.slider))
            ->text(QAccessible::Value)
            .toStdString();
    };
    shown.slider->setLandmarks(std::vector<double> { -5, 100, 400, 700 });
    EXPECT_EQ(spoken(540), "540, between 400 and 700");
    EXPECT_EQ(spoken(400.0004), "400, position 2 of 3");
    EXPECT_EQ(spoken(0), "0, between 0 and 100");
    EXPECT_EQ(spoken(900), "900, between 700 and 1000");
}

TEST(SliderAccessibility, theToolTipSaysValueAndRangeUnlessThereIsAnother)
{
    ShownSlider shown;
    auto* const widget = qtWidget(*shown.slider);
    QHelpEvent event(QEvent::ToolTip, { 5, 5 }, widget->mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(widget, &event);
    EXPECT_EQ(QToolTip::text(), "500, between 0 and 1000");
    TemporaryFolder const application;
    std::filesystem::create_directories(application.path() / "Resources" / "en.lproj");
    std::ofstream(application.path() / "Resources" / "en.lproj" / "Localizable.strings")
        << R"("slider.value-and-range.description" = "%2$@ to %3$@, now %1$@";)";
    NSBundle::setMainBundlePath(application.path());
    NSSetCurrentLocale("en_US");
    QCoreApplication::sendEvent(widget, &event);
    NSSetCurrentLocale("");
    NSBundle::setMainBundlePath({});
    EXPECT_EQ(QToolTip::text(), "0 to 1000, now 500") << "in the words of the application's table";
    shown.slider->setToolTip("Another");
    QCoreApplication::sendEvent(widget, &event);
    EXPECT_EQ(QToolTip::text(), "Another");
}
