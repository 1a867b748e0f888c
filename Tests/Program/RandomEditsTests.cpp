#include "Tests/Program/ShownRows.h"

#include "Tests/Support/DocumentText.h"
#include "Tests/Support/FamilyCopy.h"
#include "Typloom/Formats/DesignspaceReader.h"
#include "Typloom/TyploomCore/TLDocumentHistory.h"
#include "Typloom/TyploomCore/TLFontCommands.h"
#include "Typloom/TyploomCore/TLLayerCommands.h"

#include <QMessageBox>

#include <random>
#include <set>

namespace {

std::vector<std::string> const glyphNames { "a", "n", "o" };

/// A user who does one thing after the other to a few glyphs, at random.
class RandomEdits : public testing::Test, protected ProgramWindows {
protected:
    RandomEdits() { open(); }

    void open()
    {
        shown.emplace(ProgramWindows::open(copy.path()));
        shown->document->widget()->resize(500, 400);
        shown->document->showGlyph(glyphNames.front());
        shown->activate();
    }

    std::size_t pick(std::size_t count)
    {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(random);
    }
    double number() { return static_cast<double>(pick(401)) / 2 - 100; }
    template <class List> auto const& any(List const& list) { return list[pick(list.size())]; }

    TLFont& font() const { return *shown->document->font(); }
    TLGlyph& glyph() const { return *shown->layer()->glyph(); }
    /// Of the document, whatever preview is shown.
    TLGlyph& realGlyph() const { return *font().glyphForName(glyph().name()); }
    std::shared_ptr<TLLayer> anyLayer() { return any(realGlyph().layers().entries()).second; }
    std::string freshName() { return "x" + std::to_string(++names); }
    TLLocation anyPlace()
    {
        TLLocation place;
        for (auto const& axis : realGlyph().allAxes()) {
            if (pick(2) == 0) {
                auto const span = axis->maximum() - axis->minimum();
                place[axis->axisId()]
                    = axis->minimum() + std::round(span * static_cast<double>(pick(11)) / 10);
            }
        }
        return place;
    }

    std::string doSomething()
    {
        struct Deed {
            char const* name;
            void (RandomEdits::*act)();
            int weight;
        };
        static std::vector<Deed> const deeds = [] {
            std::vector<Deed> weighted;
            for (Deed const& deed : {
                     Deed { "insert axis", &RandomEdits::insertAxis, 4 },
                     Deed { "add axis", &RandomEdits::addAxis, 2 },
                     Deed { "rename axis", &RandomEdits::renameAxis, 2 },
                     Deed { "change default", &RandomEdits::changeDefault, 6 },
                     Deed { "delete axis", &RandomEdits::deleteAxis, 5 },
                     Deed { "add layer", &RandomEdits::addLayer, 8 },
                     Deed { "delete layer", &RandomEdits::deleteLayer, 6 },
                     Deed { "move layer", &RandomEdits::moveLayer, 14 },
                     Deed { "move node", &RandomEdits::moveNode, 8 },
                     Deed { "undo", &RandomEdits::undo, 16 },
                     Deed { "redo", &RandomEdits::redo, 10 },
                     Deed { "go", &RandomEdits::go, 12 },
                     Deed { "another glyph", &RandomEdits::showAnother, 3 },
                     Deed { "save", &RandomEdits::save, 4 },
                 }) {
                weighted.insert(weighted.end(), static_cast<std::size_t>(deed.weight), deed);
            }
            return weighted;
        }();
        auto const& deed = any(deeds);
        (this->*deed.act)();
        shown->settle();
        return deed.name;
    }
    void insertAxis()
    {
        auto const axis = std::make_shared<TLAxis>();
        axis->setName(freshName());
        realGlyph().insertObjectInAxesAtIndex(axis, pick(realGlyph().countOfAxes() + 1));
    }
    void addAxis()
    {
        shown->window->click(*shown->plusButton());
        shown->settle();
        typeName();
    }
    /// Into the editor that is open, and Return.
    void typeName()
    {
        ASSERT_NE(ProgramWindow::popover(), nullptr);
        WindowEvents editor(ProgramWindow::popoverWidget());
        editor.type(freshName());
        editor.pressKey(Qt::Key_Return);
        shown->settle();
    }
    void deleteAxis()
    {
        if (realGlyph().countOfAxes() == 0) {
            return;
        }
        auto const index = pick(realGlyph().countOfAxes());
        auto const axisId = realGlyph().axes()[index]->axisId();
        realGlyph().removeObjectFromAxesAtIndex(index);
        for (auto const& [layerId, layer] : realGlyph().layers()) {
            auto coordinates = layer->coordinates();
            coordinates.erase(axisId);
            layer->setCoordinates(coordinates);
        }
    }
    void renameAxis()
    {
        if (realGlyph().countOfAxes() > 0) {
            auto const index = pick(realGlyph().countOfAxes());
            auto const table = shown->table();
            table->scrollRowToVisible(table->numberOfRows() - realGlyph().countOfAxes() + index);
            table->layoutSubtreeIfNeeded();
            shown->window->click(*shown->row(realGlyph().axes()[index]->name()), 0.3, 0.2, Qt::RightButton);
            typeName();
        }
    }
    void changeDefault()
    {
        if (realGlyph().countOfAxes() > 0) {
            any(realGlyph().axes())->setDefaultValue(number());
        }
    }
    void addLayer() { TLAddIntermediateLayer(realGlyph(), anyPlace(), any(font().fontMasters())->id()); }
    void deleteLayer() { TLDeleteLayer(*anyLayer()); }
    void moveLayer()
    {
        auto const axes = realGlyph().allAxes();
        TLSetLayerCoordinate(
            *anyLayer(), any(axes)->axisId(), pick(5) == 0 ? std::nullopt : std::optional(number()));
    }
    void moveNode()
    {
        auto const layer = anyLayer();
        auto outline = layer->outline();
        if (!outline.contours.empty()) {
            outline.contours[0].points[pick(outline.contours[0].points.size())].x += number();
            layer->setOutline(outline);
        }
    }
    void undo() { pressSome(Qt::Key_Z, Qt::ControlModifier); }
    void redo() { pressSome(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier); }
    void pressSome(Qt::Key key, Qt::KeyboardModifiers modifiers)
    {
        for (auto count = pick(4) + 1; count > 0; --count) {
            shown->press(key, modifiers);
        }
    }
    void go() { shown->document->goToLocation(anyPlace()); }
    void showAnother() { shown->document->showGlyph(any(glyphNames)); }

