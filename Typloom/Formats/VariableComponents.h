#pragma once

#include "Typloom/Formats/Plist.h"
#include "Typloom/TyploomCore/TLOutline.h"

/// A transformation taken apart; angles in degrees, counter-clockwise (skewX clockwise).
struct DecomposedTransformation {
    double translateX { 0 };
    double translateY { 0 };
    double rotation { 0 };
    double scaleX { 1 };
    double scaleY { 1 };
    double skewX { 0 };
    double skewY { 0 };
    double tCenterX { 0 };
    double tCenterY { 0 };

    /// Skewed, scaled, then rotated around the centre, then moved; in the order of
    /// `TLComponent::transform`.
    std::array<double, 6> matrix() const;
};

inline constexpr std::string_view variableComponentsKey = "com.black-foundry.variable-components";

/// Reads that library entry and appends its components.
/// A clause on what is wrong with it, none when all is well.
std::optional<std::string> appendVariableComponents(
    PlistValue const& entry, std::vector<TLComponent>& components);

/// The library's dictionary for a transformation, without what is at its default; empty for none at all.
/// The centre is never used.
PlistValue transformationEntry(std::array<double, 6> const& matrix);
