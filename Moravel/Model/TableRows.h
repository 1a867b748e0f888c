#pragma once

#include "Moravel/Model/MoravelTableModel.h"
#include "Typloom/TyploomCore/TLFont.h"

/// What the host shows now, as far as the rows depend on it.
struct EditedState {
    TLFont const& font;
    TLLayer const* layer { nullptr }; ///< The edited layer; null when there is none.
    TLFontMaster const* currentMaster { nullptr };
    std::optional<TLLocation> displayLocation {};
    std::string_view filterQuery {}; ///< Empty: no filter.
};

/// The rows for that state: the font's axes, then those of the layer's glyph, each in the host's order
/// and in a section of its own, which is left out when it has no rows.
MoravelTableModel tableRows(EditedState const& state);
