#pragma once

#include "Typloom/Formats/Plist.h"
#include "Typloom/Formats/XmlEdit.h"

// Edits of a property list where it stands, in a file of its own or in a glyph's library. They change
// the smallest part that differs: the neighbours of a changed number keep their bytes, and what a
// `PlistValue` does not hold (dates, data, comments) stays.

/// The one value in a `<plist>`; none when the root is no such element.
XmlElement plistRoot(XmlEdit const& edit);

/// The value of a key; none when it is not there, or when this is no dictionary. Of a repeated key
/// the first.
XmlElement findPlistEntry(XmlEdit const& edit, XmlElement dictionary, std::string_view key);

/// Whether an element stands for a value, in whatever way it is written.
bool holdsPlistValue(XmlEdit const& edit, XmlElement element, PlistValue const& value);

/// Makes an element stand for a value, by as few changes inside it as it takes: keys and items that
/// the value has not are removed. Where the value holds nothing (`std::monostate`) all stays. Gives
/// the element, which is another one when its kind had to change.
XmlElement changePlistValue(XmlEdit& edit, XmlElement element, PlistValue const& value);

/// Changes or adds an entry. A new key goes to its place when the keys are sorted, else to the end.
XmlElement setPlistEntry(XmlEdit& edit, XmlElement dictionary, std::string_view key, PlistValue const& value);
/// With all its repetitions.
void removePlistEntry(XmlEdit& edit, XmlElement dictionary, std::string_view key);

/// A value as a fragment for an `XmlEdit`, keys sorted, whole numbers as `<integer>`.
std::string plistFragment(PlistValue const& value);
/// A whole new property list.
std::string plistText(PlistValue const& value);
