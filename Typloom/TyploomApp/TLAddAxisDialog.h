#pragma once

#include "Typloom/TyploomCore/TLFont.h"

class QWidget;

/// Asks for name, tag and values of a new axis of the font in a dialog of that window, and adds it.
void TLOpenAddAxisDialog(QWidget& parent, std::shared_ptr<TLFont> const& font);
