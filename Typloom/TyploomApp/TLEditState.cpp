#include "Typloom/TyploomApp/TLEditState.h"

#include "Typloom/TyploomApp/TLNotificationObserver.h"
#include "Typloom/TyploomCore/TLLayerMatching.h"
#include "Typloom/TyploomCore/TLUpdateInterface.h"

#include <algorithm>
#include <cmath>

namespace {

/// A location that can be compared: what is no finite number would differ from itself.
void dropWhatIsNotFinite(TLLocation& location)
{
    std::erase_if(location, [](auto const& entry) {
        auto const* number = std::get_if<double>(&entry.second);
        return number && !std::isfinite(*number);
    });
}

} // namespace

TLEditState::TLEditState(std::shared_ptr<TLFont> font)
    : m_font(std::move(font))
    , m_proxy(std::make_shared<TLInterpolationFontProxy>(m_font))
{
    settleMaster();
    m_documentObserver = TLNotificationObserver::make(TLWillUpdateInterface, [this] { settleDocument(); });
}

TLEditState::~TLEditState()
{
    if (m_mark.glyph) {
        m_mark.glyph->setPreviewLocation(m_mark.layerId, std::nullopt);
    }
}

std::shared_ptr<TLFontMaster> TLEditState::currentMaster() const
{
    return m_font->fontMasterAtIndex(m_masterIndex);
}

void TLEditState::setGlyphNames(std::vector<std::string> const& names, std::size_t cursor)
{
    std::vector<TLGlyphObject> objects;
    objects.reserve(names.size());
    std::transform(names.begin(), names.end(), std::back_inserter(objects),
        [id = currentMasterId()](std::string const& name) {
            return TLGlyphObject { name, id };
        });
    m_line.setObjects(std::move(objects), cursor);
    didChange();
}

void TLEditState::showGlyphAtCursor(std::string const& name)
{
    TLGlyphObject object { name, currentMasterId() };
    if (auto const edited = m_line.editedIndex()) {
        m_line.replaceObject(*edited, std::move(object));
    } else {
        m_line.insertObject(m_line.selectedRange().location, std::move(object));
    }
    didChange();
}

void TLEditState::editGlyph(std::string const& name)
{
    auto const& objects = m_line.objects();
    auto const found = std::find_if(objects.begin(), objects.end(),
        [&name](TLGlyphObject const& object) { return object.glyphName == name; });
    if (found != objects.end()) {
        select({ .location = static_cast<std::size_t>(found - objects.begin()), .length = 0 });
        return;
    }
    m_line.insertObject(m_line.selectedRange().location, { name, currentMasterId() });
    didChange();
}

void TLEditState::select(NSRange range)
{
    auto const before = m_line.selectedRange();
    auto const shownLayerId = m_line.editedObject() ? m_line.editedObject()->layerId : currentMasterId();
    m_line.select(range);
    if (m_line.selectedRange() == before) {
        return;
    }
    auto const edited = m_line.editedIndex();
    if (edited && *edited != before.location && !standsOnOwnLayer(m_line.objects()[*edited])) {
        bool const stoodOnMaster = m_font->fontMasterForId(shownLayerId) != nullptr;
        m_line.setLayer(*edited, stoodOnMaster ? shownLayerId : currentMasterId());
    }
    didChange();
}

/// Whether the user has put that object on a layer that is no master's.
bool TLEditState::standsOnOwnLayer(TLGlyphObject const& object) const
{
    auto const glyph = m_font->glyphForName(object.glyphName);
    auto const layer = glyph ? glyph->layerForId(object.layerId) : nullptr;
    return layer && !layer->isMasterLayer();
}

void TLEditState::setMasterIndex(std::size_t index)
{
    auto const master = m_font->fontMasterAtIndex(index);
    if (!master) {
        return;
    }
    m_masterIndex = index;
    m_masterId = master->id();
    m_axisLocation.reset();
    m_line.setLayerOfAll(master->id());
    didChange();
}

