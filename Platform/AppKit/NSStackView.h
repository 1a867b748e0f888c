#pragma once

#include "Platform/AppKit/NSView.h"

enum class NSStackViewAlignment { centerY = 10 };

/// Views side by side. Only the horizontal orientation is there.
class PLATFORM_API NSStackView final : public NSView {
public:
    static std::shared_ptr<NSStackView> stackViewWithViews(std::vector<std::shared_ptr<NSView>> const& views);

    NSLayoutOrientation orientation() const { return m_orientation; }
    void setOrientation(NSLayoutOrientation orientation);
    NSStackViewAlignment alignment() const { return m_alignment; }
    void setAlignment(NSStackViewAlignment alignment);
    double spacing() const { return m_spacing; }
    void setSpacing(double points);

private:
    NSLayoutOrientation m_orientation { NSLayoutOrientation::horizontal };
    NSStackViewAlignment m_alignment { NSStackViewAlignment::centerY };
    double m_spacing { 8 };
};
