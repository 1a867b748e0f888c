#pragma once

#include "Platform/Foundation/NSBundle.h"

/// The plug-in's resources; the application's when the plug-in's bundle cannot be found.
std::shared_ptr<NSBundle> MoravelBundle();

/// A text that a person sees, from the plug-in's strings table: key, English default, comment for
/// translators.
std::string MoravelLocalizedString(
    std::string_view key, std::string_view defaultValue, std::string_view comment);
