#pragma once

#include "Typloom/Formats/FamilyGlyphSource.h"
#include "Typloom/Formats/GlifReader.h"
#include "Typloom/Formats/GlyphDesignspace.h"
#include "Typloom/Formats/UniqueNames.h"

/// Puts one glyph together from all the layers of a family that have it.
class GlyphLoader {
public:
    GlyphLoader(Family const& family, std::shared_ptr<TLFont> font, std::string_view name,
        std::vector<std::string>& report);
    /// Null when the family has no such glyph, or nothing of it can be read.
    std::shared_ptr<TLGlyph> load();
    /// Of the layers that the glyph got.
    std::vector<LayerOrigin> const& origins() const { return m_origins; }

private:
    using LayerKey = std::pair<Ufo const*, std::size_t>;

    /// An axis of the glyph together with its entries in the file.
    struct OwnAxis {
        std::shared_ptr<TLAxis> axis;
        LocalAxis local;
    };

    Result<Glif> const& glif(Ufo const& ufo, std::size_t layer);
    bool hasGlyph(Ufo const& ufo, std::size_t layer) const;
    void addLayer(TLLayer::Data data, Ufo const& ufo, std::size_t layer, bool isOfLocalSource = false);
    void addFamilySources();
    void readUnicodes();
    void addGlyphDesignspace();
    std::string axisIdFor(LocalAxis const& local) const;
    void addAxis(LocalAxis const& local);
    void addLocalSource(LocalSource const& local, std::size_t index);
    bool isAtDefaults(TLCoordinates const& own) const;
    TLCoordinates ownCoordinates(LocalSource const& local) const;
    TLCoordinates fontCoordinates(LocalSource const& local);
    FamilySource const* sourceAt(TLCoordinates const& fontCoordinates, LocalSource const& local) const;
    void addOtherLayers();
    std::string what(LocalSource const& local) const;

    Family const& m_family;
    std::shared_ptr<TLFont> m_font;
    std::string m_name;
    std::vector<std::string>& m_report;
    std::shared_ptr<TLGlyph> m_glyph;
    std::vector<OwnAxis> m_ownAxes;
    std::map<LayerKey, Result<Glif>> m_glifs; ///< Those that were read; layers can stand at several places.
    std::vector<TLAxisState> m_savedAxes; ///< Of the font, as its files know them.
    UniqueNames m_layerIds;
    std::vector<LayerOrigin> m_origins;
};
