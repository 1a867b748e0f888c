#pragma once

#include "Typloom/TyploomCore/TLFont.h"

#include <QByteArray>

/// Unsaved work on a family, as states of its document.
struct UnsavedWork {
    std::filesystem::path family; ///< The designspace file.
    /// What tells layers and masters of the last save apart, since a family that is read again may call them
    /// otherwise. Without outlines.
    TLFontState savedFont;
    std::map<std::string, TLGlyphState> savedGlyphs;
    TLFontState font;
    std::map<std::string, TLGlyphState> glyphs; ///< Those that differ from their files.
};

QByteArray toRecoveryJson(UnsavedWork const& work);
/// None when the text is no such work, or only in part.
std::optional<UnsavedWork> fromRecoveryJson(QByteArray const& text);
