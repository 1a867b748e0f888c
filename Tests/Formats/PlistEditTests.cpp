#include "Typloom/Formats/PlistEdit.h"

#include "Tests/Support/FilesIn.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

PlistValue number(double value)
{
    return { .content = value };
}

PlistValue string(std::string text)
{
    return { .content = std::move(text) };
}

PlistValue array(std::vector<double> const& numbers)
{
    PlistValue::Array items;
    for (double const one : numbers) {
        items.push_back(number(one));
    }
    return { .content = std::move(items) };
}

PlistValue valueOf(std::string const& text)
{
    auto const document = XmlDocument::parse(text, "");
    auto const value = document ? readPlist(*document) : Result<PlistValue>(document.error());
    EXPECT_TRUE(value) << text;
    return value ? *value : PlistValue {};
}

constexpr std::string_view opening = "<plist>\n<dict>\n";
constexpr std::string_view closing = "</dict>\n</plist>";

using Change = std::function<void(XmlEdit&, XmlElement dictionary)>;

/// The lines in the dictionary after a change.
std::string changed(std::string const& lines, Change const& change)
{
    auto edit = XmlEdit::parse(std::string(opening) + lines + std::string(closing), "");
    change(*edit, plistRoot(*edit));
    auto const result = edit->result();
    EXPECT_TRUE(result.starts_with(opening) && result.ends_with(closing)) << result;
    return result.substr(opening.size(), result.size() - opening.size() - closing.size());
}

Change set(std::string const& key, PlistValue const& value)
{
    return [=](XmlEdit& edit, XmlElement dictionary) { setPlistEntry(edit, dictionary, key, value); };
}

} // namespace

TEST(PlistEdit, changesTheSmallestPartThatDiffers)
{
    std::string const lines
        = "\t<key>b</key>\n\t<array>\n\t\t<real>1.0</real> <!-- one -->\n\t\t<integer>2</integer>\n"
          "\t\t<real>3.50</real>\n\t</array>\n\t<key>d</key>\n\t<date>2024</date>\n";
    auto const withArray = [&lines](std::string const& items) {
        auto result = lines;
        auto const start = result.find("\t\t<real>1.0");
        return result.replace(start, result.find("\t</array>") - start, items);
    };
    std::string const one = "\t\t<real>1.0</real> <!-- one -->\n";
    std::string const two = "\t\t<integer>2</integer>\n";
    std::string const three = "\t\t<real>3.50</real>\n";
    struct Case {
        PlistValue value;
        std::string items;
    };
    for (auto const& [value, items] : std::vector<Case> {
             { array({ 1, 2, 3.5 }), one + two + three },
             { array({ 1, 7, 3.5 }), one + "\t\t<integer>7</integer>\n" + three },
             { array({ 1, 0.1, 3.5 }), one + "\t\t<real>0.1</real>\n" + three },
             { array({ 1, 2, -100000 }), one + two + "\t\t<integer>-100000</integer>\n" },
             { array({ 1, 3.5 }), one + three },
             { array({ 1, 2, 2, 3.5 }), one + two + two + three },
             { array({ 9, 1, 2, 3.5 }), "\t\t<integer>9</integer>\n" + one + two + three },
             { array({ 1, 2, 3.5, 9 }), one + two + three + "\t\t<integer>9</integer>\n" },
         }) {
        EXPECT_EQ(changed(lines, set("b", value)), withArray(items));
    }
    EXPECT_EQ(changed(lines, set("d", {})), lines) << "nothing is known of a date";
    EXPECT_EQ(changed(lines, set("d", string("<"))),
        lines.substr(0, lines.find("\t<date>")) + "\t<string>&lt;</string>\n");
}

TEST(PlistEdit, putsKeysInOrderWhenTheyAreSorted)
{
    std::string const a = "\t<key>a</key>\n\t<true/>\n";
    std::string const c = "\t<key>c</key>\n\t<true/>\n";
    std::string const b = "\t<key>b</key>\n\t<integer>1</integer>\n";
    for (auto const& [before, after] : std::vector<std::pair<std::string, std::string>> {
             { a + c, a + b + c }, { a, a + b }, { c, b + c }, { c + a, c + a + b },
             { "\t<key>a</key><true/>\n\t<key>c</key><true/>\n",
                 "\t<key>a</key><true/>\n\t<key>b</key><integer>1</integer>\n\t<key>c</key><true/>\n" },
             { "\t<key>a</key><true/>\n", "\t<key>a</key><true/>\n\t<key>b</key><integer>1</integer>\n" } }) {
        EXPECT_EQ(changed(before, set("b", number(1))), after);
        EXPECT_EQ(changed(after,
                      [](XmlEdit& edit, XmlElement dictionary) { removePlistEntry(edit, dictionary, "b"); }),
            before);
    }
}

TEST(PlistEdit, removesEveryRepetitionAndWhatTheValueHasNot)
{
    std::string const twice = "<key>a</key><true/><key>b</key><true/><key>a</key><false/>\n";
    EXPECT_EQ(
        changed(twice, [](XmlEdit& edit, XmlElement dictionary) { removePlistEntry(edit, dictionary, "a"); }),
        "<key>b</key><true/>\n");
    auto const value = PlistValue { .content = PlistValue::Dictionary { { "c", array({}) } } };
    EXPECT_EQ(
        changed("<key>a</key><integer>1</integer>\n",
            [&value](XmlEdit& edit, XmlElement dictionary) { changePlistValue(edit, dictionary, value); }),
        "  <key>c</key>\n  <array/>\n");
}

TEST(PlistEdit, writesWhatIsReadBackTheSame)
{
    PlistValue::Dictionary entries { { "a&b", string("<line>\n\ttwo") }, { "n", number(-1e15) },
        { "r", number(0.1) }, { "t", { .content = true } },
        { "d", { .content = PlistValue::Dictionary { { "x", array({ 1, 2 }) } } } } };
    auto const text = plistText({ .content = entries });
    auto edit = XmlEdit::parse(text, "");
    EXPECT_TRUE(holdsPlistValue(*edit, plistRoot(*edit), valueOf(text)));
    EXPECT_TRUE(holdsPlistValue(*edit, plistRoot(*edit), { .content = entries }));
    EXPECT_EQ(edit->text(findPlistEntry(*edit, plistRoot(*edit), "a&b")), "<line>\n\ttwo");
    EXPECT_NE(text.find("\n    <key>d</key>\n    <dict>\n      <key>x</key>\n"), std::string::npos) << text;
}

TEST(PlistEdit, readsRealFilesAsTheReaderDoesAndTakesKeysBack)
{
    for (auto const& path : familyFiles({ ".plist" })) {
        SCOPED_TRACE(path);
        auto const text = contentOf(path);
        auto edit = XmlEdit::parse(text, "");
        auto const root = plistRoot(*edit);
        auto value = valueOf(text);
        EXPECT_TRUE(holdsPlistValue(*edit, root, value));
        if (value.dictionary() == nullptr || value.dictionary()->empty()) {
            continue;
        }
        setPlistEntry(*edit, root, "org.typloom.test", valueOf(plistText(array({ 1, 2.5 }))));
        EXPECT_TRUE(valueOf(edit->result()).find("org.typloom.test"));
        changePlistValue(*edit, root, value);
        EXPECT_EQ(edit->result(), text);
    }
}
