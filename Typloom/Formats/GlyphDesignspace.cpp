#include "Typloom/Formats/GlyphDesignspace.h"

#include "Typloom/Formats/Numbers.h"

#include <algorithm>
#include <cmath>

namespace {

class GlyphDesignspaceReader {
public:
    GlyphDesignspaceReader(std::string_view glyphName, std::vector<std::string>& report)
        : m_glyph("glyph " + inQuotes(glyphName))
        , m_report(report)
    {
    }

    GlyphDesignspace read(PlistValue const& entry)
    {
        for (auto const& axis : items(entry, "axes")) {
            readAxis(axis);
        }
        for (auto const& source : items(entry, "sources")) {
            readSource(source);
        }
        return std::move(m_result);
    }

private:
    static PlistValue::Array const& items(PlistValue const& entry, char const* key)
    {
        static PlistValue::Array const none;
        auto const* value = entry.find(key);
        return value && value->array() ? *value->array() : none;
    }

    void note(std::string const& what, std::string const& clause)
    {
        m_report.push_back("The " + what + " of " + m_glyph + " " + clause + ".");
    }

    static std::string text(PlistValue const& entry, char const* key)
    {
        auto const* value = entry.find(key);
        return value && value->string() ? *value->string() : std::string {};
    }

    static std::optional<double> coordinate(PlistValue const* value)
    {
        auto const number = value ? value->number() : std::nullopt;
        return number && std::abs(*number) <= largestCoordinate ? number : std::nullopt;
    }

    void readAxis(PlistValue const& entry)
    {
        auto const fullName = text(entry, "name");
        auto const minimum = coordinate(entry.find("minimum"));
        auto const given = coordinate(entry.find("default"));
        auto const maximum = coordinate(entry.find("maximum"));
        auto const what = "axis " + inQuotes(fullName);
        if (fullName.empty() || !minimum || !given || !maximum) {
            return note(what, "lacks a name or a number and is left out");
        }
        if (*minimum > *maximum) {
            return note(what, "begins behind its end and is left out");
        }
        double const fallback = std::clamp(*given, *minimum, *maximum);
        if (fallback != *given) {
            note(what, "has a default outside its range, which was brought to " + describeNumber(fallback));
        }
        auto const name = fullName.substr(0, std::max<std::size_t>(fullName.find('*'), 1));
        auto const known = std::find_if(m_result.axes.begin(), m_result.axes.end(),
            [&name](LocalAxis const& axis) { return axis.name == name; });
        if (known == m_result.axes.end()) {
            m_result.axes.push_back({ name, *minimum, fallback, *maximum, { fullName } });
        } else if (std::find(known->parts.begin(), known->parts.end(), fullName) != known->parts.end()) {
            note(what, "is there more than once; only the first counts");
        } else {
            known->parts.push_back(fullName);
        }
    }

    void readSource(PlistValue const& entry)
    {
        LocalSource source { text(entry, "name"), std::nullopt, {} };
        if (auto layerName = text(entry, "layername"); !layerName.empty()) {
            source.layerName = std::move(layerName);
        }
        auto const* location = entry.find("location");
        if (location && location->dictionary()) {
            for (auto const& [axisName, value] : *location->dictionary()) {
                auto const number = coordinate(&value);
                if (!number) {
                    return note("source " + inQuotes(source.name),
                        "has no number on axis " + inQuotes(axisName) + " and is left out");
                }
                source.location.emplace(axisName, *number);
            }
        }
        m_result.sources.push_back(std::move(source));
    }

    std::string m_glyph;
    std::vector<std::string>& m_report;
    GlyphDesignspace m_result;
};

} // namespace

GlyphDesignspace readGlyphDesignspace(
    PlistValue const& entry, std::string_view glyphName, std::vector<std::string>& report)
{
    return GlyphDesignspaceReader(glyphName, report).read(entry);
}
