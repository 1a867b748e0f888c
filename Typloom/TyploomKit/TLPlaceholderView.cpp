#include "Typloom/TyploomKit/TLPlaceholderView.h"

namespace {
std::shared_ptr<NSTextField> makeLabel(std::shared_ptr<NSFont> const& font, NSColor color)
{
    auto const label = NSTextField::wrappingLabelWithString("");
    label->setTranslatesAutoresizingMaskIntoConstraints(false);
    label->setAlignment(NSTextAlignment::center);
    label->setFont(font);
    label->setTextColor(color);
    return label;
}
} // namespace

void TLPlaceholderView::setTitle(std::string title)
{
    ensureLabels();
    m_title = std::move(title);
    m_titleLabel->setStringValue(m_title);
    setAccessibilityLabel(m_title);
}

void TLPlaceholderView::setBody(std::string body)
{
    ensureLabels();
    m_body = std::move(body);
    m_bodyLabel->setStringValue(m_body);
}

/// The title's foot stands on the centre line and the sentence below it, both as wide as the view.
void TLPlaceholderView::ensureLabels()
{
    if (m_titleLabel) {
        return;
    }
    m_titleLabel = makeLabel(
        NSFont::systemFont(NSFont::systemFontSize() + 2, NSFontWeight::semibold), NSColor::labelColor());
    m_bodyLabel = makeLabel(NSFont::systemFont(0), NSColor::secondaryLabelColor());
    addSubview(m_titleLabel);
    addSubview(m_bodyLabel);

    std::vector<std::shared_ptr<NSLayoutConstraint>> constraints;
    for (auto const& label : { m_titleLabel, m_bodyLabel }) {
        constraints.push_back(label->leadingAnchor().constraintEqualToSystemSpacingAfter(leadingAnchor(), 2));
        constraints.push_back(
            trailingAnchor().constraintEqualToSystemSpacingAfter(label->trailingAnchor(), 2));
    }
    constraints.push_back(m_titleLabel->bottomAnchor().constraintEqualTo(centerYAnchor()));
    constraints.push_back(
        m_bodyLabel->topAnchor().constraintEqualToSystemSpacingAfter(m_titleLabel->bottomAnchor(), 1));
    NSLayoutConstraint::activateConstraints(constraints);
}
