#include "Tests/AppKit/ViewWindow.h"

#include "Platform/AppKit/NSStackView.h"
#include "Platform/Qt/ConstraintSolver.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include <gtest/gtest.h>

using Attribute = NSLayoutAttribute;
using Solver = ConstraintSolver;

static Solver::Box naturalBox(double width, double height)
{
    return { .naturalWidth = [=] { return width; }, .naturalHeight = [=](double) { return height; } };
}

TEST(ConstraintSolver, goesFromWhatIsKnownToWhatFollows)
{
    Solver solver;
    solver.boxes = { { .horizontal = { .start = 0, .end = 300 }, .vertical = { .start = 0, .end = 100 } },
        naturalBox(80, 20), naturalBox(50, 10) };
    solver.rules = {
        // The second hangs on the first, which is given later.
        { .first = 2,
            .firstAttribute = Attribute::leading,
            .second = 1,
            .secondAttribute = Attribute::trailing,
            .constant = 8 },
        { .first = 2,
            .firstAttribute = Attribute::centerY,
            .second = 1,
            .secondAttribute = Attribute::centerY },
        { .first = 0,
            .firstAttribute = Attribute::trailing,
            .second = 2,
            .secondAttribute = Attribute::trailing,
            .constant = 10 },
        { .first = 1,
            .firstAttribute = Attribute::leading,
            .second = 0,
            .secondAttribute = Attribute::leading,
            .constant = 10 },
        { .first = 1,
            .firstAttribute = Attribute::top,
            .second = 0,
            .secondAttribute = Attribute::top,
            .constant = 30 },
    };
    solver.solve();
    EXPECT_EQ(solver.boxes[1].horizontal.end, 90);
    EXPECT_EQ(solver.boxes[2].horizontal.start, 98);
    EXPECT_EQ(solver.boxes[2].horizontal.length, 192); // To ten points before the end, not its natural 50.
    EXPECT_EQ(solver.boxes[2].vertical.start, 35);
}

TEST(ConstraintSolver, limitsANaturalWidthOnlyWhereItIsTooLarge)
{
    for (auto const& [limit, expected] :
        { std::pair { 200.0, 80.0 }, std::pair { 60.0, 50.0 }, std::pair { 5.0, 0.0 } }) {
        Solver solver;
        solver.boxes = { { .horizontal = { .start = 0, .end = limit } }, naturalBox(80, 20) };
        solver.rules = {
            { .first = 1,
                .firstAttribute = Attribute::leading,
                .second = 0,
                .secondAttribute = Attribute::leading,
                .constant = 10 },
            { .first = 1,
                .firstAttribute = Attribute::trailing,
                .relation = NSLayoutRelation::lessThanOrEqual,
                .second = 0,
                .secondAttribute = Attribute::trailing },
        };
        solver.solve();
        EXPECT_EQ(solver.boxes[1].horizontal.length, expected);
    }
}

TEST(ConstraintSolver, ofContradictingRulesTheFirstWins)
{
    Solver solver;
    solver.boxes = { { .horizontal = { .start = 0, .end = 100 } }, naturalBox(80, 20) };
    for (double const width : { 30.0, 40.0 }) {
        solver.rules.push_back(
            { .first = 1, .firstAttribute = Attribute::width, .second = {}, .constant = width });
    }
    solver.solve();
    EXPECT_EQ(solver.boxes[1].horizontal.length, 30);
}

namespace {

/// A row as interface descriptions make it: a slider's and a field's stand-ins in a layout of a
/// plain widget, and a hint that takes their place.
struct HintRow {
    ViewWindow host { { 400, 60 } };
    std::shared_ptr<NSView> slider { std::make_shared<WidgetView>(new QWidget) };
    std::shared_ptr<NSView> field { std::make_shared<WidgetView>(new QPushButton("100")) };
    std::shared_ptr<NSView> label { std::make_shared<WidgetView>(new QLabel("Empty range")) };
    std::shared_ptr<NSView> button { std::make_shared<WidgetView>(new QPushButton) };
    std::shared_ptr<NSStackView> hint;

