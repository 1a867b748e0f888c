#pragma once

#include "Typloom/TyploomCore/Export.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

class TLDocumentWindow;
class TLFont;
class TLUserState;

/// The open windows: one for each family, and windows that invite to open one.
class TYPLOOM_API TLApplicationController {
public:
    TLApplicationController();
    ~TLApplicationController();
    TLApplicationController(TLApplicationController const&) = delete;

    /// Families and windows that are opened from now on are remembered there, and unsaved work is kept until
    /// it is saved or given up. Without it nothing is.
    void setUserState(std::unique_ptr<TLUserState> state);

    struct Outcome {
        TLDocumentWindow* window { nullptr }; ///< Null when the family could not be read.
        std::string error; ///< Then: one sentence with file, place and reason.
    };
    /// Shows the family in its window: the one that has it already, which is raised; otherwise a window
    /// that has no family yet, or else a new one. When it cannot be read nothing changes.
    Outcome open(std::filesystem::path const& path);
    /// A new window without a family, shown.
    TLDocumentWindow* openInvitation();
    /// In the order in which they were opened. A window that its user closes is released on a later
    /// turn of the main queue.
    std::vector<TLDocumentWindow*> windows() const;

    /// A sentence that every window opened from now on lists, say of a plug-in that does not load.
    void addToReport(std::string sentence);

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};
