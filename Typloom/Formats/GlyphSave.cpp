#include "Typloom/Formats/GlyphSave.h"

#include <algorithm>

namespace {

/// Property lists are XML, which can't hold every character.
bool canBeStored(std::string_view text)
{
    return xmlUnescaped(xmlEscaped(text)) == text;
}

} // namespace

GlyphSave::GlyphSave(std::string glyphName, std::vector<char32_t> const& unicodes, States states,
    SourceDraft& sources, FamilyGlyphSource const& family, bool replacesLostFiles)
    : m_name(std::move(glyphName))
    , m_unicodes(unicodes)
    , m_states(states)
    , m_sources(sources)
    , m_files(sources.files())
    , m_family(family)
    , m_replacesLostFiles(replacesLostFiles)
{
}

void GlyphSave::run()
{
    checkNames();
    replaceLostFiles();
    openDesignspace();
    collect();
    for (auto& work : m_work) {
        decide(work);
    }
    takeAway();
    for (auto& work : m_work) {
        if (!work.isPlaced) {
            place(work);
        }
    }
    tellOfSharedPlaces();
    writeFiles();
    writeDesignspace();
}

std::vector<LayerOrigin> GlyphSave::origins() const
{
    std::vector<LayerOrigin> origins;
    for (auto const& work : m_work) {
        origins.push_back(work.target);
    }
    return origins;
}

void GlyphSave::checkNames() const
{
    std::set<std::string> names;
    for (auto const& axis : m_states.after.glyph.axes) {
        auto const fail = [&](std::string const& what, char const* advice) {
            throw SaveProblem { "The glyph " + inQuotes(m_name) + " has " + what
                + ", which files can't hold. " + advice };
        };
        if (axis.name.empty()) {
            fail("an axis without a name", "Give it one.");
        } else if (!names.insert(axis.name).second) {
            fail("two axes with the name " + inQuotes(axis.name), "Give one of them another name.");
        } else if (!canBeStored(axis.name)) {
            fail("an axis " + inQuotes(axis.name) + " with a character in its name", "Give it another name.");
        }
    }
}

bool GlyphSave::hasOwnDesignspace() const
{
    auto const origins = m_family.originsOf(m_name);
    return !m_states.before.glyph.axes.empty() || !m_states.after.glyph.axes.empty()
        || std::any_of(
            origins.begin(), origins.end(), [](auto const& origin) { return origin.isOfLocalSource; });
}

std::string GlyphSave::whatLayer(TLLayerState const& layer) const
{
    return "The layer " + inQuotes(layer.name.empty() ? layer.layerId : layer.name) + " of glyph "
        + inQuotes(m_name);
}

/// As `Family::axisHolder`, in the draft.
PlannedSource const* GlyphSave::axisHolder() const
{
    auto const holds = [this](PlannedSource const& source) {
        auto const& layer = m_files.defaultLayer(source.ufo);
        return source.kind == TLLayerKind::master && m_files.hasGlyph(source.ufo, layer, m_name);
    };
    auto const* source = m_sources.defaultSource();
    if (source && holds(*source)) {
        return source;
    }
    auto const& sources = m_sources.sources();
    auto const holder = std::find_if(sources.begin(), sources.end(), holds);
    return holder == sources.end() ? nullptr : &*holder;
}

void GlyphSave::openDesignspace()
{
    auto const* source = axisHolder();
    if (!source) {
        return;
    }
    m_holder = { source->ufo, m_files.defaultLayer(source->ufo) };
    if (source != m_sources.defaultSource() && !m_states.after.glyph.axes.empty()) {
        m_notes.push_back("The glyph " + inQuotes(m_name)
            + " is not in the default master: other programs will not know its axes.");
    }
    auto const path = m_files.glifPath(m_holder->first, m_holder->second, m_name);
    if (!hasOwnDesignspace() && !isWhole(path)) {
        return; // Nothing of it is to be changed.
    }
    auto glif = readDraft(path);
    m_designspace.emplace(m_name, std::move(glif.glyphDesignspace).value_or(PlistValue {}),
        std::move(glif.glyphAxes).value_or(PlistValue {}), m_states.before, m_states.after);
}

GlyphDesignspaceEdit& GlyphSave::designspace()
{
    if (!m_designspace && m_holder) {
        readDraft(m_files.glifPath(m_holder->first, m_holder->second, m_name)); // Says why not.
    }
    if (!m_designspace) {
        throw SaveProblem { "The glyph " + inQuotes(m_name)
            + " has axes or layers of its own but none in a master, where files keep them." };
    }
    return *m_designspace;
}

