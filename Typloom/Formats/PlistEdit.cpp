#include "Typloom/Formats/PlistEdit.h"

#include "Typloom/Formats/Numbers.h"
#include "Typloom/Formats/XmlStartTag.h"

#include <algorithm>
#include <cmath>

namespace {

struct Entry {
    XmlElement key;
    XmlElement value;
    std::string name;
};

std::vector<Entry> entriesOf(XmlEdit const& edit, XmlElement dictionary)
{
    std::vector<Entry> entries;
    auto const elements = edit.children(dictionary);
    for (std::size_t index = 0; edit.name(dictionary) == "dict" && index + 1 < elements.size(); index += 2) {
        entries.push_back({ elements[index], elements[index + 1], edit.text(elements[index]) });
    }
    return entries;
}

std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && isXmlBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isXmlBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

std::string_view kindOf(double number)
{
    return std::trunc(number) == number && std::abs(number) < largestCoordinate ? "integer" : "real";
}

void appendLine(std::string& lines, std::size_t depth, std::string const& line)
{
    lines += (lines.empty() ? "" : "\n") + std::string(depth, '\t') + line;
}

std::string tagged(std::string_view kind, std::string_view text)
{
    auto const tag = std::string(kind) + ">";
    return "<" + tag + xmlEscaped(text) + "</" + tag;
}

void append(std::string& lines, std::size_t depth, PlistValue const& value)
{
    auto const* const array = value.array();
    auto const* const entries = value.dictionary();
    if (auto const number = value.number()) {
        appendLine(lines, depth, tagged(kindOf(*number), describeNumber(*number)));
    } else if (auto const* const string = value.string()) {
        appendLine(lines, depth, tagged("string", *string));
    } else if (auto const* const truth = std::get_if<bool>(&value.content)) {
        appendLine(lines, depth, *truth ? "<true/>" : "<false/>");
    } else if ((array && array->empty()) || (entries && entries->empty())) {
        appendLine(lines, depth, array ? "<array/>" : "<dict/>");
    } else if (array) {
        appendLine(lines, depth, "<array>");
        for (auto const& item : *array) {
            append(lines, depth + 1, item);
        }
        appendLine(lines, depth, "</array>");
    } else if (entries) {
        appendLine(lines, depth, "<dict>");
        for (auto const& [key, item] : *entries) {
            if (!std::holds_alternative<std::monostate>(item.content)) {
                appendLine(lines, depth + 1, tagged("key", key));
                append(lines, depth + 1, item);
            }
        }
        appendLine(lines, depth, "</dict>");
    }
}

void changeDictionary(XmlEdit& edit, XmlElement element, PlistValue::Dictionary const& wanted)
{
    auto missing = wanted;
    for (auto const& entry : entriesOf(edit, element)) {
        auto const found = wanted.find(entry.name);
        if (found == wanted.end()) {
            edit.removeElement(entry.key);
            edit.removeElement(entry.value);
        } else if (missing.erase(entry.name) > 0) {
            changePlistValue(edit, entry.value, found->second);
        }
    }
    for (auto const& [key, value] : missing) {
        setPlistEntry(edit, element, key, value);
    }
}

/// Items that are alike at both ends stay; those between are changed in turn, the rest of them added
/// or removed.
void changeArray(XmlEdit& edit, XmlElement element, PlistValue::Array const& wanted)
{
    auto const items = edit.children(element);
    auto const holds
        = [&edit](XmlElement item, PlistValue const& value) { return holdsPlistValue(edit, item, value); };
    auto const [oldStart, newStart]
        = std::mismatch(items.begin(), items.end(), wanted.begin(), wanted.end(), holds);
    auto const [oldEnd, newEnd] = std::mismatch(items.rbegin(), std::make_reverse_iterator(oldStart),
        wanted.rbegin(), std::make_reverse_iterator(newStart), holds);
    auto item = oldStart;
    auto value = newStart;
    XmlElement last = item == items.begin() ? XmlElement {} : *std::prev(item);
    for (; item != oldEnd.base() && value != newEnd.base(); ++item, ++value) {
        last = changePlistValue(edit, *item, *value);
    }
    for (; item != oldEnd.base(); ++item) {
        edit.removeElement(*item);
    }
    for (; value != newEnd.base(); ++value) {
        auto const fragment = plistFragment(*value);
        auto const added = last ? edit.insertAfter(last, fragment)
            : items.empty()     ? edit.appendChild(element, fragment)
                                : edit.insertBefore(items.front(), fragment);
        last = added ? added : last;
    }
}

} // namespace

