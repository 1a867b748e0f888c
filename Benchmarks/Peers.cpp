#include "Benchmarks/Peers.h"

#include "Benchmarks/FamilyFiles.h"
#include "Benchmarks/Table.h"

#include "Typloom/Formats/DesignspaceReader.h"
#include "Typloom/Interpolation/VariationModel.h"

#include <charconv>
#include <cstdio>
#include <fstream>
#include <unistd.h>

namespace {

/// The time that the script tells, 0 when it failed.
double timeOfScript(std::string const& work, std::string const& argument)
{
    auto const command = "python3 '" BENCHMARKS_FOLDER "/peers.py' " + work + " '" + argument + "'";
    auto* const pipe = popen(command.c_str(), "r");
    char text[64] {};
    double time = 0;
    if (pipe && std::fgets(text, sizeof text, pipe)) {
        std::from_chars(text, text + sizeof text, time);
    }
    return pipe && pclose(pipe) == 0 ? time : 0;
}

/// Where the layers of the glyph "big" stand, normalised, by index of the axis.
std::vector<NormalizedLocation> locationsOf(FamilySize const& size, std::string const& file)
{
    std::vector<NormalizedLocation> locations;
    std::ofstream text(file);
    for (std::size_t source = 0; source < size.layers; ++source) {
        auto const place
            = source < size.masters ? masterPlace(size, source) : layerPlace(size, source - size.masters);
        NormalizedLocation location;
        for (std::size_t axis = 0; axis < size.axes + size.glyphAxes; ++axis) {
            auto const name = axis < size.axes ? axisName(axis) : glyphAxisName(axis - size.axes);
            if (auto const value = place.find(name); value != place.end() && value->second != 0) {
                location.push_back({ axis, value->second / axisEnd });
                text << name << '=' << value->second / axisEnd << '\t';
            }
        }
        text << '\n';
        locations.push_back(std::move(location));
    }
    return locations;
}

void compareModels(Table& table, FamilySize const& size)
{
    auto const file = "/tmp/typloom-peers-" + std::to_string(getpid());
    auto const locations = locationsOf(size, file);
    table.addComparison("building a model : fontTools", size.name,
        { [&] { VariationModel::make(locations, size.axes + size.glyphAxes); } },
        { .run = {}, .told = [&] { return timeOfScript("model", file); } }, 0.1);
    unlink(file.c_str());
}

void compareReading(Table& table, std::size_t glyphs)
{
    FamilyFiles const files(familySizes[0], glyphs);
    auto const folder = files.designspace().parent_path().string();
    table.addComparison("every glyph read : ufoLib2", std::to_string(files.countOfFiles()) + " files", { [&] {
        auto const font = TLOpenFamily(files.designspace());
        for (auto const& name : (*font)->glyphNames()) {
            (*font)->glyphForName(name);
        }
    } },
        { .run = {}, .told = [&] { return timeOfScript("read", folder); } }, 0.5);
}

} // namespace

void measurePeers(Table& table)
{
    table.heading("Beside Python's libraries for fonts, in turn");
    compareModels(table, familySizes[0]);
    compareModels(table, familySizes[1]);
    if (!effort().isShort) {
        compareModels(table, { "1,024 sources", 256, 1024, 1024, 0 });
    }
    compareReading(table, 200);
}
