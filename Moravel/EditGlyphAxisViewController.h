#pragma once

#include "Platform/AppKit/NSButton.h"
#include "Platform/AppKit/NSTextField.h"
#include "Platform/AppKit/NSViewController.h"
#include "Typloom/TyploomCore/TLGlyph.h"

/// The editor of one of a glyph's own axes, shown in a popover: its name, its default value, and a button
/// that deletes it. A valid name is written into the axis while the user types; what is refused
/// gives back the last good value. It reports through its callbacks and keeps neither glyph nor axis alive.
class EditGlyphAxisViewController : public NSViewController, public NSNibOwner, public NSTextFieldDelegate {
public:
    using AxisCallback = std::function<void(std::shared_ptr<TLAxis> const&)>;

    void initWithNibName(std::optional<std::string> nibName, std::shared_ptr<NSBundle> bundle) override;
    bool initWithCoder(NSCoder const& coder) override;
    std::span<NSOutlet const> outlets() const override;
    std::span<NSMethod const> methods() const override;

    /// Null where the interface has none.
    std::shared_ptr<NSTextField> const& axisNameLabel() const { return m_axisNameLabel; }
    std::shared_ptr<NSTextField> const& axisNameField() const { return m_axisNameField; }
    std::shared_ptr<NSTextField> const& defaultValueLabel() const { return m_defaultValueLabel; }
    std::shared_ptr<NSTextField> const& defaultValueField() const { return m_defaultValueField; }
    std::shared_ptr<NSTextField> const& defaultValueDescriptionLabel() const
    {
        return m_defaultValueDescriptionLabel;
    }
    std::shared_ptr<NSButton> const& deleteAxisButton() const { return m_deleteAxisButton; }

    /// Glyph and axis are set before the view is loaded. Null when they have gone.
    std::shared_ptr<TLGlyph> glyph() const { return m_glyph.lock(); }
    void setGlyph(std::weak_ptr<TLGlyph> glyph) { m_glyph = std::move(glyph); }
    std::shared_ptr<TLAxis> axis() const { return m_axis.lock(); }
    void setAxis(std::weak_ptr<TLAxis> axis) { m_axis = std::move(axis); }

    /// Called after the name or the default value was written, also when it was restored.
    void setAxisContentDidChange(AxisCallback callback) { m_axisContentDidChange = std::move(callback); }
    /// Called after the axis was taken out of the glyph.
    void setAxisWasDeleted(AxisCallback callback) { m_axisWasDeleted = std::move(callback); }
    /// Called when the user has finished.
    void setDidAccept(std::function<void()> callback) { m_didAccept = std::move(callback); }
    /// What an invalid name gives way to.
    std::string const& committedAxisName() const { return m_committedAxisName; }

    void awakeFromNib() override;
    void viewDidAppear() override;
    void configureControls();

    /// Whether the trimmed name can be the axis's: not empty, and no other axis of the glyph has it.
    bool isValidAxisName(std::string_view name) const;
    /// Writes the field into the axis, or the last good value into both. Whether the field was accepted;
    /// `beep`: to be heard when it was not.
    bool commitAxisName(bool beep);
    bool commitDefaultValue(bool beep);

    void controlTextDidChange(std::shared_ptr<NSNotification> const& notification) override;
    void controlTextDidEndEditing(std::shared_ptr<NSNotification> const& notification) override;
    bool controlDoCommandBySelector(
        std::shared_ptr<NSControl> const& control, std::string_view selector) override;
    void deleteAxis(std::shared_ptr<NSObject> const& sender);

private:
    void reset();
    void setTexts();
    void configureDefaultValueField();
    void reportContentChange(std::shared_ptr<TLAxis> const& axis) const;
    void accept() const;

    std::shared_ptr<NSTextField> m_axisNameLabel;
    std::shared_ptr<NSTextField> m_axisNameField;
    std::shared_ptr<NSTextField> m_defaultValueLabel;
    std::shared_ptr<NSTextField> m_defaultValueField;
    std::shared_ptr<NSTextField> m_defaultValueDescriptionLabel;
    std::shared_ptr<NSButton> m_deleteAxisButton;
    std::weak_ptr<TLGlyph> m_glyph;
    std::weak_ptr<TLAxis> m_axis;
    AxisCallback m_axisContentDidChange;
    AxisCallback m_axisWasDeleted;
    std::function<void()> m_didAccept;
    std::string m_committedAxisName;
};
