#include "Tests/Sequences/FamilyChanges.h"

#include "Tests/Support/FontBuilder.h"
#include "Typloom/TyploomCore/TLDocumentHistory.h"
#include "Typloom/TyploomCore/TLUpdateInterface.h"

#include <array>

static constexpr std::array axisIds { "wght", "wdth", "bar", "stem", "opsz" };
static constexpr std::array axisNames { "Weight", "Width", "Bar", "Stem", "weird", "Unnamed" };
static constexpr std::size_t mostAxes = 5;
static constexpr std::size_t mostLayers = 9;

FamilyChanges::FamilyChanges(std::shared_ptr<LiveHost> host)
    : m_host(std::move(host))
{
    openFamily(0, 0);
}

std::vector<FamilyChanges::Named> const& FamilyChanges::all()
{
    static std::vector<Named> const changes {
        { "insert axis", &FamilyChanges::insertAxis, 7 },
        { "remove axis", &FamilyChanges::removeAxis, 4 },
        { "move axis", &FamilyChanges::moveAxis, 6 },
        { "replace axis", &FamilyChanges::replaceAxis, 4 },
        { "rename axis", &FamilyChanges::renameAxis, 4 },
        { "change default", &FamilyChanges::changeDefault, 6 },
        { "insert master", &FamilyChanges::insertMaster, 2 },
        { "remove master", &FamilyChanges::removeMaster, 2 },
        { "move master", &FamilyChanges::moveMaster, 6 },
        { "insert layer", &FamilyChanges::insertLayer, 5 },
        { "remove layer", &FamilyChanges::removeLayer, 2 },
        { "move layer", &FamilyChanges::moveLayer, 5 },
        { "undo", &FamilyChanges::undo, 3 },
        { "redo", &FamilyChanges::redo, 2 },
        { "edit glyph", &FamilyChanges::editGlyph, 5 },
        { "choose master", &FamilyChanges::chooseMaster, 4 },
        { "choose layer", &FamilyChanges::chooseLayer, 5 },
        { "preview", &FamilyChanges::preview, 6 },
        { "end preview", &FamilyChanges::endPreview, 3 },
        { "close family", &FamilyChanges::closeFamily, 1 },
        { "open family", &FamilyChanges::openFamily, 3 },
    };
    return changes;
}

TLFont* FamilyChanges::font() const
{
    return m_host->state->edit ? m_host->state->edit->font().get() : nullptr;
}

std::shared_ptr<TLGlyph> FamilyChanges::glyph() const
{
    auto const edited = m_host->state->edit ? m_host->state->edit->editedGlyph() : nullptr;
    return edited ? font()->glyphForName(edited->name()) : nullptr;
}

double FamilyChanges::number(unsigned choice) const
{
    static constexpr std::array numbers { 0.0, 100.0, 400.0, 550.0, 900.0, -0.0, 400 + 1e-6, 400 + 2e-5,
        0.004, 0.25, -20.0, 12.34, 1e15, 0.0005 };
    return numbers[choice % numbers.size()];
}

void FamilyChanges::closeFamily(unsigned, unsigned)
{
    m_host->state->edit = nullptr;
    m_host->pending.clear();
    TLSetNeedsUpdateInterface();
}

/// Masters at 100, 400 and 900 on the weight; A has a layer between them and an axis of its own, B none.
void FamilyChanges::openFamily(unsigned which, unsigned)
{
    FontBuilder builder;
    builder.addAxis("wght", "Weight", { 100, 400, 900 }, "wght");
    if (which % 2 == 0) {
        builder.addAxis("wdth", "Width", { 0, 0, 100 }, "wdth");
    }
    for (auto const weight : { 100, 400, 900 }) {
        builder.addMaster("m" + std::to_string(weight), { { "wght", weight } });
    }
    auto const a = builder.addGlyph("A");
    FontBuilder::addGlyphAxis(a, "bar", "Bar", { 0, 0, 100 });
    FontBuilder::addBraceLayer(a, "raised", "m400", { { "wght", 400 }, { "bar", 100 } });
    FontBuilder::addBraceLayer(a, "middle", "m400", { { "wght", 550 } });
    builder.addGlyph("B");
    m_host->pending.clear();
    m_host->state->edit = std::make_shared<TLEditState>(builder.font());
    m_host->state->edit->setGlyphNames({ "A", "B", "A" }, 0);
}

