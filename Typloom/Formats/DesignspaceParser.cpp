#include "Typloom/Formats/DesignspaceParser.h"

#include "Typloom/Formats/NameLimit.h"
#include "Typloom/Formats/Numbers.h"
#include "Typloom/Formats/XmlDocument.h"

#include <algorithm>
#include <cmath>

namespace {

class DesignspaceParser {
public:
    DesignspaceParser(XmlDocument const& document, std::vector<std::string>& report)
        : m_document(document)
        , m_numbers(document)
        , m_report(report)
    {
    }

    Result<DesignspaceDocument> parse()
    {
        auto const root = m_document.root();
        if (std::string_view(root.name()) != "designspace") {
            return m_document.errorAt(
                root, "it is no designspace, its root element is " + inQuotes(root.name()));
        }
        m_result.file = m_document.file();
        for (auto const node : root.child("axes").children("axis")) {
            readAxis(node);
        }
        if (m_result.axes.empty()) {
            note(root, "the family has no axes");
        }
        if (root.child("axes").child("mappings").child("mapping")) {
            note(root.child("axes").child("mappings"),
                "mappings between axes are kept in the file but not followed here");
        }
        for (auto const node : root.child("sources").children("source")) {
            readSource(node);
        }
        if (m_numbers.error()) {
            return *m_numbers.error();
        }
        return std::move(m_result);
    }

private:
    void note(pugi::xml_node node, std::string const& clause)
    {
        m_report.push_back(
            m_document.file() + ", line " + std::to_string(m_document.lineOf(node)) + ": " + clause + ".");
    }

    // Axes

    void readAxis(pugi::xml_node node)
    {
        DesignspaceAxis axis;
        axis.name = node.attribute("name").value();
        axis.tag = node.attribute("tag").value();
        axis.hidden = *node.attribute("hidden").value() != 0;
        if (axis.name.empty() && axis.tag.empty()) {
            return note(node, "an axis has neither name nor tag and is left out");
        }
        if (axis.name.empty()) {
            axis.name = axis.tag;
            note(node, "an axis has no name and goes by its tag " + inQuotes(axis.tag));
        }
        if (std::max(axis.name.size(), axis.tag.size()) > longestAxisName) {
            return m_numbers.fail(node, "the name or tag " + inQuotes(axis.name) + " of an axis is too long");
        }
        if (std::any_of(m_result.axes.begin(), m_result.axes.end(),
                [&axis](auto const& earlier) { return earlier.name == axis.name; })) {
            return note(
                node, "the axis " + inQuotes(axis.name) + " is there more than once; only the first counts");
        }
        bool const isDiscrete = static_cast<bool>(node.attribute("values"));
        auto& map = m_maps[axis.name] = readMap(node, axis.name, isDiscrete);
        if (isDiscrete) {
            readDiscreteValues(node, axis, map);
        } else {
            readBounds(node, axis, map);
        }
        m_result.axes.push_back(std::move(axis));
    }

    /// An attribute of an axis in user coordinates; its error names the axis.
    double coordinate(pugi::xml_node node, char const* attribute, std::string const& axisName)
    {
        auto const number = parseNumber(node.attribute(attribute).value());
        if (!number) {
            std::string const text = node.attribute(attribute).value();
            m_numbers.fail(node,
                "the " + std::string(attribute) + " of axis " + inQuotes(axisName)
                    + (node.attribute(attribute) ? " is " + inQuotes(text) + ", which is no number"
                                                 : " is missing"));
            return 0;
        }
        if (std::abs(*number) > largestCoordinate) {
            note(node,
                "the " + std::string(attribute) + " of axis " + inQuotes(axisName) + " is beyond "
                    + describeNumber(largestCoordinate) + " and was brought there");
        }
        return std::clamp(*number, -largestCoordinate, largestCoordinate);
    }

    AxisMap readMap(pugi::xml_node axisNode, std::string const& axisName, bool isDiscrete)
    {
        std::vector<AxisMap::Entry> entries;
        for (auto const node : axisNode.children("map")) {
            entries.push_back({ coordinate(node, "input", axisName), coordinate(node, "output", axisName) });
        }
        bool hadRepeated = false;
        auto map = makeAxisMap(std::move(entries), isDiscrete, hadRepeated);
        if (hadRepeated) {
            note(axisNode,
                "the map of axis " + inQuotes(axisName) + " has two outputs for one input; the first counts");
        }
        if (!std::is_sorted(map.entries.begin(), map.entries.end(),
                [](auto const& left, auto const& right) { return left.design < right.design; })) {
            note(axisNode, "the map of axis " + inQuotes(axisName) + " does not rise");
        }
        return map;
    }

    void readBounds(pugi::xml_node node, DesignspaceAxis& axis, AxisMap const& map)
    {
        double const minimum = coordinate(node, "minimum", axis.name);
        double const maximum = coordinate(node, "maximum", axis.name);
        double const given = coordinate(node, "default", axis.name);
        if (minimum > maximum) {
            m_numbers.fail(node, "the minimum of axis " + inQuotes(axis.name) + " is above its maximum");
            return;
        }
        double const fallback = std::clamp(given, minimum, maximum);
        if (fallback != given) {
            note(node,
                "the default of axis " + inQuotes(axis.name) + " is outside its range and was brought to "
                    + describeNumber(fallback));
        }
        axis.fallback = map.designFromUser(fallback);
        // A falling map turns the axis round; the default stays between the ends in any case.
        double const ends[] { map.designFromUser(minimum), map.designFromUser(maximum), axis.fallback };
        axis.minimum = *std::min_element(std::begin(ends), std::end(ends));
        axis.maximum = *std::max_element(std::begin(ends), std::end(ends));
    }

