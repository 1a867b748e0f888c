#pragma once

#include <QFileSystemWatcher>
#include <QTimer>

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <vector>

/// Tells when files have been changed, added or taken away by another program, a moment later, when it has
/// finished.
class TLFileFollower {
public:
    explicit TLFileFollower(std::function<void()> didChange);

    /// Follows these files and no others; those that are new to it from what they are like now. Folders among
    /// them are watched for their files.
    void follow(std::vector<std::filesystem::path> const& files);
    /// From here on what the files are like when they are next followed is what is known.
    void forget() { m_stamps.clear(); }
    /// Looks at them now, for changes that nobody was told of.
    void check();
    /// Looks a moment later.
    void checkSoon() { m_timer.start(); }

private:
    /// None for a file that is not there, and for a folder.
    using Stamp = std::optional<std::pair<std::filesystem::file_time_type, std::uintmax_t>>;
    static Stamp stampOf(std::filesystem::path const& file);
    void watch(QStringList const& paths);

    std::function<void()> m_didChange;
    std::map<std::filesystem::path, Stamp> m_stamps;
    QFileSystemWatcher m_watcher;
    QTimer m_timer;
};
