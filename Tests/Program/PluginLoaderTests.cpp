#include "Typloom/TyploomApp/TLPluginLoader.h"

#include "Platform/Foundation/NSBundle.h"
#include "Tests/Program/TestFiles.h"

#include <gmock/gmock.h>

#include <cstdlib>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {
/// What a new loader says of a folder.
std::vector<std::string> problemsOf(std::filesystem::path const& folder)
{
    TLPluginLoader loader;
    loader.load(folder);
    EXPECT_THAT(loader.loaded(), IsEmpty());
    return loader.problems();
}
} // namespace

TEST(PluginLoader, runsAPluginThatFindsItsBundle)
{
    TestFolder const folder;
    auto const bundle = makeBundle(folder, "Good", "GoodPlugin", TEST_PLUGIN);
    TLPluginLoader loader;
    loader.load(bundle);
    EXPECT_THAT(loader.problems(), IsEmpty());
    EXPECT_THAT(loader.loaded(), ElementsAre("Good"));
    EXPECT_EQ(std::string(getenv("TYPLOOM_TEST_PLUGIN_BUNDLE")), std::filesystem::canonical(bundle).string());
}

TEST(PluginLoader, loadsEveryBundleOfAFolderOnceAndGoesOnAfterABadOne)
{
    TestFolder const folder;
    makeBundle(folder, "A", "NoSuchClass", TEST_PLUGIN);
    makeBundle(folder, "B", "GoodPlugin", TEST_PLUGIN);
    makeBundle(folder, "C", "GoodPlugin", TEST_PLUGIN);
    writeFile(folder / "Other/Info.strings", "");
    TLPluginLoader loader;
    loader.load(folder.path());
    loader.load(folder.path() / "");
    EXPECT_THAT(loader.loaded(), ElementsAre("B", "C"));
    EXPECT_THAT(loader.problems(), ElementsAre(HasSubstr("A.bundle' has no class 'NoSuchClass'")));
}

TEST(PluginLoader, aSecondBundleOfOneNameIsReportedOrPassedOver)
{
    TestFolder const first, second;
    makeBundle(first, "Same", "GoodPlugin", TEST_PLUGIN);
    makeBundle(second, "Same", "GoodPlugin", TEST_PLUGIN);
    TLPluginLoader loader;
    loader.load(first.path());
    loader.load(second.path(), TLPluginLoader::Repeated::isPassedOver);
    EXPECT_THAT(loader.problems(), IsEmpty());
    loader.load(second.path());
    EXPECT_THAT(loader.problems(), ElementsAre(HasSubstr("has the same identifier 'Same'")));
    EXPECT_THAT(loader.loaded(), ElementsAre("Same"));
}

TEST(PluginLoader, aBrokenBundleDoesNotHideAGoodOneOfItsName)
{
    TestFolder const first, second;
    auto const broken = makeBundle(first, "Twin", "NoSuchClass", TEST_PLUGIN);
    auto const good = makeBundle(second, "Twin", "GoodPlugin", TEST_PLUGIN);
    TLPluginLoader loader;
    loader.load(broken);
    loader.load(good, TLPluginLoader::Repeated::isPassedOver);
    EXPECT_THAT(loader.problems(), ElementsAre(HasSubstr("has no class 'NoSuchClass'")));
    EXPECT_THAT(loader.loaded(), ElementsAre("Twin"));
    auto const bundle = NSBundle::bundleWithIdentifier("Twin");
    ASSERT_NE(bundle, nullptr);
    EXPECT_EQ(bundle->bundlePath(), std::filesystem::canonical(good));
}

TEST(PluginLoader, aPluginOfAnotherInterfaceVersionIsNotStarted)
{
    TestFolder const folder;
    auto const problems = problemsOf(makeBundle(folder, "P", "PluginOfAnotherVersion", TEST_PLUGIN));
    EXPECT_THAT(problems,
        ElementsAre(HasSubstr("was made for version 2 of the plug-in interface; this is version 1")));
    EXPECT_EQ(getenv("TYPLOOM_TEST_PLUGIN_OF_ANOTHER_VERSION"), nullptr);
}

TEST(PluginLoader, whatAPluginThrowsStopsAtTheHost)
{
    TestFolder const folder;
    EXPECT_THAT(problemsOf(makeBundle(folder, "P", "ThrowingPlugin", TEST_PLUGIN)),
        ElementsAre(HasSubstr("failed while it was loaded: out of ideas")));
    EXPECT_THAT(problemsOf(makeBundle(folder, "Q", "ThrowingEntry", TEST_PLUGIN)),
        ElementsAre(HasSubstr("failed while it was loaded")));
}

TEST(PluginLoader, eachFaultOfALibraryIsASentence)
{
    TestFolder const folder;
    EXPECT_THAT(problemsOf(makeBundle(folder, "P", "GoodPlugin", LIBRARY_WITHOUT_ENTRY)),
        ElementsAre(HasSubstr("without the function TyploomPluginEntry")));
    writeFile(folder / "text", "no library");
    EXPECT_THAT(problemsOf(makeBundle(folder, "Q", "GoodPlugin", folder / "text")),
        ElementsAre(HasSubstr("cannot be loaded")));
    EXPECT_THAT(problemsOf(folder / "Missing.bundle"), ElementsAre(HasSubstr("There is no plug-in folder")));
    writeFile(folder / "Empty/file", "");
    EXPECT_THAT(problemsOf(folder / "Empty"), ElementsAre(HasSubstr("There is no plug-in in the folder")));
}

TEST(PluginLoader, eachFaultOfADescriptionIsASentence)
{
    struct Case {
        std::string description;
        std::string part;
    };
    Case const cases[] = {
        { "\"PrincipalClass\" = ", "is not of the form" },
        { "\"Library\" = \"plugin.so\";", "without \"PrincipalClass\"" },
        { "\"PrincipalClass\" = \"GoodPlugin\"; \"Library\" = \"\";", "without \"Library\"" },
        { "\"PrincipalClass\" = \"GoodPlugin\"; \"Library\" = \"none.so\";", "has no library 'none.so'" },
    };
    for (auto const& [description, part] : cases) {
        TestFolder const folder;
        auto const bundle = makeBundle(folder, "P", "GoodPlugin", TEST_PLUGIN);
        writeFile(bundle / "Info.strings", description);
        EXPECT_THAT(problemsOf(bundle), ElementsAre(HasSubstr(part)));
    }
    TestFolder const folder;
    writeFile(folder / "P.bundle/other", "");
    EXPECT_THAT(problemsOf(folder / "P.bundle"), ElementsAre(HasSubstr("has no description Info.strings")));
}

TEST(PluginLoader, neverRunsALibraryOutsideTheBundle)
{
    TestFolder const folder;
    auto const bundle = makeBundle(folder, "P", "GoodPlugin", TEST_PLUGIN);
    std::filesystem::copy_file(TEST_PLUGIN, folder / "outside.so");
    std::filesystem::create_symlink(folder / "outside.so", bundle / "link.so");
    auto const absolute = (folder / "outside.so").string();
    for (auto const& library : { std::string("../outside.so"), std::string("link.so"),
             std::string("x/../../outside.so"), absolute }) {
        writeFile(bundle / "Info.strings",
            "\"PrincipalClass\" = \"GoodPlugin\"; \"Library\" = \"" + library + "\";");
        EXPECT_THAT(problemsOf(bundle), ElementsAre(HasSubstr("names a library outside its folder")));
    }
}
