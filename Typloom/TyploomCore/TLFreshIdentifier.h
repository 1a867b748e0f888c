#pragma once

#include "Typloom/TyploomCore/Export.h"

#include <string>

/// 128 random bits: distinct from every identifier that was ever stored, in this family or another.
TYPLOOM_API std::string TLFreshIdentifier();
