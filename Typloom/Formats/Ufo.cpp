#include "Typloom/Formats/Ufo.h"

#include "Typloom/Formats/FileReading.h"
#include "Typloom/Formats/Numbers.h"

#include <algorithm>
#include <cmath>
#include <unordered_set>

namespace {

/// The layer directories that the format allows; every other name may lead out of the UFO.
bool isLayerDirectory(std::string_view name)
{
    return name == "glyphs"
        || (name.starts_with("glyphs.") && name.size() > 7 && name.find_first_of("/\\") == name.npos);
}

bool isFileName(std::string_view name)
{
    return !name.empty() && name != "." && name != ".." && name.find_first_of("/\\") == name.npos;
}

std::optional<FormatError> whyNoUfo(Ufo const& ufo)
{
    std::error_code problem;
    auto const status = std::filesystem::status(ufo.folder(), problem);
    if (!std::filesystem::exists(status)) {
        return FormatError { ufo.displayName(), 0, "there is no such UFO" };
    }
    if (!std::filesystem::is_directory(status)) {
        bool const isZip = ufo.folder().extension() == ".ufoz";
        return FormatError { ufo.displayName(), 0,
            isZip ? "packed UFOs can't be read, unpack it first" : "it is no UFO, which is a folder" };
    }
    return std::nullopt;
}

} // namespace

Result<std::shared_ptr<Ufo>> Ufo::open(std::filesystem::path folder, std::string displayName,
    std::vector<std::string>& report, std::shared_ptr<FamilyFiles> files)
{
    std::shared_ptr<Ufo> ufo(new Ufo(std::move(folder), std::move(displayName), std::move(files)));
    if (!ufo->m_files->exists(ufo->m_folder / "metainfo.plist")) {
        if (auto const error = whyNoUfo(*ufo)) {
            return *error;
        }
    }
    if (auto const error = ufo->readVersion(report)) {
        return *error;
    }
    if (auto const error = ufo->readLayers(report)) {
        return *error;
    }
    ufo->readInfo(report);
    return ufo;
}

std::string Ufo::nameOf(std::filesystem::path const& relativePath) const
{
    return m_displayName + "/" + relativePath.string();
}

Result<PlistValue> Ufo::readPlistFile(std::filesystem::path const& relativePath) const
{
    auto text = m_files->readInside(m_folder, relativePath, nameOf(relativePath));
    if (!text) {
        return text.error();
    }
    auto const document = XmlDocument::parse(std::move(*text), nameOf(relativePath));
    return document ? readPlist(*document) : document.error();
}

std::optional<FormatError> Ufo::readVersion(std::vector<std::string>& report)
{
    auto const information = readPlistFile("metainfo.plist");
    if (!information) {
        return information.error();
    }
    auto const* version = information->find("formatVersion");
    double const number = version ? version->number().value_or(0) : 0;
    if (number < 2) {
        return FormatError { nameOf("metainfo.plist"), 0, "only UFO 2 and 3 can be read" };
    }
    m_version = number < 3 ? 2 : 3;
    if (number > 3) {
        report.push_back(m_displayName + " is of a version later than UFO 3; what is new in it is not read.");
    }
    return std::nullopt;
}

std::optional<FormatError> Ufo::readLayers(std::vector<std::string>& report)
{
    if (m_version == 2) {
        addLayer("public.default", "glyphs", report);
        return std::nullopt;
    }
    auto const contents = readPlistFile("layercontents.plist");
    if (!contents) {
        return contents.error();
    }
    auto const* list = contents->array();
    if (!list) {
        return FormatError { nameOf("layercontents.plist"), 0, "it is no list of layers" };
    }
    for (auto const& entry : *list) {
        auto const* pair = entry.array();
        auto const* name = pair && pair->size() == 2 ? pair->front().string() : nullptr;
        auto const* directory = name ? pair->back().string() : nullptr;
        if (!directory || name->empty()) {
            report.push_back(
                nameOf("layercontents.plist") + ": an entry is no pair of names and is left out.");
        } else {
            addLayer(*name, *directory, report);
        }
    }
    return std::nullopt;
}

