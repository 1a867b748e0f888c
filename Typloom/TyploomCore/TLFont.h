#pragma once

#include "Typloom/TyploomCore/TLAxis.h"
#include "Typloom/TyploomCore/TLFontMaster.h"
#include "Typloom/TyploomCore/TLGlyph.h"

#include <filesystem>
#include <limits>

/// The index of what is not there.
inline constexpr std::size_t NSNotFound = std::numeric_limits<std::size_t>::max();

/// Gives a font its glyphs when they are first needed.
class TLGlyphSource {
public:
    virtual ~TLGlyphSource() = default;
    /// Every name, in the order in which the family shows its glyphs.
    virtual std::vector<std::string> glyphNames() const = 0;
    /// The glyph with all its layers and axes, null when there is none or nothing of it can be read.
    /// Sentences about what could not be read are added to `report`.
    virtual std::shared_ptr<TLGlyph> loadGlyph(
        std::shared_ptr<TLFont> const& font, std::string_view name, std::vector<std::string>& report)
        = 0;
    /// Whether a glyph that could not be read was kept from it by what may pass: its folder away, a disk at
    /// fault.
    virtual bool mayReadLater(std::string_view /*name*/) const { return false; }
    /// Why files have no place for another layer of a master's glyphs, a sentence; none when they have.
    virtual std::optional<std::string> reasonAgainstNewLayer(std::string_view /*masterId*/) const
    {
        return std::nullopt;
    }
    /// The glyph that a character shows; none when no glyph has it.
    virtual std::optional<std::string> glyphNameForCharacter(char32_t character) = 0;
    /// The glyphs that have a variable component in any of their layers. Can read every glyph's file.
    virtual std::vector<std::string> glyphNamesWithVariableComponents() { return {}; }
    /// The glyphs that have axes or sources of their own. Can read every glyph's file.
    virtual std::vector<std::string> glyphNamesWithOwnDesignSpace() { return {}; }
};

class TLDocumentHistory;
class TLVariationCache;

/// The font's own part of the document as it is at one moment.
struct TLFontState {
    std::vector<TLAxisState> axes;
    std::vector<TLMasterState> masters;
    bool operator==(TLFontState const&) const = default;
};

/// A family: axes, masters and glyphs.
class TYPLOOM_API TLFont final : public NSObject {
public:
    TLFont();
    ~TLFont() override;

    std::string const& familyName() const { return m_familyName; }
    void setFamilyName(std::string name) { m_familyName = std::move(name); }
    /// The designspace file; empty for a font that was never in one.
    std::filesystem::path const& path() const { return m_path; }
    void setPath(std::filesystem::path path) { m_path = std::move(path); }

    std::vector<std::shared_ptr<TLFontMaster>> const& fontMasters() const { return m_masters; }
    std::shared_ptr<TLFontMaster> fontMasterAtIndex(std::size_t index) const; ///< Null beyond the end.
    std::shared_ptr<TLFontMaster> fontMasterForId(std::string_view id) const;
    /// The master at the default of every axis; null when none stands there. The argument is not looked at.
    std::shared_ptr<TLFontMaster> defaultFontMaster(std::nullptr_t) const;
    std::size_t indexOfObjectInAllMasters(
        std::shared_ptr<TLFontMaster> const& master) const; ///< Or `NSNotFound`.
    void insertMaster(std::shared_ptr<TLFontMaster> const& master, std::size_t index);
    void removeMaster(std::size_t index);
    /// Where the masters stand on an axis: each value once, ascending. Holds until a master changes.
    std::vector<double> const& masterValuesOnAxis(TLAxis const& axis) const;

    /// Every axis in the file's order, hidden ones too.
    std::vector<std::shared_ptr<TLAxis>> const& canonicalAxes() const { return m_axes; }
    std::vector<std::shared_ptr<TLAxis>> const& axes() const { return m_axes; }
    std::shared_ptr<TLAxis> axisForId(std::string_view axisId) const;
    std::size_t indexOfAxis(TLAxisKey key) const; ///< Or `NSNotFound`.
    void insertAxis(std::shared_ptr<TLAxis> const& axis, std::size_t index);
    void removeAxis(std::size_t index);

    /// The glyph, read when it is first asked for; null when there is none.
    std::shared_ptr<TLGlyph> glyphForName(std::string_view name) const;
    /// The same, without reading: null when it has not been needed yet.
    std::shared_ptr<TLGlyph> loadedGlyphForName(std::string_view name) const;
    std::vector<std::string> glyphNames() const;
    std::optional<std::string> glyphNameForCharacter(char32_t character) const;
    std::shared_ptr<TLGlyphSource> const& glyphSource() const { return m_source; } ///< Can be null.
    void setGlyphSource(std::shared_ptr<TLGlyphSource> source);
    /// Glyphs that have been read or inserted, by name; null for those that cannot be read.
    std::map<std::string, std::shared_ptr<TLGlyph>, std::less<>> const& loadedGlyphs() const
    {
        return m_glyphs;
    }
    void insertGlyph(std::shared_ptr<TLGlyph> const& glyph);

    /// What of the family could not be read, a sentence each; grows while glyphs are read.
    std::vector<std::string> const& report() const { return m_report; }
    void addToReport(std::string sentence) const;

    /// Undo and redo, and whether anything is to be saved.
    TLDocumentHistory& history() const { return *m_history; }
    TLFontState state() const;
    /// Becomes what it was then. An axis that differs is another object of the same identifier; masters
    /// that stay keep their objects. Recorded nowhere.
    void restore(TLFontState const& state);

    /// Models of the glyphs' sets of places, shared between glyphs.
    TLVariationCache& variationCache() const { return *m_variationCache; }

private:
    void didChangeMasters();
    void didChangeAxes();
    std::function<void()> changeObserver();
    void observe(TLFontMaster& master);

    std::string m_familyName;
    std::filesystem::path m_path;
    std::vector<std::shared_ptr<TLFontMaster>> m_masters;
    std::vector<std::shared_ptr<TLAxis>> m_axes;
    TLStringMap<std::size_t> m_masterIndexes;
    mutable TLAxisSummaries<std::vector<double>> m_masterValues;
    std::unordered_map<TLAxisKey, std::size_t> m_axisIndexes;
    std::shared_ptr<TLGlyphSource> m_source;
    mutable std::map<std::string, std::shared_ptr<TLGlyph>, std::less<>> m_glyphs;
    std::vector<std::string> m_insertedNames; ///< Of glyphs that no source gave, in their order.
    mutable std::vector<std::string> m_report;
    std::unique_ptr<TLVariationCache> m_variationCache;
    std::unique_ptr<TLDocumentHistory> m_history;
};
