#include "Platform/Foundation/NSBundle.h"
#include "Typloom/TyploomApp/CommandLine.h"
#include "Typloom/TyploomApp/Describe.h"
#include "Typloom/TyploomApp/NameSearch.h"
#include "Typloom/TyploomApp/NamedLocation.h"
#include "Typloom/TyploomApp/Snapshot.h"
#include "Typloom/TyploomApp/TLApplicationController.h"
#include "Typloom/TyploomApp/TLDocumentWindow.h"
#include "Typloom/TyploomApp/TLEditViewController.h"
#include "Typloom/TyploomApp/TLLineText.h"
#include "Typloom/TyploomApp/TLPluginLoader.h"
#include "Typloom/TyploomApp/TLUserState.h"
#include "Typloom/TyploomCore/TLFont.h"
#include "Typloom/TyploomKit/TLPlaceholderView.h"

#include <algorithm>
#include <clocale>
#include <iostream>
#include <tuple>

#include <QApplication>
#include <QDir>
#include <QIcon>
#include <QLibraryInfo>
#include <QWidget>

namespace {
enum ExitStatus { succeeded = 0, failed = 1, misused = 2 };

void complain(std::string const& sentence)
{
    std::cerr << "typloom: " << sentence << std::endl;
}

/// What the toolkit says of a platform without a screen is no news to the user of one.
void passOnToolkitMessage(QtMsgType, QMessageLogContext const&, QString const& message)
{
    if (!message.startsWith("This plugin does not support") && !message.contains("XDG_RUNTIME_DIR")) {
        std::cerr << message.toStdString() << std::endl;
    }
}

/// Whether the toolkit's part for Wayland is installed, which is a package of its own.
bool hasWaylandPlugin()
{
    QStringList folders { QLibraryInfo::path(QLibraryInfo::PluginsPath) + "/platforms",
        qEnvironmentVariable("QT_QPA_PLATFORM_PLUGIN_PATH") };
    for (auto const& folder : qEnvironmentVariable("QT_PLUGIN_PATH").split(':', Qt::SkipEmptyParts)) {
        folders.append(folder + "/platforms");
    }
    return std::any_of(folders.begin(), folders.end(), [](QString const& folder) {
        return !folder.isEmpty() && !QDir(folder).entryList({ "libqwayland*.so" }, QDir::Files).isEmpty();
    });
}

/// Whether a window could be shown; otherwise the toolkit would end the program before a word is said.
bool hasScreen()
{
    if (!hasWaylandPlugin()) {
        qunsetenv("WAYLAND_DISPLAY");
    }
    for (auto const* variable : { "DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM" }) {
        if (!qEnvironmentVariableIsEmpty(variable)) {
            return true;
        }
    }
    return false;
}

/// Without a screen the toolkit draws into memory, in one style everywhere.
void chooseToolkitPlatform(bool isOffscreen)
{
    if (isOffscreen) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("QT_STYLE_OVERRIDE", "Fusion");
    }
    if (qgetenv("QT_QPA_PLATFORM") == "offscreen") {
        qInstallMessageHandler(passOnToolkitMessage);
    }
}

void loadPlugins(CommandLine const& commandLine, TLApplicationController& application)
{
    TLRegisterViewClasses();
    TLPluginLoader loader;
    for (auto const& folder : commandLine.plugins) {
        loader.load(folder);
    }
    loader.loadStandardFolders();
    for (auto const& problem : loader.problems()) {
        complain(problem);
        application.addToReport(problem);
    }
}

std::string unknownGlyph(std::string const& name, TLFont const& font)
{
    return "There is no glyph '" + name + "' in the family; there are "
        + ListOfNamesLike(name, font.glyphNames());
}

/// Fills the line. A sentence when a glyph is not there.
std::optional<std::string> showText(CommandLine const& commandLine, TLDocumentWindow& window)
{
    auto const& [text, glyph] = std::tie(commandLine.text, commandLine.glyph);
    if (text) {
        if (auto const unknown = TLUnknownNameInText(*window.font(), *text)) {
            return unknownGlyph(*unknown, *window.font());
        }
        window.setText(*text);
    }
    if (glyph && !(text ? window.editGlyph(*glyph) : window.showGlyph(*glyph))) {
        return unknownGlyph(*glyph, *window.font());
    }
    return std::nullopt;
}

