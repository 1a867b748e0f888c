#pragma once

#include "Typloom/Formats/GlyphDesignspace.h"
#include "Typloom/TyploomCore/TLFont.h"

#include <set>

/// A glyph and the font's axes, as the files have them or as they are to be.
struct GlyphInFont {
    TLGlyphState const& glyph;
    TLFontState const& font;
};

/// Brings what a glyph's library says of its own axes and sources from one state to another. What it does not
/// understand stays; values that do not differ between the states stay as the file has them.
class GlyphDesignspaceEdit {
public:
    /// The library's entries under `glyphDesignspaceKey` and `glyphAxesKey`; nothing where there is none.
    GlyphDesignspaceEdit(std::string glyphName, PlistValue entry, PlistValue identities, GlyphInFont before,
        GlyphInFont after);

    /// The source that stands for a layer of the earlier state; none when the file has no such source.
    /// `ufoLayer` is absent for the default layer. Each source is found once.
    std::optional<std::size_t> takeSource(
        TLLayerState const& layer, std::string const& ufoLayer, bool isDefaultLayer);
    void moveSource(std::size_t source, TLLayerState const& from, TLLayerState const& to);
    void setLayerName(std::size_t source, std::string const& ufoLayer);
    std::size_t addSource(TLLayerState const& layer, std::string const& name, std::string const& ufoLayer);
    void removeSource(std::size_t source);

    /// Without value (`std::monostate`) where nothing is left.
    PlistValue entry();
    PlistValue identities() const;

private:
    /// One entry of an axis in the file: "rotate*1" is axis "rotate" and suffix "*1".
    struct Part {
        std::string axisId;
        std::string suffix;
        auto operator<=>(Part const&) const = default;
    };
    struct Source {
        PlistValue::Dictionary entries;
        std::map<Part, double> own;
        std::map<std::string, double> font; ///< By axis identifier.
        bool isTaken { false };
        bool isRemoved { false };
    };
    void readAxes();
    Source readSource(PlistValue::Dictionary const& entries) const;
    void readPlaces(Source& source, std::string_view key) const;
    void setCoordinates(Source& source, TLLayerState const* from, TLLayerState const& to) const;
    std::vector<Part> partsOf(std::string const& key) const;
    double coordinateOf(TLLayerState const& layer, Part const& part, TLAxisState const& axis) const;
    bool standsAt(Source const& source, TLLayerState const& layer) const;
    PlistValue written(Source const& source) const;
    PlistValue axesEntry() const;
    PlistValue newAxis(TLAxisState const& axis, std::string const& suffix) const;
    void changeAxis(PlistValue& item, Part const& part) const;
    std::set<std::string> ownNames() const;

    std::string m_glyphName;
    PlistValue m_entry;
    PlistValue m_identities;
    GlyphInFont m_before;
    GlyphInFont m_after;
    std::map<std::string, Part, std::less<>> m_parts; ///< Of the file, by the name there.
    std::vector<Part> m_newParts; ///< Of axes that the file has not.
    std::vector<Source> m_sources;
};
