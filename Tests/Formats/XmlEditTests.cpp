#include "Typloom/Formats/XmlEdit.h"

#include "Tests/Support/FilesIn.h"
#include "Typloom/Formats/XmlDocument.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <random>

namespace {

using Edit = std::function<void(XmlEdit&, XmlElement root)>;

std::string edited(std::string const& text, Edit const& change)
{
    auto edit = XmlEdit::parse(text, "a.glif");
    EXPECT_TRUE(edit) << text << ": " << (edit ? std::string {} : edit.error().sentence());
    if (edit) {
        change(*edit, edit->root());
    }
    return edit ? edit->result() : std::string {};
}

struct Case {
    std::string before;
    Edit change;
    std::string after;
};

void expectEach(std::vector<Case> const& cases)
{
    for (auto const& [before, change, after] : cases) {
        EXPECT_EQ(edited(before, change), after);
        EXPECT_TRUE(XmlDocument::parse(after, "")) << after;
    }
}

} // namespace

TEST(XmlEdit, ofAnAttributeChangesItsValueOnly)
{
    auto const set = [](std::string const& name, std::string const& value) {
        return [=](XmlEdit& edit, XmlElement root) { edit.setAttribute(root, name, value); };
    };
    auto const removeX = [](XmlEdit& edit, XmlElement root) { edit.removeAttribute(root, "x"); };
    expectEach({
        { "<a x = '1'\ty=\"2\" />", set("x", "it's <3"), "<a x = 'it&apos;s &lt;3'\ty=\"2\" />" },
        { "<a x='1'/>", set("y", "\"2\n"), "<a x='1' y='&quot;2&#10;'/>" },
        { "<a/>", set("x", "é"), "<a x=\"é\"/>" },
        { "<a />", set("x", "1"), "<a x=\"1\" />" },
        { "<a\n\tx='1'\n\ty='2'\n></a>", set("z", "3"), "<a\n\tx='1'\n\ty='2'\n\tz='3'\n></a>" },
        { "<a x='&#49;'/>", set("x", "1"), "<a x='&#49;'/>" },
        { "<a y='x=\"0\"' x='1' xx='2'/>", set("x", "3"), "<a y='x=\"0\"' x='3' xx='2'/>" },
        { "<a w='0'  x='1' y='2'/>", removeX, "<a w='0' y='2'/>" },
        { "<a x='1'/>", removeX, "<a/>" },
        { "<a y='>'/>", removeX, "<a y='>'/>" },
    });
}

TEST(XmlEdit, ofATextLeavesCommentsAndTags)
{
    auto const set = [](std::string const& text) {
        return [=](XmlEdit& edit, XmlElement root) { edit.setText(root, text); };
    };
    expectEach({
        { "<a b='1'>x</a >\n", set("<&\ry"), "<a b='1'>&lt;&amp;&#13;y</a >\n" },
        { "<a />", set("x"), "<a>x</a>" },
        { "<a>x</a>", set(""), "<a></a>" },
        { "<a>1<!-- one --></a>", set("2"), "<a>2<!-- one --></a>" },
        { "<a><!-- one -->1<![CDATA[0]]></a>", set("2"), "<a><!-- one -->2</a>" },
        { "<a><![CDATA[<b>]]></a>", set("<b>"), "<a><![CDATA[<b>]]></a>" },
        { "<a>&#x1F600;&eacute;\r\n</a>", set("\xF0\x9F\x98\x80&eacute;\n"), "<a>&#x1F600;&eacute;\r\n</a>" },
        { "<a/>", set("\x01\xFF\xEF\xBF\xBF"), "<a>\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD</a>" },
    });
}

