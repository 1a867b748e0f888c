// What a command on the masters of a font does to its document.

#include "Typloom/TyploomCore/TLFontCommands.h"

#include "Platform/Foundation/NSNumberFormatter.h"
#include "Platform/Foundation/NSString.h"
#include "Typloom/TyploomCore/TLDocumentHistory.h"
#include "Typloom/TyploomCore/TLInterpolation.h"
#include "Typloom/TyploomCore/TLLayerMatching.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace {

std::string inQuotes(std::string const& name)
{
    return '\'' + name + '\'';
}

std::string shown(double value)
{
    NSNumberFormatter formatter;
    formatter.setMaximumFractionDigits(3);
    return formatter.stringFromNumber(value).value_or("");
}

bool canBeDrawn(TLGlyph const& glyph)
{
    return std::any_of(glyph.layers().begin(), glyph.layers().end(), [](auto const& entry) {
        return entry.second->data()->kind != TLLayerKind::other && !entry.second->problem();
    });
}

/// Everything that a new master needs, worked out before anything changes.
class MasterPlan {
public:
    MasterPlan(TLFont const& font, TLLocation const& place, TLMasterProgress const& goesOn)
        : m_font(font)
        , m_place(place)
        , m_goesOn(goesOn)
        , m_names(font.glyphNames())
    {
    }

    /// False when it was stopped.
    bool readGlyphs()
    {
        return forEachStep(m_names.size(), 0, [this](std::size_t index) {
            if (auto const glyph = m_font.glyphForName(m_names[index]); glyph && canBeDrawn(*glyph)) {
                m_glyphs.push_back(glyph);
            }
        });
    }

    /// Why there can be no master, a sentence; otherwise empty.
    std::string problem() const
    {
        for (auto const& glyph : m_glyphs) {
            if (auto const layer = TLLayerAtPlace(*glyph, m_place, std::nullopt)) {
                return "The intermediate layer " + inQuotes(layer->name()) + " of the glyph "
                    + inQuotes(glyph->name()) + " stands at this place already.";
            }
        }
        return {};
    }

    std::shared_ptr<TLFontMaster> makeMaster(std::string const& name) const
    {
        auto const master = std::make_shared<TLFontMaster>(freeIdentifier(name), name);
        for (auto const& axis : m_font.canonicalAxes()) {
            master->setAxisInternalValue(*TLLocationNumber(m_place, axis->axisId()), axis->axisId());
        }
        auto const model = TLMasterNearestTo(m_font, m_place); // A save takes its information.
        master->setMetrics(model ? model->metrics() : TLFontMaster::Metrics {});
        return master;
    }

    /// False when it was stopped.
    bool drawOutlines(std::vector<std::string>& notes)
    {
        return forEachStep(m_glyphs.size(), m_names.size(), [&](std::size_t index) {
            auto const& glyph = *m_glyphs[index];
            auto drawn = TLInterpolateGlyph(glyph, m_place);
            if (drawn.problem) {
                notes.push_back("The glyph " + inQuotes(glyph.name()) + " looks in the new master as in "
                    + (drawn.nearestSource.empty() ? "its nearest source" : inQuotes(drawn.nearestSource))
                    + ": " + drawn.reason + ".");
            }
            m_outlines.push_back(std::move(drawn.outline));
        });
    }

    void insertLayersOf(TLFontMaster const& master)
    {
        for (std::size_t index = 0; index < m_glyphs.size(); ++index) {
            auto data = std::make_shared<TLLayer::Data>();
            data->layerId = master.id();
            data->associatedMasterId = master.id();
            data->kind = TLLayerKind::master;
            data->name = master.name();
            data->outline = std::move(m_outlines[index]);
            m_glyphs[index]->insertLayer(std::make_shared<TLLayer>(std::move(data)));
        }
    }

private:
    bool forEachStep(
        std::size_t count, std::size_t before, std::function<void(std::size_t)> const& step) const
    {
        for (std::size_t index = 0; index < count; ++index) {
            step(index);
            if (m_goesOn && !m_goesOn(before + index + 1, 2 * m_names.size())) {
                return false;
            }
        }
        return true;
    }

    /// The name, since files know a master by one; numbered where something has it.
    std::string freeIdentifier(std::string const& name) const
    {
        std::set<std::string, std::less<>> taken;
        for (auto const& glyph : m_glyphs) {
            for (auto const& [layerId, layer] : glyph->layers()) {
                taken.insert(layerId);
            }
        }
        auto identifier = name;
        for (int number = 2; taken.contains(identifier) || m_font.fontMasterForId(identifier); ++number) {
            identifier = name + " " + std::to_string(number);
        }
        return identifier;
    }

