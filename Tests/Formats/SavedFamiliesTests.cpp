// Every family: saved without a change, and with an axis and a layer that are added to a glyph.

#include "Tests/Support/DesignspacesIn.h"
#include "Tests/Support/DocumentText.h"
#include "Tests/Support/FamilyCopy.h"
#include "Tests/Support/FaultyFileSystem.h"
#include "Typloom/Formats/DesignspaceReader.h"
#include "Typloom/Formats/FamilySaver.h"
#include "Typloom/TyploomCore/TLDocumentHistory.h"
#include "Typloom/TyploomCore/TLLayerCommands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/wait.h>

using Kind = TLSaveOutcome::Kind;

namespace {

std::shared_ptr<TLGlyph> drawnGlyph(TLFont const& font)
{
    for (auto const& name : font.glyphNames()) {
        auto const glyph = font.glyphForName(name);
        auto const master = font.defaultFontMaster(nullptr);
        auto const layer = glyph && master ? glyph->layerForId(master->id()) : nullptr;
        if (layer && !layer->outline().contours.empty()) {
            return glyph;
        }
    }
    return nullptr;
}

/// Adds an axis to the glyph and a layer at 80 on it, moved by 7.5.
void addAxisAndLayer(TLFont const& font, TLGlyph& glyph)
{
    auto const axis = std::make_shared<TLAxis>();
    axis->setName("opening");
    glyph.insertObjectInAxesAtIndex(axis, glyph.countOfAxes());
    auto const added
        = TLAddIntermediateLayer(glyph, { { axis->axisId(), 80.0 } }, font.defaultFontMaster(nullptr)->id());
    ASSERT_NE(added.layer, nullptr) << added.problem;
    auto outline = added.layer->outline();
    outline.contours.front().points.front().x += 7.5;
    added.layer->setOutline(std::move(outline));
}

/// What the tools of other people say; none where they are not installed.
std::optional<std::string> describedByOthers(std::filesystem::path const& path, std::string const& glyph)
{
    std::string const command = "/usr/bin/python3 " SOURCE_FOLDER "/Tests/Formats/describe_family.py '"
        + path.string() + "' '" + glyph + "' 2>&1";
    std::FILE* const pipe = ::popen(command.c_str(), "r");
    std::string output;
    for (std::array<char, 4096> part; auto const size = std::fread(part.data(), 1, part.size(), pipe);) {
        output.append(part.data(), size);
    }
    int const status = ::pclose(pipe);
    bool const isMissing = WIFEXITED(status) && (WEXITSTATUS(status) == 3 || WEXITSTATUS(status) == 127);
    EXPECT_TRUE(status == 0 || isMissing) << output;
    return isMissing ? std::nullopt : std::optional(output);
}

void expectAddedLinesOnly(std::string const& before, std::string const& after)
{
    for (auto const& line : lineDifference(before, after)) {
        EXPECT_EQ(line.front(), '+') << line;
    }
}

void expectToKeepAFamily(std::filesystem::path const& designspace)
{
    SCOPED_TRACE(designspace);
    FamilyCopy const copy(designspace);
    auto const before = copy.files();
    auto const times = copy.times();
    auto const font = *TLOpenFamily(copy.path());
    for (auto const& name : font->glyphNames()) {
        font->glyphForName(name);
    }
    FaultyFileSystem quick;
    EXPECT_EQ(TLSaveFamily(font, {}, quick).kind, Kind::nothingToSave);
    EXPECT_EQ(copy.times(), times);

    auto const glyph = drawnGlyph(*font);
    if (!glyph) {
        return; // Without a default source nothing can be interpolated, and no axis kept.
    }
    addAxisAndLayer(*font, *glyph);
    auto const outcome = TLSaveFamily(font, {}, quick);
    ASSERT_EQ(outcome.kind, Kind::saved) << outcome.sentence;
    auto const again = *TLOpenFamily(copy.path());
    EXPECT_EQ(textOf(*again, { glyph->name() }), textOf(*font, { glyph->name() }));
    std::set<std::string> const written(outcome.files.begin(), outcome.files.end());
    for (auto const& [path, content] : copy.files()) {
        if (!before.contains(path)) {
            EXPECT_TRUE(content.empty() || written.contains(path)) << path;
        } else if (before.at(path) != content) {
            EXPECT_TRUE(written.contains(path)) << path;
            expectAddedLinesOnly(before.at(path), content);
        }
    }
    if (auto const described = describedByOthers(copy.path(), glyph->name())) {
        EXPECT_THAT(*described, testing::HasSubstr("axis opening 0 0 80"));
        EXPECT_THAT(*described, testing::HasSubstr("('opening', 80)"));
    }
    font->history().undo();
    font->history().undo();
    font->history().undo();
    EXPECT_NE(TLSaveFamily(font, {}, quick).kind, Kind::failed);
    EXPECT_EQ(copy.files(), before);
}

} // namespace

TEST(SavedFamilies, ofTheProjectKeepWhatIsNotTouched)
{
    for (auto const& path : designspacesIn(std::filesystem::path(SOURCE_FOLDER) / "Fonts")) {
        expectToKeepAFamily(path);
    }
}

TEST(SavedFamilies, ofAnotherFolderKeepWhatIsNotTouched)
{
    auto const* const folder = std::getenv("TYPLOOM_FAMILIES");
    if (!folder) {
        GTEST_SKIP() << "TYPLOOM_FAMILIES names no folder of families";
    }
    for (auto const& path : designspacesIn(folder)) {
        expectToKeepAFamily(path);
    }
}
