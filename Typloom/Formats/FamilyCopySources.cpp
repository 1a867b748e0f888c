#include "Typloom/Formats/FamilyCopySources.h"

#include "Typloom/Formats/FileReading.h"
#include "Typloom/Formats/GlifEdit.h"
#include "Typloom/Formats/PlistEdit.h"
#include "Typloom/Formats/RootFolder.h"
#include "Typloom/TyploomCore/TLDocumentHistory.h"

#include <algorithm>

namespace {

void check(std::optional<FormatError> const& error)
{
    if (error) {
        throw SaveProblem { error->sentence() };
    }
}

PlistValue text(std::string const& value)
{
    return { value };
}

} // namespace

FamilyCopySources::FamilyCopySources(
    TLFont const& font, FamilyGlyphSource const& family, FolderCopy& copy, Path designspace)
    : m_font(font)
    , m_source(family)
    , m_copy(copy)
    , m_designspace(std::move(designspace))
    , m_saved(font.history().modifiedGlyphs())
{
}

void FamilyCopySources::write(Path const& path, std::string const& text)
{
    check(m_copy.makeFolders(path.parent_path()));
    check(m_copy.write(path, text));
}

void FamilyCopySources::run()
{
    auto const name = m_font.path().filename().string();
    auto text = readFile(m_font.path(), name);
    if (!text) {
        auto const kept = m_source.files()->keptText(m_font.path());
        m_hasLostFiles = true;
        m_notes.push_back(text.error().sentence() + " The copy has it as it was last read.");
        text = kept ? Result<std::string>(*kept) : text;
    }
    auto edit = text ? XmlEdit::parse(std::move(*text), name) : text.error();
    if (!edit) {
        throw SaveProblem { edit.error().sentence() };
    }
    nameUfos(*edit);
    for (auto const& [filename, newName] : m_newNames) {
        copyUfo(filename, newName);
    }
    write(m_designspace, edit->result());
    for (auto const& file : m_copy.leftOut()) {
        m_hasLostFiles = true;
        m_notes.push_back(inQuotes(file) + " could not be read and is not in the copy.");
    }
}

/// UFOs in the family's folder keep their names, others get one in the copy's.
void FamilyCopySources::nameUfos(XmlEdit& designspace)
{
    auto const sources = designspace.children(designspace.child(designspace.root(), "sources"), "source");
    std::vector<std::pair<XmlElement, std::string>> outside;
    for (auto const source : sources) {
        auto const filename = designspace.attribute(source, "filename").value_or("");
        auto const normal = Path(filename).lexically_normal().generic_string();
        if (namesInside(normal)) {
            m_newNames.emplace(filename, normal);
        } else if (!filename.empty()) {
            outside.emplace_back(source, filename);
        }
    }
    for (auto const& [source, filename] : outside) {
        if (!m_newNames.contains(filename)) {
            m_newNames.emplace(filename, freeName(filename));
        }
        designspace.setAttribute(source, "filename", m_newNames.at(filename));
    }
}

std::string FamilyCopySources::freeName(Path const& like) const
{
    auto const stem = like.has_stem() ? like.stem().string() : "Master";
    for (std::size_t number = 1;; ++number) {
        auto name = stem + (number > 1 ? "-" + std::to_string(number) : "") + ".ufo";
        if (std::none_of(m_newNames.begin(), m_newNames.end(),
                [&name](auto const& entry) { return lowerCased(entry.second) == lowerCased(name); })) {
            return name;
        }
    }
}

void FamilyCopySources::copyUfo(std::string const& filename, std::string const& newName)
{
    auto const folder = m_font.path().parent_path() / filename;
    std::error_code problem;
    auto const target = m_designspace.parent_path() / newName;
    if (std::filesystem::exists(target, problem)) {
        return; // Another way of naming it.
    }
    if (std::filesystem::exists(folder, problem)) {
        return check(m_copy.copy(folder, target));
    }
    m_hasLostFiles = true;
    auto const& sources = m_source.family().sources;
    auto const known = std::find_if(sources.begin(), sources.end(),
        [&filename](auto const& source) { return source.ufo->displayName() == filename; });
    if (known == sources.end()) {
        return m_notes.push_back(inQuotes(filename) + " is not there and not in the copy.");
    }
    makeUfo(*known->ufo, newName);
}

