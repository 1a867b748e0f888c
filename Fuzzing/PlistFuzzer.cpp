#include "Fuzzing/FuzzInput.h"
#include "Typloom/Formats/PlistEdit.h"

namespace {

/// Dates, data and what XML can't hold are not written from a value; the rest is.
bool canBeWritten(PlistValue const& value)
{
    if (auto const* string = value.string()) {
        return isXmlText(*string);
    }
    if (auto const* array = value.array()) {
        for (auto const& item : *array) {
            if (!canBeWritten(item)) {
                return false;
            }
        }
    }
    if (auto const* entries = value.dictionary()) {
        for (auto const& [key, item] : *entries) {
            if (!isXmlText(key) || !canBeWritten(item)) {
                return false;
            }
        }
    }
    return !std::holds_alternative<std::monostate>(value.content);
}

bool areSame(PlistValue const& one, PlistValue const& other)
{
    if (auto const* array = one.array()) {
        auto const* others = other.array();
        return others && std::equal(array->begin(), array->end(), others->begin(), others->end(), areSame);
    }
    if (auto const* entries = one.dictionary()) {
        auto const* others = other.dictionary();
        return others
            && std::equal(entries->begin(), entries->end(), others->begin(), others->end(),
                [](auto const& left, auto const& right) {
                    return left.first == right.first && areSame(left.second, right.second);
                });
    }
    return one.content.index() == other.content.index() && one.number() == other.number()
        && (!one.string() || *one.string() == *other.string());
}

std::optional<PlistValue> read(std::string text)
{
    auto const document = XmlDocument::parse(std::move(text), "fuzz.plist");
    if (!document) {
        fuzzExpect(document.error().sentence().find('\n') == std::string::npos, "one line for an error");
        return std::nullopt;
    }
    auto value = readPlist(*document);
    return value ? std::optional(std::move(*value)) : std::nullopt;
}

void expectReadsAs(std::string const& text, PlistValue const& wanted)
{
    auto const again = read(text);
    fuzzExpect(again && areSame(*again, wanted), "what is written reads back", text);
}

void tryEdits(std::string const& text, PlistValue const& value)
{
    auto edit = XmlEdit::parse(text, "fuzz.plist");
    if (!edit) {
        return;
    }
    fuzzExpect(edit->result() == text, "without an edit every byte stays");
    auto const root = plistRoot(*edit);
    fuzzExpect(changePlistValue(*edit, root, value) == root, "a value that is there is no edit");
    fuzzExpect(edit->result() == text, "a value that is there changes no byte", edit->result());
    if (!value.dictionary()) {
        return;
    }
    std::string const key = "org.typloom.fuzz";
    auto with = value;
    with.content = *value.dictionary();
    std::get<PlistValue::Dictionary>(with.content)[key]
        = PlistValue { PlistValue::Array { { std::string("<&>") }, { 0.5 } } };
    setPlistEntry(*edit, root, key, *with.find(key));
    expectReadsAs(edit->result(), with);
    removePlistEntry(*edit, root, key);
    auto without = with;
    std::get<PlistValue::Dictionary>(without.content).erase(key);
    expectReadsAs(edit->result(), without);
    for (auto const& [name, item] : *without.dictionary()) {
        if (isXmlText(name)) {
            with = without;
            std::get<PlistValue::Dictionary>(with.content)[name] = PlistValue { std::string("]]>\t\"") };
            setPlistEntry(*edit, root, name, *with.find(name));
            return expectReadsAs(edit->result(), with);
        }
    }
}

} // namespace

int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size)
{
    std::string const text(fuzzInput(bytes, size));
    auto const value = read(text);
    if (!value) {
        return 0;
    }
    if (canBeWritten(*value)) {
        expectReadsAs(plistText(*value), *value);
    }
    tryEdits(text, *value);
    return 0;
}