TEST(XmlEdit, putsLinesInTheStyleOfTheFile)
{
    auto const append
        = [](XmlEdit& edit, XmlElement root) { edit.appendChild(root, "<n>\n\t<m x=\"1\"/>\n</n>"); };
    auto const before
        = [](XmlEdit& edit, XmlElement root) { edit.insertBefore(edit.child(root, "c"), "<n/>"); };
    auto const after
        = [](XmlEdit& edit, XmlElement root) { edit.insertAfter(edit.child(root, "b"), "<n/>"); };
    auto const intoB
        = [](XmlEdit& edit, XmlElement root) { edit.appendChild(edit.child(root, "b"), "<n/>\n<n/>"); };
    expectEach({
        { "<a>\r\n\t<b/>\r\n</a>", append, "<a>\r\n\t<b/>\r\n\t<n>\r\n\t\t<m x=\"1\"/>\r\n\t</n>\r\n</a>" },
        { "<a>\n   <b />\n   <!-- <c/> -->\n</a>\n", append,
            "<a>\n   <b />\n   <!-- <c/> -->\n   <n>\n      <m x=\"1\" />\n   </n>\n</a>\n" },
        { "<a>\n<b/>\n</a>", append, "<a>\n<b/>\n<n>\n  <m x=\"1\"/>\n</n>\n</a>" },
        { "<a><b/></a>\n", append, "<a><b/><n><m x=\"1\"/></n></a>\n" },
        { "<a y='/'/>", append, "<a y='/'>\n  <n>\n    <m x=\"1\"/>\n  </n>\n</a>" },
        { "<a>\n</a>", append, "<a>\n  <n>\n    <m x=\"1\"/>\n  </n>\n</a>" },
        { "<a>\n\t<b/>\n\t<c/>\n</a>", before, "<a>\n\t<b/>\n\t<n/>\n\t<c/>\n</a>" },
        { "<a>\n\t<b/><c/></a>", before, "<a>\n\t<b/><n/><c/></a>" },
        { "<a>\n\t<b/> <!-- b -->\n\t<c/>\n</a>", after, "<a>\n\t<b/> <!-- b -->\n\t<n/>\n\t<c/>\n</a>" },
        { "<a>\n\t<b/><c/>\n</a>", after, "<a>\n\t<b/><n/><c/>\n</a>" },
        { "<a>\n\t<b z=''/>\n</a>", intoB, "<a>\n\t<b z=''>\n\t\t<n/>\n\t\t<n/>\n\t</b>\n</a>" },
        { "<a>\n\t<c/><b></b></a>", intoB, "<a>\n\t<c/><b>\n\t\t<n/>\n\t\t<n/>\n\t</b></a>" },
    });
}

TEST(XmlEdit, takesAnElementWithItsLineWhenItIsThereAlone)
{
    auto const removeB = [](XmlEdit& edit, XmlElement root) { edit.removeElement(edit.child(root, "b")); };
    auto const replaceB = [](XmlEdit& edit, XmlElement root) {
        edit.replaceElement(edit.child(root, "b"), "<n>\n\t<m/>\n</n>");
    };
    expectEach({
        { "<a>\r\n\r\n\t<b>\r\n\t</b>\r\n\t<c/>\r\n</a>", removeB, "<a>\r\n\r\n\t<c/>\r\n</a>" },
        { "<a>\n\t<b/></a>", removeB, "<a></a>" },
        { "<a>\n\t<b/> <!-- b -->\n</a>", removeB, "<a>\n\t <!-- b -->\n</a>" },
        { "<a>\n\t<b/><c/>\n</a>", removeB, "<a>\n\t<c/>\n</a>" },
        { "<a>\n\t<b\n/>\n</a>", replaceB, "<a>\n\t<n>\n\t\t<m />\n\t</n>\n</a>" },
        { "<a><b/></a>", replaceB, "<a><n><m/></n></a>" },
        { "<a>\n\t<c/><b/>\n</a>", replaceB, "<a>\n\t<c/><n><m/></n>\n</a>" },
    });
}

TEST(XmlEdit, readsWhatIsThere)
{
    auto const edit = XmlEdit::parse(
        "\xEF\xBB\xBF<?xml version='1.0'?>\n<!DOCTYPE a [<!ELEMENT a ANY>]>\n"
        "<!-- <a/> --><a b='&lt;\r\n1'><!-- <c/> --><c>1</c>\n<d/><c>&amp;<![CDATA[&]]></c></a>",
        "x.plist");
    ASSERT_TRUE(edit) << edit.error().sentence();
    auto const root = edit->root();
    EXPECT_EQ(edit->attribute(root, "b"), "< 1");
    EXPECT_EQ(edit->attribute(root, "c"), std::nullopt);
    ASSERT_EQ(edit->children(root, "c").size(), 2U);
    auto const last = edit->children(root).back();
    EXPECT_EQ(edit->text(last), "&&");
    EXPECT_EQ(edit->parent(last), root);
    EXPECT_EQ(edit->nextSibling(edit->child(root, "d")), last);
    EXPECT_EQ(edit->errorAt(last, "no").sentence(), "Cannot read 'x.plist', line 5: no.");
    auto const nothing = edit->child(root, "gone");
    EXPECT_FALSE(nothing);
    EXPECT_FALSE(edit->child(nothing, "gone"));
    EXPECT_EQ(edit->attribute(nothing, "b"), std::nullopt);
}

TEST(XmlEdit, refusesWhatIsBroken)
{
    for (char const* const bad :
        { "", "x", "<a>", "<a></b>", "<a></a", "<a/></a>", "<a/><b/>", "<a b/>", "<a b=1/>",
            "<a b='1'c='2'/>", "<a b='1' b='2'/>", "<a b='1/>", "<a><!-- </a>", "< a/>", "<!-- -->",
            "<a><![CDATA[</a>", "<a><b></a></b>", "<a></a b>", "<!DOCTYPE a [<!ENTITY b 'c'>]><a/>" }) {
        EXPECT_FALSE(XmlEdit::parse(bad, "a.glif")) << bad;
    }
    EXPECT_EQ(XmlEdit::parse("<a>\n<b>\n</a>", "a.glif").error().line, 3U);
}

