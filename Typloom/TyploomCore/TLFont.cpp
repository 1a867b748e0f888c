#include "Typloom/TyploomCore/TLFont.h"

#include "Typloom/TyploomCore/DocumentRevision.h"
#include "Typloom/TyploomCore/TLDocumentHistory.h"
#include "Typloom/TyploomCore/TLUpdateInterface.h"
#include "Typloom/TyploomCore/TLVariationCache.h"
#include "Typloom/TyploomCore/UpdateSuspension.h"

#include <algorithm>
#include <unordered_set>

namespace {

template <class Object>
void insertAt(
    std::vector<std::shared_ptr<Object>>& list, std::shared_ptr<Object> const& object, std::size_t index)
{
    list.insert(list.begin() + static_cast<std::ptrdiff_t>(std::min(index, list.size())), object);
}

} // namespace

TLFont::TLFont()
    : m_variationCache(std::make_unique<TLVariationCache>())
    , m_history(std::make_unique<TLDocumentHistory>(*this))
{
}

TLFont::~TLFont() = default;

std::shared_ptr<TLFontMaster> TLFont::fontMasterAtIndex(std::size_t index) const
{
    return index < m_masters.size() ? m_masters[index] : nullptr;
}

std::shared_ptr<TLFontMaster> TLFont::fontMasterForId(std::string_view id) const
{
    auto const entry = m_masterIndexes.find(id);
    return entry == m_masterIndexes.end() ? nullptr : m_masters[entry->second];
}

std::shared_ptr<TLFontMaster> TLFont::defaultFontMaster(std::nullptr_t) const
{
    auto const standsAtDefaults = [this](std::shared_ptr<TLFontMaster> const& master) {
        for (std::size_t index = 0; index < m_axes.size(); ++index) {
            if (master->valueForKey(m_axes[index]->key(), index) != m_axes[index]->defaultValue()) {
                return false;
            }
        }
        return true;
    };
    auto const found = std::find_if(m_masters.begin(), m_masters.end(), standsAtDefaults);
    return found == m_masters.end() ? nullptr : *found;
}

std::size_t TLFont::indexOfObjectInAllMasters(std::shared_ptr<TLFontMaster> const& master) const
{
    if (!master) {
        return NSNotFound;
    }
    auto const entry = m_masterIndexes.find(master->id());
    return entry != m_masterIndexes.end() && m_masters[entry->second] == master ? entry->second : NSNotFound;
}

void TLFont::insertMaster(std::shared_ptr<TLFontMaster> const& master, std::size_t index)
{
    if (!master) {
        return;
    }
    m_history->fontWillChange();
    observe(*master);
    m_masterValues.clear();
    if (index >= m_masters.size()) {
        // Files give masters in their order; none of the others moves.
        m_masterIndexes.try_emplace(master->id(), m_masters.size());
        m_masters.push_back(master);
        return documentDidChange();
    }
    insertAt(m_masters, master, index);
    didChangeMasters();
}

void TLFont::removeMaster(std::size_t index)
{
    if (index >= m_masters.size()) {
        return;
    }
    m_history->fontWillChange();
    m_masters[index]->setChangeObserver(nullptr);
    m_masters.erase(m_masters.begin() + static_cast<std::ptrdiff_t>(index));
    didChangeMasters();
}

void TLFont::didChangeMasters()
{
    m_masterIndexes.clear();
    m_masterValues.clear();
    for (std::size_t index = 0; index < m_masters.size(); ++index) {
        m_masterIndexes.try_emplace(m_masters[index]->id(), index);
    }
    documentDidChange();
}

std::shared_ptr<TLAxis> TLFont::axisForId(std::string_view axisId) const
{
    auto const key = TLKnownAxisKey(axisId);
    auto const index = key ? indexOfAxis(*key) : NSNotFound;
    return index == NSNotFound ? nullptr : m_axes[index];
}

std::size_t TLFont::indexOfAxis(TLAxisKey key) const
{
    auto const entry = m_axisIndexes.find(key);
    return entry == m_axisIndexes.end() ? NSNotFound : entry->second;
}

void TLFont::insertAxis(std::shared_ptr<TLAxis> const& axis, std::size_t index)
{
    if (!axis) {
        return;
    }
    m_history->fontWillChange();
    axis->setChangeObserver(changeObserver());
    if (index >= m_axes.size()) {
        m_axisIndexes.try_emplace(axis->key(), m_axes.size());
        m_axes.push_back(axis);
        return documentDidChange();
    }
    insertAt(m_axes, axis, index);
    didChangeAxes();
}

void TLFont::removeAxis(std::size_t index)
{
    if (index >= m_axes.size()) {
        return;
    }
    m_history->fontWillChange();
    m_axes[index]->setChangeObserver(nullptr);
    m_axes.erase(m_axes.begin() + static_cast<std::ptrdiff_t>(index));
    didChangeAxes();
}

void TLFont::didChangeAxes()
{
    m_axisIndexes.clear();
    for (std::size_t index = 0; index < m_axes.size(); ++index) {
        m_axisIndexes.try_emplace(m_axes[index]->key(), index);
    }
    documentDidChange();
}