std::shared_ptr<TLAxis> FamilyChanges::newAxis(unsigned which, unsigned value) const
{
    auto axis = FontBuilder::makeAxis(axisIds[which % axisIds.size()], axisNames[value % axisNames.size()],
        { -20, number(value / 6), 1000 });
    axis->setAxisTag(
        value % 4 == 0 ? std::optional<std::string>("tag" + std::to_string(which % 3)) : std::nullopt);
    return axis;
}

std::vector<std::shared_ptr<TLAxis>> const& FamilyChanges::AxisList::axes() const
{
    return font ? font->axes() : glyph->axes();
}

void FamilyChanges::AxisList::insert(std::shared_ptr<TLAxis> const& axis, unsigned place) const
{
    auto const index = place % (axes().size() + 1);
    font ? font->insertAxis(axis, index) : glyph->insertObjectInAxesAtIndex(axis, index);
}

void FamilyChanges::AxisList::remove(std::size_t index) const
{
    font ? font->removeAxis(index) : glyph->removeObjectFromAxesAtIndex(index);
}

FamilyChanges::AxisList FamilyChanges::axisList(unsigned which) const
{
    return which % 2 == 0 ? AxisList { .font = font() } : AxisList { .glyph = glyph().get() };
}

void FamilyChanges::insertAxis(unsigned which, unsigned value)
{
    auto const list = axisList(which);
    if ((list.font || list.glyph) && list.axes().size() < mostAxes) {
        list.insert(newAxis(which / 2, value), value);
    }
}

void FamilyChanges::removeAxis(unsigned which, unsigned)
{
    if (auto const list = axisList(which); !list.isEmpty()) {
        list.remove(list.index(which));
    }
}

void FamilyChanges::moveAxis(unsigned which, unsigned value)
{
    if (auto const list = axisList(which); !list.isEmpty()) {
        auto const axis = list.axes()[list.index(which)];
        list.remove(list.index(which));
        list.insert(axis, value);
    }
}

/// As undo does where an axis differs.
void FamilyChanges::replaceAxis(unsigned which, unsigned value)
{
    if (auto const list = axisList(which); !list.isEmpty()) {
        auto const index = list.index(which);
        auto state = list.axes()[index]->state();
        state.name = axisNames[value % axisNames.size()];
        list.remove(index);
        list.insert(std::make_shared<TLAxis>(state), static_cast<unsigned>(index));
    }
}

void FamilyChanges::renameAxis(unsigned which, unsigned value)
{
    if (auto const list = axisList(which); !list.isEmpty()) {
        list.axes()[list.index(which)]->setName(axisNames[value % axisNames.size()]);
    }
}

void FamilyChanges::changeDefault(unsigned which, unsigned value)
{
    if (auto const list = axisList(which); !list.isEmpty()) {
        list.axes()[list.index(which)]->setDefaultValue(number(value));
    }
}

void FamilyChanges::insertMaster(unsigned which, unsigned value)
{
    if (font() && font()->fontMasters().size() < mostAxes) {
        auto const master = std::make_shared<TLFontMaster>("n" + std::to_string(++m_names), "Master");
        master->setAxisInternalValue(number(value), "wght");
        font()->insertMaster(master, which % (font()->fontMasters().size() + 1));
        if (auto const edited = glyph(); edited && value % 3 != 0) {
            FontBuilder::addMasterLayer(edited, master->id());
        }
    }
}

