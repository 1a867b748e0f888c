#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// What the program did, and what it took.
struct ProgramRun {
    int status { -1 }; ///< -1 when it did not end by itself.
    std::string ending; ///< In words.
    std::string output;
    std::string errors;
    double seconds { 0 }; ///< Of work, which other programs on the machine hardly change.
    double megabytes { 0 }; ///< At most at one time.
};

/// Starts the built program without a screen and waits for its end. Modes of files count for it even where
/// the tests run as root. `folder` gets what it prints.
ProgramRun runProgram(std::vector<std::string> arguments, std::filesystem::path const& folder);

/// Takes the right away from a superuser to read and write what file modes forbid, for this process.
void obeyFileModes();
