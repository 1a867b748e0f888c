#include "Moravel/AxisCellView.h"

#include "Moravel/Model/AxisRanges.h"
#include "Moravel/Model/Landmarks.h"
#include "Platform/AppKit/NSAnimationContext.h"
#include "Platform/Foundation/NSMainThread.h"
#include "Typloom/TyploomKit/legacyMainActorIsolated.h"

#include <array>

/// En dashes where an axis without a usable range would show its value.
static constexpr char const* emptyValuePlaceholder = "––";

/// Changes the view of an outlet; nothing when the outlet is gone.
template <class View, class Change> static void with(std::weak_ptr<View> const& outlet, Change const& change)
{
    if (auto const view = outlet.lock()) {
        change(*view);
    }
}

AxisCellView::~AxisCellView()
{
    NSNotificationCenter::defaultCenter().removeObserver(this);
}

std::span<NSOutlet const> AxisCellView::outlets() const
{
    static std::array const outlets {
        NSOutletMake("nameLabel", &AxisCellView::m_nameLabel),
        NSOutletMake("slider", &AxisCellView::m_slider),
        NSOutletMake("valueField", &AxisCellView::m_valueField),
        NSOutletMake("infoButton", &AxisCellView::m_infoButton),
        NSOutletMake("stepDownButton", &AxisCellView::m_stepDownButton),
        NSOutletMake("stepUpButton", &AxisCellView::m_stepUpButton),
    };
    return outlets;
}

std::span<NSMethod const> AxisCellView::methods() const
{
    static std::array const methods {
        NSMethodMake("sliderChanged:", &AxisCellView::sliderChanged),
        NSMethodMake("valueFieldChanged:", &AxisCellView::valueFieldChanged),
        NSMethodMake("stepDown:", &AxisCellView::stepDown),
        NSMethodMake("stepUp:", &AxisCellView::stepUp),
        NSMethodMake("showAxisInfo:", &AxisCellView::showAxisInfo),
        NSMethodMake("showEmptyRangeHelp:", &AxisCellView::showEmptyRangeHelp),
        NSMethodMake("handleRowContentDidChange:", &AxisCellView::handleRowContentDidChange),
        NSMethodMake("handleEditingStateDidChange:", &AxisCellView::handleEditingStateDidChange),
    };
    return methods;
}

void AxisCellView::awakeFromNib()
{
    NSTableCellView::awakeFromNib();
    legacyMainActorIsolated([row = sharedAs<AxisCellView>()] {
        with(row->m_valueField, [](NSTextField& field) {
            field.setFont(NSFont::monospacedDigitSystemFont(0, NSFontWeight::regular));
        });
        row->updateAccessoryVisibility();
    });
}

void AxisCellView::prepareForReuse()
{
    NSAssertMainThread();
    NSTableCellView::prepareForReuse();
    NSNotificationCenter::defaultCenter().removeObserver(this);
    m_item.reset();
    m_tableState.reset();
    m_delegate.reset();
    m_axis.reset();
    m_stepPositions.clear();
    if (m_isHighlighted) {
        m_isHighlighted = false;
        setNeedsDisplay(true);
    }
    updateAccessoryVisibility();
}

void AxisCellView::observeTableState()
{
    NSAssertMainThread();
    auto& center = NSNotificationCenter::defaultCenter();
    center.removeObserver(this);
    auto const state = tableState();
    center.addObserver(shared_from_this(), "handleRowContentDidChange:", moravelRowContentDidChange, state);
    center.addObserver(
        shared_from_this(), "handleEditingStateDidChange:", moravelEditingStateDidChange, state);
}

void AxisCellView::handleRowContentDidChange(std::shared_ptr<NSNotification> const& notification)
{
    NSAssertMainThread();
    auto const* changed = notification ? notification->userInfoValue<SidebarItem>(moravelItemKey) : nullptr;
    if (changed && m_item != *changed) {
        return;
    }
    reloadRowContent();
    updateEditingHighlight();
}

