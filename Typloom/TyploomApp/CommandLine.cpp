#include "Typloom/TyploomApp/CommandLine.h"

#include "Platform/Foundation/NSNumberFormatter.h"
#include "Platform/Foundation/NSString.h"

#include <algorithm>
#include <charconv>

namespace {
using Problem = std::optional<std::string>; ///< None: all is well.

/// A snapshot beyond this would be gigabytes.
constexpr int largestSide = 10'000;

struct Option {
    std::string_view name;
    std::string_view valueName; ///< Empty for a switch.
    std::string_view explanation;
    Problem (*apply)(CommandLine&, std::string const& value);
};

Problem setSize(CommandLine& result, std::string const& value)
{
    Problem const problem = "'" + value
        + "' is not a size; a size is written as in 1400x900, each side from 1 to "
        + std::to_string(largestSide);
    auto const* const end = value.data() + value.size();
    CommandLine::Size size;
    auto const width = std::from_chars(value.data(), end, size.width);
    if (width.ec != std::errc() || width.ptr == end || *width.ptr != 'x') {
        return problem;
    }
    auto const height = std::from_chars(width.ptr + 1, end, size.height);
    if (height.ec != std::errc() || height.ptr != end) {
        return problem;
    }
    auto const isGood = [](int side) { return side >= 1 && side <= largestSide; };
    result.size = size;
    return isGood(size.width) && isGood(size.height) ? std::nullopt : problem;
}

Problem addCoordinate(CommandLine& result, std::string_view text)
{
    auto const separator = text.rfind('=');
    auto const trimmed
        = [](std::string_view part) { return NSStringByTrimming(part, NSCharacterSet::whitespace); };
    auto const axis = trimmed(text.substr(0, std::min(separator, text.size())));
    if (separator == std::string_view::npos || axis.empty()) {
        return "'" + std::string(text)
            + "' is no place on an axis; a location is written as in \"wght=550,wdth=200\"";
    }
    auto const number = trimmed(text.substr(separator + 1));
    auto const value = NSNumberFromText(number);
    if (!value) {
        return "'" + number + "' is not a number for the axis '" + axis
            + "'; numbers are written as in 550 or -12.5";
    }
    if (std::ranges::find(result.location, axis, &CommandLine::Coordinate::axis) != result.location.end()) {
        return "The location names the axis '" + axis + "' twice";
    }
    result.location.push_back({ axis, *value });
    return std::nullopt;
}

Problem setLocation(CommandLine& result, std::string const& value)
{
    result.location.clear();
    std::string_view rest = value;
    while (true) {
        auto const comma = rest.find(',');
        if (auto problem = addCoordinate(result, rest.substr(0, comma))) {
            return problem;
        }
        if (comma == std::string_view::npos) {
            return std::nullopt;
        }
        rest.remove_prefix(comma + 1);
    }
}

template <auto Field> Problem setText(CommandLine& result, std::string const& value)
{
    (result.*Field) = value;
    return std::nullopt;
}

template <auto Field> Problem setSwitch(CommandLine& result, std::string const&)
{
    (result.*Field) = true;
    return std::nullopt;
}

Problem addPlugin(CommandLine& result, std::string const& value)
{
    result.plugins.emplace_back(value);
    return std::nullopt;
}

constexpr Option options[] = {
    { "--glyph", "NAME", "show that glyph, edited", setText<&CommandLine::glyph> },
    { "--text", "TEXT", "show that line of text", setText<&CommandLine::text> },
    { "--location", "PLACE", "go there, as in \"wght=550,wdth=200\": axes by tag or name, design coordinates",
        setLocation },
    { "--snapshot", "FILE.png", "draw the window into that file instead of showing it",
        setText<&CommandLine::snapshot> },
    { "--size", "WxH", "size of the window, as in 1400x900", setSize },
    { "--describe", "", "print what the window shows as JSON instead of showing it",
        setSwitch<&CommandLine::describe> },
    { "--plugin", "FOLDER", "load that plug-in bundle too, or all in that folder; may be given again",
        addPlugin },
    { "--version", "", "print the version", setSwitch<&CommandLine::version> },
    { "--help", "", "print this text", setSwitch<&CommandLine::help> },
};

std::string usageOf(Option const& option)
{
    return std::string(option.name) + (option.valueName.empty() ? "" : " ") + std::string(option.valueName);
}

std::string unknownOption(std::string_view argument)
{
    std::string sentence = "There is no option '" + std::string(argument) + "'; there are ";
    for (auto const& option : options) {
        bool const isFirst = &option == options, isLast = &option == std::end(options) - 1;
        sentence += (isFirst ? "" : isLast ? " and " : ", ") + std::string(option.name);
    }
    return sentence;
}

/// Options that mean nothing without a family.
Problem checkFamily(CommandLine const& commandLine)
{
    if (commandLine.family || commandLine.version || commandLine.help) {
        return std::nullopt;
    }
    auto const name = commandLine.glyph ? "--glyph"
        : commandLine.text              ? "--text"
        : !commandLine.location.empty() ? "--location"
        : commandLine.snapshot          ? "--snapshot"
        : commandLine.describe          ? "--describe"
                                        : nullptr;
    return name ? Problem(std::string(name) + " needs a family: typloom FAMILY.designspace " + name + " …")
                : std::nullopt;
}

class Parser {
public:
    explicit Parser(std::span<std::string const> arguments)
        : m_rest(arguments)
    {
    }

