#pragma once

#include "Typloom/Formats/GlifReader.h"
#include "Typloom/Formats/GlyphDesignspaceEdit.h"
#include "Typloom/Formats/SourceDraft.h"

/// Brings the files of one glyph from the state in which they are to that of the document.
///
/// A layer that names an axis of the glyph's own gets a source of the glyph's own, in a layer of a UFO that
/// has a source at the layer's place on the font's axes; where none stands there, one without glyphs is
/// added. A layer on the font's axes alone gets a sparse source, a new one where the place is free; where the
/// glyph stands there already it becomes a source of the glyph's own too, since two sources of a family
/// may not share a place. A layer that moves takes its file along. Layers that came from one file
/// and differ now get files of their own, but for sources of the family, which can't be parted.
class GlyphSave {
public:
    struct States {
        GlyphInFont before;
        GlyphInFont after;
    };
    /// `replacesLostFiles`: those that were read, and were broken or removed since, are written anew.
    GlyphSave(std::string glyphName, std::vector<char32_t> const& unicodes, States states,
        SourceDraft& sources, FamilyGlyphSource const& family, bool replacesLostFiles);

    /// Throws a `SaveProblem`.
    void run();
    /// Where the layers lie afterwards.
    std::vector<LayerOrigin> origins() const;
    /// The layers that are taken out of the files.
    std::vector<RemovedLayer> const& removed() const { return m_removed; }
    /// What other programs will make of it, a sentence each.
    std::vector<std::string> const& notes() const { return m_notes; }
    /// Layers that will be drawn as another one, with which they share a file.
    std::vector<std::pair<std::string, TLOutline>> const& followers() const { return m_followers; }

private:
    struct Work {
        TLLayerState const* before { nullptr };
        TLLayerState const* after { nullptr };
        std::optional<LayerOrigin> origin;
        std::optional<std::size_t> ownSource; ///< Of the glyph's own, in the file.
        std::string text; ///< That it takes along; empty when it stays or is new.
        LayerOrigin target;
        bool isPlaced { false };
        bool changesOutline() const { return !before || before->outline != after->outline; }
    };
    using File = std::pair<std::string, std::string>; ///< UFO and layer.
    static File fileOf(LayerOrigin const& origin) { return { origin.ufo, origin.ufoLayer }; }

    void checkNames() const;
    void replaceLostFiles();
    PlannedSource const* axisHolder() const;
    void openDesignspace();
    bool hasOwnDesignspace() const;
    GlyphDesignspaceEdit& designspace();
    void collect();
    void decide(Work& work);
    void decideOwnSource(Work& work);
    void takeAway();
    void place(Work& work);
    void placeOwnSource(Work& work, LayerOrigin const* former);
    bool placeSparse(Work& work, LayerOrigin const* former);
    bool isUsed(std::string const& ufo, std::string const& ufoLayer) const;
    std::string freeLayer(std::string const& ufo, std::string const& wanted);
    void place(Work& work, std::string ufo, std::string ufoLayer, bool isOfOwnSource);
    bool isWhole(std::filesystem::path const& path);
    Glif readDraft(std::filesystem::path const& path);
    void tellOfSharedPlaces();
    void writeFiles();
    void writeFile(File const& file, std::vector<Work*> const& users);
    TLOutline settle(std::vector<Work*> const& users);
    void part(Work& work);
    std::string textFor(Work const& work);
    void writeDesignspace();
    bool namesOwnAxis(TLLayerState const& layer) const;
    bool movesInFont(Work const& work) const;
    std::string whatLayer(TLLayerState const& layer) const;

    std::string m_name;
    std::vector<char32_t> const& m_unicodes;
    States m_states;
    SourceDraft& m_sources;
    FamilyDraft& m_files;
    FamilyGlyphSource const& m_family;
    bool m_replacesLostFiles;
    std::optional<File> m_holder; ///< The file that tells the glyph's own axes.
    std::optional<GlyphDesignspaceEdit> m_designspace;
    std::vector<Work> m_work;
    std::vector<RemovedLayer> m_removed;
    std::vector<std::string> m_notes;
    std::vector<std::pair<std::string, TLOutline>> m_followers;
};