/// Shows what the command line names in the window. A sentence when a name is not there.
std::optional<std::string> goTo(CommandLine const& commandLine, TLDocumentWindow& window)
{
    auto const font = window.font();
    if (auto problem = showText(commandLine, window)) {
        return problem;
    }
    if (commandLine.location.empty()) {
        return std::nullopt;
    }
    auto const layer = window.editViewController()->activeLayer();
    auto const glyph = layer ? layer->glyph() : nullptr;
    auto const named = LocationForNames(commandLine.location, *font, glyph.get());
    if (named.error) {
        return named.error;
    }
    for (auto const& note : named.notes) {
        complain(note);
    }
    window.goToLocation(named.location);
    return std::nullopt;
}

ExitStatus writeOutputs(CommandLine const& commandLine, TLDocumentWindow& window)
{
    auto const size = commandLine.size.value_or(CommandLine::usualSize);
    window.widget()->setFixedSize(size.width, size.height);
    SettleEvents();
    for (auto const& sentence : window.font()->report()) {
        complain(sentence);
    }
    if (commandLine.snapshot) {
        if (auto const problem = WriteSnapshot(*window.widget(), *commandLine.snapshot)) {
            complain(*problem);
            return failed;
        }
    }
    if (commandLine.describe) {
        std::cout << DescribeWindow(window) << std::flush;
    }
    if (!std::cout) {
        complain("The description cannot be written to the standard output");
        return failed;
    }
    return succeeded;
}

ExitStatus complainOfNoScreen()
{
    complain("There is no screen to open a window on; --snapshot and --describe need none");
    return failed;
}

/// A window that is remembered opens as the last one was.
void resizeWindow(CommandLine const& commandLine, TLDocumentWindow const& window, bool isRemembered)
{
    if (commandLine.size || !isRemembered) {
        auto const size = commandLine.size.value_or(CommandLine::usualSize);
        window.widget()->resize(size.width, size.height);
    }
}

int run(CommandLine const& commandLine, bool canShow)
{
    TLApplicationController application;
    // What no user sees leaves no traces, and what other runs have left changes no picture.
    bool const remembers
        = canShow && !commandLine.isOffscreen() && QApplication::platformName() != "offscreen";
    if (remembers) {
        application.setUserState(TLUserState::ofUser());
    }
    loadPlugins(commandLine, application);
    if (!commandLine.family && !canShow) {
        return complainOfNoScreen();
    }
    if (!commandLine.family) {
        resizeWindow(commandLine, *application.openInvitation(), remembers);
        return QApplication::exec();
    }
    auto const outcome = application.open(*commandLine.family);
    if (!outcome.window) {
        complain(outcome.error);
        return failed;
    }
    auto& window = *outcome.window;
    resizeWindow(commandLine, window, remembers);
    if (auto const problem = goTo(commandLine, window)) {
        complain(*problem);
        return failed;
    }
    if (commandLine.isOffscreen()) {
        return writeOutputs(commandLine, window);
    }
    return canShow ? QApplication::exec() : complainOfNoScreen();
}
} // namespace

int main(int argc, char** argv)
{
    std::vector<std::string> const arguments(argv + 1, argv + argc);
    auto const parsed = ParseCommandLine(arguments);
    if (auto const* error = std::get_if<CommandLineError>(&parsed)) {
        complain(error->sentence);
        return misused;
    }
    auto const& commandLine = std::get<CommandLine>(parsed);
    if (commandLine.help || commandLine.version) {
        std::cout << (commandLine.help ? CommandLineHelp() : std::string("typloom " TYPLOOM_VERSION "\n"));
        return succeeded;
    }
    bool const canShow = hasScreen();
    chooseToolkitPlatform(commandLine.isOffscreen() || !canShow);
    int toolkitArguments = 1; // The toolkit's own options are none of ours.
    QApplication application(toolkitArguments, argv);
    std::setlocale(LC_NUMERIC, "C"); // The toolkit has set the user's, which would reach into files.
    QApplication::setApplicationName("Typloom");
    QApplication::setApplicationVersion(TYPLOOM_VERSION);
    QApplication::setDesktopFileName("org.typloom.Typloom");
    QApplication::setWindowIcon(QIcon::fromTheme("org.typloom.Typloom"));
    NSBundle::setMainBundlePath(QApplication::applicationDirPath().toStdString());
    return run(commandLine, canShow);
}
