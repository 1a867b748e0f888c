#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

/// Lets a hashed container of strings be asked with any kind of text, without making a string.
struct TLStringHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view> {}(text); }
};

template <class Value>
using TLStringMap = std::unordered_map<std::string, Value, TLStringHash, std::equal_to<>>;
