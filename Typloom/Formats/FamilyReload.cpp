#include "Typloom/Formats/FamilyReload.h"

#include "Typloom/Formats/FamilyOpener.h"
#include "Typloom/Formats/FileReading.h"
#include "Typloom/Formats/GlyphLoader.h"
#include "Typloom/Formats/LayerMatch.h"
#include "Typloom/Formats/XmlDocument.h"
#include "Typloom/TyploomCore/TLDocumentHistory.h"

#include <algorithm>
#include <set>

namespace {

using Path = std::filesystem::path;

class Reload {
public:
    Reload(std::shared_ptr<TLFont> font, std::shared_ptr<FamilyGlyphSource> family)
        : m_font(std::move(font))
        , m_family(std::move(family))
        , m_files(*m_family->files())
    {
        for (auto const& [path, stamp] : m_files.stamps()) {
            if (hasChanged(path, stamp)) {
                m_changed.insert(path);
            }
        }
    }

    TLReloadOutcome run()
    {
        if (m_changed.empty()) {
            return {};
        }
        m_font->history().endStep();
        m_modified = m_font->history().modifiedGlyphs();
        bool const concernsAll = std::any_of(
            m_changed.begin(), m_changed.end(), [](Path const& path) { return path.extension() != ".glif"; });
        bool const readsAll = concernsAll && readStructure();
        for (auto const& [name, glyph] : std::map(m_font->loadedGlyphs())) {
            if (readsAll || (glyph && isConcerned(name))) {
                readGlyph(name, glyph);
            }
        }
        return std::move(m_outcome);
    }

private:
    /// Half of a file that is being written is no whole one.
    static bool isWhole(Path const& path)
    {
        auto text = readFile(path, {});
        return text && XmlDocument::parse(std::move(*text), {});
    }

    bool mayReadStructure()
    {
        auto const designspace = m_font->path().lexically_normal();
        auto const& history = m_font->history();
        bool const isModified
            = m_changed.contains(designspace) ? history.isModified() : history.savedFont() != m_font->state();
        if (isModified) {
            m_outcome.sentences.push_back("The axes, masters or layers were changed by another program; they "
                                          "are left as they are here, "
                                          "since there are changes that are not saved.");
        }
        return !isModified && std::all_of(m_changed.begin(), m_changed.end(), [](Path const& path) {
            return path.extension() == ".glif" || isWhole(path);
        });
    }

    KnownFamily known() const
    {
        KnownFamily known;
        for (auto const& axis : m_font->axes()) {
            known.axisIds.emplace(axis->name(), axis->axisId());
        }
        for (auto const& source : m_family->family().sources) {
            auto const folder = source.ufo->folder().lexically_normal();
            bool const changes = std::any_of(m_changed.begin(), m_changed.end(), [&folder](Path const& path) {
                auto const ends = std::mismatch(folder.begin(), folder.end(), path.begin(), path.end());
                return path.extension() != ".glif" && ends.first == folder.end();
            });
            if (source.kind == TLLayerKind::master) {
                known.masterIds[source.ufo->displayName()].push_back(source.id);
            }
            if (!changes) {
                known.ufos.emplace(source.ufo->displayName(), source.ufo);
            }
        }
        return known;
    }

    /// False when nothing of it could be read again.
    bool readStructure()
    {
        if (!mayReadStructure()) {
            return false;
        }
        StampTrial trial(m_files);
        auto const opened = openFamily(m_font->path(), m_family->files(), known());
        if (!opened) {
            return false;
        }
        trial.accept();
        for (auto const& sentence : (*opened)->report()) {
            m_font->addToReport(sentence);
        }
        if (auto const state = (*opened)->state(); state != m_font->state()) {
            m_font->restore(state);
            m_font->history().didReloadFont();
            m_outcome.anything = true;
        }
        m_family->setFamily(std::static_pointer_cast<FamilyGlyphSource>((*opened)->glyphSource())->family());
        return true;
    }

