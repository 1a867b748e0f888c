#pragma once

#include "Platform/Foundation/NSObject.h"
#include "Typloom/TyploomCore/TLAxisValues.h"
#include "Typloom/TyploomCore/TLLocation.h"
#include "Typloom/TyploomCore/TLOutline.h"

class TLAxis;
class TLFont;
class TLGlyph;
class TLInterpolationFontProxy;

enum class TLLayerKind { master, brace, other };

/// A layer as it is at one moment: all that is saved of it and can be undone.
struct TLLayerState {
    std::string layerId;
    std::optional<std::string> associatedMasterId {};
    TLLayerKind kind { TLLayerKind::master };
    std::string name {};
    TLCoordinates coordinates {};
    TLOutline outline {};
    std::optional<std::string> problem {}; ///< Why the outline could not be read, a sentence.
    bool operator==(TLLayerState const&) const = default;
};

/// One drawing of a glyph. Master layers stand at their master's place, intermediate (brace) layers
/// at their own coordinates; other layers (sketches, backgrounds) stand nowhere.
///
/// Two objects can stand for one layer: they share its data and differ in what they report while
/// a preview lasts (`setPreviewLocation`).
class TYPLOOM_API TLLayer final : public NSObject {
public:
    /// What all objects of one layer share.
    struct Data : TLLayerState {
        std::weak_ptr<TLGlyph> glyph {};
        TLAxisValues values {}; ///< The coordinates, by key; set by the layer.
        std::shared_ptr<TLLayerState const> captured {}; ///< Null after a change.
    };
    explicit TLLayer(std::shared_ptr<Data> data);
    /// A layer of an interpolated preview: `data` is the real layer's or made up for the preview.
    TLLayer(std::shared_ptr<Data> data, std::shared_ptr<TLInterpolationFontProxy> proxy);

    std::string const& layerId() const { return m_data->layerId; }
    std::optional<std::string> const& associatedMasterId() const { return m_data->associatedMasterId; }
    bool isMasterLayer() const { return m_data->kind == TLLayerKind::master; }
    bool isBraceLayer() const { return m_data->kind == TLLayerKind::brace; }
    std::string const& name() const { return m_data->name; }
    void setName(std::string name);

    std::shared_ptr<TLFont> font() const;
    std::shared_ptr<TLGlyph> glyph() const { return m_data->glyph.lock(); }
    /// Key "font": the font, or the `TLInterpolationFontProxy` of a preview's layer. Null for other keys.
    std::shared_ptr<NSObject> valueForKey(std::string_view key) const;

    /// Where the layer stands on an axis, in design coordinates; none where it has no place on it.
    /// The values of `previewLocation` come before the layer's own.
    std::optional<double> axisInternalValueValue(std::string_view axisId) const;

    /// The layer's own coordinates: on glyph axes for every kind, on font axes for intermediate layers.
    TLCoordinates const& coordinates() const { return m_data->coordinates; }
    /// Entries that are no finite numbers are left out.
    void setCoordinates(TLCoordinates coordinates);
    TLOutline const& outline() const { return m_data->outline; }
    void setOutline(TLOutline outline);
    std::optional<std::string> const& problem() const { return m_data->problem; }

    /// The layer as it is now; the same object for as long as it is not changed.
    std::shared_ptr<TLLayerState const> state() const;
    /// Becomes what it was then. Recorded nowhere.
    void restore(std::shared_ptr<TLLayerState const> const& state);

    /// Set by the edit view on the layer that lies under its preview.
    std::optional<TLLocation> const& previewLocation() const { return m_previewLocation; }
    void setPreviewLocation(std::optional<TLLocation> location) { m_previewLocation = std::move(location); }

    std::shared_ptr<Data> const& data() const { return m_data; }

private:
    void willChange();
    void readCoordinates();

    std::shared_ptr<Data> m_data;
    std::shared_ptr<TLInterpolationFontProxy> m_proxy;
    std::optional<TLLocation> m_previewLocation;
};
