#pragma once

#include "Platform/Foundation/NSObject.h"

enum class NSFontWeight { regular, semibold, bold };

/// A font for controls. Sizes in points; 0 means the system's default size.
class PLATFORM_API NSFont final : public NSObject {
public:
    static double systemFontSize();
    static double smallSystemFontSize();

    static std::shared_ptr<NSFont> systemFont(double size, NSFontWeight weight = NSFontWeight::regular);
    /// The system font with digits of one width.
    static std::shared_ptr<NSFont> monospacedDigitSystemFont(double size, NSFontWeight weight);
    /// For text that is a number.
    static std::shared_ptr<NSFont> legibleDigitsFontOfSize(double size);

    NSFont(double pointSize, NSFontWeight weight, bool monospacedDigits);
    double pointSize() const { return m_pointSize; }
    NSFontWeight weight() const { return m_weight; }
    bool hasMonospacedDigits() const { return m_monospacedDigits; }

private:
    double m_pointSize;
    NSFontWeight m_weight;
    bool m_monospacedDigits;
};
