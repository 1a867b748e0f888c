#pragma once

#include "Platform/AppKit/NSView.h"
#include "Platform/Foundation/NSBundle.h"
#include "Platform/Foundation/NSFatalError.h"

#include <span>

enum class NSOutletPresence { required, optional };

/// One field of an owner that an interface description fills, by name.
struct NSOutlet {
    std::string_view name;
    NSOutletPresence presence { NSOutletPresence::required };
    /// False when the view is of another class than the field.
    std::function<bool(NSObject& owner, std::shared_ptr<NSView> const& view)> connect;
};

/// Objects whose outlets an interface description can fill. Owners of actions list them in
/// `NSObject::methods`.
class NSNibOwner {
public:
    virtual ~NSNibOwner() = default;
    virtual std::span<NSOutlet const> outlets() const = 0;
};

/// Makes the outlet of a weak field.
template <class Owner, class View>
NSOutlet NSOutletMake(std::string_view name, std::weak_ptr<View> Owner::*field,
    NSOutletPresence presence = NSOutletPresence::required)
{
    return { name, presence, [field](NSObject& owner, std::shared_ptr<NSView> const& view) {
                auto const typed = std::dynamic_pointer_cast<View>(view);
                dynamic_cast<Owner&>(owner).*field = typed;
                return typed != nullptr;
            } };
}
/// Makes the outlet of a strong field.
template <class Owner, class View>
NSOutlet NSOutletMake(std::string_view name, std::shared_ptr<View> Owner::*field,
    NSOutletPresence presence = NSOutletPresence::required)
{
    return { name, presence, [field](NSObject& owner, std::shared_ptr<NSView> const& view) {
                auto const typed = std::dynamic_pointer_cast<View>(view);
                dynamic_cast<Owner&>(owner).*field = typed;
                return typed != nullptr;
            } };
}

/// An interface description: a `.ui` file of the bundle's `Resources/`, read anew for each use.
///
/// In the file a widget's dynamic property `outlet` names the owner's outlet that it fills,
/// `action` the owner's operation that it calls, and `formatter` ("number") gives a text field a
/// number formatter, with `maximumFractionDigits` where that is given. The owner is the one given, or without
/// one the top view itself. The standard widgets QLabel, QLineEdit, QPushButton and QToolButton become
/// `NSTextField` and `NSButton`; custom classes are those registered with `NSRegisterViewClass`.
class PLATFORM_API NSNib final {
public:
    NSNib(std::string name, std::shared_ptr<NSBundle> bundle);

    std::string const& name() const { return m_name; }

    /// Makes the views, connects them and sends `awakeFromNib` to each view and then to the owner.
    /// The top view; null after any error, of which `errors` then holds one sentence each,
    /// naming the file, the owner's class and the name in question.
    std::shared_ptr<NSView> instantiate(
        std::shared_ptr<NSObject> const& owner, std::vector<std::string>& errors) const;

    /// The same, where an error stops the program.
    std::shared_ptr<NSView> instantiateOrStop(std::shared_ptr<NSObject> const& owner) const;

private:
    std::string m_name;
    std::shared_ptr<NSBundle> m_bundle;
};

/// Makes a class of views known to interface descriptions under its name.
PLATFORM_API void NSRegisterViewClass(std::string name, std::function<std::shared_ptr<NSView>()> make);
