#pragma once

#include <cstddef>
#include <functional>
#include <string>

/// The parts of the table, in the order in which they are shown.
enum class Section {
    font, ///< The axes of the current font.
    glyph, ///< The axes that belong to the current glyph alone.
};

/// What a row is, whatever it shows: it never changes while the row is in the table.
struct SidebarItem {
    Section section { Section::font };
    std::string axisId;
    bool operator==(SidebarItem const&) const = default;
};

template <> struct std::hash<SidebarItem> {
    std::size_t operator()(SidebarItem const& item) const noexcept
    {
        auto const seed = static_cast<std::size_t>(item.section);
        return seed * 0x9e3779b97f4a7c15ULL ^ std::hash<std::string> {}(item.axisId);
    }
};

/// Names for messages about a faulty snapshot.
std::string describe(Section section);
std::string describe(SidebarItem const& item);
