#include "Platform/AppKit/NSColor.h"

#include "Platform/Qt/DrawingConversions.h"

#include <QApplication>
#include <QPalette>

#include <algorithm>
#include <cmath>

namespace {

/// WCAG 2.1, relative luminance.
double luminance(NSColor color)
{
    auto const linear = [](double component) {
        return component <= 0.04045 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.red) + 0.7152 * linear(color.green) + 0.0722 * linear(color.blue);
}

/// WCAG 2.1, contrast ratio: 1 for equal colours, 21 for black on white.
double contrast(NSColor left, NSColor right)
{
    double const a = luminance(left) + 0.05;
    double const b = luminance(right) + 0.05;
    return a > b ? a / b : b / a;
}

NSColor mix(NSColor from, NSColor to, double share)
{
    auto const between = [share](double a, double b) { return a + (b - a) * share; };
    return { between(from.red, to.red), between(from.green, to.green), between(from.blue, to.blue), 1 };
}

NSColor role(QPalette::ColorRole colorRole)
{
    return fromQColor(QApplication::palette().color(QPalette::Active, colorRole));
}

/// The text colour, taken back towards the background as far as the wanted share, but no further
/// than leaves the contrast.
NSColor fadedText(double share, double leastContrast)
{
    auto const text = role(QPalette::WindowText);
    auto const background = role(QPalette::Window);
    constexpr double step = 0.02;
    while (share > 0 && contrast(mix(text, background, share), background) < leastContrast) {
        share -= step;
    }
    return mix(text, background, std::max(share, 0.0));
}

/// The least contrast with what a title stands on.
double contrastOnControls(NSColor color)
{
    return std::min(contrast(color, role(QPalette::Window)), contrast(color, role(QPalette::Button)));
}

constexpr double readableContrast = 4.5; ///< WCAG 2.1, level AA for text.
constexpr double visibleContrast = 3; ///< WCAG 2.1, level AA for graphics.

} // namespace

NSColor NSColor::labelColor()
{
    return role(QPalette::WindowText);
}

NSColor NSColor::secondaryLabelColor()
{
    return fadedText(0.4, readableContrast);
}

NSColor NSColor::tertiaryLabelColor()
{
    return fadedText(0.6, visibleContrast);
}

NSColor NSColor::controlBackgroundColor()
{
    return role(QPalette::Base);
}

NSColor NSColor::textBackgroundColor()
{
    return role(QPalette::Base);
}

NSColor NSColor::controlAccentColor()
{
    return role(QPalette::Highlight);
}

NSColor NSColor::systemRedColor()
{
    bool const isDark = luminance(role(QPalette::Button)) < luminance(role(QPalette::ButtonText));
    NSColor const red = isDark ? NSColor { 1, 0.42, 0.38 } : NSColor { 0.76, 0.07, 0.1 };
    auto const text = role(QPalette::ButtonText);
    auto shown = red;
    constexpr int steps = 20;
    for (int step = 1; step <= steps && contrastOnControls(shown) < readableContrast; ++step) {
        shown = mix(red, text, static_cast<double>(step) / steps);
    }
    return shown;
}
