#include "Typloom/TyploomCore/TLFontCommands.h"

#include "Platform/Foundation/NSNumberFormatter.h"
#include "Platform/Foundation/NSString.h"
#include "Typloom/TyploomCore/Storable.h"
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
    MasterPlan(TLFont const& font, TLLocation const& place)
        : m_font(font)
        , m_place(place)
    {
        for (auto const& name : font.glyphNames()) {
            if (auto const glyph = font.glyphForName(name); glyph && canBeDrawn(*glyph)) {
                m_glyphs.push_back(glyph);
            }
        }
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
        auto model = m_font.defaultFontMaster(nullptr);
        model = model ? model : m_font.fontMasterAtIndex(0);
        master->setMetrics(model ? model->metrics() : TLFontMaster::Metrics {});
        return master;
    }

    void drawOutlines(std::vector<std::string>& notes)
    {
        for (auto const& glyph : m_glyphs) {
            auto drawn = TLInterpolateGlyph(*glyph, m_place);
            if (drawn.problem) {
                notes.push_back("The glyph " + inQuotes(glyph->name()) + " looks in the new master as in "
                    + (drawn.nearestSource.empty() ? "its nearest source" : inQuotes(drawn.nearestSource))
                    + ": " + drawn.reason + ".");
            }
            m_outlines.push_back(std::move(drawn.outline));
        }
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
    std::vector<std::shared_ptr<TLGlyph>> m_glyphs;
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

TLAddedMaster TLAddMaster(
    std::shared_ptr<TLFont> const& font, std::string const& name, TLLocation const& viewPlace)
{
    auto const place = TLPlaceForMaster(*font, viewPlace);
    if (name.empty()) {
        return { nullptr, "A master needs a name." };
    }
    if (auto const there = TLMasterAtPlace(*font, place)) {
        return { nullptr, standsThereAlready(*there) }; // Before every glyph is read in vain.
    }
    MasterPlan plan(*font, place);
    TLAddedMaster added { nullptr, plan.problem() };
    if (!added.problem.empty()) {
        return added;
    }
    added.master = plan.makeMaster(name);
    plan.drawOutlines(added.notes);
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

std::optional<std::string> TLReasonAgainstAxisName(
    TLFont const& font, std::string_view name, TLAxis const* except)
{
    if (NSStringByTrimming(name, NSCharacterSet::whitespaceAndNewlines).empty()) {
        return "An axis needs a name.";
    }
    for (auto const& axis : font.canonicalAxes()) {
        if (axis.get() != except && NSStringIsEqual(axis->name(), name)) {
            return "There is an axis " + inQuotes(axis->name()) + " already.";
        }
    }
    return std::nullopt;
}

std::optional<std::string> TLReasonAgainstAxisTag(TLFont const& font, std::string_view tag)
{
    auto const isLetter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
    bool const isWellFormed = tag.size() == 4 && isLetter(tag.front())
        && std::all_of(tag.begin(), tag.end(), [&](char c) { return isLetter(c) || (c >= '0' && c <= '9'); });
    if (!isWellFormed) {
        return "A tag has four letters or digits and begins with a letter.";
    }
    for (auto const& axis : font.canonicalAxes()) {
        if (axis->axisTag() == tag) {
            return "The axis " + inQuotes(axis->name()) + " has the tag " + std::string(tag) + " already.";
        }
    }
    return std::nullopt;
}

std::optional<std::string> TLReasonAgainstAxisBounds(TLAxisBounds const& bounds)
{
    auto const& [minimum, defaultValue, maximum] = bounds;
    if (!isStorableCoordinate(minimum) || !isStorableCoordinate(defaultValue)
        || !isStorableCoordinate(maximum)) {
        return "The values of an axis are numbers.";
    }
    if (!(minimum < maximum)) {
        return "The minimum has to lie below the maximum.";
    }
    if (defaultValue < minimum || defaultValue > maximum) {
        return "The default has to lie between minimum and maximum.";
    }
    return std::nullopt;
}

std::shared_ptr<TLAxis> TLAddAxis(std::shared_ptr<TLFont> const& font, std::string const& name,
    std::string const& tag, TLAxisBounds const& bounds)
{
    if (TLReasonAgainstAxisName(*font, name) || TLReasonAgainstAxisTag(*font, tag)
        || TLReasonAgainstAxisBounds(bounds)) {
        return nullptr;
    }
    auto const axis = std::make_shared<TLAxis>();
    axis->setName(name);
    axis->setAxisTag(tag);
    axis->setDefaultValue(bounds.defaultValue);
    axis->setBounds(bounds.minimum, bounds.maximum);
    font->history().endStep();
    font->insertAxis(axis, font->axes().size());
    for (auto const& master : font->fontMasters()) {
        master->setAxisInternalValue(bounds.defaultValue, axis->axisId());
    }
    font->history().endStep();
    return axis;
}

void TLRenameAxis(std::shared_ptr<TLFont> const& font, TLAxis const& axis, std::string const& name)
{
    auto const& axes = font->canonicalAxes();
    auto const found = std::ranges::find(axes, &axis, [](auto const& candidate) { return candidate.get(); });
    if (found == axes.end() || name == axis.name() || TLReasonAgainstAxisName(*font, name, &axis)) {
        return;
    }
    auto const index = static_cast<std::size_t>(found - axes.begin());
    auto state = axis.state();
    state.name = name;
    font->history().endStep();
    font->removeAxis(index);
    font->insertAxis(std::make_shared<TLAxis>(std::move(state)), index);
    font->history().endStep();
}
