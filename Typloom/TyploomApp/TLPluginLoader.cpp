#include "Typloom/TyploomApp/TLPluginLoader.h"

#include "Platform/Foundation/NSBundle.h"
#include "Platform/Foundation/NSMainThread.h"
#include "Typloom/TyploomKit/TyploomPlugin.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <optional>
#include <stdexcept>

#include <dlfcn.h>

namespace {
namespace fs = std::filesystem;

/// Why a plug-in does not load; its text follows the bundle's name in a sentence.
struct PluginError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct Description {
    std::string principalClass;
    fs::path library; ///< Full path, inside the bundle.
};

/// A description is a few lines; a file beyond this is none.
constexpr std::uintmax_t largestDescription = 1 << 20;

std::string readDescription(fs::path const& file)
{
    std::error_code error;
    if (!fs::is_regular_file(file, error) || fs::file_size(file, error) > largestDescription) {
        throw PluginError("has no description Info.strings");
    }
    std::ifstream stream(file, std::ios::binary);
    std::string text { std::istreambuf_iterator<char>(stream), {} };
    if (!stream) {
        throw PluginError("has a description Info.strings that cannot be read");
    }
    return text;
}

/// The library by its name in the description. Nothing outside the bundle is ever run, neither by "..",
/// nor by an absolute path, nor through a link.
fs::path libraryInside(fs::path const& bundle, std::string const& name)
{
    std::error_code error;
    auto const root = fs::canonical(bundle, error);
    auto const library = fs::weakly_canonical(root / fs::path(name), error);
    auto const [rest, unused] = std::ranges::mismatch(root, library);
    if (fs::path(name).is_absolute() || rest != root.end()) {
        throw PluginError("names a library outside its folder, '" + name + "'");
    }
    if (!fs::is_regular_file(library, error)) {
        throw PluginError("has no library '" + name + "'");
    }
    return library;
}

Description describe(fs::path const& bundle)
{
    auto const table = NSParseStringsTable(readDescription(bundle / "Info.strings"));
    if (!table) {
        throw PluginError("has a description Info.strings that is not of the form \"key\" = \"value\";");
    }
    auto const entry = [&](std::string_view key) {
        auto const found = table->find(key);
        if (found == table->end() || found->second.empty()) {
            throw PluginError("has a description Info.strings without \"" + std::string(key) + "\"");
        }
        return found->second;
    };
    return { entry("PrincipalClass"), libraryInside(bundle, entry("Library")) };
}

TyploomPluginEntryFunction* entryOf(fs::path const& library)
{
    auto* const handle = dlopen(library.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle) {
        auto const* const reason = dlerror();
        throw PluginError(
            std::string("has a library that cannot be loaded: ") + (reason ? reason : "no reason given"));
    }
    auto* const symbol = dlsym(handle, TyploomPluginEntryName);
    if (!symbol) {
        throw PluginError("has a library without the function " + std::string(TyploomPluginEntryName));
    }
    return reinterpret_cast<TyploomPluginEntryFunction*>(symbol);
}

std::shared_ptr<TyploomPlugin> start(Description const& description)
{
    auto* const entry = entryOf(description.library);
    std::shared_ptr<TyploomPlugin> plugin;
    entry(description.principalClass.c_str(), &plugin);
    if (!plugin) {
        throw PluginError("has no class '" + description.principalClass + "'");
    }
    auto const version = plugin->interfaceVersion();
    if (version != TLPluginLoader::interfaceVersion) {
        throw PluginError("was made for version " + std::to_string(version)
            + " of the plug-in interface; this is version "
            + std::to_string(TLPluginLoader::interfaceVersion));
    }
    plugin->loadPlugin();
    return plugin;
}

/// What stays for the life of the process: never destroyed, since plug-in code may run until the very end.
template <class T> void keepForever(std::shared_ptr<T> object)
{
    static auto& kept = *new std::vector<std::shared_ptr<T>>;
    kept.push_back(std::move(object));
}

bool isBundle(fs::path const& folder)
{
    return folder.extension() == ".bundle";
}
/// Starts a bundle's plug-in. Otherwise what is wrong with it, the rest of a sentence.
std::optional<std::string> problemOfStarting(fs::path const& bundle)
{
    try {
        // Open before its code runs: the plug-in finds its resources by the bundle's identifier, under
        // which the last one that was opened is found.
        auto const opened = NSBundle::bundleWithPath(bundle);
        keepForever(start(describe(bundle)));
        keepForever(opened);
        return std::nullopt;
    } catch (PluginError const& problem) {
        return problem.what();
    } catch (std::exception const& thrown) {
        return std::string("failed while it was loaded: ") + thrown.what();
    } catch (...) {
        return "failed while it was loaded";
    }
}
} // namespace

void TLPluginLoader::loadBundle(fs::path const& bundle, Repeated repeated)
{
    std::error_code error;
    auto const path = fs::canonical(bundle, error);
    if (std::ranges::find(m_tried, path) != m_tried.end()) {
        return;
    }
    auto const identifier = NSBundle(path).identifier();
    if (auto const same = m_running.find(identifier); same != m_running.end()) {
        if (repeated == Repeated::isReported) {
            m_problems.push_back("The plug-in '" + path.string() + "' was left out: '" + same->second.string()
                + "' has the same identifier '" + identifier + "'");
        }
        return;
    }
    m_tried.push_back(path);
    if (auto const problem = problemOfStarting(path)) {
        m_problems.push_back("The plug-in '" + path.string() + "' " + *problem);
        return;
    }
    m_running.emplace(identifier, path);
    m_loaded.push_back(path.stem().string());
}

void TLPluginLoader::load(fs::path const& folder, Repeated repeated)
{
    NSAssertMainThread();
    std::error_code error;
    auto const path = folder.has_filename() ? folder : folder.parent_path();
    if (!fs::is_directory(path, error)) {
        m_problems.push_back("There is no plug-in folder '" + folder.string() + "'");
        return;
    }
    if (isBundle(path)) {
        loadBundle(path, repeated);
        return;
    }
    std::vector<fs::path> bundles;
    for (fs::directory_iterator each(path, error), end; !error && each != end; each.increment(error)) {
        if (isBundle(each->path()) && each->is_directory(error)) {
            bundles.push_back(each->path());
        }
    }
    if (bundles.empty() && repeated == Repeated::isReported) {
        m_problems.push_back(
            "There is no plug-in in the folder '" + folder.string() + "'; plug-ins are folders NAME.bundle");
    }
    std::ranges::sort(bundles);
    for (auto const& bundle : bundles) {
        loadBundle(bundle, repeated);
    }
}

void TLPluginLoader::loadStandardFolders()
{
    std::error_code error;
    auto const program = fs::read_symlink("/proc/self/exe", error).parent_path();
    for (auto const& folder : { program / "PlugIns", program.parent_path() / "PlugIns",
             program / TYPLOOM_HOME_FROM_PROGRAM / "PlugIns" }) {
        if (fs::is_directory(folder, error)) {
            load(folder, Repeated::isPassedOver);
        }
    }
}
