#pragma once

/// A plug-in's principal object. The host makes one instance and calls `loadPlugin` once.
class TyploomPlugin {
public:
    virtual ~TyploomPlugin() = default;
    /// The version of this interface that the plug-in was written for; the host's is 1.
    virtual unsigned interfaceVersion() const = 0;
    virtual void loadPlugin() = 0;
};

/// What a bundle's library exports under the name `TyploomPluginEntry`: a function that is called once,
/// on the main thread, and gives the principal object; the host holds it for the life of the process.
/// `className` is the principal class that the bundle's description names; null for one that
/// the library does not have. Declared as `extern "C"`.
#define TYPLOOM_PLUGIN_ENTRY TyploomPluginEntry
