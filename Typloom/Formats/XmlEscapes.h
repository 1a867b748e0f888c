#pragma once

#include <string>
#include <string_view>

/// Text for an element's content or, with either kind of quotes, an attribute's value. Line ends and
/// tabs become references, so that the result is on one line; what XML cannot hold at all
/// (control characters, broken UTF-8) becomes U+FFFD.
std::string xmlEscaped(std::string_view text);

/// What a raw text of a file stands for. An unknown reference stays as it is.
std::string xmlUnescaped(std::string_view raw);
