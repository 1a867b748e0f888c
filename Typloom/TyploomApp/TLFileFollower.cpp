#include "Typloom/TyploomApp/TLFileFollower.h"

#include <QFile>
#include <QSet>

#include <algorithm>
#include <set>

namespace {

constexpr int settlingMilliseconds = 150;

/// The system gives a user a limited number of watches. Beyond these, changes within a file are noticed when
/// the window gets the keyboard; files that are replaced are noticed by their folder.
constexpr qsizetype mostWatchedFiles = 4000;

QString nameOf(std::filesystem::path const& path)
{
    return QFile::decodeName(path.c_str());
}

} // namespace

TLFileFollower::TLFileFollower(std::function<void()> didChange)
    : m_didChange(std::move(didChange))
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(settlingMilliseconds);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { check(); });
    QObject::connect(&m_watcher, &QFileSystemWatcher::fileChanged, &m_timer, [this] { checkSoon(); });
    QObject::connect(&m_watcher, &QFileSystemWatcher::directoryChanged, &m_timer, [this] { checkSoon(); });
}

TLFileFollower::Stamp TLFileFollower::stampOf(std::filesystem::path const& file)
{
    std::error_code error;
    auto const size = std::filesystem::file_size(file, error);
    auto const time = error ? decltype(Stamp()->first)() : std::filesystem::last_write_time(file, error);
    return error ? std::nullopt : Stamp({ time, size });
}

void TLFileFollower::follow(std::vector<std::filesystem::path> const& files)
{
    std::map<std::filesystem::path, Stamp> stamps;
    std::set<std::filesystem::path> folders;
    QStringList paths;
    for (auto const& file : files) {
        auto const known = m_stamps.find(file);
        auto const stamp = known == m_stamps.end() ? stampOf(file) : known->second;
        stamps.emplace(file, stamp);
        folders.insert(file.parent_path());
        if (stamp && paths.size() < mostWatchedFiles) {
            paths.append(nameOf(file));
        }
    }
    m_stamps = std::move(stamps);
    for (auto const& folder : folders) {
        std::error_code ignored;
        if (std::filesystem::is_directory(folder, ignored)) {
            paths.append(nameOf(folder));
        }
    }
    watch(paths);
}

/// A file that was replaced is no longer watched, whatever has its name now.
void TLFileFollower::watch(QStringList const& paths)
{
    auto const listed = m_watcher.files() + m_watcher.directories();
    QSet<QString> const watched(listed.begin(), listed.end());
    QSet<QString> const wanted(paths.begin(), paths.end());
    if (auto const gone = watched - wanted; !gone.isEmpty()) {
        m_watcher.removePaths(gone.values());
    }
    if (auto const added = wanted - watched; !added.isEmpty()) {
        m_watcher.addPaths(added.values());
    }
}

void TLFileFollower::check()
{
    bool const differs = std::any_of(m_stamps.begin(), m_stamps.end(),
        [](auto const& entry) { return stampOf(entry.first) != entry.second; });
    if (differs) {
        m_didChange();
    }
}
