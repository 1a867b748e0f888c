#include "Typloom/Formats/FamilyOpener.h"

#include "Typloom/Formats/DesignspaceParser.h"
#include "Typloom/Formats/FileReading.h"
#include "Typloom/Formats/SourceNames.h"
#include "Typloom/Formats/UniqueNames.h"
#include "Typloom/TyploomCore/TLDocumentHistory.h"

#include <algorithm>
#include <cmath>

namespace {

class FamilyOpener {
public:
    FamilyOpener(std::filesystem::path const& path, DesignspaceDocument document,
        std::shared_ptr<FamilyFiles> files, KnownFamily const& known)
        : m_path(path)
        , m_document(std::move(document))
        , m_files(std::move(files))
        , m_knownAxisIds(known.axisIds)
        , m_knownMasterIds(known.masterIds)
        , m_ufos(known.ufos)
    {
        for (auto const& [filename, ids] : m_knownMasterIds) {
            std::for_each(ids.begin(), ids.end(), [this](auto const& id) { m_identifiers.take(id); });
        }
    }

    Result<std::shared_ptr<TLFont>> open(std::vector<std::string> report)
    {
        m_report = std::move(report);
        addAxes();
        auto const defaultSource = findDefaultSource();
        for (std::size_t index = 0; index < m_document.sources.size(); ++index) {
            addSource(m_document.sources[index], index == defaultSource);
        }
        auto const intermediate = [](auto const& entry) { return entry.source.kind == TLLayerKind::brace; };
        std::stable_partition(m_entries.begin(), m_entries.end(), std::not_fn(intermediate));
        if (m_entries.empty() || intermediate(m_entries.front())) {
            return FormatError { m_path.string(), 0, whyThereIsNoMaster(), {} };
        }
        reportSharedPlaces();
        finish();
        m_font->history().clear(); // What was read is what the files hold.
        return m_font;
    }

private:
    struct Entry {
        FamilySource source;
        DesignspaceSource const* element;
    };

    void note(DesignspaceSource const& source, std::string const& clause)
    {
        m_report.push_back(m_document.file + ", line " + std::to_string(source.line) + ": the source "
            + shownSource(source) + " " + clause + ".");
    }

    void addAxes()
    {
        UniqueNames identifiers;
        for (auto const& [name, axisId] : m_knownAxisIds) {
            identifiers.take(axisId);
        }
        for (auto const& element : m_document.axes) {
            auto const known = m_knownAxisIds.find(element.name);
            auto const axis = std::make_shared<TLAxis>(known != m_knownAxisIds.end()
                    ? known->second
                    : identifiers.take(element.tag.empty() ? element.name : element.tag),
                element.name);
            axis->setAxisTag(element.tag.empty() ? std::nullopt : std::optional(element.tag));
            axis->setDefaultValue(element.fallback);
            axis->setBounds(element.minimum, element.maximum);
            axis->setHidden(element.hidden);
            axis->setDiscreteValues(element.discreteValues);
            m_font->insertAxis(axis, m_font->axes().size());
        }
    }

    bool standsAtDefault(DesignspaceSource const& source) const
    {
        return std::all_of(m_document.axes.begin(), m_document.axes.end(),
            [&source](auto const& axis) { return source.location.find(axis.name)->second == axis.fallback; });
    }

    /// The first source at the default that is a whole UFO, else the first sparse one there, which
    /// is then read as a master.
    std::optional<std::size_t> findDefaultSource()
    {
        std::optional<std::size_t> sparse;
        for (std::size_t index = 0; index < m_document.sources.size(); ++index) {
            auto const& source = m_document.sources[index];
            if (!standsAtDefault(source)) {
                continue;
            }
            if (!source.layer) {
                return index;
            }
            sparse = sparse ? sparse : index;
        }
        if (sparse) {
            note(m_document.sources[*sparse],
                "names a layer though it is the default; it is read as a master");
        }
        return sparse;
    }

    std::shared_ptr<Ufo const> ufoOf(DesignspaceSource const& source)
    {
        auto const known = m_ufos.find(source.filename);
        if (known != m_ufos.end()) {
            return known->second;
        }
        auto const folder = m_path.parent_path();
        auto const path = folder / source.filename;
        auto opened = Ufo::open(path, source.filename, m_report, m_files);
        std::shared_ptr<Ufo const> ufo = opened ? *opened : nullptr;
        if (!ufo) {
            m_report.push_back(opened.error().sentence());
        } else if (std::filesystem::exists(path) && !liesInside(path, folder.empty() ? "." : folder)) {
            m_report.push_back("The UFO " + inQuotes(source.filename) + " lies outside the family's folder.");
        }
        m_ufos.emplace(source.filename, ufo);
        return ufo;
    }

    void addSource(DesignspaceSource const& element, bool isDefault)
    {
        auto const ufo = ufoOf(element);
        if (!ufo) {
            return note(element, "is left out: its UFO can't be read");
        }
        auto const layer = element.layer ? ufo->layerNamed(*element.layer) : ufo->defaultLayer();
        if (!layer) {
            return note(element,
                "is left out: " + element.filename + " has no "
                    + (element.layer ? "layer " + inQuotes(*element.layer)
                                     : "default layer that can be read"));
        }
        FamilySource source;
        source.kind = element.layer && !isDefault ? TLLayerKind::brace : TLLayerKind::master;
        source.id = takeIdentifier(element, source.kind);
        source.name = sourceTitle(element, source.kind, layer == ufo->defaultLayer());
        source.masterId = source.id;
        source.ufo = ufo;
        source.layerAttribute = element.layer;
        source.element = element.element;
        source.layer = *layer;
        for (auto const& axis : m_font->axes()) {
            source.coordinates.emplace(axis->axisId(), element.location.find(axis->name())->second);
        }
        if (isDefault) {
            m_defaultId = source.id;
        }
        m_entries.push_back({ std::move(source), &element });
    }