    bool isConcerned(std::string const& name) const
    {
        auto const origins = m_family->originsOf(name);
        return std::any_of(origins.begin(), origins.end(), [&](LayerOrigin const& origin) {
            auto const path = m_family->family().glifPath(origin.ufo, origin.ufoLayer, name);
            return path && m_changed.contains(*path);
        });
    }

    void readGlyph(std::string const& name, std::shared_ptr<TLGlyph> const& glyph)
    {
        if (m_modified.contains(name)) {
            if (isConcerned(name) && !mergeOutlines(*glyph)) {
                m_outcome.sentences.push_back("The glyph " + inQuotes(name)
                    + " was changed by another program; it is left as it is here, since it has changes that "
                      "are "
                      "not saved.");
            }
            return;
        }
        StampTrial trial(m_files);
        std::vector<std::string> report;
        GlyphLoader loader(m_family->family(), m_font, name, report);
        auto const read = loader.load();
        if (!read || (glyph && hasNewProblem(glyph->state(), read->state()))) {
            return;
        }
        trial.accept();
        if (glyph) {
            bringUpToDate(*glyph, *read, loader.origins());
        } else {
            m_family->setOrigins(name, loader.origins());
            m_font->insertGlyph(read);
            m_outcome.anything = true;
        }
        for (auto& sentence : report) {
            m_font->addToReport(std::move(sentence));
        }
    }

    /// Layers that are drawn as they were saved follow their files. False when anything of the files is left.
    bool mergeOutlines(TLGlyph& glyph)
    {
        auto const& saved = m_modified.at(glyph.name());
        std::map<Path, FileStamp> stamps;
        std::vector<std::string> report;
        GlyphLoader loader(m_family->family(), m_font, glyph.name(), report);
        std::shared_ptr<TLGlyph> read;
        {
            StampTrial const trial(m_files);
            read = loader.load();
            stamps = m_files.stamps();
        }
        if (!read || hasNewProblem(saved, read->state())) {
            return true; // It may still be being written.
        }
        auto const origins = m_family->originsOf(glyph.name());
        auto redrawn = redrawnLayers(saved, origins, read->state(), loader.origins());
        if (!redrawn) {
            return false;
        }
        auto now = glyph.state();
        auto const left = takeOutlines(now, *redrawn);
        if (!redrawn->empty()) {
            glyph.restore(now);
            m_font->history().didReloadOutlines(glyph.name(), *redrawn);
            m_outcome.anything = true;
        }
        acceptFiles(glyph.name(), origins, left, stamps);
        return left.empty();
    }

    /// None when more than outlines differ.
    std::optional<TLDocumentHistory::Redrawn> redrawnLayers(TLGlyphState const& saved,
        std::vector<LayerOrigin> const& savedOrigins, TLGlyphState const& read,
        std::vector<LayerOrigin> const& readOrigins) const
    {
        TLDocumentHistory::Redrawn redrawn;
        auto const matches
            = matchLayers(read, readOrigins, saved, savedOrigins, m_font->history().savedFont());
        if (read.axes != saved.axes || matches.size() != read.layers.size()
            || matches.size() != saved.layers.size()) {
            return std::nullopt;
        }
        for (auto const& layer : read.layers) {
            auto const* before = saved.layer(matches.at(layer->layerId));
            auto const* origin = findOrigin(readOrigins, layer->layerId);
            if (origin->isOfLocalSource && before->name != layer->name) {
                return std::nullopt;
            }
            if (before->outline != layer->outline) {
                redrawn.emplace(before->layerId, std::pair(before->outline, layer->outline));
            }
        }
        return redrawn;
    }

