#pragma once

#include "Typloom/Formats/GlyphSave.h"
#include "Typloom/Formats/FamilyOpener.h"

/// What the files of a family have to become for its document as it is now. Nothing is written.
class FamilySavePlan {
public:
    /// `family`: the files, beside `designspace`; those of the document or a copy of them.
    /// `replacesLostFiles`: glyphs' files that other programs have broken or removed are written anew.
    FamilySavePlan(TLFont& font, std::filesystem::path const& designspace, FamilyGlyphSource& family,
        bool replacesLostFiles);

    /// Throws a `SaveProblem`.
    void run();

    FamilyDraft& files() { return m_files; }
    std::filesystem::path const& designspace() const { return m_files.designspacePath(); }
    /// The glyphs whose files the plan changes, with the origins of their layers afterwards.
    std::map<std::string, std::vector<LayerOrigin>> const& origins() const { return m_origins; }
    std::map<std::string, std::vector<RemovedLayer>> const& removed() const { return m_removed; }
    struct Follower {
        std::string glyph;
        std::string layerId;
        TLOutline outline;
    };
    /// Layers that share a file with one that was changed and will be drawn like it.
    std::vector<Follower> const& followers() const { return m_followers; }
    /// The UFOs of new masters.
    std::vector<std::string> const& madeUfos() const { return m_madeUfos; }
    /// Whether a layer is drawn otherwise than it was when it was saved last.
    bool changesOutline(std::string const& glyph, TLLayerState const& layer) const;
    /// What other programs will make of it, a sentence each.
    std::vector<std::string> const& notes() const { return m_notes; }
    /// With what the family is to be read again.
    KnownFamily known() const;

private:
    void saveAxes();
    void saveMasters();
    void addMaster(TLMasterState const& master, XmlElement behind);
    void removeMadeUfo(std::string const& ufo);
    void changeMaster(TLMasterState const& before, TLMasterState const& after);
    std::set<std::string> glyphsToSave() const;
    void saveGlyph(std::string const& name);
    void addNotes(TLGlyph const& glyph);
    void tellOfLostValues(TLGlyphState const& before, TLGlyphState const& after, std::string const& glyph);
    std::string layersOff(TLGlyph const& glyph, TLAxisState const& axis) const;
    bool isNeeded(TLCoordinates const& place) const;
    bool concernsOwnSources() const;

    TLFont& m_font;
    FamilyGlyphSource& m_family;
    bool m_replacesLostFiles;
    TLFontState m_before;
    TLFontState m_after;
    std::map<std::string, TLGlyphState> m_modified; ///< As they were saved.
    FamilyDraft m_files;
    SourceDraft m_sources;
    std::map<std::string, std::vector<LayerOrigin>> m_origins;
    std::map<std::string, std::vector<RemovedLayer>> m_removed;
    std::vector<Follower> m_followers;
    std::vector<std::string> m_madeUfos;
    std::vector<std::string> m_notes;
};
