#include "Typloom/TyploomKit/TLCallbackHandler.h"

#include "Platform/Foundation/NSMainThread.h"

namespace {
std::vector<TLEditViewSidebarControllerClass>& registeredClasses()
{
    static std::vector<TLEditViewSidebarControllerClass> classes;
    return classes;
}
} // namespace

void TLCallbackHandler::addEditViewLeftSidebarController(TLEditViewSidebarControllerClass controllerClass)
{
    NSAssertMainThread();
    registeredClasses().push_back(std::move(controllerClass));
}

std::vector<TLEditViewSidebarControllerClass> const& TLCallbackHandler::editViewLeftSidebarControllers()
{
    return registeredClasses();
}
