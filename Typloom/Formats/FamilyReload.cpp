#include "Typloom/Formats/FamilyReload.h"

#include "Typloom/Formats/FamilyOpener.h"
#include "Typloom/Formats/FileReading.h"
#include "Typloom/Formats/GlyphLoader.h"
#include "Typloom/Formats/GlyphReload.h"
#include "Typloom/Formats/XmlDocument.h"
#include "Typloom/TyploomCore/TLDocumentHistory.h"

#include <algorithm>
#include <set>

namespace {

using Path = std::filesystem::path;

/// Ends a trial: the document would change.
struct WouldChange { };

class Reload {
public:
    Reload(std::shared_ptr<TLFont> font, std::shared_ptr<FamilyGlyphSource> family, bool isTrial)
        : m_font(std::move(font))
        , m_family(std::move(family))
        , m_files(*m_family->files())
        , m_isTrial(isTrial)
    {
        for (auto const& [path, stamp] : m_files.stamps()) {
            if (hasChanged(path, stamp)) {
                m_changed.insert(path);
            }
        }
    }

    TLReloadOutcome run()
    {
        readLostGlyphs();
        if (m_changed.empty()) {
            return std::move(m_outcome);
        }
        if (!m_isTrial) {
            m_font->history().endStep();
        }
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
    /// What could not be read before may be there again.
    void readLostGlyphs()
    {
        for (auto const& [name, glyph] : std::map(m_font->loadedGlyphs())) {
            if (!glyph) {
                readGlyph(name, glyph);
            }
        }
    }

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
            if (source.kind == TLLayerKind::master) {
                known.masterIds[source.ufo->displayName()].push_back(source.id);
            }
        }
        for (auto const* source : m_family->family().sourcesBeside(m_changed)) {
            known.ufos.emplace(source->ufo->displayName(), source->ufo);
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
        auto const state = (*opened)->state();
        bool const differs = state != m_font->state();
        if (differs) {
            willChange();
        }
        trial.accept();
        for (auto const& sentence : (*opened)->report()) {
            m_font->addToReport(sentence);
        }
        if (differs) {
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
            return !path || m_changed.contains(*path);
        });
    }

    bool isRemoved(std::string const& name) const
    {
        auto const origins = m_family->originsOf(name);
        return !origins.empty()
            && std::none_of(origins.begin(), origins.end(), [&](LayerOrigin const& origin) {
                   return m_family->family().glifPath(origin.ufo, origin.ufoLayer, name);
               });
    }

    void readGlyph(std::string const& name, std::shared_ptr<TLGlyph> const& glyph)
    {
        if (m_modified.contains(name)) {
            auto const what = isRemoved(name)                 ? " was removed by another program; "
                : isConcerned(name) && !mergeOutlines(*glyph) ? " was changed by another program; "
                                                              : "";
            if (!std::string_view(what).empty()) {
                m_outcome.sentences.push_back("The glyph " + inQuotes(name) + what
                    + "it is left as it is here, since it has changes that are not saved.");
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
        auto redrawn = redrawnLayers(
            { saved, origins }, { read->state(), loader.origins() }, m_font->history().savedFont());
        if (!redrawn) {
            return false;
        }
        auto now = glyph.state();
        auto const left = takeOutlines(now, *redrawn);
        if (!redrawn->empty()) {
            willChange();
            glyph.restore(now);
            m_font->history().didReloadOutlines(glyph.name(), *redrawn);
            m_outcome.anything = true;
        }
        for (auto const& path : filesOf(m_family->family(), glyph.name(), origins, left)) {
            if (auto const stamp = stamps.find(path); stamp != stamps.end()) {
                m_files.setStamp(path, stamp->second);
            }
        }
        return left.empty();
    }

    void bringUpToDate(TLGlyph& glyph, TLGlyph const& read, std::vector<LayerOrigin> origins)
    {
        auto const before = glyph.state();
        auto after = read.state();
        keepIdentifiers(after, origins, { before, m_family->originsOf(glyph.name()) }, m_font->state());
        bool const hasOtherUnicodes = glyph.unicodes() != read.unicodes();
        if (after != before || hasOtherUnicodes) {
            willChange();
        }
        glyph.setUnicodes(read.unicodes());
        m_family->setOrigins(glyph.name(), std::move(origins));
        if (after != before) {
            glyph.restore(after);
            m_font->history().didReload(glyph);
        }
        m_outcome.anything = m_outcome.anything || after != before || hasOtherUnicodes;
    }

    void willChange() const
    {
        if (m_isTrial) {
            throw WouldChange {};
        }
    }

    std::shared_ptr<TLFont> m_font;
    std::shared_ptr<FamilyGlyphSource> m_family;
    FamilyFiles& m_files;
    std::set<Path> m_changed;
    bool m_isTrial; ///< Nothing of the document may change.
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

TLReloadOutcome TLReloadChangedFiles(
    std::shared_ptr<TLFont> const& font, std::function<void()> const& willChange)
{
    auto const family = std::dynamic_pointer_cast<FamilyGlyphSource>(font->glyphSource());
    if (!family) {
        return {};
    }
    if (willChange) {
        auto const before = family->family();
        StampTrial trial(*family->files());
        try {
            auto outcome = Reload(font, family, true).run();
            trial.accept();
            return outcome;
        } catch (WouldChange const&) {
            family->setFamily(before);
        }
    }
    if (willChange) {
        willChange();
    }
    return Reload(font, family, false).run();
}
