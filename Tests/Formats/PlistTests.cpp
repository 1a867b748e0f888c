#include "Typloom/Formats/Plist.h"

#include "Tests/Support/FamilyWriter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

Result<PlistValue> read(std::string const& value)
{
    auto const document = XmlDocument::parse(FamilyWriter::plist(value), "x.plist");
    return document ? readPlist(*document) : document.error();
}

} // namespace

TEST(Plist, readsEveryKindOfValue)
{
    auto const list = read(
        "<dict><key>a</key><integer> -5 </integer><!-- c --><key>b</key><real>0.5</real><key>c</key>"
        "<string>x &amp; y</string><key>d</key><true/><key>e</key><array><string/><date>2020</date></array>"
        "<key>a</key><integer>9</integer></dict>");
    ASSERT_TRUE(list);
    EXPECT_EQ(list->find("a")->number(), -5) << "the first of a repeated key";
    EXPECT_EQ(list->find("b")->number(), 0.5);
    EXPECT_EQ(*list->find("c")->string(), "x & y");
    EXPECT_EQ(std::get<bool>(list->find("d")->content), true);
    EXPECT_EQ(list->find("e")->array()->size(), 2U);
    EXPECT_EQ(list->find("f"), nullptr);
}

TEST(Plist, numbersThatAreNoneAreText)
{
    auto const list
        = read("<array><real>nan</real><integer>0x10</integer><real>1e400</real><integer/></array>");
    ASSERT_TRUE(list);
    for (auto const& value : *list->array()) {
        EXPECT_EQ(value.number(), std::nullopt);
    }
}

TEST(Plist, whatIsMalformedIsAnErrorWithItsLine)
{
    std::string deep;
    for (int level = 0; level < 100; ++level) {
        deep += "<array>";
    }
    for (int level = 0; level < 100; ++level) {
        deep += "</array>";
    }
    for (auto const& bad : { std::string("<dict><key>a</key></dict>"),
             std::string("<dict><integer>1</integer><key>a</key></dict>"), std::string("<surprise/>"),
             deep }) {
        auto const list = read(bad);
        ASSERT_FALSE(list) << bad.substr(0, 60);
        EXPECT_EQ(list.error().line, 4U);
    }
    EXPECT_FALSE(read(""));
}
