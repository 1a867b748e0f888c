#include "Platform/Foundation/NSBundle.h"
#include "Typloom/TyploomKit/TyploomPlugin.h"

#include <cstdlib>
#include <stdexcept>
#include <string>

namespace {
/// Leaves where it found its bundle in the environment, for the test to see that it ran.
class GoodPlugin : public TyploomPlugin {
public:
    unsigned interfaceVersion() const override { return 1; }
    void loadPlugin() override
    {
        auto const bundle = NSBundle::bundleWithIdentifier("Good");
        setenv("TYPLOOM_TEST_PLUGIN_BUNDLE", bundle ? bundle->bundlePath().c_str() : "", 1);
    }
};

class PluginOfAnotherVersion final : public TyploomPlugin {
public:
    unsigned interfaceVersion() const override { return 2; }
    void loadPlugin() override { setenv("TYPLOOM_TEST_PLUGIN_OF_ANOTHER_VERSION", "was loaded", 1); }
};

class ThrowingPlugin final : public GoodPlugin {
public:
    void loadPlugin() override { throw std::runtime_error("out of ideas"); }
};
} // namespace

extern "C" __attribute__((visibility("default"))) void TyploomPluginEntry(
    char const* className, std::shared_ptr<TyploomPlugin>* result)
{
    std::string const name = className;
    if (name == "GoodPlugin") {
        *result = std::make_shared<GoodPlugin>();
    } else if (name == "PluginOfAnotherVersion") {
        *result = std::make_shared<PluginOfAnotherVersion>();
    } else if (name == "ThrowingPlugin") {
        *result = std::make_shared<ThrowingPlugin>();
    } else if (name == "ThrowingEntry") {
        throw 42;
    }
}
