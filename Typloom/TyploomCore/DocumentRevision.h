#pragma once

#include "Typloom/TyploomCore/Export.h"

#include <cstdint>

/// Grows with every change of a document object. What was worked out from document objects holds
/// for as long as it stays the same.
TYPLOOM_API std::uint64_t documentRevision();

/// Called by every operation that changes a document object: what was worked out before is stale,
/// and the interface needs an update.
void documentDidChange();
