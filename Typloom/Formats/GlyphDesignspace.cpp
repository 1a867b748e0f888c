#include "Typloom/Formats/GlyphDesignspace.h"

#include "Typloom/Formats/NameLimit.h"
#include "Typloom/Formats/Numbers.h"

#include <algorithm>
#include <cmath>

namespace {

class GlyphDesignspaceReader {
public:
    GlyphDesignspaceReader(
        PlistValue const* identities, std::string_view glyphName, std::vector<std::string>& report)
        : m_identities(identities)
        , m_glyph("glyph " + inQuotes(glyphName))
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
        if (fullName.size() > longestAxisName) {
            return note(what, "has too long a name and is left out");
        }
        if (*minimum > *maximum) {
            return note(what, "begins behind its end and is left out");
        }
        double const fallback = std::clamp(*given, *minimum, *maximum);
        if (fallback != *given) {
            note(what, "has a default outside its range, which was brought to " + describeNumber(fallback));
        }
        bool const isWhole = m_identities && m_identities->find(fullName);
        auto const name = isWhole ? fullName : baseAxisName(fullName);
        auto const known = std::find_if(m_result.axes.begin(), m_result.axes.end(),
            [&name](LocalAxis const& axis) { return axis.name == name; });
        if (known == m_result.axes.end()) {
            m_result.axes.push_back({ name, *minimum, fallback, *maximum, { fullName }, identifier(name) });
        } else if (std::find(known->parts.begin(), known->parts.end(), fullName) != known->parts.end()) {
            note(what, "is there more than once; only the first counts");
        } else {
            known->parts.push_back(fullName);
        }
    }

    std::optional<std::string> identifier(std::string const& axisName) const
    {
        auto const* identity = m_identities ? m_identities->find(axisName) : nullptr;
        auto axisId = identity ? text(*identity, "id") : std::string {};
        return axisId.empty() ? std::nullopt : std::optional(std::move(axisId));
    }

    void readSource(PlistValue const& entry)
    {
        LocalSource source { text(entry, "name"), std::nullopt, {} };
        if (auto layerName = text(entry, "layername"); !layerName.empty()) {
            source.layerName = std::move(layerName);
        }
        if (readLocation(source.name, entry.find("location"), source.location)
            && readLocation(source.name, entry.find(hiddenLocationKey), source.hiddenLocation)) {
            m_result.sources.push_back(std::move(source));
        }
    }

    bool readLocation(std::string const& sourceName, PlistValue const* entry,
        std::map<std::string, double, std::less<>>& location)
    {
        if (!entry || !entry->dictionary()) {
            return true;
        }
        for (auto const& [axisName, value] : *entry->dictionary()) {
            auto const number = coordinate(&value);
            if (!number) {
                note("source " + inQuotes(sourceName),
                    "has no number on axis " + inQuotes(axisName) + " and is left out");
                return false;
            }
            location.emplace(axisName, *number);
        }
        return true;
    }

    PlistValue const* m_identities;
    std::string m_glyph;
    std::vector<std::string>& m_report;
    GlyphDesignspace m_result;
};

} // namespace

GlyphDesignspace readGlyphDesignspace(PlistValue const& entry, PlistValue const* identities,
    std::string_view glyphName, std::vector<std::string>& report)
{
    return GlyphDesignspaceReader(identities, glyphName, report).read(entry);
}

std::string derivedAxisId(std::string_view glyphName, std::string_view axisName)
{
    return std::string(glyphName) + "/" + std::string(axisName);
}

std::string baseAxisName(std::string_view entryName)
{
    return std::string(entryName.substr(0, std::max<std::size_t>(entryName.find('*'), 1)));
}
