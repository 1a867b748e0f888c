// What a GlyphSave writes, once it knows where each layer lies.

#include "Typloom/Formats/GlyphSave.h"

#include "Typloom/Formats/GlifEdit.h"
#include "Typloom/Formats/PlistEdit.h"

#include <algorithm>
#include <span>

Glif GlyphSave::readDraft(std::filesystem::path const& path)
{
    auto glif = readGlif(m_files.textOf(path), path.filename().string());
    if (!glif) {
        throw SaveProblem { glif.error().sentence() };
    }
    return std::move(*glif);
}

bool GlyphSave::isWhole(std::filesystem::path const& path)
try {
    readDraft(path);
    return true;
} catch (SaveProblem const&) {
    return false;
}

/// What another program took out of the lists is put back. What it broke or removed is, when that was agreed.
void GlyphSave::replaceLostFiles()
{
    for (auto const& origin : m_family.originsOf(m_name)) {
        auto const* before = m_states.before.glyph.layer(origin.layerId);
        auto const* after = m_states.after.glyph.layer(origin.layerId);
        bool const wasRead = before && !before->problem && m_files.hasUfo(origin.ufo)
            && m_files.layerNamed(origin.ufo, origin.ufoLayer);
        if (!wasRead) {
            continue;
        }
        auto const text = [&] { return glifText(m_name, m_unicodes, (after ? after : before)->outline); };
        if (!m_files.hasGlyph(origin.ufo, origin.ufoLayer, m_name)) {
            m_files.addGlyph(origin.ufo, origin.ufoLayer, m_name, text());
            continue;
        }
        auto const path = m_files.glifPath(origin.ufo, origin.ufoLayer, m_name);
        if (m_replacesLostFiles && !isWhole(path)) {
            m_files.create(path, text());
            m_files.list(origin.ufo, origin.ufoLayer, m_name);
        }
    }
}

void GlyphSave::writeFiles()
{
    std::map<File, std::vector<Work*>> users;
    for (auto& work : m_work) {
        users[fileOf(work.target)].push_back(&work);
    }
    for (auto const& [file, sharing] : users) {
        writeFile(file, sharing);
    }
}

void GlyphSave::writeFile(File const& file, std::vector<Work*> const& users)
{
    auto const& [ufo, ufoLayer] = file;
    bool const isThere = m_files.hasGlyph(ufo, ufoLayer, m_name);
    bool const changes
        = std::any_of(users.begin(), users.end(), [](auto* work) { return work->changesOutline(); });
    if (isThere && !changes) {
        return;
    }
    auto const outline = settle(users);
    if (!isThere) {
        m_files.addGlyph(ufo, ufoLayer, m_name, textFor(*users.front()));
    }
    auto const path = m_files.glifPath(ufo, ufoLayer, m_name);
    auto const now = readDraft(path).outline;
    if (now != outline) {
        changeOutline(m_files.edit(path), now, outline);
    }
}

/// What a shared file is to draw. Layers of the glyph's own sources that differ leave it.
TLOutline GlyphSave::settle(std::vector<Work*> const& users)
{
    auto sorted = users;
    auto const rank = [](Work const* work) {
        bool const isOwn = work->target.isOfLocalSource;
        // Sources of the family give way to the one that was changed, others to those that were not.
        return std::pair(isOwn, isOwn == work->changesOutline());
    };
    std::stable_sort(sorted.begin(), sorted.end(),
        [&rank](auto const* one, auto const* other) { return rank(one) < rank(other); });
    auto const& outline = sorted.front()->after->outline;
    for (auto* work : std::span(sorted).subspan(1)) {
        if (work->after->outline == outline) {
            continue;
        }
        if (work->target.isOfLocalSource) {
            part(*work);
        } else if (work->changesOutline()) {
            throw SaveProblem { whatLayer(*work->after) + " and " + inQuotes(sorted.front()->after->name)
                + " are one file and were changed in two ways." };
        } else {
            m_followers.emplace_back(work->after->layerId, outline);
        }
    }
    return outline;
}

/// Gives a layer of the glyph's own sources a file of its own.
void GlyphSave::part(Work& work)
{
    auto const [ufo, shared] = fileOf(work.target);
    auto text = m_files.hasGlyph(ufo, shared, m_name) ? m_files.textOf(m_files.glifPath(ufo, shared, m_name))
                                                      : textFor(work);
    auto const ufoLayer = freeLayer(ufo, m_sources.nameFor(*work.after, m_states.after.glyph.axes));
    auto const own = glifTextLike(text, work.after->outline);
    if (!own) {
        throw SaveProblem { own.error().sentence() };
    }
    m_files.addGlyph(ufo, ufoLayer, m_name, *own);
    designspace().setLayerName(*work.ownSource, ufoLayer);
    place(work, ufo, ufoLayer, true);
}

/// The text to begin with: its own, else that of its master or of the default.
std::string GlyphSave::textFor(Work const& work)
{
    if (!work.text.empty()) {
        return work.text;
    }
    auto const* master
        = work.after->associatedMasterId ? m_sources.master(*work.after->associatedMasterId) : nullptr;
    for (auto const* source : { master, m_sources.defaultSource() }) {
        if (source && m_files.hasGlyph(source->ufo, source->ufoLayer, m_name)) {
            auto text = glifTextLike(
                m_files.textOf(m_files.glifPath(source->ufo, source->ufoLayer, m_name)), work.after->outline);
            if (text) {
                return *text;
            }
        }
    }
    return glifText(m_name, m_unicodes, work.after->outline);
}

void GlyphSave::writeDesignspace()
{
    if (m_states.after.glyph.axes.empty() && !m_designspace) {
        return;
    }
    auto entry = designspace().entry();
    auto identities = designspace().identities();
    auto& glif = m_files.edit(m_files.glifPath(m_holder->first, m_holder->second, m_name));
    auto const set = [&glif](std::string_view key, PlistValue const& value) {
        bool const isNothing = std::holds_alternative<std::monostate>(value.content);
        if (isNothing && findPlistEntry(glif, findLibrary(glif), key)) {
            removePlistEntry(glif, findLibrary(glif), key);
            removeEmptyLibrary(glif);
        } else if (!isNothing) {
            setPlistEntry(glif, ensureLibrary(glif), key, value);
        }
    };
    set(glyphDesignspaceKey, entry);
    set(glyphAxesKey, identities);
}
