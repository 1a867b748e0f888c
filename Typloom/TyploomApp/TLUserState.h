#pragma once

#include "Typloom/TyploomCore/Export.h"

#include <filesystem>
#include <memory>
#include <vector>

class QSettings;
class QWidget;

/// What the program remembers for its user from one run to the next: families that were opened, and how the
/// windows stood. Plug-ins keep nothing here.
class TYPLOOM_API TLUserState {
public:
    static constexpr std::size_t mostFamilies = 10;

    /// Settings in that file, which may not be there yet, and recovery copies in that folder.
    TLUserState(std::filesystem::path const& settings, std::filesystem::path recoveryFolder);
    ~TLUserState();
    TLUserState(TLUserState const&) = delete;
    /// That of the user who runs the program, in the folders that the desktop has for it.
    static std::unique_ptr<TLUserState> ofUser();

    /// The newest first, those included that are not there any more.
    std::vector<std::filesystem::path> recentFamilies() const;
    void addRecentFamily(std::filesystem::path const& designspace);
    void clearRecentFamilies();

    /// Size, place, columns and palette of a document window, as the last one that was closed had them.
    /// Before any was closed (false) the window gets its usual size, and its place from the desktop.
    bool restoreWindow(QWidget& window) const;
    /// The columns and the palette alone.
    void restoreColumns(QWidget& window) const;
    void keepWindow(QWidget const& window);

    std::filesystem::path const& recoveryFolder() const { return m_recoveryFolder; }

private:
    std::unique_ptr<QSettings> m_settings;
    std::filesystem::path m_recoveryFolder;
};
