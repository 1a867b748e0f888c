#pragma once

#include <string>

/// What files can hold of a name: without characters that XML has no way to write (control characters but
/// tab and line ends, U+FFFE, U+FFFF).
std::string storableName(std::string name);

/// Whether files and sliders can hold a coordinate: finite, and not so far out that a tenth is lost.
bool isStorableCoordinate(double value);
