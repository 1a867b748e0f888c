#pragma once

#include <string>

/// What `./bench tick` was asked for.
struct TickOptions {
    std::string family;
    std::string text;
    std::string axis; ///< By name or tag.
    std::size_t ticks { 60 };
    bool asJson { false };
};

/// Drags the axis's slider in a window on a real family and prints a line for each move of the mouse. Returns
/// the program's exit status.
int runTicks(TickOptions const& options);
