#pragma once

#include "Typloom/Formats/AxisMap.h"
#include "Typloom/Formats/FamilyFiles.h"
#include "Typloom/Formats/Result.h"

#include <filesystem>
#include <map>
#include <optional>

struct DesignspaceAxis {
    std::string name; ///< The key of every location.
    std::string tag; ///< Empty when the file gives none.
    double minimum { 0 }; ///< Design coordinates, as are the following.
    double fallback { 0 };
    double maximum { 0 };
    std::vector<double> discreteValues; ///< Ascending; empty on a continuous axis.
    bool hidden { false };
};

struct DesignspaceSource {
    std::string filename; ///< As the file gives it, relative to the designspace.
    std::string name; ///< Empty when the file gives none, as are the following two.
    std::string familyName;
    std::string styleName;
    std::optional<std::string> layer; ///< Of a sparse source.
    /// Design coordinates by axis name, of every axis: the default where the file gives none.
    std::map<std::string, double, std::less<>> location;
    std::size_t line { 0 };
    std::size_t element { 0 }; ///< Which of the `<source>` elements it is, from 0.
};

struct DesignspaceDocument {
    std::string file; ///< Its name, for sentences.
    std::vector<DesignspaceAxis> axes;
    std::vector<DesignspaceSource> sources;
};

/// Reads formats 3 to 5.2. What can be left out is left out and gets a sentence in `report`; an
/// axis that can't be placed, or a source at no number, is an error.
Result<DesignspaceDocument> readDesignspace(
    std::filesystem::path const& path, FamilyFiles& files, std::vector<std::string>& report);
