#pragma once

#include "Typloom/Formats/DesignspaceParser.h"
#include "Typloom/TyploomCore/TLLayer.h"

/// The same each time the family is opened, as long as the source is not moved.
std::string sourceIdentifier(DesignspaceSource const& source);

/// What the master or the layer is called.
std::string sourceTitle(DesignspaceSource const& source, TLLayerKind kind, bool isDefaultLayer);

/// What sentences call the source.
std::string shownSource(DesignspaceSource const& source);
