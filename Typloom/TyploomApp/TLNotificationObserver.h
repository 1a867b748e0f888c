#pragma once

#include "Platform/Foundation/NSNotificationCenter.h"

#include <array>
#include <functional>

/// Calls back for every notification of one name, for as long as it lives.
class TLNotificationObserver final : public NSObject {
public:
    static std::shared_ptr<TLNotificationObserver> make(
        std::string const& name, std::function<void()> callback)
    {
        auto const observer = std::make_shared<TLNotificationObserver>();
        observer->m_callback = std::move(callback);
        NSNotificationCenter::defaultCenter().addObserver(observer, "didPost:", name);
        return observer;
    }
    std::span<NSMethod const> methods() const override
    {
        static std::array const methods { NSMethodMake("didPost:", &TLNotificationObserver::didPost) };
        return methods;
    }
    void didPost(std::shared_ptr<NSNotification> const&) { m_callback(); }

private:
    std::function<void()> m_callback;
};
