#include "Moravel/Plugin.h"

#include "Moravel/AxisCellView.h"
#include "Moravel/SidebarViewController.h"

#include <string_view>

static_assert(std::is_same_v<decltype(TyploomPluginEntry), TyploomPluginEntryFunction>);

void TyploomPluginEntry(char const* className, std::shared_ptr<TyploomPlugin>* result)
{
    if (std::string_view(className) != "SidebarViewController") {
        return;
    }
    NSRegisterViewClass("AxisCellView", [] { return std::make_shared<AxisCellView>(); });
    auto const principal = std::make_shared<SidebarViewController>();
    principal->init();
    *result = principal;
}
