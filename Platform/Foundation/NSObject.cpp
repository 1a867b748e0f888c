#include "Platform/Foundation/NSObject.h"

#include "Platform/Foundation/NSFatalError.h"

#include <algorithm>

NSObject::~NSObject() = default;

static NSMethod const* findMethod(NSObject const& object, std::string_view selector)
{
    auto const methods = object.methods();
    auto const found = std::find_if(
        methods.begin(), methods.end(), [&](auto const& method) { return method.selector == selector; });
    return found == methods.end() ? nullptr : &*found;
}

bool NSObject::respondsToSelector(std::string_view selector) const
{
    return findMethod(*this, selector) != nullptr;
}

void NSObject::performSelector(std::string_view selector, std::shared_ptr<NSObject> const& argument)
{
    auto const* method = findMethod(*this, selector);
    if (!method) {
        NSFatalError("an object was sent '" + std::string(selector) + "', which it does not have");
    }
    method->call(*this, argument);
}
