#include "Fuzzing/FuzzInput.h"
#include "Typloom/Formats/GlifEdit.h"
#include "Typloom/Formats/GlyphDesignspace.h"

#include <algorithm>

namespace {

bool canBeWritten(TLOutline const& outline)
{
    auto const isText = [](auto const& item) { return isXmlText(item.name); };
    return std::all_of(outline.anchors.begin(), outline.anchors.end(), isText)
        && std::all_of(outline.contours.begin(), outline.contours.end(),
            [&](auto const& contour) {
                return std::all_of(contour.points.begin(), contour.points.end(), isText);
            })
        && std::all_of(outline.components.begin(), outline.components.end(), [](auto const& component) {
               return isXmlText(component.base)
                   && std::all_of(component.location.begin(), component.location.end(),
                       [](auto const& place) { return isXmlText(place.first); });
           });
}

void expectReadsAs(std::string const& text, TLOutline const& wanted)
{
    auto const again = readGlif(text, "fuzz.glif");
    fuzzExpect(static_cast<bool>(again), "what is written can be read", text);
    fuzzExpect(again->outline == wanted, "what is written reads back", text);
}

/// The outline of a text becomes another one.
void tryChange(std::string const& text, TLOutline const& before, TLOutline const& wanted)
{
    auto edit = XmlEdit::parse(text, "fuzz.glif");
    if (edit) {
        changeOutline(*edit, before, wanted);
        expectReadsAs(edit->result(), wanted);
    }
}

TLOutline moved(TLOutline outline)
{
    auto const move = [](auto& item) {
        item.x = item.x == 0.5 ? -1 : 0.5;
        item.y = item.y == 3 ? 1e-5 : 3;
    };
    outline.advance = outline.advance == 600 ? 0 : 600;
    for (auto& contour : outline.contours) {
        std::for_each(contour.points.begin(), contour.points.end(), move);
    }
    std::for_each(outline.anchors.begin(), outline.anchors.end(), move);
    for (auto& component : outline.components) {
        component.transform[component.isVariable ? 4 : 1] = -7.25;
    }
    return outline;
}

/// Of another structure: only a drawing that stands anew can show it.
TLOutline redrawn(TLOutline outline)
{
    std::reverse(outline.contours.begin(), outline.contours.end());
    outline.contours.push_back({ { { 1, 2, TLPointType::qcurve, true, "a \"<&>\" b" } } });
    outline.anchors.push_back({ "top'", 5, 6 });
    return outline;
}

} // namespace

int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size)
{
    std::string const text(fuzzInput(bytes, size));
    findUnicodes(text);
    auto const glif = readGlif(text, "fuzz.glif");
    if (!glif) {
        fuzzExpect(glif.error().sentence().find('\n') == std::string::npos, "one line for an error");
        return 0;
    }
    if (glif->glyphDesignspace) {
        std::vector<std::string> report;
        auto const* identities = glif->glyphAxes ? &*glif->glyphAxes : nullptr;
        auto const designspace = readGlyphDesignspace(*glif->glyphDesignspace, identities, "A", report);
        for (auto const& axis : designspace.axes) {
            fuzzExpect(axis.minimum <= axis.fallback && axis.fallback <= axis.maximum, "an axis has a range");
        }
    }
    if (auto edit = XmlEdit::parse(text, "fuzz.glif")) {
        fuzzExpect(edit->result() == text, "without an edit every byte stays");
        changeOutline(*edit, glif->outline, glif->outline);
        fuzzExpect(edit->result() == text, "an outline that is there changes no byte", edit->result());
    }
    if (!canBeWritten(glif->outline)) {
        return 0;
    }
    tryChange(text, glif->outline, moved(glif->outline));
    tryChange(text, glif->outline, redrawn(glif->outline));
    expectReadsAs(glifText("A", glif->unicodes, glif->outline), glif->outline);
    if (auto const like = glifTextLike(text, glif->outline)) {
        expectReadsAs(*like, glif->outline);
    }
    return 0;
}
