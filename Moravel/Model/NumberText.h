#pragma once

#include <optional>
#include <string_view>

/// The number that the whole text stands for as the C library reads it in the "C" locale: a full stop, an
/// optional sign and exponent, hexadecimal after "0x", "inf" and "nan" in any case. What is too great is
/// infinite, what is too small 0. None for other text.
std::optional<double> numberInCLocale(std::string_view text);
