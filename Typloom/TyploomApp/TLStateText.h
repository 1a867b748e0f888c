#pragma once

#include "Typloom/TyploomApp/TLEditState.h"
#include "Typloom/TyploomApp/TLGlyphShape.h"

/// The line that says where the view stands: the master's name, the layer's name, "Interpolated", or
/// "Nearest source: NAME" with the reason where drawing met a problem.
TYPLOOM_API std::string TLStateText(TLEditState const& state, std::optional<TLDrawingProblem> const& problem);

/// What keeps the shown layer from having an effect, and what to do about it: it stands where another does.
/// None otherwise.
TYPLOOM_API std::optional<std::string> TLStateAdvice(TLEditState const& state);

/// The place on every axis, as "Weight 80, Width 100"; of many axes only those away from their default.
/// Empty without axes.
TYPLOOM_API std::string TLCoordinatesText(TLEditState const& state);

/// The same for any place on these axes; those without a value are left out.
TYPLOOM_API std::string TLPlaceText(std::vector<std::shared_ptr<TLAxis>> axes,
    std::function<std::optional<double>(TLAxis const&)> const& value);

/// A name as a line can show it: of one longer than any line the beginning. The toolkit lays out a whole text
/// before it cuts it.
TYPLOOM_API std::string TLShownName(std::string const& name);

/// The name of a layer as a person sees it: of a master's layer the master's.
TYPLOOM_API std::string TLLayerTitle(TLFont const& font, TLLayer const& layer);