std::function<void()> TLFont::changeObserver()
{
    return [weak = std::weak_ptr(sharedAs<TLFont>())] {
        if (auto const font = weak.lock()) {
            font->history().fontWillChange();
        }
    };
}

void TLFont::observe(TLFontMaster& master)
{
    master.setChangeObserver(
        [weak = std::weak_ptr(sharedAs<TLFont>())](std::optional<TLAxisKey> movedOnAxis) {
            if (auto const font = weak.lock()) {
                font->history().fontWillChange();
                if (movedOnAxis) {
                    font->m_masterValues.erase(*movedOnAxis);
                }
            }
        });
}

TLFontState TLFont::state() const
{
    TLFontState state;
    for (auto const& axis : m_axes) {
        state.axes.push_back(axis->state());
    }
    for (auto const& master : m_masters) {
        state.masters.push_back(master->state());
    }
    return state;
}

void TLFont::restore(TLFontState const& state)
{
    std::vector<std::shared_ptr<TLAxis>> axes;
    for (auto const& axisState : state.axes) {
        auto const known = axisForId(axisState.axisId);
        axes.push_back(known && known->state() == axisState ? known : std::make_shared<TLAxis>(axisState));
        axes.back()->setChangeObserver(changeObserver());
    }
    std::vector<std::shared_ptr<TLFontMaster>> masters;
    for (auto const& masterState : state.masters) {
        auto const known = fontMasterForId(masterState.id);
        masters.push_back(known ? known : std::make_shared<TLFontMaster>(masterState.id, masterState.name));
        masters.back()->restore(masterState);
        observe(*masters.back());
    }
    for (auto const& master : m_masters) {
        if (std::find(masters.begin(), masters.end(), master) == masters.end()) {
            master->setChangeObserver(nullptr);
        }
    }
    m_axes = std::move(axes);
    m_masters = std::move(masters);
    didChangeAxes();
    didChangeMasters();
}

std::shared_ptr<TLGlyph> TLFont::glyphForName(std::string_view name) const
{
    auto const known = m_glyphs.find(name);
    bool const isSettled
        = known != m_glyphs.end() && (known->second || !m_source || !m_source->mayReadLater(name));
    if (isSettled || !m_source) {
        return isSettled ? known->second : nullptr;
    }
    std::vector<std::string> report;
    std::shared_ptr<TLGlyph> glyph;
    {
        UpdateSuspension const readingChangesNothing;
        // The document is the same whether or not a glyph has been read yet.
        glyph = m_source->loadGlyph(std::const_pointer_cast<TLFont>(sharedAs<TLFont>()), name, report);
    }
    for (auto& sentence : report) {
        addToReport(std::move(sentence));
    }
    // What can't be read is remembered too, so that it is tried and reported once.
    m_glyphs.insert_or_assign(std::string(name), glyph);
    return glyph;
}

std::shared_ptr<TLGlyph> TLFont::loadedGlyphForName(std::string_view name) const
{
    auto const known = m_glyphs.find(name);
    return known == m_glyphs.end() ? nullptr : known->second;
}

std::vector<std::string> TLFont::glyphNames() const
{
    auto names = m_source ? m_source->glyphNames() : std::vector<std::string> {};
    if (m_insertedNames.empty()) {
        return names;
    }
    std::unordered_set<std::string> const inSource(names.begin(), names.end());
    std::copy_if(m_insertedNames.begin(), m_insertedNames.end(), std::back_inserter(names),
        [&inSource](std::string const& name) { return !inSource.contains(name); });
    return names;
}

std::optional<std::string> TLFont::glyphNameForCharacter(char32_t character) const
{
    for (auto const& name : m_insertedNames) {
        auto const& unicodes = m_glyphs.find(name)->second->unicodes();
        if (std::find(unicodes.begin(), unicodes.end(), character) != unicodes.end()) {
            return name;
        }
    }
    return m_source ? m_source->glyphNameForCharacter(character) : std::nullopt;
}

void TLFont::setGlyphSource(std::shared_ptr<TLGlyphSource> source)
{
    m_source = std::move(source);
    documentDidChange();
}

void TLFont::insertGlyph(std::shared_ptr<TLGlyph> const& glyph)
{
    if (!glyph) {
        return;
    }
    glyph->setFont(sharedAs<TLFont>());
    m_glyphs.insert_or_assign(glyph->name(), glyph);
    if (std::find(m_insertedNames.begin(), m_insertedNames.end(), glyph->name()) == m_insertedNames.end()) {
        m_insertedNames.push_back(glyph->name());
    }
    documentDidChange();
}

void TLFont::addToReport(std::string sentence) const
{
    constexpr std::size_t mostSentences = 5'000; // No one reads more, and each is compared with all.
    if (m_report.size() > mostSentences
        || std::find(m_report.begin(), m_report.end(), sentence) != m_report.end()) {
        return;
    }
    bool const isLast = m_report.size() == mostSentences;
    m_report.push_back(isLast ? "There is more wrong than this report tells." : std::move(sentence));
    TLSetNeedsUpdateInterface();
}