    std::string takeIdentifier(DesignspaceSource const& element, TLLayerKind kind)
    {
        auto const known = m_knownMasterIds.find(element.filename);
        if (kind != TLLayerKind::master || known == m_knownMasterIds.end() || known->second.empty()) {
            return m_identifiers.take(sourceIdentifier(element));
        }
        auto const id = std::move(known->second.front());
        known->second.erase(known->second.begin());
        return id;
    }

    std::string whyThereIsNoMaster() const
    {
        if (m_document.sources.empty()) {
            return "it has no masters";
        }
        if (!m_entries.empty()) {
            return "it has no masters that can be read, only sparse layers";
        }
        auto const unread = std::find_if(m_report.begin(), m_report.end(),
            [](std::string const& sentence) { return sentence.starts_with("Cannot read"); });
        auto const why = unread == m_report.end() ? m_report.back() : *unread;
        return "none of its masters can be read (" + why.substr(0, why.size() - 1) + ")";
    }

    void reportSharedPlaces()
    {
        std::map<TLCoordinates, Entry const*> places;
        for (auto const& entry : m_entries) {
            auto const [place, isNew] = places.emplace(entry.source.coordinates, &entry);
            if (!isNew) {
                note(*entry.element, "stands where " + shownSource(*place->second->element) + " stands");
            }
        }
        if (m_defaultId.empty()) {
            m_report.push_back(m_document.file
                + ": no source that can be read stands at the default of every axis; glyphs can't be "
                  "interpolated.");
        }
    }

    /// Squared distance in lengths of the axes.
    double distance(FamilySource const& one, FamilySource const& other) const
    {
        double sum = 0;
        for (auto const& axis : m_font->axes()) {
            double const length = axis->maximum() - axis->minimum();
            double const difference = one.coordinates.find(axis->axisId())->second
                - other.coordinates.find(axis->axisId())->second;
            sum += length > 0 ? std::pow(difference / length, 2) : 0;
        }
        return sum;
    }

    /// A layer belongs to the master of its UFO; where there is none or more than one, to the nearest.
    std::string associatedMaster(FamilySource const& layer, std::size_t masterCount) const
    {
        auto const ofSameUfo = [&layer](Entry const& entry) { return entry.source.ufo == layer.ufo; };
        auto const masters = std::span(m_entries).first(masterCount);
        bool const hasSameUfo = std::any_of(masters.begin(), masters.end(), ofSameUfo);
        Entry const* nearest = nullptr;
        for (auto const& master : masters) {
            bool const counts = !hasSameUfo || ofSameUfo(master);
            if (counts && (!nearest || distance(master.source, layer) < distance(nearest->source, layer))) {
                nearest = &master;
            }
        }
        return nearest->source.id;
    }

    void finish()
    {
        Family family;
        for (auto& [source, element] : m_entries) {
            if (source.kind == TLLayerKind::master) {
                addMaster(source);
            } else {
                source.masterId = associatedMaster(source, m_font->fontMasters().size());
            }
            if (source.id == m_defaultId) {
                family.defaultSource = family.sources.size();
            }
            family.sources.push_back(source);
        }
        auto const reference = family.defaultSource.value_or(0);
        auto const& named = m_entries[reference].element->familyName;
        auto const& inUfo = family.sources[reference].ufo->familyName();
        m_font->setFamilyName(!named.empty() ? named : !inUfo.empty() ? inUfo : m_path.stem().string());
        m_font->setPath(m_path);
        m_font->setGlyphSource(std::make_shared<FamilyGlyphSource>(std::move(family), m_files));
        for (auto& sentence : m_report) {
            m_font->addToReport(std::move(sentence));
        }
    }

    void addMaster(FamilySource const& source)
    {
        auto const master = std::make_shared<TLFontMaster>(source.id, source.name);
        for (auto const& [axisId, value] : source.coordinates) {
            master->setAxisInternalValue(value, axisId);
        }
        master->setMetrics(source.ufo->metrics());
        m_font->insertMaster(master, m_font->fontMasters().size());
    }

    std::filesystem::path m_path;
    DesignspaceDocument m_document;
    std::shared_ptr<TLFont> m_font { std::make_shared<TLFont>() };
    std::vector<std::string> m_report;
    std::shared_ptr<FamilyFiles> m_files;
    std::map<std::string, std::string, std::less<>> m_knownAxisIds;
    std::map<std::string, std::vector<std::string>, std::less<>> m_knownMasterIds; ///< Those not yet met.
    std::map<std::string, std::shared_ptr<Ufo const>, std::less<>> m_ufos; ///< Null: can't be read.
    std::vector<Entry> m_entries;
    UniqueNames m_identifiers;
    std::string m_defaultId;
};

} // namespace

Result<std::shared_ptr<TLFont>> openFamily(
    std::filesystem::path const& path, std::shared_ptr<FamilyFiles> files, KnownFamily const& known)
{
    std::vector<std::string> report;
    auto document = readDesignspace(path, *files, report);
    if (!document) {
        return document.error();
    }
    return FamilyOpener(path, std::move(*document), std::move(files), known).open(std::move(report));
}
