#pragma once

#include <optional>
#include <string>
#include <string_view>

/// What is wrong with a text before any parser may see it.
struct XmlScanProblem {
    std::size_t offset { 0 };
    std::string reason;
    bool operator==(XmlScanProblem const&) const = default;
};

/// The first thing because of which a text is not parsed at all: it is empty, no XML, no UTF-8,
/// declares entities, nests elements deeper than `xmlDepthLimit`, or has so many that their tree would take
/// more than `xmlTreeLimit`. One pass, no recursion.
std::optional<XmlScanProblem> findXmlProblem(std::string_view text);

inline constexpr std::size_t xmlDepthLimit = 256;
/// Bytes; enough for a glyph of a million points.
inline constexpr std::size_t xmlTreeLimit = std::size_t(256) * 1024 * 1024;

/// Bytes of the UTF-8 character at the start of a text that is not empty; 0 when there is no valid one
/// other than NUL.
std::size_t validSequenceLength(std::string_view text);

/// Line of an offset, from 1.
std::size_t lineOfOffset(std::string_view text, std::size_t offset);
