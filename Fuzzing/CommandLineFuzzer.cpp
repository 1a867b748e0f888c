#include "Fuzzing/FuzzInput.h"
#include "Platform/Foundation/NSNumberFormatter.h"
#include "Typloom/TyploomApp/CommandLine.h"

#include <cmath>

namespace {

std::vector<std::string> argumentsIn(std::string_view input)
{
    std::vector<std::string> arguments;
    while (!input.empty()) {
        auto const end = std::min(input.find('\n'), input.size());
        arguments.emplace_back(input.substr(0, end));
        input.remove_prefix(std::min(end + 1, input.size()));
    }
    return arguments;
}

/// A command line that asks for the same.
std::vector<std::string> argumentsFor(CommandLine const& wanted)
{
    std::vector<std::string> arguments;
    auto const add = [&arguments](std::string const& name, auto const& value) {
        if (value) {
            arguments.push_back(name + "=" + std::string(*value));
        }
    };
    add("--glyph", wanted.glyph);
    add("--text", wanted.text);
    add("--snapshot", wanted.snapshot);
    std::string location;
    for (auto const& [axis, value] : wanted.location) {
        location += (location.empty() ? "" : ",") + axis + "=" + NSNumberDescription(value);
    }
    add("--location", location.empty() ? std::nullopt : std::optional(location));
    for (auto const& plugin : wanted.plugins) {
        arguments.push_back("--plugin=" + plugin.string());
    }
    if (auto const& size = wanted.size) {
        arguments.push_back("--size=" + std::to_string(size->width) + "x" + std::to_string(size->height));
    }
    for (auto const& [name, isSet] : { std::pair("--describe", wanted.describe),
             { "--version", wanted.version }, { "--help", wanted.help } }) {
        if (isSet) {
            arguments.emplace_back(name);
        }
    }
    if (wanted.family) {
        arguments.insert(arguments.end(), { "--", wanted.family->string() });
    }
    return arguments;
}

} // namespace

int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size)
{
    auto const parsed = ParseCommandLine(argumentsIn(fuzzInput(bytes, size)));
    if (auto const* error = std::get_if<CommandLineError>(&parsed)) {
        fuzzExpect(!error->sentence.empty(), "a refusal has a sentence");
        fuzzExpect(error->sentence.find('\n') == std::string::npos, "on one line", error->sentence);
        return 0;
    }
    auto const& commandLine = std::get<CommandLine>(parsed);
    for (auto const& [axis, value] : commandLine.location) {
        fuzzExpect(std::isfinite(value) && !axis.empty(), "a place is a finite number on a named axis");
    }
    if (auto const& asked = commandLine.size) {
        for (int const side : { asked->width, asked->height }) {
            fuzzExpect(side >= 1 && side <= 10'000, "a window has a size that can be drawn");
        }
    }
    auto const again = ParseCommandLine(argumentsFor(commandLine));
    auto const* readBack = std::get_if<CommandLine>(&again);
    fuzzExpect(readBack && *readBack == commandLine, "written out and read again it asks for the same");
    return 0;
}
