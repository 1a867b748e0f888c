#pragma once

#include "Tests/Support/FamilyWriter.h"

#include <functional>
#include <ostream>

using Names = std::vector<std::string>;

/// What a family with one fault gives.
struct BadFamily {
    std::string name;
    /// Writes the family and puts the fault into it.
    std::function<void(FamilyWriter&)> spoil;
    /// Found in the sentence of the error, or each in the report; none of an opened family: it is legal.
    Names mentions {};
    bool isRefused { false };
    Names masters { "light", "bold" }; ///< Those that are there, by identifier.
    /// Masters that draw glyph A. B is drawn by all that are there.
    Names mastersOfA { "light", "bold" };
};

inline void PrintTo(BadFamily const& family, std::ostream* stream)
{
    *stream << family.name;
}

/// A good family in which something is then spoilt.
inline BadFamily badPart(std::string name, std::function<void(FamilyWriter&)> spoil, Names mentions,
    Names masters = { "light", "bold" }, Names mastersOfA = { "light", "bold" })
{
    return { .name = std::move(name),
        .spoil =
            [spoil = std::move(spoil)](FamilyWriter& family) {
                family.writeFamily();
                spoil(family);
            },
        .mentions = std::move(mentions),
        .isRefused = false,
        .masters = std::move(masters),
        .mastersOfA = std::move(mastersOfA) };
}

/// Bold cannot be read.
inline BadFamily badBold(std::string name, std::function<void(FamilyWriter&)> spoil, Names mentions)
{
    mentions.emplace_back("'bold' is left out");
    return badPart(std::move(name), std::move(spoil), std::move(mentions), { "light" }, { "light" });
}

/// Bold's drawing of A is the one that is bad.
inline BadFamily badGlyph(std::string name, std::function<void(FamilyWriter&)> spoil, Names mentions)
{
    mentions.emplace_back("glyph 'A'");
    return badPart(std::move(name), std::move(spoil), std::move(mentions), { "light", "bold" }, { "light" });
}

inline std::string times(int count, std::string const& text)
{
    std::string result;
    result.reserve(text.size() * static_cast<std::size_t>(count));
    for (int index = 0; index < count; ++index) {
        result += text;
    }
    return result;
}

constexpr int tenMegabytes = 10 * 1024 * 1024;

std::vector<BadFamily> badDesignspaces();
std::vector<BadFamily> badAxes();
std::vector<BadFamily> badSources();
std::vector<BadFamily> badUfos();
std::vector<BadFamily> badGlyphs();
std::vector<BadFamily> oddGlyphs();
/// Too large, too deep, too many.
std::vector<BadFamily> badSizes();
