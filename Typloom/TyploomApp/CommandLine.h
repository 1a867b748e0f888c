#pragma once

#include "Typloom/TyploomCore/Export.h"

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

/// What a person asked for when starting the program.
struct CommandLine {
    /// An axis by its tag or name, and a design coordinate on it.
    struct Coordinate {
        std::string axis;
        double value { 0 };
        bool operator==(Coordinate const&) const = default;
    };
    struct Size {
        int width { 0 }; ///< Points.
        int height { 0 };
        bool operator==(Size const&) const = default;
    };
    static constexpr Size usualSize { 1400, 900 };

    std::optional<std::filesystem::path> family;
    std::optional<std::string> glyph;
    std::optional<std::string> text;
    std::vector<Coordinate> location;
    std::optional<std::filesystem::path> snapshot;
    std::optional<Size> size;
    bool describe { false };
    std::vector<std::filesystem::path> plugins;
    bool version { false };
    bool help { false };

    /// Nothing is shown on a screen.
    bool isOffscreen() const { return snapshot || describe; }
    bool operator==(CommandLine const&) const = default;
};

/// One sentence on what is wrong with a command line, with what there is.
struct CommandLineError {
    std::string sentence;
    bool operator==(CommandLineError const&) const = default;
};

/// Reads the arguments after the program's name. An option's value follows it or stands behind "=";
/// after "--" nothing is an option.
TYPLOOM_API std::variant<CommandLine, CommandLineError> ParseCommandLine(
    std::span<std::string const> arguments);

/// The text for `--help`.
TYPLOOM_API std::string CommandLineHelp();