void Ufo::addLayer(std::string name, std::string directory, std::vector<std::string>& report)
{
    auto const leaveOut = [&](std::string const& why) {
        report.push_back(
            "The layer " + inQuotes(name) + " of " + m_displayName + " is left out: " + why + ".");
    };
    if (!isLayerDirectory(directory)) {
        return leaveOut("its folder " + inQuotes(directory) + " has a name that is not allowed");
    }
    if (m_layersByName.contains(name) || m_layersByDirectory.contains(directory)) {
        return leaveOut("its name or its folder is there twice");
    }
    std::error_code problem;
    auto const status = std::filesystem::symlink_status(m_folder / directory, problem);
    if (std::filesystem::is_symlink(status) && !liesInside(m_folder / directory, m_folder)) {
        return leaveOut("its folder is a link that leads out of the UFO");
    }
    auto const contents = readPlistFile(std::filesystem::path(directory) / "contents.plist");
    if (!contents) {
        return leaveOut(contents.error().sentence().substr(0, contents.error().sentence().size() - 1));
    }
    if (!contents->dictionary()) {
        return leaveOut("its contents.plist is no dictionary");
    }
    UfoLayer layer { std::move(name), std::move(directory), {} };
    layer.fileNames.reserve(contents->dictionary()->size());
    std::unordered_set<std::string_view> used;
    for (auto const& [glyphName, value] : *contents->dictionary()) {
        auto const* fileName = value.string();
        if (!fileName || !isFileName(*fileName) || !used.insert(*fileName).second) {
            report.push_back("The glyph " + inQuotes(glyphName) + " in " + nameOf(layer.directory)
                + " is left out: its file "
                + (!fileName                    ? "has no name"
                        : isFileName(*fileName) ? inQuotes(*fileName) + " is another glyph's"
                                                : inQuotes(*fileName) + " has a name that is not allowed")
                + ".");
            continue;
        }
        layer.fileNames.emplace(glyphName, *fileName);
    }
    if (layer.directory == "glyphs") {
        m_defaultLayer = m_layers.size();
    }
    m_layersByName.emplace(layer.name, m_layers.size());
    m_layersByDirectory.emplace(layer.directory, m_layers.size());
    m_layers.push_back(std::move(layer));
}

void Ufo::readInfo(std::vector<std::string>& report)
{
    if (!m_files->exists(m_folder / "fontinfo.plist")) {
        return;
    }
    auto const information = readPlistFile("fontinfo.plist");
    if (!information) {
        report.push_back(information.error().sentence());
        return;
    }
    auto const read = [&](char const* key, double& value, double lowest) {
        auto const* entry = information->find(key);
        if (!entry) {
            return;
        }
        auto const number = entry->number();
        if (number && *number >= lowest && std::abs(*number) <= largestCoordinate) {
            value = *number;
            return;
        }
        report.push_back(nameOf("fontinfo.plist") + ": " + key + " is no usable number; "
            + describeNumber(value) + " is used.");
    };
    read("unitsPerEm", m_metrics.unitsPerEm, 1);
    // Without values of its own a font's lines are laid out in proportion to its em.
    double const scale = m_metrics.unitsPerEm / 1000;
    m_metrics = { m_metrics.unitsPerEm, 750 * scale, -250 * scale, 500 * scale, 700 * scale };
    read("ascender", m_metrics.ascender, -largestCoordinate);
    read("descender", m_metrics.descender, -largestCoordinate);
    read("xHeight", m_metrics.xHeight, -largestCoordinate);
    read("capHeight", m_metrics.capHeight, -largestCoordinate);
    if (auto const* family = information->find("familyName"); family && family->string()) {
        m_familyName = *family->string();
    }
}

std::optional<std::size_t> Ufo::layerNamed(std::string_view name) const
{
    auto const found = m_layersByName.find(name);
    return found == m_layersByName.end() ? std::nullopt : std::optional(found->second);
}

std::vector<std::string> Ufo::readGlyphOrder(std::vector<std::string>& report) const
{
    if (!m_files->exists(m_folder / "lib.plist")) {
        return {};
    }
    auto const library = readPlistFile("lib.plist");
    if (!library) {
        report.push_back(library.error().sentence());
        return {};
    }
    std::vector<std::string> names;
    auto const* order = library->find("public.glyphOrder");
    for (auto const& entry : order && order->array() ? *order->array() : PlistValue::Array {}) {
        if (auto const* name = entry.string()) {
            names.push_back(*name);
        }
    }
    return names;
}

std::string Ufo::glifDisplayName(std::size_t layer, std::string_view glyphName) const
{
    auto const file = m_layers[layer].fileNames.find(glyphName);
    return nameOf(std::filesystem::path(m_layers[layer].directory)
        / (file == m_layers[layer].fileNames.end() ? std::string(glyphName) : file->second));
}

Result<std::string> Ufo::readGlif(std::size_t layer, std::string_view glyphName) const
{
    auto const displayName = glifDisplayName(layer, glyphName);
    auto const file = m_layers[layer].fileNames.find(glyphName);
    if (file == m_layers[layer].fileNames.end()) {
        return FormatError { displayName, 0, "the layer has no such glyph" };
    }
    return m_files->readInside(
        m_folder, std::filesystem::path(m_layers[layer].directory) / file->second, displayName);
}

Result<std::string> Ufo::scanGlif(std::size_t layer, std::string_view glyphName) const
{
    auto const file = m_layers[layer].fileNames.find(glyphName);
    if (file == m_layers[layer].fileNames.end()) {
        return FormatError { glifDisplayName(layer, glyphName), 0, "the layer has no such glyph" };
    }
    return readFileInside(m_folder, std::filesystem::path(m_layers[layer].directory) / file->second,
        glifDisplayName(layer, glyphName));
}

std::filesystem::path Ufo::glifPath(std::size_t layer, std::string_view glyphName) const
{
    return m_folder / m_layers[layer].directory / m_layers[layer].fileNames.find(glyphName)->second;
}
