#include "Typloom/Formats/XmlScan.h"

#include <gtest/gtest.h>

namespace {

std::string nested(std::size_t depth)
{
    std::string text;
    for (std::size_t level = 0; level < depth; ++level) {
        text += "<a>";
    }
    for (std::size_t level = 0; level < depth; ++level) {
        text += "</a>";
    }
    return text;
}

} // namespace

TEST(XmlScan, letsThroughWhatOrdinaryFilesHold)
{
    auto const times = [](std::string const& text, int count) {
        std::string result;
        for (int index = 0; index < count; ++index) {
            result += text;
        }
        return "<a>" + result + "</a>";
    };
    for (auto const& text : { std::string("<a/>"), std::string("\xEF\xBB\xBF<a/>"), std::string("\n <a/>"),
             std::string("<!DOCTYPE plist PUBLIC \"x\" \"http://x/y.dtd\"><plist/>"),
             std::string("<a b='<>\"'>é€😀</a>"), nested(xmlDepthLimit), times("<b/>", 1000),
             times("<b></b>", 1000), times("<!-- <b> -->", 1000), times("<![CDATA[<b>]]>", 1000),
             times("<?b <b> ?>", 1000), times("<b c='>'/>", 1000) }) {
        EXPECT_EQ(findXmlProblem(text), std::nullopt) << text.substr(0, 60);
    }
}

TEST(XmlScan, stopsAtElementsNestedTooDeeply)
{
    auto const problem = findXmlProblem(nested(xmlDepthLimit + 1));
    ASSERT_TRUE(problem);
    EXPECT_EQ(problem->offset, 3 * xmlDepthLimit);
}

TEST(XmlScan, stopsAtBytesThatAreNoText)
{
    for (char const* const bad : { "\x80", "\xC3", "\xC3(", "\xC0\x80", "\xE0\x80\x80", "\xED\xA0\x80",
             "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xE2\x82", "\xFF" }) {
        auto const problem = findXmlProblem(std::string("<a>") + bad);
        ASSERT_TRUE(problem) << bad;
        EXPECT_EQ(problem->offset, 3U);
    }
    EXPECT_TRUE(findXmlProblem(std::string("<a>\0</a>", 8)));
}

TEST(XmlScan, findsEntitiesInADocumentTypeOnly)
{
    auto const problem = findXmlProblem("<!DOCTYPE a [\n<!ELEMENT a ANY><!ENTITY x 'y'>]><a/>");
    ASSERT_TRUE(problem);
    EXPECT_EQ(problem->reason, "it declares entities, which are not read");
    EXPECT_EQ(findXmlProblem("<!DOCTYPE a [<!ELEMENT a ANY>]><a><!-- <!ENTITY --></a>"), std::nullopt);
}

TEST(XmlScan, countsLinesFromOne)
{
    EXPECT_EQ(lineOfOffset("a\nb\r\nc", 0), 1U);
    EXPECT_EQ(lineOfOffset("a\nb\r\nc", 2), 2U);
    EXPECT_EQ(lineOfOffset("a\nb\r\nc", 99), 3U);
}
