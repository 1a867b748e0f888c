#pragma once

#include "Typloom/TyploomCore/Export.h"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

/// Loads plug-ins. A plug-in is a folder `NAME.bundle/` with a description `Info.strings`:
/// "PrincipalClass" names the class, "Library" the shared library in the folder that has it, "Identifier"
/// (absent: NAME) what no two that run have in common. What does not load is told in a sentence, and
/// everything else goes on. Nothing is ever unloaded.
class TYPLOOM_API TLPluginLoader {
public:
    /// The version of the plug-in interface that the host has.
    static constexpr unsigned interfaceVersion = 1;

    enum class Repeated { isReported, isPassedOver };

    /// Loads a bundle, or every bundle that a folder holds, by name. A bundle that is loaded already
    /// is passed over; another one of the same identifier is, or is reported. One that does not load
    /// stands in no other's way.
    void load(std::filesystem::path const& folder, Repeated repeated = Repeated::isReported);
    /// Loads what lies in the folders `PlugIns` beside the program and beside its folder, where they are
    /// there.
    void loadStandardFolders();

    /// A sentence for each plug-in that did not load, in the order of loading.
    std::vector<std::string> const& problems() const { return m_problems; }
    /// Names of the bundles whose plug-ins run.
    std::vector<std::string> const& loaded() const { return m_loaded; }

private:
    void loadBundle(std::filesystem::path const& bundle, Repeated repeated);

    std::vector<std::filesystem::path> m_tried;
    std::map<std::string, std::filesystem::path> m_running; ///< By identifier.
    std::vector<std::string> m_loaded;
    std::vector<std::string> m_problems;
};
