#pragma once

#include "Platform/Foundation/NSObject.h"

#include <any>
#include <map>
#include <optional>
#include <type_traits>
#include <vector>

/// Any object as the sender of a notification: identity for all, and the object itself for those
/// derived from `NSObject`.
struct NSSender {
    std::shared_ptr<void const> identity;
    std::shared_ptr<NSObject> object; ///< Null when the sender is not an `NSObject`.

    NSSender() = default;
    NSSender(std::nullptr_t) { }
    template <class T>
    NSSender(std::shared_ptr<T> const& sender)
        : identity(sender)
    {
        if constexpr (std::is_base_of_v<NSObject, T>) {
            object = sender;
        }
    }
};

/// A message that has been posted: a name, an optional sender and user information.
class PLATFORM_API NSNotification final : public NSObject {
public:
    using UserInfo = std::map<std::string, std::any, std::less<>>;

    NSNotification(std::string name, NSSender sender = {}, UserInfo userInfo = {});

    std::string const& name() const { return m_name; }
    NSSender const& sender() const { return m_sender; }
    UserInfo const& userInfo() const { return m_userInfo; }

    /// The sender as an object of class T; null when there is none or it is of another class.
    template <class T> std::shared_ptr<T> object() const
    {
        return std::dynamic_pointer_cast<T>(m_sender.object);
    }

    /// The value under the key, null when it is absent or of another type.
    template <class T> T const* userInfoValue(std::string_view key) const
    {
        auto const entry = m_userInfo.find(key);
        return entry == m_userInfo.end() ? nullptr : std::any_cast<T>(&entry->second);
    }

private:
    std::string m_name;
    NSSender m_sender;
    UserInfo m_userInfo;
};

/// Delivers notifications to observers, synchronously, in the order in which they registered.
/// Observers are held weakly: one that dies is no longer told. Adding and removing observers
/// while a notification is being delivered is allowed; one removed meanwhile is not told any more.
class PLATFORM_API NSNotificationCenter {
public:
    static NSNotificationCenter& defaultCenter();
    NSNotificationCenter();
    ~NSNotificationCenter();

    /// Registers `observer`'s operation `selector` for notifications of that name (none: of every
    /// name) from that sender (none: from any). Registering twice delivers twice. `sender` is
    /// matched by identity and held weakly; when it dies the registration never matches again.
    void addObserver(std::shared_ptr<NSObject> const& observer, std::string_view selector,
        std::optional<std::string> name, NSSender const& sender = {});

    /// Removes the observer for all names and senders. Safe from a destructor.
    void removeObserver(NSObject const* observer);

    void post(std::string name, NSSender sender = {}, NSNotification::UserInfo userInfo = {});

    /// Registrations that are still alive; for tests of lifetime.
    std::size_t observationCount() const;

private:
    struct Observation;
    std::vector<std::shared_ptr<Observation>> m_observations;
};