    TLFont const& m_font;
    TLLocation m_place;
    TLMasterProgress const& m_goesOn;
    std::vector<std::string> m_names; ///< Of all glyphs.
    std::vector<std::shared_ptr<TLGlyph>> m_glyphs; ///< That can be drawn.
    std::vector<TLOutline> m_outlines; ///< Of the glyphs, in their order.
};

double valueOnAxis(TLAxis const& axis, double value)
{
    if (axis.isDiscrete()) {
        return *std::ranges::min_element(
            axis.discreteValues(), {}, [value](double candidate) { return std::abs(candidate - value); });
    }
    return axis.minimum() < axis.maximum() ? std::clamp(value, axis.minimum(), axis.maximum()) : value;
}

std::string standsThereAlready(TLFontMaster const& master)
{
    return "The master " + inQuotes(master.name()) + " stands at this place already.";
}

bool isDefaultMaster(TLFont const& font, TLFontMaster const& master)
{
    return font.defaultFontMaster(nullptr).get() == &master;
}

} // namespace

TLLocation TLPlaceForMaster(TLFont const& font, TLLocation const& place)
{
    TLLocation completed;
    for (auto const& axis : font.canonicalAxes()) {
        auto const value = TLLocationNumber(place, axis->axisId()).value_or(axis->defaultValue());
        completed[axis->axisId()] = valueOnAxis(*axis, value);
    }
    return completed;
}

static bool hasMasterNamed(TLFont const& font, std::string_view name, TLFontMaster const* except)
{
    return std::ranges::any_of(font.fontMasters(),
        [&](auto const& master) { return master.get() != except && NSStringIsEqual(master->name(), name); });
}

static std::string freeMasterName(TLFont const& font, std::string const& name)
{
    auto free = name;
    for (int number = 2; hasMasterNamed(font, free, nullptr); ++number) {
        free = name + " " + std::to_string(number);
    }
    return free;
}

std::optional<std::string> TLReasonAgainstMasterName(
    TLFont const& font, std::string_view name, TLFontMaster const* except)
{
    if (NSStringByTrimming(name, NSCharacterSet::whitespaceAndNewlines).empty()) {
        return "A master needs a name.";
    }
    return hasMasterNamed(font, name, except)
        ? std::optional("There is a master " + inQuotes(std::string(name)) + " already.")
        : std::nullopt;
}

TLAddedMaster TLAddMaster(std::shared_ptr<TLFont> const& font, std::string const& name,
    TLLocation const& viewPlace, TLMasterProgress const& goesOn)
{
    auto const place = TLPlaceForMaster(*font, viewPlace);
    auto const freeName = freeMasterName(*font, name);
    if (auto const reason = TLReasonAgainstMasterName(*font, freeName)) {
        return { nullptr, *reason };
    }
    if (auto const there = TLMasterAtPlace(*font, place)) {
        return { nullptr, standsThereAlready(*there) }; // Before every glyph is read in vain.
    }
    MasterPlan plan(*font, place, goesOn);
    if (!plan.readGlyphs()) {
        return {};
    }
    TLAddedMaster added { nullptr, plan.problem() };
    if (!added.problem.empty() || !plan.drawOutlines(added.notes)) {
        return { nullptr, added.problem };
    }
    added.master = plan.makeMaster(freeName);
    font->history().endStep();
    font->insertMaster(added.master, font->fontMasters().size());
    plan.insertLayersOf(*added.master);
    font->history().endStep();
    return added;
}

std::optional<std::string> TLReasonAgainstMasterValue(
    TLFont const& font, TLFontMaster const& master, TLAxis const& axis, double value)
{
    auto const& discrete = axis.discreteValues();
    if (!discrete.empty() && std::find(discrete.begin(), discrete.end(), value) == discrete.end()) {
        return axis.name() + " has no value " + shown(value) + ".";
    }
    if (value < axis.minimum() || value > axis.maximum()) {
        return axis.name() + " goes from " + shown(axis.minimum()) + " to " + shown(axis.maximum()) + ".";
    }
    if (isDefaultMaster(font, master) && value != axis.defaultValue()) {
        return "One master has to stand at the default of every axis.";
    }
    TLLocation place;
    for (auto const& other : font.canonicalAxes()) {
        place[other->axisId()] = master.axisInternalValueValueForId(other->axisId());
    }
    place[axis.axisId()] = value;
    if (auto const there = TLMasterAtPlace(font, place); there && there.get() != &master) {
        return standsThereAlready(*there);
    }
    return std::nullopt;
}