void GlyphSave::collect()
{
    auto const origins = m_family.originsOf(m_name);
    auto const takeSource = [this](TLLayerState const& layer, LayerOrigin const& origin) {
        bool const isDefault = origin.ufoLayer == m_files.defaultLayer(origin.ufo);
        return origin.isOfLocalSource && m_designspace
            ? m_designspace->takeSource(layer, origin.ufoLayer, isDefault)
            : std::nullopt;
    };
    std::map<std::string, Work> known;
    for (auto const& origin : origins) {
        Work work;
        work.before = m_states.before.glyph.layer(origin.layerId);
        work.origin = origin;
        if (work.before) {
            work.ownSource = takeSource(*work.before, origin);
            known.emplace(origin.layerId, std::move(work));
        }
    }
    for (auto const& layer : m_states.after.glyph.layers) {
        auto const entry = known.find(layer->layerId);
        auto& work = m_work.emplace_back(entry == known.end() ? Work {} : entry->second);
        work.after = layer.get();
        known.erase(layer->layerId);
    }
    for (auto const& [layerId, work] : known) {
        bool const isOfRemovedMaster = work.before->kind == TLLayerKind::master && !m_sources.master(layerId);
        if (work.ownSource) {
            designspace().removeSource(*work.ownSource);
            m_sources.leave(work.before->coordinates);
        }
        if (!isOfRemovedMaster) {
            auto const path = m_files.glifPath(work.origin->ufo, work.origin->ufoLayer, m_name);
            m_removed.push_back({ *work.origin, m_files.textOf(path) });
        }
    }
}

bool GlyphSave::namesOwnAxis(TLLayerState const& layer) const
{
    return std::any_of(layer.coordinates.begin(), layer.coordinates.end(), [this](auto const& entry) {
        auto const& axes = m_states.after.glyph.axes;
        return std::any_of(axes.begin(), axes.end(), [&entry](TLAxisState const& axis) {
            return axis.axisId == entry.first
                || std::find(axis.partIds.begin(), axis.partIds.end(), entry.first) != axis.partIds.end();
        });
    });
}

bool GlyphSave::movesInFont(Work const& work) const
{
    return m_sources.fontPlace(work.before->coordinates) != m_sources.fontPlace(work.after->coordinates);
}

/// Whether a layer stays in its file.
void GlyphSave::decide(Work& work)
{
    if (!work.origin) {
        return;
    }
    bool const isIntermediate = work.after->kind == TLLayerKind::brace;
    if (isIntermediate && work.origin->isOfLocalSource) {
        return decideOwnSource(work);
    }
    bool const stays = !isIntermediate || (!movesInFont(work) && !namesOwnAxis(*work.after));
    if (stays) {
        place(work, work.origin->ufo, work.origin->ufoLayer, false);
    }
}

void GlyphSave::decideOwnSource(Work& work)
{
    auto const& [ufo, ufoLayer] = fileOf(*work.origin);
    auto const standing = m_sources.standingAt(work.after->coordinates);
    auto const isOfUfo = [&ufo = ufo](PlannedSource const* source) { return source->ufo == ufo; };
    bool const stays
        = !movesInFont(work) || standing.empty() || std::any_of(standing.begin(), standing.end(), isOfUfo);
    if (movesInFont(work)) {
        m_sources.leave(work.before->coordinates);
    }
    if (!stays || !work.ownSource) {
        if (work.ownSource) {
            designspace().removeSource(*work.ownSource);
        }
        work.ownSource.reset();
        return;
    }
    if (standing.empty()) {
        m_sources.addSparse(work.after->coordinates, ufo, m_sources.nameFor(work.after->coordinates));
    }
    designspace().moveSource(*work.ownSource, *work.before, *work.after);
    place(work, ufo, ufoLayer, true);
}

/// Takes the texts of files that are left, and the files away unless another layer stays in them.
void GlyphSave::takeAway()
{
    std::set<File> kept;
    std::set<File> left;
    for (auto& work : m_work) {
        if (work.isPlaced) {
            kept.insert(fileOf(work.target));
        } else if (work.origin) {
            auto const& [ufo, ufoLayer] = *left.insert(fileOf(*work.origin)).first;
            work.text = m_files.textOf(m_files.glifPath(ufo, ufoLayer, m_name));
        }
    }
    for (auto const& layer : m_removed) {
        left.insert(fileOf(layer.origin));
    }
    for (auto const& file : left) {
        if (!kept.contains(file) && m_holder != file) {
            m_files.removeGlyph(file.first, file.second, m_name);
            m_sources.leaveLayer(file.first, file.second);
        }
    }
}
