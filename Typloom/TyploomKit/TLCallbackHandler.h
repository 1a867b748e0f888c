#pragma once

#include "Typloom/TyploomCore/Export.h"
#include "Typloom/TyploomKit/TLEditViewSidebarControllerProtocol.h"

#include <vector>

/// Where plug-ins register what they add to the host.
class TYPLOOM_API TLCallbackHandler {
public:
    /// Adds a tab to every left sidebar that is built from now on. Once per call.
    static void addEditViewLeftSidebarController(TLEditViewSidebarControllerClass controllerClass);
    static std::vector<TLEditViewSidebarControllerClass> const& editViewLeftSidebarControllers();
};
