#include "Typloom/Interpolation/VariationModel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>
#include <set>
#include <sstream>
#include <unistd.h>

// The same random families through the model of the font tools in Python, where those are installed
// (Debian's python3-fonttools). Their older versions end the reach of a source at the outermost
// source instead of the end of the axis: the families' sources reach the ends.

namespace {

using Place = std::vector<double>;

struct Family {
    std::vector<Place> sources;
    std::vector<double> values;
    std::vector<Place> places;
};

Family randomFamily(std::mt19937& random)
{
    std::size_t const axes = std::uniform_int_distribution<std::size_t>(1, 4)(random);
    std::uniform_int_distribution<int> step(-4, 4);
    std::bernoulli_distribution isOff(0.4);
    std::uniform_real_distribution<double> coordinate(-1, 1), value(-1000, 1000);
    std::set<Place> sources { Place(axes) };
    for (std::size_t axis = 0; axis < axes; ++axis) {
        for (double const end : { -1.0, 1.0 }) {
            Place place(axes);
            std::generate(place.begin(), place.end(), [&] { return isOff(random) ? step(random) / 4.0 : 0; });
            place[axis] = end;
            sources.insert(place);
        }
    }
    for (int i = std::uniform_int_distribution<int>(0, 20)(random); i > 0; --i) {
        Place place(axes);
        std::generate(place.begin(), place.end(), [&] { return isOff(random) ? 0 : step(random) / 4.0; });
        sources.insert(place);
    }
    Family family;
    family.sources.assign(sources.begin(), sources.end());
    std::shuffle(family.sources.begin(), family.sources.end(), random);
    std::generate_n(std::back_inserter(family.values), family.sources.size(), [&] { return value(random); });
    for (int i = 0; i < 50; ++i) {
        Place place(axes);
        std::generate(place.begin(), place.end(), [&] { return coordinate(random); });
        family.places.push_back(place);
    }
    return family;
}

void write(std::ostream& stream, std::vector<double> const& numbers)
{
    char const* separator = "";
    for (double const number : numbers) {
        std::array<char, 32> text;
        auto const end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
        stream << separator << std::string_view(text.data(), end);
        separator = " ";
    }
    stream << '\n';
}

/// Lines of numbers: how many sources and places, then each source's place, the values, each place.
void write(std::ostream& stream, Family const& family)
{
    write(stream, std::vector { double(family.sources.size()), double(family.places.size()) });
    std::for_each(
        family.sources.begin(), family.sources.end(), [&](auto const& place) { write(stream, place); });
    write(stream, family.values);
    std::for_each(
        family.places.begin(), family.places.end(), [&](auto const& place) { write(stream, place); });
}

std::vector<double> ours(Family const& family)
{
    std::vector<NormalizedLocation> locations;
    for (auto const& place : family.sources) {
        locations.push_back(normalizedLocation(place));
    }
    auto const model
        = std::get<VariationModel>(VariationModel::make(locations, family.sources.front().size()));
    std::vector<double> results;
    for (auto const& place : family.places) {
        double sum = 0;
        for (auto const& [source, factor] : model.factors(place)) {
            sum += factor * family.values[source];
        }
        results.push_back(sum);
    }
    return results;
}

constexpr int moduleIsMissing = 77;

} // namespace

TEST(VariationModel, agreesWithTheFontToolsOnRandomFamilies)
{
    std::mt19937 random(20);
    std::vector<Family> families;
    std::generate_n(std::back_inserter(families), 200, [&] { return randomFamily(random); });
    auto const input = std::filesystem::temp_directory_path() / ("families-" + std::to_string(getpid()));
    {
        std::ofstream stream(input);
        std::for_each(families.begin(), families.end(), [&](auto const& family) { write(stream, family); });
    }
    std::string const command
        = "/usr/bin/python3 " SOURCE_FOLDER "/Tests/Interpolation/reference_model.py " + input.string();
    std::FILE* const pipe = popen(command.c_str(), "r");
    ASSERT_NE(pipe, nullptr);
    std::string output;
    for (std::array<char, 4096> part; auto const size = std::fread(part.data(), 1, part.size(), pipe);) {
        output.append(part.data(), size);
    }
    int const status = pclose(pipe);
    std::filesystem::remove(input);
    if (WIFEXITED(status) && (WEXITSTATUS(status) == moduleIsMissing || WEXITSTATUS(status) == 127)) {
        GTEST_SKIP() << "python3-fonttools is not installed";
    }
    ASSERT_EQ(status, 0);

    std::istringstream lines(output);
    std::size_t compared = 0;
    for (auto const& family : families) {
        for (double const result : ours(family)) {
            std::string line;
            ASSERT_TRUE(std::getline(lines, line));
            double wanted = 0;
            std::from_chars(line.data(), line.data() + line.size(), wanted);
            ASSERT_NEAR(result, wanted, 1e-6);
            ++compared;
        }
    }
    EXPECT_EQ(compared, 10'000u);
}