    /// Those that are drawn otherwise here, or are gone, are left: taken out and returned.
    static std::set<std::string> takeOutlines(TLGlyphState& glyph, TLDocumentHistory::Redrawn& redrawn)
    {
        std::set<std::string> left;
        for (auto const& [layerId, outlines] : redrawn) {
            auto const* layer = glyph.layer(layerId);
            if (!layer || (layer->outline != outlines.first && layer->outline != outlines.second)) {
                left.insert(layerId);
            }
        }
        std::erase_if(redrawn, [&left](auto const& entry) { return left.contains(entry.first); });
        for (auto& layer : glyph.layers) {
            auto const entry = redrawn.find(layer->layerId);
            if (entry != redrawn.end()) {
                auto state = *layer;
                state.outline = entry->second.second;
                layer = std::make_shared<TLLayerState const>(std::move(state));
            }
        }
        return left;
    }

    /// Of the files that were followed it is remembered how they are now; not of those that were left.
    void acceptFiles(std::string const& name, std::vector<LayerOrigin> const& origins,
        std::set<std::string> const& left, std::map<Path, FileStamp> const& stamps)
    {
        std::map<Path, bool> isLeft;
        for (auto const& origin : origins) {
            if (auto const path = m_family->family().glifPath(origin.ufo, origin.ufoLayer, name)) {
                isLeft[*path] = isLeft[*path] || left.contains(origin.layerId);
            }
        }
        for (auto const& [path, stays] : isLeft) {
            auto const stamp = stamps.find(path);
            if (!stays && stamp != stamps.end()) {
                m_files.setStamp(path, stamp->second);
            }
        }
    }

    static bool hasNewProblem(TLGlyphState const& before, TLGlyphState const& after)
    {
        auto const problems = [](TLGlyphState const& state) {
            return std::count_if(state.layers.begin(), state.layers.end(),
                [](auto const& layer) { return layer->problem.has_value(); });
        };
        return problems(after) > problems(before);
    }

    void bringUpToDate(TLGlyph& glyph, TLGlyph const& read, std::vector<LayerOrigin> origins)
    {
        auto const before = glyph.state();
        auto after = read.state();
        auto const font = m_font->state();
        auto const matches = matchLayers(after, origins, before, m_family->originsOf(glyph.name()), font);
        UniqueNames identifiers;
        for (auto const& [readId, layerId] : matches) {
            identifiers.take(layerId);
        }
        for (auto& layer : after.layers) {
            auto const match = matches.find(layer->layerId);
            auto const layerId = match == matches.end() ? identifiers.take(layer->layerId) : match->second;
            auto const origin = std::find_if(origins.begin(), origins.end(),
                [&layer](auto const& candidate) { return candidate.layerId == layer->layerId; });
            origin->layerId = layerId;
            auto state = *layer;
            state.layerId = layerId;
            layer = std::make_shared<TLLayerState const>(std::move(state));
        }
        glyph.setUnicodes(read.unicodes());
        m_family->setOrigins(glyph.name(), std::move(origins));
        if (after != before) {
            glyph.restore(after);
            m_font->history().didReload(glyph);
            m_outcome.anything = true;
        }
    }

    std::shared_ptr<TLFont> m_font;
    std::shared_ptr<FamilyGlyphSource> m_family;
    FamilyFiles& m_files;
    std::set<Path> m_changed;
    std::map<std::string, TLGlyphState> m_modified;
    TLReloadOutcome m_outcome;
};

} // namespace

std::vector<std::filesystem::path> TLFilesToWatch(TLFont const& font)
{
    std::set<Path> paths;
    if (auto const family = std::dynamic_pointer_cast<FamilyGlyphSource>(font.glyphSource())) {
        for (auto const& [path, stamp] : family->files()->stamps()) {
            paths.insert(path);
            paths.insert(path.has_parent_path() ? path.parent_path() : Path("."));
        }
    }
    return { paths.begin(), paths.end() };
}

TLReloadOutcome TLReloadChangedFiles(std::shared_ptr<TLFont> const& font)
{
    auto const family = std::dynamic_pointer_cast<FamilyGlyphSource>(font->glyphSource());
    return family ? Reload(font, family).run() : TLReloadOutcome {};
}