    void readDiscreteValues(pugi::xml_node node, DesignspaceAxis& axis, AxisMap const& map)
    {
        std::string_view rest = node.attribute("values").value();
        while (true) {
            auto const start = rest.find_first_not_of(" \t\r\n");
            if (start == std::string_view::npos) {
                break;
            }
            rest.remove_prefix(start);
            auto const text = rest.substr(0, rest.find_first_of(" \t\r\n"));
            rest.remove_prefix(text.size());
            auto const number = parseNumber(text);
            if (!number || std::abs(*number) > largestCoordinate) {
                m_numbers.fail(
                    node, "the values of axis " + inQuotes(axis.name) + " contain " + inQuotes(text));
                return;
            }
            axis.discreteValues.push_back(map.designFromUser(*number));
        }
        axis.fallback = map.designFromUser(coordinate(node, "default", axis.name));
        auto& values = axis.discreteValues;
        if (std::find(values.begin(), values.end(), axis.fallback) == values.end()) {
            note(node, "the default of axis " + inQuotes(axis.name) + " is none of its values and was added");
            values.push_back(axis.fallback);
        }
        std::sort(values.begin(), values.end());
        values.erase(std::unique(values.begin(), values.end()), values.end());
        axis.minimum = values.front();
        axis.maximum = values.back();
    }

    // Sources

    void readSource(pugi::xml_node node)
    {
        DesignspaceSource source;
        source.element = m_countOfSourceElements++;
        source.filename = node.attribute("filename").value();
        source.name = node.attribute("name").value();
        source.familyName = node.attribute("familyname").value();
        source.styleName = node.attribute("stylename").value();
        source.line = m_document.lineOf(node);
        if (*node.attribute("layer").value() != 0) {
            source.layer = node.attribute("layer").value();
        }
        auto const shown = inQuotes(source.name.empty() ? source.filename : source.name);
        if (source.filename.empty()) {
            return note(node, "the source " + shown + " names no file and is left out");
        }
        for (auto const& axis : m_result.axes) {
            source.location.emplace(axis.name, axis.fallback);
        }
        for (auto const dimension : node.child("location").children("dimension")) {
            if (!readDimension(dimension, shown, source)) {
                return;
            }
        }
        m_result.sources.push_back(std::move(source));
    }

    /// False when the source has no place on the axis and has to be left out.
    bool readDimension(pugi::xml_node node, std::string const& shownSource, DesignspaceSource& source)
    {
        auto const entry = source.location.find(std::string_view(node.attribute("name").value()));
        auto const shownAxis = inQuotes(node.attribute("name").value());
        if (entry == source.location.end()) {
            note(node, "the source " + shownSource + " stands on an axis " + shownAxis + ", which is none");
            return true;
        }
        bool const isUser = !node.attribute("xvalue") && node.attribute("uservalue");
        auto const attribute = node.attribute(isUser ? "uservalue" : "xvalue");
        if (!attribute) {
            note(node,
                "the source " + shownSource + " has no value on axis " + shownAxis + " and is left out");
            return false;
        }
        auto const number = parseNumber(attribute.value());
        if (!number || std::abs(*number) > largestCoordinate) {
            m_numbers.fail(node,
                "the source " + shownSource + " stands at " + inQuotes(attribute.value()) + " on axis "
                    + shownAxis + ", which is no " + (number ? "place" : "number"));
            return false;
        }
        if (isUser) {
            note(node, "the source " + shownSource + " stands at a user value, which only instances may");
        }
        double const value = isUser ? m_maps[entry->first].designFromUser(*number) : *number;
        // The default comes out of the axis map, whose arithmetic may miss what the file says by a hair.
        double const hair = 1e-9 * std::max(1.0, std::abs(entry->second));
        entry->second = std::abs(value - entry->second) <= hair ? entry->second : value;
        if (node.attribute("yvalue")) {
            note(node,
                "the source " + shownSource + " has a second value on axis " + shownAxis
                    + ", which is not read");
        }
        return true;
    }

    XmlDocument const& m_document;
    XmlNumberReader m_numbers;
    std::vector<std::string>& m_report;
    std::map<std::string, AxisMap, std::less<>> m_maps;
    DesignspaceDocument m_result;
    std::size_t m_countOfSourceElements { 0 };
};

} // namespace

Result<DesignspaceDocument> readDesignspace(
    std::filesystem::path const& path, FamilyFiles& files, std::vector<std::string>& report)
{
    auto const displayName = path.filename().string();
    auto text = files.read(path, path.string());
    if (!text) {
        return text.error();
    }
    auto const document = XmlDocument::parse(std::move(*text), displayName);
    if (!document) {
        auto error = document.error();
        error.file = path.string();
        return error;
    }
    auto result = DesignspaceParser(*document, report).parse();
    if (!result) {
        auto error = result.error();
        error.file = path.string();
        return error;
    }
    return result;
}
