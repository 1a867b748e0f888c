#pragma once

#include "Platform/AppKit/NSColor.h"
#include "Platform/AppKit/NSControl.h"
#include "Platform/Foundation/NSNotificationCenter.h"
#include "Platform/Foundation/NSNumberFormatter.h"

/// Natural: from the side where the language's lines begin.
enum class NSTextAlignment { left = 0, center = 1, right = 2, natural = 4 };
enum class NSLineBreakMode { byWordWrapping = 0, byTruncatingTail = 4 };

/// Told about the editing of a text field. Every operation is optional.
class NSControlTextEditingDelegate {
public:
    virtual ~NSControlTextEditingDelegate() = default;
    /// The user changed the text; the notification's object is the field.
    virtual void controlTextDidChange(std::shared_ptr<NSNotification> const&) { }
    /// The user left the field.
    virtual void controlTextDidEndEditing(std::shared_ptr<NSNotification> const&) { }
    /// A command key was pressed in the field ("insertNewline:", "cancelOperation:", "insertTab:").
    /// True when it has been dealt with.
    virtual bool controlDoCommandBySelector(std::shared_ptr<NSControl> const&, std::string_view)
    {
        return false;
    }
};
class NSTextFieldDelegate : public NSControlTextEditingDelegate { };
class NSSearchFieldDelegate : public NSTextFieldDelegate { };

/// A line of text: a label, or a field that can be edited.
///
/// A field with a number formatter turns what was typed into a number when editing ends (Return,
/// or leaving after a change); text that is no number gives back what was there. The action is
/// sent when Return is pressed or the field is left, if the user changed the text. Escape gives back what
/// was there; in a transient popover it closes that instead. All is selected when the field gets the
/// focus.
class PLATFORM_API NSTextField : public NSControl {
public:
    enum class Kind { label, wrappingLabel, field };
    explicit NSTextField(Kind kind);
    static std::shared_ptr<NSTextField> labelWithString(std::string_view text);
    static std::shared_ptr<NSTextField> wrappingLabelWithString(std::string_view text);
    ~NSTextField() override;

    bool isEditable() const { return m_kind == Kind::field; }

    std::string stringValue() const;
    /// Replaces the text, what the user is typing included.
    void setStringValue(std::string_view text);
    /// Sets the number, shown by the formatter (without one: in its plain description).
    void setDoubleValue(double value);
    double doubleValue() const; ///< 0 where the text is no number.
    /// Gives back what was there before the user's typing, where that has not been committed. Sends nothing;
    /// the keyboard stays.
    void abortEditing();

    std::shared_ptr<NSNumberFormatter> const& formatter() const { return m_formatter; }
    void setFormatter(std::shared_ptr<NSNumberFormatter> formatter) { m_formatter = std::move(formatter); }
    std::string placeholderString() const;
    void setPlaceholderString(std::optional<std::string> text);
    void setTextColor(NSColor color);
    void setLineBreakMode(NSLineBreakMode mode);
    void setUsesSingleLineMode(bool single);
    void setAlignment(NSTextAlignment alignment);

    void setDelegate(std::weak_ptr<NSControlTextEditingDelegate> delegate)
    {
        m_delegate = std::move(delegate);
    }
    std::shared_ptr<NSControlTextEditingDelegate> delegate() const { return m_delegate.lock(); }
    /// Takes the keyboard of the field's window and selects the whole text. Nothing happens without a window.
    void selectText();

    NSSize fittingSize() const override;

protected:
    NSTextField(Kind kind, std::unique_ptr<NSViewBacking> backing);

private:
    friend struct NSTextFieldBacking;
    Kind m_kind;
    std::optional<double> m_number; ///< What `setDoubleValue` set or the formatter read, unrounded.
    std::shared_ptr<NSNumberFormatter> m_formatter;
    std::weak_ptr<NSControlTextEditingDelegate> m_delegate;
};
