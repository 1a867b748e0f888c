#pragma once

#include "Platform/Foundation/Export.h"

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>

class NSObject;

/// One operation that can be reached by its name, the selector with its colons ("stepUp:").
/// Actions of controls and handlers of notifications are both such operations; the argument
/// is the sending control or the `NSNotification`.
struct NSMethod {
    std::string_view selector;
    std::function<void(NSObject& receiver, std::shared_ptr<NSObject> const& argument)> call;
};

/// Base of all objects that the runtime hands around: views, controllers, notifications,
/// host document objects. Always held by `std::shared_ptr`.
class PLATFORM_API NSObject : public std::enable_shared_from_this<NSObject> {
public:
    NSObject() = default;
    NSObject(NSObject const&) = delete;
    NSObject& operator=(NSObject const&) = delete;
    virtual ~NSObject();

    /// Sent once to every object of an interface description, and to its owner, after all
    /// outlets and actions are connected.
    virtual void awakeFromNib() { }

    /// The operations that this class offers by name, in its header's order. Empty by default.
    virtual std::span<NSMethod const> methods() const { return {}; }

    /// Whether `methods()` holds the selector.
    bool respondsToSelector(std::string_view selector) const;

    /// Calls the operation of that name. A selector that the object does not have is a
    /// programming error and stops the program, naming the selector.
    void performSelector(std::string_view selector, std::shared_ptr<NSObject> const& argument);

    /// This object as a shared pointer to one of its own classes; null before it is held by one.
    template <class T> std::shared_ptr<T> sharedAs()
    {
        return std::dynamic_pointer_cast<T>(weak_from_this().lock());
    }
    template <class T> std::shared_ptr<T const> sharedAs() const
    {
        return std::dynamic_pointer_cast<T const>(weak_from_this().lock());
    }
};

/// Makes the `NSMethod` of a member operation. `F` takes `std::shared_ptr<Argument> const&`; an
/// argument of another class reaches it as null.
template <class Receiver, class Argument>
NSMethod NSMethodMake(
    std::string_view selector, void (Receiver::*operation)(std::shared_ptr<Argument> const&))
{
    return { selector, [operation](NSObject& receiver, std::shared_ptr<NSObject> const& argument) {
                (dynamic_cast<Receiver&>(receiver).*operation)(std::dynamic_pointer_cast<Argument>(argument));
            } };
}
