#pragma once

#include "Platform/AppKit/NSView.h"

enum class NSStackViewAlignment { centerY = 10 };

/// Views side by side, their centres on one line. Another orientation or alignment stops the program.
class PLATFORM_API NSStackView final : public NSView {
public:
    static std::shared_ptr<NSStackView> stackViewWithViews(std::vector<std::shared_ptr<NSView>> const& views);

    void setOrientation(NSLayoutOrientation orientation);
    void setAlignment(NSStackViewAlignment alignment);
    double spacing() const { return m_spacing; }
    void setSpacing(double points);

private:
    double m_spacing { 8 };
};
