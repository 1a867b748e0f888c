#pragma once

#include "Typloom/TyploomKit/TyploomPlugin.h"

/// Makes the plug-in's views known to interface descriptions and gives its principal object.
extern "C" __attribute__((visibility("default"))) void TyploomPluginEntry(
    char const* className, std::shared_ptr<TyploomPlugin>* result);
