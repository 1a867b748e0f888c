#include "Moravel/EditGlyphAxisViewController.h"

#include "Moravel/MoravelBundle.h"
#include "Platform/Foundation/NSMainThread.h"
#include "Typloom/TyploomKit/legacyMainActorIsolated.h"

#include <array>

void EditGlyphAxisViewController::initWithNibName(
    std::optional<std::string> nibName, std::shared_ptr<NSBundle> bundle)
{
    NSAssertMainThread();
    reset();
    NSViewController::initWithNibName(std::move(nibName), std::move(bundle));
}

bool EditGlyphAxisViewController::initWithCoder(NSCoder const& coder)
{
    NSAssertMainThread();
    reset();
    return NSViewController::initWithCoder(coder);
}

void EditGlyphAxisViewController::reset()
{
    m_axisNameLabel = nullptr;
    m_axisNameField = nullptr;
    m_defaultValueLabel = nullptr;
    m_defaultValueField = nullptr;
    m_defaultValueDescriptionLabel = nullptr;
    m_deleteAxisButton = nullptr;
    m_glyph.reset();
    m_axis.reset();
    m_axisContentDidChange = nullptr;
    m_axisWasDeleted = nullptr;
    m_didAccept = nullptr;
    m_committedAxisName.clear();
}

std::span<NSOutlet const> EditGlyphAxisViewController::outlets() const
{
    using Self = EditGlyphAxisViewController;
    constexpr auto optional = NSOutletPresence::optional;
    static std::array const outlets {
        NSOutletMake("axisNameLabel", &Self::m_axisNameLabel, optional),
        NSOutletMake("axisNameField", &Self::m_axisNameField, optional),
        NSOutletMake("defaultValueLabel", &Self::m_defaultValueLabel, optional),
        NSOutletMake("defaultValueField", &Self::m_defaultValueField, optional),
        NSOutletMake("defaultValueDescriptionLabel", &Self::m_defaultValueDescriptionLabel, optional),
        NSOutletMake("deleteAxisButton", &Self::m_deleteAxisButton, optional),
    };
    return outlets;
}

std::span<NSMethod const> EditGlyphAxisViewController::methods() const
{
    static std::array const methods {
        NSMethodMake("deleteAxis:", &EditGlyphAxisViewController::deleteAxis),
    };
    return methods;
}

void EditGlyphAxisViewController::awakeFromNib()
{
    NSViewController::awakeFromNib();
    legacyMainActorIsolated([self = sharedAs<EditGlyphAxisViewController>()] { self->configureControls(); });
}

/// So that typing replaces the name.
void EditGlyphAxisViewController::viewDidAppear()
{
    NSAssertMainThread();
    NSViewController::viewDidAppear();
    if (m_axisNameField) {
        m_axisNameField->selectText();
    }
}

void EditGlyphAxisViewController::configureControls()
{
    NSAssertMainThread();
    setTexts();
    auto const axis = this->axis();
    m_committedAxisName = axis ? axis->name() : std::string();
    if (m_axisNameField) {
        m_axisNameField->setDelegate(sharedAs<EditGlyphAxisViewController>());
        m_axisNameField->setStringValue(m_committedAxisName);
    }
    configureDefaultValueField();
    if (m_deleteAxisButton) {
        m_deleteAxisButton->setHasDestructiveAction(true);
        m_deleteAxisButton->setTarget(weak_from_this());
        m_deleteAxisButton->setAction("deleteAxis:");
    }
}

void EditGlyphAxisViewController::setTexts()
{
    if (m_axisNameLabel) {
        m_axisNameLabel->setStringValue(MoravelLocalizedString(
            "add-glyph-axis.axis-name-label.title", "Axis name:", "Label for the glyph axis name field"));
    }
    if (m_defaultValueLabel) {
        m_defaultValueLabel->setStringValue(MoravelLocalizedString("add-glyph-axis.default-value-label.title",
            "Default:", "Label for the glyph axis default value field"));
    }
    if (m_defaultValueDescriptionLabel) {
        m_defaultValueDescriptionLabel->setStringValue(
            MoravelLocalizedString("add-glyph-axis.default-value-description.message",
                "This value is used as the default axis coordinate for layers.",
                "Description explaining how the default axis value is applied to existing layers"));
    }
    if (m_deleteAxisButton) {
        m_deleteAxisButton->setTitle(MoravelLocalizedString("edit-glyph-axis.delete-axis-button.title",
            "Delete Axis", "Button title for deleting a glyph-local axis"));
    }
}

void EditGlyphAxisViewController::configureDefaultValueField()
{
    if (!m_defaultValueField) {
        return;
    }
    m_defaultValueField->setFont(NSFont::legibleDigitsFontOfSize(NSFont::systemFontSize()));
    if (auto const& formatter = m_defaultValueField->formatter()) {
        m_defaultValueField->setPlaceholderString(formatter->stringFromNumber(0));
    }
    m_defaultValueField->setDelegate(sharedAs<EditGlyphAxisViewController>());
    auto const axis = this->axis();
    m_defaultValueField->setDoubleValue(axis ? axis->defaultValue() : 0);
}
