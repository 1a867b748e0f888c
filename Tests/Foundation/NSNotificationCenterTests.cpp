#include "Platform/Foundation/NSNotificationCenter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// Writes what it is told into a log, then does what the test wants.
class Listener final : public NSObject {
public:
    Listener(std::vector<std::string>& log, std::string name)
        : m_log(log)
        , m_name(std::move(name))
    {
    }

    std::function<void(NSNotification const&)> reaction;

    void heard(std::shared_ptr<NSNotification> const& notification)
    {
        m_log.push_back(m_name + ":" + notification->name());
        if (auto const react = reaction) {
            react(*notification);
        }
    }

    std::span<NSMethod const> methods() const override
    {
        static NSMethod const table[] { NSMethodMake("heard:", &Listener::heard) };
        return table;
    }

private:
    std::vector<std::string>& m_log;
    std::string m_name;
};

struct NSNotificationCenterTest : testing::Test {
    NSNotificationCenter center;
    std::vector<std::string> log;
    std::shared_ptr<Listener> first { std::make_shared<Listener>(log, "first") };
    std::shared_ptr<Listener> second { std::make_shared<Listener>(log, "second") };

    void observe(
        std::shared_ptr<Listener> const& listener, std::optional<std::string> name, NSSender sender = {})
    {
        center.addObserver(listener, "heard:", std::move(name), sender);
    }
};

struct Other {
    int content { 0 };
};

/// An `NSObject` that is not at its own beginning.
struct Mixed : Other, NSObject { };

} // namespace

TEST_F(NSNotificationCenterTest, observersAreToldInTheOrderOfTheirRegistration)
{
    observe(second, "a");
    observe(first, std::nullopt);
    observe(second, "a");
    center.post("a");
    center.post("b");
    EXPECT_THAT(log, ElementsAre("second:a", "first:a", "second:a", "first:b"));
}

TEST_F(NSNotificationCenterTest, aSenderIsMatchedByIdentity)
{
    auto const sender = std::make_shared<Mixed>();
    auto const foreign = std::make_shared<int>(1);
    observe(first, "a", sender);
    observe(second, "a", foreign);
    center.post("a");
    center.post("a", std::make_shared<Mixed>());
    EXPECT_THAT(log, IsEmpty());
    center.post("a", sender);
    center.post("a", std::shared_ptr<NSObject>(sender));
    center.post("a", foreign);
    EXPECT_THAT(log, ElementsAre("first:a", "first:a", "second:a"));
}

TEST_F(NSNotificationCenterTest, theDeadAreNeitherToldNorHeardNorKept)
{
    auto sender = std::make_shared<Mixed>();
    observe(first, "a");
    observe(second, "a", sender);
    std::weak_ptr<NSObject> const weakSender = sender;
    first.reset();
    sender.reset();
    EXPECT_TRUE(weakSender.expired());
    EXPECT_EQ(center.observationCount(), 0u);
    center.post("a");
    center.post("a", std::make_shared<Mixed>()); // May lie where the dead one lay.
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(NSNotificationCenterTest, anObserverRemovedDuringDeliveryIsNotToldAnyMore)
{
    observe(first, "a");
    observe(second, "a");
    observe(first, "a");
    first->reaction = [&](auto const&) {
        center.removeObserver(second.get());
        center.removeObserver(first.get());
    };
    center.post("a");
    EXPECT_THAT(log, ElementsAre("first:a"));
    EXPECT_EQ(center.observationCount(), 0u);
}

TEST_F(NSNotificationCenterTest, anObserverThatDiesDuringDeliveryIsNotToldAndThePostingGoesOn)
{
    auto third = std::make_shared<Listener>(log, "third");
    observe(first, "a");
    observe(second, "a");
    observe(third, "a");
    first->reaction = [&](auto const&) {
        second.reset();
        first.reset(); // The one that is being told lives until it has been.
    };
    center.post("a");
    EXPECT_THAT(log, ElementsAre("first:a", "third:a"));
}

TEST_F(NSNotificationCenterTest, anObserverAddedDuringDeliveryIsToldFromTheNextOneOn)
{
    observe(first, "a");
    first->reaction = [&](auto const&) {
        first->reaction = nullptr;
        observe(second, "a");
    };
    center.post("a");
    EXPECT_THAT(log, ElementsAre("first:a"));
    log.clear();
    center.post("a");
    EXPECT_THAT(log, ElementsAre("first:a", "second:a"));
}

TEST_F(NSNotificationCenterTest, aNestedPostingIsDeliveredBeforeTheOuterOneGoesOn)
{
    observe(first, "a");
    observe(second, std::nullopt);
    first->reaction = [&](auto const&) { center.post("b"); };
    center.post("a");
    EXPECT_THAT(log, ElementsAre("first:a", "second:b", "second:a"));
}

TEST_F(NSNotificationCenterTest, anObserverCanRemoveItselfInItsDestructor)
{
    struct Leaver final : NSObject {
        explicit Leaver(NSNotificationCenter& observed)
            : center(observed)
        {
        }
        ~Leaver() override { center.removeObserver(this); }
        NSNotificationCenter& center;
    };
    auto leaver = std::make_shared<Leaver>(center);
    center.addObserver(leaver, "never:", "a");
    observe(first, "a");
    first->reaction = [&](auto const&) { leaver.reset(); };
    leaver.reset();
    center.post("a");
    EXPECT_EQ(center.observationCount(), 1u);
    EXPECT_THAT(log, ElementsAre("first:a"));
}

TEST_F(NSNotificationCenterTest, aNotificationCarriesSenderAndTypedValues)
{
    auto const sender = std::make_shared<Mixed>();
    observe(first, "a");
    std::shared_ptr<Mixed> seen;
    first->reaction = [&](NSNotification const& notification) {
        seen = notification.object<Mixed>();
        EXPECT_EQ(notification.object<Listener>(), nullptr);
        ASSERT_NE(notification.userInfoValue<int>("count"), nullptr);
        EXPECT_EQ(*notification.userInfoValue<int>("count"), 3);
        EXPECT_EQ(notification.userInfoValue<double>("count"), nullptr);
        EXPECT_EQ(notification.userInfoValue<int>("absent"), nullptr);
    };
    center.post("a", sender, { { "count", 3 } });
    EXPECT_EQ(seen, sender);
}

TEST_F(NSNotificationCenterTest, aSelectorThatTheObserverDoesNotHaveStopsTheProgramByName)
{
    center.addObserver(first, "herd:", "a");
    EXPECT_DEATH(center.post("a"), "herd:");
}
