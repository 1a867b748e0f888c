#pragma once

#include <memory>

/// A plug-in's principal object. The host makes one instance and calls `loadPlugin` once.
class TyploomPlugin {
public:
    virtual ~TyploomPlugin() = default;
    /// The version of this interface that the plug-in was written for; the host's is 1.
    virtual unsigned interfaceVersion() const = 0;
    virtual void loadPlugin() = 0;
};

/// What a bundle's library exports under the name `TyploomPluginEntry`, declared as `extern "C"`: a
/// function that is called once, on the main thread, and gives the principal object, which the host
/// holds for the life of the process. `className` is the principal class that the bundle's description
/// names; `result` stays null for one that the library does not have.
using TyploomPluginEntryFunction = void(char const* className, std::shared_ptr<TyploomPlugin>* result);

inline constexpr char const* TyploomPluginEntryName = "TyploomPluginEntry";
