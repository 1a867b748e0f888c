#include "Typloom/TyploomApp/TLUserState.h"

#include "Typloom/TyploomApp/CommandLine.h"

#include <QAction>
#include <QFile>
#include <QSettings>
#include <QSplitter>
#include <QStandardPaths>
#include <QWidget>

#include <algorithm>

namespace {

constexpr char const* familiesKey = "recentFamilies";
constexpr char const* geometryKey = "window/geometry";
constexpr char const* columnsKey = "window/columns";
constexpr char const* layersKey = "window/showsLayers";

std::filesystem::path toPath(QString const& file)
{
    return QFile::encodeName(file).toStdString();
}

QString toFile(std::filesystem::path const& path)
{
    return QFile::decodeName(QByteArray::fromStdString(path.string()));
}

} // namespace

TLUserState::TLUserState(std::filesystem::path const& settings, std::filesystem::path recoveryFolder)
    : m_settings(std::make_unique<QSettings>(toFile(settings), QSettings::IniFormat))
    , m_recoveryFolder(std::move(recoveryFolder))
{
}

TLUserState::~TLUserState() = default;

std::unique_ptr<TLUserState> TLUserState::ofUser()
{
    auto const settings
        = toPath(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)) / "typloom";
    auto const variable = qgetenv("XDG_STATE_HOME").toStdString();
    std::filesystem::path folder(variable);
    if (!folder.is_absolute()) {
        folder = toPath(QStandardPaths::writableLocation(QStandardPaths::HomeLocation)) / ".local/state";
    }
    return std::make_unique<TLUserState>(settings / "typloom.conf", folder / "typloom/recovery");
}

std::vector<std::filesystem::path> TLUserState::recentFamilies() const
{
    m_settings->sync(); // Another running program may have added some.
    std::vector<std::filesystem::path> families;
    for (auto const& file : m_settings->value(familiesKey).toStringList().mid(0, mostFamilies)) {
        families.push_back(toPath(file));
    }
    return families;
}

void TLUserState::addRecentFamily(std::filesystem::path const& designspace)
{
    auto families = recentFamilies();
    std::erase(families, designspace);
    families.insert(families.begin(), designspace);
    families.resize(std::min(families.size(), mostFamilies));
    QStringList files;
    std::transform(families.begin(), families.end(), std::back_inserter(files), toFile);
    m_settings->setValue(familiesKey, files);
    m_settings->sync();
}

void TLUserState::clearRecentFamilies()
{
    m_settings->remove(familiesKey);
    m_settings->sync();
}

bool TLUserState::restoreWindow(QWidget& window) const
{
    bool const isRestored = window.restoreGeometry(m_settings->value(geometryKey).toByteArray());
    if (!isRestored) {
        window.resize(CommandLine::usualSize.width, CommandLine::usualSize.height);
    }
    restoreColumns(window);
    return isRestored;
}

void TLUserState::restoreColumns(QWidget& window) const
{
    if (auto* const columns = window.findChild<QSplitter*>("columns")) {
        columns->restoreState(m_settings->value(columnsKey).toByteArray());
    }
    if (auto* const showLayers = window.findChild<QAction*>("showLayers")) {
        showLayers->setChecked(m_settings->value(layersKey, true).toBool());
    }
}

void TLUserState::keepWindow(QWidget const& window)
{
    m_settings->setValue(geometryKey, window.saveGeometry());
    if (auto const* const columns = window.findChild<QSplitter*>("columns")) {
        m_settings->setValue(columnsKey, columns->saveState());
    }
    if (auto const* const showLayers = window.findChild<QAction*>("showLayers")) {
        m_settings->setValue(layersKey, showLayers->isChecked());
    }
    m_settings->sync();
}