    std::variant<CommandLine, CommandLineError> parse()
    {
        while (!m_rest.empty()) {
            auto const argument = m_rest.front();
            m_rest = m_rest.subspan(1);
            if (auto problem = take(argument)) {
                return CommandLineError { *problem };
            }
        }
        if (auto problem = checkFamily(m_result)) {
            return CommandLineError { *problem };
        }
        return m_result;
    }

private:
    Problem take(std::string const& argument)
    {
        if (!m_isAfterOptions && argument == "--") {
            m_isAfterOptions = true;
            return std::nullopt;
        }
        if (!m_isAfterOptions && argument.size() > 1 && argument.front() == '-') {
            return takeOption(argument);
        }
        if (argument.empty()) {
            return "The family's file name is empty";
        }
        if (m_result.family) {
            return "One family at a time: '" + m_result.family->string() + "' and then '" + argument + "'";
        }
        m_result.family = argument;
        return std::nullopt;
    }

    Problem takeOption(std::string const& argument)
    {
        auto const equals = argument.find('=');
        auto const name = argument.substr(0, equals);
        auto const* const option = std::ranges::find(options, name, &Option::name);
        if (option == std::end(options)) {
            return unknownOption(name);
        }
        bool const hasValue = equals != std::string::npos;
        if (option->valueName.empty()) {
            return hasValue ? Problem(name + " takes no value") : option->apply(m_result, {});
        }
        auto value = hasValue ? Problem(argument.substr(equals + 1)) : nextValue();
        if (!value || (value->empty() && name != "--text")) {
            return name + " needs a value: " + usageOf(*option);
        }
        return option->apply(m_result, *value);
    }

    /// The next argument, unless it is an option itself. A text may begin with a hyphen after "=".
    std::optional<std::string> nextValue()
    {
        if (m_rest.empty() || m_rest.front().starts_with("--")) {
            return std::nullopt;
        }
        auto value = m_rest.front();
        m_rest = m_rest.subspan(1);
        return value;
    }

    std::span<std::string const> m_rest;
    CommandLine m_result;
    bool m_isAfterOptions { false };
};
} // namespace

std::variant<CommandLine, CommandLineError> ParseCommandLine(std::span<std::string const> arguments)
{
    return Parser(arguments).parse();
}

std::string CommandLineHelp()
{
    std::string text = "Usage: typloom [FAMILY.designspace] [OPTION…]\n\n"
                       "Opens a font family, or without one a window to open it from.\n\n";
    for (auto const& option : options) {
        auto usage = "  " + usageOf(option);
        usage.resize(std::max<std::size_t>(usage.size() + 2, 24), ' ');
        text += usage + std::string(option.explanation) + "\n";
    }
    return text
        + "\nExit status: 0; 1 when the family, a name or the picture is at fault; 2 for a command line like "
          "none of these.\n";
}
