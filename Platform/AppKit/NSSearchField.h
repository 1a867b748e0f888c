#pragma once

#include "Platform/AppKit/NSTextField.h"

/// A text field for a query, with a magnifying glass and a button that clears it. Escape clears.
class PLATFORM_API NSSearchField final : public NSTextField {
public:
    NSSearchField();
};
