#include "Tests/TyploomApp/EditFamily.h"
#include "Typloom/TyploomApp/TLSidebar.h"

#include "Platform/AppKit/NSViewController.h"

#include <QAbstractButton>
#include <QTest>
#include <QWidget>
#include <gtest/gtest.h>

namespace {

/// What tabs have been sent, in order.
std::vector<std::string> events;

class RecordingTab final : public NSViewController, public TLEditViewSidebarControllerProtocol {
public:
    explicit RecordingTab(std::string name)
        : m_name(std::move(name))
    {
        initWithNibName(std::nullopt, nullptr);
    }
    std::shared_ptr<NSView> view() override { return NSViewController::view(); }
    void setController(std::weak_ptr<TLGlyphViewControllerProtocol>) override { record("controller"); }
    void viewDidLoad() override { record("load"); }
    void viewDidAppear() override { record("appear"); }
    void viewDidDisappear() override { record("disappear"); }

private:
    void record(std::string const& event) const { events.push_back(m_name + " " + event); }
    std::string m_name;
};

void registerTab(std::string const& name)
{
    TLEditViewSidebarControllerClass tab;
    tab.name = name;
    tab.make = [name] { return std::make_shared<RecordingTab>(name); };
    tab.title = [name] { return name; };
    tab.tabBarImage = [] { return nullptr; };
    TLCallbackHandler::addEditViewLeftSidebarController(tab);
}

using Events = std::vector<std::string>;

} // namespace

// One test: what is registered stays registered for the life of the process.
TEST(TLSidebar, setsTheControllerBeforeTheViewAndTellsTabsWhenTheyAreShown)
{
    TLSidebar const empty({});
    EXPECT_EQ(empty.titleOfTab(0), "");
    EXPECT_EQ(empty.shownTab(), std::nullopt);

    registerTab("first");
    registerTab("second");
    TLSidebar sidebar({});
    EXPECT_EQ(sidebar.titleOfTab(1), "second");
    EXPECT_EQ(sidebar.shownTab(), 0U);
    EXPECT_EQ(events, (Events { "first controller", "second controller", "first load" }));

    events.clear();
    sidebar.widget()->show();
    EXPECT_EQ(std::exchange(events, {}), (Events { "first appear" }));
    sidebar.widget()->findChildren<QAbstractButton*>()[1]->click();
    EXPECT_EQ(std::exchange(events, {}), (Events { "first disappear", "second load", "second appear" }));
    sidebar.showTab(1);
    sidebar.showTab(7);
    EXPECT_EQ(std::exchange(events, {}), Events {});
    sidebar.widget()->hide();
    sidebar.showTab(0);
    EXPECT_EQ(std::exchange(events, {}), (Events { "second disappear" }));
    sidebar.widget()->show();
    EXPECT_EQ(std::exchange(events, {}), (Events { "first appear" }));
}