void FamilyChanges::removeMaster(unsigned which, unsigned)
{
    if (font() && !font()->fontMasters().empty()) {
        font()->removeMaster(which % font()->fontMasters().size());
    }
}

void FamilyChanges::moveMaster(unsigned which, unsigned value)
{
    if (font() && !font()->fontMasters().empty() && !font()->axes().empty()) {
        auto const& axisId = font()->axes()[value % font()->axes().size()]->axisId();
        font()->fontMasters()[which % font()->fontMasters().size()]->setAxisInternalValue(
            number(value / 5), axisId);
    }
}

void FamilyChanges::insertLayer(unsigned which, unsigned value)
{
    auto const edited = glyph();
    if (!edited || edited->layers().size() >= mostLayers) {
        return;
    }
    auto const layerId = "l" + std::to_string(++m_names);
    auto const& masters = font()->fontMasters();
    auto const master = masters.empty() ? std::nullopt : std::optional(masters[which % masters.size()]->id());
    if (which % 5 == 0) {
        FontBuilder::addOtherLayer(edited, layerId, master);
        return;
    }
    TLCoordinates place;
    for (auto const& axis : edited->allAxes()) {
        if (value++ % 3 != 0) {
            place[axis->axisId()] = number(value);
        }
    }
    FontBuilder::addBraceLayer(edited, layerId, which % 7 == 0 ? std::nullopt : master, place);
}

void FamilyChanges::removeLayer(unsigned which, unsigned)
{
    if (auto const edited = glyph(); edited && edited->layers().size() > 0) {
        edited->removeLayer(std::string(edited->layers().entries()[which % edited->layers().size()].first));
    }
}

void FamilyChanges::moveLayer(unsigned which, unsigned value)
{
    auto const edited = glyph();
    auto const axes = edited ? edited->allAxes() : std::vector<std::shared_ptr<TLAxis>> {};
    if (axes.empty() || edited->layers().size() == 0) {
        return;
    }
    auto const layer = edited->layers().entries()[which % edited->layers().size()].second;
    auto coordinates = layer->coordinates();
    auto const& axisId = axes[value % axes.size()]->axisId();
    coordinates.erase(axisId);
    if (value % 4 != 0) {
        coordinates[axisId] = number(value / 5);
    }
    layer->setCoordinates(coordinates);
}

void FamilyChanges::undo(unsigned, unsigned)
{
    if (font() && font()->history().canUndo()) {
        font()->history().undo();
    }
}

void FamilyChanges::redo(unsigned, unsigned)
{
    if (font() && font()->history().canRedo()) {
        font()->history().redo();
    }
}

/// The third is a place behind the last glyph, where none is edited.
void FamilyChanges::editGlyph(unsigned which, unsigned value)
{
    if (m_host->state->edit) {
        m_host->state->edit->select({ which % 4, value % 2 });
    }
}

void FamilyChanges::chooseMaster(unsigned which, unsigned)
{
    if (font()) {
        m_host->state->edit->setMasterIndex(which % (font()->fontMasters().size() + 1));
    }
}

void FamilyChanges::chooseLayer(unsigned which, unsigned)
{
    if (auto const edited = glyph(); edited && edited->layers().size() > 0) {
        auto const& layerId = edited->layers().entries()[which % edited->layers().size()].first;
        m_host->state->edit->switchToLayer(layerId, { 0, 3 });
    }
}

/// What comes from outside can name anything.
void FamilyChanges::preview(unsigned which, unsigned value)
{
    if (font()) {
        TLLocation place { { axisIds[which % axisIds.size()], number(value) } };
        if (value % 3 == 0) {
            place["wght"] = number(value / 3);
        }
        if (value % 11 == 0) {
            place["wdth"] = "bold";
        }
        m_host->state->edit->setAxisLocation(place);
    }
}

void FamilyChanges::endPreview(unsigned, unsigned)
{
    if (font()) {
        m_host->state->edit->setAxisLocation(std::nullopt);
    }
}
