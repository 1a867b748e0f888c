#pragma once

#include "Platform/AppKit/NSView.h"
#include "Typloom/TyploomCore/TLLocation.h"
#include "Typloom/TyploomCore/Export.h"

#include <cstddef>

struct NSRange {
    std::size_t location { 0 };
    std::size_t length { 0 };
    bool operator==(NSRange const&) const = default;
};

/// The view that draws a line of glyphs and edits one of them.
class TYPLOOM_API TLGlyphEditView : public NSView {
public:
    /// Where the preview stands; none when a layer is shown as it is.
    virtual std::optional<TLLocation> axisLocation() const = 0;
    virtual void setAxisLocation(std::optional<TLLocation> location) = 0;
    /// The selection in the text, in glyph objects; length 0 is a cursor before the object at its location.
    virtual NSRange selectedRange() const = 0;
    /// Shows the layer of that identifier for the glyph objects in the range that have it.
    virtual void switchToLayerWithId(
        std::string_view layerId, std::optional<std::string> const& associatedMasterId, NSRange range)
        = 0;
};
