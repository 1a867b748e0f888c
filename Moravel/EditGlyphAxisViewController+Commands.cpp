#include "Moravel/EditGlyphAxisViewController.h"

#include "Moravel/Model/NumberText.h"
#include "Platform/AppKit/NSApplication.h"
#include "Platform/Foundation/NSMainThread.h"
#include "Platform/Foundation/NSString.h"

#include <algorithm>

static std::string trimmedText(NSTextField const& field)
{
    return NSStringByTrimming(field.stringValue(), NSCharacterSet::whitespaceAndNewlines);
}

/// The control that a notification is about, null for none.
static std::shared_ptr<NSObject> controlOf(std::shared_ptr<NSNotification> const& notification)
{
    return notification ? notification->object<NSObject>() : nullptr;
}

static void beepIf(bool audible)
{
    if (audible) {
        NSBeep();
    }
}

bool EditGlyphAxisViewController::isValidAxisName(std::string_view name) const
{
    NSAssertMainThread();
    auto const edited = axis();
    if (name.empty() || !edited) {
        return false;
    }
    auto const owner = glyph();
    return !owner || std::ranges::none_of(owner->axes(), [&](auto const& other) {
        return other != edited && NSStringIsEqual(other->name(), name);
    });
}

void EditGlyphAxisViewController::reportContentChange(std::shared_ptr<TLAxis> const& axis) const
{
    if (m_axisContentDidChange) {
        m_axisContentDidChange(axis);
    }
}

void EditGlyphAxisViewController::accept() const
{
    if (m_didAccept) {
        m_didAccept();
    }
}

void EditGlyphAxisViewController::controlTextDidChange(std::shared_ptr<NSNotification> const& notification)
{
    NSAssertMainThread();
    auto const control = controlOf(notification);
    auto const edited = axis();
    if (!control || control != m_axisNameField || !edited) {
        return;
    }
    if (auto const name = trimmedText(*m_axisNameField); isValidAxisName(name)) {
        edited->setName(name);
        reportContentChange(edited);
    }
}

bool EditGlyphAxisViewController::commitAxisName(bool beep)
{
    NSAssertMainThread();
    auto const edited = axis();
    if (!edited || !m_axisNameField) {
        return false;
    }
    auto const name = trimmedText(*m_axisNameField);
    bool const isValid = isValidAxisName(name);
    if (isValid) {
        m_committedAxisName = name;
    } else {
        beepIf(beep);
    }
    edited->setName(m_committedAxisName);
    m_axisNameField->setStringValue(m_committedAxisName);
    reportContentChange(edited);
    return isValid;
}

/// None for text that is no number; an empty one is 0.
static std::optional<double> typedNumber(NSTextField const& field)
{
    auto const text = trimmedText(field);
    if (text.empty()) {
        return 0;
    }
    auto const& formatter = field.formatter();
    auto const number = formatter ? formatter->numberFromString(text) : std::nullopt;
    return number ? number : numberInCLocale(text);
}

static void showNumber(NSTextField& field, double value)
{
    auto const& formatter = field.formatter();
    auto const text = formatter ? formatter->stringFromNumber(value) : std::nullopt;
    field.setStringValue(text ? *text : NSNumberDescription(value));
}

bool EditGlyphAxisViewController::commitDefaultValue(bool beep)
{
    NSAssertMainThread();
    auto const edited = axis();
    if (!edited || !m_defaultValueField) {
        return false;
    }
    auto const value = typedNumber(*m_defaultValueField);
    if (!value) {
        beepIf(beep);
        showNumber(*m_defaultValueField, edited->defaultValue());
        return false;
    }
    edited->setDefaultValue(*value);
    showNumber(*m_defaultValueField, *value);
    reportContentChange(edited);
    return true;
}

void EditGlyphAxisViewController::controlTextDidEndEditing(
    std::shared_ptr<NSNotification> const& notification)
{
    NSAssertMainThread();
    auto const control = controlOf(notification);
    if (!control) {
        return;
    }
    if (control == m_axisNameField) {
        commitAxisName(false);
    } else if (control == m_defaultValueField) {
        commitDefaultValue(false);
    }
}

bool EditGlyphAxisViewController::controlDoCommandBySelector(
    std::shared_ptr<NSControl> const& control, std::string_view selector)
{
    NSAssertMainThread();
    bool const isOwnField = control && (control == m_axisNameField || control == m_defaultValueField);
    if (!isOwnField || selector != "insertNewline:") {
        return false;
    }
    auto const self = sharedAs<EditGlyphAxisViewController>(); // Accepting may release the editor.
    if (commitAxisName(true) && commitDefaultValue(true)) {
        accept();
    }
    return true;
}

/// Takes the axis's entry out of the coordinates of every layer that has one.
static void removeCoordinates(TLGlyph const& glyph, std::string const& axisId)
{
    std::vector<std::shared_ptr<TLLayer>> layers;
    for (auto const& [layerId, layer] : glyph.layers()) {
        layers.push_back(layer);
    }
    for (auto const& layer : layers) {
        auto coordinates = layer->coordinates();
        if (auto const entry = coordinates.find(axisId); entry != coordinates.end()) {
            coordinates.erase(entry);
            layer->setCoordinates(std::move(coordinates));
        }
    }
}

void EditGlyphAxisViewController::deleteAxis(std::shared_ptr<NSObject> const&)
{
    NSAssertMainThread();
    auto const self = sharedAs<EditGlyphAxisViewController>(); // Accepting may release the editor.
    auto const owner = glyph();
    auto const deleted = axis();
    if (!owner || !deleted) {
        NSBeep();
        return;
    }
    auto const& axes = owner->axes();
    auto const place = std::ranges::find(axes, deleted);
    if (place == axes.end()) {
        NSBeep();
        return;
    }
    auto const axisId = deleted->axisId();
    owner->removeObjectFromAxesAtIndex(static_cast<std::size_t>(place - axes.begin()));
    removeCoordinates(*owner, axisId);
    if (m_axisWasDeleted) {
        m_axisWasDeleted(deleted);
    }
    accept();
}
