#include "Typloom/TyploomApp/UnsavedWork.h"

#include "Typloom/TyploomCore/TLDocumentHistory.h"
#include "Typloom/TyploomCore/TLUpdateInterface.h"

#include <algorithm>

namespace {

/// Identifiers of the work, and those that the family has now for the same.
using Renames = std::map<std::string, std::string>;

/// For each of `saved` whose identifier is not among `read`: the one there that nobody else has and that is
/// alike.
template <class Item, class Identifier, class AreAlike>
void addRenames(Renames& renames, std::vector<Item> const& saved, std::vector<Item> const& read,
    Identifier id, AreAlike areAlike)
{
    auto const isIn = [&id](std::vector<Item> const& items, std::string const& identifier) {
        return std::any_of(
            items.begin(), items.end(), [&](Item const& item) { return id(item) == identifier; });
    };
    for (auto const& old : saved) {
        if (isIn(read, id(old))) {
            continue;
        }
        auto const now = std::find_if(read.begin(), read.end(),
            [&](Item const& item) { return !isIn(saved, id(item)) && areAlike(old, item); });
        if (now != read.end()) {
            renames.emplace(id(old), id(*now));
        }
    }
}

void rename(std::string& identifier, Renames const& renames)
{
    if (auto const entry = renames.find(identifier); entry != renames.end()) {
        identifier = entry->second;
    }
}

void rename(TLGlyphState& glyph, Renames const& renames)
{
    for (auto& layer : glyph.layers) {
        auto renamed = std::make_shared<TLLayerState>(*layer);
        rename(renamed->layerId, renames);
        if (renamed->associatedMasterId) {
            rename(*renamed->associatedMasterId, renames);
        }
        layer = std::move(renamed);
    }
}

using LayerState = std::shared_ptr<TLLayerState const>;

void restoreGlyph(TLGlyph& glyph, TLGlyphState state, TLGlyphState saved, Renames renames)
{
    rename(saved, renames);
    rename(state, renames);
    Renames layerRenames;
    addRenames(
        layerRenames, saved.layers, glyph.state().layers,
        [](LayerState const& layer) { return layer->layerId; },
        [](LayerState const& one, LayerState const& other) {
            return one->kind == other->kind && one->coordinates == other->coordinates;
        });
    rename(state, layerRenames);
    glyph.willChange();
    glyph.restore(state);
}

} // namespace

UnsavedWork unsavedWorkOf(TLFont& font)
{
    auto& history = font.history();
    UnsavedWork work { font.path(), history.savedFont(), history.modifiedGlyphs(), font.state(), {} };
    for (auto& [name, glyph] : work.savedGlyphs) {
        work.glyphs.emplace(name, font.glyphForName(name)->state());
        for (auto& layer : glyph.layers) {
            auto bare = std::make_shared<TLLayerState>(*layer);
            bare->outline = {};
            layer = std::move(bare);
        }
    }
    return work;
}

void restoreUnsavedWork(TLFont& font, UnsavedWork work)
{
    Renames renames;
    addRenames(
        renames, work.savedFont.masters, font.state().masters,
        [](TLMasterState const& master) { return master.id; },
        [](TLMasterState const& one, TLMasterState const& other) { return one.values == other.values; });
    bool const changesFont = work.font != work.savedFont;
    for (auto& master : work.font.masters) {
        rename(master.id, renames);
    }
    font.history().beginGesture();
    if (changesFont) {
        font.history().fontWillChange();
        font.restore(work.font);
    }
    for (auto& [name, state] : work.glyphs) {
        if (auto const glyph = font.glyphForName(name)) {
            restoreGlyph(*glyph, std::move(state), std::move(work.savedGlyphs[name]), renames);
        }
    }
    font.history().endGesture();
    TLSetNeedsUpdateInterface();
}
