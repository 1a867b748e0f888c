#pragma once

#include "Typloom/TyploomApp/RecoveryJson.h"

/// What of the document is not in its files.
UnsavedWork unsavedWorkOf(TLFont& font);

/// Puts the work into the document of the same family, which was read again and has no changes, as one step
/// that can be undone and is saved as any other change. Glyphs that are not there any more are left out.
void restoreUnsavedWork(TLFont& font, UnsavedWork work);