    bool hasTwoAxesOfOneName() const
    {
        return std::any_of(glyphNames.begin(), glyphNames.end(), [this](auto const& glyphName) {
            std::multiset<std::string> axisNames;
            for (auto const& axis : font().glyphForName(glyphName)->axes()) {
                axisNames.insert(axis->name());
            }
            return std::adjacent_find(axisNames.begin(), axisNames.end()) != axisNames.end();
        });
    }
    /// By its key; then the files hold what the document holds.
    void save()
    {
        shown->press(Qt::Key_S, Qt::ControlModifier);
        if (auto* const message = shown->document->widget()->findChild<QMessageBox*>()) {
            ASSERT_TRUE(hasTwoAxesOfOneName()) << message->informativeText().toStdString();
            ASSERT_TRUE(font().history().isModified());
            QTest::keyClick(message->windowHandle(), Qt::Key_Escape);
            shown->settle();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            return shown->activate();
        }
        ASSERT_FALSE(shown->document->widget()->isWindowModified());
        auto const opened = TLOpenFamily(copy.path());
        ASSERT_TRUE(opened) << opened.error().sentence();
        ASSERT_EQ(textOf(**opened, glyphNames), textOf(font(), glyphNames));
        ++saves;
        if (pick(3) == 0) {
            shown->document->widget()->close();
            shown->settle();
            ASSERT_TRUE(application.windows().empty());
            open();
        }
    }

    /// The rows are those of the document, and when this is thorough those that a sidebar made now would
    /// show.
    void expectRowsToAgree(bool isThorough) const
    {
        std::vector<std::string> expected;
        for (auto const& axis : font().axes()) {
            expected.push_back(axis->name());
        }
        for (auto const& axis : realGlyph().axes()) {
            expected.push_back(axis->name());
        }
        auto const rows = rowsOf(*shown->document->sidebar());
        std::vector<std::string> shownNames;
        for (auto const& row : rows) {
            shownNames.push_back(row.substr(0, row.find('|')));
        }
        ASSERT_EQ(shownNames, expected);
        if (isThorough) {
            ASSERT_EQ(rows, rowsOfNewSidebar(*shown->document));
        }
    }
    FamilyCopy copy { SOURCE_FOLDER "/Fonts/Skarvane/Skarvane.designspace", quickFolder() };
    std::mt19937 random { 4 };
    int names { 0 };
    int saves { 0 };
    std::optional<ProgramWindow> shown;
};

} // namespace

TEST_F(RandomEdits, documentTableAndFilesAgreeAfterEach)
{
    for (int step = 0; step < 1000 && !HasFailure(); ++step) {
        SCOPED_TRACE(std::to_string(step) + " " + doSomething());
        expectRowsToAgree(step % 4 == 0);
    }
    EXPECT_GT(saves, 10);
}
