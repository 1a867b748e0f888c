#include "Typloom/TyploomCore/TLDocumentHistory.h"

#include "Platform/Foundation/NSMainQueue.h"
#include "Typloom/TyploomCore/DocumentRevision.h"
#include "Typloom/TyploomCore/NamesCarried.h"
#include "Typloom/TyploomCore/StepTitle.h"
#include "Typloom/TyploomCore/TLUpdateInterface.h"
#include "Typloom/TyploomCore/UpdateSuspension.h"

#include <algorithm>
#include <utility>

TLDocumentHistory::TLDocumentHistory(TLFont& font)
    : m_font(font)
{
}

TLDocumentHistory::~TLDocumentHistory() = default;

bool TLDocumentHistory::records() const
{
    return !m_isApplying && !UpdateSuspension::isActive();
}

void TLDocumentHistory::glyphWillChange(TLGlyph const& glyph)
{
    if (!records() || glyphNamed(glyph.name()).get() != &glyph) {
        return;
    }
    if (!m_open.glyphs.contains(glyph.name())) {
        auto state = glyph.state();
        m_saved.glyphs.try_emplace(glyph.name(), state);
        m_open.glyphs.emplace(glyph.name(), std::move(state));
    }
    closeTurn();
}

void TLDocumentHistory::fontWillChange()
{
    if (!records()) {
        return;
    }
    if (!m_open.font) {
        m_open.font = m_font.state();
        m_saved.font = m_saved.font ? m_saved.font : m_open.font;
    }
    closeTurn();
}

/// Closes the step at the end of this turn.
void TLDocumentHistory::closeTurn()
{
    if (m_turnIsScheduled || m_gestures > 0) {
        return;
    }
    m_turnIsScheduled = true;
    NSMainQueue::async([weak = std::weak_ptr(m_font.sharedAs<TLFont>())] {
        if (auto const font = weak.lock()) {
            font->history().m_turnIsScheduled = false;
            if (font->history().m_gestures == 0) {
                font->history().closeStep();
            }
        }
    });
}

void TLDocumentHistory::closeStep()
{
    if (!isOpen()) {
        return;
    }
    reopenRename();
    carryNames(m_font, m_open.glyphs, m_open.font ? &*m_open.font : nullptr, m_glyphsWithLocations);
    Step step;
    step.before = std::exchange(m_open, {});
    step.after = statesNowOf(step.before);
    dropUnchanged(step);
    if (step.before.glyphs.empty() && !step.before.font) {
        return;
    }
    auto description
        = describeStep({ step.before.glyphs, step.before.font }, { step.after.glyphs, step.after.font });
    step.title = std::move(description.title);
    step.renamedAxis = std::move(description.renamedAxis);
    push(std::move(step));
    TLSetNeedsUpdateInterface(); // Whether it can be undone, and whether it is to be saved.
}

/// Where the open changes go on renaming the axis of the last step, that step is open again, and what hangs
/// on the name is as before it: a name on the way to the final one may be that of another axis.
void TLDocumentHistory::reopenRename()
{
    if (!m_joinsRenames || m_undo.empty() || m_undo.back().renamedAxis.empty()) {
        return;
    }
    auto const now = statesNowOf(m_open);
    if (describeStep({ m_open.glyphs, m_open.font }, { now.glyphs, now.font }).renamedAxis
        != m_undo.back().renamedAxis) {
        return;
    }
    auto before = std::move(m_undo.back().before);
    m_undo.pop_back();
    m_isApplying = true;
    for (auto const& [name, state] : before.glyphs) {
        if (!m_open.glyphs.contains(name)) {
            glyphNamed(name)->restore(state);
        }
    }
    m_isApplying = false;
    before.glyphs.merge(m_open.glyphs);
    if (!before.font) {
        before.font = std::move(m_open.font);
    }
    m_open = std::move(before);
}

void TLDocumentHistory::push(Step step)
{
    m_redo.clear();
    m_joinsRenames = true;
    m_undo.push_back(std::move(step));
}

TLDocumentHistory::States TLDocumentHistory::statesNowOf(States const& touched) const
{
    States now;
    for (auto const& [name, before] : touched.glyphs) {
        now.glyphs.emplace(name, glyphNamed(name)->state());
    }
    if (touched.font) {
        now.font = m_font.state();
    }
    return now;
}

void TLDocumentHistory::dropUnchanged(Step& step) const
{
    for (auto entry = step.before.glyphs.begin(); entry != step.before.glyphs.end();) {
        bool const isUnchanged = entry->second == step.after.glyphs.find(entry->first)->second;
        if (isUnchanged) {
            step.after.glyphs.erase(entry->first);
        }
        entry = isUnchanged ? step.before.glyphs.erase(entry) : std::next(entry);
    }
    if (step.before.font == step.after.font) {
        step.before.font = step.after.font = std::nullopt;
    }
}

std::shared_ptr<TLGlyph> TLDocumentHistory::glyphNamed(std::string const& name) const
{
    return m_font.loadedGlyphForName(name);
}

bool TLDocumentHistory::canUndo() const
{
    return !m_undo.empty() || isOpen();
}

