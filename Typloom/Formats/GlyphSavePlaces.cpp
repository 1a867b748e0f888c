// Where a GlyphSave puts the layers that do not stay in their files.

#include "Typloom/Formats/GlyphSave.h"

#include <algorithm>

void GlyphSave::place(Work& work, std::string ufo, std::string ufoLayer, bool isOfOwnSource)
{
    work.target = { work.after->layerId, std::move(ufo), std::move(ufoLayer), isOfOwnSource };
    work.isPlaced = true;
}

void GlyphSave::place(Work& work)
{
    auto const* removed = m_family.removedLayer(m_name, work.after->layerId);
    if (removed && work.text.empty()) {
        work.text = removed->text;
    }
    auto const* former = removed && m_files.hasUfo(removed->origin.ufo) ? &removed->origin : nullptr;
    if (work.after->kind == TLLayerKind::master) {
        auto const* master = m_sources.master(work.after->layerId);
        if (!master) {
            throw SaveProblem { whatLayer(*work.after) + " belongs to no master." };
        }
        return place(work, master->ufo, master->ufoLayer, false);
    }
    if (work.after->kind == TLLayerKind::other) {
        auto const ufo = former ? former->ufo : m_sources.ufoFor(work.after->associatedMasterId);
        auto const wanted = former ? former->ufoLayer : m_sources.nameFor(*work.after, {});
        return place(work, ufo, freeLayer(ufo, wanted), false);
    }
    if (namesOwnAxis(*work.after) || !placeSparse(work, former)) {
        placeOwnSource(work, former);
    }
}

/// False when the place is taken.
bool GlyphSave::placeSparse(Work& work, LayerOrigin const* former)
{
    auto const& coordinates = work.after->coordinates;
    auto const standing = m_sources.standingAt(coordinates);
    for (auto const* source : standing) {
        auto const others = std::count_if(
            m_sources.sources().begin(), m_sources.sources().end(), [source](auto const& other) {
                return other.ufo == source->ufo && other.ufoLayer == source->ufoLayer;
            });
        if (source->kind == TLLayerKind::brace && others == 1 && !isUsed(source->ufo, source->ufoLayer)) {
            place(work, source->ufo, source->ufoLayer, false);
            return true;
        }
    }
    if (!standing.empty()) {
        return false;
    }
    auto const ufo = former ? former->ufo : m_sources.ufoFor(work.after->associatedMasterId);
    auto const name = former ? former->ufoLayer : m_sources.nameFor(*work.after, {});
    auto const source = m_sources.addSparse(coordinates, ufo, name);
    place(work, source.ufo, source.ufoLayer, false);
    return true;
}

void GlyphSave::placeOwnSource(Work& work, LayerOrigin const* former)
{
    auto const& layer = *work.after;
    auto const name = m_sources.nameFor(layer, m_states.after.glyph.axes);
    auto const wanted = former ? former->ufoLayer : name;
    auto const standing = m_sources.standingAt(layer.coordinates);
    auto const ufo = standing.empty() ? m_sources.ufoFor(layer.associatedMasterId) : standing.front()->ufo;
    if (standing.empty()) {
        m_sources.addSparse(layer.coordinates, ufo, m_sources.nameFor(layer.coordinates));
    }
    auto const ufoLayer = freeLayer(ufo, wanted);
    work.ownSource = designspace().addSource(layer, name, ufoLayer);
    place(work, ufo, ufoLayer, true);
}

/// Whether the glyph has a file there, or shall have one.
bool GlyphSave::isUsed(std::string const& ufo, std::string const& ufoLayer) const
{
    return m_files.hasGlyph(ufo, ufoLayer, m_name)
        || std::any_of(m_work.begin(), m_work.end(), [&](Work const& work) {
               return work.isPlaced && work.target.ufo == ufo && work.target.ufoLayer == ufoLayer;
           });
}

/// A layer that no source of the family brings and that has nothing of the glyph.
std::string GlyphSave::freeLayer(std::string const& ufo, std::string const& wanted)
{
    bool const isFree = m_files.layerNamed(ufo, wanted) && !m_sources.isOfSource(ufo, wanted)
        && wanted != m_files.defaultLayer(ufo) && !isUsed(ufo, wanted);
    return isFree ? wanted : m_files.addLayer(ufo, wanted);
}

/// A layer whose axis was deleted stands where a master does; files hold that, but it says nothing there.
void GlyphSave::tellOfSharedPlaces()
{
    for (auto const& work : m_work) {
        if (!work.target.isOfLocalSource || namesOwnAxis(*work.after)) {
            continue;
        }
        auto const place = m_sources.fontPlace(work.after->coordinates);
        auto const other = std::find_if(m_work.begin(), m_work.end(), [&](Work const& candidate) {
            auto const* master = m_sources.master(candidate.after->layerId);
            bool const isSource = &candidate != &work && candidate.after->kind != TLLayerKind::other
                && !namesOwnAxis(*candidate.after);
            return isSource
                && (master ? master->coordinates : m_sources.fontPlace(candidate.after->coordinates))
                == place;
        });
        if (other != m_work.end()) {
            auto const& name = other->after->name;
            m_notes.push_back(whatLayer(*work.after) + " stands where "
                + inQuotes(name.empty() ? other->after->layerId : name)
                + " stands. It is kept, but other programs will not interpolate the glyph until it is moved "
                  "or "
                  "deleted.");
        }
    }
}
