#pragma once

#include "Typloom/Formats/DesignspaceEdit.h"
#include "Typloom/Formats/FamilyDraft.h"

/// A source of the family as a save will leave it.
struct PlannedSource {
    TLLayerKind kind { TLLayerKind::master };
    std::string id; ///< A master's; of others that with which the family was read, empty of new ones.
    std::string ufo;
    std::string ufoLayer;
    TLCoordinates coordinates; ///< On every axis of the font.
    XmlElement element;
};

/// Where a master stands, in design coordinates.
TLCoordinates coordinatesOf(TLMasterState const& master);

/// The sources of a family as a save will leave them, and the layers of UFOs that they bring.
class SourceDraft {
public:
    SourceDraft(FamilyDraft& draft, Family const& family, TLFontState const& after);

    FamilyDraft& files() { return m_draft; }
    DesignspaceEdit& designspace() { return m_designspace; }
    std::vector<PlannedSource> const& sources() const { return m_sources; }
    PlannedSource const* defaultSource() const; ///< Null when no source stands at the default.
    PlannedSource const* master(std::string_view id) const; ///< Null when there is none.
    /// Those at a place of the font, masters first; coordinates that are not given are at the default.
    std::vector<PlannedSource const*> standingAt(TLCoordinates const& coordinates) const;
    bool isOfSource(std::string const& ufo, std::string_view ufoLayer) const;
    /// The UFO for a new layer there: that of the layer's master, else of the default.
    std::string ufoFor(std::optional<std::string> const& masterId) const;
    /// The layer's own name, or one made of its place.
    std::string nameFor(TLLayerState const& layer, std::vector<TLAxisState> const& ownAxes) const;
    /// One made of a place on the font's axes alone.
    std::string nameFor(TLCoordinates const& coordinates) const;

    /// A new layer without glyphs, and the source that brings it.
    PlannedSource addSparse(
        TLCoordinates const& coordinates, std::string const& ufo, std::string const& name);
    /// The master nearest to a place; each axis is measured by its own length.
    PlannedSource const* nearestMaster(TLCoordinates const& coordinates) const;
    void moveMaster(std::string_view id, TLCoordinates const& coordinates);
    /// Its UFO stays on disk, where nothing names it any more.
    void removeMaster(std::string_view id);
    void add(PlannedSource source) { m_sources.push_back(std::move(source)); }
    /// What a save has moved away from: sources there are removed in the end when nothing needs them.
    void leave(TLCoordinates const& coordinates) { m_left.push_back(fontPlace(coordinates)); }
    void leaveLayer(std::string const& ufo, std::string const& ufoLayer);
    /// Takes away layers that have become empty, and sources that brought them. `isNeeded` tells whether a
    /// source of some glyph's own stands at a place.
    void removeUnused(std::function<bool(TLCoordinates const&)> const& isNeeded);

    /// The part of a place on the font's axes, complete.
    TLCoordinates fontPlace(TLCoordinates const& coordinates) const;
    std::string uniqueName(std::string const& wanted) const;
    std::vector<std::pair<std::string, double>> location(TLCoordinates const& coordinates) const;

private:
    FamilyDraft& m_draft;
    TLFontState const& m_after;
    DesignspaceEdit m_designspace;
    std::vector<PlannedSource> m_sources;
    std::optional<std::string> m_defaultId;
    std::vector<TLCoordinates> m_left;
    std::set<std::pair<std::string, std::string>> m_leftLayers;
};
