#include "Typloom/Formats/FamilySaver.h"

#include "Tests/Support/DocumentText.h"
#include "Tests/Support/FamilyCopy.h"
#include "Tests/Support/FaultyFileSystem.h"
#include "Typloom/Formats/DesignspaceReader.h"
#include "Typloom/Formats/FamilyReload.h"
#include "Typloom/TyploomCore/TLDocumentHistory.h"
#include "Typloom/TyploomCore/TLFontCommands.h"
#include "Typloom/TyploomCore/TLLayerCommands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using Kind = TLSaveOutcome::Kind;

namespace {

std::filesystem::path const skarvane
    = std::filesystem::path(SOURCE_FOLDER) / "Fonts/Skarvane/Skarvane.designspace";

/// A family that is edited, saved and opened again.
class FamilySaver : public testing::Test {
protected:
    FamilyCopy copy { skarvane };
    std::shared_ptr<TLFont> font { *TLOpenFamily(copy.path()) };
    std::map<std::string, std::string> original { copy.files() };

    std::shared_ptr<TLGlyph> glyph(std::string const& name) const { return font->glyphForName(name); }

    std::shared_ptr<TLAxis> addAxis(std::string const& glyphName, std::string const& name) const
    {
        auto const axis = std::make_shared<TLAxis>();
        axis->setName(name);
        glyph(glyphName)->insertObjectInAxesAtIndex(axis, glyph(glyphName)->countOfAxes());
        return axis;
    }

    std::shared_ptr<TLLayer> addLayer(std::string const& glyphName, TLLocation const& place) const
    {
        auto const added
            = TLAddIntermediateLayer(*glyph(glyphName), place, font->defaultFontMaster(nullptr)->id());
        EXPECT_NE(added.layer, nullptr) << added.problem;
        return added.layer;
    }

    static void moveNode(TLLayer& layer, double distance)
    {
        auto outline = layer.outline();
        outline.contours.front().points.front().x += distance;
        layer.setOutline(std::move(outline));
    }

    std::string axisId(std::string const& name) const
    {
        auto const& axes = font->axes();
        return (*std::find_if(axes.begin(), axes.end(), [&](auto const& axis) {
            return axis->name() == name;
        }))->axisId();
    }

    /// Saves, and opens the files again: they hold what the document holds.
    void saveAndCompare()
    {
        auto const outcome = TLSaveFamily(font);
        ASSERT_EQ(outcome.kind, Kind::saved) << outcome.sentence;
        EXPECT_FALSE(font->history().isModified());
        auto const again = TLOpenFamily(copy.path());
        ASSERT_TRUE(again) << again.error().sentence();
        EXPECT_EQ(textOf(**again), textOf(*font));
        EXPECT_THAT((*again)->report(), ElementsAre());
        EXPECT_THAT(font->report(), ElementsAre());
    }

    /// The files that are not as they were; folders are left out.
    std::vector<std::string> changedFiles() const
    {
        std::vector<std::string> changed;
        auto now = copy.files();
        for (auto const& [path, content] : now) {
            auto const before = original.find(path);
            if (path.find('.') != std::string::npos && (before == original.end() || before->second != content)
                && !content.empty()) {
                changed.push_back(path);
            }
        }
        for (auto const& [path, content] : original) {
            if (!now.contains(path)) {
                changed.push_back("gone: " + path);
            }
        }
        return changed;
    }

    std::vector<std::string> changedLines(std::string const& path) const
    {
        return lineDifference(original.at(path), copy.text(path));
    }
};

} // namespace

TEST_F(FamilySaver, writesNothingWithoutAChange)
{
    auto const times = copy.times();
    for (auto const& name : font->glyphNames()) {
        glyph(name);
    }
    EXPECT_EQ(TLSaveFamily(font).kind, Kind::nothingToSave);
    moveNode(*glyph("n")->layers().begin()->second, 10);
    moveNode(*glyph("n")->layers().begin()->second, -10);
    EXPECT_EQ(TLSaveFamily(font).kind, Kind::nothingToSave);
    EXPECT_EQ(copy.times(), times);
    EXPECT_EQ(copy.files(), original);
}

