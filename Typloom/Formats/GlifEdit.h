#pragma once

#include "Typloom/Formats/GlifReader.h"
#include "Typloom/Formats/XmlEdit.h"

/// Makes the file of a glyph draw an outline. `before` is what it draws now: where the two have the same
/// structure only numbers that differ are touched, else the outline's elements are written anew.
void changeOutline(XmlEdit& glif, TLOutline const& before, TLOutline const& wanted);

/// The glyph's library, made when it is not there.
XmlElement ensureLibrary(XmlEdit& glif);
/// None when there is none.
XmlElement findLibrary(XmlEdit const& glif);
/// Takes away a library in which nothing is left.
void removeEmptyLibrary(XmlEdit& glif);

/// The text of a further layer of a glyph, made from that of another layer: the same style, characters and
/// structure, without what belongs to that layer alone.
Result<std::string> glifTextLike(std::string const& otherLayer, TLOutline const& outline);
/// A text made from nothing.
std::string glifText(
    std::string_view glyphName, std::vector<char32_t> const& unicodes, TLOutline const& outline);
