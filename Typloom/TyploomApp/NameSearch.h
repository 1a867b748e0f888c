#pragma once

#include "Typloom/TyploomCore/Export.h"

#include <span>
#include <string>
#include <vector>

/// Names as a sentence lists them: all of them when there are few, otherwise the ones closest to
/// the wanted name and how many more there are. "none" for no names.
TYPLOOM_API std::string ListOfNamesLike(std::string const& wanted, std::span<std::string const> names);

/// How many characters must be put in, left out or replaced to make one text of the other; letter
/// case counts half. Counted in bytes.
TYPLOOM_API double EditDistance(std::string_view left, std::string_view right);