TEST(XmlEdit, isHarmlessOnWhatIsNotThere)
{
    auto const change = [](XmlEdit& edit, XmlElement root) {
        auto const b = edit.child(root, "b");
        edit.removeElement(b);
        edit.removeElement(b);
        EXPECT_FALSE(edit.insertAfter(b, "<n/>"));
        EXPECT_FALSE(edit.appendChild(root, "<n>"));
        EXPECT_FALSE(edit.insertBefore(root, "<n/>"));
        edit.removeElement(root);
        for (auto const none : { b, edit.child(root, "none") }) {
            edit.setText(none, "1");
            edit.setAttribute(none, "x", "1");
            edit.appendChild(none, "<n/>");
        }
    };
    EXPECT_EQ(edited("<a>\n\t<b/>\n\t<c/>\n</a>", change), "<a>\n\t<c/>\n</a>");
}

namespace {

/// Random edits of one text, each with the edit that takes it back.
class RandomEdits {
public:
    RandomEdits(XmlEdit& edit, unsigned seed)
        : m_edit(edit)
        , m_random(seed)
    {
        m_elements.push_back(edit.root());
        for (std::size_t index = 0; index < m_elements.size() && index < 2000; ++index) {
            auto const children = edit.children(m_elements[index]);
            m_elements.insert(m_elements.end(), children.begin(), children.end());
        }
    }

    void make()
    {
        auto const element = m_elements[below(m_elements.size())];
        switch (below(6)) {
        case 0:
            return changeAttribute(element, "name");
        case 1:
            return changeAttribute(element, "typloom");
        case 2:
            return changeText(element);
        case 3:
            return added(m_edit.appendChild(element, "<n>\n\t<m x=\"1\"/>\n\t<m x=\"2\"/>\n</n>"));
        case 4:
            return added(m_edit.insertBefore(element, "<n/>"));
        default:
            return added(m_edit.insertAfter(element, "<n>\n\t<m>3</m>\n</n>"));
        }
    }

    void takeAllBack()
    {
        for (; !m_inverses.empty(); m_inverses.pop_back()) {
            m_inverses.back()();
        }
    }

private:
    std::size_t below(std::size_t count)
    {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(m_random);
    }

    void changeAttribute(XmlElement element, std::string const& name)
    {
        auto const old = m_edit.attribute(element, name);
        if (old && xmlEscaped(*old) != *old) {
            return; // It can be written in more than one way.
        }
        m_edit.setAttribute(element, name, "<'" + std::to_string(below(1000)));
        m_inverses.push_back([=, this] {
            old ? m_edit.setAttribute(element, name, *old) : m_edit.removeAttribute(element, name);
        });
    }

    void changeText(XmlElement element)
    {
        auto const old = m_edit.text(element);
        if (m_edit.children(element).empty() && xmlEscaped(old) == old) {
            m_edit.setText(element, "a\nb");
            m_inverses.push_back([=, this] { m_edit.setText(element, old); });
        }
    }

    void added(XmlElement element)
    {
        if (element) {
            m_elements.push_back(element);
            m_inverses.push_back([=, this] { m_edit.removeElement(element); });
        }
    }

    XmlEdit& m_edit;
    std::mt19937 m_random;
    std::vector<XmlElement> m_elements;
    std::vector<std::function<void()>> m_inverses;
};

} // namespace

TEST(XmlEdit, takenBackGivesTheSameBytes)
{
    std::vector<std::string> texts { "<a/>", "<a />", "<a><b></b></a>",
        "<a>\r\n\t<b/> <!-- b -->\r\n\t<c\t/></a>", "<a>\n<b><c/>\n<d></d></b>\n\n  <e> </e></a>",
        "<a>x<b/>y<!-- z --><c/></a>" };
    for (auto const& path : familyFiles({ ".glif", ".plist", ".designspace" })) {
        texts.push_back(contentOf(path));
    }
    unsigned seed = 0;
    for (auto const& text : texts) {
        auto edit = XmlEdit::parse(text, "");
        ASSERT_TRUE(edit) << text;
        ASSERT_EQ(edit->result(), text);
        for (int round = 0; round < (text.size() < 100 ? 200 : 1); ++round) {
            RandomEdits edits(*edit, ++seed);
            for (int count = 0; count < 12; ++count) {
                edits.make();
            }
            ASSERT_TRUE(XmlDocument::parse(edit->result(), "")) << edit->result();
            edits.takeAllBack();
            ASSERT_EQ(edit->result(), text) << "seed " << seed;
        }
    }
}
