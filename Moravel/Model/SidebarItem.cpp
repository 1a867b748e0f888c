#include "Moravel/Model/SidebarItem.h"

std::string describe(Section section)
{
    return section == Section::font ? "font" : "glyph";
}

std::string describe(SidebarItem const& item)
{
    return describe(item.section) + " axis '" + item.axisId + "'";
}
