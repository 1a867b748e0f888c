#pragma once

#include "Typloom/TyploomCore/Export.h"

#include <string>

/// Name of the notification by which the host has its views brought up to date.
TYPLOOM_API extern std::string const TLUpdateInterface;
/// Posted just before it: what is worked out from the document is settled now, so that everyone who is
/// told afterwards finds it true.
TYPLOOM_API extern std::string const TLWillUpdateInterface;

/// Posts one `TLUpdateInterface` on a later turn of the main queue, before the next input event;
/// any number of requests until then lead to one.
TYPLOOM_API void TLSetNeedsUpdateInterface();
