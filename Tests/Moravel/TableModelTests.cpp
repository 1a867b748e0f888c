#include "Moravel/Model/TableRows.h"
#include "Moravel/SidebarViewController.h"

#include "Tests/Support/EditViewDouble.h"
#include "Tests/Support/FontBuilder.h"
#include "Typloom/TyploomCore/TLInterpolationFontProxy.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

static std::string describeList(std::optional<std::vector<double>> const& list)
{
    std::string text;
    for (auto const value : list.value_or(std::vector<double> { -1 })) {
        text += ' ' + NSNumberDescription(value);
    }
    return text.empty() ? " none" : text;
}

/// A line for each section and row, in order.
static std::vector<std::string> rowsOf(MoravelTableModel const& model)
{
    std::vector<std::string> lines;
    for (auto const& section : model.snapshot.sections()) {
        lines.push_back(describe(section.identifier));
        for (auto const& item : section.items) {
            auto const& content = model.rowContentByItem.at(item);
            lines.push_back(content.axis->name() + ":" + describeList(content.range) + " |"
                + describeList(content.landmarks) + " | " + NSNumberDescription(content.position));
        }
    }
    EXPECT_EQ(model.rowContentByItem.size(), model.snapshot.numberOfItems());
    return lines;
}

class TableModelTest : public testing::Test {
protected:
    TableModelTest()
    {
        builder.addAxis("wght", "Weight", { 100, 400, 900 }, "wght");
        builder.addMaster("thin", { { "wght", 100 } });
        builder.addMaster("regular", { { "wght", 400 } });
        editor = std::make_shared<EditViewControllerDouble>(builder.font());
        sidebar->setController(editor);
    }
    std::vector<std::string> rows() { return rowsOf(sidebar->makeTableModel()); }
    std::vector<std::string> filteredRows(std::string_view query)
    {
        return rowsOf(
            tableRows({ .font = *builder.font(), .layer = editor->layer.get(), .filterQuery = query }));
    }

    FontBuilder builder;
    std::shared_ptr<EditViewControllerDouble> editor;
    std::shared_ptr<SidebarViewController> sidebar { std::make_shared<SidebarViewController>() };
};

TEST_F(TableModelTest, isEmptyWithoutAFontAndForgetsTheLayer)
{
    auto const glyph = builder.addGlyph("A");
    editor->layer = glyph->layerForId("thin");
    EXPECT_THAT(rows(), ElementsAre("font", "Weight: 100 400 400 | 100 400 | 100"));
    EXPECT_EQ(sidebar->activeLayer(), editor->layer);

    editor->layer = nullptr;
    editor->window->font = nullptr;
    EXPECT_THAT(rows(), IsEmpty());
    EXPECT_EQ(sidebar->activeLayer(), nullptr);
    editor->window = nullptr;
    EXPECT_THAT(rows(), IsEmpty());
    auto const other = std::make_shared<GlyphViewControllerDouble>();
    sidebar->setController(other);
    EXPECT_THAT(rows(), IsEmpty()) << "a controller of another kind has no document";
    other->layer = glyph->layerForId("thin");
    EXPECT_THAT(rows(), ElementsAre("font", "Weight: 100 400 400 | 100 400 | 100"));
    sidebar->setController({});
    EXPECT_THAT(rows(), IsEmpty());
}

TEST_F(TableModelTest, theDisplayLocationMovesNoRowOnWhichTheLayerHasAPlace)
{
    auto const glyph = builder.addGlyph("A");
    editor->layer = FontBuilder::addBraceLayer(glyph, "middle", "thin", { { "wght", 250 } });
    FontBuilder::addGlyphAxis(glyph, "bar", "Bar", { 0, 10, 100 });
    FontBuilder::addBraceLayer(glyph, "raised", "thin", { { "bar", 60 } });
    editor->view->location = TLLocation { { "wght", 300.0 }, { "bar", 30.0 } };
    EXPECT_THAT(rows(),
        ElementsAre("font", "Weight: 100 400 400 | 100 400 | 250", //
            "glyph", "Bar: 10 10 60 | 60 | 10"));
    editor->layer = FontBuilder::addOtherLayer(glyph, "sketch");
    EXPECT_THAT(rows(),
        ElementsAre("font", "Weight: 100 400 400 | 100 400 | 300", //
            "glyph", "Bar: 10 10 60 | 60 | 10"))
        << "a glyph axis never follows the display location";
}

TEST_F(TableModelTest, worksOnTheRealLayerUnderAPreview)
{
    auto const glyph = builder.addGlyph("A");
    auto const proxy = std::make_shared<TLInterpolationFontProxy>(builder.font());
    auto const previewOf = [&](std::shared_ptr<TLGlyph> const& owner) {
        auto const data = std::make_shared<TLLayer::Data>();
        data->glyph = owner;
        return std::make_shared<TLLayer>(data, proxy);
    };
    editor->layer = previewOf(glyph);
    editor->master = 1;
    EXPECT_EQ(sidebar->currentActiveLayer(), glyph->layerForId("regular"));
    EXPECT_EQ(sidebar->currentGlyph(), glyph);
    EXPECT_THAT(rows(), ElementsAre("font", "Weight: 100 400 400 | 100 400 | 400"));
    EXPECT_EQ(sidebar->activeLayer(), glyph->layerForId("regular"));

    editor->master = 5;
    EXPECT_EQ(sidebar->currentActiveLayer(), editor->layer) << "no such master";
    editor->master = 0;
    glyph->removeLayer("thin");
    EXPECT_EQ(sidebar->currentActiveLayer(), editor->layer) << "no layer of the master";
    auto const stranger = std::make_shared<TLGlyph>("stranger");
    editor->layer = previewOf(stranger);
    EXPECT_EQ(sidebar->currentActiveLayer(), editor->layer) << "no such glyph in the real font";
    EXPECT_EQ(sidebar->currentGlyph(), nullptr);
    auto const nameless = std::make_shared<TLGlyph>("");
    editor->layer = previewOf(nameless);
    EXPECT_EQ(sidebar->currentActiveLayer(), editor->layer);
    EXPECT_EQ(sidebar->currentGlyph(), nameless);
    editor->layer = previewOf(nullptr);
    EXPECT_EQ(sidebar->currentActiveLayer(), editor->layer);
    EXPECT_EQ(sidebar->currentGlyph(), nullptr);
}

TEST_F(TableModelTest, filtersByNameWithoutRegardToCaseAndFontAxesByTagToo)
{
    auto const glyph = builder.addGlyph("A");
    editor->layer = glyph->layerForId("thin");
    FontBuilder::addGlyphAxis(glyph, "bar", "Bar", { 0, 0, 100 })->setAxisTag("wght");
    EXPECT_THAT(filteredRows("eIGH"), ElementsAre("font", testing::StartsWith("Weight:")));
    EXPECT_THAT(filteredRows("WGHT"), ElementsAre("font", testing::StartsWith("Weight:")))
        << "the tag of a glyph axis does not count";
    EXPECT_THAT(filteredRows("AR"), ElementsAre("glyph", testing::StartsWith("Bar:")));
    EXPECT_THAT(filteredRows("wéight"), IsEmpty()) << "diacritics count";
    EXPECT_THAT(filteredRows("ei ght"), IsEmpty());
}
