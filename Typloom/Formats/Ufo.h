#pragma once

#include "Typloom/Formats/FamilyFiles.h"
#include "Typloom/Formats/Plist.h"
#include "Typloom/TyploomCore/TLFontMaster.h"

#include <filesystem>

struct UfoLayer {
    std::string name;
    std::string directory;
    TLStringMap<std::string> fileNames; ///< Of the glyphs, by glyph name.
};

/// A UFO of version 2 or 3, open for reading: its layers and what they contain, not the glyphs.
class Ufo {
public:
    /// `displayName` is the name that sentences give. A layer or an entry that can't be used is left
    /// out and gets a sentence in `report`.
    static Result<std::shared_ptr<Ufo>> open(std::filesystem::path folder, std::string displayName,
        std::vector<std::string>& report, std::shared_ptr<FamilyFiles> files = {});

    std::filesystem::path const& folder() const { return m_folder; }
    std::string const& displayName() const { return m_displayName; }
    int version() const { return m_version; } ///< 2 or 3.
    std::vector<UfoLayer> const& layers() const { return m_layers; }
    /// Index of the layer in the directory "glyphs", whatever its name; none when it is missing.
    std::optional<std::size_t> defaultLayer() const { return m_defaultLayer; }
    std::optional<std::size_t> layerNamed(std::string_view name) const;

    TLFontMaster::Metrics const& metrics() const { return m_metrics; }
    std::string const& familyName() const { return m_familyName; }

    /// The names in the library's "public.glyphOrder"; empty when there are none.
    std::vector<std::string> readGlyphOrder(std::vector<std::string>& report) const;

    /// The content of a glyph's file, and the name by which sentences call it.
    Result<std::string> readGlif(std::size_t layer, std::string_view glyphName) const;
    /// The same for a look at many files, of which nothing stays in the document.
    Result<std::string> scanGlif(std::size_t layer, std::string_view glyphName) const;
    std::string glifDisplayName(std::size_t layer, std::string_view glyphName) const;
    /// Where that file lies; the layer must have the glyph.
    std::filesystem::path glifPath(std::size_t layer, std::string_view glyphName) const;

private:
    Ufo(std::filesystem::path folder, std::string displayName, std::shared_ptr<FamilyFiles> files)
        : m_folder(std::move(folder))
        , m_displayName(std::move(displayName))
        , m_files(files ? std::move(files) : std::make_shared<FamilyFiles>())
    {
    }
    Result<PlistValue> readPlistFile(std::filesystem::path const& relativePath) const;
    std::optional<FormatError> readVersion(std::vector<std::string>& report);
    std::optional<FormatError> readLayers(std::vector<std::string>& report);
    void addLayer(std::string name, std::string directory, std::vector<std::string>& report);
    void readInfo(std::vector<std::string>& report);
    std::string nameOf(std::filesystem::path const& relativePath) const;

    std::filesystem::path m_folder;
    std::string m_displayName;
    std::shared_ptr<FamilyFiles> m_files;
    int m_version { 3 };
    std::vector<UfoLayer> m_layers;
    TLStringMap<std::size_t> m_layersByName;
    TLStringMap<std::size_t> m_layersByDirectory;
    std::optional<std::size_t> m_defaultLayer;
    TLFontMaster::Metrics m_metrics;
    std::string m_familyName;
};
