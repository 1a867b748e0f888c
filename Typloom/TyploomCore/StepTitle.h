#pragma once

#include "Typloom/TyploomCore/TLFont.h"

/// What a step of the history touches, before it or after it.
struct TouchedStates {
    std::map<std::string, TLGlyphState> const& glyphs;
    std::optional<TLFontState> const& font;
};

struct StepDescription {
    std::string title; ///< For a menu: "Rename Axis".
    std::string renamedAxis; ///< Identifier, when renaming that one axis is all; else empty.
};

/// What makes the difference between two states of the same things.
StepDescription describeStep(TouchedStates const& before, TouchedStates const& after);
