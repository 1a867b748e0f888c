// Texts of new glyph files, and their libraries.

#include "Typloom/Formats/GlifEdit.h"

#include "Typloom/Formats/Numbers.h"
#include "Typloom/Formats/PlistEdit.h"
#include "Typloom/Formats/VariableComponents.h"

XmlElement findLibrary(XmlEdit const& glif)
{
    return glif.child(glif.child(glif.root(), "lib"), "dict");
}

XmlElement ensureLibrary(XmlEdit& glif)
{
    auto library = glif.child(glif.root(), "lib");
    if (!library) {
        library = glif.appendChild(glif.root(), "<lib>\n\t<dict>\n\t</dict>\n</lib>");
    }
    auto const dictionary = glif.child(library, "dict");
    return dictionary ? dictionary : glif.appendChild(library, "<dict/>");
}

void removeEmptyLibrary(XmlEdit& glif)
{
    auto const dictionary = findLibrary(glif);
    if (dictionary && glif.children(dictionary).empty()) {
        glif.removeElement(glif.parent(dictionary));
    }
}

Result<std::string> glifTextLike(std::string const& otherLayer, TLOutline const& outline)
{
    auto const before = readGlif(otherLayer, {});
    if (!before) {
        return before.error();
    }
    auto edit = XmlEdit::parse(otherLayer, {});
    if (!edit) {
        return edit.error();
    }
    if (edit->attribute(edit->root(), "format") == "1") {
        return glifText(edit->attribute(edit->root(), "name").value_or(""), before->unicodes, outline);
    }
    for (auto const name : { "note", "guideline", "image" }) {
        for (auto const element : edit->children(edit->root(), name)) {
            edit->removeElement(element);
        }
    }
    auto const library = findLibrary(*edit);
    for (auto const key : edit->children(library, "key")) {
        if (auto const name = edit->text(key); name != variableComponentsKey) {
            removePlistEntry(*edit, library, name);
        }
    }
    removeEmptyLibrary(*edit);
    changeOutline(*edit, before->outline, outline);
    return edit->result();
}

std::string glifText(
    std::string_view glyphName, std::vector<char32_t> const& unicodes, TLOutline const& outline)
{
    auto edit = XmlEdit::parse(std::string("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<glyph") + " name=\""
            + xmlEscaped(glyphName) + "\"" + " format=\"2\">\n</glyph>\n",
        {});
    for (auto const character : unicodes) {
        edit->appendChild(edit->root(), "<unicode hex=\"" + describeCharacter(character) + "\"/>");
    }
    edit->appendChild(edit->root(), "<outline>\n</outline>");
    changeOutline(*edit, {}, outline);
    return edit->result();
}
