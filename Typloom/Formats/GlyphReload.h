#pragma once

#include "Typloom/Formats/FamilyGlyphSource.h"
#include "Typloom/TyploomCore/TLDocumentHistory.h"

#include <set>

// What another program has made of a glyph, compared with the glyph of the document.

/// A glyph as it was read: its state and where its layers come from.
struct GlyphReading {
    TLGlyphState const& state;
    std::vector<LayerOrigin> const& origins;
};

/// Whether a layer can't be read that could be before.
bool hasNewProblem(TLGlyphState const& before, TLGlyphState const& after);

/// The layers that are drawn otherwise now, by the identifiers of `before`. None when more than outlines
/// differ.
std::optional<TLDocumentHistory::Redrawn> redrawnLayers(
    GlyphReading const& before, GlyphReading const& now, TLFontState const& font);

/// Draws the layers of a glyph anew. Those that are drawn otherwise in it, or are gone, are left: taken out
/// of `redrawn` and returned.
std::set<std::string> takeOutlines(TLGlyphState& glyph, TLDocumentHistory::Redrawn& redrawn);

/// The files of a glyph, but for those of the layers that were left.
std::vector<std::filesystem::path> filesOf(Family const& family, std::string const& glyphName,
    std::vector<LayerOrigin> const& origins, std::set<std::string> const& left);

/// Gives the layers of a glyph that was read again the identifiers that they had.
void keepIdentifiers(TLGlyphState& glyph, std::vector<LayerOrigin>& origins, GlyphReading const& before,
    TLFontState const& font);
