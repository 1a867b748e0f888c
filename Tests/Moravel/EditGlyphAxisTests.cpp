#include "Tests/Support/AxisEditorFixture.h"

#include <QAccessible>
#include <QLabel>

#include <cmath>
#include <numbers>

class EditGlyphAxis : public AxisEditorFixture {
protected:
    EditGlyphAxis()
    {
        openBar();
        // Beside what the sidebar does.
        axisEditor()->setAxisContentDidChange([this](auto const& axis) {
            EXPECT_EQ(axis, bar);
            ++changes;
        });
    }
    static std::string accessibleName(NSView const& view)
    {
        return QAccessible::queryAccessibleInterface(qtWidget(view))->text(QAccessible::Name).toStdString();
    }
    /// Of a one-line text that is centred in its widget, from the top of the popover.
    int baseline(NSView const& view) const
    {
        auto const* const widget = qtWidget(view);
        auto const metrics = widget->fontMetrics();
        auto const top = widget->mapTo(&popoverWindow(), QPoint()).y();
        return top + (widget->height() - metrics.height()) / 2 + metrics.ascent();
    }
    std::shared_ptr<TLLayer> layer(char const* layerId) const { return glyph->layerForId(layerId); }

    int changes { 0 };
};

TEST_F(EditGlyphAxis, showsItsControlsAlignedAndInTheOrderOfTheirUse)
{
    auto& shown = *axisEditor();
    EXPECT_EQ(shown.axisNameLabel()->stringValue(), "Axis name:");
    EXPECT_EQ(shown.defaultValueLabel()->stringValue(), "Default:");
    EXPECT_EQ(shown.defaultValueDescriptionLabel()->stringValue(),
        "This value is used as the default axis coordinate for layers.");
    EXPECT_EQ(shown.deleteAxisButton()->title(), "Delete Axis");
    EXPECT_TRUE(shown.deleteAxisButton()->hasDestructiveAction());
    EXPECT_EQ(nameField().stringValue(), "Bar");
    EXPECT_EQ(shown.committedAxisName(), "Bar");
    EXPECT_EQ(defaultField().stringValue(), "0");
    EXPECT_EQ(defaultField().placeholderString(), "0");
    EXPECT_EQ(defaultField().font()->pointSize(), NSFont::systemFontSize());
    EXPECT_EQ(accessibleName(nameField()), "Axis name");
    EXPECT_EQ(accessibleName(defaultField()), "Default");

    EXPECT_EQ(shown.axisNameLabel()->frame().maxX(), shown.defaultValueLabel()->frame().maxX());
    EXPECT_EQ(nameField().frame().origin.x, defaultField().frame().origin.x);
    EXPECT_EQ(baseline(*shown.axisNameLabel()), baseline(nameField()));
    EXPECT_EQ(baseline(*shown.defaultValueLabel()), baseline(defaultField()));
    auto const* const description = qtWidget(*shown.defaultValueDescriptionLabel());
    EXPECT_GE(description->height(), description->heightForWidth(description->width()));
    EXPECT_GE(description->height(), 2 * description->fontMetrics().height()) << "it wraps";
    EXPECT_TRUE(qtWidget(*shown.view())->rect().contains(qtWidget(*shown.deleteAxisButton())->geometry()));

    EXPECT_TRUE(nameField().isFirstResponder());
    tab();
    EXPECT_TRUE(defaultField().isFirstResponder());
    tab();
    EXPECT_TRUE(shown.deleteAxisButton()->isFirstResponder());
    tab();
    EXPECT_TRUE(nameField().isFirstResponder());
}

TEST_F(EditGlyphAxis, acceptsEachNameThatNoOtherAxisOfTheGlyphHas)
{
    FontBuilder::addGlyphAxis(glyph, "cafe", "Café"); // One character with an accent.
    auto const& shown = *axisEditor();
    for (auto const* const name :
        { "Bar", "bar", "Weight", "café", "Cafe", "Ca fé", "  ", "\xF0\x9F\x85\xB0" }) {
        EXPECT_TRUE(shown.isValidAxisName(name)) << name;
    }
    for (auto const* const name : { "", "Café", "Cafe\u0301" }) {
        EXPECT_FALSE(shown.isValidAxisName(name)) << name;
    }
    FontBuilder::addGlyphAxis(glyph, "other", "Bar");
    EXPECT_FALSE(shown.isValidAxisName("Bar"));
}

