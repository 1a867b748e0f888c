#include "Moravel/AxisCellView.h"

#include "Moravel/MoravelBundle.h"
#include "Platform/AppKit/NSStackView.h"
#include "Platform/Foundation/NSMainThread.h"

static std::string emptyRangeLabel()
{
    return MoravelLocalizedString("variation.axis.empty-range.label", "Empty range",
        "Inline label on an axis row whose range is empty because no master/intermediate layer deviates "
        "from the axis default value");
}

static std::string helpButtonName()
{
    return MoravelLocalizedString("variation.axis.empty-range.help-button.name", "Why is this range empty?",
        "Name of the button beside \"Empty range\" that opens the explanation, read out by screen readers");
}

/// `%@` in the text stands for the axis's default value.
static std::string fontHelpFormat()
{
    return MoravelLocalizedString("variation.axis.empty-range.help.font",
        "There is no master for which this axis is different from its default value of %@. Add a master "
        "in the Masters tab of the Font Info window or edit an existing master to use this axis.",
        "Popover explaining why a font axis has an empty range");
}

/// `%@` in the text stands for the axis's default value.
static std::string glyphHelpFormat()
{
    return MoravelLocalizedString("variation.axis.empty-range.help",
        "There is no Intermediate layer for which this axis is different from its default value of %@. Add "
        "an Intermediate layer in the Layers palette or edit an existing layer to use this axis.",
        "Popover explaining why a glyph axis has an empty range");
}

void AxisCellView::setEmptyRangeHintVisible(bool visible)
{
    if (visible && !m_unusableHintView) {
        m_unusableHintView = makeEmptyRangeHintView();
    }
    if (m_unusableHintView) {
        m_unusableHintView->setHidden(!visible);
    }
}

static std::shared_ptr<NSTextField> makeHintLabel(std::string const& text)
{
    auto const label = NSTextField::labelWithString(text);
    label->setFont(NSFont::systemFont(NSFont::smallSystemFontSize()));
    label->setTextColor(NSColor::secondaryLabelColor());
    label->setLineBreakMode(NSLineBreakMode::byTruncatingTail);
    label->setUsesSingleLineMode(true);
    label->setContentHuggingPriority(250, NSLayoutOrientation::horizontal);
    return label;
}

static std::shared_ptr<NSButton> makeHelpButton(std::shared_ptr<NSObject> const& target)
{
    auto const button = std::make_shared<NSButton>();
    button->setBezelStyle(NSBezelStyle::helpButton);
    button->setControlSize(NSControlSize::mini);
    button->setTitle("");
    button->setTarget(target);
    button->setAction("showEmptyRangeHelp:");
    button->setContentHuggingPriority(1000, NSLayoutOrientation::horizontal);
    button->setContentCompressionResistancePriority(1000, NSLayoutOrientation::horizontal);
    return button;
}

/// In the place of slider and value field, which are hidden while the hint is shown.
std::shared_ptr<NSView> AxisCellView::makeEmptyRangeHintView()
{
    auto const button = makeHelpButton(shared_from_this());
    button->setAccessibilityLabel(helpButtonName());
    auto const stack = NSStackView::stackViewWithViews({ makeHintLabel(emptyRangeLabel()), button });
    stack->setOrientation(NSLayoutOrientation::horizontal);
    stack->setAlignment(NSStackViewAlignment::centerY);
    stack->setSpacing(3);
    stack->setTranslatesAutoresizingMaskIntoConstraints(false);
    addSubview(stack);
    auto const slider = this->slider();
    auto const field = valueField();
    if (slider && field) {
        NSLayoutConstraint::activateConstraints({
            stack->leadingAnchor().constraintEqualTo(slider->leadingAnchor()),
            stack->trailingAnchor().constraintLessThanOrEqualTo(field->trailingAnchor()),
            stack->centerYAnchor().constraintEqualTo(slider->centerYAnchor()),
        });
    }
    return stack;
}

void AxisCellView::showEmptyRangeHelp(std::shared_ptr<NSView> const& sender)
{
    NSAssertMainThread();
    if (sender) {
        showEmptyRangePopover(sender);
    }
}

std::string AxisCellView::emptyRangeHelp(TLAxis const& axis) const
{
    NSNumberFormatter formatter;
    formatter.setMaximumFractionDigits(3);
    auto const value = formatter.stringFromNumber(axis.defaultValue());
    auto const isFontRow = m_item && m_item->section == Section::font;
    auto text = isFontRow ? fontHelpFormat() : glyphHelpFormat();
    if (auto const place = text.find("%@"); place != std::string::npos) {
        text.replace(place, 2, value ? *value : NSNumberDescription(axis.defaultValue()));
    }
    return text;
}

/// A view that holds a wrapped text, with the standard spacing around it.
static std::shared_ptr<NSView> makeHelpView(std::string const& text)
{
    auto const label = NSTextField::wrappingLabelWithString(text);
    label->setTranslatesAutoresizingMaskIntoConstraints(false);
    auto const container = std::make_shared<NSView>();
    container->addSubview(label);
    NSLayoutConstraint::activateConstraints({
        label->leadingAnchor().constraintEqualToSystemSpacingAfter(container->leadingAnchor(), 1),
        container->trailingAnchor().constraintEqualToSystemSpacingAfter(label->trailingAnchor(), 1),
        label->topAnchor().constraintEqualToSystemSpacingAfter(container->topAnchor(), 1),
        container->bottomAnchor().constraintEqualToSystemSpacingAfter(label->bottomAnchor(), 1),
        label->widthAnchor().constraintEqualToConstant(360),
    });
    return container;
}

void AxisCellView::showEmptyRangePopover(std::shared_ptr<NSView> const& anchor)
{
    auto const shownAxis = axis();
    if (!shownAxis) {
        return;
    }
    auto const controller = std::make_shared<NSViewController>();
    controller->setView(makeHelpView(emptyRangeHelp(*shownAxis)));
    auto const popover = std::make_shared<NSPopover>();
    popover->setBehavior(NSPopoverBehavior::transient);
    popover->setContentViewController(controller);
    m_emptyRangePopover = popover;
    popover->showRelativeToRect(anchor->bounds(), anchor, NSRectEdge::maxY);
}
