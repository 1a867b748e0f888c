#pragma once

#include "Typloom/Formats/Plist.h"
#include "Typloom/TyploomCore/TLAxis.h"
#include "Typloom/TyploomCore/TLFontMaster.h"

#include <algorithm>

// Null where there is none.

inline TLAxisState const* axisWithId(std::vector<TLAxisState> const& axes, std::string_view axisId)
{
    auto const found = std::find_if(
        axes.begin(), axes.end(), [axisId](auto const& axis) { return axis.axisId == axisId; });
    return found == axes.end() ? nullptr : &*found;
}

inline TLAxisState const* axisNamed(std::vector<TLAxisState> const& axes, std::string_view name)
{
    auto const found
        = std::find_if(axes.begin(), axes.end(), [name](auto const& axis) { return axis.name == name; });
    return found == axes.end() ? nullptr : &*found;
}

inline TLMasterState const* masterWithId(std::vector<TLMasterState> const& masters, std::string_view id)
{
    auto const found
        = std::find_if(masters.begin(), masters.end(), [id](auto const& master) { return master.id == id; });
    return found == masters.end() ? nullptr : &*found;
}

/// The list under a key; empty where there is none.
inline PlistValue::Array const& items(PlistValue const& entry, std::string_view key)
{
    static PlistValue::Array const none;
    auto const* value = entry.find(key);
    return value && value->array() ? *value->array() : none;
}

/// What an entry calls itself.
inline std::string nameIn(PlistValue const& item)
{
    auto const* name = item.find("name");
    return name && name->string() ? *name->string() : std::string {};
}