TEST_F(FamilySaver, movesANodeByItsNumbersAlone)
{
    auto const layer = glyph("n")->layers().begin()->second;
    auto outline = layer->outline();
    auto const before = outline.contours.front().points[1];
    outline.contours.front().points[1].x += 0.5;
    outline.advance = 777;
    layer->setOutline(outline);
    saveAndCompare();
    EXPECT_THAT(changedFiles(), ElementsAre("Skarvane-Regular.ufo/glyphs/n.glif"));
    auto const lines = changedLines("Skarvane-Regular.ufo/glyphs/n.glif");
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(lines[1], "+<advance width=\"777\"/>");
    EXPECT_THAT(lines[3], HasSubstr(".5\""));

    font->history().undo();
    saveAndCompare();
    EXPECT_EQ(copy.files(), original);
}

TEST_F(FamilySaver, addsAnAxisAndALayerOfTheGlyphsOwn)
{
    auto const axis = addAxis("n", "Größe & <Form>");
    auto const layer = addLayer("n", { { axis->axisId(), 0.0 } });
    EXPECT_TRUE(TLSetLayerCoordinate(*layer, axis->axisId(), 80));
    moveNode(*layer, 30);
    saveAndCompare();
    EXPECT_THAT(changedFiles(),
        ElementsAre("Skarvane-Regular.ufo/glyphs.G_röße & _F_orm_=80/contents.plist",
            "Skarvane-Regular.ufo/glyphs.G_röße & _F_orm_=80/n.glif", "Skarvane-Regular.ufo/glyphs/n.glif",
            "Skarvane-Regular.ufo/layercontents.plist"));
    for (auto const& line : changedLines("Skarvane-Regular.ufo/glyphs/n.glif")) {
        EXPECT_EQ(line.front(), '+') << line;
    }
    auto const again = (*TLOpenFamily(copy.path()))->glyphForName("n");
    ASSERT_EQ(again->countOfAxes(), 1U);
    EXPECT_EQ(again->axes().front()->axisId(), axis->axisId());
    EXPECT_EQ(again->axes().front()->maximum(), 80);

    while (font->history().canUndo()) {
        font->history().undo();
    }
    saveAndCompare();
    EXPECT_EQ(copy.files(), original);
    while (font->history().canRedo()) {
        font->history().redo();
    }
    saveAndCompare();
}

TEST_F(FamilySaver, addsMovesAndDeletesLayersOnTheFontsAxes)
{
    auto const weight = axisId("Weight");
    auto const width = axisId("Width");
    auto const layer = addLayer("n", { { weight, 100.0 }, { width, 110.0 } });
    moveNode(*layer, 12);
    saveAndCompare();
    EXPECT_THAT(changedFiles(), Contains("Skarvane.designspace"));
    for (auto const& line : changedLines("Skarvane.designspace")) {
        EXPECT_EQ(line.front(), '+') << line;
    }
    // Where a source without the glyph stands, the glyph joins it.
    addLayer("o", { { weight, 100.0 }, { width, 110.0 } });
    saveAndCompare();
    EXPECT_THAT(changedFiles(), Contains(HasSubstr("/o.glif")));

    EXPECT_TRUE(TLSetLayerCoordinate(*layer, weight, 90));
    saveAndCompare();
    TLDeleteLayer(*layer);
    font->history().endStep();
    TLDeleteLayer(*glyph("o")->layers().entries().back().second);
    saveAndCompare();
    EXPECT_EQ(copy.files(), original);
    font->history().undo();
    saveAndCompare();
    while (font->history().canUndo()) {
        font->history().undo();
    }
    saveAndCompare();
    EXPECT_EQ(copy.files(), original);
}

