#include "Platform/AppKit/NSTextField.h"

#include "Platform/Foundation/NSMainThread.h"
#include "Platform/Qt/Conversions.h"
#include "Platform/Qt/DrawingConversions.h"
#include "Platform/Qt/NSTextFieldBacking.h"
#include "Platform/Qt/TextColor.h"

static NSTextFieldBacking& fieldBacking(NSTextField const& field)
{
    return static_cast<NSTextFieldBacking&>(field.backing());
}

NSTextField::NSTextField(Kind kind)
    : NSTextField(kind, std::make_unique<NSTextFieldBacking>(kind))
{
}

NSTextField::NSTextField(Kind kind, std::unique_ptr<NSViewBacking> backing)
    : NSControl(std::move(backing))
    , m_kind(kind)
{
}

NSTextField::~NSTextField() = default;

std::shared_ptr<NSTextField> NSTextField::labelWithString(std::string_view text)
{
    auto label = std::make_shared<NSTextField>(Kind::label);
    label->setStringValue(text);
    return label;
}

std::shared_ptr<NSTextField> NSTextField::wrappingLabelWithString(std::string_view text)
{
    auto label = std::make_shared<NSTextField>(Kind::wrappingLabel);
    label->setStringValue(text);
    return label;
}

std::string NSTextField::stringValue() const
{
    return fromQString(fieldBacking(*this).text());
}

void NSTextField::setStringValue(std::string_view text)
{
    m_number.reset();
    fieldBacking(*this).show(toQString(text));
}

void NSTextField::setDoubleValue(double value)
{
    auto const formatted = m_formatter ? m_formatter->stringFromNumber(value) : std::nullopt;
    auto const text = toQString(formatted.value_or(NSNumberDescription(value)));
    m_number = value;
    auto& backing = fieldBacking(*this);
    // What is shown already is repeated by reloads; it leaves what the user is typing alone.
    if (!backing.isEdited() || text != backing.committedText()) {
        backing.show(text);
    }
}

double NSTextField::doubleValue() const
{
    auto const& backing = fieldBacking(*this);
    if (m_number && !backing.isEdited()) {
        return *m_number;
    }
    auto const text = stringValue();
    return (m_formatter ? m_formatter->numberFromString(text) : NSNumberFromText(text)).value_or(0);
}

void NSTextField::abortEditing()
{
    NSAssertMainThread();
    fieldBacking(*this).dropEditing();
}

std::string NSTextField::placeholderString() const
{
    auto const& field = fieldBacking(*this).field;
    return field ? fromQString(field->placeholderText()) : std::string();
}

void NSTextField::setPlaceholderString(std::optional<std::string> text)
{
    if (auto const& field = fieldBacking(*this).field) {
        field->setPlaceholderText(text ? toQString(*text) : QString());
    }
}

void NSTextField::setTextColor(NSColor color)
{
    if (auto* const widget = qtWidget(*this)) {
        setTextColorOf(*widget, isEditable() ? QPalette::Text : QPalette::WindowText, color);
    }
}

void NSTextField::setLineBreakMode(NSLineBreakMode mode)
{
    if (auto const& label = fieldBacking(*this).label; label && mode == NSLineBreakMode::byTruncatingTail) {
        label->setWordWrap(false);
    }
}

void NSTextField::setUsesSingleLineMode(bool single)
{
    if (auto const& label = fieldBacking(*this).label; label && single) {
        label->setWordWrap(false);
    }
}

/// The toolkit turns left and right around for languages from right to left, unless told not to.
static Qt::Alignment horizontalAlignment(NSTextAlignment alignment)
{
    switch (alignment) {
    case NSTextAlignment::left:
        return Qt::AlignLeft | Qt::AlignAbsolute;
    case NSTextAlignment::center:
        return Qt::AlignHCenter;
    case NSTextAlignment::right:
        return Qt::AlignRight | Qt::AlignAbsolute;
    case NSTextAlignment::natural:
        break;
    }
    return Qt::AlignLeft;
}

void NSTextField::setAlignment(NSTextAlignment alignment)
{
    NSAssertMainThread();
    auto const change = [&](auto& widget) {
        widget.setAlignment(horizontalAlignment(alignment) | (widget.alignment() & Qt::AlignVertical_Mask));
    };
    auto const& backing = fieldBacking(*this);
    if (backing.label) {
        change(*backing.label);
    } else if (backing.field) {
        change(*backing.field);
    }
}

void NSTextField::selectText()
{
    NSAssertMainThread();
    auto const& field = fieldBacking(*this).field;
    if (field && field->window()->windowHandle()) {
        field->setFocus(Qt::OtherFocusReason);
        field->selectAll();
    }
}

NSSize NSTextField::fittingSize() const
{
    auto const* widget = qtWidget(*this);
    return widget ? fromQSize(widget->sizeHint()) : NSSize {};
}
