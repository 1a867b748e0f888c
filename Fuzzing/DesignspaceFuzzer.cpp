#include "Fuzzing/FuzzInput.h"
#include "Typloom/Formats/DesignspaceEdit.h"
#include "Typloom/Formats/DesignspaceParser.h"
#include "Typloom/Formats/FamilyOpener.h"

#include <cmath>

namespace {

std::filesystem::path const folder = "/no such folder";
std::filesystem::path const designspacePath = folder / "Fuzz.designspace";

std::string plist(std::string const& value)
{
    return "<plist version=\"1.0\">" + value + "</plist>";
}

/// The designspace beside UFOs that are good. Nothing of it lies on a disk.
std::shared_ptr<FamilyFiles> filesWith(std::string designspace)
{
    FamilyFiles::Pending texts { { designspacePath, std::move(designspace) } };
    for (auto const* const name : { "A.ufo", "B.ufo" }) {
        auto const ufo = folder / name;
        texts[ufo / "metainfo.plist"] = plist("<dict><key>formatVersion</key><integer>3</integer></dict>");
        texts[ufo / "layercontents.plist"]
            = plist("<array><array><string>public.default</string><string>glyphs</string></array>"
                    "<array><string>half</string><string>glyphs.half</string></array></array>");
        for (auto const* const layer : { "glyphs", "glyphs.half" }) {
            texts[ufo / layer / "contents.plist"] = plist("<dict><key>a</key><string>a.glif</string></dict>");
            texts[ufo / layer / "a.glif"]
                = "<glyph name=\"a\" format=\"2\"><advance width=\"500\"/><outline/></glyph>";
        }
    }
    auto files = std::make_shared<FamilyFiles>();
    files->setPending(std::move(texts));
    return files;
}

std::optional<DesignspaceDocument> read(std::string const& text)
{
    std::vector<std::string> report;
    auto document = readDesignspace(designspacePath, *filesWith(text), report);
    fuzzExpect(
        document || document.error().sentence().find('\n') == std::string::npos, "one line for an error");
    return document ? std::optional(std::move(*document)) : std::nullopt;
}

void tryOpening(std::string const& text)
{
    auto const font = openFamily(designspacePath, filesWith(text));
    if (!font) {
        return;
    }
    fuzzExpect(!(*font)->fontMasters().empty(), "what opens has a master");
    for (auto const& axis : (*font)->canonicalAxes()) {
        fuzzExpect(std::isfinite(axis->minimum()) && axis->minimum() <= axis->defaultValue()
                && axis->defaultValue() <= axis->maximum(),
            "an axis has a range", axis->name());
        for (auto const& master : (*font)->fontMasters()) {
            fuzzExpect(std::isfinite(master->axisInternalValueValueForId(axis->axisId())),
                "a master stands on every axis", axis->name());
        }
    }
    for (auto const& name : (*font)->glyphNames()) {
        (*font)->glyphForName(name);
    }
}

bool hasSamePlaces(DesignspaceDocument const& one, DesignspaceDocument const& other)
{
    return std::equal(one.axes.begin(), one.axes.end(), other.axes.begin(), other.axes.end(),
               [](auto const& left, auto const& right) {
                   return left.name == right.name && left.tag == right.tag && left.minimum == right.minimum
                       && left.fallback == right.fallback && left.maximum == right.maximum
                       && left.discreteValues == right.discreteValues;
               })
        && std::equal(one.sources.begin(), one.sources.end(), other.sources.begin(), other.sources.end(),
            [](auto const& left, auto const& right) {
                return left.filename == right.filename && left.name == right.name && left.layer == right.layer
                    && left.styleName == right.styleName && left.location == right.location;
            });
}

/// The text after an edit reads as wanted.
template <class Change>
void tryEdit(std::string const& text, DesignspaceDocument const& wanted, char const* promise, Change change)
{
    auto edit = XmlEdit::parse(text, "Fuzz.designspace");
    if (!edit) {
        return;
    }
    DesignspaceEdit designspace(*edit);
    change(designspace);
    auto const again = read(edit->result());
    fuzzExpect(again && hasSamePlaces(*again, wanted), promise, edit->result());
}

void tryEdits(std::string const& text, DesignspaceDocument const& document)
{
    tryEdit(text, document, "without an edit it stays the same", [](auto&) {});
    if (!document.sources.empty()) {
        auto wanted = document;
        auto& source = wanted.sources.back();
        auto const find = [&source](DesignspaceEdit& edit) {
            return edit.findSource(source.element, source.filename, source.layer);
        };
        source.styleName = "New <\"&'";
        tryEdit(text, wanted, "a style gets its name",
            [&](auto& edit) { edit.setStyleName(find(edit), source.styleName); });
        if (!source.location.empty()) {
            source.styleName = document.sources.back().styleName;
            source.location.begin()->second = 123.5;
            tryEdit(text, wanted, "a source moves",
                [&](auto& edit) { edit.setPlace(find(edit), source.location.begin()->first, 123.5); });
        }
        wanted.sources.pop_back();
        tryEdit(text, wanted, "a source is removed", [&](auto& edit) {
            auto const& last = document.sources.back();
            edit.removeSource(edit.findSource(last.element, last.filename, last.layer));
        });
    }
    auto wanted = document;
    DesignspaceEdit::NewSource const added { "B.ufo", "added", "", "half", {} };
    wanted.sources.push_back({ "B.ufo", "added", "", "", "half", {}, 0, 0 });
    for (auto const& axis : wanted.axes) {
        wanted.sources.back().location.emplace(axis.name, axis.fallback);
    }
    tryEdit(text, wanted, "a source is added", [&](auto& edit) { edit.addSource(added, {}); });
}

bool holdsXmlTexts(DesignspaceDocument const& document)
{
    for (auto const& axis : document.axes) {
        if (!isXmlText(axis.name)) {
            return false;
        }
    }
    return document.sources.empty() || isXmlText(document.sources.front().familyName);
}

} // namespace

int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size)
{
    std::string const text(fuzzInput(bytes, size));
    tryOpening(text);
    if (auto const document = read(text); document && holdsXmlTexts(*document)) {
        tryEdits(text, *document);
    }
    return 0;
}
