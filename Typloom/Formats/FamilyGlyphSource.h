#pragma once

#include "Typloom/Formats/Ufo.h"
#include "Typloom/TyploomCore/TLFont.h"

#include <set>

/// One source of the family: a layer of a UFO, and where it stands.
struct FamilySource {
    TLLayerKind kind { TLLayerKind::master };
    std::string id; ///< Of the master, or of the intermediate layer in every glyph.
    std::string name;
    std::string masterId; ///< Of the associated master; a master's own.
    std::shared_ptr<Ufo const> ufo;
    std::size_t layer { 0 };
    TLCoordinates coordinates; ///< Design coordinates on every axis of the font, by identifier.
    std::optional<std::string> layerAttribute {}; ///< What the designspace names.
    std::size_t element { 0 }; ///< Which of its `<source>` elements it is, from 0.
};

struct Family {
    std::vector<FamilySource> sources; ///< Masters in font order, then intermediate layers in file order.
    std::optional<std::size_t> defaultSource;

    /// The file of a glyph in a layer of a UFO of the family's; none when it is in no list.
    std::optional<std::filesystem::path> glifPath(
        std::string_view ufo, std::string_view ufoLayer, std::string_view glyphName) const;
    /// The source in whose default layer a glyph's file tells the glyph's own axes: the default source. For a
    /// glyph that is not there, which other programs do not look at, the first master that has it; null when
    /// none has.
    FamilySource const* axisHolder(std::string_view glyphName) const;
    /// The sources of whose UFO no list or information is among the files, so that it need not be read again.
    std::vector<FamilySource const*> sourcesBeside(std::set<std::filesystem::path> const& files) const;
};

/// Where a layer of a glyph comes from: the glyph's file in a layer of a UFO. Several layers of a glyph may
/// come from one file.
struct LayerOrigin {
    std::string layerId;
    std::string ufo; ///< As the designspace names it.
    std::string ufoLayer;
    /// Whether it stands where a source of the glyph's own says; else a source of the family says it,
    /// and for a layer of no source nothing.
    bool isOfLocalSource { false };
    bool operator==(LayerOrigin const&) const = default;
};

/// A layer that a save took out of the files: undone, it comes back as it was.
struct RemovedLayer {
    LayerOrigin origin;
    std::string text;
};

/// Reads the glyphs of a family from its UFOs, each when it is first needed.
class FamilyGlyphSource final : public TLGlyphSource {
public:
    FamilyGlyphSource(Family family, std::shared_ptr<FamilyFiles> files);

    Family const& family() const { return m_family; }
    /// After the family's files have changed. Glyphs that were read keep their origins.
    void setFamily(Family family);
    std::shared_ptr<FamilyFiles> const& files() const { return m_files; }
    /// Of the glyph's layers; empty when it has not been read.
    std::vector<LayerOrigin> originsOf(std::string_view glyphName) const;
    void setOrigins(std::string const& glyphName, std::vector<LayerOrigin> origins);
    TLStringMap<std::vector<LayerOrigin>> const& origins() const { return m_origins; } ///< By glyph.
    /// Null when there is no such layer.
    RemovedLayer const* removedLayer(std::string const& glyphName, std::string const& layerId) const;
    void rememberRemoved(std::string const& glyphName, RemovedLayer layer);

    /// The UFOs that were made for new masters since the family was opened.
    std::set<std::string> const& madeUfos() const { return m_madeUfos; }
    void rememberMade(std::string const& ufo) { m_madeUfos.insert(ufo); }

    std::vector<std::string> glyphNames() const override;
    std::shared_ptr<TLGlyph> loadGlyph(std::shared_ptr<TLFont> const& font, std::string_view name,
        std::vector<std::string>& report) override;
    std::optional<std::string> glyphNameForCharacter(char32_t character) override;
    std::vector<std::string> glyphNamesWithVariableComponents() override;
    std::vector<std::string> glyphNamesWithOwnDesignSpace() override;
    bool mayReadLater(std::string_view name) const override;
    std::optional<std::string> reasonAgainstNewLayer(std::string_view masterId) const override;

private:
    std::optional<std::filesystem::path> passingFault(std::string_view glyphName) const;
    FamilySource const& reference() const;
    std::optional<std::vector<char32_t>> unicodesOf(std::string_view glyphName) const;
    void scanUnicodes();

    Family m_family;
    std::shared_ptr<FamilyFiles> m_files;
    TLStringMap<std::vector<LayerOrigin>> m_origins;
    std::map<std::pair<std::string, std::string>, RemovedLayer> m_removed; ///< By glyph and layer.
    std::set<std::string> m_madeUfos;
    /// The glyphs that could not be read for what may pass: a folder that is away, or a file at fault.
    TLStringMap<std::filesystem::path> m_passing;
    mutable std::optional<std::vector<std::string>> m_glyphNames;
    std::optional<std::unordered_map<char32_t, std::string>> m_namesByCharacter;
};
