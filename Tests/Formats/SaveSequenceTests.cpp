#include "Tests/Support/DesignspacesIn.h"
#include "Tests/Support/DocumentText.h"
#include "Tests/Support/FamilyCopy.h"
#include "Tests/Support/FaultyFileSystem.h"
#include "Typloom/Formats/DesignspaceReader.h"
#include "Typloom/Formats/FamilySaver.h"
#include "Typloom/TyploomCore/TLDocumentHistory.h"
#include "Typloom/TyploomCore/TLFontCommands.h"
#include "Typloom/TyploomCore/TLLayerCommands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

namespace {

/// Edits a family at random, as a person could by the interface.
class RandomEditor {
public:
    RandomEditor(std::filesystem::path const& path, unsigned seed)
        : m_path(path)
        , m_random(seed)
    {
        open();
    }

    std::shared_ptr<TLFont> font;

    void open()
    {
        font = *TLOpenFamily(m_path);
        m_names = font->glyphNames();
        m_names.resize(std::min<std::size_t>(m_names.size(), 4));
        for (auto const& names : { font->glyphSource()->glyphNamesWithOwnDesignSpace(),
                 font->glyphSource()->glyphNamesWithVariableComponents() }) {
            m_names.insert(m_names.end(), names.begin(), names.end());
        }
    }

    std::string edit()
    {
        static constexpr std::array steps { &RandomEditor::addAxis, &RandomEditor::renameAxis,
            &RandomEditor::removeAxis, &RandomEditor::changeDefault, &RandomEditor::addLayer,
            &RandomEditor::addLayer, &RandomEditor::moveLayer, &RandomEditor::moveLayer,
            &RandomEditor::deleteLayer, &RandomEditor::moveNode, &RandomEditor::moveNode,
            &RandomEditor::changeFont, &RandomEditor::undo, &RandomEditor::undo, &RandomEditor::redo };
        auto description = (this->*steps[pick(steps.size())])();
        font->history().endStep();
        return description;
    }

    std::size_t pick(std::size_t count) { return count == 0 ? 0 : m_random() % count; }

private:
    double number() { return std::round(std::uniform_real_distribution(-50.0, 200.0)(m_random) * 10) / 10; }
    std::string name()
    {
        return std::array { "flip", "turn", "x y", "Größe", "<&>", "a*b" }[pick(6)]
            + std::to_string(pick(20));
    }

    std::shared_ptr<TLGlyph> glyph() { return font->glyphForName(m_names[pick(m_names.size())]); }

    std::shared_ptr<TLAxis> axisOf(TLGlyph const& glyph)
    {
        return glyph.countOfAxes() == 0 ? nullptr : glyph.axes()[pick(glyph.countOfAxes())];
    }

    bool isFree(TLGlyph const& glyph, std::string const& wanted) const
    {
        auto const axes = glyph.axes();
        return std::none_of(
            axes.begin(), axes.end(), [&](auto const& axis) { return axis->name() == wanted; });
    }

    std::string addAxis()
    {
        auto const where = glyph();
        auto wanted = name();
        if (pick(8) == 0 && !font->axes().empty()) {
            wanted = font->axes()[pick(font->axes().size())]->name();
        }
        if (!isFree(*where, wanted)) {
            return {};
        }
        auto const axis = std::make_shared<TLAxis>();
        axis->setName(wanted);
        where->insertObjectInAxesAtIndex(axis, where->countOfAxes());
        return "add axis " + wanted + " to " + where->name();
    }

    std::string renameAxis()
    {
        auto const where = glyph();
        auto const axis = axisOf(*where);
        auto const wanted = name();
        if (!axis || !isFree(*where, wanted)) {
            return {};
        }
        auto const old = axis->name();
        axis->setName(wanted);
        return "rename axis " + old + " of " + where->name() + " to " + wanted;
    }

    std::string removeAxis()
    {
        auto const where = glyph();
        if (where->countOfAxes() == 0) {
            return {};
        }
        auto const index = pick(where->countOfAxes());
        auto const axis = where->axes()[index];
        for (auto const& [layerId, layer] : where->layers()) {
            auto coordinates = layer->coordinates();
            coordinates.erase(axis->axisId());
            for (auto const& partId : axis->partIds()) {
                coordinates.erase(partId);
            }
            layer->setCoordinates(coordinates);
        }
        where->removeObjectFromAxesAtIndex(index);
        return "remove axis " + axis->name() + " of " + where->name();
    }

    std::string changeDefault()
    {
        auto const where = glyph();
        auto const axis = axisOf(*where);
        if (!axis) {
            return {};
        }
        axis->setDefaultValue(number());
        return "change default of " + axis->name() + " of " + where->name();
    }

    TLLocation place(TLGlyph const& where)
    {
        TLLocation place;
        for (auto const& axis : font->axes()) {
            if (!axis->isDiscrete() && pick(2) == 0) {
                place[axis->axisId()]
                    = std::round(axis->minimum() + (axis->maximum() - axis->minimum()) * double(pick(5)) / 4)
                    + 0.0;
            }
        }
        if (auto const axis = axisOf(where); axis && pick(2) == 0) {
            place[axis->axisId()] = number();
        }
        return place;
    }

    std::string addLayer()
    {
        auto const where = glyph();
        auto const masters = font->fontMasters();
        auto const added = TLAddIntermediateLayer(*where, place(*where), masters[pick(masters.size())]->id());
        return added.layer ? "add layer " + added.layer->name() + " to " + where->name() : std::string {};
    }