void AxisCellView::handleEditingStateDidChange(std::shared_ptr<NSNotification> const&)
{
    NSAssertMainThread();
    updateEditingHighlight();
}

void AxisCellView::updateEditingHighlight()
{
    NSAssertMainThread();
    auto const state = tableState();
    auto const isHighlighted = m_item && state && state->editingItem() == m_item;
    if (isHighlighted == m_isHighlighted) {
        return;
    }
    m_isHighlighted = isHighlighted;
    setNeedsDisplay(true);
    updateAccessoryVisibility();
}

void AxisCellView::reloadRowContent()
{
    NSAssertMainThread();
    static RowContent const nothing;
    auto const state = tableState();
    if (!m_item || !state) {
        applyRowContent(nothing);
        return;
    }
    auto const entry = state->rowContentByItem().find(*m_item);
    // A copy: what is shown may make the table refresh, and that replaces the contents.
    auto const content = entry == state->rowContentByItem().end() ? nothing : entry->second;
    applyRowContent(content);
}

/// An empty content shows a row of nothing: no name, all controls disabled.
void AxisCellView::applyRowContent(RowContent const& content)
{
    with(m_slider, [](TLLandmarkSlider& slider) { slider.setHidden(true); });
    NSAnimationContext::beginGrouping();
    NSAnimationContext::currentContext().setDuration(0);
    m_axis = content.axis;
    with(m_nameLabel,
        [&](NSTextField& label) { label.setStringValue(content.axis ? content.axis->name() : ""); });

    auto range = rangeOfRowContent(content);
    auto position = content.position;
    auto const usable = m_item && isUsable(m_item->section, range, content.landmarks);
    auto const isFontRow = m_item && m_item->section == Section::font;
    if (!usable && !isFontRow) {
        range = { .lower = 0, .fallback = 0, .upper = 1 };
        position = 0;
    }
    m_axisDefaultValue = range.fallback;
    showRange(range, content.landmarks);
    showValue(position, usable);
    NSAnimationContext::endGrouping();
    with(m_slider, [](TLLandmarkSlider& slider) { slider.setNeedsDisplay(true); });

    m_stepPositions = usable
        ? ::stepPositions(content.landmarks.value_or(std::vector<double> {}), range.fallback)
        : std::vector<double> {};
    auto const showsHint = content.axis && !usable;
    setEmptyRangeHintVisible(showsHint);
    with(m_slider, [&](TLLandmarkSlider& slider) { slider.setHidden(showsHint); });
    with(m_valueField, [&](NSTextField& field) { field.setHidden(showsHint); });
    updateAccessoryVisibility();
}

void AxisCellView::showRange(AxisRange const& range, std::optional<std::vector<double>> const& landmarks)
{
    with(m_slider, [&](TLLandmarkSlider& slider) {
        slider.setMinValue(range.lower);
        slider.setMaxValue(range.upper);
        slider.setLandmarks(landmarks);
        slider.setNeutralValue(range.fallback);
    });
    with(m_valueField, [&](NSTextField& field) {
        if (auto const& formatter = field.formatter()) {
            formatter->setMinimum(range.lower);
            formatter->setMaximum(range.upper);
            formatter->setMaximumFractionDigits(fractionDigitsForSpan(range.span()));
        }
    });
}

void AxisCellView::showValue(double position, bool isUsable)
{
    with(m_slider, [&](TLLandmarkSlider& slider) {
        slider.setDoubleValue(position);
        slider.setEnabled(isUsable);
    });
    with(m_nameLabel, [&](NSTextField& label) { label.setEnabled(isUsable || axis()); });
    with(m_valueField, [&](NSTextField& field) {
        field.setEnabled(isUsable);
        if (isUsable) {
            field.setPlaceholderString(std::nullopt);
            field.setDoubleValue(position);
        } else {
            field.setStringValue("");
            field.setPlaceholderString(emptyValuePlaceholder);
        }
    });
}