bool TLDocumentHistory::canRedo() const
{
    return !m_redo.empty() && !isOpen();
}

std::string TLDocumentHistory::undoTitle() const
{
    return m_undo.empty() ? std::string() : m_undo.back().title;
}

std::string TLDocumentHistory::redoTitle() const
{
    return m_redo.empty() ? std::string() : m_redo.back().title;
}

void TLDocumentHistory::undo()
{
    endStep();
    if (m_undo.empty()) {
        return;
    }
    m_redo.push_back(std::move(m_undo.back()));
    m_undo.pop_back();
    apply(m_redo.back().before);
}

void TLDocumentHistory::redo()
{
    endStep();
    if (m_redo.empty()) {
        return;
    }
    m_undo.push_back(std::move(m_redo.back()));
    m_redo.pop_back();
    apply(m_undo.back().after);
}

void TLDocumentHistory::apply(States const& states)
{
    for (auto const& [name, state] : states.glyphs) {
        m_saved.glyphs.try_emplace(name, glyphNamed(name)->state());
    }
    if (states.font && !m_saved.font) {
        m_saved.font = m_font.state();
    }
    m_isApplying = true;
    if (states.font) {
        m_font.restore(*states.font);
    }
    for (auto const& [name, state] : states.glyphs) {
        glyphNamed(name)->restore(state);
    }
    m_isApplying = false;
    TLSetNeedsUpdateInterface();
}

void TLDocumentHistory::endStep()
{
    closeStep();
    m_joinsRenames = false;
    m_glyphsWithLocations.reset();
}

void TLDocumentHistory::beginGesture()
{
    if (m_gestures++ == 0) {
        endStep();
    }
}

void TLDocumentHistory::endGesture()
{
    if (m_gestures > 0 && --m_gestures == 0) {
        endStep();
    }
}

bool TLDocumentHistory::isModified() const
{
    return (m_saved.font && *m_saved.font != m_font.state())
        || std::any_of(m_saved.glyphs.begin(), m_saved.glyphs.end(),
            [this](auto const& entry) { return glyphNamed(entry.first)->state() != entry.second; });
}

std::map<std::string, TLGlyphState> TLDocumentHistory::modifiedGlyphs() const
{
    auto modified = m_saved.glyphs;
    std::erase_if(
        modified, [this](auto const& entry) { return glyphNamed(entry.first)->state() == entry.second; });
    return modified;
}

TLFontState TLDocumentHistory::savedFont() const
{
    return m_saved.font ? *m_saved.font : m_font.state();
}

std::vector<TLAxisState> TLDocumentHistory::savedAxes() const
{
    if (m_saved.font) {
        return m_saved.font->axes;
    }
    std::vector<TLAxisState> axes;
    for (auto const& axis : m_font.canonicalAxes()) {
        axes.push_back(axis->state());
    }
    return axes;
}

void TLDocumentHistory::didSave()
{
    endStep();
    m_saved = {};
    documentDidChange(); // What differs from the files is another.
}

/// Steps hold whole states, so none can be undone or done again over one that is forgotten: with it go all
/// that lie behind it.
void TLDocumentHistory::forgetSteps(std::function<bool(Step const&)> const& touches)
{
    endStep();
    auto const forget = [&touches](std::vector<Step>& steps) {
        auto const last = std::find_if(steps.rbegin(), steps.rend(), touches);
        steps.erase(steps.begin(), last.base());
    };
    forget(m_undo);
    forget(m_redo);
    TLSetNeedsUpdateInterface();
}

void TLDocumentHistory::didReload(TLGlyph const& glyph)
{
    forgetSteps([&glyph](Step const& step) { return step.before.glyphs.contains(glyph.name()); });
    m_saved.glyphs.erase(glyph.name());
    documentDidChange();
}

void TLDocumentHistory::didReloadOutlines(std::string const& glyphName, Redrawn const& layers)
{
    auto const redraw = [&](States& states) {
        auto const glyph = states.glyphs.find(glyphName);
        if (glyph == states.glyphs.end()) {
            return;
        }
        for (auto& layer : glyph->second.layers) {
            auto const redrawn = layers.find(layer->layerId);
            if (redrawn != layers.end() && layer->outline == redrawn->second.first) {
                auto state = *layer;
                state.outline = redrawn->second.second;
                layer = std::make_shared<TLLayerState const>(std::move(state));
            }
        }
    };
    endStep();
    for (auto* steps : { &m_undo, &m_redo }) {
        for (auto& step : *steps) {
            redraw(step.before);
            redraw(step.after);
        }
    }
    redraw(m_saved);
    documentDidChange(); // What differs from the files is another.
}

void TLDocumentHistory::didReloadFont()
{
    forgetSteps([](Step const& step) { return step.before.font.has_value(); });
    m_saved.font.reset();
    documentDidChange();
}

void TLDocumentHistory::clear()
{
    m_open = {};
    m_undo.clear();
    m_redo.clear();
    m_saved = {};
    m_joinsRenames = false;
    documentDidChange(); // What differs from the files is another.
}