TEST_F(EditGlyphAxis, renamesTheAxisWhileANameIsTypedAndNotByAnInvalidOne)
{
    FontBuilder::addGlyphAxis(glyph, "we", "We");
    type("Weight ");
    EXPECT_EQ(bar->name(), "Weight");
    EXPECT_EQ(changes, 6) << "not for the name that another axis has";
    EXPECT_EQ(nameField().stringValue(), "Weight ") << "the field is left alone";
    EXPECT_EQ(axisEditor()->committedAxisName(), "Bar");
    line(nameField()).selectAll();
    key(Qt::Key_Delete);
    EXPECT_EQ(bar->name(), "Weight");
    tab();
    EXPECT_EQ(bar->name(), "Bar") << "what was committed last";
    EXPECT_EQ(nameField().stringValue(), "Bar");
    EXPECT_EQ(beeps, 0);
}

TEST_F(EditGlyphAxis, commitsTheNameWithoutBlanksAroundItWhenTheFieldIsLeft)
{
    type(QString::fromUtf8(" \u00A0Optical  size\u2028"));
    tab();
    EXPECT_EQ(bar->name(), "Optical  size");
    EXPECT_EQ(nameField().stringValue(), "Optical  size");
    EXPECT_EQ(axisEditor()->committedAxisName(), "Optical  size");
}

TEST_F(EditGlyphAxis, refusesANameAtReturnBeforeItLooksAtTheDefault)
{
    FontBuilder::addGlyphAxis(glyph, "stem", "Stem");
    replaceText(defaultField(), "50");
    line(nameField()).setFocus(Qt::OtherFocusReason);
    EXPECT_EQ(bar->defaultValue(), 50) << "the field was left";
    replaceText(defaultField(), "60");
    nameField().setStringValue("Stem");
    changes = 0;
    key(Qt::Key_Return);
    EXPECT_EQ(beeps, 1);
    EXPECT_EQ(changes, 1);
    EXPECT_TRUE(isOpen());
    EXPECT_EQ(nameField().stringValue(), "Bar");
    EXPECT_EQ(bar->name(), "Bar");
    EXPECT_EQ(bar->defaultValue(), 50);
    EXPECT_EQ(defaultField().stringValue(), "60") << "not looked at";
    key(Qt::Key_Return);
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(bar->defaultValue(), 60);
    EXPECT_EQ(beeps, 1);
}

TEST_F(EditGlyphAxis, refusesADefaultAtReturnWithABeepAndStaysOpen)
{
    bar->setDefaultValue(12.5);
    type("Stem");
    replaceText(defaultField(), "heavy");
    changes = 0;
    key(Qt::Key_Return);
    EXPECT_EQ(beeps, 1);
    EXPECT_TRUE(isOpen());
    EXPECT_EQ(bar->name(), "Stem") << "the name was good";
    EXPECT_EQ(changes, 1) << "by the name alone";
    EXPECT_EQ(defaultField().stringValue(), "12.5");
    replaceText(defaultField(), "1.5x");
    tab();
    EXPECT_EQ(defaultField().stringValue(), "12.5");
    EXPECT_EQ(beeps, 1);
}