TEST_F(FamilySaver, carriesARenamedAndADeletedAxis)
{
    auto const axis = glyph("a")->axes().front();
    auto const axisId = axis->axisId();
    axis->setName("Curl");
    saveAndCompare();
    auto const holder = "Skarvane-Regular.ufo/glyphs/a.glif";
    EXPECT_THAT(changedFiles(), Contains(holder));
    EXPECT_THAT(changedLines(holder), Contains("+<key>Curl</key>"));
    EXPECT_EQ((*TLOpenFamily(copy.path()))->glyphForName("a")->axes().front()->axisId(), axisId);

    font->history().undo();
    saveAndCompare();
    EXPECT_EQ(copy.files(), original);

    glyph("a")->removeObjectFromAxesAtIndex(1);
    for (auto const& [layerId, layer] : glyph("a")->layers()) {
        auto coordinates = layer->coordinates();
        coordinates.erase("a/Bowl");
        layer->setCoordinates(coordinates);
    }
    auto const outcome = TLSaveFamily(font);
    ASSERT_EQ(outcome.kind, Kind::saved) << outcome.sentence;
    EXPECT_THAT(
        outcome.notes, Contains(HasSubstr("It is kept, but other programs will not interpolate the glyph")));
    EXPECT_EQ(textOf(**TLOpenFamily(copy.path())), textOf(*font));
    EXPECT_THAT(copy.text(holder), testing::Not(HasSubstr("Bowl")));
    font->history().undo();
    saveAndCompare();
    EXPECT_EQ(copy.files(), original);
}

TEST_F(FamilySaver, saysWhatWasChangedByAnotherProgramAndKeepsItWhenTold)
{
    std::string const file = "Skarvane-Regular.ufo/glyphs/n.glif";
    moveNode(*glyph("n")->layers().begin()->second, 10);
    copy.replace(file, "</outline>", "</outline>\n  <note>Of another program</note>");
    addLayer("n", { { axisId("Weight"), 100.0 } });
    copy.replace("Skarvane.designspace", "stylename=\"Thin\"", "stylename=\"Hairline\"");
    auto const theirs = copy.files();
    auto outcome = TLSaveFamily(font);
    EXPECT_EQ(outcome.kind, Kind::changedByOthers);
    EXPECT_THAT(outcome.files, ElementsAre(file, "Skarvane.designspace"));
    EXPECT_EQ(outcome.sentence, "'" + file + "' (and 1 more) was changed by another program.");
    EXPECT_EQ(copy.files(), theirs);
    EXPECT_TRUE(font->history().isModified());

    outcome = TLSaveFamily(font, { .overwriteForeignChanges = true });
    EXPECT_EQ(outcome.kind, Kind::saved) << outcome.sentence;
    EXPECT_THAT(copy.text(file), HasSubstr("Of another program"));
    EXPECT_TRUE(TLReloadChangedFiles(font).anything);
    EXPECT_EQ(font->fontMasterForId("Skarvane Thin")->name(), "Hairline");
    EXPECT_EQ(textOf(**TLOpenFamily(copy.path())), textOf(*font));
}

TEST_F(FamilySaver, leavesFamilyAndDocumentAsTheyWereWhereverItFails)
{
    addLayer("n", { { axisId("Weight"), 100.0 } });
    addLayer("n", { { addAxis("n", "Serif")->axisId(), 80.0 } });
    auto const edited = textOf(*font, { "n" });
    int failures = 0;
    for (int call = 1;; ++call) {
        FaultyFileSystem fileSystem(call, FaultyFileSystem::Fault::once, ENOSPC);
        auto const outcome = TLSaveFamily(font, {}, fileSystem);
        EXPECT_EQ(textOf(*font, { "n" }), edited);
        if (outcome.kind == Kind::saved) {
            break;
        }
        ++failures;
        EXPECT_EQ(outcome.kind, Kind::failed);
        EXPECT_THAT(outcome.sentence, HasSubstr("the disk is full"));
        EXPECT_THAT(outcome.sentence, testing::Not(HasSubstr("''"))) << "which file";
        EXPECT_THAT(outcome.sentence, testing::Not(HasSubstr("journal")));
        EXPECT_TRUE(font->history().isModified());
        EXPECT_EQ(copy.files(), original) << call;
    }
    EXPECT_GT(failures, 10);
    EXPECT_EQ(textOf(**TLOpenFamily(copy.path())), textOf(*font));
}

