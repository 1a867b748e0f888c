#include "Typloom/Formats/FamilyDraft.h"

#include "Typloom/Formats/FileReading.h"
#include "Typloom/Formats/PlistEdit.h"

#include <algorithm>

namespace {

template <class T> T unwrap(Result<T> result)
{
    if (!result) {
        throw SaveProblem { result.error().sentence() };
    }
    return std::move(*result);
}

PlistValue text(std::string value)
{
    return { std::move(value) };
}

} // namespace

FamilyDraft::FamilyDraft(Path designspace, Family const& family)
    : m_designspace(designspace.lexically_normal())
{
    for (auto const& source : family.sources) {
        auto const& ufo = *source.ufo;
        m_ufos.try_emplace(ufo.displayName(), UfoDraft { ufo.folder(), ufo.version(), ufo.layers() });
    }
}

std::string FamilyDraft::nameOf(Path const& path) const
{
    return path.lexically_relative(m_designspace.parent_path()).string();
}

XmlEdit& FamilyDraft::edit(Path const& givenPath)
{
    auto const path = givenPath.lexically_normal();
    auto& edit = m_edits[path];
    if (edit) {
        return *edit;
    }
    auto const other = m_others.find(path);
    bool const isNew = other != m_others.end() && other->second;
    auto text = isNew ? *other->second : unwrap(readFile(path, nameOf(path)));
    if (isNew) {
        m_others.erase(other);
    } else {
        m_onDisk.emplace(path, text);
    }
    edit = std::make_unique<XmlEdit>(unwrap(XmlEdit::parse(std::move(text), nameOf(path))));
    return *edit;
}

void FamilyDraft::create(Path const& path, std::string text)
{
    m_others.insert_or_assign(path.lexically_normal(), std::move(text));
}

void FamilyDraft::remove(Path const& givenPath)
{
    auto const path = givenPath.lexically_normal();
    m_edits.erase(path);
    m_onDisk.erase(path);
    m_others.erase(path);
    std::error_code problem;
    if (std::filesystem::exists(path, problem)) {
        m_others.emplace(path, std::nullopt);
    }
}

std::string FamilyDraft::textOf(Path const& givenPath)
{
    auto const path = givenPath.lexically_normal();
    if (auto const edit = m_edits.find(path); edit != m_edits.end()) {
        return edit->second->result();
    }
    if (auto const other = m_others.find(path); other != m_others.end() && other->second) {
        return *other->second;
    }
    return unwrap(readFile(path, nameOf(path)));
}

std::optional<std::size_t> FamilyDraft::findLayer(std::string const& ufo, std::string_view name) const
{
    auto const& layers = m_ufos.at(ufo).layers;
    auto const found = std::find_if(
        layers.begin(), layers.end(), [name](auto const& layer) { return layer.name == name; });
    return found == layers.end() ? std::nullopt
                                 : std::optional(static_cast<std::size_t>(found - layers.begin()));
}

UfoLayer const* FamilyDraft::layerOrNone(std::string const& ufo, std::string_view name) const
{
    auto const found = findLayer(ufo, name);
    return found ? &m_ufos.at(ufo).layers[*found] : nullptr;
}

UfoLayer& FamilyDraft::layer(std::string const& ufo, std::string_view name)
{
    auto const found = findLayer(ufo, name);
    if (!found) {
        throw SaveProblem { "The layer " + inQuotes(name) + " of " + ufo + " is gone." };
    }
    return m_ufos.at(ufo).layers[*found];
}

std::optional<std::string> FamilyDraft::layerNamed(std::string const& ufo, std::string_view name) const
{
    return findLayer(ufo, name) ? std::optional(std::string(name)) : std::nullopt;
}

std::string const& FamilyDraft::defaultLayer(std::string const& ufo) const
{
    auto const& layers = m_ufos.at(ufo).layers;
    auto const found = std::find_if(
        layers.begin(), layers.end(), [](auto const& layer) { return layer.directory == "glyphs"; });
    static std::string const none;
    return found == layers.end() ? none : found->name;
}

std::vector<std::string> FamilyDraft::layerNames(std::string const& ufo) const
{
    std::vector<std::string> names;
    for (auto const& layer : m_ufos.at(ufo).layers) {
        names.push_back(layer.name);
    }
    return names;
}

bool FamilyDraft::hasGlyph(std::string const& ufo, std::string_view name, std::string_view glyph) const
{
    auto const* found = layerOrNone(ufo, name);
    return found && found->fileNames.contains(glyph);
}

bool FamilyDraft::isEmpty(std::string const& ufo, std::string_view name) const
{
    auto const* found = layerOrNone(ufo, name);
    return found && found->fileNames.empty();
}

bool FamilyDraft::hasLayerInformation(std::string const& ufo, std::string_view name)
{
    auto used = usedNames(m_ufos.at(ufo), layer(ufo, name).directory);
    used.erase("contents.plist");
    return !used.empty();
}

