#include "Platform/Foundation/NSNotificationCenter.h"

#include <algorithm>

NSNotification::NSNotification(std::string name, NSSender sender, UserInfo userInfo)
    : m_name(std::move(name))
    , m_sender(std::move(sender))
    , m_userInfo(std::move(userInfo))
{
}

struct NSNotificationCenter::Observation {
    std::weak_ptr<NSObject> observer;
    NSObject const* observerIdentity; ///< Still comparable in the observer's own destructor.
    std::string selector;
    std::optional<std::string> name;
    bool isForOneSender;
    std::weak_ptr<void const> sender;
    NSObject const* senderObject; ///< Meaningful while `sender` lives.
    bool isRemoved { false };

    bool isAlive() const
    {
        return !isRemoved && !observer.expired() && !(isForOneSender && sender.expired());
    }

    bool matches(NSNotification const& notification) const
    {
        if (name && *name != notification.name()) {
            return false;
        }
        if (!isForOneSender) {
            return true;
        }
        auto const wanted = sender.lock();
        auto const& posted = notification.sender();
        // One object has several addresses when it has several bases; as an `NSObject` it has one.
        return wanted
            && (senderObject && posted.object ? senderObject == posted.object.get()
                                              : wanted == posted.identity);
    }
};

NSNotificationCenter& NSNotificationCenter::defaultCenter()
{
    // Never destroyed: objects that live until exit remove themselves from it.
    static auto* const center = new NSNotificationCenter;
    return *center;
}

NSNotificationCenter::NSNotificationCenter() = default;
NSNotificationCenter::~NSNotificationCenter() = default;

void NSNotificationCenter::addObserver(std::shared_ptr<NSObject> const& observer, std::string_view selector,
    std::optional<std::string> name, NSSender const& sender)
{
    if (!observer) {
        return;
    }
    std::erase_if(m_observations, [](auto const& observation) { return !observation->isAlive(); });
    m_observations.push_back(std::make_shared<Observation>(Observation {
        .observer = observer,
        .observerIdentity = observer.get(),
        .selector = std::string(selector),
        .name = std::move(name),
        .isForOneSender = sender.identity != nullptr,
        .sender = sender.identity,
        .senderObject = sender.object.get(),
    }));
}

void NSNotificationCenter::removeObserver(NSObject const* observer)
{
    std::erase_if(m_observations, [observer](auto const& observation) {
        if (observation->observerIdentity != observer) {
            return false;
        }
        observation->isRemoved = true; // A delivery that is under way still holds the observation.
        return true;
    });
}

void NSNotificationCenter::post(std::string name, NSSender sender, NSNotification::UserInfo userInfo)
{
    auto const notification
        = std::make_shared<NSNotification>(std::move(name), std::move(sender), std::move(userInfo));
    std::vector<std::shared_ptr<Observation>> addressees;
    std::copy_if(m_observations.begin(), m_observations.end(), std::back_inserter(addressees),
        [&](auto const& observation) { return observation->matches(*notification); });
    for (auto const& observation : addressees) {
        auto const observer = observation->observer.lock();
        if (observer && !observation->isRemoved) {
            observer->performSelector(observation->selector, notification);
        }
    }
}

std::size_t NSNotificationCenter::observationCount() const
{
    return static_cast<std::size_t>(std::count_if(m_observations.begin(), m_observations.end(),
        [](auto const& observation) { return observation->isAlive(); }));
}
