#pragma once

#include "Platform/Foundation/Export.h"

/// A colour, sRGB, components 0 to 1. The named ones follow the desktop's palette, light or dark,
/// and are looked up when they are asked for.
struct PLATFORM_API NSColor {
    double red { 0 };
    double green { 0 };
    double blue { 0 };
    double alpha { 1 };
    bool operator==(NSColor const&) const = default;

    static NSColor labelColor();
    static NSColor secondaryLabelColor();
    static NSColor tertiaryLabelColor();
    static NSColor controlBackgroundColor();
    static NSColor textBackgroundColor();
    static NSColor controlAccentColor();
    /// For texts that warn, on windows and buttons.
    static NSColor systemRedColor();

    NSColor withAlpha(double value) const { return { red, green, blue, value }; }
};
