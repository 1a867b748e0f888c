#include "Moravel/MoravelBundle.h"

std::shared_ptr<NSBundle> MoravelBundle()
{
    auto const bundle = NSBundle::bundleWithIdentifier("Moravel");
    return bundle ? bundle : NSBundle::mainBundle();
}

std::string MoravelLocalizedString(
    std::string_view key, std::string_view defaultValue, std::string_view comment)
{
    return NSLocalizedString(key, MoravelBundle(), defaultValue, comment);
}
