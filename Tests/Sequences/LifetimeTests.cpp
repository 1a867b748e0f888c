#include "Tests/Sequences/ShownTable.h"

#include "Platform/AppKit/NSApplication.h"
#include "Platform/AppKit/NSPopover.h"
#include "Platform/Foundation/NSMainQueue.h"
#include "Tests/Sequences/FamilyChanges.h"
#include "Tests/Support/FontBuilder.h"
#include "Tests/Support/RowBuilder.h"
#include "Tests/Support/Sequences.h"
#include "Tests/Support/ViewWindow.h"
#include "Typloom/TyploomCore/TLUpdateInterface.h"

#include <QApplication>
#include <gtest/gtest.h>
#include <malloc.h>

#include <array>
#include <cmath>

namespace {

void settle()
{
    for (int turn = 0; turn < 4; ++turn) {
        NSMainQueue::runPending();
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

void update()
{
    NSNotificationCenter::defaultCenter().post(TLUpdateInterface);
}

/// Acts at every notification that is posted, whatever its name.
class EveryNotification final : public NSObject {
public:
    std::span<NSMethod const> methods() const override
    {
        static std::array const methods { NSMethodMake("note:", &EveryNotification::note) };
        return methods;
    }
    void note(std::shared_ptr<NSNotification> const&)
    {
        if (auto const once = act) {
            once();
        }
    }
    std::function<void()> act;
};

/// One tab over one host, on screen when it has a window.
struct Tab {
    std::shared_ptr<LiveHost> host { std::make_shared<LiveHost>() };
    FamilyChanges family { host };
    std::shared_ptr<SidebarViewController> sidebar;
    std::unique_ptr<ViewWindow> window;

    explicit Tab(bool isOnScreen = true)
    {
        RowBuilder::openBundle();
        sidebar = std::make_shared<SidebarViewController>();
        sidebar->init();
        sidebar->setController(host);
        auto const view = sidebar->view();
        if (isOnScreen) {
            window = std::make_unique<ViewWindow>(view, QSize(280, 700));
        }
        sidebar->viewDidAppear();
        settle();
    }
    ~Tab()
    {
        NSApplication::closeTransientPopovers();
        sidebar.reset();
        window.reset();
        settle();
    }
    std::shared_ptr<AxisCellView> rowOf(Section section) const
    {
        auto const table = sidebar ? sidebar->tableView() : nullptr;
        for (std::size_t row = 0; table && row < table->numberOfRows(); ++row) {
            auto const view = std::dynamic_pointer_cast<AxisCellView>(table->viewAtColumnRow(0, row, false));
            if (view && view->item()->section == section) {
                return view;
            }
        }
        return nullptr;
    }
};

/// Something that goes while nobody expects it.
struct Fault {
    char const* name;
    void (*act)(Tab& tab);
};

std::array const faults {
    Fault { "the family is closed", [](Tab& tab) { tab.family.closeFamily(0, 0); } },
    Fault { "the host goes", [](Tab& tab) { tab.sidebar ? tab.sidebar->setController({}) : void(); } },
    Fault { "another family is opened", [](Tab& tab) { tab.family.openFamily(1, 0); } },
    Fault { "its axes go",
        [](Tab& tab) {
            if (auto const font = tab.host->window->documentFont()) {
                while (!font->axes().empty()) {
                    font->removeAxis(0);
                }
                while (font->glyphForName("A")->countOfAxes() > 0) {
                    font->glyphForName("A")->removeObjectFromAxesAtIndex(0);
                }
            }
        } },
    Fault { "its layers and masters go",
        [](Tab& tab) {
            if (auto const font = tab.host->window->documentFont()) {
                for (auto const* const layerId : { "raised", "middle", "m100", "m400", "m900" }) {
                    font->glyphForName("A")->removeLayer(layerId);
                }
                while (!font->fontMasters().empty()) {
                    font->removeMaster(0);
                }
            }
        } },
    Fault { "the host updates", [](Tab&) { update(); } },
    Fault { "popovers are closed", [](Tab&) { NSApplication::closeTransientPopovers(); } },
    Fault { "the tab is hidden", [](Tab& tab) { tab.window ? tab.window->widget().hide() : void(); } },
    Fault { "the sidebar goes", [](Tab& tab) { tab.sidebar.reset(); } },
    Fault { "sidebar and window go",
        [](Tab& tab) {
            tab.sidebar.reset();
            tab.window.reset();
        } },
};

/// Everything that a sidebar does, from its controls.
void useAll(Tab& tab)
{
    auto const with = [&](auto const& act) {
        if (auto const sidebar = tab.sidebar) {
            act(*sidebar);
        }
    };
    with([](auto& sidebar) { sidebar.viewDidAppear(); });
    update();
    if (auto const row = tab.rowOf(Section::font)) {
        row->slider()->performChange(550);
    }
    settle();
    if (auto const row = tab.rowOf(Section::glyph)) {
        row->stepUp(nullptr);
        row->showAxisInfo(nullptr);
        row->slider()->performChange(30);
    }
    with([](auto& sidebar) {
        if (auto const popover = sidebar.editGlyphAxisPopover()) {
            auto const editor = popover->contentViewController();
            popover->close();
        }
    });
    with([](auto& sidebar) { sidebar.addGlyphAxis(nullptr); });
    settle();
    with([](auto& sidebar) {
        sidebar.filterField()->setStringValue("e");
        sidebar.controlTextDidChange(std::make_shared<NSNotification>("change", sidebar.filterField()));
    });
    settle();
}

} // namespace

/// Uses a new tab with the fault at the nth call of the host or notification. How many there were.
static std::size_t callsWithFault(Fault const& fault, std::size_t n)
{
    Tab tab;
    std::size_t calls = 0;
    auto const reach = [&] {
        if (++calls == n) {
            fault.act(tab);
        }
    };
    auto const listener = std::make_shared<EveryNotification>();
    listener->act = reach;
    tab.host->state->onCall = reach;
    NSNotificationCenter::defaultCenter().addObserver(listener, "note:", std::nullopt);
    useAll(tab);
    tab.host->state->onCall = {};
    listener->act = {};
    if (tab.sidebar) {
        tab.sidebar->setController(tab.host);
        settle();
        update();
        ShownTable table(tab.sidebar, tab.host);
        table.requireFresh();
    }
    return calls;
}

TEST(Lifetime, whateverGoesAtAnyCallTheTableEndsTrue)
{
    constexpr std::size_t stride = isSlowedDown ? 7 : 1;
    auto const calls = callsWithFault(faults[0], 0);
    ASSERT_GT(calls, 50U);
    for (auto const& fault : faults) {
        for (std::size_t n = 1; n <= calls; n += stride) {
            SCOPED_TRACE(std::string(fault.name) + " at call " + std::to_string(n));
            ASSERT_NO_THROW(callsWithFault(fault, n));
        }
    }
}

TEST(Lifetime, aTabIsMadeAndReleasedAThousandTimesAndNothingStays)
{
    Tab first(false);
    auto& center = NSNotificationCenter::defaultCenter();
    auto const once = [&] {
        Tab tab(false);
        tab.rowOf(Section::glyph)->stepUp(nullptr);
        std::weak_ptr<SidebarViewController> const released = tab.sidebar;
        std::weak_ptr<NSView> const view = tab.sidebar->view();
        std::weak_ptr<TLFont> const font = tab.host->window->documentFont();
        tab.sidebar.reset();
        tab.family.closeFamily(0, 0);
        settle();
        return released.expired() && view.expired() && font.expired();
    };
    std::size_t observations = 0;
    long widgets = 0;
    std::size_t memory = 0;
    for (int time = 0; time < (isSlowedDown ? 300 : 1000); ++time) {
        ASSERT_TRUE(once()) << time;
        if (time == 200) {
            observations = center.observationCount();
            widgets = QApplication::allWidgets().size();
            memory = mallinfo2().uordblks;
        }
    }
    EXPECT_EQ(center.observationCount(), observations);
    EXPECT_EQ(QApplication::allWidgets().size(), widgets);
    EXPECT_LT(mallinfo2().uordblks, memory + 250'000) << "bytes, after hundreds of tabs";
}

TEST(Lifetime, twoFamiliesAreShownByThemselves)
{
    Tab first;
    Tab second;
    ShownTable firstTable(first.sidebar, first.host);
    ShownTable secondTable(second.sidebar, second.host);
    unsigned number = 0;
    for (auto const& change : FamilyChanges::all()) {
        for (auto* const tab : { &first, &second }) {
            auto& table = tab == &first ? firstTable : secondTable;
            auto& other = tab == &first ? secondTable : firstTable;
            number += 7;
            (tab->family.*change.change)(number % 60, number);
            table.begin(false);
            other.begin(false);
            update();
            ASSERT_NO_THROW(table.requireRefreshed(std::nullopt)) << change.name;
            ASSERT_NO_THROW(other.requireQuiet()) << change.name << " in the other family";
        }
    }
}

TEST(Lifetime, whatAHostReportsWithoutSenseIsShownOrLeftOut)
{
    Tab tab;
    auto const font = tab.host->window->documentFont();
    font->removeAxis(0);
    font->insertAxis(FontBuilder::makeAxis("wght", std::string(100'000, 'W'), {}), 0);
    font->glyphForName("A")->insertObjectInAxesAtIndex(FontBuilder::makeAxis("", "", {}), 0);
    tab.host->view->setAxisLocation(TLLocation { { "wght", std::nan("") }, { "", 3.0 }, { "wdth", "wide" } });
    font->removeMaster(2);
    settle();
    ShownTable table(tab.sidebar, tab.host);
    EXPECT_NO_THROW(table.requireFresh());
    auto const row = tab.rowOf(Section::font);
    EXPECT_EQ(row->nameLabel()->stringValue().size(), 100'000U);
    EXPECT_LE(row->nameLabel()->frame().maxX(), 280);
    EXPECT_TRUE(std::isfinite(row->slider()->doubleValue()));
}
