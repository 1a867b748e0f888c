#pragma once

#include <cstddef>

/// Bytes of the longest name that an axis may have. Every view and every place holds the names of axes.
inline constexpr std::size_t longestAxisName = std::size_t(1024) * 1024;
