#include "Tests/Support/DocumentText.h"
#include "Tests/Support/FamilyWriter.h"
#include "Typloom/TyploomApp/TLApplicationController.h"
#include "Typloom/TyploomApp/TLDocumentWindow.h"
#include "Typloom/TyploomApp/TLUserState.h"
#include "Typloom/TyploomCore/TLDocumentHistory.h"
#include "Typloom/TyploomCore/TLFont.h"

#include <QAction>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QSplitter>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

namespace {
namespace fs = std::filesystem;

/// What one run of the program leaves for the next.
struct TLUserStateTest : testing::Test {
    QTemporaryDir folder;
    FamilyWriter files, otherFiles;
    std::unique_ptr<TLApplicationController> application;

    TLUserStateTest()
    {
        files.writeFamily();
        otherFiles.writeFamily();
        run();
    }

    fs::path settings() const { return folder.filePath("settings.conf").toStdString(); }
    fs::path recoveryFolder() const { return folder.filePath("recovery").toStdString(); }

    /// Ends the program without a word to its windows, as a crash does, and starts it again.
    void run()
    {
        application.reset();
        application = std::make_unique<TLApplicationController>();
        application->setUserState(std::make_unique<TLUserState>(settings(), recoveryFolder()));
    }

    TLDocumentWindow& open(FamilyWriter const& family) const
    {
        auto const outcome = application->open(family.designspacePath());
        EXPECT_TRUE(outcome.window) << outcome.error;
        outcome.window->showGlyph("A");
        settle();
        return *outcome.window;
    }

    static void settle()
    {
        for (int turn = 0; turn < 5; ++turn) {
            QCoreApplication::processEvents();
        }
    }

    static QList<QAction*> recentActions(TLDocumentWindow const& window)
    {
        auto* const file = window.widget()->findChild<QMenuBar*>()->actions().front()->menu();
        emit file->aboutToShow();
        auto* const recent = file->actions().at(1)->menu();
        EXPECT_EQ(recent->title(), "Open &Recent");
        EXPECT_EQ(recent->menuAction()->isEnabled(), !recent->isEmpty());
        return recent->actions();
    }

    static void edit(TLDocumentWindow const& window, double advance)
    {
        auto const layer = window.font()->glyphForName("A")->layerForId("light");
        auto outline = layer->outline();
        outline.advance = advance;
        layer->setOutline(std::move(outline));
        settle();
    }

    static void save(TLDocumentWindow const& window)
    {
        window.widget()->activateWindow();
        settle();
        QTest::keyClick(window.widget()->windowHandle(), Qt::Key_S, Qt::ControlModifier);
        settle();
        auto const* const box = question(window);
        EXPECT_EQ(box, nullptr) << box->informativeText().toStdString();
    }