TEST_F(FamilySaver, asksBeforeItWritesOutsideTheFamily)
{
    TemporaryFolder const elsewhere;
    auto const outside = elsewhere.path() / "Elsewhere.ufo";
    std::filesystem::rename(copy.folder() / "Skarvane-Thin.ufo", outside);
    std::filesystem::create_directory_symlink(outside, copy.folder() / "Skarvane-Thin.ufo");
    font = *TLOpenFamily(copy.path());
    auto const thin = glyph("n")->layerForId("Skarvane Thin");
    moveNode(*thin, 10);
    auto outcome = TLSaveFamily(font);
    EXPECT_EQ(outcome.kind, Kind::liesOutside);
    EXPECT_THAT(outcome.files, ElementsAre("Skarvane-Thin.ufo/glyphs/n.glif"));
    EXPECT_TRUE(font->history().isModified());
    outcome = TLSaveFamily(font, { .writeOutsideFamily = true });
    EXPECT_EQ(outcome.kind, Kind::saved) << outcome.sentence;
    EXPECT_EQ(textOf(**TLOpenFamily(copy.path())), textOf(*font));
}

TEST_F(FamilySaver, addsAndChangesAxesAndMasters)
{
    EXPECT_TRUE(TLAddAxis(font, "Slant", "slnt", { 0, 0, 20 }));
    saveAndCompare();
    EXPECT_THAT(changedFiles(), ElementsAre("Skarvane.designspace"));
    auto const weight = axisId("Weight");
    auto const added = TLAddMaster(font, "Heavy Wide", { { weight, 150.0 }, { axisId("Width"), 125.0 } });
    ASSERT_TRUE(added.master) << added.problem;
    saveAndCompare();
    EXPECT_TRUE(std::filesystem::exists(copy.folder() / "Skarvane-HeavyWide.ufo/fontinfo.plist"));
    added.master->setAxisInternalValue(160, weight);
    added.master->setName("Heavy");
    font->axisForId(weight)->setName("Strength");
    saveAndCompare();
    EXPECT_THAT(copy.text("Skarvane.designspace"), testing::Not(HasSubstr("Weight")));
    EXPECT_THAT(copy.text("Skarvane-Regular.ufo/glyphs/a.glif"), HasSubstr("<key>Strength</key>"));
    while (font->history().canUndo()) {
        font->history().undo();
    }
    saveAndCompare();
    EXPECT_EQ(copy.files(), original);
    while (font->history().canRedo()) {
        font->history().redo();
    }
    saveAndCompare();
    EXPECT_TRUE(std::filesystem::exists(copy.folder() / "Skarvane-Heavy.ufo"));
    copy.write("Skarvane-Heavy.ufo/data/theirs", "of another program");
    while (font->history().canUndo()) {
        font->history().undo();
    }
    saveAndCompare();
    EXPECT_THAT(changedFiles(), Contains("Skarvane-Heavy.ufo/fontinfo.plist")) << "it has more in it now";
}

TEST_F(FamilySaver, keepsTheAxesOfAGlyphThatIsNotInTheDefaultMaster)
{
    auto const contents = "Skarvane-Regular.ufo/glyphs/contents.plist";
    auto text = copy.text(contents);
    auto const entry = text.find("<key>n</key>");
    copy.write(contents, text.erase(entry, text.find("<key>", entry + 1) - entry));
    font = *TLOpenFamily(copy.path());
    auto const axis = addAxis("n", "Serif");
    moveNode(*addLayer("n", { { axisId("Weight"), 20.0 }, { axis->axisId(), 80.0 } }), 5);
    auto const notes = TLSaveFamily(font).notes;
    EXPECT_THAT(notes,
        Contains("The glyph 'n' is not in the default master: other programs will not know its axes."));
    auto const again = *TLOpenFamily(copy.path());
    EXPECT_EQ(textOf(*again->glyphForName("n")), textOf(*glyph("n")));
    again->fontMasterForId("Skarvane Thin")->setAxisInternalValue(25, axisId("Weight"));
    EXPECT_EQ(TLSaveFamily(again).kind, Kind::saved);
    font->history().undo();
}

