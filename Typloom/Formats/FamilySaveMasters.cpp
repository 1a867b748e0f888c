// What a FamilySavePlan makes of the masters.

#include "Typloom/Formats/FamilySavePlan.h"

#include "Typloom/Formats/AxisSearch.h"
#include "Typloom/Formats/NewMaster.h"

#include <algorithm>

void FamilySavePlan::saveMasters()
{
    for (auto const& master : m_before.masters) {
        if (!masterWithId(m_after.masters, master.id)) {
            m_sources.removeMaster(master.id);
        }
    }
    XmlElement last;
    for (auto const& master : m_after.masters) {
        if (auto const* before = masterWithId(m_before.masters, master.id)) {
            changeMaster(*before, master);
        } else {
            addMaster(master, last);
        }
        last = m_sources.master(master.id)->element;
    }
}

void FamilySavePlan::changeMaster(TLMasterState const& before, TLMasterState const& after)
{
    auto const* source = m_sources.master(after.id);
    if (!source) {
        throw SaveProblem { "The master " + inQuotes(after.name) + " has no source." };
    }
    auto& designspace = m_sources.designspace();
    if (before.name != after.name) {
        designspace.setStyleName(source->element, after.name);
    }
    auto const place = m_sources.fontPlace(coordinatesOf(after));
    for (auto const& axis : m_after.axes) {
        auto const* axisBefore = axisWithId(m_before.axes, axis.axisId);
        auto const was = before.values.find(axis.axisId);
        double const old = was != before.values.end() ? was->second : axis.defaultValue;
        double const now = place.find(axis.axisId)->second;
        if (now != old || (!axisBefore && now != axis.defaultValue)) {
            designspace.setPlace(source->element, axis.name, now);
        }
    }
    m_sources.moveMaster(after.id, place);
}

void FamilySavePlan::addMaster(TLMasterState const& master, XmlElement behind)
{
    auto const* like = m_sources.nearestMaster(coordinatesOf(master));
    auto const ufo = addMasterUfo(m_files, like->ufo, master.name);
    m_madeUfos.push_back(ufo);
    m_notes.push_back("The new master " + inQuotes(master.name) + " has its metrics, features"
        + (m_files.versionOf(like->ufo) > 2 ? ", groups and kerning from " : " from ") + inQuotes(like->ufo)
        + ", the nearest master."
        + (m_files.versionOf(like->ufo) > 2
                ? ""
                : " Groups and kerning of a UFO of version 2 mean something else there and were not taken."));
    auto const place = coordinatesOf(master);
    auto const name = m_sources.uniqueName(
        (m_font.familyName().empty() ? std::string {} : m_font.familyName() + " ") + master.name);
    auto const element = m_sources.designspace().addSource(
        { ufo, name, master.name, std::nullopt, m_sources.location(place) }, behind);
    m_sources.add({ TLLayerKind::master, master.id, ufo, m_files.defaultLayer(ufo),
        m_sources.fontPlace(place), element });
}

/// That of a new master that was undone goes, if it is as it was made and nothing names it.
void FamilySavePlan::removeMadeUfo(std::string const& ufo)
{
    auto const& sources = m_sources.sources();
    bool const isNamed = std::any_of(
        sources.begin(), sources.end(), [&ufo](PlannedSource const& source) { return source.ufo == ufo; });
    if (isNamed || !m_files.hasUfo(ufo) || m_files.layerNames(ufo).size() != 1) {
        return;
    }
    std::vector<std::filesystem::path> files;
    auto const& stamps = m_family.files()->stamps();
    std::error_code problem;
    for (auto const& entry :
        std::filesystem::recursive_directory_iterator(m_files.folderOf(ufo).lexically_normal(), problem)) {
        auto const stamp = stamps.find(entry.path());
        bool const isOurs = stamp != stamps.end() && !hasChanged(entry.path(), stamp->second);
        if (!isOurs && (entry.is_symlink() || !entry.is_directory())) {
            return;
        }
        if (isOurs) {
            files.push_back(entry.path());
        }
    }
    std::for_each(files.begin(), files.end(), [this](auto const& file) { m_files.remove(file); });
}
