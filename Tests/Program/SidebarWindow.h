#pragma once

#include "Tests/Program/RecordingHost.h"
#include "Tests/Support/WindowEvents.h"
#include "Typloom/TyploomApp/TLApplicationController.h"
#include "Typloom/TyploomApp/TLDocumentWindow.h"
#include "Typloom/TyploomApp/TLPluginLoader.h"
#include "Typloom/TyploomApp/TLSidebar.h"
#include "Typloom/TyploomCore/TLUpdateInterface.h"
#include "Typloom/TyploomKit/TLLandmarkSlider.h"
#include "Typloom/TyploomKit/TLPlaceholderView.h"

#include "Platform/AppKit/NSButton.h"
#include "Platform/AppKit/NSSearchField.h"
#include "Platform/AppKit/NSTableView.h"
#include "Platform/Foundation/NSLocale.h"

#include <gtest/gtest.h>

/// The built plug-in in the host's own window on the sample family, with the glyph "a" edited: two font
/// axes, "Terminal" and "Bowl" of its own, and "Spur", which has no source.
class SidebarInWindow : public testing::Test {
protected:
    SidebarInWindow()
    {
        NSSetCurrentLocale("en_US");
        loadPlugin();
        auto& center = NSNotificationCenter::defaultCenter();
        center.addObserver(road, "didUpdateInterface:", TLUpdateInterface); // Before the sidebar's own.
        center.addObserver(road, "rowDidChange:", "moravelRowContentDidChange");
        auto const outcome = application.open(SOURCE_FOLDER "/Fonts/Skarvane/Skarvane.designspace");
        document = outcome.window;
        window = std::make_unique<WindowEvents>(*document->widget());
        document->showGlyph("a");
        recorder = std::make_shared<RecordingController>(log, document->editViewController());
        tab()->setController(recorder);
        showAtSize({ 1100, 700 });
        window->moveAway();
    }
    ~SidebarInWindow() override { NSSetCurrentLocale(""); }

    static void loadPlugin()
    {
        static TLPluginLoader const loader = [] {
            TLRegisterViewClasses();
            TLPluginLoader fresh;
            fresh.load(BUILD_FOLDER "/PlugIns/Moravel.bundle");
            return fresh;
        }();
        ASSERT_EQ(loader.loaded(), std::vector<std::string> { "Moravel" });
    }
    void showAtSize(QSize size)
    {
        document->widget()->resize(size);
        (void)QTest::qWaitForWindowActive(document->widget());
        settle();
        log->clear();
    }
    static void settle()
    {
        for (int turn = 0; turn < 5; ++turn) {
            QCoreApplication::processEvents();
        }
    }

    std::shared_ptr<TLEditViewSidebarControllerProtocol> tab() const
    {
        return document->sidebar()->controllerOfTab(0);
    }
    template <class View> std::shared_ptr<View> part(std::string_view name) const
    {
        return std::dynamic_pointer_cast<View>(tab()->view()->descendantWithIdentifier(name));
    }
    std::shared_ptr<NSTableView> table() const { return part<NSTableView>("tableView"); }
    /// The view of an axis's row; null when it has none now.
    std::shared_ptr<NSView> row(std::string const& axis) const
    {
        for (std::size_t index = 0; index < table()->numberOfRows(); ++index) {
            auto const view = table()->viewAtColumnRow(0, index, false);
            auto const label = view ? in<NSTextField>(view, "nameLabel") : nullptr;
            if (label && label->stringValue() == axis) {
                return view;
            }
        }
        return nullptr;
    }
    template <class View>
    static std::shared_ptr<View> in(std::shared_ptr<NSView> const& row, std::string_view name)
    {
        return std::dynamic_pointer_cast<View>(row->descendantWithIdentifier(name));
    }
    std::shared_ptr<TLLandmarkSlider> slider(std::string const& axis) const
    {
        return in<TLLandmarkSlider>(row(axis), "slider");
    }
    std::string text(std::string const& axis) const
    {
        return in<NSTextField>(row(axis), "valueField")->stringValue();
    }
    /// Which of a row's buttons can be seen: "info", "steps", "info steps" or nothing.
    std::string buttons(std::string const& axis) const
    {
        auto const shows = [&](char const* name) { return !in<NSButton>(row(axis), name)->isHidden(); };
        EXPECT_EQ(shows("stepDownButton"), shows("stepUpButton"));
        std::string const info = shows("infoButton") ? "info" : "";
        return shows("stepUpButton") ? info + (info.empty() ? "steps" : " steps") : info;
    }
    /// Where a value stands on a slider, as a fraction of its width.
    static double fraction(TLLandmarkSlider const& slider, double value)
    {
        constexpr double margin = 9; // Of the track's ends, for the knob and its focus ring.
        auto const width = slider.bounds().size.width;
        auto const span = slider.maxValue() - slider.minValue();
        return (margin + (value - slider.minValue()) / span * (width - 2 * margin)) / width;
    }
    double scrolled() const { return table()->enclosingScrollView()->contentView()->bounds().origin.y; }
    std::vector<std::string> takeLog() { return std::exchange(*log, {}); }
    auto countOf(std::string const& entry) const { return std::ranges::count(*log, entry); }

    CallLog log { std::make_shared<std::vector<std::string>>() };
    std::shared_ptr<RoadObserver> road { std::make_shared<RoadObserver>(log) };
    TLApplicationController application;
    TLDocumentWindow* document { nullptr };
    std::unique_ptr<WindowEvents> window;
    std::shared_ptr<RecordingController> recorder;
};
