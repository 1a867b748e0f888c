#include "Tests/BadFamilies/BadFamily.h"

#include <sys/stat.h>

namespace {

std::function<void(FamilyWriter&)> content(std::string file, std::string text)
{
    return [file = std::move(file), text = std::move(text)](
               FamilyWriter& family) { family.write("Bold.ufo/" + file, text); };
}

std::function<void(FamilyWriter&)> without(std::string file)
{
    return [file = std::move(file)](FamilyWriter& family) { family.remove("Bold.ufo/" + file); };
}

/// A folder where a file should be.
std::function<void(FamilyWriter&)> folder(std::string file)
{
    return [file = std::move(file)](FamilyWriter& family) {
        family.remove("Bold.ufo/" + file);
        std::filesystem::create_directory(family.path("Bold.ufo/" + file));
    };
}

std::function<void(FamilyWriter&)> mode(std::string file, std::filesystem::perms permissions)
{
    return [file = std::move(file), permissions](
               FamilyWriter& family) { std::filesystem::permissions(family.path(file), permissions); };
}

/// A second layer whose name, folder or content is at fault.
std::function<void(FamilyWriter&)> layer(std::string name, std::string directory)
{
    return [name = std::move(name), directory = std::move(directory)](FamilyWriter& family) {
        family.writeLayer("outside", { { "A", FamilyWriter::glif("A", "", 666) } });
        family.writeLayer("Bold.ufo/glyphs.sketch", { { "A", FamilyWriter::glif("A", "", 666) } });
        std::filesystem::create_directory_symlink("../outside", family.path("Bold.ufo/glyphs.link"));
        family.writeLayers("Bold.ufo", { { "public.default", "glyphs" }, { name, directory } });
    };
}

std::string plist(std::string const& value)
{
    return FamilyWriter::plist(value);
}

/// UFOs that cannot be read at all.
std::vector<BadFamily> unreadable()
{
    return {
        badBold("linksInACircle",
            [](FamilyWriter& family) {
                family.remove("Bold.ufo");
                std::filesystem::create_symlink("Bold.ufo", family.path("Bold.ufo"));
            },
            { "'Bold.ufo'" }),
        badBold("aFile",
            [](FamilyWriter& family) {
                family.remove("Bold.ufo");
                family.write("Bold.ufo", "{}");
            },
            { "no UFO, which is a folder" }),
        badBold("anEmptyFolder",
            [](FamilyWriter& family) {
                family.remove("Bold.ufo");
                std::filesystem::create_directory(family.path("Bold.ufo"));
            },
            { "'Bold.ufo/metainfo.plist'", "no such file" }),
        badBold("aFolderThatMayNotBeRead", mode("Bold.ufo", std::filesystem::perms::none), { "Bold.ufo" }),
        badBold("noMetainfo", without("metainfo.plist"), { "'Bold.ufo/metainfo.plist'" }),
        badBold("metainfoEmpty", content("metainfo.plist", ""), { "'Bold.ufo/metainfo.plist'", "empty" }),
        badBold("metainfoAFolder", folder("metainfo.plist"), { "'Bold.ufo/metainfo.plist'", "folder" }),
        badBold("metainfoAPipe",
            [](FamilyWriter& family) {
                family.remove("Bold.ufo/metainfo.plist");
                ::mkfifo(family.path("Bold.ufo/metainfo.plist").c_str(), 0600);
            },
            { "'Bold.ufo/metainfo.plist'", "not a regular file" }),
        badBold("metainfoBinary", content("metainfo.plist", std::string("bplist00\xD1\x01\x02", 11)),
            { "'Bold.ufo/metainfo.plist'", "not XML" }),
        badBold("versionOne",
            content("metainfo.plist", plist("<dict><key>formatVersion</key><integer>1</integer></dict>")),
            { "only UFO 2 and 3" }),
        badBold("noListOfLayers", without("layercontents.plist"), { "'Bold.ufo/layercontents.plist'" }),
        badBold(
            "layersOfADictionary", content("layercontents.plist", plist("<dict/>")), { "no list of layers" }),
        badBold("layersMayNotBeRead", mode("Bold.ufo/layercontents.plist", std::filesystem::perms::none),
            { "layercontents.plist", "may not be read" }),
        badBold("noDefaultLayer", content("layercontents.plist", plist("<array/>")), { "no default layer" }),
        badBold("contentsMissing", without("glyphs/contents.plist"),
            { "'public.default'", "contents.plist", "no such file" }),
        badBold("contentsEmpty", content("glyphs/contents.plist", ""), { "'public.default'", "empty" }),
        badBold("contentsAreAList", content("glyphs/contents.plist", plist("<array/>")),
            { "contents.plist is no dictionary" }),
        badBold("contentsNestedTooDeeply",
            content("glyphs/contents.plist", plist(times(100, "<array>") + times(100, "</array>"))),
            { "nested too deeply" }),
    };
}

} // namespace

std::vector<BadFamily> badUfos()
{
    auto families = unreadable();
    for (auto& family :
        std::vector<BadFamily> {
            badPart("anotherNameOfTheDefaultLayer",
                content("layercontents.plist",
                    plist(
                        "<array><array><string>foreground</string><string>glyphs</string></array></array>")),
                {}),
            badPart("layerFolderOutside", layer("sketch", "../outside"), { "'sketch'", "'../outside'" }),
            badPart("layerFolderIsALinkOutside", layer("sketch", "glyphs.link"),
                { "'sketch'", "link that leads out" }),
            badPart("twoLayersOfOneName", layer("public.default", "glyphs.sketch"),
                { "'public.default'", "there twice" }),
            badPart("twoLayersOfOneFolder", layer("sketch", "glyphs"), { "'sketch'", "there twice" }),
            badPart("layerFolderMissing", layer("sketch", "glyphs.gone"), { "'sketch'", "no such file" }),
            badPart("entriesThatAreNoLayers",
                content("layercontents.plist",
                    plist("<array><array><string>public.default</string><string>glyphs</string></array>"
                          "<string>x</string><array/><array><true/><real>1</real></array></array>")),
                { "an entry is no pair of names" }),
            badPart("oddMetrics",
                content("fontinfo.plist",
                    plist(
                        "<dict><key>unitsPerEm</key><integer>0</integer>"
                        "<key>ascender</key><string>tall</string><key>xHeight</key><real>nan</real></dict>")),
                { "unitsPerEm is no usable number; 1000 is used", "ascender is no usable number",
                    "xHeight" }),
            badPart("hugeMetrics",
                content("fontinfo.plist",
                    plist("<dict><key>unitsPerEm</key><real>1e15</real><key>ascender</key><real>-1e15</real>"
                          "<key>descender</key><real>1e15</real></dict>")),
                {}),
            badPart("fontinfoCut", content("fontinfo.plist", "<plist><dict>"), { "fontinfo.plist" }),
            badPart("fontinfoAFolder", folder("fontinfo.plist"), { "fontinfo.plist", "folder" }),
            badPart("laterVersion",
                content("metainfo.plist", plist("<dict><key>formatVersion</key><integer>4</integer></dict>")),
                { "Bold.ufo", "later than UFO 3" }),
        }) {
        families.push_back(std::move(family));
    }
    return families;
}