void FamilyCopySources::makeUfo(Ufo const& ufo, std::string const& newName)
{
    auto const folder = m_designspace.parent_path() / newName;
    PlistValue::Array layers;
    std::size_t missing = 0;
    for (auto const& layer : ufo.layers()) {
        PlistValue::Array pair;
        pair.push_back(text(layer.name));
        pair.push_back(text(layer.directory));
        layers.emplace_back().content = std::move(pair);
        missing += makeLayer(ufo, layer, folder);
    }
    PlistValue::Dictionary information;
    information.emplace("creator", text("org.typloom"));
    information.emplace("formatVersion", PlistValue { double(ufo.version()) });
    std::map<std::string, std::string> texts;
    texts.emplace("metainfo.plist", plistText({ std::move(information) }));
    if (ufo.version() > 2) {
        texts.emplace("layercontents.plist", plistText({ std::move(layers) }));
    }
    for (auto const* const name :
        { "metainfo.plist", "layercontents.plist", "fontinfo.plist", "lib.plist" }) {
        if (auto const kept = m_source.files()->keptText(ufo.folder() / name)) {
            texts.insert_or_assign(name, *kept);
        }
    }
    for (auto const& [name, content] : texts) {
        write(folder / name, content);
    }
    auto const lacks = missing == 0
        ? std::string {}
        : " and the " + std::to_string(missing) + " glyphs of its layers that had not been looked at";
    m_notes.push_back(inQuotes(ufo.displayName())
        + " is not there any more. In the copy it is made of what is open here: it lacks kerning, groups, "
          "features"
        + lacks + ".");
}

/// Gives the number of glyphs that are missing.
std::size_t FamilyCopySources::makeLayer(Ufo const& ufo, UfoLayer const& layer, Path const& folder)
{
    PlistValue::Dictionary contents;
    for (auto const& [name, file] : layer.fileNames) {
        if (auto const content = glyphText(ufo, layer, name)) {
            write(folder / layer.directory / file, *content);
            contents.emplace(name, text(file));
        }
    }
    auto const missing = layer.fileNames.size() - contents.size();
    write(folder / layer.directory / "contents.plist", plistText({ std::move(contents) }));
    return missing;
}

std::optional<std::string> FamilyCopySources::glyphText(
    Ufo const& ufo, UfoLayer const& layer, std::string const& name) const
{
    auto const path = ufo.folder() / layer.directory / layer.fileNames.find(name)->second;
    if (auto kept = m_source.files()->keptText(path)) {
        return kept;
    }
    auto const glyph = m_font.loadedGlyphForName(name);
    if (!glyph) {
        return std::nullopt;
    }
    auto const modified = m_saved.find(name);
    auto const state = modified == m_saved.end() ? glyph->state() : modified->second;
    for (auto const& origin : m_source.originsOf(name)) {
        auto const* saved = state.layer(origin.layerId);
        if (saved && !saved->problem && origin.ufo == ufo.displayName() && origin.ufoLayer == layer.name) {
            return glifText(name, glyph->unicodes(), saved->outline);
        }
    }
    return std::nullopt;
}

std::shared_ptr<FamilyGlyphSource> FamilyCopySources::family() const
{
    auto const files = std::make_shared<FamilyFiles>();
    std::map<std::string, std::shared_ptr<Ufo const>> ufos;
    auto family = m_source.family();
    for (auto& source : family.sources) {
        auto const newName = m_newNames.find(source.ufo->displayName());
        auto const layer = source.ufo->layers()[source.layer].name;
        auto& ufo = ufos[source.ufo->displayName()];
        if (!ufo && newName != m_newNames.end()) {
            std::vector<std::string> ignored;
            auto const opened
                = Ufo::open(m_designspace.parent_path() / newName->second, newName->second, ignored, files);
            ufo = opened ? *opened : throw SaveProblem { opened.error().sentence() };
        }
        auto const index = ufo ? ufo->layerNamed(layer) : std::nullopt;
        if (!index) {
            throw SaveProblem { "The source of " + source.ufo->displayName()
                + " is gone from the designspace, or its layer " + inQuotes(layer)
                + " from the UFO: another program has changed them." };
        }
        source.ufo = ufo;
        source.layer = *index;
    }
    auto copied = std::make_shared<FamilyGlyphSource>(std::move(family), files);
    for (auto [name, origins] : m_source.origins()) {
        for (auto& origin : origins) {
            auto const newName = m_newNames.find(origin.ufo);
            origin.ufo = newName == m_newNames.end() ? origin.ufo : newName->second;
        }
        copied->setOrigins(name, std::move(origins));
    }
    return copied;
}