    QStringList copies() const
    {
        return QDir(QString::fromStdString(recoveryFolder())).entryList({ "*.json" }, QDir::Files);
    }
    bool waitForCopy() const
    {
        return QTest::qWaitFor([this] { return !copies().isEmpty(); }, 60'000);
    }

    static QMessageBox* question(TLDocumentWindow const& window)
    {
        for (auto* const box : window.widget()->findChildren<QMessageBox*>()) {
            if (box->isVisible()) {
                return box;
            }
        }
        return nullptr;
    }
    static void answer(TLDocumentWindow const& window, QString const& button)
    {
        auto* const box = question(window);
        ASSERT_NE(box, nullptr);
        for (auto* const each : box->buttons()) {
            if (each->text().remove('&') == button) {
                QTest::mouseClick(each, Qt::LeftButton);
                settle();
                return;
            }
        }
        FAIL() << "There is no button " << button.toStdString();
    }
};

} // namespace

TEST_F(TLUserStateTest, recentFamiliesAreOpenedFromTheMenuOfTheNextRun)
{
    open(files);
    open(otherFiles);
    open(files);
    run();
    auto* const window = application->openInvitation();
    auto const actions = recentActions(*window);
    ASSERT_EQ(actions.size(), 4) << "two families, a line and the command";
    EXPECT_EQ(actions[0]->toolTip().toStdString(), files.designspacePath().string()) << "the newest first";
    fs::remove(otherFiles.designspacePath());
    EXPECT_FALSE(recentActions(*window)[1]->isEnabled()) << "it is not there any more";
    recentActions(*window)[0]->trigger();
    ASSERT_NE(window->font(), nullptr);
    EXPECT_EQ(window->font()->path(), files.designspacePath());
    recentActions(*window)[3]->trigger();
    EXPECT_TRUE(recentActions(*window).isEmpty());
    for (std::size_t i = 0; i < 2 * TLUserState::mostFamilies; ++i) {
        TLUserState(settings(), recoveryFolder()).addRecentFamily("/" + std::to_string(i) + ".designspace");
    }
    EXPECT_EQ(TLUserState(settings(), recoveryFolder()).recentFamilies().size(), TLUserState::mostFamilies);
}

TEST_F(TLUserStateTest, aWindowOpensAsTheLastOneWasClosed)
{
    auto* const window = open(files).widget();
    EXPECT_EQ(window->size(), QSize(1400, 900)) << "before any was closed";
    window->setGeometry(40, 30, 1100, 700);
    settle();
    auto* const columns = window->findChild<QSplitter*>("columns");
    columns->setSizes({ 380, 500, 220 });
    window->findChild<QAction*>("showLayers")->setChecked(false);
    settle();
    auto const sizes = columns->sizes();
    window->close();
    settle();
    run();
    auto* const again = open(files).widget();
    EXPECT_EQ(again->size(), QSize(1100, 700));
    EXPECT_EQ(again->findChild<QSplitter*>("columns")->sizes()[0], sizes[0]);
    EXPECT_FALSE(again->findChild<QAction*>("showLayers")->isChecked());
    auto* const second = open(otherFiles).widget();
    EXPECT_EQ(second->size(), again->size());
    EXPECT_NE(second->pos(), again->pos()) << "not on top of the other";
}

TEST_F(TLUserStateTest, aFamilyIsDroppedAnywhereIntoAWindow)
{
    auto& window = open(files);
    auto* const field = window.widget()->findChild<QLineEdit*>();
    ASSERT_NE(field, nullptr);
    auto const text = field->text();
    QMimeData data;
    data.setUrls({ QUrl::fromLocalFile(QString::fromStdString(otherFiles.designspacePath().string())) });
    QDragEnterEvent enter({ 2, 2 }, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(field, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop({ 2, 2 }, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(field, &drop);
    EXPECT_EQ(field->text(), text);
    ASSERT_EQ(application->windows().size(), 2U);
    EXPECT_EQ(application->windows()[1]->font()->path(), otherFiles.designspacePath());
}

TEST_F(TLUserStateTest, unsavedWorkIsOfferedAfterACrashAndIsOneStep)
{
    auto const before = textOf(*open(files).font());
    auto& font = *application->windows().front()->font();
    auto const glyph = font.glyphForName("A");
    glyph->insertObjectInAxesAtIndex(
        std::make_shared<TLAxis>(TLAxisState { .axisId = "new", .name = "Swash" }), 0);
    auto const layer = std::make_shared<TLLayer::Data>();
    layer->layerId = "fresh";
    layer->kind = TLLayerKind::brace;
    layer->associatedMasterId = "light";
    layer->glyph = glyph;
    layer->coordinates = { { "new", 12.5 } };
    layer->outline = glyph->layerForId("light")->outline();
    layer->outline.components.push_back(
        { .base = "B", .location = { { "Swash", 0.1 } }, .isVariable = true });
    layer->outline.anchors.push_back({ "top", 1.0 / 3, -1e-300 });
    glyph->insertLayer(std::make_shared<TLLayer>(layer));
    font.fontMasters().front()->setName("Lightest");
    edit(*application->windows().front(), 123.25);
    ASSERT_TRUE(waitForCopy());
    auto const unsaved = textOf(font);
    auto const state = glyph->state();
    run();

    auto& window = open(files);
    EXPECT_EQ(textOf(*window.font()), before) << "nothing is restored unasked";
    answer(window, "Restore");
    EXPECT_EQ(textOf(*window.font()), unsaved);
    EXPECT_EQ(window.font()->glyphForName("A")->state(), state);
    EXPECT_TRUE(window.widget()->isWindowModified());
    window.font()->history().undo();
    EXPECT_EQ(textOf(*window.font()), before);
    window.font()->history().redo();
    save(window);
    EXPECT_FALSE(window.widget()->isWindowModified());
    EXPECT_TRUE(copies().isEmpty()) << "what is saved needs no copy";
    run();
    auto& saved = open(files);
    EXPECT_EQ(question(saved), nullptr);
    EXPECT_EQ(saved.font()->glyphForName("A")->layerForId("light")->outline().advance, 123.25);
}

TEST_F(TLUserStateTest, workAfterASaveFindsTheLayersThatTheSaveHasMade)
{
    auto& window = open(files);
    auto const glyph = window.font()->glyphForName("A");
    auto const data = std::make_shared<TLLayer::Data>();
    data->layerId = "fresh";
    data->kind = TLLayerKind::brace;
    data->associatedMasterId = "light";
    data->glyph = glyph;
    data->name = "Middle";
    data->coordinates = { { window.font()->axes().front()->axisId(), 300 } };
    data->outline = glyph->layerForId("light")->outline();
    glyph->insertLayer(std::make_shared<TLLayer>(data));
    settle();
    save(window);
    ASSERT_FALSE(window.widget()->isWindowModified());
    auto outline = glyph->layerForId("fresh")->outline();
    outline.advance = 321;
    glyph->layerForId("fresh")->setOutline(outline);
    settle();
    ASSERT_TRUE(waitForCopy());
    auto const count = glyph->layers().size();
    run();

    auto& again = open(files);
    answer(again, "Restore");
    auto const restored = again.font()->glyphForName("A");
    EXPECT_EQ(restored->layers().size(), count) << "no layer twice";
    EXPECT_EQ(restored->layerForId("fresh"), nullptr) << "it has the name that its file gives it";
    save(again);
    EXPECT_FALSE(again.widget()->isWindowModified());
    run();
    std::size_t found = 0;
    for (auto const& [id, layer] : open(files).font()->glyphForName("A")->layers()) {
        found += layer->isBraceLayer() && layer->outline().advance == 321;
    }
    EXPECT_EQ(found, 1U);
}

TEST_F(TLUserStateTest, aCopyGoesWithTheWorkThatIsGivenUp)
{
    auto const lost = [this](auto const& giveUp) {
        auto& window = open(files);
        edit(window, 77);
        ASSERT_TRUE(waitForCopy());
        giveUp(window);
        EXPECT_TRUE(QTest::qWaitFor([this] { return copies().isEmpty(); }, 60'000));
        run();
        EXPECT_EQ(question(open(files)), nullptr);
        run();
    };
    lost([](TLDocumentWindow& window) { window.font()->history().undo(); });
    lost([](TLDocumentWindow& window) {
        window.widget()->close();
        answer(window, "Discard");
    });
    lost([this](TLDocumentWindow&) {
        run();
        answer(open(files), "Discard");
    });
}

TEST_F(TLUserStateTest, theFirstOfTwoProgramsKeepsTheWorkAndABrokenCopyIsTold)
{
    auto& window = open(files);
    edit(window, 77);
    ASSERT_TRUE(waitForCopy());
    TLApplicationController second;
    second.setUserState(
        std::make_unique<TLUserState>(folder.filePath("other.conf").toStdString(), recoveryFolder()));
    auto* const other = second.open(files.designspacePath()).window;
    settle();
    EXPECT_EQ(question(*other), nullptr) << "the work is not lost yet";
    other->widget()->close();
    EXPECT_EQ(copies().size(), 1);

    auto const file = recoveryFolder() / copies().front().toStdString();
    fs::resize_file(file, fs::file_size(file) / 2);
    run();
    auto& again = open(files);
    EXPECT_EQ(question(again), nullptr);
    ASSERT_FALSE(again.report().empty());
    EXPECT_NE(again.report().front().find("cannot be read"), std::string::npos) << again.report().front();
}
