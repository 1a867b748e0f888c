#include "Typloom/Formats/SourceNames.h"

#include "Typloom/Formats/Numbers.h"

#include <filesystem>

std::string sourceIdentifier(DesignspaceSource const& source)
{
    if (!source.name.empty()) {
        return source.name;
    }
    auto identifier = source.filename + (source.layer ? "/" + *source.layer : "");
    for (auto const& [axisName, value] : source.location) {
        identifier += " " + axisName + "=" + describeNumber(value);
    }
    return identifier;
}

std::string sourceTitle(DesignspaceSource const& source, TLLayerKind kind, bool isDefaultLayer)
{
    if (kind == TLLayerKind::brace) {
        // The default layer has the same name in every UFO.
        bool const byStyle = isDefaultLayer && !source.styleName.empty();
        return !source.name.empty() ? source.name : byStyle ? source.styleName : *source.layer;
    }
    if (!source.styleName.empty()) {
        return source.styleName;
    }
    return source.name.empty() ? std::filesystem::path(source.filename).stem().string() : source.name;
}

std::string shownSource(DesignspaceSource const& source)
{
    return inQuotes(source.name.empty() ? source.filename : source.name);
}
