#pragma once

#include "Typloom/TyploomApp/TLEditState.h"
#include "Typloom/TyploomApp/TLGlyphShape.h"

/// The line that says where the view stands: a master's name, "Intermediate layer NAME",
/// "Interpolated" with the place, or "Nearest source: NAME" with the reason where drawing met a problem.
TYPLOOM_API std::string TLStateText(TLEditState const& state, std::optional<TLDrawingProblem> const& problem);

/// The name of a layer as a person sees it: of a master's layer the master's.
TYPLOOM_API std::string TLLayerTitle(TLFont const& font, TLLayer const& layer);
