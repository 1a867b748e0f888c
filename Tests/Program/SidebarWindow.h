#pragma once

#include "Tests/Program/ProgramWindow.h"
#include "Tests/Program/RecordingHost.h"

/// Hears of interface updates before any sidebar that is made later.
struct RoadLog {
    RoadLog()
    {
        auto& center = NSNotificationCenter::defaultCenter();
        center.addObserver(road, "didUpdateInterface:", TLUpdateInterface);
        center.addObserver(road, "rowDidChange:", "moravelRowContentDidChange");
    }

    CallLog log { std::make_shared<std::vector<std::string>>() };
    std::shared_ptr<RoadObserver> road { std::make_shared<RoadObserver>(log) };
};

/// The built plug-in in the host's own window on the sample family, with the glyph "a" edited: two font
/// axes, "Terminal" and "Bowl" of its own, and "Spur", which has no source.
class SidebarInWindow : public testing::Test,
                        protected RoadLog,
                        protected ProgramWindows,
                        protected ProgramWindow {
protected:
    SidebarInWindow()
        : ProgramWindow(open(SOURCE_FOLDER "/Fonts/Skarvane/Skarvane.designspace"))
    {
        document->showGlyph("a");
        recorder = std::make_shared<RecordingController>(log, document->editViewController());
        tab()->setController(recorder);
        showAtSize({ 1100, 700 });
        window->moveAway();
    }

    void showAtSize(QSize size)
    {
        document->widget()->resize(size);
        (void)QTest::qWaitForWindowActive(document->widget());
        settle();
        log->clear();
    }
    std::vector<std::string> takeLog() { return std::exchange(*log, {}); }
    auto countOf(std::string const& entry) const { return std::ranges::count(*log, entry); }

    std::shared_ptr<RecordingController> recorder;
};
