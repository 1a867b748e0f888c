#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

/// Called by the fuzzer with one input after the other.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size);

inline std::string_view fuzzInput(std::uint8_t const* bytes, std::size_t size)
{
    return { reinterpret_cast<char const*>(bytes), size };
}

/// Stops at a promise that is broken; the fuzzer keeps the input.
inline void fuzzExpect(bool isTrue, char const* promise, std::string_view seen = {})
{
    if (!isTrue) {
        std::fprintf(
            stderr, "Broken promise: %s\n%.*s\n", promise, static_cast<int>(seen.size()), seen.data());
        std::abort();
    }
}

/// Whether XML can hold a text at all: control characters have no way into it.
inline bool isXmlText(std::string_view text)
{
    for (char const character : text) {
        auto const byte = static_cast<unsigned char>(character);
        if (byte < 0x20 && byte != '\n' && byte != '\t' && byte != '\r') {
            return false;
        }
    }
    return text.find("\xEF\xBF\xBE") == text.npos && text.find("\xEF\xBF\xBF") == text.npos;
}
