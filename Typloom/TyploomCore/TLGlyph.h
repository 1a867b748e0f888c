#pragma once

#include "Typloom/TyploomCore/TLAxis.h"
#include "Typloom/TyploomCore/TLLayer.h"
#include "Typloom/TyploomCore/TLPlaceSummary.h"
#include "Typloom/TyploomCore/TLStringHash.h"

class TLFontMaster;

/// Layers by identifier, in their order: masters in font order, then intermediate layers in file
/// order, then the others.
class TYPLOOM_API TLLayerDictionary {
public:
    using Entry = std::pair<std::string, std::shared_ptr<TLLayer>>;
    /// Null when there is none.
    std::shared_ptr<TLLayer> find(std::string_view layerId) const;
    auto begin() const { return m_entries.begin(); }
    auto end() const { return m_entries.end(); }
    std::vector<Entry> const& entries() const { return m_entries; }
    std::size_t size() const { return m_entries.size(); }
    void append(std::shared_ptr<TLLayer> layer);
    /// A layer with that identifier is taken out first.
    void insert(std::shared_ptr<TLLayer> layer, std::size_t index);
    void remove(std::string_view layerId);
    /// Puts another object in the place of the layer with its identifier.
    void replace(std::shared_ptr<TLLayer> const& layer);

private:
    void reindexFrom(std::size_t index);

    std::vector<Entry> m_entries;
    TLStringMap<std::size_t> m_indexes;
};

struct TLClosedRange {
    double lower { 0 };
    double upper { 0 };
    bool operator==(TLClosedRange const&) const = default;
};

/// A glyph as it is at one moment. States share the layers that did not change between them.
struct TYPLOOM_API TLGlyphState {
    std::vector<TLAxisState> axes;
    std::vector<std::shared_ptr<TLLayerState const>> layers; ///< In the glyph's order.
    bool operator==(TLGlyphState const& other) const;
    TLLayerState const* layer(std::string_view layerId) const; ///< Null when there is none.
};

/// A glyph: its layers, and the axes that belong to it alone.
class TYPLOOM_API TLGlyph final : public NSObject {
public:
    explicit TLGlyph(std::string name);

    std::string const& name() const { return m_name; }
    std::vector<char32_t> const& unicodes() const { return m_unicodes; }
    void setUnicodes(std::vector<char32_t> unicodes) { m_unicodes = std::move(unicodes); }
    std::shared_ptr<TLFont> font() const { return m_font.lock(); }
    void setFont(std::weak_ptr<TLFont> font) { m_font = std::move(font); }

    /// The layer objects that the edit view works with; null when there is none of that identifier.
    std::shared_ptr<TLLayer> layerForId(std::string_view layerId) const;
    /// All layers. Under the identifier of a layer that lies under a preview stands another object
    /// of the same layer, one that reports where it really stands.
    TLLayerDictionary const& layers() const;
    /// Called by the edit view when a preview over that layer begins, moves (a location) or ends (none).
    void setPreviewLocation(std::string_view layerId, std::optional<TLLocation> location);
    /// Puts a layer behind those of its kind.
    void insertLayer(std::shared_ptr<TLLayer> const& layer);
    void removeLayer(std::string_view layerId);

    TLGlyphState state() const;
    /// Becomes what it was then. An axis that differs is another object of the same identifier; layers
    /// that stay keep their objects. Recorded nowhere.
    void restore(TLGlyphState const& state);
    /// Called before each change of the glyph, its axes and its layers.
    void willChange();

    std::vector<std::shared_ptr<TLAxis>> const& axes() const { return m_axes; }
    std::size_t countOfAxes() const { return m_axes.size(); }
    void insertObjectInAxesAtIndex(std::shared_ptr<TLAxis> const& axis, std::size_t index);
    /// Of an axis of several dimensions, their coordinates go too.
    void removeObjectFromAxesAtIndex(std::size_t index);
    /// Every axis that applies to the glyph: its own, then the font's canonical axes.
    std::vector<std::shared_ptr<TLAxis>> allAxes() const;
    /// The span of the default value and of all layers' true values, for every axis of the glyph's own.
    /// With a master identifier only layers associated with that master count.
    std::unordered_map<std::shared_ptr<TLAxis>, TLClosedRange> internalAxisRanges(
        std::optional<std::string> const& associatedMasterID) const;
    /// Where the layers stand on an axis by their own coordinates. Holds until a layer changes.
    TLAxisSpread const& spreadOnAxis(TLAxis const& axis) const;
    /// Called by a layer whose coordinates changed.
    void coordinatesDidChange(TLAxisValues const& before, TLAxisValues const& after);

private:
    void collectSpreads(TLAxisSummaries<TLAxisSpread>& spreads) const;
    std::size_t indexForInserting(TLLayer const& layer) const;
    void adopt(TLAxis& axis);
    void removeCoordinates(std::vector<std::string> const& axisIds);
    void restoreAxes(std::vector<TLAxisState> const& states);
    void restoreLayers(std::vector<std::shared_ptr<TLLayerState const>> const& states);

    std::string m_name;
    std::vector<char32_t> m_unicodes;
    std::weak_ptr<TLFont> m_font;
    TLLayerDictionary m_workingLayers;
    TLLayerDictionary m_trueLayers;
    std::vector<std::shared_ptr<TLAxis>> m_axes;
    mutable TLAxisSummaries<TLAxisSpread> m_spreads;
};
