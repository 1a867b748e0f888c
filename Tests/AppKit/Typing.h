#pragma once

#include "Tests/AppKit/ViewWindow.h"

#include <string_view>

/// Types into the view of the window that has the keyboard.
inline void typeInto(ViewWindow& window, std::string_view text)
{
    for (char const character : text) {
        QTest::keyClick(window.window.windowHandle(), character);
    }
    ViewWindow::settle();
}
