#pragma once

#include "Moravel/TableState.h"
#include "Moravel/VariationAxisCellViewDelegate.h"
#include "Platform/AppKit/NSButton.h"
#include "Platform/AppKit/NSNib.h"
#include "Platform/AppKit/NSPopover.h"
#include "Platform/AppKit/NSTableCellView.h"
#include "Platform/AppKit/NSTextField.h"
#include "Typloom/TyploomKit/TLLandmarkSlider.h"

struct AxisRange;

/// The row of one axis: name, slider with landmarks, value, step buttons, info button. It shows
/// what the shared `TableState` holds for its item, and reports to its delegate.
class AxisCellView : public NSTableCellView, public NSNibOwner {
public:
    ~AxisCellView() override;
    void awakeFromNib() override;
    void prepareForReuse() override;
    std::span<NSMethod const> methods() const override;
    std::span<NSOutlet const> outlets() const override;

    std::shared_ptr<NSTextField> nameLabel() const { return m_nameLabel.lock(); }
    std::shared_ptr<TLLandmarkSlider> slider() const { return m_slider.lock(); }
    std::shared_ptr<NSTextField> valueField() const { return m_valueField.lock(); }
    std::shared_ptr<NSButton> infoButton() const { return m_infoButton.lock(); }
    std::shared_ptr<NSButton> stepDownButton() const { return m_stepDownButton.lock(); }
    std::shared_ptr<NSButton> stepUpButton() const { return m_stepUpButton.lock(); }
    void setNameLabel(std::weak_ptr<NSTextField> label) { m_nameLabel = std::move(label); }
    void setSlider(std::weak_ptr<TLLandmarkSlider> slider) { m_slider = std::move(slider); }
    void setValueField(std::weak_ptr<NSTextField> field) { m_valueField = std::move(field); }
    void setInfoButton(std::weak_ptr<NSButton> button) { m_infoButton = std::move(button); }
    void setStepDownButton(std::weak_ptr<NSButton> button) { m_stepDownButton = std::move(button); }
    void setStepUpButton(std::weak_ptr<NSButton> button) { m_stepUpButton = std::move(button); }

    /// The axis that is shown, null when none is.
    std::shared_ptr<TLAxis> axis() const { return m_axis.lock(); }
    std::optional<SidebarItem> const& item() const { return m_item; }
    void setItem(std::optional<SidebarItem> item) { m_item = std::move(item); }
    std::shared_ptr<TableState> tableState() const { return m_tableState.lock(); }
    void setTableState(std::weak_ptr<TableState> state) { m_tableState = std::move(state); }
    void setDelegate(std::weak_ptr<VariationAxisCellViewDelegate> delegate)
    {
        m_delegate = std::move(delegate);
    }

    /// Called in this order once item, state and delegate are set.
    void observeTableState();
    void reloadRowContent();
    void updateEditingHighlight();

    /// Whether the row's axis is the one that is being edited.
    bool isHighlighted() const { return m_isHighlighted; }
    /// Design coordinates between which the step buttons move, ascending; empty when the row cannot be moved.
    std::vector<double> const& stepPositions() const { return m_stepPositions; }
    /// The help that was shown last, null before the first.
    std::shared_ptr<NSPopover> const& emptyRangePopover() const { return m_emptyRangePopover; }

    void sliderChanged(std::shared_ptr<TLLandmarkSlider> const& sender);
    void valueFieldChanged(std::shared_ptr<NSTextField> const& sender);
    void stepDown(std::shared_ptr<NSObject> const& sender);
    void stepUp(std::shared_ptr<NSObject> const& sender);
    void showAxisInfo(std::shared_ptr<NSObject> const& sender);
    void showEmptyRangeHelp(std::shared_ptr<NSView> const& sender);
    void handleRowContentDidChange(std::shared_ptr<NSNotification> const& notification);
    void handleEditingStateDidChange(std::shared_ptr<NSNotification> const& notification);

    void updateTrackingAreas() override;
    void mouseEntered(NSEvent const& event) override;
    void mouseExited(NSEvent const& event) override;
    void rightMouseDown(NSEvent const& event) override;
    void drawRect(NSRect dirty) override;

private:
    void applyRowContent(RowContent const& content);
    void showRange(AxisRange const& range, std::optional<std::vector<double>> const& landmarks);
    void showValue(double position, bool isUsable);
    void step(bool up);
    void showInValueField(double value);
    void report(double value);
    void requestAxisEditor();

    void setMouseInside(bool inside);
    void updateAccessoryVisibility();
    void setEmptyRangeHintVisible(bool visible);
    std::shared_ptr<NSView> makeEmptyRangeHintView();
    std::string emptyRangeHelp(TLAxis const& axis) const;
    void showEmptyRangePopover(std::shared_ptr<NSView> const& anchor);

    std::weak_ptr<NSTextField> m_nameLabel;
    std::weak_ptr<TLLandmarkSlider> m_slider;
    std::weak_ptr<NSTextField> m_valueField;
    std::weak_ptr<NSButton> m_infoButton;
    std::weak_ptr<NSButton> m_stepDownButton;
    std::weak_ptr<NSButton> m_stepUpButton;
    std::weak_ptr<TLAxis> m_axis;
    std::optional<SidebarItem> m_item;
    double m_axisDefaultValue { 0 };
    std::vector<double> m_stepPositions;
    std::weak_ptr<TableState> m_tableState;
    std::weak_ptr<VariationAxisCellViewDelegate> m_delegate;
    bool m_isMouseInside { false };
    std::shared_ptr<NSTrackingArea> m_rowTrackingArea;
    std::shared_ptr<NSView> m_unusableHintView;
    std::shared_ptr<NSPopover> m_emptyRangePopover;
    bool m_isHighlighted { false };
};