void TLEditState::setAxisLocation(std::optional<TLLocation> location)
{
    if (location) {
        dropWhatIsNotFinite(*location);
    }
    if (location == m_axisLocation) {
        return;
    }
    m_axisLocation = std::move(location);
    didChange();
}

void TLEditState::switchToLayer(std::string_view layerId, NSRange range)
{
    auto const& objects = m_line.objects();
    auto const first = std::min(range.location, objects.size());
    auto const end = first + std::min(range.length, objects.size() - first);
    std::string const identifier(layerId);
    bool reachedOne = false;
    for (auto index = first; index < end; ++index) {
        auto const glyph = m_font->glyphForName(objects[index].glyphName);
        if (glyph && glyph->layerForId(identifier)) {
            m_line.setLayer(index, identifier);
            reachedOne = true;
        }
    }
    if (reachedOne) {
        m_axisLocation.reset();
        didChange();
    }
}

void TLEditState::goToLocation(TLLocation const& location)
{
    auto const goToMaster = [this](std::shared_ptr<TLFontMaster> const& master) {
        if (auto const index = m_font->indexOfObjectInAllMasters(master); index != NSNotFound) {
            setMasterIndex(index);
        }
    };
    if (!m_editedGlyph) {
        auto const place = TLCompletedPlace(m_font->canonicalAxes(), location);
        auto const master = TLMasterAtPlace(*m_font, place);
        master ? goToMaster(master) : setAxisLocation(place);
        return;
    }
    auto const place = TLCompletedPlace(m_editedGlyph->allAxes(), location);
    auto const preferred = m_activeLayer ? m_activeLayer->associatedMasterId() : std::nullopt;
    auto const layer = TLLayerAtPlace(*m_editedGlyph, place, preferred);
    if (!layer) {
        setAxisLocation(place);
        return;
    }
    if (layer->isMasterLayer()) {
        goToMaster(m_font->fontMasterForId(layer->layerId()));
    }
    auto const length = std::max<std::size_t>(m_line.selectedRange().length, 1);
    switchToLayer(layer->layerId(), { m_line.selectedRange().location, length });
}

std::shared_ptr<TLLayer> TLEditState::editableLayer() const
{
    bool const canBeEdited = m_activeLayer && !m_previewLayer && !m_activeLayer->problem();
    return canBeEdited ? m_activeLayer : nullptr;
}

TLLocation TLEditState::place() const
{
    if (!m_editedGlyph || m_previewLayer) {
        return previewPlace();
    }
    TLLocation place;
    for (auto const& axis : m_editedGlyph->allAxes()) {
        if (auto const value = m_activeLayer->axisInternalValueValue(axis->axisId())) {
            place[axis->axisId()] = *value;
        }
    }
    addCurrentMaster(place); // For a layer that stands nowhere, as a sketch does.
    return place;
}

TLLocation TLEditState::fontPlace() const
{
    auto place = this->place();
    std::erase_if(place, [this](auto const& entry) { return m_font->axisForId(entry.first) == nullptr; });
    return place;
}

/// The display location, completed by the current master on the axes that it leaves open.
TLLocation TLEditState::previewPlace() const
{
    auto place = m_axisLocation.value_or(TLLocation {});
    std::erase_if(place, [](auto const& entry) { return !std::holds_alternative<double>(entry.second); });
    if (m_editedGlyph) {
        if (auto const layer = m_editedGlyph->layers().find(currentMasterId())) {
            place.insert(layer->coordinates().begin(), layer->coordinates().end());
        }
    }
    addCurrentMaster(place);
    return place;
}

void TLEditState::addCurrentMaster(TLLocation& place) const
{
    if (auto const master = currentMaster()) {
        auto const& axes = m_font->canonicalAxes();
        for (std::size_t index = 0; index < axes.size(); ++index) {
            place.try_emplace(axes[index]->axisId(), master->valueForKey(axes[index]->key(), index));
        }
    }
}

void TLEditState::didChange()
{
    settleView();
    TLSetNeedsUpdateInterface();
    if (m_observer) {
        m_observer();
    }
}