    std::shared_ptr<TLLayer> layer(TLGlyph const& where, bool intermediate)
    {
        std::vector<std::shared_ptr<TLLayer>> layers;
        for (auto const& [layerId, layer] : where.layers()) {
            if (!intermediate || layer->isBraceLayer()) {
                layers.push_back(layer);
            }
        }
        return layers.empty() ? nullptr : layers[pick(layers.size())];
    }

    std::string moveLayer()
    {
        auto const where = glyph();
        auto const moved = layer(*where, true);
        auto const axes = where->allAxes();
        if (!moved) {
            return {};
        }
        auto const axis = axes[pick(axes.size())];
        bool const isOwn = !font->axisForId(axis->axisId());
        auto const value = isOwn
            ? (pick(4) == 0 ? std::nullopt : std::optional(number()))
            : std::optional(
                std::round(axis->minimum() + (axis->maximum() - axis->minimum()) * double(pick(5)) / 4)
                + 0.0);
        return TLSetLayerCoordinate(*moved, axis->axisId(), value)
            ? "move layer " + moved->name() + " of " + where->name() + " on " + axis->name()
            : std::string {};
    }

    std::string deleteLayer()
    {
        auto const where = glyph();
        auto const gone = layer(*where, true);
        if (!gone) {
            return {};
        }
        auto const description = "delete layer " + gone->name() + " of " + where->name();
        TLDeleteLayer(*gone);
        return description;
    }

    std::string moveNode()
    {
        auto const where = glyph();
        auto const drawn = layer(*where, false);
        auto outline = drawn->outline();
        if (!outline.contours.empty()) {
            auto& points = outline.contours[pick(outline.contours.size())].points;
            points[pick(points.size())].y += number();
        }
        outline.advance = std::round(outline.advance + number());
        drawn->setOutline(std::move(outline));
        return "draw layer " + drawn->name() + " of " + where->name();
    }

    std::string changeFont()
    {
        auto const master = font->fontMasters()[pick(font->fontMasters().size())];
        switch (pick(4)) {
        case 0:
            master->setName("Master " + std::to_string(pick(100)));
            return "rename master";
        case 1: {
            auto const axis = font->axes()[pick(font->axes().size())];
            auto const wanted = name();
            if (!TLReasonAgainstAxisName(*font, wanted)) {
                axis->setName(wanted);
            }
            return "rename font axis to " + wanted;
        }
        case 2: {
            auto const axis = font->axes()[pick(font->axes().size())];
            double const value
                = std::round(axis->minimum() + (axis->maximum() - axis->minimum()) * double(pick(50)) / 49);
            if (master != font->defaultFontMaster(nullptr)
                && !TLReasonAgainstMasterValue(*font, *master, *axis, value)) {
                master->setAxisInternalValue(value, axis->axisId());
            }
            return "move master " + master->name();
        }
        default:
            return {};
        }
    }

    std::string undo()
    {
        font->history().undo();
        return "undo";
    }
    std::string redo()
    {
        font->history().redo();
        return "redo";
    }

    std::filesystem::path m_path;
    std::mt19937 m_random;
    std::vector<std::string> m_names; ///< Of the glyphs that are edited.
};

void expectTheSameAfterEachSave(std::filesystem::path const& designspace, unsigned seed, int steps)
{
    FamilyCopy const copy(designspace);
    RandomEditor editor(copy.path(), seed);
    std::string log;
    for (int step = 0; step < steps; ++step) {
        auto const done = editor.edit();
        log += done.empty() ? "" : done + "\n";
        if (editor.pick(6) != 0) {
            continue;
        }
        FaultyFileSystem quick;
        auto const outcome = TLSaveFamily(editor.font, {}, quick);
        if (outcome.sentence.find("are one file and were changed in two ways") != std::string::npos) {
            editor.open();
            log = "open\n";
            continue;
        }
        bool const isFine = outcome.kind == TLSaveOutcome::Kind::saved
            || outcome.kind == TLSaveOutcome::Kind::nothingToSave;
        ASSERT_TRUE(isFine) << outcome.sentence << "\n" << log;
        log += "save\n";
        std::vector<std::string> names;
        for (auto const& [name, glyph] : editor.font->loadedGlyphs()) {
            names.push_back(name);
        }
        auto const again = TLOpenFamily(copy.path());
        ASSERT_TRUE(again) << again.error().sentence() << "\n" << log;
        ASSERT_EQ(textOf(**again, names), textOf(*editor.font, names)) << log;
        if (editor.pick(5) == 0) {
            editor.open();
            log += "open\n";
        }
    }
}

} // namespace

TEST(SaveSequence, ofTheProjectsFamilyReadsBackAsTheDocument)
{
    auto const* const wanted = std::getenv("TYPLOOM_SEQUENCES");
    unsigned const count = wanted ? static_cast<unsigned>(std::atoi(wanted)) : 6;
    for (unsigned seed = 1; seed <= count && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        expectTheSameAfterEachSave(
            std::filesystem::path(SOURCE_FOLDER) / "Fonts/Skarvane/Skarvane.designspace", seed, 150);
    }
}

TEST(SaveSequence, ofAnotherFoldersFamiliesReadsBackAsTheDocument)
{
    auto const* const folder = std::getenv("TYPLOOM_FAMILIES");
    if (!folder) {
        GTEST_SKIP() << "TYPLOOM_FAMILIES names no folder of families";
    }
    for (auto const& path : designspacesIn(folder)) {
        SCOPED_TRACE(path);
        for (unsigned seed = 1; seed <= 3 && !testing::Test::HasFailure(); ++seed) {
            expectTheSameAfterEachSave(path, seed, 150);
        }
    }
}
