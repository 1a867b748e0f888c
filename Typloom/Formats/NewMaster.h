#pragma once

#include "Typloom/Formats/SourceDraft.h"

/// Adds the UFO of a new master, without glyphs: its information is that of another master's UFO with the
/// new style name. Gives the name by which the designspace calls it.
std::string addMasterUfo(FamilyDraft& files, std::string const& likeUfo, std::string const& styleName);