TEST_F(FamilySaver, saysWhatFilesCannotHold)
{
    addAxis("n", "Unnamed");
    addAxis("n", "Unnamed");
    EXPECT_EQ(TLSaveFamily(font).sentence,
        "Nothing was saved. The glyph 'n' has two axes with the name 'Unnamed', which files can't hold. Give "
        "one of "
        "them another name.");
    copy.replace("Skarvane-Thin.ufo/metainfo.plist", "<integer>3</integer>", "<integer>2</integer>");
    font = *TLOpenFamily(copy.path());
    auto const& thin = *font->fontMasterForId("Skarvane Thin");
    auto const weight = axisId("Weight");
    auto const added = TLAddIntermediateLayer(
        *glyph("n"), { { weight, thin.axisInternalValueValueForId(weight) } }, thin.id());
    EXPECT_EQ(added.layer, nullptr);
    EXPECT_THAT(added.problem, HasSubstr("is a UFO of version 2"));
}

TEST_F(FamilySaver, savesAnAxisBesideAnOutlineThatAnotherProgramChanged)
{
    std::string const file = "Skarvane-Regular.ufo/glyphs/n.glif";
    addLayer("n", { { addAxis("n", "Serif")->axisId(), 80.0 } });
    auto const width = font->glyphForName("n")->layerForId("Skarvane Regular")->outline().advance;
    copy.replace(file, "width=\"" + std::to_string(int(width)) + "\"", "width=\"777\"");
    EXPECT_EQ(TLSaveFamily(font).kind, Kind::changedByOthers);
    auto const outcome = TLSaveFamily(font, { .overwriteForeignChanges = true });
    ASSERT_EQ(outcome.kind, Kind::saved) << outcome.sentence;
    EXPECT_TRUE(TLReloadChangedFiles(font).anything);
    EXPECT_EQ(glyph("n")->layerForId("Skarvane Regular")->outline().advance, 777);
    EXPECT_EQ(textOf(**TLOpenFamily(copy.path())), textOf(*font));
}

TEST_F(FamilySaver, writesAGlyphAnewThatAnotherProgramRemovedOrBroke)
{
    enum class Way { removed, broken, takenOut, takenOutAndRead };
    std::string const file = "Skarvane-Regular.ufo/glyphs/a.glif";
    std::string const list = "Skarvane-Regular.ufo/glyphs/contents.plist";
    auto const layerCount = glyph("a")->layers().entries().size();
    for (auto const way : { Way::removed, Way::broken, Way::takenOut, Way::takenOutAndRead }) {
        moveNode(*glyph("a")->layerForId("Skarvane Regular"), 10);
        auto const whole = copy.text(file);
        way == Way::broken ? copy.write(file, whole.substr(0, 400))
                           : void(std::filesystem::remove(copy.folder() / file));
        if (way >= Way::takenOut) {
            auto text = copy.text(list);
            auto const entry = text.find("<key>a</key>");
            copy.write(list, text.erase(entry, text.find("</string>", entry) + 9 - entry));
        }
        if (way == Way::takenOutAndRead) {
            EXPECT_THAT(TLReloadChangedFiles(font).sentences, ElementsAre(HasSubstr("The glyph 'a' was")));
        }
        EXPECT_EQ(TLSaveFamily(font).kind, Kind::changedByOthers);
        auto const outcome = TLSaveFamily(font, { .overwriteForeignChanges = true });
        ASSERT_EQ(outcome.kind, Kind::saved) << outcome.sentence;
        TLReloadChangedFiles(font);
        EXPECT_EQ(textOf(**TLOpenFamily(copy.path()), { "a" }), textOf(*font, { "a" }));
        EXPECT_EQ(glyph("a")->countOfAxes(), 3U);
        EXPECT_EQ(glyph("a")->layers().entries().size(), layerCount);
    }
}