FamilyDraft::Path FamilyDraft::glifPath(
    std::string const& ufo, std::string_view name, std::string_view glyph) const
{
    auto const* found = layerOrNone(ufo, name);
    if (!found || !found->fileNames.contains(glyph)) {
        throw SaveProblem { "The glyph " + inQuotes(glyph) + " is gone from the layer " + inQuotes(name)
            + " of " + ufo + "." };
    }
    return m_ufos.at(ufo).folder / found->directory / found->fileNames.find(glyph)->second;
}

/// With the names that lie there though nothing lists them.
UsedFileNames& FamilyDraft::usedNames(UfoDraft& ufo, std::string const& directory)
{
    auto const [entry, isNew] = ufo.fileNames.try_emplace(directory);
    if (isNew) {
        std::error_code problem;
        for (auto const& file : std::filesystem::directory_iterator(ufo.folder / directory, problem)) {
            entry->second.insert(lowerCased(file.path().filename().string()));
        }
    }
    return entry->second;
}

void FamilyDraft::addUfo(std::string const& ufo, Path const& folder)
{
    m_ufos.emplace(ufo, UfoDraft { folder, 3, { { "public.default", "glyphs", {} } } });
    create(folder / "metainfo.plist",
        plistText({ PlistValue::Dictionary {
            { "creator", text("org.typloom") }, { "formatVersion", PlistValue { 3.0 } } } }));
    create(folder / "layercontents.plist",
        plistText(
            { PlistValue::Array { { PlistValue::Array { text("public.default"), text("glyphs") } } } }));
    create(folder / "glyphs/contents.plist", plistText({ PlistValue::Dictionary {} }));
}

std::string FamilyDraft::addLayer(std::string const& ufo, std::string const& wanted)
{
    auto& draft = m_ufos.at(ufo);
    if (draft.version < 3) {
        throw SaveProblem { ufo + " is a UFO of version 2, which has no place for another layer." };
    }
    std::string name = wanted;
    for (std::size_t number = 1; findLayer(ufo, name); ++number) {
        name = wanted + "#" + std::to_string(number);
    }
    auto directory = makeFileName(name, "glyphs.", "", usedNames(draft, "."));
    auto& contents = edit(draft.folder / "layercontents.plist");
    contents.appendChild(
        plistRoot(contents), plistFragment({ PlistValue::Array { text(name), text(directory) } }));
    create(draft.folder / directory / "contents.plist", plistText({ PlistValue::Dictionary {} }));
    draft.layers.push_back({ name, std::move(directory), {} });
    return name;
}

void FamilyDraft::removeLayer(std::string const& ufo, std::string const& name)
{
    auto& draft = m_ufos.at(ufo);
    auto const directory = layer(ufo, name).directory;
    auto& contents = edit(draft.folder / "layercontents.plist");
    for (auto const entry : contents.children(plistRoot(contents), "array")) {
        auto const pair = contents.children(entry, "string");
        if (pair.size() == 2 && contents.text(pair.front()) == name) {
            contents.removeElement(entry);
        }
    }
    remove(draft.folder / directory / "contents.plist");
    std::erase_if(draft.layers, [&name](auto const& other) { return other.name == name; });
}

void FamilyDraft::addGlyph(
    std::string const& ufo, std::string const& layerName, std::string const& glyph, std::string text)
{
    auto& draft = m_ufos.at(ufo);
    auto& into = layer(ufo, layerName);
    auto fileName = makeFileName(glyph, "", ".glif", usedNames(draft, into.directory));
    auto& contents = edit(draft.folder / into.directory / "contents.plist");
    setPlistEntry(contents, plistRoot(contents), glyph, { fileName });
    create(draft.folder / into.directory / fileName, std::move(text));
    into.fileNames.emplace(glyph, std::move(fileName));
}

void FamilyDraft::list(std::string const& ufo, std::string const& layerName, std::string const& glyph)
{
    auto const path = glifPath(ufo, layerName, glyph);
    auto& contents = edit(path.parent_path() / "contents.plist");
    if (!findPlistEntry(contents, plistRoot(contents), glyph)) {
        setPlistEntry(contents, plistRoot(contents), glyph, { path.filename().string() });
    }
}

void FamilyDraft::removeGlyph(std::string const& ufo, std::string const& layerName, std::string const& glyph)
{
    auto& draft = m_ufos.at(ufo);
    auto& from = layer(ufo, layerName);
    auto const path = glifPath(ufo, layerName, glyph);
    auto& contents = edit(draft.folder / from.directory / "contents.plist");
    removePlistEntry(contents, plistRoot(contents), glyph);
    usedNames(draft, from.directory).erase(lowerCased(path.filename().string()));
    from.fileNames.erase(glyph);
    remove(path);
}

FamilyFiles::Pending FamilyDraft::finish()
{
    auto pending = m_others;
    for (auto const& [path, edit] : m_edits) {
        auto text = edit->result();
        auto const before = m_onDisk.find(path);
        if (before == m_onDisk.end() || before->second != text) {
            pending.insert_or_assign(path, std::move(text));
        }
    }
    return pending;
}
