#pragma once

#include "Typloom/Formats/XmlDocument.h"

#include <map>
#include <vector>

/// A value of a property list.
struct PlistValue {
    using Array = std::vector<PlistValue>;
    using Dictionary = std::map<std::string, PlistValue, std::less<>>;
    /// Nothing stands for what is never looked at (dates, data). Text that should be a number and
    /// is none stays text.
    std::variant<std::monostate, bool, double, std::string, Array, Dictionary> content;

    Dictionary const* dictionary() const { return std::get_if<Dictionary>(&content); }
    Array const* array() const { return std::get_if<Array>(&content); }
    std::string const* string() const { return std::get_if<std::string>(&content); }
    std::optional<double> number() const;
    /// The entry of a dictionary; null when there is none, or when this is no dictionary.
    PlistValue const* find(std::string_view key) const;
};

inline constexpr int plistDepthLimit = 64;

/// The value of one element. A repeated key keeps its first value.
Result<PlistValue> readPlistValue(XmlDocument const& document, pugi::xml_node node);

/// The one value in a `<plist>`.
Result<PlistValue> readPlist(XmlDocument const& document);