TEST_F(FamilySaver, saysThatTheFamilyIsGone)
{
    moveNode(*glyph("n")->layers().begin()->second, 10);
    for (auto const* const part : { "Skarvane-Thin.ufo", "Skarvane.designspace" }) {
        std::filesystem::rename(copy.folder() / part, copy.folder() / "moved");
        auto const outcome = TLSaveFamily(font);
        EXPECT_EQ(outcome.kind, Kind::failed);
        EXPECT_EQ(outcome.sentence, "Nothing was saved. '" + std::string(part) + "' is not there any more.");
        std::filesystem::rename(copy.folder() / "moved", copy.folder() / part);
    }
}

TEST_F(FamilySaver, addsAMasterBesideABrokenGlyph)
{
    copy.write("Skarvane-Regular.ufo/glyphs/o.glif", "<glyph name=\"o\" format=\"2\"><outline>");
    font = *TLOpenFamily(copy.path());
    ASSERT_TRUE(TLAddMaster(font, "Heavy", { { axisId("Weight"), 150.0 } }).master);
    auto const outcome = TLSaveFamily(font);
    EXPECT_EQ(outcome.kind, Kind::saved) << outcome.sentence;
    EXPECT_EQ(textOf(**TLOpenFamily(copy.path()), { "n", "o" }), textOf(*font, { "n", "o" }));
}

TEST_F(FamilySaver, tellsWhatOtherProgramsMakeOfAnAxisOfTheFontWithAGlyphsName)
{
    EXPECT_TRUE(TLAddAxis(font, glyph("a")->axes().front()->name(), "bowl", { 0, 0, 20 }));
    EXPECT_THAT(TLSaveFamily(font).notes, Contains(HasSubstr("has the name of an axis of the font")));
    addAxis("n", "Weight");
    EXPECT_THAT(TLSaveFamily(font).notes,
        Contains(testing::AllOf(HasSubstr("can't be interpolated at all"), HasSubstr("'Thin'"))));
    EXPECT_TRUE(TLAddMaster(font, "Heavy", { { axisId("Weight"), 150.0 } }).master);
    saveAndCompare();
}

TEST_F(FamilySaver, tellsWhichValueGivesWayToThatOfARenamedAxis)
{
    auto const axis = glyph("a")->axes().back();
    TLComponent component { .base = "a" };
    component.isVariable = true;
    component.location = { { axis->name(), 10 }, { "Nib", 7 } };
    auto const layer = glyph("o")->layerForId("Skarvane Regular");
    auto outline = layer->outline();
    outline.components.push_back(component);
    layer->setOutline(std::move(outline));
    saveAndCompare();
    axis->setName("Nib");
    font->history().endStep();
    EXPECT_THAT(TLSaveFamily(font).notes, Contains(HasSubstr("loses its value 7 on 'Nib'")));
    font->history().undo();
    saveAndCompare();
}

TEST_F(FamilySaver, savesTheFamilyBehindALinkAndNamesAPlaceByTheFontsAxes)
{
    for (bool const liesBesideTheLink : { false, true }) {
        TemporaryFolder const elsewhere;
        auto const file = liesBesideTheLink ? elsewhere.path() / "File.designspace" : copy.path();
        auto const link = liesBesideTheLink ? copy.path() : elsewhere.path() / "Link.designspace";
        if (liesBesideTheLink) {
            std::filesystem::rename(copy.path(), file);
        }
        std::filesystem::create_symlink(file, link);
        font = *TLOpenFamily(link);
        auto const axis = addAxis("n", liesBesideTheLink ? "Link" : "Serif");
        addLayer("n", { { axisId("Weight"), liesBesideTheLink ? 30.0 : 100.0 }, { axis->axisId(), 80.0 } });
        saveAndCompare();
        EXPECT_THAT(changedFiles(), Contains("Skarvane.designspace"));
        EXPECT_TRUE(std::filesystem::is_symlink(link));
        EXPECT_THAT(copy.text("Skarvane.designspace"), testing::Not(HasSubstr("Serif")));
    }
}
