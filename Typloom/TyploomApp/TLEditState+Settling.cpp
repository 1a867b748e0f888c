#include "Typloom/TyploomApp/TLEditState.h"

#include <algorithm>

void TLEditState::settleView()
{
    settleEditedGlyph();
    settlePreviewMark();
    settleActiveLayer();
    rememberAxes();
}

void TLEditState::settleDocument()
{
    settleMaster();
    settleShownLayers();
    settleEditedGlyph();
    settleAxisLocation();
    settleView();
}

/// The current master's index; of a master that is gone, the default one's.
void TLEditState::settleMaster()
{
    auto master = m_font->fontMasterForId(m_masterId);
    if (!master) {
        master = m_font->defaultFontMaster(nullptr);
    }
    if (!master) {
        master = m_font->fontMasterAtIndex(0);
    }
    m_masterIndex = master ? m_font->indexOfObjectInAllMasters(master) : 0;
    m_masterId = master ? master->id() : std::string();
}

void TLEditState::settleShownLayers()
{
    auto const& objects = m_line.objects();
    for (std::size_t index = 0; index < objects.size(); ++index) {
        auto const& object = objects[index];
        if (m_font->fontMasterForId(object.layerId)) {
            continue; // The glyph need not have a layer of every master.
        }
        auto const glyph = m_font->glyphForName(object.glyphName);
        if (!glyph || !glyph->layerForId(object.layerId)) {
            m_line.setLayer(index, currentMasterId());
        }
    }
}

/// A place on an axis that is gone is no place any more. What is left of it can be a layer's.
void TLEditState::settleAxisLocation()
{
    if (!m_axisLocation) {
        return;
    }
    auto const isOwn = [this](std::string const& axisId) {
        auto const isIt = [&axisId](auto const& axis) { return axis->axisId() == axisId; };
        return m_editedGlyph && std::ranges::any_of(m_editedGlyph->axes(), isIt);
    };
    auto const isGone = [&](auto const& entry) {
        return !m_font->axisForId(entry.first) && m_knownAxes.contains(entry.first) && !isOwn(entry.first);
    };
    if (std::erase_if(*m_axisLocation, isGone) > 0) {
        settleView();
        goToLocation(previewPlace());
    }
}

void TLEditState::rememberAxes()
{
    if (!m_axisLocation) {
        m_knownAxes.clear();
        return;
    }
    auto const axes = m_editedGlyph ? m_editedGlyph->allAxes() : m_font->canonicalAxes();
    auto const isKnown = [this](auto const& axis) { return m_knownAxes.contains(axis->axisId()); };
    // A drag asks this all the time.
    if (m_knownAxes.size() == axes.size() && std::ranges::all_of(axes, isKnown)) {
        return;
    }
    m_knownAxes.clear();
    for (auto const& axis : axes) {
        m_knownAxes.insert(axis->axisId());
    }
}

void TLEditState::settleEditedGlyph()
{
    auto const* object = m_line.editedObject();
    m_editedGlyph = object ? m_font->glyphForName(object->glyphName) : nullptr;
}

/// The layer under the preview reports the preview's place for as long as the preview lasts.
void TLEditState::settlePreviewMark()
{
    PreviewMark mark;
    if (m_axisLocation && m_editedGlyph && m_editedGlyph->layerForId(currentMasterId())) {
        mark = { m_editedGlyph, currentMasterId() };
    }
    if (m_mark.glyph && (m_mark.glyph != mark.glyph || m_mark.layerId != mark.layerId)) {
        m_mark.glyph->setPreviewLocation(m_mark.layerId, std::nullopt);
    }
    m_mark = std::move(mark);
    if (m_mark.glyph) {
        m_mark.glyph->setPreviewLocation(m_mark.layerId, m_axisLocation);
    }
}

void TLEditState::settleActiveLayer()
{
    auto const shown = m_editedGlyph && !m_axisLocation
        ? m_editedGlyph->layerForId(m_line.editedObject()->layerId)
        : nullptr;
    if (shown || !m_editedGlyph) {
        m_previewLayer = nullptr;
        m_activeLayer = shown;
        return;
    }
    ensurePreviewLayer();
    m_previewLayer->setPreviewLocation(previewPlace());
    m_activeLayer = m_previewLayer;
}

void TLEditState::ensurePreviewLayer()
{
    auto const& masterId = currentMasterId();
    auto const name = currentMaster() ? currentMaster()->name() : std::string();
    if (m_previewLayer && m_previewLayer->glyph() == m_editedGlyph && m_previewLayer->layerId() == masterId) {
        m_previewLayer->data()->name = name;
        return;
    }
    auto data = std::make_shared<TLLayer::Data>();
    data->layerId = masterId;
    data->associatedMasterId = masterId;
    data->kind = TLLayerKind::master;
    data->name = name;
    data->glyph = m_editedGlyph;
    m_previewLayer = std::make_shared<TLLayer>(std::move(data), m_proxy);
}
