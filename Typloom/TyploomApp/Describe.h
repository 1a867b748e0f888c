#pragma once

#include "Typloom/TyploomCore/Export.h"

#include <string>

class TLDocumentWindow;

/// What a window shows, as one JSON object, read from its views; rows that are scrolled away get their
/// views for it. Keys: `state`, `tab`, `sections` of `title` and `rows` (`name`, `enabled`, `minimum`,
/// `maximum`, `value`, `landmarks`, `text`, and `hint` where one is shown), `report` and `outline`
/// (`advance`, `contours`, `components`; null when no glyph is edited). Numbers read back as exactly what
/// they were.
TYPLOOM_API std::string DescribeWindow(TLDocumentWindow const& window);
