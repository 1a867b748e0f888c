#include "Platform/AppKit/NSNib.h"
#include "Platform/Foundation/NSMainQueue.h"
#include "Platform/Foundation/NSMainThread.h"
#include "Platform/Qt/NSViewBacking.h"
#include "Typloom/TyploomKit/TLCallbackHandler.h"
#include "Typloom/TyploomKit/TLLandmarkSlider.h"
#include "Typloom/TyploomKit/TLPlaceholderView.h"
#include "Typloom/TyploomKit/legacyMainActorIsolated.h"

#include <gmock/gmock.h>

#include <fstream>
#include <thread>

#include <QCoreApplication>
#include <QTemporaryDir>

TEST(MainActor, runsAtOnceOnTheMainThreadAndLaterThereFromAnother)
{
    std::vector<std::thread::id> ranOn;
    auto const note = [&] { ranOn.push_back(std::this_thread::get_id()); };
    legacyMainActorIsolated(note);
    EXPECT_EQ(ranOn.size(), 1u);

    std::string violation;
    auto const before
        = NSSetMainThreadViolationHandler([&](std::string const& message) { violation = message; });
    std::thread([&] { legacyMainActorIsolated(note); }).join();
    NSSetMainThreadViolationHandler(before);
    EXPECT_EQ(ranOn.size(), 1u);
    EXPECT_THAT(violation, testing::HasSubstr("KitTests.cpp"));
    NSMainQueue::runPending();
    EXPECT_EQ(ranOn, std::vector(2, std::this_thread::get_id()));
}

TEST(CallbackHandler, keepsEachClassOncePerCallInOrder)
{
    auto const before = TLCallbackHandler::editViewLeftSidebarControllers().size();
    for (auto const* name : { "First", "Second", "First" }) {
        TLCallbackHandler::addEditViewLeftSidebarController({ name, {}, {}, {} });
    }
    std::vector<std::string> names;
    for (auto const& each : TLCallbackHandler::editViewLeftSidebarControllers()) {
        names.push_back(each.name);
    }
    names.erase(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(before));
    EXPECT_THAT(names, testing::ElementsAre("First", "Second", "First"));
}

TEST(PlaceholderView, showsTitleAndBodyInsideItself)
{
    auto const view = std::make_shared<TLPlaceholderView>();
    EXPECT_EQ(view->title(), "");
    view->setTitle("No Axes");
    view->setBody("Add font axes in the Font tab in Font Info and glyph axes using the plus button below.");
    view->setTitle("No Matches");
    EXPECT_EQ(view->title(), "No Matches");

    qtWidget(*view)->resize(220, 160);
    qtWidget(*view)->show();
    QCoreApplication::processEvents();
    view->layoutSubtreeIfNeeded();
    ASSERT_EQ(view->subviews().size(), 2u);
    double bottom = 0;
    for (auto const& each : view->subviews()) {
        auto const label = std::dynamic_pointer_cast<NSTextField>(each);
        ASSERT_TRUE(label);
        auto const frame = label->frame();
        EXPECT_GE(frame.origin.x, 0);
        EXPECT_LE(frame.maxX(), 220);
        EXPECT_GE(frame.origin.y, bottom); // The one below the other.
        EXPECT_GT(frame.size.height, 10);
        bottom = frame.maxY();
    }
    EXPECT_LE(bottom, 160);
    // Three lines at least: it wraps instead of being cut.
    EXPECT_GT(view->subviews()[1]->frame().size.height, 2.5 * view->subviews()[0]->frame().size.height / 1.3);
}

TEST(ViewClasses, areKnownToInterfaceDescriptionsByName)
{
    TLRegisterViewClasses();
    for (auto const* name : { "TLLandmarkSlider", "TLPlaceholderView" }) {
        QTemporaryDir const folder;
        auto const path = std::filesystem::path(folder.path().toStdString()) / "Test.bundle";
        std::filesystem::create_directories(path / "Resources");
        std::ofstream(path / "Resources/View.ui")
            << "<ui version=\"4.0\"><class>View</class><widget class=\"" << name
            << "\" name=\"view\"/><customwidgets>"
            << "<customwidget><class>" << name
            << "</class><extends>QWidget</extends></customwidget></customwidgets></ui>";
        std::vector<std::string> errors;
        auto const view = NSNib("View", std::make_shared<NSBundle>(path))
                              .instantiate(std::make_shared<NSObject>(), errors);
        EXPECT_THAT(errors, testing::IsEmpty());
        ASSERT_TRUE(view);
        EXPECT_EQ(std::dynamic_pointer_cast<TLLandmarkSlider>(view) != nullptr,
            std::string(name) == "TLLandmarkSlider");
        EXPECT_EQ(std::dynamic_pointer_cast<TLPlaceholderView>(view) != nullptr,
            std::string(name) == "TLPlaceholderView");
    }
}