    explicit HintRow(Qt::LayoutDirection direction = Qt::LeftToRight)
    {
        host.window.setLayoutDirection(direction);
        auto* outer = new QHBoxLayout(qtWidget(*host.root));
        auto* plainWidget = new QWidget;
        outer->addWidget(new QLabel("Weight"));
        outer->addWidget(plainWidget, 1);
        auto* inner = new QHBoxLayout(plainWidget);
        qtWidget(*slider)->setMinimumHeight(21);
        inner->addWidget(qtWidget(*slider), 1);
        inner->addWidget(qtWidget(*field));
        host.root->addSubview(slider);
        host.root->addSubview(field);
        qtWidget(*button)->setFixedSize(16, 16);

        hint = NSStackView::stackViewWithViews({ label, button });
        hint->setSpacing(3);
        hint->setTranslatesAutoresizingMaskIntoConstraints(false);
        label->setContentHuggingPriority(250, NSLayoutOrientation::horizontal);
        button->setContentHuggingPriority(1000, NSLayoutOrientation::horizontal);
        button->setContentCompressionResistancePriority(1000, NSLayoutOrientation::horizontal);
        host.root->addSubview(hint);
        NSLayoutConstraint::activateConstraints(
            { hint->leadingAnchor().constraintEqualTo(slider->leadingAnchor()),
                hint->trailingAnchor().constraintLessThanOrEqualTo(field->trailingAnchor()),
                hint->centerYAnchor().constraintEqualTo(slider->centerYAnchor()) });
        ViewWindow::settle();
    }
};

} // namespace

TEST(NSLayoutConstraint, putsAHintInThePlaceOfASliderInAPlainWidget)
{
    HintRow row;
    EXPECT_GT(row.slider->frame().origin.x, 20);
    EXPECT_EQ(row.hint->frame().origin.x, row.slider->frame().origin.x);
    EXPECT_NEAR(row.hint->frame().midY(), row.slider->frame().midY(), 0.5);
    EXPECT_EQ(row.hint->frame().size.width, row.hint->fittingSize().width);
    EXPECT_EQ(row.button->frame().size.width, 16);
    EXPECT_EQ(row.button->frame().origin.x, row.label->frame().maxX() + 3);
}

TEST(NSLayoutConstraint, followsTheViewsItNamesAndTheContainer)
{
    HintRow row;
    auto* plainWidget = qtWidget(*row.slider)->parentWidget();
    plainWidget->layout()->setContentsMargins(40, 0, 0, 0);
    ViewWindow::settle();
    EXPECT_EQ(row.hint->frame().origin.x, row.slider->frame().origin.x);
    EXPECT_EQ(row.hint->frame().origin.x, plainWidget->x() + 40.0);

    row.host.root->setFrame({ {}, { 200, 80 } });
    row.host.root->layoutSubtreeIfNeeded();
    EXPECT_NEAR(row.hint->frame().midY(), row.slider->frame().midY(), 0.5);
    EXPECT_LE(row.hint->frame().maxX(), row.field->frame().maxX());
}

TEST(NSLayoutConstraint, leadingIsOnTheRightInARightToLeftInterface)
{
    HintRow row(Qt::RightToLeft);
    EXPECT_EQ(row.hint->frame().maxX(), row.slider->frame().maxX());
    EXPECT_GE(row.hint->frame().origin.x, row.field->frame().origin.x);
    EXPECT_LT(row.button->frame().origin.x, row.label->frame().origin.x);
}

TEST(NSLayoutConstraint, givesAContainerTheSizeThatAWrappingLabelNeeds)
{
    auto const container = std::make_shared<NSView>();
    auto* text
        = new QLabel("There is no master for which this axis is different from its default value of 400. Add "
                     "a master in the Masters tab or edit an existing master to use this axis.");
    text->setWordWrap(true);
    auto const label = std::make_shared<WidgetView>(text);
    label->setTranslatesAutoresizingMaskIntoConstraints(false);
    container->addSubview(label);
    NSLayoutConstraint::activateConstraints({
        label->leadingAnchor().constraintEqualToSystemSpacingAfter(container->leadingAnchor(), 1),
        container->trailingAnchor().constraintEqualToSystemSpacingAfter(label->trailingAnchor(), 1),
        label->topAnchor().constraintEqualToSystemSpacingAfter(container->topAnchor(), 1),
        container->bottomAnchor().constraintEqualToSystemSpacingAfter(label->bottomAnchor(), 1),
        label->widthAnchor().constraintEqualToConstant(360),
    });
    double const spacing = NSLayoutSystemSpacing();
    double const height = text->heightForWidth(360);
    ASSERT_GT(height, 2 * text->fontMetrics().height() - 1);
    EXPECT_EQ(container->fittingSize(), (NSSize { 360 + 2 * spacing, height + 2 * spacing }));

    container->setFrame({ {}, container->fittingSize() });
    container->layoutSubtreeIfNeeded();
    EXPECT_EQ(label->frame(), (NSRect { { spacing, spacing }, { 360, height } }));
}