XmlElement plistRoot(XmlEdit const& edit)
{
    auto const values
        = edit.name(edit.root()) == "plist" ? edit.children(edit.root()) : std::vector<XmlElement> {};
    return values.empty() ? XmlElement {} : values.front();
}

XmlElement findPlistEntry(XmlEdit const& edit, XmlElement dictionary, std::string_view key)
{
    for (auto const& entry : entriesOf(edit, dictionary)) {
        if (entry.name == key) {
            return entry.value;
        }
    }
    return {};
}

bool holdsPlistValue(XmlEdit const& edit, XmlElement element, PlistValue const& value)
{
    auto const kind = edit.name(element);
    if (auto const number = value.number()) {
        return (kind == "integer" || kind == "real") && parseNumber(trimmed(edit.text(element))) == number;
    }
    if (auto const* const string = value.string()) {
        return kind == "string"
            ? edit.text(element) == *string
            : (kind == "integer" || kind == "real") && trimmed(edit.text(element)) == *string;
    }
    if (auto const* const truth = std::get_if<bool>(&value.content)) {
        return kind == (*truth ? "true" : "false");
    }
    if (auto const* const array = value.array()) {
        auto const items = edit.children(element);
        return kind == "array"
            && std::equal(items.begin(), items.end(), array->begin(), array->end(),
                [&edit](XmlElement item, PlistValue const& one) { return holdsPlistValue(edit, item, one); });
    }
    if (auto const* const wanted = value.dictionary()) {
        std::map<std::string, XmlElement> found;
        for (auto const& entry : entriesOf(edit, element)) {
            found.emplace(entry.name, entry.value);
        }
        return kind == "dict"
            && std::equal(found.begin(), found.end(), wanted->begin(), wanted->end(),
                [&edit](auto const& entry, auto const& one) {
                    return entry.first == one.first && holdsPlistValue(edit, entry.second, one.second);
                });
    }
    return kind == "date" || kind == "data";
}

XmlElement changePlistValue(XmlEdit& edit, XmlElement element, PlistValue const& value)
{
    auto const kind = edit.name(element);
    bool const isNothing = std::holds_alternative<std::monostate>(value.content);
    if (!element || isNothing || holdsPlistValue(edit, element, value)) {
        return element;
    }
    auto const number = value.number();
    auto const* const string = value.string();
    if (number && kind == kindOf(*number)) {
        edit.setText(element, describeNumber(*number));
    } else if (string && kind == "string") {
        edit.setText(element, *string);
    } else if (value.array() && kind == "array") {
        changeArray(edit, element, *value.array());
    } else if (value.dictionary() && kind == "dict") {
        changeDictionary(edit, element, *value.dictionary());
    } else {
        return edit.replaceElement(element, plistFragment(value));
    }
    return element;
}

XmlElement setPlistEntry(XmlEdit& edit, XmlElement dictionary, std::string_view key, PlistValue const& value)
{
    auto const entries = entriesOf(edit, dictionary);
    auto const named = [&key](Entry const& entry) { return entry.name == key; };
    auto const known = std::find_if(entries.begin(), entries.end(), named);
    if (known != entries.end()) {
        return changePlistValue(edit, known->value, value);
    }
    if (edit.name(dictionary) != "dict" || std::holds_alternative<std::monostate>(value.content)) {
        return {};
    }
    bool const onOneLine = !entries.empty() && !edit.beginsLine(entries.front().value);
    auto const fragment = tagged("key", key) + (onOneLine ? "" : "\n") + plistFragment(value);
    auto const byName = [](Entry const& one, Entry const& other) { return one.name < other.name; };
    auto const isBehind = [&key](Entry const& entry) { return entry.name > key; };
    auto const next = std::find_if(entries.begin(), entries.end(), isBehind);
    bool const goesBetween = next != entries.end() && std::is_sorted(entries.begin(), entries.end(), byName);
    auto const added
        = goesBetween ? edit.insertBefore(next->key, fragment) : edit.appendChild(dictionary, fragment);
    return edit.nextSibling(added);
}

void removePlistEntry(XmlEdit& edit, XmlElement dictionary, std::string_view key)
{
    for (auto const& entry : entriesOf(edit, dictionary)) {
        if (entry.name == key) {
            edit.removeElement(entry.key);
            edit.removeElement(entry.value);
        }
    }
}

std::string plistFragment(PlistValue const& value)
{
    std::string lines;
    append(lines, 0, value);
    return lines;
}

std::string plistText(PlistValue const& value)
{
    auto edit = XmlEdit::parse(
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST "
        "1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n<plist version=\"1.0\">\n</plist>\n",
        {});
    edit->appendChild(edit->root(), plistFragment(value));
    return edit->result();
}