TEST_F(EditGlyphAxis, readsADefaultInTheUsersLocaleOrWithAFullStop)
{
    struct Case {
        char const* locale;
        char const* typed;
        std::optional<double> value;
        char const* shown;
    };
    for (auto const& [locale, typed, value, shown] : {
             Case { "en_US", "2.5", 2.5, "2.5" },
             Case { "en_US", " \t2.5 ", 2.5, "2.5" },
             Case { "en_US", "", 0, "0" },
             Case { "en_US", "  ", 0, "0" },
             Case { "en_US", "-12345.678", -12345.678, "-12345.678" },
             Case { "en_US", "+1e2", 100, "100" },
             Case { "en_US", "-0", 0, "0" },
             Case { "en_US", "inf", std::nullopt, "inf" },
             Case { "en_US", "-Infinity", std::nullopt, "-inf" },
             Case { "en_US", "NaN", std::nullopt, "nan" },
             Case { "en_US", "1e999", std::nullopt, "inf" },
             Case { "en_US", "-0.001e99999999999999999999", std::nullopt, "-inf" },
             Case { "en_US", "0x1p1024", std::nullopt, "inf" },
             Case { "en_US", "1e-999", 0, "0" },
             Case { "en_US", "100e-99999999999999999999", 0, "0" },
             Case { "en_US", "0x1p-1075", 0, "0" },
             Case { "en_US", "0x10", 16, "16" },
             Case { "de_DE", "-0X1.8p+2", -6, "-6" },
             Case { "en_US", "0x", std::nullopt, "7" },
             Case { "en_US", "0x-1", std::nullopt, "7" },
             Case { "en_US", "0xinf", std::nullopt, "7" },
             Case { "en_US", "+-7", std::nullopt, "7" },
             Case { "en_US", "infinite", std::nullopt, "7" },
             Case { "en_US", "1 2", std::nullopt, "7" },
             Case { "de_DE", "1,5", 1.5, "1,5" },
             Case { "de_DE", "1.5", 1.5, "1,5" },
             Case { "ar_EG", "٢٫٥", 2.5, "٢٫٥" },
         }) {
        NSSetCurrentLocale(locale);
        bar->setDefaultValue(7);
        replaceText(defaultField(), typed);
        line(nameField()).setFocus(Qt::TabFocusReason);
        EXPECT_EQ(bar->defaultValue(), value.value_or(7)) << typed;
        EXPECT_FALSE(std::signbit(bar->defaultValue()) && bar->defaultValue() == 0) << typed;
        EXPECT_EQ(defaultField().stringValue(), shown) << typed;
    }
    EXPECT_EQ(beeps, 0);
}

TEST_F(EditGlyphAxis, readsADefaultWithAFullStopOnlyWhereThereIsNoFormatter)
{
    defaultField().setFormatter(nullptr);
    bar->setDefaultValue(7);
    for (auto const* const typed : { "1.5x", "1,5" }) {
        replaceText(defaultField(), typed);
        line(nameField()).setFocus(Qt::TabFocusReason);
        EXPECT_EQ(bar->defaultValue(), 7) << typed;
        EXPECT_EQ(defaultField().stringValue(), "7") << typed;
    }
    replaceText(defaultField(), " 2.5 ");
    key(Qt::Key_Return);
    EXPECT_EQ(bar->defaultValue(), 2.5);
    EXPECT_FALSE(isOpen());
}

TEST_F(EditGlyphAxis, noValueChangesByBeingLookedAt)
{
    popover()->close();
    for (auto const value :
        { 0.1 + 0.2, 1.0 / 3, 1e-10 / 3, -std::numbers::pi * 1e5, 123456789.123, 1e15, 5e-324 }) {
        bar->setDefaultValue(value);
        openBar();
        tab();
        tab();
        tab();
        key(Qt::Key_Return);
        EXPECT_FALSE(isOpen());
        EXPECT_EQ(bar->defaultValue(), value);
        EXPECT_EQ(bar->name(), "Bar");
    }
}

TEST_F(EditGlyphAxis, keepsTheLayersWhenTheDefaultChanges)
{
    auto const before = layer("raised")->coordinates();
    replaceText(defaultField(), "30");
    key(Qt::Key_Return);
    EXPECT_EQ(bar->defaultValue(), 30);
    EXPECT_EQ(layer("raised")->coordinates(), before);
    EXPECT_TRUE(layer("regular")->coordinates().empty());
}

TEST_F(EditGlyphAxis, deletesTheAxisWithItsCoordinatesInEveryLayer)
{
    popover()->close();
    auto const stem = FontBuilder::addGlyphAxis(glyph, "stem", "Bar");
    layer("regular")->setCoordinates({ { "bar", 20 }, { "stem", 5 } });
    FontBuilder::addOtherLayer(glyph, "sketch", "regular")->setCoordinates({ { "bar", 3 } });
    layer("black")->setCoordinates({ { "stem", 8 } });
    refresh();
    openBar();
    clickInPopover(*axisEditor()->deleteAxisButton());
    EXPECT_EQ(glyph->axes(), std::vector { stem });
    EXPECT_EQ(layer("regular")->coordinates(), (TLCoordinates { { "stem", 5 } }));
    EXPECT_EQ(layer("black")->coordinates(), (TLCoordinates { { "stem", 8 } }));
    EXPECT_TRUE(layer("raised")->coordinates().empty());
    EXPECT_TRUE(layer("sketch")->coordinates().empty());
    EXPECT_EQ(popover(), nullptr);
    EXPECT_EQ(sidebar->tableView()->numberOfRows(), 4U) << "the row has gone";
    EXPECT_EQ(rowAt(barRow)->axis(), stem);
    EXPECT_EQ(sidebar->tableState()->editingItem(), std::nullopt);
    EXPECT_EQ(beeps, 0);
}

