#pragma once

#include "Typloom/Formats/FamilyGlyphSource.h"
#include "Typloom/Formats/FileNames.h"
#include "Typloom/Formats/XmlEdit.h"

#include <deque>

/// What stops a save: a sentence for a person.
struct SaveProblem {
    std::string sentence;
};

/// The files of a family as a save will leave them, put together from edits of the files as they lie on
/// disk now. Nothing is written. Operations throw a `SaveProblem`, which never leaves the saver.
class FamilyDraft {
public:
    using Path = std::filesystem::path;
    FamilyDraft(Path designspace, Family const& family);

    /// Edits of a file, which is read when it is first asked for.
    XmlEdit& edit(Path const& path);
    XmlEdit& designspace() { return edit(m_designspace); }
    Path const& designspacePath() const { return m_designspace; }
    void create(Path const& path, std::string text);
    void remove(Path const& path);
    /// The text of a file as it is now in the draft.
    std::string textOf(Path const& path);

    /// A UFO of the family, by the name that the designspace gives it.
    bool hasUfo(std::string const& ufo) const { return m_ufos.contains(ufo); }
    int versionOf(std::string const& ufo) const { return m_ufos.at(ufo).version; }
    std::optional<std::string> layerNamed(std::string const& ufo, std::string_view layer) const;
    std::string const& defaultLayer(std::string const& ufo) const;
    std::vector<std::string> layerNames(std::string const& ufo) const;
    bool hasGlyph(std::string const& ufo, std::string_view layer, std::string_view glyph) const;
    bool isEmpty(std::string const& ufo, std::string_view layer) const;
    /// Whether the layer's folder holds more than glyphs and their list: a colour, a library.
    bool hasLayerInformation(std::string const& ufo, std::string_view layer);
    /// The glyph's file, which must be there.
    Path glifPath(std::string const& ufo, std::string_view layer, std::string_view glyph) const;

    /// A new UFO, of which the default layer is there, without glyphs.
    void addUfo(std::string const& ufo, Path const& folder);
    Path const& folderOf(std::string const& ufo) const { return m_ufos.at(ufo).folder; }
    /// Gives the layer's name: that which is wanted, or that with a number behind it.
    std::string addLayer(std::string const& ufo, std::string const& wanted);
    void removeLayer(std::string const& ufo, std::string const& layer);
    void addGlyph(
        std::string const& ufo, std::string const& layer, std::string const& glyph, std::string text);
    /// Has the layer's list name the glyph's file, which another program may have taken out of it.
    void list(std::string const& ufo, std::string const& layer, std::string const& glyph);
    void removeGlyph(std::string const& ufo, std::string const& layer, std::string const& glyph);

    /// The files that differ from those on disk.
    FamilyFiles::Pending finish();

private:
    struct UfoDraft {
        Path folder;
        int version { 3 };
        std::vector<UfoLayer> layers;
        std::map<std::string, UsedFileNames> fileNames {}; ///< By directory, with those on disk.
    };
    std::optional<std::size_t> findLayer(std::string const& ufo, std::string_view layer) const;
    UfoLayer const* layerOrNone(std::string const& ufo, std::string_view layer) const;
    UfoLayer& layer(std::string const& ufo, std::string_view layer);
    UsedFileNames& usedNames(UfoDraft& ufo, std::string const& directory);
    std::string nameOf(Path const& path) const;

    Path m_designspace;
    std::map<std::string, UfoDraft> m_ufos;
    std::map<Path, std::unique_ptr<XmlEdit>> m_edits;
    std::map<Path, std::string> m_onDisk; ///< Of the files that are edited.
    FamilyFiles::Pending m_others; ///< New and removed files.
};
