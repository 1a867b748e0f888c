#pragma once

#include "Platform/Foundation/NSNotificationCenter.h"

#include <array>

/// Keeps the notifications of one name from one sender (none: from any), for as long as it lives.
class NotificationLog {
public:
    explicit NotificationLog(std::string name, NSSender const& sender = {})
    {
        NSNotificationCenter::defaultCenter().addObserver(m_observer, "note:", std::move(name), sender);
    }

    std::size_t count() const { return m_observer->notifications.size(); }
    std::vector<std::shared_ptr<NSNotification>> const& notifications() const
    {
        return m_observer->notifications;
    }
    std::shared_ptr<NSNotification> last() const { return notifications().back(); }

private:
    struct Observer final : NSObject {
        std::span<NSMethod const> methods() const override
        {
            static std::array const methods { NSMethodMake("note:", &Observer::note) };
            return methods;
        }
        void note(std::shared_ptr<NSNotification> const& notification)
        {
            notifications.push_back(notification);
        }
        std::vector<std::shared_ptr<NSNotification>> notifications;
    };
    std::shared_ptr<Observer> m_observer { std::make_shared<Observer>() };
};