TEST_F(EditGlyphAxis, reportsADeletionBeforeItFinishes)
{
    std::vector<std::string> calls;
    axisEditor()->setAxisWasDeleted([&](auto const& axis) {
        calls.push_back("deleted " + axis->name());
        EXPECT_EQ(glyph->countOfAxes(), 0U);
        EXPECT_TRUE(layer("raised")->coordinates().empty());
    });
    axisEditor()->setDidAccept([&] { calls.emplace_back("accepted"); });
    auto const shown = axisEditor();
    tab();
    tab();
    key(Qt::Key_Space);
    EXPECT_EQ(calls, (std::vector<std::string> { "deleted Bar", "accepted" }));
    shown->deleteAxis(nullptr);
    EXPECT_EQ(calls.size(), 2U) << "it is no axis of the glyph any more";
    EXPECT_EQ(beeps, 1);
}

TEST_F(EditGlyphAxis, withoutItsAxisOrGlyphItChangesNothing)
{
    auto const shown = axisEditor();
    shown->setGlyph({});
    EXPECT_TRUE(shown->isValidAxisName("Any"));
    shown->deleteAxis(nullptr);
    EXPECT_EQ(beeps, 1);
    EXPECT_EQ(glyph->countOfAxes(), 1U);
    type("Any");
    EXPECT_EQ(bar->name(), "Any");

    shown->setGlyph(glyph);
    glyph->removeObjectFromAxesAtIndex(0);
    refresh();
    bar.reset();
    ASSERT_EQ(shown->axis(), nullptr) << "it is not kept alive";
    changes = 0;
    EXPECT_FALSE(shown->isValidAxisName("Any"));
    EXPECT_FALSE(shown->commitAxisName(true));
    EXPECT_FALSE(shown->commitDefaultValue(true));
    EXPECT_EQ(beeps, 1);
    type("x");
    tab();
    key(Qt::Key_Return);
    EXPECT_TRUE(isOpen());
    EXPECT_EQ(beeps, 1);
    EXPECT_EQ(changes, 0);
    clickInPopover(*shown->deleteAxisButton());
    EXPECT_EQ(beeps, 2);
}

TEST_F(EditGlyphAxis, leavesOtherCommandsAndOtherControlsAlone)
{
    auto const shown = axisEditor();
    auto const stranger = std::make_shared<NSTextField>(NSTextField::Kind::field);
    auto const about = std::make_shared<NSNotification>("edited", stranger);
    nameField().setStringValue("Stranger");
    shown->controlTextDidChange(about);
    shown->controlTextDidEndEditing(about);
    shown->controlTextDidEndEditing(std::make_shared<NSNotification>("edited"));
    EXPECT_FALSE(shown->controlDoCommandBySelector(stranger, "insertNewline:"));
    EXPECT_FALSE(shown->controlDoCommandBySelector(shown->axisNameField(), "cancelOperation:"));
    EXPECT_FALSE(shown->controlDoCommandBySelector(shown->defaultValueField(), "insertTab:"));
    EXPECT_EQ(bar->name(), "Bar");
    EXPECT_EQ(changes, 0);
}

TEST_F(EditGlyphAxis, startsEmptyAndWorksWithoutControlsAndCallbacks)
{
    auto const bare = std::make_shared<EditGlyphAxisViewController>();
    bare->setAxis(bar);
    bare->setDidAccept([] { FAIL(); });
    ASSERT_TRUE(
        bare->initWithCoder(NSCoder({ { "NSTitle", "Editor" }, { "NSBundleIdentifier", "Moravel" } })));
    EXPECT_EQ(bare->axis(), nullptr);
    bare->setAxis(bar);
    bare->setGlyph(glyph);
    bare->configureControls();
    bare->viewDidAppear();
    EXPECT_EQ(bare->committedAxisName(), "Bar");
    EXPECT_FALSE(bare->commitAxisName(false));
    EXPECT_FALSE(bare->commitDefaultValue(false));
    EXPECT_EQ(bar->name(), "Bar");
    bare->deleteAxis(nullptr);
    EXPECT_EQ(glyph->countOfAxes(), 0U);
    NSCoder broken;
    broken.failWithError();
    EXPECT_FALSE(bare->initWithCoder(broken));
}
